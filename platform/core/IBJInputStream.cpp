#include "platform/core/IBJInputStream.h"

#include <cxxabi.h>

IBJInputStream::~IBJInputStream() = default;

IBJBufferedInputStream::IBJBufferedInputStream(std::istream& source) : m_source(source) {}
IBJBufferedInputStream::~IBJBufferedInputStream() = default;

int IBJBufferedInputStream::read(char* buffer, int count) {
  // Reaching the end also sets the fail bit, so the order of the questions matters: broken, at the
  // end, never usable (a file that was not there).
  if (buffer == nullptr || count < 0 || m_source.bad()) return -1;
  if (m_source.eof()) return 0;
  if (m_source.fail()) return -1;
  try {
    m_source.read(buffer, count);
  } catch (const abi::__forced_unwind&) {
    throw;  // The thread is being cancelled; whoever stops that ends the process.
  } catch (...) {
    // The state of the stream tells the same, and tells an end from a failure besides.
  }
  return m_source.bad() ? -1 : static_cast<int>(m_source.gcount());
}
