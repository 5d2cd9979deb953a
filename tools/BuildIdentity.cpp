#include "tools/BuildIdentity.h"

#include <dlfcn.h>

#include <string_view>

#include "service/VRDConfigurationFactory.h"
#include "tools/FileContent.h"

namespace {

/// The file that the library was loaded from: of several on this machine, the one that counts.
std::string libraryFile() {
  Dl_info found{};
  auto* const address = reinterpret_cast<const void*>(&VRDConfigurationFactory::getInstance);
  return ::dladdr(address, &found) != 0 ? found.dli_fname : "";
}

}  // namespace

std::string buildIdentity() {
  constexpr std::string_view marker = "@(#)";
  constexpr std::string_view ends("\0\n", 2);
  const std::string content = readFile(libraryFile()).value_or("");
  std::string lines;
  for (std::size_t at = content.find(marker); at != std::string::npos;) {
    at += marker.size();
    const std::size_t end = content.find_first_of(ends, at);
    if (!lines.empty()) lines += '\n';
    lines += content.substr(at, end - at);
    at = content.find(marker, end);
  }
  return lines;
}
