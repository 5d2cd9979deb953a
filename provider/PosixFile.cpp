#include "provider/PosixFile.h"

#include <sys/stat.h>

#include <cerrno>
#include <system_error>

#include "provider/KeyFolder.h"

void throwSystemError(const std::string& path, const char* what) {
  // Not `strerror`, which threads share.
  const std::string reason = std::generic_category().message(errno);
  throw KeyError(path + ": " + what + ": " + reason);
}

void giveToOwnerOf(const std::string& folder, const std::string& path, const PosixFile& file) {
  if (::geteuid() != 0) return;
  // By way of the descriptor: the folder may be another user's, who could put a link in the place
  // of the name, and root would then give away what that leads to.
  struct stat status {};
  if (::stat(folder.c_str(), &status) != 0 ||
      ::fchown(file.descriptor(), status.st_uid, status.st_gid) != 0) {
    throwSystemError(path, "cannot be given to the owner of its folder");
  }
}
