#pragma once

#include <unicode/locid.h>
#include <unicode/tzfmt.h>
#include <unicode/tznames.h>

#include <memory>
#include <mutex>
#include <string>

#include "platform/core/I18NString.h"

/// What the copies of one `I18NLocale` share. Costly parts are made when they are first asked for.
/// Any number of threads may use one object.
class LocaleServices {
 public:
  /// The default locale.
  LocaleServices();
  /// Takes any name; one that ICU cannot be asked about has the rules of case of the root locale.
  explicit LocaleServices(const char* name);

  /// Of the default locale: made once, never freed.
  static const std::shared_ptr<const LocaleServices>& ofDefault();

  /// The rules of case.
  const icu::Locale& caseLocale() const { return m_locale; }
  /// Whether "i" and "I" are the two cases of one letter, as in all languages but two.
  bool hasCommonI() const { return m_commonI; }

  /// The name of this locale in the language of another one.
  I18NString nameIn(const LocaleServices& display) const;

  /// The language that names are shown in: this one or, where it is not known, English.
  const icu::Locale& displayLocale() const;
  /// Names of time zones in that language, and offsets in its way of writing them. Null if ICU has
  /// no data for them at all; throws `std::bad_alloc` if there is no memory, and can be asked
  /// again.
  const icu::TimeZoneNames* timeZoneNames() const;
  const icu::TimeZoneFormat* timeZoneFormat() const;

 private:
  std::string m_name;
  bool m_known;  // the name is one that ICU can be asked about
  icu::Locale m_locale;
  bool m_commonI = true;
  mutable std::once_flag m_displayLocaleOnce;
  // By a name: without one ICU copies its default locale, also where that found no memory.
  mutable icu::Locale m_displayLocale{""};
  mutable std::once_flag m_timeZoneNamesOnce;
  mutable std::unique_ptr<const icu::TimeZoneNames> m_timeZoneNames;
  mutable std::once_flag m_timeZoneFormatOnce;
  mutable std::unique_ptr<const icu::TimeZoneFormat> m_timeZoneFormat;
};
