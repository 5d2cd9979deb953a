#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "crypto/CryptoSession.h"
#include "crypto/VRDCrypto.h"
#include "crypto/ValueProtection.h"
#include "platform/core/VRDFmDir.h"
#include "provider/KeyFolder.h"
#include "tests/support/Installation.h"

/// An installation with the reference provider, which the process then is in. No XML can hold its
/// path as it is.
class ProtectedInstallation : public CurrentInstallation {
 public:
  ProtectedInstallation() : CurrentInstallation("", "<&>\x01") {
    std::filesystem::copy_file(VRD_REFERENCE_PROVIDER, *this / "bin/libHLD_Crypto_Interface.so");
    VRDFmDir::setEffectiveWorkingDir(bin().c_str());
  }

  KeyFolder keys() const { return KeyFolder((*this / "configuration/keys").string()); }

  /// Adds a key of random bytes from the provider.
  void addKey() const {
    SecretKey key;
    getCryptoInstance()->HLD_GetRandomData(SecretKey::size, key.data(), nullptr);
    keys().add(key);
  }
};

/// A session of the test's own with the provider, beside that of the store.
class ProviderSession {
 public:
  ProviderSession() { openCryptoSession(m_handle); }
  ~ProviderSession() { closeCryptoSession(m_handle); }
  ProviderSession(const ProviderSession&) = delete;
  ProviderSession& operator=(const ProviderSession&) = delete;

  void* handle() const { return m_handle; }
  std::string protect(std::string_view clear) const { return protectString(clear, m_handle); }

  /// The clear text of a block, or "refused".
  std::string unprotect(std::string block) const {
    VRDCrypto& provider = *getCryptoInstance();
    void* clear = nullptr;
    unsigned long size = 0;
    if (provider.HLD_UnprotectData(m_handle, block.data(), block.size(), &clear, &size, nullptr) <
        0) {
      return clear == nullptr && size == 0 ? "refused" : "refused, but there is a block";
    }
    const std::string text(static_cast<const char*>(clear), size);
    provider.HLD_CryptoFree(clear, nullptr);
    return text;
  }

 private:
  void* m_handle = nullptr;
};

/// The text of an error document, which is given back.
inline std::string takeText(char* document) {
  const std::string text = document != nullptr ? document : "";
  getCryptoInstance()->HLD_CryptoFree(document, nullptr);
  return text;
}

/// The document of the last failure of this thread.
inline std::string lastFailure() {
  char* document = nullptr;
  getCryptoInstance()->HLD_CryptoGetLastErrorDetails(nullptr, nullptr, &document);
  return takeText(document);
}
