#include "platform/idom/Utf8Sink.h"

#include <string.h>

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t asciiSize = 0x80;
constexpr std::size_t longestEscape = 6;  // bytes that one unit may become

/// What an ASCII character becomes; empty where it stands for itself.
using Escapes = std::array<std::string_view, asciiSize>;
/// Which ASCII characters stand for themselves; small enough to stay in the cache.
using Plain = std::array<bool, asciiSize>;

constexpr std::string_view replacement = "\xEF\xBF\xBD";

constexpr Escapes escapesOfNames() {
  Escapes escapes{};
  for (std::size_t control = 0; control < 0x20; ++control) escapes[control] = replacement;
  return escapes;
}

constexpr Escapes escapesOfCharacterData() {
  Escapes escapes = escapesOfNames();
  escapes['\t'] = escapes['\n'] = {};
  escapes['\r'] = "&#xD;";
  escapes['&'] = "&amp;";
  escapes['<'] = "&lt;";
  escapes['>'] = "&gt;";
  return escapes;
}

constexpr Escapes escapesOfAttributeValue() {
  Escapes escapes = escapesOfCharacterData();
  escapes['>'] = {};
  escapes['\t'] = "&#x9;";
  escapes['\n'] = "&#xA;";
  escapes['"'] = "&quot;";
  return escapes;
}

constexpr Plain plainOf(const Escapes& escapes) {
  Plain plain{};
  for (std::size_t i = 0; i < asciiSize; ++i) plain[i] = escapes[i].empty();
  return plain;
}

constexpr bool isHigh(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
constexpr bool isLow(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

char* put(char* to, std::string_view bytes) {
  std::memcpy(to, bytes.data(), bytes.size());
  return to + bytes.size();
}

constexpr char tail(char32_t bits) { return static_cast<char>(0x80U | (bits & 0x3FU)); }

char* putPair(char* to, char16_t high, char16_t low) {
  const char32_t character = 0x10000U + ((high - 0xD800U) << 10U) + (low - 0xDC00U);
  *to++ = static_cast<char>(0xF0U | character >> 18U);
  *to++ = tail(character >> 12U);
  *to++ = tail(character >> 6U);
  *to++ = tail(character);
  return to;
}

/// A unit beyond ASCII that is no half of a pair.
char* putUnit(char* to, char16_t unit) {
  if (unit < 0x800) {
    *to++ = static_cast<char>(0xC0U | unit >> 6U);
    *to++ = tail(unit);
    return to;
  }
  if (isHigh(unit) || isLow(unit) || unit >= 0xFFFE) return put(to, replacement);
  *to++ = static_cast<char>(0xE0U | unit >> 12U);
  *to++ = tail(static_cast<char32_t>(unit) >> 6U);
  *to++ = tail(unit);
  return to;
}

}  // namespace

struct Utf8Sink::Encoder {
  const char16_t* from;
  const char16_t* end;
  char* to;

  void run(const Escapes& escapes, const Plain& plain) {
    for (;;) {
      while (from != end && *from < asciiSize && plain[*from]) *to++ = static_cast<char>(*from++);
      if (from == end) return;
      if (*from < asciiSize) {
        to = put(to, escapes[*from++]);
      } else {
        wide();
      }
    }
  }

  void wide() {
    const char16_t unit = *from++;
    if (isHigh(unit) && from != end && isLow(*from)) {
      to = putPair(to, unit, *from++);
    } else {
      to = putUnit(to, unit);
    }
  }
};

Utf8Sink::~Utf8Sink() { ::explicit_bzero(m_block.data(), m_block.size()); }

// The text itself would leave its smaller copies behind as they are.
void Utf8Sink::growText() {
  std::string larger;
  larger.reserve(2 * m_out.capacity() + m_used);
  larger.append(m_out);
  m_out.swap(larger);
  ::explicit_bzero(larger.data(), larger.size());
}

void Utf8Sink::flush() {
  if (m_out.capacity() - m_out.size() < m_used) growText();
  m_out.append(m_block.data(), m_used);
  m_used = 0;
}

char* Utf8Sink::room(std::size_t bytes) {
  if (m_block.size() - m_used < bytes) flush();
  return m_block.data() + m_used;
}

void Utf8Sink::markup(std::string_view ascii) {
  put(room(ascii.size()), ascii);
  m_used += ascii.size();
}

template <Utf8Sink::Escaping escaping>
void Utf8Sink::write(std::u16string_view text) {
  static constexpr Escapes escapes = escaping == Escaping::None ? escapesOfNames()
                                     : escaping == Escaping::CharacterData
                                         ? escapesOfCharacterData()
                                         : escapesOfAttributeValue();
  static constexpr Plain plain = plainOf(escapes);
  constexpr std::size_t most = 1024;
  while (!text.empty()) {
    std::size_t count = std::min(text.size(), most);
    // A pair stays together.
    if (count < text.size() && isHigh(text[count - 1])) --count;
    Encoder encoder{text.data(), text.data() + count, room(count * longestEscape)};
    encoder.run(escapes, plain);
    m_used = static_cast<std::size_t>(encoder.to - m_block.data());
    text.remove_prefix(count);
  }
}

void Utf8Sink::name(std::u16string_view text) { write<Escaping::None>(text); }
void Utf8Sink::characterData(std::u16string_view text) { write<Escaping::CharacterData>(text); }
void Utf8Sink::attributeValue(std::u16string_view text) { write<Escaping::AttributeValue>(text); }
