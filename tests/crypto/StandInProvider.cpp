// A provider that does what it is told. Built several times: a name that is defined to be another
// one is missing under its own.

#include <stdexcept>

#include "crypto/ProviderEntryPoints.h"
#include "tests/crypto/StandIn.h"

namespace {

StandIn state;
int theHandle;

void expect(bool asItShouldBe) {
  if (!asItShouldBe) ++state.badArguments;
}

char* lend(const std::string& bytes) {
  char* memory = state.loans.emplace_back(bytes).data();
  --state.balance[memory];
  return memory;
}

/// Does what every operation can be told, given whether its arguments are as they should be.
int perform(char operation, bool good, char* document, char** error = nullptr) {
  expect(good && (error == nullptr || *error == nullptr));
  state.calls += operation;
  if (document != nullptr) state.documents += document;
  const int fault = state.faults[operation];
  if ((fault & StandIn::once) != 0) state.faults.clear();
  if ((fault & StandIn::warns) != 0) *error = lend("<error/>");
  if ((fault & StandIn::throws) != 0) throw std::runtime_error("told to");
  return (fault & StandIn::fails) != 0 ? -1 : 0;
}

bool told(char operation, int fault) { return (state.faults[operation] & fault) != 0; }

/// The entry points that the library has no use for.
struct Unused {
#define UNUSED(NAME, ERROR_OUT, PARAMETERS, ...) \
  template <class... Arguments>                  \
  static int NAME(Arguments...) {                \
    return -1;                                   \
  }
  VRD_PROVIDER_ENTRY_POINTS(UNUSED)
#undef UNUSED
};

/// The operations that the library uses; those of the same name above are hidden.
struct Behaviour : Unused {
  static int HLD_CryptoInitialize(char* document, char* reserved, char** error) {
    return perform(StandIn::initialize, !reserved, document, error);
  }
  static int HLD_CryptoTerminate(char* document, char* reserved, char** error) {
    return perform(StandIn::terminate, !reserved, document, error);
  }
  static int HLD_CryptoFree(void* memory, char* reserved) {
    ++state.balance[memory];
    return perform(StandIn::release, !reserved, nullptr);
  }
  static int HLD_CryptoGetLastErrorDetails(void* handle, char* reserved, char** error) {
    return perform(StandIn::details, handle == &theHandle && !reserved, nullptr, error);
  }
  static int HLD_CloseHandle(void** handle, char* reserved, char** error) {
    return perform(StandIn::close, *handle == &theHandle && !reserved, nullptr, error);
  }
  static int HLD_PersistentInitialize(void** handle, char* document, char* reserved, char** error) {
    const int status = perform(StandIn::begin, !*handle && !reserved, document, error);
    if (status >= 0 || told(StandIn::begin, StandIn::leavesHandle)) {
      *handle = &theHandle;
    }
    return status;
  }
  static int HLD_SetInfo(void* handle, char* document, char* reserved) {
    return perform(StandIn::settings, handle == &theHandle && !reserved, document);
  }
  static int HLD_UnprotectData(void* handle, void*, unsigned long, void** block,
                               unsigned long* size, char* reserved) {
    const bool good = handle == &theHandle && !reserved && !*block && *size == 0;
    const int status = perform(StandIn::unprotect, good, nullptr);
    if (status < 0) return status;
    const bool givesNoBlock = told(StandIn::unprotect, StandIn::givesNoBlock);
    *block = givesNoBlock ? nullptr : lend(state.clearText);
    *size = state.clearText.size();
    return status;
  }
};

}  // namespace

#define VRD_TEST_EXPORT extern "C" __attribute__((visibility("default")))

VRD_TEST_EXPORT StandIn* standIn() { return &state; }

#define EXPORT_ENTRY_POINT(NAME, ERROR_OUT, PARAMETERS, ...) \
  VRD_TEST_EXPORT int NAME PARAMETERS { return Behaviour::NAME(__VA_ARGS__); }
VRD_PROVIDER_ENTRY_POINTS(EXPORT_ENTRY_POINT)
