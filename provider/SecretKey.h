#pragma once

#include <string.h>

#include <array>
#include <cstddef>

/// The bytes of a key for AES-256, wiped at the end. Not copied, so that there is one place to
/// wipe.
class SecretKey {
 public:
  static constexpr std::size_t size = 32;

  SecretKey() = default;
  ~SecretKey() { ::explicit_bzero(m_bytes.data(), m_bytes.size()); }
  SecretKey(const SecretKey&) = delete;
  SecretKey& operator=(const SecretKey&) = delete;

  unsigned char* data() { return m_bytes.data(); }
  const unsigned char* data() const { return m_bytes.data(); }

 private:
  std::array<unsigned char, size> m_bytes{};
};
