#include "platform/core/Utf.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace utf {
namespace {

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

// The character of an odd byte has that byte as its low eight bits.
std::size_t write(char* out, char32_t character) noexcept {
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

}  // namespace utf
