#pragma once

#include <unicode/unistr.h>

#include <new>
#include <string>

#include "platform/core/I18NString.h"

/// ICU does not throw: a text that found no memory is "bogus", and all bogus texts are equal.
inline void requireMemory(const icu::UnicodeString& text) {
  if (text.isBogus()) throw std::bad_alloc();
}

/// The text as ICU takes it. Every byte survives the way there and back.
inline icu::UnicodeString toIcu(const I18NString& text) {
  // The constructor for `char16_t*` without a length would stop at a NUL.
  const std::u16string units = text.toUtf16();
  icu::UnicodeString result(units.data(), static_cast<int32_t>(units.size()));
  requireMemory(result);
  return result;
}

inline I18NString fromIcu(const icu::UnicodeString& text) {
  requireMemory(text);
  return I18NString::fromUtf16({text.getBuffer(), static_cast<std::size_t>(text.length())});
}
