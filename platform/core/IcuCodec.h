#pragma once

#include <unicode/ucnv.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "platform/core/EncodingCodec.h"

/// Any encoding that ICU knows.
class IcuCodec : public EncodingCodec {
 public:
  /// Null when ICU does not know @p name.
  static std::unique_ptr<EncodingCodec> open(const char* name);

  std::size_t unitWidth() const override;
  std::string decode(std::string_view bytes) override;
  std::string encode(std::string_view utf8, Unencodable policy) override;

 private:
  struct Close {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
  };
  using Converter = std::unique_ptr<UConverter, Close>;

  explicit IcuCodec(Converter converter) : m_converter(std::move(converter)) {}

  // Opened for each codec: ICU keeps the tables, and the opening costs less than a microsecond.
  Converter m_converter;
};
