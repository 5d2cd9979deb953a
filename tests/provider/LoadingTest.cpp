// When the provider comes into the process, seen through the library as it is installed.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "tests/support/Installation.h"
#include "tests/support/Store.h"

namespace {

TEST(ProviderLoadingTest, TheProviderComesWithTheFirstDecryptionOnly) {
  const CurrentInstallation installation(parameter("plain", "text") +
                                         parameter("tree", "<a/>", "opaque='true'") +
                                         parameter("secret", "c2VjcmV0", "", "encrypted='true'"));
  const std::filesystem::path provider = installation / "bin/libHLD_Crypto_Interface.so";
  std::filesystem::copy_file(VRD_REFERENCE_PROVIDER, provider);
  const auto isLoaded = [&] { return ::dlopen(provider.c_str(), RTLD_LAZY | RTLD_NOLOAD); };

  for (const char* name : {"plain", "tree", "secret", "unknown", ""}) {
    EXPECT_EQ(readText(name, 0).state, VRDCFGAPI_NoError);
  }
  EXPECT_EQ(readText("plain", 1).text, "text");
  EXPECT_FALSE(isLoaded());

  EXPECT_EQ(readText("secret", 1).state, VRDCFGAPI_CryptoUnavailable);  // there is no key
  EXPECT_TRUE(isLoaded());
}

}  // namespace
