#pragma once

#include <memory>

#include "platform/core/I18NString.h"
#include "platform/core/VRDExport.h"

class LocaleServices;

/// A locale: the rules of case of a language, and the language in which names are shown.
///
/// Takes any name. In one that the locale services know, "-" and "_" mean the same and case does
/// not count. One that they do not know is no failure: its own name is the name as given, case
/// follows the rules for all languages, and names are shown in English.
///
/// Nothing depends on the locale of the process. Throws only what `I18NString` does, and
/// then a text to be changed stays as it was.
///
/// A value; copies share what was worked out for the locale. Any number of threads may use one
/// object and its copies.
class VRD_EXPORT I18NLocale {
 public:
  /// @param name in the platform encoding; null for the default locale, with the rules of case for
  ///        all languages and names in English. An empty name is the root locale, which shows codes
  ///        instead of names.
  explicit I18NLocale(const char* name);
  I18NLocale(const I18NLocale&);
  I18NLocale& operator=(const I18NLocale&);
  ~I18NLocale();

  /// 0 if both texts are equal without regard to case; else a negative or positive number.
  int compareIgnoreCase(const I18NString& a, const I18NString& b) const;

  /// Changes @p text to lower case, in place.
  void toLower(I18NString& text) const;

  /// Puts the name of this locale in the language of @p inLocale into @p out: "French (Canada)" for
  /// fr-CA in English. Empty for the default locale.
  void getDisplayName(I18NString& out, I18NLocale& inLocale) const;

 private:
  friend class I18NTimeZone;
  friend class I18NNumericFormat;

  std::shared_ptr<const LocaleServices> m_services;
};
