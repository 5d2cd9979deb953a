#pragma once

#include "platform/core/I18NLocale.h"
#include "platform/core/I18NString.h"
#include "platform/core/VRDExport.h"

/// What the locale services know of currencies. Any thread may ask.
class VRD_EXPORT I18NNumericFormat {
 public:
  I18NNumericFormat() = delete;

  /// The name of the currency with the three-letter @p code, in whatever case, in the language of
  /// @p inLocale: "euro" for EUR in French. The code itself, as given, if nobody knows it.
  /// Throws only what `I18NString` does.
  /// @param inLocale null for English
  static I18NString getCurrencyDescription(const I18NString& code, const I18NLocale* inLocale);
};
