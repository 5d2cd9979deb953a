#include "provider/KeyFolder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <limits>
#include <memory>
#include <string_view>

#include "provider/KeyFile.h"
#include "provider/PosixFile.h"

namespace {

constexpr std::string_view extension = ".key";
constexpr std::size_t digitCount = 10;
constexpr KeyNumber lastNumber = std::numeric_limits<KeyNumber>::max();

/// The number in the name of a key's file; 0 for any other name: what is not exactly of the form is
/// somebody else's file, or one that is being made.
KeyNumber numberIn(std::string_view name) {
  if (name.size() != digitCount + extension.size() || name.substr(digitCount) != extension) {
    return 0;
  }
  KeyNumber number = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + digitCount, number);
  return error == std::errc() && end == name.data() + digitCount ? number : 0;
}

/// The folder itself, and not what a link leads to.
int openFolder(const std::string& path) {
  return ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

struct FolderCloser {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

void makeFolder(const std::string& path) {
  if (::mkdir(path.c_str(), 0700) == 0) {
    const PosixFile folder(openFolder(path));
    if (!folder.isOpen()) throwSystemError(path, "cannot be opened");
    giveToOwnerOf(path + "/..", path, folder);
  } else if (errno != EEXIST) {
    throwSystemError(path, "cannot be made");
  }
}

/// Brings names to the disk that were made in the folder.
void syncFolder(const std::string& path) {
  const PosixFile folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder.isOpen() || ::fsync(folder.descriptor()) != 0) {
    throwSystemError(path, "cannot be brought to the disk");
  }
}

}  // namespace

std::string KeyFolder::fileOf(KeyNumber number) const {
  char digits[digitCount + 1];
  std::snprintf(digits, sizeof digits, "%010u", number);
  return m_path + "/" + digits + std::string(extension);
}

// Not by std::filesystem, whose iterators end the process where they find no memory.
KeyNumber KeyFolder::newest() const {
  const std::unique_ptr<DIR, FolderCloser> folder(::opendir(m_path.c_str()));
  if (!folder && errno == ENOENT) return 0;
  if (!folder) throwSystemError(m_path, "cannot be listed");
  KeyNumber newest = 0;
  errno = 0;
  while (const dirent* entry = ::readdir(folder.get())) {
    newest = std::max(newest, numberIn(entry->d_name));
  }
  if (errno != 0) throwSystemError(m_path, "cannot be listed");
  return newest;
}

void KeyFolder::read(KeyNumber number, SecretKey& key) const { readKeyFile(fileOf(number), key); }

// How a key is added:
//
//   1. The key is written to a file that nobody looks for, and brought to the disk.
//   2. That file gets the name of the next number. If another process was faster, the number after
//      it: keys are never replaced, as what they protect would be lost.
//   3. The name is brought to the disk, and the first name goes.
KeyNumber KeyFolder::add(const SecretKey& key) const {
  makeFolder(m_path);
  const UnpublishedKeyFile file(m_path, key);  // 1
  KeyNumber number = newest();
  do {
    if (number == lastNumber) throw KeyError(m_path + ": has no number left for another key");
    ++number;
  } while (!file.publish(fileOf(number)));  // 2
  syncFolder(m_path);                       // 3
  return number;
}
