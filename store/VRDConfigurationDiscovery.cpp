// Unit VRDConfiguration: where the installation is.

#include "platform/core/VRDFmDir.h"
#include "store/InstallationDiscovery.h"
#include "store/VRDConfiguration.h"
#include "store/VRDConfigurationState.h"

void VRDConfiguration::determineBinDir() {
  if (s_bInitializedDirPath.load(std::memory_order_acquire) != 0) return;
  VRDThreadGuard guard(m_mutexDirPath);
  if (s_bInitializedDirPath.load(std::memory_order_relaxed) != 0) return;
  discoverInstallation([](InstallationSource, const I18NString& binDir) {
    return VRDFmDir::setEffectiveWorkingDir(binDir) != 0;
  });
  // Nothing found is final as well: the environment of a running process is not looked at twice.
  s_bInitializedDirPath.store(1, std::memory_order_release);
}

I18NString& VRDConfiguration::resolveEffectivePath(I18NString& path) {
  determineBinDir();
  return VRDFmDir::resolveEffectivePath(path);
}
