#include "provider/Session.h"

#include <dlfcn.h>

#include <filesystem>
#include <stdexcept>

namespace {

/// The "bin" directory of the installation: where this library was loaded from, by the name under
/// which it was loaded, so that an installation can hold a link to it.
std::filesystem::path binDirectory() {
  static const char somethingOfThisLibrary = 0;
  // Not resolved: a link in the installation leads to it, its target to where it was installed.
  Dl_info info{};
  if (::dladdr(&somethingOfThisLibrary, &info) == 0 || info.dli_fname == nullptr) {
    throw std::runtime_error("the provider does not know where it was loaded from");
  }
  return std::filesystem::absolute(info.dli_fname).parent_path();
}

}  // namespace

std::unique_ptr<Session> Session::open() {
  const std::filesystem::path folder = binDirectory() / KeyFolder::belowBin;
  return std::unique_ptr<Session>(new Session(KeyFolder(folder.lexically_normal().string())));
}
