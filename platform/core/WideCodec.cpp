#include "platform/core/WideCodec.h"

#include "platform/core/Utf.h"
#include "platform/core/Utf16.h"

namespace {

constexpr std::uint32_t byteOrderMark = 0xFEFF;

}  // namespace

std::string WideCodec::decode(std::string_view bytes) {
  const bool little = takeMark(bytes);  // first: it shortens `bytes`
  const std::string_view rest = bytes.substr(bytes.size() - bytes.size() % m_width);
  std::string result = m_width == 2 ? decodeUtf16(bytes, little) : decodeUtf32(bytes, little);
  // The unit that the end cuts: what there is of it is kept.
  for (const char byte : rest) utf::append(result, utf::undecodable(byte));
  return result;
}

std::string WideCodec::encode(std::string_view utf8, Unencodable) {
  std::string result;
  result.reserve((utf8.size() + 1) * m_width);
  // The empty text stays empty, so that who reads it sees its NUL at once.
  if (m_order == Order::Marked && !utf8.empty()) put(result, byteOrderMark);
  if (m_width == 2) {
    for (const char16_t unit : utf::toUtf16(utf8)) put(result, unit);
    return result;
  }
  for (std::size_t offset = 0; offset < utf8.size();) {
    const utf::Decoded next = utf::decode(utf8, offset);
    put(result, next.character);
    offset += next.length;
  }
  return result;
}

// Removes a byte order mark where one may stand. Whether the rest is little-endian. Without a mark
// it is big-endian, as the standard has it. Where the name tells the order, U+FEFF is a character.
bool WideCodec::takeMark(std::string_view& bytes) const {
  if (m_order != Order::Marked || bytes.size() < m_width) return m_order == Order::Little;
  const bool little = unitAt(bytes, 0, true) == byteOrderMark;
  if (little || unitAt(bytes, 0, false) == byteOrderMark) bytes.remove_prefix(m_width);
  return little;
}

// Byte by byte, so that neither alignment nor the order of the machine matters.
std::uint32_t WideCodec::unitAt(std::string_view bytes, std::size_t offset, bool little) const {
  std::uint32_t unit = 0;
  for (std::size_t i = 0; i < m_width; ++i) {
    const std::size_t place = little ? m_width - 1 - i : i;
    unit = unit << 8 | static_cast<unsigned char>(bytes[offset + place]);
  }
  return unit;
}

void WideCodec::put(std::string& out, std::uint32_t unit) const {
  for (std::size_t i = 0; i < m_width; ++i) {
    const std::size_t place = m_order == Order::Little ? i : m_width - 1 - i;
    out += static_cast<char>(unit >> (8 * place) & 0xFFU);
  }
}

// Both leave a cut unit at the end to the caller. What is no character becomes U+FFFD as a whole,
// not byte by byte: its bytes mean nothing outside this encoding.

// By way of UTF-16 in memory: pairing surrogates is written there, and once is enough.
std::string WideCodec::decodeUtf16(std::string_view bytes, bool little) const {
  std::u16string text;
  text.reserve(bytes.size() / m_width);
  for (std::size_t offset = 0; offset + m_width <= bytes.size(); offset += m_width) {
    text += static_cast<char16_t>(unitAt(bytes, offset, little));
  }
  std::string result;
  utf::appendUtf16(result, text);
  return result;
}

std::string WideCodec::decodeUtf32(std::string_view bytes, bool little) const {
  std::string result;
  for (std::size_t offset = 0; offset + m_width <= bytes.size(); offset += m_width) {
    utf::append(result, utf::holdable(unitAt(bytes, offset, little)));
  }
  return result;
}
