#include "tools/FileContent.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace {

constexpr std::size_t blockSize = 65536;

/// @return 0, or the number of the system's error
int readAll(int file, std::string& content) {
  std::string block(blockSize, '\0');
  for (;;) {
    const ssize_t got = ::read(file, block.data(), block.size());
    if (got > 0) {
      content.append(block, 0, static_cast<std::size_t>(got));
    } else if (got == 0) {
      return 0;
    } else if (errno != EINTR) {
      return errno;
    }
  }
}

std::optional<std::string> readOpen(int file) {
  std::string content;
  errno = readAll(file, content);
  if (errno != 0) return std::nullopt;
  return content;
}

}  // namespace

std::optional<std::string> readFile(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return std::nullopt;
  std::optional<std::string> content = readOpen(file);
  const int failure = errno;
  ::close(file);
  errno = failure;
  return content;
}

std::optional<std::string> readStandardInput() { return readOpen(STDIN_FILENO); }
