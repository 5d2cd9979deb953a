#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "crypto/ValueDecryption.h"
#include "platform/core/VRDBase64.h"
#include "tests/provider/ReferenceProvider.h"
#include "tests/support/Store.h"
#include "tests/support/Together.h"

namespace {

using testing::HasSubstr;

/// An installation with one key, and a session. Each test is a process of its own.
class ProtectionTest : public testing::Test {
 protected:
  ProtectionTest() { installation.addKey(); }

  /// The decoded bytes of a stored text; none if it cannot be decoded.
  static std::string blockOf(const std::string& stored) {
    std::string bytes(stored.size() + 1, '\0');
    unsigned long size = bytes.size();
    return VRDBase64Decode(stored.c_str(), bytes.data(), &size) == 0 ? bytes.substr(0, size) : "";
  }

  static std::string flipped(std::string bytes, std::size_t bit) {
    bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << bit % 8));
    return bytes;
  }

  /// Puts @p stored into the startup document, and starts over.
  void storeSecret(const std::string& stored) {
    startOver();
    installation.setParameters(parameter("secret", stored, "", "encrypted='true'"));
  }

  ProtectedInstallation installation;
};

TEST_F(ProtectionTest, AProtectedValueIsReadThroughTheStore) {
  for (const std::string& clear : {std::string("<\xC3\xA4 w\xE4\n"), std::string(100000, 'x')}) {
    const std::string stored = ProviderSession().protect(clear);
    storeSecret(stored);
    EXPECT_EQ(readText("secret", 1).text, clear);
    EXPECT_EQ(readText("secret", 0).text, stored);
  }
  storeSecret(ProviderSession().protect(""));
  EXPECT_EQ(readText("secret", 1).state, VRDCFGAPI_DecryptFailed);
}

TEST_F(ProtectionTest, ABlockHasItsFormAndIsNeverTheSameAndDamageIsRefused) {
  const ProviderSession session;
  const std::string clear = "longer than what chance puts into a block";
  const std::string block = blockOf(session.protect(clear));
  EXPECT_EQ(block.substr(0, 10), std::string("\0VRD\1\1\0\0\0\1", 10));
  EXPECT_EQ(block.size(), 38u + clear.size());
  EXPECT_THAT(block, testing::Not(HasSubstr(clear)));
  EXPECT_EQ(session.unprotect(block), clear);
  EXPECT_NE(block, blockOf(session.protect(clear)));

  for (std::size_t size = 0; size < block.size(); ++size) {
    EXPECT_EQ(session.unprotect(block.substr(0, size)), "refused") << size;
  }
  EXPECT_EQ(session.unprotect(block + '\0'), "refused");
  for (std::size_t bit = 0; bit < block.size() * 8; ++bit) {
    EXPECT_EQ(session.unprotect(flipped(block, bit)), "refused") << bit;
  }
}

// What is refused is read as its bytes up to the first NUL. As a block of ours starts with NUL,
// that is nothing, unless just this byte was hit.
TEST_F(ProtectionTest, AFlippedBitOfTheStoredTextNeverYieldsAnotherClearText) {
  const ProviderSession session;
  const std::string stored = session.protect("clear");
  for (std::size_t bit = 0; bit < stored.size() * 8; ++bit) {
    const std::string damaged = flipped(stored, bit);
    const std::string text = decryptString(damaged.c_str(), session.handle()).c_str();
    EXPECT_STREQ(text.c_str(), blockOf(damaged).c_str()) << bit;
    EXPECT_TRUE(text.empty() || bit < 16) << "only the first byte of the block makes a text";
  }
}

TEST_F(ProtectionTest, KeysThatAreNotUsableLeaveNoSession) {
  const std::string stored = ProviderSession().protect("clear");
  const std::string file = installation.keys().fileOf(1);
  storeSecret(stored);

  ::chmod(file.c_str(), 0644);
  EXPECT_EQ(readText("secret", 1).state, VRDCFGAPI_CryptoUnavailable);
  EXPECT_THAT(lastFailure(), HasSubstr("/&lt;&amp;&gt;?"));
  EXPECT_THAT(lastFailure(), HasSubstr("1.key: has mode 0644; a key must have mode 0600"));
  ::chmod(file.c_str(), 0600);
  EXPECT_EQ(readText("secret", 1).text, "clear");
}

TEST_F(ProtectionTest, AfterARotationOldValuesStayReadable) {
  const ProviderSession early;
  const std::string first = early.protect("one");
  installation.addKey();
  const std::string second = ProviderSession().protect("two");
  EXPECT_EQ(blockOf(second).substr(6, 4), std::string("\0\0\0\2", 4));
  EXPECT_EQ(early.unprotect(blockOf(second)), "two") << "though it is older than the key";
  EXPECT_EQ(ProviderSession().unprotect(blockOf(first)), "one");

  std::filesystem::remove(installation.keys().fileOf(1));
  const ProviderSession last;
  EXPECT_EQ(last.unprotect(blockOf(first)), "refused");
  EXPECT_THAT(lastFailure(), HasSubstr("0000000001.key: cannot be opened: No such file"));
  EXPECT_EQ(last.unprotect(blockOf(second)), "two");
}

TEST_F(ProtectionTest, AKeyOpensOnlyWhatItProtectedUnderItsNumber) {
  SecretKey key;
  installation.keys().read(1, key);
  installation.keys().add(key);  // the same bytes under another number
  std::string block = blockOf(ProviderSession().protect("clear"));
  ASSERT_EQ(block[9], 2);
  block[9] = 1;
  EXPECT_EQ(ProviderSession().unprotect(block), "refused");
  EXPECT_THAT(lastFailure(), HasSubstr("not genuine"));
}

TEST_F(ProtectionTest, ThreadsShareASession) {
  const ProviderSession session;
  installation.addKey();
  const std::string added = blockOf(ProviderSession().protect("added"));

  together(8, [&](std::size_t thread) {
    for (std::size_t i = 0; i < 200; ++i) {
      const std::string own = std::to_string(thread * 1000 + i);
      EXPECT_EQ(session.unprotect(blockOf(session.protect(own))), own);
      EXPECT_EQ(session.unprotect(added), "added");
      EXPECT_EQ(session.unprotect(own), "refused");
      EXPECT_THAT(lastFailure(), HasSubstr("<reason>the block is not genuine</reason>"));
    }
  });
}

}  // namespace
