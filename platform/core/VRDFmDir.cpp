#include "platform/core/VRDFmDir.h"

#include <stdlib.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <string_view>
#include <system_error>
#include <utility>

// Paths are handled as the bytes that the system takes. They cross to I18NString and back by their
// bytes as well, so that a name in an old encoding still names its file.

namespace {

/// All of a mode that is not the file type, set-user-id and its like included.
constexpr mode_t permissionBits = 07777;

/// One path of the process. Readers are many and writers rare. Readers get copies: a reference
/// would be to a text that the next writer changes.
class SharedPath {
 public:
  std::string get() const {
    std::shared_lock lock(m_mutex);
    return m_path;
  }
  void set(std::string path) {
    std::unique_lock lock(m_mutex);
    m_path = std::move(path);
  }

 private:
  mutable std::shared_mutex m_mutex;
  std::string m_path;
};

// Both live as long as the process: an exit handler may still resolve the name of its log file.
SharedPath& effectiveWorkingDir() {
  static SharedPath& path = *new SharedPath;
  return path;
}

SharedPath& tempPath() {
  static SharedPath& path = *new SharedPath;
  return path;
}

I18NString textOf(const std::string& bytes) { return I18NString(std::string_view(bytes)); }

bool isRelative(std::string_view path) { return !path.empty() && path.front() != '/'; }

/// Empty unless @p path names a directory.
std::string canonicalDirectory(const std::string& path) {
  // A path with a NUL in it would name another directory to the system. The system's own look at
  // the path comes first: `realpath` would also take one that no other call accepts for its length.
  if (path.find('\0') != std::string::npos) return {};
  struct stat status;
  if (::stat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return {};
  const std::unique_ptr<char, decltype(&::free)> canonical(::realpath(path.c_str(), nullptr),
                                                           &::free);
  return canonical ? canonical.get() : std::string();
}

/// Empty when there is neither an accepted directory nor a current one.
std::string baseDirectory() {
  std::string accepted = effectiveWorkingDir().get();
  if (!accepted.empty()) return accepted;
  // The current directory may have been removed; that is no reason for an exception here.
  std::error_code gone;
  return std::filesystem::current_path(gone).native();
}

/// Adds one segment to @p path, which is absolute and does not end in "/"; empty is the root.
void addSegment(std::string& path, std::string_view segment) {
  if (segment.empty() || segment == ".") return;
  if (segment == "..") {
    // Above the root there is the root, as for the system.
    const std::size_t last = path.rfind('/');
    path.resize(last == std::string::npos ? 0 : last);
    return;
  }
  path.append("/").append(segment);
}

void addSegments(std::string& path, std::string_view segments) {
  for (;;) {
    const std::size_t slash = segments.find('/');
    addSegment(path, segments.substr(0, slash));
    if (slash == std::string_view::npos) return;
    segments.remove_prefix(slash + 1);
  }
}

/// Puts the two together by their segments alone. @p path is not empty.
std::string resolved(std::string_view base, std::string_view path) {
  std::string result;
  result.reserve(base.size() + path.size() + 2);
  addSegments(result, base);
  addSegments(result, path);
  // A value that clients append file names to would break without its "/".
  if (result.empty() || path.back() == '/') result += '/';
  return result;
}

std::string joined(std::string_view base, std::string_view tail) {
  if (base.empty()) return std::string(tail);
  if (tail.empty()) return std::string(base);
  // A base of slashes only is the root, which the one "/" between brings back.
  base = base.substr(0, base.find_last_not_of('/') + 1);
  tail.remove_prefix(std::min(tail.find_first_not_of('/'), tail.size()));
  return std::string(base).append("/").append(tail);
}

}  // namespace

int VRDFmDir::setEffectiveWorkingDir(const I18NString& dir) {
  std::string canonical = canonicalDirectory(std::string(dir.utf8()));
  if (canonical.empty()) return 0;
  effectiveWorkingDir().set(std::move(canonical));
  return 1;
}

I18NString VRDFmDir::getEffectiveWorkingDir() { return textOf(effectiveWorkingDir().get()); }

I18NString& VRDFmDir::resolveEffectivePath(I18NString& path) {
  if (!isRelative(path.utf8())) return path;  // what the caller got of `c_str` stays valid
  std::string bytes(path.utf8());
  path = textOf(resolveEffectivePath(bytes));
  return path;
}

std::string& VRDFmDir::resolveEffectivePath(std::string& path) {
  if (!isRelative(path)) return path;
  const std::string base = baseDirectory();
  if (!base.empty()) path = resolved(base, path);
  return path;
}

int VRDFmDir::exists(const char* path, unsigned short mode) {
  struct stat status;
  if (path == nullptr || ::stat(path, &status) != 0) return 0;
  // The types are numbers, not bits: a socket's has all bits of a regular file's.
  const mode_t type = mode & S_IFMT;
  const mode_t permissions = mode & permissionBits;
  const bool fits = (type == 0 || (status.st_mode & S_IFMT) == type) &&
                    (status.st_mode & permissions) == permissions;
  return fits ? 1 : 0;
}

void VRDFmDir::joinPath(I18NString& base, const I18NString& tail) {
  base = textOf(joined(base.utf8(), tail.utf8()));
}

void VRDFmDir::joinPath(std::string& base, const char* tail) {
  base = joined(base, tail != nullptr ? tail : "");
}

void VRDFmDir::setTempPath(const I18NString& path) { tempPath().set(std::string(path.utf8())); }

I18NString VRDFmDir::getTempPath() { return textOf(tempPath().get()); }
