#include "platform/core/VRDBase64.h"

#include <endian.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

// Text from documents is nearly all alphabet, with a line break every 64 or 76 characters. So four
// characters become three bytes by four table look-ups and one test for as long as that goes well;
// one group that holds anything else goes the careful way, and the fast one takes over again.

namespace {

/// What callers get; the numbers are part of the interface.
enum Result { Done = 0, NotBase64 = 1, NoRoom = 2 };

/// Lies above the 24 bits that four characters can make, so that it survives joining them.
constexpr std::uint32_t notInAlphabet = 0x80000000;

/// For each place among four characters, what a character contributes to their 24 bits.
using Contributions = std::array<std::array<std::uint32_t, 256>, 4>;

constexpr Contributions makeContributions() {
  constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  Contributions table{};
  for (unsigned place = 0; place < 4; ++place) {
    for (auto& entry : table[place]) entry = notInAlphabet;
    for (std::uint32_t value = 0; value < 64; ++value) {
      table[place][static_cast<unsigned char>(alphabet[value])] = value << (18 - 6 * place);
    }
  }
  return table;
}

constexpr Contributions contributions = makeContributions();

/// The 24 bits of four characters, or something with `notInAlphabet` in it.
std::uint32_t bitsOf(const unsigned char* quad) {
  return contributions[0][quad[0]] | contributions[1][quad[1]] | contributions[2][quad[2]] |
         contributions[3][quad[3]];
}

/// One decoding. Never reads behind the text's NUL and never writes behind the room.
class Decoder {
 public:
  Decoder(const char* text, std::size_t length, char* out, std::size_t room)
      : m_in(reinterpret_cast<const unsigned char*>(text)),
        m_inEnd(m_in + length),
        m_begin(out),
        m_out(out),
        m_outEnd(out + room - 1) {}  // the last place is the NUL's

  Result decode() {
    while (!m_padded) {
      decodePlainQuads();
      unsigned char quad[4];
      const int length = takeQuad(quad);
      if (length == 0) break;
      // Padding fills the last group up, so a shorter one was cut off.
      const Result result = length == 4 ? decodeQuad(quad) : NotBase64;
      if (result != Done) return result;
    }
    if (peek() != nullptr) return NotBase64;  // something behind the padding
    *m_out = '\0';
    return Done;
  }

  unsigned long size() const { return static_cast<unsigned long>(m_out - m_begin); }

 private:
  /// The fast way, as long as four characters of the alphabet follow each other. Stores four bytes
  /// for three: behind any three that have room there is still the place of the NUL.
  void decodePlainQuads() {
    while (m_inEnd - m_in >= 4 && m_outEnd - m_out >= 3) {
      const std::uint32_t bits = bitsOf(m_in);
      if (bits & notInAlphabet) return;
      const std::uint32_t bytes = htobe32(bits << 8);
      std::memcpy(m_out, &bytes, sizeof bytes);
      m_in += 4;
      m_out += 3;
    }
  }

  /// The next character, with line breaks skipped; null at the end.
  const unsigned char* peek() {
    for (;;) {
      if (m_in == m_inEnd) return nullptr;
      if (*m_in == '\n') {
        m_in += 1;
      } else if (*m_in == '\r' && m_in[1] == '\n') {  // at worst the NUL is looked at
        m_in += 2;
      } else {
        return m_in;
      }
    }
  }

  /// Takes up to four characters from between line breaks. Returns how many there were.
  int takeQuad(unsigned char* quad) {
    int length = 0;
    while (length < 4 && peek() != nullptr) quad[length++] = *m_in++;
    return length;
  }

  /// Four characters of which the last ones may be padding.
  Result decodeQuad(unsigned char* quad) {
    std::ptrdiff_t count = 3;
    // Padding stands for zero bits; anywhere else "=" is just not in the alphabet.
    for (int place = 3; place >= 2 && quad[place] == '='; --place, --count) quad[place] = 'A';
    m_padded = count < 3;

    // Set bits that carry no data would give the same bytes a second text: whoever compares or
    // signs texts counts on there being one.
    std::uint32_t bits = bitsOf(quad);
    const std::uint32_t unused = 0xFFFFFF >> (8 * count);
    if (bits & (notInAlphabet | unused)) return NotBase64;
    if (m_outEnd - m_out < count) return NoRoom;
    for (; count > 0; --count, bits <<= 8) *m_out++ = static_cast<char>(bits >> 16 & 0xFF);
    return Done;
  }

  const unsigned char* m_in;
  const unsigned char* m_inEnd;
  char* m_begin;
  char* m_out;
  char* m_outEnd;
  bool m_padded = false;
};

/// What lies between the white space at both ends; the NUL still stands somewhere behind it.
std::string_view trimmed(std::string_view text) {
  constexpr const char* whiteSpace = " \t\r\n";
  text.remove_prefix(std::min(text.find_first_not_of(whiteSpace), text.size()));
  return text.substr(0, text.find_last_not_of(whiteSpace) + 1);
}

}  // namespace

int VRDBase64Decode(const char* text, char* out, unsigned long* size) {
  if (size == nullptr) return NoRoom;
  const unsigned long room = *size;
  *size = 0;
  if (text == nullptr) return NotBase64;
  if (out == nullptr || room == 0) return NoRoom;

  // More room than text is never used, and a caller's "no limit" would lie beyond all addresses.
  const std::string_view base64 = trimmed(text);
  Decoder decoder(base64.data(), base64.size(), out,
                  std::min<std::size_t>(room, base64.size() + 1));
  const Result result = decoder.decode();
  if (result == Done) *size = decoder.size();
  return result;
}
