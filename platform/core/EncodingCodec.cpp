#include "platform/core/EncodingCodec.h"

#include <stdexcept>

#include "platform/core/Ascii.h"
#include "platform/core/IcuCodec.h"
#include "platform/core/SingleByteCodec.h"
#include "platform/core/VRDRaise.h"
#include "platform/core/WideCodec.h"

#define VRD_SOURCE_UNIT "EncodingCodec"

// Which codec a name means.

namespace {

// Case and punctuation do not count, as they do not in ICU: one name means one encoding in all its
// spellings, whoever of the two answers.
bool isIgnoredInNames(char c) { return c == '-' || c == '_' || c == ' '; }

// Whether `name` is `plain`, which has lower case and nothing that is ignored.
bool isNamed(const char* name, const char* plain) {
  for (; *name != '\0'; ++name) {
    if (isIgnoredInNames(*name)) continue;
    if (asciiLower(*name) != *plain++) return false;
  }
  return *plain == '\0';
}

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

EncodingCodec::~EncodingCodec() = default;

bool EncodingCodec::isUtf8(const char* name) noexcept {
  return name == nullptr || isNamed(name, "utf8");
}

std::unique_ptr<EncodingCodec> EncodingCodec::open(const char* name) {
  std::unique_ptr<EncodingCodec> codec = openOwn(name);
  if (codec == nullptr) codec = IcuCodec::open(name);
  if (codec == nullptr) {
    // A name that is not understood is a mistake in the program or in a document. To fall back on
    // some encoding would turn it into wrong text.
    const std::invalid_argument cause("unknown encoding \"" + std::string(name) + "\"");
    VRD_THROW(VRDStdExceptionError(cause));
  }
  return codec;
}
