#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

/// Turns the UTF-16 of a tree into the UTF-8 of XML, in one pass, and appends it to a text. What
/// XML cannot hold, lone surrogates included, becomes U+FFFD.
///
/// The tree may hold a secret, so no part of the text stays anywhere but in the text itself.
class Utf8Sink {
 public:
  explicit Utf8Sink(std::string& out) : m_out(out) {}
  ~Utf8Sink();
  Utf8Sink(const Utf8Sink&) = delete;
  Utf8Sink& operator=(const Utf8Sink&) = delete;

  void markup(std::string_view ascii);
  /// A name, which holds nothing that needs escaping.
  void name(std::u16string_view text);
  /// Character data between tags. A carriage return is escaped: a parser would make it a newline.
  void characterData(std::u16string_view text);
  /// What stands between the quotes of an attribute. White space but the space is escaped: a parser
  /// would make it a space.
  void attributeValue(std::u16string_view text);

  /// To be called at the end: hands over what is still held back.
  void flush();

 private:
  enum class Escaping { None, CharacterData, AttributeValue };
  struct Encoder;

  template <Escaping>
  void write(std::u16string_view text);
  char* room(std::size_t bytes);
  void growText();

  std::string& m_out;
  std::size_t m_used = 0;
  std::array<char, 8192> m_block;  // not initialised: it is written before it is read
};
