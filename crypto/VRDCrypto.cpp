#include "crypto/VRDCrypto.h"

#include <dlfcn.h>

#include <string>

#include "platform/core/VRDFmDir.h"

// Everything below that has to be done for each entry point is made from the table of
// crypto/ProviderEntryPoints.h, so that a row there is all that a new one needs.

namespace {

constexpr char libExt[] = ".so";
constexpr int notBound = -1;

/// Stands for the error document that an absent provider cannot write. Providers take error
/// documents back as writable text, so it is one.
char emptyErrorDocument[] = "";

/// `dlsym` knows no types; that of the slot comes from the table. A symbol whose address is null
/// would be no function, so null always means that the name is missing.
template <class Slot>
bool bindSlot(void* library, const char* name, Slot& slot) {
  slot = reinterpret_cast<Slot>(::dlsym(library, name));
  return slot != nullptr;
}

/// Looks at the slot and not at the library: a slot is set only while it may be called.
template <class Slot, class... Arguments>
int forward(Slot slot, char** errorOut, Arguments... arguments) {
  if (slot != nullptr) return slot(arguments...);
  if (errorOut != nullptr) *errorOut = emptyErrorDocument;
  return notBound;
}

}  // namespace

VRDCrypto::VRDCrypto(const char* name) { open(name); }

VRDCrypto::~VRDCrypto() = default;

int VRDCrypto::open(const char* name) {
  // Opened a second time, it binds anew what is loaded and loads nothing.
  if (m_libraryHandle == nullptr) tryOpen(name);
  // A provider that lacks one entry point is no provider: half of one would fail later, and far
  // away from its cause.
  if (m_libraryHandle != nullptr && !bindSlots()) close();
  return isOpen();
}

int VRDCrypto::tryOpen(const char* name) {
  // Resolved to a path, so that the loader takes the file of this installation and does not search
  // where it searches for libraries.
  std::string file = std::string("lib") + name + libExt;
  VRDFmDir::resolveEffectivePath(file);
  // Lazy: a provider may have parts that need libraries which this machine does not have.
  m_libraryHandle = ::dlopen(file.c_str(), RTLD_LAZY);
  return isOpen();
}

void VRDCrypto::close() {
  if (m_libraryHandle == nullptr) return;
  // First of all, so that nothing can call into what is no longer there.
  clearSlots();
  ::dlclose(m_libraryHandle);
  m_libraryHandle = nullptr;
}

/// Row by row; the first that is missing ends it.
bool VRDCrypto::bindSlots() {
  bool bound = true;
#define VRD_BIND(NAME, ERROR_OUT, PARAMETERS, ...) \
  bound = bound && bindSlot(m_libraryHandle, #NAME, m_##NAME);
  VRD_PROVIDER_ENTRY_POINTS(VRD_BIND)
#undef VRD_BIND
  return bound;
}

void VRDCrypto::clearSlots() {
#define VRD_CLEAR(NAME, ERROR_OUT, PARAMETERS, ...) m_##NAME = nullptr;
  VRD_PROVIDER_ENTRY_POINTS(VRD_CLEAR)
#undef VRD_CLEAR
}

#define VRD_FORWARD(NAME, ERROR_OUT, PARAMETERS, ...) \
  int VRDCrypto::NAME PARAMETERS { return forward(m_##NAME, ERROR_OUT, __VA_ARGS__); }
VRD_PROVIDER_ENTRY_POINTS(VRD_FORWARD)
#undef VRD_FORWARD
