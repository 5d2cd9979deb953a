#include "store/InstallationFiles.h"

#include "platform/core/I18NLibrary.h"
#include "platform/core/VRDFmDir.h"
#include "store/VRDConfiguration.h"

std::optional<std::ifstream> openInstallationFile(const char* name) {
  I18NString path = name;
  VRDConfiguration::determineBinDir();
  VRDFmDir::resolveEffectivePath(path);
  const char* file = path.c_str(I18NGetPlatformDefaultEncoding());
  if (!VRDFmDir::exists(file, InstallationFiles::readableFile)) return std::nullopt;
  return std::ifstream(file, std::ios::in | std::ios::binary);
}
