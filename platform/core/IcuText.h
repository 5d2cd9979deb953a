#pragma once

#include <unicode/unistr.h>
#include <unicode/utypes.h>

#include <cstddef>
#include <new>
#include <string>

#include "platform/core/I18NString.h"

/// ICU does not throw: a text that found no memory is "bogus", and all bogus texts are equal.
inline void requireMemory(const icu::UnicodeString& text) {
  if (text.isBogus()) throw std::bad_alloc();
}

/// Whether ICU has an answer. Want of memory is none: it throws, so that nobody takes it for a name
/// that ICU does not know.
inline bool hasSucceeded(UErrorCode status) {
  if (status == U_MEMORY_ALLOCATION_ERROR) throw std::bad_alloc();
  return U_SUCCESS(status);
}

/// More than any work takes that is done by `withIcuReserve`.
inline constexpr std::size_t icuReserve = std::size_t{1} << 18;

/// Lets ICU do @p work that ends the process, or never ends, where it finds no memory: only while
/// there is some.
template <class Work>
auto withIcuReserve(Work work) -> decltype(work()) {
  ::operator delete(::operator new(icuReserve));
  return work();
}

/// Asks ICU, and once more where it fell back to a default: it does so as well where it had no
/// memory to look, and does not say it.
template <class Ask>
UErrorCode askIcu(Ask ask) {
  UErrorCode status = U_ZERO_ERROR;
  ask(status);
  if (status != U_USING_DEFAULT_WARNING) return status;
  status = U_ZERO_ERROR;
  ask(status);
  return status;
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
