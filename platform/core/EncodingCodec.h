#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "platform/core/Unencodable.h"

/// One encoding, to and from UTF-8 with odd bytes (see Utf.h). Belongs to one thread at a time.
class EncodingCodec {
 public:
  /// Whether @p name means UTF-8; null does. Case, "-", "_" and blanks do not matter.
  static bool isUtf8(const char* name) noexcept;

  /// @param name not a name of UTF-8; throws `VRDStdExceptionError` when nobody knows it
  static std::unique_ptr<EncodingCodec> open(const char* name);

  EncodingCodec() = default;
  virtual ~EncodingCodec();
  EncodingCodec(const EncodingCodec&) = delete;
  EncodingCodec& operator=(const EncodingCodec&) = delete;

  /// Bytes of the smallest unit, and so of the NUL that ends a text: 1, 2 or 4.
  virtual std::size_t unitWidth() const = 0;

  /// A byte that means nothing becomes an odd byte, or U+FFFD where it is below 0x80.
  virtual std::string decode(std::string_view bytes) = 0;

  /// An odd byte comes out as that byte, and as its code value in UTF-16 and UTF-32.
  virtual std::string encode(std::string_view utf8, Unencodable policy) = 0;
};
