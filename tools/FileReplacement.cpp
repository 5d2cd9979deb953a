#include "tools/FileReplacement.h"

#include <fcntl.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string_view>

#include "tools/FileContent.h"
#include "tools/Text.h"

namespace {

[[noreturn]] void fail(const std::string& path, const char* what) {
  throw FileReplacementError(onOneLine(path) + ' ' + what + ": " + strerror(errno));
}

/// A rename over a symbolic link would replace the link, and leave the file that others read.
std::string withoutLinks(const std::string& path) {
  std::error_code failure;
  const std::filesystem::path canonical = std::filesystem::canonical(path, failure);
  errno = failure.value();
  if (failure) fail(path, "cannot be found");
  return canonical.string();
}

/// The new content under a name of its own, which is gone again unless it took the file's place.
class NewFile {
 public:
  explicit NewFile(const std::string& path)
      : m_name(path + ".XXXXXX"), m_file(::mkostemp(m_name.data(), O_CLOEXEC)) {
    if (m_file < 0) fail(m_name, "cannot be made");
  }
  ~NewFile() {
    ::close(m_file);
    if (!m_moved) ::unlink(m_name.c_str());
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  /// Before anything is written, so that nobody reads it who may not read the old file.
  void takeOwnerAndModeOf(const std::string& path) {
    struct stat before {};
    struct stat now {};
    if (::stat(path.c_str(), &before) != 0 || ::fstat(m_file, &now) != 0) {
      fail(path, "cannot be looked at");
    }
    const bool sameOwner = before.st_uid == now.st_uid && before.st_gid == now.st_gid;
    if (!sameOwner && ::fchown(m_file, before.st_uid, before.st_gid) != 0) {
      fail(path, "cannot keep its owner");
    }
    if (::fchmod(m_file, before.st_mode & 07777) != 0) fail(path, "cannot keep its mode");
  }

  void write(std::string_view content) {
    while (!content.empty()) {
      const ssize_t written = ::write(m_file, content.data(), content.size());
      if (written > 0) {
        content.remove_prefix(static_cast<std::size_t>(written));
      } else if (errno != EINTR) {
        fail(m_name, "cannot be written");
      }
    }
    if (::fsync(m_file) != 0) fail(m_name, "cannot be brought to the disk");
  }

  void moveTo(const std::string& path) {
    if (::rename(m_name.c_str(), path.c_str()) != 0) fail(path, "cannot be replaced");
    m_moved = true;
  }

 private:
  std::string m_name;
  int m_file;
  bool m_moved = false;
};

}  // namespace

FileReplacement::FileReplacement(const std::string& path)
    : m_path(withoutLinks(path)),
      m_folder(std::filesystem::path(m_path).parent_path().string()),
      m_lockedFolder(::open(m_folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  if (m_lockedFolder < 0 || ::flock(m_lockedFolder, LOCK_EX) != 0) {
    fail(m_folder, "cannot be locked");
  }
}

FileReplacement::~FileReplacement() { ::close(m_lockedFolder); }

std::string FileReplacement::read() const {
  std::optional<std::string> content = readFile(m_path);
  if (!content) fail(m_path, "cannot be read");
  return *std::move(content);
}

// A reader, or a crash, meets one of two complete files at every step:
//   1. The new content stands beside the old one, under another name, and is on the disk.
//   2. The rename puts it in the old one's place, in one step.
//   3. The folder is brought to the disk, and the rename with it.
void FileReplacement::replaceBy(const std::string& content) const {
  NewFile file(m_path);
  file.takeOwnerAndModeOf(m_path);
  file.write(content);
  file.moveTo(m_path);
  // The new name is on the disk when the folder is.
  if (::fsync(m_lockedFolder) != 0) fail(m_folder, "cannot be brought to the disk");
}
