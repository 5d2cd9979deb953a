#include "tools/States.h"

#include "tools/ExitStatus.h"

namespace {

/// Each line names what is wrong and the command that shows more or mends it.
const char* meaningOf(int state) {
  switch (state) {
    case VRDCFGAPI_NoError:
      return "done";
    case VRDCFGAPI_StartupFileMissing:
      return "the startup document is missing; `vrdcfg where` shows its place";
    case VRDCFGAPI_StartupFileParseFailed:
      return "the startup document does not parse; `vrdcfg check` shows where";
    case VRDCFGAPI_BadRootElement:
      return "the root of the startup document is not \"parameters\"; `vrdcfg check` tells more";
    case VRDCFGAPI_StreamParseFailed:
      return "the query results do not parse";
    case VRDCFGAPI_CryptoUnavailable:
      return "there is no crypto session; put libHLD_Crypto_Interface.so in its place and its key "
             "with `vrdcfg keygen`";
    case VRDCFGAPI_DecryptFailed:
      return "the stored text cannot be decrypted; protect the value anew with `vrdcfg protect`";
    case VRDCFGAPI_LocaleFileMissing:
      return "the locale document is missing; `vrdcfg where` shows its place";
    case VRDCFGAPI_LocaleFileParseFailed:
      return "the locale document does not parse; `vrdcfg check` shows where";
    case VRDCFGAPI_LocaleUnmapped:
      return "no mapping exists for the locale, and no \"serverLocale\" stands in";
    case VRDCFGAPI_ComponentListMissing:
      return "the component list is missing; `vrdcfg where` shows its place";
    default:
      return "an exception ended the operation";
  }
}

}  // namespace

std::string explanationOf(int state) {
  return std::string(meaningOf(state)) + " (state " + std::to_string(state) + ')';
}

int exitStatusOf(VRDCFGAPI_ErrorState state) {
  if (state == VRDCFGAPI_NoError) return ExitStatus::done;
  return state == VRDCFGAPI_DecryptFailed ? ExitStatus::no : ExitStatus::cannotRun;
}
