#include "crypto/CryptoSession.h"

#include "crypto/ProviderMemory.h"
#include "crypto/VRDCrypto.h"

namespace {

// The wire format towards the provider, which takes its documents as writable text.
char s_xmlInitDoc[] = "<initializeDocument><serviceID>CFGAPI</serviceID></initializeDocument>";
char s_xmlSessionCfgDoc[] =
    "<sessionConfigDocument><serviceID>CFGAPI</serviceID></sessionConfigDocument>";
char s_xmlSetInfoDoc[] =
    "<setInfoDocument><action>CSKEncrypt</action><dataLocation>memory</dataLocation>"
    "</setInfoDocument>";
char xmlTermDoc[] = "<terminateDocument><serviceID>CFGAPI</serviceID></terminateDocument>";

/// Makes a call that can give an error document, and gives that back unread: what it says may hold
/// what was to be protected. A provider that only warns gets its document back too.
/// @return whether the call succeeded
template <class Call>
bool succeeds(VRDCrypto& provider, Call call) {
  ProviderMemory<char> error(provider);
  const int status = call(error.address());
  error.giveBack();
  return status >= 0;
}

bool initializeProvider(VRDCrypto& provider) {
  return succeeds(provider, [&](char** error) {
    return provider.HLD_CryptoInitialize(s_xmlInitDoc, nullptr, error);
  });
}

bool beginSession(VRDCrypto& provider, void*& handle) {
  const bool begun = succeeds(provider, [&](char** error) {
    return provider.HLD_PersistentInitialize(&handle, s_xmlSessionCfgDoc, nullptr, error);
  });
  // A provider may leave something behind all the same; the next call would take it for a session.
  if (!begun) handle = nullptr;
  return begun;
}

/// Providers may write what they log only when they are asked for the details.
void fetchErrorDetails(VRDCrypto& provider, void* handle) {
  succeeds(provider, [&](char** error) {
    return provider.HLD_CryptoGetLastErrorDetails(handle, nullptr, error);
  });
}

}  // namespace

VRDCrypto* getCryptoInstance() {
  // Never destroyed: a thread may still decrypt while the process exits.
  static VRDCrypto& s_crypto = *new VRDCrypto("HLD_Crypto_Interface");
  return &s_crypto;
}

// How a session comes about:
//
//   1. The provider is bound; without one there is nothing to ask.
//   2. It is initialised. This is done again with each attempt, as nobody ends an attempt that
//      failed later on.
//   3. The session begins. From here on there is a handle, which the store keeps.
//   4. The session gets its settings. One that was refused them stays open and is not closed here:
//      this attempt has no session, and the next one finds the handle and uses it as it is.
void* openCryptoSession(void*& handle) {
  VRDCrypto& provider = *getCryptoInstance();  // 1
  if (provider.isOpen() == 0) return nullptr;
  if (!initializeProvider(provider) || !beginSession(provider, handle)) return nullptr;  // 2, 3
  if (provider.HLD_SetInfo(handle, s_xmlSetInfoDoc, nullptr) >= 0) return handle;        // 4
  fetchErrorDetails(provider, handle);
  return nullptr;
}

void closeCryptoSession(void*& handle) {
  // Without a session the provider was never asked for anything, or has refused: it is owed
  // nothing.
  if (handle == nullptr) return;
  VRDCrypto& provider = *getCryptoInstance();
  succeeds(provider,
           [&](char** error) { return provider.HLD_CloseHandle(&handle, nullptr, error); });
  succeeds(provider,
           [&](char** error) { return provider.HLD_CryptoTerminate(xmlTermDoc, nullptr, error); });
}
