#include <gtest/gtest.h>

#include "tests/crypto/EntryPointCall.h"
#include "tests/crypto/StandInLibraries.h"

namespace {

constexpr char providerName[] = "HLD_Crypto_Interface";

/// With 16, 32, ... in its places, whatever their types.
template <class... Parameters, std::size_t... Places>
int callWithValues(VRDCrypto& crypto, int (VRDCrypto::*entryPoint)(Parameters...),
                   std::index_sequence<Places...>) {
  return (crypto.*entryPoint)((Parameters)(16ul * (Places + 1))...);
}

template <class... Parameters>
int callWithValues(VRDCrypto& crypto, int (VRDCrypto::*entryPoint)(Parameters...)) {
  return callWithValues(crypto, entryPoint, std::index_sequence_for<Parameters...>());
}

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

TEST(BindingTest, WithoutAUsableProviderEveryEntryPointRefuses) {
  for (const std::string variant :
       {"absent", "not a library", "_lacks_HLD_CryptoInitialize", "_lacks_AS_DecryptText"}) {
    SCOPED_TRACE(variant);
    const CryptoInstallation installation;
    if (variant == "not a library") installation.write(installation.provider(), "#!/bin/sh\n");
    if (variant[0] == '_') installation.installStandIn(variant);
    VRDCrypto crypto(providerName);
    expectUnbound(crypto);
    EXPECT_FALSE(installation.providerIsLoaded());
    EXPECT_EQ(crypto.open(providerName), 0);
    crypto.close();
    expectUnbound(crypto);
  }
}

TEST(BindingTest, EveryEntryPointPassesItsArgumentsAndItsResult) {
  const StandInInstallation standIn;
  standIn->echoes = true;
  VRDCrypto crypto(providerName);
  std::string expected;
#define CALL(NAME, ...)                                                        \
  EXPECT_EQ(callWithValues(crypto, &VRDCrypto::NAME), StandIn::echo) << #NAME; \
  expected += #NAME " ";
  VRD_PROVIDER_ENTRY_POINTS(CALL)
#undef CALL
  EXPECT_EQ(std::count(expected.begin(), expected.end(), ' '), 38);
  EXPECT_EQ(standIn->calls, expected);
  EXPECT_EQ(standIn->badArguments, 0);
}

TEST(BindingTest, OnlyClosingUnloadsAndItCanBeOpenedAgain) {
  const CryptoInstallation installation;
  installation.installStandIn();
  {
    VRDCrypto crypto(providerName);
    ASSERT_EQ(crypto.isOpen(), 1);
    EXPECT_EQ(crypto.open(providerName), 1);  // binds once more
    EXPECT_TRUE(installation.providerIsLoaded());

    crypto.close();
    EXPECT_FALSE(installation.providerIsLoaded());
    expectUnbound(crypto);

    EXPECT_EQ(crypto.open(providerName), 1);
    EXPECT_EQ(crypto.HLD_CryptoFree(nullptr, nullptr), 0);
  }
  EXPECT_TRUE(installation.providerIsLoaded());
}

}  // namespace
