#include "platform/core/I18NEncode.h"

#include "platform/core/EncodingCodec.h"
#include "platform/core/Utf.h"

std::string I18NEncodeForXml(std::string_view utf8, const char* encoding) {
  // XML has no form for a byte that means nothing, so it goes before anything else is looked at. A
  // copy is made only for a text that has one.
  std::string clean;
  if (utf::measure(utf8).oddBytes != 0) {
    clean = utf::withoutOddBytes(utf8);
    utf8 = clean;
  }
  if (EncodingCodec::isUtf8(encoding)) return std::string(utf8);
  return EncodingCodec::open(encoding)->encode(utf8, Unencodable::XmlReference);
}
