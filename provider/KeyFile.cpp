#include "provider/KeyFile.h"

#include <fcntl.h>
#include <string.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <string_view>

#include "provider/KeyFolder.h"
#include "provider/PosixFile.h"

// A key is worth as much as everything that it protects, so a file is looked at before it is read:
// by way of its descriptor, so that nobody can put another in its place in between.

namespace {

constexpr mode_t keyFileMode = 0600;
constexpr mode_t allModeBits = 07777;

constexpr std::string_view opening = "vrdkey 1 ";
constexpr std::size_t lineSize = opening.size() + 2 * SecretKey::size + 1;

/// The line of a key file, wiped at the end. One byte more, to see that a file goes on.
struct KeyLine {
  KeyLine() = default;
  ~KeyLine() { ::explicit_bzero(bytes.data(), bytes.size()); }
  KeyLine(const KeyLine&) = delete;
  KeyLine& operator=(const KeyLine&) = delete;

  std::array<char, lineSize + 1> bytes{};
};

/// Lower case only, so that a key has one text. -1 if @p digit is none.
int valueOf(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
  return -1;
}

/// Exact: a line that somebody edited is not what was made here, even where it could be read.
bool decode(const KeyLine& line, std::size_t size, SecretKey& key) {
  if (size != lineSize || line.bytes[lineSize - 1] != '\n') return false;
  if (std::string_view(line.bytes.data(), opening.size()) != opening) return false;
  const char* digits = line.bytes.data() + opening.size();
  for (std::size_t i = 0; i < SecretKey::size; ++i) {
    const int high = valueOf(digits[2 * i]);
    const int low = valueOf(digits[2 * i + 1]);
    if (high < 0 || low < 0) return false;
    key.data()[i] = static_cast<unsigned char>(high << 4 | low);
  }
  return true;
}

void encode(const SecretKey& key, KeyLine& line) {
  constexpr char digits[] = "0123456789abcdef";
  char* out = std::copy(opening.begin(), opening.end(), line.bytes.begin());
  for (std::size_t i = 0; i < SecretKey::size; ++i) {
    *out++ = digits[key.data()[i] >> 4];
    *out++ = digits[key.data()[i] & 15];
  }
  *out = '\n';
}

void requireTrusted(const std::string& path, const PosixFile& file) {
  struct stat status {};
  if (::fstat(file.descriptor(), &status) != 0) throwSystemError(path, "cannot be looked at");
  if (!S_ISREG(status.st_mode)) throw KeyError(path + ": is not a regular file");

  // Another user's file could be one that was put there to be protected with.
  const uid_t user = ::geteuid();
  if (status.st_uid != user && status.st_uid != 0 && user != 0) {
    throw KeyError(path + ": belongs to neither the user of this process nor root");
  }
  // Not a bit more, and not one less: what is not as it was made was changed by somebody.
  const mode_t mode = status.st_mode & allModeBits;
  if (mode != keyFileMode) {
    char text[32];
    std::snprintf(text, sizeof text, "has mode %04o", mode);
    throw KeyError(path + ": " + text + "; a key must have mode 0600");
  }
}

std::size_t readUpTo(const std::string& path, const PosixFile& file, char* out, std::size_t room) {
  std::size_t size = 0;
  while (size < room) {
    const ssize_t count = ::read(file.descriptor(), out + size, room - size);
    if (count == 0) break;
    if (count > 0) {
      size += static_cast<std::size_t>(count);
    } else if (errno != EINTR) {
      throwSystemError(path, "cannot be read");
    }
  }
  return size;
}

void writeAll(const std::string& path, const PosixFile& file, const char* bytes, std::size_t size) {
  while (size > 0) {
    const ssize_t count = ::write(file.descriptor(), bytes, size);
    if (count >= 0) {
      bytes += count;
      size -= static_cast<std::size_t>(count);
    } else if (errno != EINTR) {
      throwSystemError(path, "cannot be written");
    }
  }
}

/// Complete and on the disk when it returns. The owner comes first and the mode after it, as
/// changing the owner can take bits away.
void writeKey(const std::string& folder, const std::string& path, const PosixFile& file,
              const SecretKey& key) {
  KeyLine line;
  encode(key, line);
  giveToOwnerOf(folder, path, file);
  if (::fchmod(file.descriptor(), keyFileMode) != 0) throwSystemError(path, "cannot get its mode");
  writeAll(path, file, line.bytes.data(), lineSize);
  if (::fsync(file.descriptor()) != 0) throwSystemError(path, "cannot be brought to the disk");
}

}  // namespace

void readKeyFile(const std::string& path, SecretKey& key) {
  // Not blocking, so that a pipe in the place of the file stops nobody.
  const PosixFile file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file.isOpen()) throwSystemError(path, "cannot be opened");
  requireTrusted(path, file);
  KeyLine line;
  const std::size_t size = readUpTo(path, file, line.bytes.data(), line.bytes.size());
  if (!decode(line, size, key)) {
    throw KeyError(path + ": is not a key: one line, \"vrdkey 1 \" and 64 hexadecimal digits");
  }
}

UnpublishedKeyFile::UnpublishedKeyFile(const std::string& folder, const SecretKey& key)
    : m_path(folder + "/new-XXXXXX") {
  // Makes a file that was not there, with mode 0600 from its first moment.
  const PosixFile file(::mkostemp(m_path.data(), O_CLOEXEC));
  if (!file.isOpen()) throwSystemError(m_path, "cannot be made");
  try {
    writeKey(folder, m_path, file, key);
  } catch (...) {
    ::unlink(m_path.c_str());
    throw;
  }
}

UnpublishedKeyFile::~UnpublishedKeyFile() { ::unlink(m_path.c_str()); }

bool UnpublishedKeyFile::publish(const std::string& path) const {
  // A link and not a renaming, which would replace what another process published just now.
  if (::link(m_path.c_str(), path.c_str()) == 0) return true;
  if (errno != EEXIST) throwSystemError(path, "cannot be made");
  return false;
}
