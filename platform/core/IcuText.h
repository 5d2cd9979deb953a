#pragma once

#include <unicode/unistr.h>

#include <new>
#include <string>

#include "platform/core/I18NString.h"

/// The text as ICU takes it. Every byte survives the way there and back.
inline icu::UnicodeString toIcu(const I18NString& text) {
  const std::u16string units = text.toUtf16();
  return icu::UnicodeString(units.data(), static_cast<int32_t>(units.size()));
}

/// ICU does not throw: a text that found no memory is "bogus".
inline I18NString fromIcu(const icu::UnicodeString& text) {
  if (text.isBogus()) throw std::bad_alloc();
  return I18NString::fromUtf16({text.getBuffer(), static_cast<std::size_t>(text.length())});
}
