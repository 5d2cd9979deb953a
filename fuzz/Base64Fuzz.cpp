// base64, both ways, beside OpenSSL's encoder.
#include <openssl/evp.h>

#include <vector>

#include "fuzz/Fuzzing.h"
#include "platform/core/VRDBase64.h"

namespace {

struct Decoded {
  int result;
  std::string bytes;
};

Decoded decode(const std::string& text, unsigned long room) {
  std::vector<char> out(room);  // of its own size, so that the checkers see a byte too much
  const int result = VRDBase64Decode(text.c_str(), out.data(), &room);
  return {result, std::string(out.data(), room)};
}

std::string encode(const std::string& bytes) {
  std::string text((bytes.size() + 2) / 3 * 4 + 1, '\0');
  const auto* from = reinterpret_cast<const unsigned char*>(bytes.data());
  text.resize(static_cast<std::size_t>(EVP_EncodeBlock(
      reinterpret_cast<unsigned char*>(text.data()), from, static_cast<int>(bytes.size()))));
  return text;
}

std::string withoutBlanks(const char* text) {
  std::string rest;
  for (; *text != '\0'; ++text) {
    if (std::string_view(" \t\r\n").find(*text) == std::string_view::npos) rest += *text;
  }
  return rest;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input = textOfInput(data, size);
  const std::string text = encode(input);
  const Decoded back = decode(text, size + 1);
  require(back.result == 0 && back.bytes == input, "bytes encoded and decoded");
  require(decode(text, size).result == 2, "one byte too little room");

  const Decoded decoded = decode(input, size + 1);
  if (decoded.result == 0) {
    require(encode(decoded.bytes) == withoutBlanks(input.c_str()), "the one text of these bytes");
  } else {
    require(decoded.bytes.empty(), "no bytes of a failure");
  }
  return 0;
}
