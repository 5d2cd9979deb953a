#include "platform/core/I18NLocale.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "platform/core/Ascii.h"
#include "platform/core/IcuText.h"
#include "platform/core/LocaleServices.h"
#include "platform/core/Utf.h"

namespace {

bool isAscii(std::string_view text) { return utf::asciiRun(text, 0) == text.size(); }

void lowerAscii(I18NString& text) {
  std::string bytes(text.utf8());
  if (std::none_of(bytes.begin(), bytes.end(), isAsciiUpper)) return;
  std::transform(bytes.begin(), bytes.end(), bytes.begin(), asciiLower);
  text = I18NString(bytes);
}

}  // namespace

I18NLocale::I18NLocale(const char* name)
    : m_services(name == nullptr ? LocaleServices::ofDefault()
                                 : std::make_shared<const LocaleServices>(name)) {}

I18NLocale::I18NLocale(const I18NLocale&) = default;
I18NLocale& I18NLocale::operator=(const I18NLocale&) = default;
I18NLocale::~I18NLocale() = default;

int I18NLocale::compareIgnoreCase(const I18NString& a, const I18NString& b) const {
  if (a == b) return 0;
  // By folding, not by lowering both: of "STRASSE" and "straße" only the folded forms are equal.
  const std::uint32_t folding =
      m_services->hasCommonI() ? U_FOLD_CASE_DEFAULT : U_FOLD_CASE_EXCLUDE_SPECIAL_I;
  return toIcu(a).caseCompare(toIcu(b), folding);
}

void I18NLocale::toLower(I18NString& text) const {
  if (m_services->hasCommonI() && isAscii(text.utf8())) {
    // Nearly every code and name that comes here. The way through ICU costs four copies.
    lowerAscii(text);
  } else {
    text = fromIcu(toIcu(text).toLower(m_services->caseLocale()));
  }
}

void I18NLocale::getDisplayName(I18NString& out, I18NLocale& inLocale) const {
  out = m_services->nameIn(*inLocale.m_services);
}
