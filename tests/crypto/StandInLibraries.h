#pragma once

#include <dlfcn.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/core/VRDFmDir.h"
#include "tests/crypto/StandIn.h"
#include "tests/support/Installation.h"

/// An installation that may have a stand-in as its provider, which the process then is in.
class CryptoInstallation : public CurrentInstallation {
 public:
  explicit CryptoInstallation(std::string_view parameters = "") : CurrentInstallation(parameters) {
    VRDFmDir::setEffectiveWorkingDir(bin().c_str());
  }

  std::string provider() const { return (*this / "bin/libHLD_Crypto_Interface.so").string(); }

  /// @param variant which of the built ones: "" for the whole one, "_lacking_first",
  /// "_lacking_last"
  void installStandIn(const std::string& variant = "") const {
    std::filesystem::copy_file(VRD_STAND_IN_FOLDER "/libstand_in" + variant + ".so", provider());
  }

  bool providerIsLoaded() const {
    void* library = ::dlopen(provider().c_str(), RTLD_LAZY | RTLD_NOLOAD);
    return library != nullptr && ::dlclose(library) == 0;
  }
};

/// One with a stand-in that is kept loaded, so that it can be told and asked from outside.
class StandInInstallation : public CryptoInstallation {
 public:
  explicit StandInInstallation(std::string_view parameters = "") : CryptoInstallation(parameters) {
    installStandIn();
    void* library = ::dlopen(provider().c_str(), RTLD_NOW);
    if (library == nullptr) throw std::runtime_error(::dlerror());
    m_standIn = reinterpret_cast<StandInAccess*>(::dlsym(library, "standIn"))();
  }

  StandIn* operator->() const { return m_standIn; }
  StandIn& operator*() const { return *m_standIn; }

 private:
  StandIn* m_standIn;
};
