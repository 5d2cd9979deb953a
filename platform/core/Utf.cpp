#include "platform/core/Utf.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace utf {
namespace {

unsigned char byteAt(std::string_view bytes, std::size_t offset) {
  return static_cast<unsigned char>(bytes[offset]);
}

// `char` is signed on some machines and not on others; this asks for the high bit on all of them.
bool isAscii(char byte) { return static_cast<signed char>(byte) >= 0; }

// The two high bits of every byte of a sequence but the first are 10, and no lead byte has them:
// that is why boundaries can be found from anywhere.
bool isContinuation(unsigned char byte) { return (byte & 0xC0U) == 0x80; }

// The length that a lead byte announces; 0 for a byte that no sequence can begin with, the leads
// of two-byte overlong forms and of everything beyond U+10FFFF among them.
std::size_t announcedLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead < 0xC2) return 0;
  if (lead < 0xE0) return 2;
  if (lead < 0xF0) return 3;
  return lead < 0xF5 ? 4 : 0;
}

// Four leads narrow what may follow them: that is where the remaining overlong forms, the
// surrogates and the code points beyond U+10FFFF are.
bool secondFits(unsigned char lead, unsigned char second) {
  switch (lead) {
    case 0xE0:
      return second >= 0xA0 && second <= 0xBF;
    case 0xED:
      return second >= 0x80 && second <= 0x9F;
    case 0xF0:
      return second >= 0x90 && second <= 0xBF;
    case 0xF4:
      return second >= 0x80 && second <= 0x8F;
    default:
      return isContinuation(second);
  }
}

// The length of the valid sequence at `offset`, or 0. A sequence that the end cuts is not valid:
// its bytes are odd one by one until the rest is appended.
std::size_t sequenceLength(std::string_view bytes, std::size_t offset) {
  const unsigned char lead = byteAt(bytes, offset);
  const std::size_t length = announcedLength(lead);
  if (length <= 1) return length;
  if (bytes.size() - offset < length || !secondFits(lead, byteAt(bytes, offset + 1))) return 0;
  for (std::size_t i = 2; i < length; ++i) {
    if (!isContinuation(byteAt(bytes, offset + i))) return 0;
  }
  return length;
}

// What one step forward covers, odd bytes included.
std::size_t characterLength(std::string_view bytes, std::size_t offset) {
  return std::max<std::size_t>(1, sequenceLength(bytes, offset));
}

// The code point of a sequence that is known to be valid. The lead byte gives away one bit more for
// each byte that it announces.
char32_t bitsOf(std::string_view bytes, std::size_t offset, std::size_t length) {
  constexpr unsigned leadMasks[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
  // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult): a sequence has 1 to 4 bytes
  char32_t value = byteAt(bytes, offset) & leadMasks[length];
  for (std::size_t i = 1; i < length; ++i) value = value << 6 | (byteAt(bytes, offset + i) & 0x3FU);
  return value;
}

// Six bits from `shift` on, as a continuation byte.
char tailByte(char32_t character, unsigned shift) {
  return static_cast<char>(0x80U | (character >> shift & 0x3FU));
}

// Writes a character that is `holdable`, in at most 4 bytes; gives their number. The character of
// an odd byte has that byte as its low eight bits.
std::size_t write(char* out, char32_t character) {
  if (character < 0x80 || isOdd(character)) {
    out[0] = static_cast<char>(character);
    return 1;
  }
  if (character < 0x800) {
    out[0] = static_cast<char>(0xC0U | character >> 6);
    out[1] = tailByte(character, 0);
    return 2;
  }
  if (character < 0x10000) {
    out[0] = static_cast<char>(0xE0U | character >> 12);
    out[1] = tailByte(character, 6);
    out[2] = tailByte(character, 0);
    return 3;
  }
  out[0] = static_cast<char>(0xF0U | character >> 18);
  out[1] = tailByte(character, 12);
  out[2] = tailByte(character, 6);
  out[3] = tailByte(character, 0);
  return 4;
}

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

std::size_t asciiRun(std::string_view bytes, std::size_t offset) noexcept {
  constexpr std::uint64_t highBits = 0x8080808080808080U;
  std::size_t end = offset;
  for (std::uint64_t block = 0; end + sizeof block <= bytes.size(); end += sizeof block) {
    std::memcpy(&block, bytes.data() + end, sizeof block);
    if ((block & highBits) != 0) break;
  }
  while (end < bytes.size() && isAscii(bytes[end])) ++end;
  return end - offset;
}

Extent measure(std::string_view bytes) noexcept {
  std::size_t offset = asciiRun(bytes, 0);
  std::size_t characters = offset;
  std::size_t oddBytes = 0;
  for (; offset < bytes.size(); ++characters) {
    // Asked here as well, as even a text with accents is ASCII for the greater part.
    const std::size_t length = isAscii(bytes[offset]) ? 1 : sequenceLength(bytes, offset);
    if (length == 0) ++oddBytes;
    offset += std::max<std::size_t>(1, length);
  }
  return {characters, oddBytes};
}

Decoded decode(std::string_view bytes, std::size_t offset) noexcept {
  const std::size_t length = sequenceLength(bytes, offset);
  if (length == 0) return {oddCharacter(bytes[offset]), 1};
  return {bitsOf(bytes, offset, length), length};
}

std::size_t skip(std::string_view bytes, std::size_t offset, std::size_t count) noexcept {
  for (; count > 0 && offset < bytes.size(); --count) offset += characterLength(bytes, offset);
  return offset;
}

// A valid sequence that ends at `offset` begins at its lead byte, which is inside no other
// sequence. So what looks like one from behind is one from the front as well.
std::size_t previous(std::string_view bytes, std::size_t offset) noexcept {
  for (std::size_t back = 2; back <= 4 && back <= offset; ++back) {
    if (sequenceLength(bytes.substr(0, offset), offset - back) == back) return offset - back;
  }
  return offset - 1;
}

// Three bytes back are enough, since the longest sequence has four and one of them is behind. Two
// sequences cannot straddle one offset, so the first found is the one.
std::size_t straddling(std::string_view bytes, std::size_t offset) noexcept {
  if (offset >= bytes.size()) return 0;
  for (std::size_t back = 1; back <= 3 && back <= offset; ++back) {
    const std::size_t length = sequenceLength(bytes, offset - back);
    if (length > back) return length;
  }
  return 0;
}

// Valid bytes are found between characters only; an odd byte can look like a part of a character,
// so each match is asked. Cheap enough not to tell the cases apart.
std::size_t find(std::string_view bytes, std::string_view what, std::size_t offset) noexcept {
  std::size_t found = bytes.find(what, offset);
  while (found != std::string_view::npos &&
         (straddling(bytes, found) != 0 || straddling(bytes, found + what.size()) != 0)) {
    found = bytes.find(what, found + 1);
  }
  return found;
}

// Bytes would not do: the odd byte 0xFF stands for U+DCFF, before U+E000 with its lead byte 0xEE,
// and the odd byte 0x80 for U+DC80, behind U+20AC with its lead byte 0xE2.
bool isLess(std::string_view left, std::string_view right) noexcept {
  std::size_t offset = 0;  // the same on both sides as long as their characters are
  while (offset < left.size() && offset < right.size()) {
    const Decoded ours = decode(left, offset);
    const Decoded theirs = decode(right, offset);
    if (ours.character != theirs.character) return ours.character < theirs.character;
    offset += ours.length;
  }
  return left.size() < right.size();
}

void append(std::string& out, char32_t character) {
  char bytes[4];
  out.append(bytes, write(bytes, character));
}

std::string withoutOddBytes(std::string_view bytes) {
  std::string result;
  result.reserve(bytes.size());
  for (std::size_t offset = 0; offset < bytes.size();) {
    const std::size_t length = sequenceLength(bytes, offset);
    if (length == 0) append(result, replacementCharacter);
    result.append(bytes, offset, length);
    offset += std::max<std::size_t>(1, length);
  }
  return result;
}

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
