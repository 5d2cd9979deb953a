#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// A text in an encoding other than UTF-8, ended by a NUL of full width.
class EncodedText {
 public:
  /// @throw VRDStdExceptionError for an encoding that nobody knows
  EncodedText(const char* encoding, std::string_view utf8);

  const char* data() const { return m_bytes.data(); }
  /// In bytes, without the NUL.
  std::size_t size() const { return m_bytes.size() - m_unitWidth; }
  std::size_t sizeWithNul() const { return m_bytes.size(); }

 private:
  std::size_t m_unitWidth;
  std::string m_bytes;
};
