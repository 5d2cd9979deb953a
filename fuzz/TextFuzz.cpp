// The text type and its encodings. The first byte of an input chooses the encoding.
#include "fuzz/Fuzzing.h"
#include "platform/core/I18NEncode.h"
#include "platform/core/I18NString.h"

namespace {

// The first ones take in every text and give it back. (In US-ASCII two bytes that mean nothing
// there can be one character of UTF-8.)
constexpr const char* encodings[] = {
    "UTF-8",    "UTF-16",       "UTF-16LE",    "UTF-16BE",  "UTF-32",      "UTF-32LE",
    "UTF-32BE", "ISO-8859-1",   "US-ASCII",    "Shift_JIS", "EUC-JP",      "GB18030",
    "Big5",     "windows-1252", "ISO-2022-JP", "UTF-7",     "ISO-2022-KR", "IBM037",
    "HZ",       "SCSU",         "BOCU-1",      "KOI8-R",    "EUC-KR",      "ISO-2022-CN"};
constexpr std::size_t ownEncodings = 8;

I18NString decoded(const std::string& bytes, const char* encoding) {
  return I18NString(bytes.data(), encoding, static_cast<int>(bytes.size()));
}

std::string encoded(const I18NString& text, const char* encoding) {
  int length = 0;
  const char* bytes = text.c_str(encoding, &length);
  return std::string(bytes, static_cast<std::size_t>(length));
}

void cutAndJoin(const I18NString& text) {
  int characters = 0;
  for (auto at = text.begin(); *at != 0 || characters < text.length(); at++) ++characters;
  require(characters == text.length(), "as many characters as it is long");
  const int middle = characters / 2;
  const I18NString head = text.substr(0, middle), tail = text.substring(middle, characters);
  require(head + tail == text && head.length() == middle, "two halves");
  require(!(text < head) && (tail.empty() || head < text), "the order of a text and its head");
  require(tail.empty() || text.find(tail, middle) == middle, "the place of a half");
  I18NString changed = text;
  changed.replace(middle, -1, tail);
  require(changed == text, "a half replaced by itself");
  changed.erase(0, middle);
  require(changed == tail, "a half erased");
  changed.resize(characters, L'\u20AC');
  changed.trim(L'\u20AC');
  require(I18NString(changed.utf8()).length() == changed.length(), "the length kept");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::size_t chosen = data[0] % std::size(encodings);
  const char* encoding = encodings[chosen];
  const std::string bytes = textOfInput(data + 1, size - 1);

  require(encoded(decoded(bytes, nullptr), nullptr) == bytes, "bytes of the default encoding");
  const I18NString text = decoded(bytes, encoding);
  const I18NString again = decoded(encoded(text, encoding), encoding);
  require(chosen >= ownEncodings || again == text, "a text encoded and decoded");
  require(I18NString::fromUtf16(text.toUtf16()) == text, "a text through UTF-16");
  require(text.equalsUtf16(text.toUtf16()), "a text beside its UTF-16");
  require(I18NString(text.utf8()) == text, "a text through UTF-8");
  cutAndJoin(text);
  encoded(decoded(bytes, nullptr), encoding);
  I18NEncodeForXml(bytes, encoding);
  return 0;
}
