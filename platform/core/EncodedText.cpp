#include "platform/core/EncodedText.h"

#include "platform/core/EncodingCodec.h"

EncodedText::EncodedText(const char* encoding, std::string_view utf8) {
  const auto codec = EncodingCodec::open(encoding);
  m_unitWidth = codec->unitWidth();
  m_bytes = codec->encode(utf8, Unencodable::Substitute);
  // A reader of two-byte units looks for two zero bytes; `std::string` brings only one.
  m_bytes.append(m_unitWidth, '\0');
}
