#include "platform/core/EncodingCodec.h"

#include <cstdint>
#include <cstdio>
#include <stdexcept>

#include "platform/core/IcuCodec.h"
#include "platform/core/Utf.h"
#include "platform/core/VRDRaise.h"

#define VRD_SOURCE_UNIT "EncodingCodec"

EncodingCodec::~EncodingCodec() = default;

std::string xmlReference(char32_t character) noexcept {
  // The mask shows the compiler that it fits; as a std::string it is short enough for no
  // allocation.
  char text[sizeof "&#x10FFFF;"];
  std::snprintf(text, sizeof text, "&#x%X;", static_cast<unsigned>(character & 0x1FFFFFU));
  return text;
}

namespace {

// Case and punctuation do not count, as they do not in ICU: one name means one encoding in all its
// spellings, whoever of the two answers.
bool isIgnoredInNames(char c) { return c == '-' || c == '_' || c == ' '; }

// Not `tolower`: that asks the process locale.
char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// Whether `name` is `plain`, which has lower case and nothing that is ignored.
bool isNamed(const char* name, const char* plain) {
  for (; *name != '\0'; ++name) {
    if (isIgnoredInNames(*name)) continue;
    if (lower(*name) != *plain++) return false;
  }
  return *plain == '\0';
}

// US-ASCII and ISO-8859-1: a byte is the code point, below a limit.
class SingleByteCodec : public EncodingCodec {
 public:
  explicit SingleByteCodec(char32_t limit) : m_limit(limit) {}

  std::size_t unitWidth() const override { return 1; }

  std::string decode(std::string_view bytes) override {
    std::string result;
    result.reserve(bytes.size());
    // In runs, since ASCII is nearly all there is and is the same on both sides.
    for (std::size_t offset = 0; offset < bytes.size();) {
      offset += appendAsciiRun(result, bytes, offset);
      if (offset < bytes.size()) utf::append(result, characterOf(bytes[offset++]));
    }
    return result;
  }

  std::string encode(std::string_view utf8, Unencodable policy) override {
    std::string result;
    result.reserve(utf8.size());
    for (std::size_t offset = 0; offset < utf8.size();) {
      offset += appendAsciiRun(result, utf8, offset);
      if (offset == utf8.size()) break;
      const utf::Decoded next = utf::decode(utf8, offset);
      put(result, next.character, policy);
      offset += next.length;
    }
    return result;
  }

 private:
  // Copies the ASCII bytes that stand at `offset`; gives their number.
  static std::size_t appendAsciiRun(std::string& out, std::string_view bytes, std::size_t offset) {
    const std::size_t length = utf::asciiRun(bytes, offset);
    out.append(bytes, offset, length);
    return length;
  }

  char32_t characterOf(char byte) const {
    const char32_t character = static_cast<unsigned char>(byte);
    return character < m_limit ? character : utf::undecodable(byte);
  }

  // An odd byte goes out as it came in, in ISO-8859-1 too, where it then means the character of its
  // value. A file name in that encoding, once read as UTF-8, comes out as it was meant.
  void put(std::string& out, char32_t character, Unencodable policy) const {
    if (character < m_limit || utf::isOdd(character)) {
      out += static_cast<char>(character);
    } else if (policy == Unencodable::Substitute) {
      out += '\x1A';  // SUBSTITUTE, control character of both
    } else {
      out += xmlReference(character);
    }
  }

  const char32_t m_limit;
};

// UTF-16 and UTF-32. They hold every character, so nothing is ever unencodable. Odd bytes cross as
// their code values, which no valid text in these encodings has, and so come back as they were.
class WideCodec : public EncodingCodec {
 public:
  enum class Order { Big, Little, Marked };

  WideCodec(std::size_t width, Order order) : m_width(width), m_order(order) {}

  std::size_t unitWidth() const override { return m_width; }

  std::string decode(std::string_view bytes) override {
    const bool little = takeMark(bytes);  // first: it shortens `bytes`
    const std::string_view rest = bytes.substr(bytes.size() - bytes.size() % m_width);
    std::string result = m_width == 2 ? decodeUtf16(bytes, little) : decodeUtf32(bytes, little);
    for (const char byte : rest) utf::append(result, utf::undecodable(byte));
    return result;
  }

  std::string encode(std::string_view utf8, Unencodable) override {
    std::string result;
    result.reserve((utf8.size() + 1) * m_width);
    // The empty text stays empty, so that who reads it sees its NUL at once.
    if (m_order == Order::Marked && !utf8.empty()) put(result, mark);
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

 private:
  static constexpr std::uint32_t mark = 0xFEFF;

  // Removes a byte order mark where one may stand. Whether the rest is little-endian. Without a
  // mark it is big-endian, as the standard has it. Where the name tells the order, U+FEFF is a
  // character.
  bool takeMark(std::string_view& bytes) const {
    if (m_order != Order::Marked || bytes.size() < m_width) return m_order == Order::Little;
    const bool little = unitAt(bytes, 0, true) == mark;
    if (little || unitAt(bytes, 0, false) == mark) bytes.remove_prefix(m_width);
    return little;
  }

  // Byte by byte, so that neither alignment nor the order of the machine matters.
  std::uint32_t unitAt(std::string_view bytes, std::size_t offset, bool little) const {
    std::uint32_t unit = 0;
    for (std::size_t i = 0; i < m_width; ++i) {
      const std::size_t place = little ? m_width - 1 - i : i;
      unit = unit << 8 | static_cast<unsigned char>(bytes[offset + place]);
    }
    return unit;
  }

  void put(std::string& out, std::uint32_t unit) const {
    for (std::size_t i = 0; i < m_width; ++i) {
      const std::size_t place = m_order == Order::Little ? i : m_width - 1 - i;
      out += static_cast<char>(unit >> (8 * place) & 0xFFU);
    }
  }

  // A cut unit at the end is left to the caller. What is no character becomes U+FFFD as a whole,
  // not byte by byte: its bytes mean nothing outside this encoding.
  std::string decodeUtf16(std::string_view bytes, bool little) const {
    std::u16string text;
    text.reserve(bytes.size() / m_width);
    for (std::size_t offset = 0; offset + m_width <= bytes.size(); offset += m_width) {
      text += static_cast<char16_t>(unitAt(bytes, offset, little));
    }
    std::string result;
    utf::appendUtf16(result, text);
    return result;
  }

  std::string decodeUtf32(std::string_view bytes, bool little) const {
    std::string result;
    for (std::size_t offset = 0; offset + m_width <= bytes.size(); offset += m_width) {
      utf::append(result, utf::holdable(unitAt(bytes, offset, little)));
    }
    return result;
  }

  const std::size_t m_width;
  const Order m_order;
};

using Order = WideCodec::Order;

// What we convert ourselves: the encodings that need no tables. ICU takes several times as long for
// them. Their less common names go to ICU all the same.
struct WideEncoding {
  const char* name;
  std::size_t width;
  Order order;
};
constexpr WideEncoding wideEncodings[] = {
    {"utf16", 2, Order::Marked}, {"utf16be", 2, Order::Big}, {"utf16le", 2, Order::Little},
    {"utf32", 4, Order::Marked}, {"utf32be", 4, Order::Big}, {"utf32le", 4, Order::Little},
};

struct SingleByteEncoding {
  const char* name;
  char32_t limit;
};
constexpr SingleByteEncoding singleByteEncodings[] = {
    {"usascii", 0x80}, {"ascii", 0x80}, {"iso88591", 0x100}, {"latin1", 0x100}};

std::unique_ptr<EncodingCodec> openOwn(const char* name) {
  for (const SingleByteEncoding& row : singleByteEncodings) {
    if (isNamed(name, row.name)) return std::make_unique<SingleByteCodec>(row.limit);
  }
  for (const WideEncoding& row : wideEncodings) {
    if (isNamed(name, row.name)) return std::make_unique<WideCodec>(row.width, row.order);
  }
  return nullptr;
}

}  // namespace

bool EncodingCodec::isUtf8(const char* name) noexcept {
  return name == nullptr || isNamed(name, "utf8");
}

std::unique_ptr<EncodingCodec> EncodingCodec::open(const char* name) {
  std::unique_ptr<EncodingCodec> codec = openOwn(name);
  if (codec == nullptr) codec = IcuCodec::open(name);
  if (codec == nullptr) {
    const std::invalid_argument cause("unknown encoding \"" + std::string(name) + "\"");
    VRD_THROW(VRDStdExceptionError(cause));
  }
  return codec;
}

EncodedText::EncodedText(const char* encoding, std::string_view utf8) {
  const auto codec = EncodingCodec::open(encoding);
  m_unitWidth = codec->unitWidth();
  m_bytes = codec->encode(utf8, Unencodable::Substitute);
  m_bytes.append(m_unitWidth, '\0');
}
