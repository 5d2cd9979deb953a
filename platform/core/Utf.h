#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// UTF-8, the form that texts have inside.
///
/// A byte at which no valid sequence begins is *odd*. It counts as one character, U+DC00 plus the
/// byte, which lies in U+DC80 to U+DCFF; nothing valid decodes to that range, so the bytes can
/// always be made again from the characters, and different bytes never give the same characters.
/// The reverse does not hold: odd bytes brought together may become one valid sequence.
///
/// Whether a sequence is valid shows in its own bytes alone, and no lead byte stands inside one.
/// So a cut between two characters changes neither side, and whether an offset lies between two
/// characters shows in the three bytes before it.
namespace utf {

inline constexpr char32_t replacementCharacter = 0xFFFD;

// `char` is signed on some machines and not on others; these two mean the same on all of them.
constexpr bool isAscii(char byte) { return static_cast<signed char>(byte) >= 0; }
constexpr unsigned char byteAt(std::string_view bytes, std::size_t offset) {
  return static_cast<unsigned char>(bytes[offset]);
}

constexpr bool isOdd(char32_t character) { return character >= 0xDC80 && character <= 0xDCFF; }
constexpr char32_t oddCharacter(char byte) { return 0xDC00U + static_cast<unsigned char>(byte); }

/// What a byte that some encoding cannot decode becomes. One below 0x80 would read as ASCII if it
/// were kept.
constexpr char32_t undecodable(char byte) {
  const char32_t character = oddCharacter(byte);
  return isOdd(character) ? character : replacementCharacter;
}

/// @p character itself where a text can hold it, else U+FFFD.
constexpr char32_t holdable(char32_t character) {
  const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
  return character > 0x10FFFF || (surrogate && !isOdd(character)) ? replacementCharacter
                                                                  : character;
}

/// The number of ASCII bytes from @p offset on, up to the first other one.
std::size_t asciiRun(std::string_view bytes, std::size_t offset) noexcept;

struct Extent {
  std::size_t characters = 0;
  std::size_t oddBytes = 0;
};
Extent measure(std::string_view bytes) noexcept;

struct Decoded {
  char32_t character;
  std::size_t length;  ///< In bytes; 1 for an odd byte.
};
/// The character at @p offset, which must lie between two characters and before the end.
Decoded decode(std::string_view bytes, std::size_t offset) noexcept;

/// The offset @p count characters after @p offset, or the end.
std::size_t skip(std::string_view bytes, std::size_t offset, std::size_t count) noexcept;

/// The offset one character before @p offset, which must not be 0.
std::size_t previous(std::string_view bytes, std::size_t offset) noexcept;

/// The length of the valid sequence that begins before @p offset and ends behind it, or 0.
std::size_t straddling(std::string_view bytes, std::size_t offset) noexcept;

/// `std::string_view::find` among characters: no match begins or ends inside one.
std::size_t find(std::string_view bytes, std::string_view what, std::size_t offset) noexcept;

/// Whether @p left comes before @p right by code points.
bool isLess(std::string_view left, std::string_view right) noexcept;

/// Writes a character that is `holdable`, in at most 4 bytes; gives their number.
std::size_t write(char* out, char32_t character) noexcept;

/// Appends a character that is `holdable`.
void append(std::string& out, char32_t character);

/// @p bytes with every odd byte made U+FFFD.
std::string withoutOddBytes(std::string_view bytes);

}  // namespace utf
