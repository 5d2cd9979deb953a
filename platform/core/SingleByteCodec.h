#pragma once

#include "platform/core/EncodingCodec.h"

/// US-ASCII and ISO-8859-1: a byte is the code point, below a limit.
class SingleByteCodec : public EncodingCodec {
 public:
  /// @param limit the first code point that the encoding does not have, at most 0x100
  explicit SingleByteCodec(char32_t limit) : m_limit(limit) {}

  std::size_t unitWidth() const override { return 1; }
  std::string decode(std::string_view bytes) override;
  std::string encode(std::string_view utf8, Unencodable policy) override;

 private:
  char32_t characterOf(char byte) const;
  void put(std::string& out, char32_t character, Unencodable policy) const;

  const char32_t m_limit;
};
