#include "store/InstallationDiscovery.h"

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>

#include "platform/core/VRDFmDir.h"
#include "platform/core/VRDGuardedAllocation.h"
#include "store/InstallationFiles.h"
#include "store/PlatformText.h"

#define VRD_SOURCE_UNIT "VRDConfiguration"

namespace {

constexpr char binBelowRoot[] = "./bin";
constexpr char rootLink[] = "./zanroot.link";
constexpr int rootLinkRoom = 4096;

struct Freer {
  void operator()(char* memory) const { std::free(memory); }
};
using CText = std::unique_ptr<char, Freer>;

/// A copy of our own: taking it apart must not change the environment.
CText copyOf(const char* text) {
  const std::size_t size = std::strlen(text) + 1;
  CText copy(
      VRDGuardedAllocation(VRD_LOCATION, [&] { return static_cast<char*>(std::malloc(size)); }));
  std::memcpy(copy.get(), text, size);
  return copy;
}

bool offerExecPath(const InstallationOffer& offer) {
  const char* directory = std::getenv("ZAN_EXEC_PATH");
  return directory != nullptr && offer(InstallationSource::ExecPath, platformText(directory));
}

bool offerRoot(const InstallationOffer& offer) {
  const char* root = std::getenv("ZAN_ROOT");
  if (root == nullptr) return false;
  std::string directory = root;
  VRDFmDir::joinPath(directory, binBelowRoot);
  return offer(InstallationSource::Root, platformText(directory.c_str()));
}

bool offerCurrentDirectory(const InstallationOffer& offer) {
  return VRDFmDir::exists(InstallationFiles::startupDocument, InstallationFiles::readableFile) &&
         offer(InstallationSource::CurrentDirectory, "../bin");
}

bool offerRootLink(const InstallationOffer& offer) {
  // Opening a pipe of that name would wait for its writer.
  if (VRDFmDir::exists(rootLink, InstallationFiles::regularFile) == 0) return false;
  std::ifstream link(rootLink);
  if (!link) return false;
  // A longer line is cut, not refused: what fits the room is the path.
  char line[rootLinkRoom] = "";
  link.getline(line, rootLinkRoom);
  if (line[0] == '\0') return false;
  I18NString directory = platformText(line);
  VRDFmDir::joinPath(directory, binBelowRoot);
  return offer(InstallationSource::RootLink, directory);
}

bool holdsOurLibrary(const char* directory) {
  std::string file = directory;
  VRDFmDir::joinPath(file, "libVRDCFGAPI.so");
  return VRDFmDir::exists(file.c_str(), InstallationFiles::readableFile) != 0;
}

/// The process runs the first library of that name, so a refusal ends the search.
bool offerLibraryPath(const InstallationOffer& offer) {
  const char* path = std::getenv("LD_LIBRARY_PATH");
  if (path == nullptr) return false;
  const CText copy = copyOf(path);
  char* rest = nullptr;
  for (const char* directory = strtok_r(copy.get(), ":", &rest); directory != nullptr;
       directory = strtok_r(nullptr, ":", &rest)) {
    if (holdsOurLibrary(directory)) return offer(InstallationSource::LibraryPath, directory);
  }
  return false;
}

}  // namespace

bool discoverInstallation(const InstallationOffer& offer) {
  return offerExecPath(offer) || offerRoot(offer) || offerCurrentDirectory(offer) ||
         offerRootLink(offer) || offerLibraryPath(offer);
}
