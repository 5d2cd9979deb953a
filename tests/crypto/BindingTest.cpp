#include <gtest/gtest.h>

#include "tests/crypto/EntryPointCall.h"
#include "tests/crypto/StandInLibraries.h"

namespace {

constexpr char providerName[] = "HLD_Crypto_Interface";

/// Every entry point answers -1, and those with an error out fill it where there is one.
void expectUnbound(VRDCrypto& crypto) {
  EXPECT_EQ(crypto.isOpen(), 0);
  int withErrorOut = 0;
  char* error = nullptr;
#define CHECK_UNBOUND(NAME, ...)                                            \
  EXPECT_EQ(callWithNulls(crypto, &VRDCrypto::NAME, nullptr), -1) << #NAME; \
  EXPECT_EQ(callWithNulls(crypto, &VRDCrypto::NAME, &error), -1) << #NAME;  \
  if (error != nullptr) {                                                   \
    ++withErrorOut;                                                         \
    EXPECT_STREQ(std::exchange(error, nullptr), "") << #NAME;               \
  }
  VRD_PROVIDER_ENTRY_POINTS(CHECK_UNBOUND)
#undef CHECK_UNBOUND
  EXPECT_EQ(withErrorOut, 9);
}

TEST(BindingTest, WhatIsNotOpenRefuses) {
  for (const std::string variant :
       {"absent", "not a library", "_lacking_first", "_lacking_last", "closed"}) {
    SCOPED_TRACE(variant);
    const bool isWhole = variant == "closed";
    const CryptoInstallation installation;
    if (variant == "not a library") installation.write(installation.provider(), "#!/bin/sh\n");
    if (variant[0] == '_') installation.installStandIn(variant);
    if (isWhole) installation.installStandIn();
    {
      VRDCrypto crypto(providerName);
      EXPECT_EQ(crypto.isOpen(), isWhole);
      EXPECT_EQ(crypto.open(providerName), isWhole);  // a second time, if it is open
      crypto.close();
      expectUnbound(crypto);
      EXPECT_FALSE(installation.providerIsLoaded());
      EXPECT_EQ(crypto.open(providerName), isWhole);
    }
    EXPECT_EQ(installation.providerIsLoaded(), isWhole) << "only closing unloads";
  }
}

}  // namespace
