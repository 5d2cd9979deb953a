#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "tests/crypto/EntryPointCall.h"
#include "tests/provider/ReferenceProvider.h"

namespace {

using testing::HasSubstr;

std::string refusal(const std::string& name) {
  return "<errorDocument><operation>" + name +
         "</operation><reason>this provider does not offer the operation</reason></errorDocument>";
}

TEST(ProviderInterfaceTest, WhatIsNotOfferedSaysSo) {
  const ProtectedInstallation installation;
  VRDCrypto& crypto = *getCryptoInstance();
  ASSERT_EQ(crypto.isOpen(), 1);
  int refusals = 0;
  char* error = nullptr;
  // Those that are offered fail in another way with nulls, or not at all.
#define CHECK_REFUSAL(NAME, ...)                                    \
  error = nullptr;                                                  \
  const int NAME = callWithNulls(crypto, &VRDCrypto::NAME, &error); \
  const bool NAME##Refused = lastFailure() == refusal(#NAME);       \
  const std::string NAME##Error = takeText(error);                  \
  if (NAME##Refused) {                                              \
    ++refusals;                                                     \
    EXPECT_EQ(NAME, -1) << #NAME;                                   \
    EXPECT_THAT(NAME##Error, testing::AnyOf("", refusal(#NAME)));   \
  }
  VRD_PROVIDER_ENTRY_POINTS(CHECK_REFUSAL)
#undef CHECK_REFUSAL
  EXPECT_EQ(refusals, 28);
}

TEST(ProviderInterfaceTest, BadCallsAreRefused) {
  const ProtectedInstallation installation;
  EXPECT_EQ(lastFailure(), "");
  installation.addKey();
  VRDCrypto& crypto = *getCryptoInstance();
  char begin[] = "<initializeDocument></initializeDocument>";
  char session[] = "<sessionConfigDocument></sessionConfigDocument>";
  char noSession[] = "<sessionConfigDocument/>";
  char settings[] = "<setInfoDocument><action>Other</action></setInfoDocument>";
  char end[] = "<terminateDocument></terminateDocument>";
  char* error = nullptr;
  void* handle = &error;

  // Nothing opens before the provider is initialised, and the handle says so.
  EXPECT_EQ(crypto.HLD_PersistentInitialize(&handle, session, nullptr, &error), -1);
  EXPECT_EQ(handle, nullptr);
  EXPECT_THAT(takeText(error), HasSubstr("<reason>the provider is not initialised</reason>"));
  EXPECT_EQ(crypto.HLD_CryptoTerminate(end, nullptr, nullptr), -1);

  EXPECT_EQ(crypto.HLD_CryptoInitialize(session, nullptr, nullptr), -1);
  EXPECT_EQ(crypto.HLD_CryptoInitialize(nullptr, nullptr, nullptr), -1);
  EXPECT_EQ(crypto.HLD_CryptoInitialize(begin, nullptr, nullptr), 0);
  EXPECT_EQ(crypto.HLD_PersistentInitialize(&handle, noSession, nullptr, nullptr), -1);
  EXPECT_EQ(crypto.HLD_PersistentInitialize(nullptr, session, nullptr, nullptr), -1);
  ASSERT_EQ(crypto.HLD_PersistentInitialize(&handle, session, nullptr, nullptr), 0);
  EXPECT_EQ(crypto.HLD_SetInfo(handle, settings, nullptr), -1);

  char data[] = "data";
  void* block = data;
  unsigned long size = 7;
  EXPECT_EQ(crypto.HLD_ProtectData(nullptr, data, 4, &block, &size, nullptr), -1);
  EXPECT_EQ(block, nullptr);
  EXPECT_EQ(size, 0u);
  EXPECT_EQ(crypto.HLD_ProtectData(handle, nullptr, 4, &block, &size, nullptr), -1);
  EXPECT_EQ(crypto.HLD_ProtectData(handle, data, 4, nullptr, &size, nullptr), -1);
  EXPECT_EQ(crypto.HLD_ProtectData(handle, data, 1ul << 40, &block, &size, nullptr), -1);
  EXPECT_THAT(lastFailure(), HasSubstr("too long"));
  EXPECT_EQ(crypto.HLD_GetRandomData(8, nullptr, nullptr), -1);

  EXPECT_EQ(crypto.HLD_CloseHandle(&handle, nullptr, nullptr), 0);
  EXPECT_EQ(handle, nullptr);
  EXPECT_EQ(crypto.HLD_CloseHandle(&handle, nullptr, nullptr), -1);
  EXPECT_EQ(crypto.HLD_CryptoTerminate(end, nullptr, nullptr), 0);
}

TEST(ProviderInterfaceTest, RandomDataFillTheirPlaceAndDiffer) {
  const ProtectedInstallation installation;
  std::set<std::string> seen;
  for (int i = 0; i < 100; ++i) {
    std::string bytes(16, '\0');
    ASSERT_EQ(getCryptoInstance()->HLD_GetRandomData(16, bytes.data(), nullptr), 0);
    seen.insert(bytes.substr(8));
  }
  EXPECT_EQ(seen.size(), 100u);
}

}  // namespace
