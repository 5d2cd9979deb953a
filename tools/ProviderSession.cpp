#include "tools/ProviderSession.h"

#include <cstring>

#include "crypto/CryptoSession.h"
#include "crypto/ProviderMemory.h"
#include "crypto/VRDCrypto.h"
#include "crypto/ValueProtection.h"
#include "crypto/WipedMemory.h"
#include "platform/core/VRDBase64.h"
#include "platform/idom/VRDIDOM_NodeList.h"
#include "platform/idom/VRDIDOM_Parser.h"
#include "tools/Installation.h"
#include "tools/Text.h"

namespace {

/// The text of the element "reason" in an error document, or of the whole if there is none.
std::string reasonIn(const char* document) {
  VRDIDOM_Parser parser(0);
  VRDIDOM_Document parsed;
  if (parser.parse(document, static_cast<int>(std::strlen(document)), parsed) == 0) return document;
  VRDIDOM_NodeList reasons = parsed.getDocumentElement().getElementsByTagName("reason");
  return bytesOf(reasons.item(0).getFirstChild().getNodeValue());
}

}  // namespace

ProviderSession::ProviderSession() : m_open(openCryptoSession(m_handle) != nullptr) {}

ProviderSession::~ProviderSession() { closeCryptoSession(m_handle); }

bool ProviderSession::hasProvider() { return getCryptoInstance()->isOpen() != 0; }

std::string ProviderSession::protect(std::string_view clearText) const {
  return protectString(clearText, m_handle);
}

// Not through the store: it takes the bytes that a provider refuses for the value itself.
bool ProviderSession::opens(const std::string& storedText) const {
  VRDCrypto& provider = *getCryptoInstance();
  WipedBuffer decoded(storedText.size() + 1);
  unsigned long size = decoded.size();
  if (VRDBase64Decode(storedText.c_str(), decoded.data(), &size) != 0) return false;
  void* block = nullptr;
  unsigned long blockSize = 0;
  if (provider.HLD_UnprotectData(m_handle, decoded.data(), size, &block, &blockSize, nullptr) < 0) {
    return false;
  }
  const ProviderMemory<void> owner(provider, block);
  return true;
}

// The session drops the provider's words, as the library must not report them; a person at a
// terminal needs them.
std::string ProviderSession::reason() const {
  VRDCrypto& provider = *getCryptoInstance();
  ProviderMemory<char> document(provider);
  provider.HLD_CryptoGetLastErrorDetails(m_handle, nullptr, document.address());
  return document.get() == nullptr ? "" : reasonIn(document.get());
}

std::string providerPath() {
  return installationFile("crypto provider", "libHLD_Crypto_Interface.so").path;
}
