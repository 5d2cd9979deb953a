#pragma once

#include <cstddef>
#include <string_view>

#include "platform/core/IBJInputStream.h"

/// Where a parser has its bytes from.
class ByteSource {
 public:
  virtual ~ByteSource();
  /// Up to @p count bytes; 0 at the end and after a failure.
  virtual std::size_t read(char* to, std::size_t count) = 0;
  /// Whether the bytes ended because they could not be read.
  virtual bool hasFailed() const = 0;

 protected:
  ByteSource() = default;
  ByteSource(const ByteSource&) = default;
  ByteSource& operator=(const ByteSource&) = default;
};

/// Bytes in somebody else's memory.
class MemorySource final : public ByteSource {
 public:
  explicit MemorySource(std::string_view bytes) : m_rest(bytes) {}
  ~MemorySource() override;
  std::size_t read(char* to, std::size_t count) override;
  bool hasFailed() const override { return false; }

 private:
  std::string_view m_rest;
};

/// Bytes of a stream.
class StreamSource final : public ByteSource {
 public:
  explicit StreamSource(IBJInputStream& stream) : m_stream(stream) {}
  ~StreamSource() override;
  std::size_t read(char* to, std::size_t count) override;
  bool hasFailed() const override { return m_hasFailed; }

 private:
  IBJInputStream& m_stream;
  bool m_hasFailed = false;
};
