#include "tools/Installation.h"

#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "platform/core/VRDFmDir.h"
#include "store/InstallationFiles.h"
#include "store/VRDConfiguration.h"
#include "tools/Text.h"

namespace {

std::string systemText(int error) {
  switch (error) {
    case ENOENT:
      return "missing";
    case ENOTDIR:
      return "a part of its path is not a folder";
    case EACCES:
      return "no permission to look at it";
    default:
      return strerror(error);
  }
}

/// The library refuses a folder without a reason, so it is looked up here, by the same rule.
std::string refusalOf(const std::string& folder) {
  struct stat status {};
  if (folder.empty()) return "empty";
  if (::stat(folder.c_str(), &status) != 0) return systemText(errno);
  return S_ISDIR(status.st_mode) ? "refused" : "not a folder";
}

/// What `VRDFmDir::exists` and an attempt to open find wrong with a file.
std::string troubleOf(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return systemText(errno);
  if (!S_ISREG(status.st_mode)) return "not a regular file";
  if ((status.st_mode & S_IRUSR) == 0) return "not readable by its owner";
  return ::access(path.c_str(), R_OK) == 0 ? "" : "no permission to read it";
}

/// A relative root would mean another folder wherever a path value names it.
std::string absolutePath(const std::string& path) {
  std::error_code failure;
  const std::filesystem::path canonical = std::filesystem::canonical(path, failure);
  return failure ? std::filesystem::absolute(path, failure).string() : canonical.string();
}

std::string listOf(const std::vector<InstallationCandidate>& candidates) {
  std::string text;
  for (const InstallationCandidate& candidate : candidates) {
    text += std::string("\n  ") + nameOf(candidate.source) + ": " + onOneLine(candidate.folder) +
            " (" + candidate.refusal + ")";
  }
  return text;
}

/// Whether the folder that the option @p name asks for is the one in use.
bool requireSource(const Installation& installation, InstallationSource source, const char* name,
                   const std::string& folder, const Output& output) {
  const InstallationCandidate& first = installation.candidates().front();
  if (first.source == source && first.refusal.empty()) return true;
  output.error(std::string(name) + ' ' + onOneLine(folder) +
               " is no installation: its \"bin\" folder " + onOneLine(first.folder) +
               " is refused (" + first.refusal + ')');
  return false;
}

}  // namespace

Installation Installation::find() {
  Installation installation;
  discoverInstallation([&](InstallationSource source, const I18NString& binDir) {
    const std::string folder = bytesOf(binDir);
    const bool accepted = VRDFmDir::setEffectiveWorkingDir(binDir) != 0;
    installation.m_candidates.push_back({source, folder, accepted ? "" : refusalOf(folder)});
    return accepted;
  });
  return installation;
}

const char* nameOf(InstallationSource source) {
  switch (source) {
    case InstallationSource::ExecPath:
      return "ZAN_EXEC_PATH";
    case InstallationSource::Root:
      return "ZAN_ROOT";
    case InstallationSource::CurrentDirectory:
      return "current folder";
    case InstallationSource::RootLink:
      return "./zanroot.link";
    case InstallationSource::LibraryPath:
      return "LD_LIBRARY_PATH";
  }
  return "";
}

InstallationFile installationFile(const char* role, const char* relativePath) {
  I18NString path = relativePath;
  VRDConfiguration::determineBinDir();
  const std::string resolved = bytesOf(VRDFmDir::resolveEffectivePath(path));
  return {role, resolved, troubleOf(resolved)};
}

InstallationFile startupDocument() {
  return installationFile("startup document", InstallationFiles::startupDocument);
}

InstallationFile localeDocument() {
  return installationFile("locale document", InstallationFiles::localeDocument);
}

InstallationFile componentList() {
  return installationFile("component list", InstallationFiles::componentList);
}

void applyInstallationOptions(const Options& options) {
  // ZAN_EXEC_PATH is looked at first; one from the environment must not win over the option.
  if (!options.root.empty()) {
    ::setenv("ZAN_ROOT", absolutePath(options.root).c_str(), 1);
    ::unsetenv("ZAN_EXEC_PATH");
  }
  if (!options.bin.empty()) ::setenv("ZAN_EXEC_PATH", absolutePath(options.bin).c_str(), 1);
}

// The library would go on without an installation, or with another one than was asked for, and say
// nothing; its answers would look like facts.
bool requireInstallation(const Options& options, const Output& output) {
  const Installation installation = Installation::find();
  if (!options.bin.empty()) {
    return requireSource(installation, InstallationSource::ExecPath, "--bin", options.bin, output);
  }
  if (!options.root.empty()) {
    return requireSource(installation, InstallationSource::Root, "--root", options.root, output);
  }
  if (installation.found()) return true;
  output.error("no installation found." + listOf(installation.candidates()) +
               "\nName one with --root DIR, or set ZAN_ROOT; `vrdcfg where` tells what was tried.");
  return false;
}
