#pragma once

#include <string>
#include <string_view>

#include "platform/core/Utf.h"

/// The way of UTF-8 with odd bytes (see Utf.h) to and from UTF-16, the form that the XML parser and
/// ICU have. An odd byte crosses as the lone surrogate of its character.
namespace utf {

/// Appends @p text. A lone surrogate in U+DC80 to U+DCFF is an odd byte; any other is U+FFFD.
/// @return the extent of what was appended, taken by itself
Extent appendUtf16(std::string& out, std::u16string_view text);

/// An odd byte becomes the lone surrogate of its character.
std::u16string toUtf16(std::string_view bytes);

/// Whether `appendUtf16` of @p text would make exactly @p bytes.
bool equalsUtf16(std::string_view bytes, std::u16string_view text) noexcept;

}  // namespace utf
