#include "foundation/ConfigurationMessages.h"

#include <cstddef>
#include <iterator>

namespace {

constexpr unsigned long none = noConfigurationMessage;

/// By state.
constexpr unsigned long messageNumbers[] = {
    /* VRDCFGAPI_NoError */ none,
    /* VRDCFGAPI_StartupFileMissing */ 0x6102852C,
    /* VRDCFGAPI_Reserved2 */ none,
    /* VRDCFGAPI_StartupFileParseFailed */ 0x610F7369,
    /* VRDCFGAPI_BadRootElement */ 0x6100810F,
    /* VRDCFGAPI_StreamParseFailed */ 0x61058FF4,
    /* VRDCFGAPI_Reserved6 */ none,
    /* VRDCFGAPI_CryptoUnavailable */ 0x61048389,
    /* VRDCFGAPI_DecryptFailed */ 0x610BE3C6,
    /* VRDCFGAPI_InternalError */ 0x61040660,
    /* VRDCFGAPI_NullDocument */ 0x610C607B,
    /* VRDCFGAPI_LocaleFileMissing */ 0x610CB517,
    /* VRDCFGAPI_LocaleFileParseFailed */ 0x610E2D99,
    /* VRDCFGAPI_LocaleUnmapped */ 0x610B54C9,
    /* VRDCFGAPI_ComponentListMissing */ none,
    /* VRDCFGAPI_Reserved15 */ none,
    /* VRDCFGAPI_Reserved16 */ 0x610F265C,
};
static_assert(std::size(messageNumbers) == VRDCFGAPI_Reserved16 + 1, "one row for each state");

}  // namespace

unsigned long configurationMessage(VRDCFGAPI_ErrorState state) {
  // A state may come from a caller's cast, and a negative one is out of range as well.
  const auto index = static_cast<std::size_t>(state);
  return index < std::size(messageNumbers) ? messageNumbers[index] : none;
}
