#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/crypto/EntryPointCall.h"
#include "tests/provider/ReferenceProvider.h"

namespace {

using testing::HasSubstr;

TEST(ProviderInterfaceTest, WhatIsNotOfferedSaysSo) {
  const ProtectedInstallation installation;
  ASSERT_EQ(getCryptoInstance()->isOpen(), 1);
  int refusals = 0;
  // Those that are offered fail in another way with nulls, or not at all.
  const auto check = [&](const std::string& name, auto entryPoint) {
    char* error = nullptr;
    const int status = callWithNulls(*getCryptoInstance(), entryPoint, &error);
    const std::string document = takeText(error);
    const std::string refusal =
        "<errorDocument><operation>" + name +
        "</operation><reason>this provider does not offer the operation</reason></errorDocument>";
    if (lastFailure() != refusal) return;
    ++refusals;
    EXPECT_EQ(status, -1) << name;
    EXPECT_THAT(document, testing::AnyOf("", refusal));
  };
#define CHECK_REFUSAL(NAME, ...) check(#NAME, &VRDCrypto::NAME);
  VRD_PROVIDER_ENTRY_POINTS(CHECK_REFUSAL)
#undef CHECK_REFUSAL
  EXPECT_EQ(refusals, 28);
}

TEST(ProviderInterfaceTest, BadCallsAreRefusedAndGiveNothing) {
  const ProtectedInstallation installation;
  installation.addKey();
  VRDCrypto& crypto = *getCryptoInstance();
  char session[] = "<sessionConfigDocument></sessionConfigDocument>";
  char action[] = "<setInfoDocument><action>Other</action></setInfoDocument>";
  char place[] = "<setInfoDocument><action>CSKEncrypt</action></setInfoDocument>";
  char end[] = "<terminateDocument></terminateDocument>";
  char data[] = "data";
  char* error = nullptr;
  void* handle = data;
  EXPECT_EQ(crypto.HLD_PersistentInitialize(&handle, session, nullptr, &error), -1);
  EXPECT_EQ(handle, nullptr);
  EXPECT_THAT(takeText(error), HasSubstr("<reason>the provider is not initialised</reason>"));
  EXPECT_EQ(crypto.HLD_CryptoTerminate(end, nullptr, nullptr), -1);

  const ProviderSession good;
  void* block = data;
  unsigned long size = 7;
  for (const int status :
       {crypto.HLD_CryptoInitialize(session, nullptr, nullptr),
        crypto.HLD_SetInfo(good.handle(), action, nullptr),
        crypto.HLD_SetInfo(good.handle(), place, nullptr),
        crypto.HLD_CloseHandle(&handle, nullptr, nullptr),
        crypto.HLD_CloseHandle(nullptr, nullptr, nullptr),
        crypto.HLD_PersistentInitialize(nullptr, session, nullptr, nullptr),
        crypto.HLD_CryptoGetLastErrorDetails(nullptr, nullptr, nullptr),
        crypto.HLD_GetRandomData(1, nullptr, nullptr),
        crypto.HLD_ProtectData(nullptr, data, 4, &block, &size, nullptr),
        crypto.HLD_ProtectData(good.handle(), data, 4, nullptr, &size, nullptr),
        crypto.HLD_ProtectData(good.handle(), data, 4, &block, nullptr, nullptr),
        crypto.HLD_UnprotectData(good.handle(), nullptr, 4, &block, &size, nullptr),
        crypto.HLD_ProtectData(good.handle(), data, 1ul << 40, &block, &size, nullptr)}) {
    EXPECT_EQ(status, -1);
  }
  EXPECT_THAT(lastFailure(), HasSubstr("too long"));
  EXPECT_EQ(protectString("clear", nullptr), "");
  EXPECT_EQ(block, nullptr);
  EXPECT_EQ(size, 0u);
}

}  // namespace
