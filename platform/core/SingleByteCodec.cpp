#include "platform/core/SingleByteCodec.h"

#include "platform/core/Utf.h"

namespace {

/// Copies the ASCII bytes that stand at @p offset; gives their number. Both directions go in such
/// runs, since ASCII is nearly all there is and is the same on both sides.
std::size_t appendAsciiRun(std::string& out, std::string_view bytes, std::size_t offset) {
  const std::size_t length = utf::asciiRun(bytes, offset);
  out.append(bytes, offset, length);
  return length;
}

}  // namespace

std::string SingleByteCodec::decode(std::string_view bytes) {
  std::string result;
  result.reserve(bytes.size());
  for (std::size_t offset = 0; offset < bytes.size();) {
    offset += appendAsciiRun(result, bytes, offset);
    if (offset < bytes.size()) utf::append(result, characterOf(bytes[offset++]));
  }
  return result;
}

std::string SingleByteCodec::encode(std::string_view utf8, Unencodable policy) {
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

char32_t SingleByteCodec::characterOf(char byte) const {
  const char32_t character = static_cast<unsigned char>(byte);
  return character < m_limit ? character : utf::undecodable(byte);
}

// An odd byte goes out as it came in, in ISO-8859-1 too, where it then means the character of its
// value. A file name in that encoding, once read as UTF-8, comes out as it was meant.
void SingleByteCodec::put(std::string& out, char32_t character, Unencodable policy) const {
  if (character < m_limit || utf::isOdd(character)) {
    out += static_cast<char>(character);
  } else if (policy == Unencodable::Substitute) {
    out += '\x1A';  // SUBSTITUTE, control character of both
  } else {
    out += xmlReference(character);
  }
}
