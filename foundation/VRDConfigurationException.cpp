#include "foundation/VRDConfigurationException.h"

#include "foundation/ConfigurationMessages.h"
#include "platform/core/VRDGuardedAllocation.h"

#define VRD_SOURCE_UNIT "VRDConfigurationException"

VRDConfigurationException::VRDConfigurationException(VRDSeverity severity,
                                                     VRDCFGAPI_ErrorState state)
    : VRDException(severity, state) {
  addLocalizationMessage(state);
}

VRDConfigurationException::VRDConfigurationException(VRDSeverity severity,
                                                     VRDCFGAPI_ErrorState state,
                                                     VRDMessageBase& message)
    : VRDException(severity, state) {
  addMessage(message);
}

VRDConfigurationException::VRDConfigurationException(const VRDConfigurationException&) = default;

VRDConfigurationException::~VRDConfigurationException() = default;

VRDConfigurationException& VRDConfigurationException::operator=(
    const VRDConfigurationException& source) {
  if (this != &source) VRDException::operator=(source);
  return *this;
}

VRDConfigurationException& VRDConfigurationException::operator<<(const VRDMessageBase& message) {
  VRDException::operator<<(message);
  return *this;
}

void VRDConfigurationException::addLocalizationMessage(VRDCFGAPI_ErrorState state) {
  const unsigned long number = configurationMessage(state);
  if (number != noConfigurationMessage) addMessage(VRDMessage(configurationCatalogue, number));
}

VRDConfigurationException* VRDConfigurationException::clone() const {
  return VRD_GUARDED_NEW(VRDConfigurationException, *this);
}

void VRDConfigurationException::hurl(const VRDFileLocation& where, const char* text,
                                     const char* macroWord) {
  addBackTrace(where, text, macroWord);
  throw VRDConfigurationException(*this);
}

const char* VRDConfigurationException::getThrowableName() const {
  return "VRDConfigurationException";
}
