// Unit VRDConfigurationImpl: the versions of the installed components.

#include "foundation/VRDConfigurationException.h"
#include "platform/core/I18NLibrary.h"
#include "platform/core/VRDRaise.h"
#include "service/VRDConfigurationImpl.h"
#include "store/InstallationFiles.h"

#define VRD_SOURCE_UNIT "VRDConfigurationImpl"

I18NString VRDConfigurationImpl::getComponentVersion(const I18NString& component) {
  initializeComponentMap();
  const char* encoding = I18NGetPlatformDefaultEncoding();
  const std::string name = component.c_str(encoding);
  return m_componentMap.read([&](const ComponentVersions& versions) {
    const auto version = versions.find(name);
    return version ? I18NString(std::string(*version).c_str(), encoding) : I18NString();
  });
}

void VRDConfigurationImpl::initializeComponentMap() {
  m_componentMap.makeOnce(m_componentMutex, VRD_LOCATION, [](ComponentVersions& versions) {
    std::optional<std::ifstream> list = openInstallationFile(InstallationFiles::componentList);
    if (!list) {
      throw VRDConfigurationException(VRDSeverity_Error, VRDCFGAPI_ComponentListMissing);
    }
    versions.read(*list);
  });
}
