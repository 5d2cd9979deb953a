#include "platform/core/Utf16.h"

#include <cstring>

namespace utf {
namespace {

// Gives the end of what was written. A surrogate pair carries the code point less 0x10000, ten bits
// in each half; 0xD7C0 is 0xD800 with that difference taken off. An odd byte's character goes out
// as it is, and makes no pair with its neighbours: no text holds a high surrogate alone.
char16_t* writeUtf16(char16_t* out, char32_t character) {
  if (character < 0x10000) {
    *out++ = static_cast<char16_t>(character);
  } else {
    *out++ = static_cast<char16_t>(0xD7C0U + (character >> 10));
    *out++ = static_cast<char16_t>(0xDC00U | (character & 0x3FFU));
  }
  return out;
}

bool isHighSurrogate(char16_t unit) { return (unit & 0xFC00U) == 0xD800; }
bool isLowSurrogate(char16_t unit) { return (unit & 0xFC00U) == 0xDC00; }

// The character at `index`, its length in units. A high surrogate before the character of an odd
// byte is a pair like any other; the text it came from held no such thing.
Decoded decodeUtf16(std::u16string_view text, std::size_t index) {
  const char16_t unit = text[index];
  if (isHighSurrogate(unit) && index + 1 < text.size() && isLowSurrogate(text[index + 1])) {
    return {((unit & 0x3FFU) << 10 | (text[index + 1] & 0x3FFU)) + 0x10000U, 2};
  }
  return {holdable(unit), 1};
}

// Nearly all text that crosses is ASCII, and DOM text crosses at each read. Loops over a block have
// a fixed count, so that compilers make vector code of them without being asked to.
constexpr std::size_t blockUnits = 16;

// Collects the bits instead of leaving at the first unit that is too great: no branch in the loop.
bool isAsciiBlock(const char16_t* units) {
  unsigned all = 0;
  for (std::size_t i = 0; i < blockUnits; ++i) all |= units[i];
  return all < 0x80;
}

bool isAscii(std::u16string_view text) {
  std::size_t index = 0;
  while (index + blockUnits <= text.size() && isAsciiBlock(text.data() + index)) {
    index += blockUnits;
  }
  while (index < text.size() && text[index] < 0x80) ++index;
  return index == text.size();
}

// By way of a block of its own: bytes written straight to `out` might be those of `units`, for all
// the compiler knows, and then it writes them one by one.
void narrowBlock(char* out, const char16_t* units) {
  char block[blockUnits];
  for (std::size_t i = 0; i < blockUnits; ++i) block[i] = static_cast<char>(units[i]);
  std::memcpy(out, block, blockUnits);
}

// `narrow` and `widen` are for ASCII only, which has the same values on both sides.
void narrow(char* out, std::u16string_view ascii) {
  std::size_t index = 0;
  for (; index + blockUnits <= ascii.size(); index += blockUnits) {
    narrowBlock(out + index, ascii.data() + index);
  }
  for (; index < ascii.size(); ++index) out[index] = static_cast<char>(ascii[index]);
}

void widen(char16_t* out, std::string_view ascii) {
  std::size_t index = 0;
  for (; index + blockUnits <= ascii.size(); index += blockUnits) {
    char16_t block[blockUnits];
    for (std::size_t i = 0; i < blockUnits; ++i) block[i] = byteAt(ascii, index + i);
    std::memcpy(out + index, block, sizeof block);
  }
  for (; index < ascii.size(); ++index) out[index] = byteAt(ascii, index);
}

// The number of units at the front that are ASCII and the same in both, in whole blocks.
std::size_t equalBlocks(std::string_view bytes, std::u16string_view text) {
  std::size_t index = 0;
  for (; index + blockUnits <= text.size() && index + blockUnits <= bytes.size();
       index += blockUnits) {
    char block[blockUnits];
    narrowBlock(block, text.data() + index);
    if (!isAsciiBlock(text.data() + index) ||
        std::memcmp(block, bytes.data() + index, blockUnits) != 0) {
      break;
    }
  }
  return index;
}

Extent appendAscii(std::string& out, std::u16string_view text) {
  const std::size_t start = out.size();
  out.resize(start + text.size());
  narrow(out.data() + start, text);
  return {text.size(), 0};
}

// The UTF-8 size of `text`, or more where it holds surrogates. Not three times the units: results
// are kept, and so is their room.
std::size_t boundOf(std::u16string_view text) {
  std::size_t bound = text.size();
  for (const char16_t unit : text) {
    bound += static_cast<std::size_t>(unit >= 0x80) + static_cast<std::size_t>(unit >= 0x800);
  }
  return bound;
}

}  // namespace

Extent appendUtf16(std::string& out, std::u16string_view text) {
  if (isAscii(text)) return appendAscii(out, text);

  const std::size_t start = out.size();
  // If this fails, nothing has changed; what follows cannot fail.
  out.resize(start + boundOf(text));
  char* target = out.data() + start;
  Extent extent;
  for (std::size_t index = 0; index < text.size(); ++extent.characters) {
    if (text[index] < 0x80) {
      *target++ = static_cast<char>(text[index++]);
      continue;
    }
    const Decoded next = decodeUtf16(text, index);
    if (isOdd(next.character)) ++extent.oddBytes;
    target += write(target, next.character);
    index += next.length;
  }
  out.resize(static_cast<std::size_t>(target - out.data()));
  // Lone surrogates that stood side by side may have become one valid sequence.
  return extent.oddBytes == 0 ? extent : measure(std::string_view(out).substr(start));
}

std::u16string toUtf16(std::string_view bytes) {
  std::u16string result(bytes.size(), u'\0');  // a byte never makes more than one unit
  std::size_t offset = asciiRun(bytes, 0);
  widen(result.data(), bytes.substr(0, offset));
  char16_t* target = result.data() + offset;
  while (offset < bytes.size()) {
    if (isAscii(bytes[offset])) {
      *target++ = byteAt(bytes, offset++);
      continue;
    }
    const Decoded next = decode(bytes, offset);
    target = writeUtf16(target, next.character);
    offset += next.length;
  }
  result.resize(static_cast<std::size_t>(target - result.data()));
  return result;
}

// Compares with what would be written rather than with what is read from `bytes`. The two differ
// where lone surrogates stand side by side and their bytes are one valid sequence.
bool equalsUtf16(std::string_view bytes, std::u16string_view text) noexcept {
  if (text.size() > bytes.size()) return false;  // a unit makes one byte or more
  std::size_t index = equalBlocks(bytes, text);
  std::size_t offset = index;
  while (index < text.size()) {
    if (text[index] < 0x80) {
      if (offset == bytes.size() || byteAt(bytes, offset++) != text[index++]) return false;
      continue;
    }
    const Decoded next = decodeUtf16(text, index);
    char expected[4];
    const std::size_t length = write(expected, next.character);
    if (length > bytes.size() - offset) return false;
    for (std::size_t i = 0; i < length; ++i) {
      if (bytes[offset++] != expected[i]) return false;
    }
    index += next.length;
  }
  return offset == bytes.size();
}

}  // namespace utf
