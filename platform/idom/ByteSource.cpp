#include "platform/idom/ByteSource.h"

#include <algorithm>
#include <climits>

ByteSource::~ByteSource() = default;
MemorySource::~MemorySource() = default;
StreamSource::~StreamSource() = default;

std::size_t MemorySource::read(char* to, std::size_t count) {
  const std::size_t copied = m_rest.copy(to, count);
  m_rest.remove_prefix(copied);
  return copied;
}

std::size_t StreamSource::read(char* to, std::size_t count) {
  if (m_hasFailed) return 0;
  const int wanted = static_cast<int>(std::min<std::size_t>(count, INT_MAX));
  const int got = m_stream.read(to, wanted);
  // A stream that claims more than was asked for has lost count.
  m_hasFailed = got < 0 || got > wanted;
  return m_hasFailed ? 0 : static_cast<std::size_t>(got);
}
