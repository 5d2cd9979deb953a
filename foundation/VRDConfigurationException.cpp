#include "foundation/VRDConfigurationException.h"

#include <cstddef>
#include <iterator>

#include "platform/core/VRDGuardedAllocation.h"

#define VRD_SOURCE_UNIT "VRDConfigurationException"

namespace {

constexpr unsigned long noMessage = 0;

/// The number in the message catalogue, by state.
constexpr unsigned long messageNumbers[] = {
    /* VRDCFGAPI_NoError */ noMessage,
    /* VRDCFGAPI_StartupFileMissing */ 0x6102852C,
    /* VRDCFGAPI_Reserved2 */ noMessage,
    /* VRDCFGAPI_StartupFileParseFailed */ 0x610F7369,
    /* VRDCFGAPI_BadRootElement */ 0x6100810F,
    /* VRDCFGAPI_StreamParseFailed */ 0x61058FF4,
    /* VRDCFGAPI_Reserved6 */ noMessage,
    /* VRDCFGAPI_CryptoUnavailable */ 0x61048389,
    /* VRDCFGAPI_DecryptFailed */ 0x610BE3C6,
    /* VRDCFGAPI_InternalError */ 0x61040660,
    /* VRDCFGAPI_NullDocument */ 0x610C607B,
    /* VRDCFGAPI_LocaleFileMissing */ 0x610CB517,
    /* VRDCFGAPI_LocaleFileParseFailed */ 0x610E2D99,
    /* VRDCFGAPI_LocaleUnmapped */ 0x610B54C9,
    /* VRDCFGAPI_ComponentListMissing */ noMessage,
    /* VRDCFGAPI_Reserved15 */ noMessage,
    /* VRDCFGAPI_Reserved16 */ 0x610F265C,
};
static_assert(std::size(messageNumbers) == VRDCFGAPI_Reserved16 + 1, "one row for each state");

unsigned long messageNumberOf(VRDCFGAPI_ErrorState state) {
  // A state may come from a caller's cast, and a negative one is out of range as well.
  const auto index = static_cast<std::size_t>(state);
  return index < std::size(messageNumbers) ? messageNumbers[index] : noMessage;
}

}  // namespace

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
  const unsigned long number = messageNumberOf(state);
  if (number != noMessage) addMessage(VRDMessage("vrdcfgapimsgs", number));
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
