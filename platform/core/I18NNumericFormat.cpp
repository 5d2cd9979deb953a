#include "platform/core/I18NNumericFormat.h"

#include <unicode/ucurr.h>

#include <algorithm>
#include <string>

#include "platform/core/IcuText.h"
#include "platform/core/LocaleServices.h"

namespace {

/// ICU looks at exactly three characters, whatever length the text has.
bool isCurrencyCode(const std::u16string& code) {
  return code.size() == 3 && std::all_of(code.begin(), code.end(), [](char16_t ch) {
           return (ch >= u'A' && ch <= u'Z') || (ch >= u'a' && ch <= u'z');
         });
}

/// The name in ICU's own memory, or null.
const char16_t* findName(const std::u16string& code, const icu::Locale& locale, int32_t& length) {
  UBool isChoiceFormat = 0;
  const char16_t* name = nullptr;
  const UErrorCode status = askIcu([&](UErrorCode& error) {
    name = ucurr_getName(code.c_str(), locale.getName(), UCURR_LONG_NAME, &isChoiceFormat, &length,
                         &error);
  });
  // Of a code that nobody knows ICU gives the code back, in this case as it was passed.
  return !hasSucceeded(status) || name == code.c_str() ? nullptr : name;
}

}  // namespace

I18NString I18NNumericFormat::getCurrencyDescription(const I18NString& code,
                                                     const I18NLocale* inLocale) {
  const std::u16string units = code.toUtf16();
  // As it was given: what is no currency to ICU may mean something to the client.
  if (!isCurrencyCode(units)) return code;
  const LocaleServices& services =
      inLocale == nullptr ? *LocaleServices::ofDefault() : *inLocale->m_services;
  int32_t length = 0;
  const char16_t* name = findName(units, services.displayLocale(), length);
  if (name == nullptr) return code;
  return I18NString::fromUtf16({name, static_cast<std::size_t>(length)});
}
