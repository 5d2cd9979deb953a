#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include "provider/KeyFolder.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Together.h"

namespace {

using testing::HasSubstr;

const std::string digits = "206162636465666768696a6b6c6d6e6f707172737475767778797a7b7c7d7eff";
const std::string line = "vrdkey 1 " + digits + "\n";
const std::string bytes = " abcdefghijklmnopqrstuvwxyz{|}~\xFF";

std::filesystem::perms modeOf(const std::filesystem::path& path) {
  return std::filesystem::status(path).permissions();
}

class KeyFolderTest : public testing::Test {
 protected:
  KeyNumber add(char filledWith) const {
    SecretKey key;
    std::fill(key.data(), key.data() + SecretKey::size, static_cast<unsigned char>(filledWith));
    return keys.add(key);
  }

  /// The bytes of a key, or why it cannot be read.
  std::string read(KeyNumber number) const {
    SecretKey key;
    try {
      keys.read(number, key);
      return std::string(key.data(), key.data() + SecretKey::size);
    } catch (const KeyError& error) {
      return error.what();
    }
  }

  std::string readFile(const std::string& content, mode_t mode = 0600) const {
    ::chmod(folder.write("keys/0000000001.key", content).c_str(), mode);
    return read(1);
  }

  TemporaryFolder folder;
  const KeyFolder keys{(folder / "keys").string()};
};

TEST_F(KeyFolderTest, KeysAreCountedUpPrivateAndComeBackAsTheyWere) {
  const mode_t before = ::umask(0);  // the mode does not depend on it
  for (KeyNumber i = 1; i <= 3; ++i) {
    EXPECT_EQ(add("abc"[i - 1]), i);
    EXPECT_EQ(keys.newest(), i);
    EXPECT_EQ(modeOf(keys.fileOf(i)), std::filesystem::perms(0600));
  }
  ::umask(before);
  EXPECT_EQ(modeOf(folder / "keys"), std::filesystem::perms(0700));
  EXPECT_EQ(read(2), std::string(SecretKey::size, 'b'));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder / "keys"), {}), 3);
}

TEST_F(KeyFolderTest, TheNewestIsTheHighestNumberAmongWhatHasTheFormOfAKeyName) {
  for (const char* name : {"0000000002.key", "0000000010.key", "11.key", "0000000012.key~",
                           "00000000x3.key", "9999999999.key"}) {
    folder.write(std::string("keys/") + name, "");
  }
  EXPECT_EQ(keys.newest(), 10u);
  folder.write("keys/4294967295.key", "");
  EXPECT_EQ(keys.newest(), 4294967295u);
  EXPECT_THROW(add('x'), KeyError);  // the last number is not passed
}

TEST_F(KeyFolderTest, OnlyAnExactLineInAPrivateRegularFileIsAKey) {
  const std::string start = line.substr(0, 72);
  for (const std::string& content :
       {start + "f", line + "\n", start + "f\r\n", "vrdkey 2 " + digits + "\n", start + "\n",
        start + "ff", start + "g\n", start + "F\n", start + "/\n", "vrdkey 1 G" + line.substr(10),
        std::string()}) {
    EXPECT_THAT(readFile(content), HasSubstr("0000000001.key: is not a key")) << content;
  }
  for (const mode_t mode : {0640u, 0604u, 0700u, 0400u, 04600u}) {
    EXPECT_THAT(readFile(line, mode), HasSubstr("must have mode 0600")) << std::oct << mode;
  }
  EXPECT_EQ(readFile(line), bytes);

  EXPECT_THAT(read(2), HasSubstr("No such file"));
  ASSERT_EQ(::mkfifo(keys.fileOf(2).c_str(), 0600), 0);
  EXPECT_THAT(read(2), HasSubstr("is not a regular file"));
}

TEST_F(KeyFolderTest, AKeyThatCannotBeKeptLeavesNothing) {
  const KeyFolder missing((folder / "missing/keys").string());
  EXPECT_EQ(missing.newest(), 0u);
  EXPECT_THROW(missing.add({}), KeyError);
  EXPECT_THROW(KeyFolder(folder.write("file", "").string()).newest(), KeyError);

  struct rlimit before {};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const struct rlimit tight { 10, before.rlim_max };
  ::signal(SIGXFSZ, SIG_IGN);
  ::setrlimit(RLIMIT_FSIZE, &tight);
  EXPECT_THROW(add('a'), KeyError);
  ::setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_TRUE(std::filesystem::is_empty(folder / "keys"));
}

TEST_F(KeyFolderTest, KeysAddedAtOnceAreAllKept) {
  const std::string all = "abcdefgh";
  together(all.size(), [&](std::size_t number) { add(all[number]); });
  std::string found;
  for (KeyNumber number = 1; number <= all.size(); ++number) found += read(number)[0];
  EXPECT_THAT(found, testing::UnorderedElementsAreArray(all));
}

}  // namespace
