#pragma once

#include <cstdint>

#include "platform/core/EncodingCodec.h"

/// UTF-16 and UTF-32. They hold every character, so nothing is ever unencodable. Odd bytes cross as
/// their code values, which no valid text in these encodings has, and so come back as they were.
class WideCodec : public EncodingCodec {
 public:
  /// How the bytes of a unit follow each other. `Marked` looks for a byte order mark and writes
  /// one.
  enum class Order { Big, Little, Marked };

  /// @param width bytes of a unit: 2 for UTF-16, 4 for UTF-32
  WideCodec(std::size_t width, Order order) : m_width(width), m_order(order) {}

  std::size_t unitWidth() const override { return m_width; }
  std::string decode(std::string_view bytes) override;
  std::string encode(std::string_view utf8, Unencodable policy) override;

 private:
  bool takeMark(std::string_view& bytes) const;
  std::uint32_t unitAt(std::string_view bytes, std::size_t offset, bool little) const;
  void put(std::string& out, std::uint32_t unit) const;
  std::string decodeUtf16(std::string_view bytes, bool little) const;
  std::string decodeUtf32(std::string_view bytes, bool little) const;

  const std::size_t m_width;
  const Order m_order;
};
