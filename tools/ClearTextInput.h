#pragma once

#include <cstddef>
#include <stdexcept>
#include <string_view>

#include "crypto/WipedMemory.h"

/// What stands on the standard input is no clear text to protect; the text tells why.
class ClearTextError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The clear text of a value, read from the standard input and wiped at the end. One line end
/// behind it is not part of it. At a terminal one line is read, which is not shown.
class ClearTextInput {
 public:
  /// Longer than any value that is worth protecting.
  static constexpr std::size_t longest = 1 << 20;

  /// Throws `ClearTextError`, also for a text that no reader would get back: an empty one, and one
  /// that holds a NUL.
  ClearTextInput();

  std::string_view text() { return {m_buffer.data(), m_size}; }

 private:
  void read();
  void dropLineEnd();

  WipedBuffer m_buffer{longest + 2};  // one line end more than the text
  std::size_t m_size = 0;
};
