#include "platform/core/VRDFmDir.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <atomic>
#include <filesystem>
#include <string>
#include <thread>
#include <utility>

#include "tests/support/EnvironmentGuard.h"
#include "tests/support/TemporaryFolder.h"

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

I18NString text(const std::string& bytes) { return I18NString(std::string_view(bytes)); }

int accept(const fs::path& directory) {
  return VRDFmDir::setEffectiveWorkingDir(text(directory.native()));
}

std::string accepted() { return std::string(VRDFmDir::getEffectiveWorkingDir().utf8()); }

/// Resolves in both forms, which must agree.
std::string resolve(const std::string& path) {
  std::string bytes = path;
  I18NString chars = text(path);
  EXPECT_EQ(&VRDFmDir::resolveEffectivePath(bytes), &bytes);
  EXPECT_EQ(&VRDFmDir::resolveEffectivePath(chars), &chars);
  EXPECT_EQ(chars.utf8(), bytes);
  return bytes;
}

/// @p directory with as much "/." behind it as makes a path of @p length bytes.
std::string stretched(const fs::path& directory, std::size_t length) {
  std::string path = directory.native() + ((length - directory.native().size()) % 2 ? "/" : "");
  while (path.size() < length) path += "/.";
  return path;
}

TEST(FmDir, ResolvesRelativePathsOnly) {
  TemporaryFolder folder;
  const std::string home = folder.path(), bin = folder / "bin";
  fs::create_directory(bin);
  ASSERT_EQ(accept(bin), 1);
  const std::pair<std::string, std::string> rows[] = {
      {"./file", bin + "/file"},
      {"../configuration/x.xml", home + "/configuration/x.xml"},
      {"a/./b//c/../d", bin + "/a/b/d"},
      {"logs///", bin + "/logs/"},
      {"../../../../../../../../../../etc", "/etc"},
      {"../../../../../../../../../..", "/"},
      {".hidden/..x/...", bin + "/.hidden/..x/..."},
      {"odd\xFF\xC3/\0x"s, bin + "/odd\xFF\xC3/\0x"s},
      {"", ""},
      {"//a/./../b/", "//a/./../b/"}};
  // Absolute paths and an empty one stand as they are.
  for (const auto& [path, expected] : rows) EXPECT_EQ(resolve(path), expected) << path;
}

TEST(FmDir, UsesTheCurrentDirectoryWhileNoneWasAccepted) {
  if (!accepted().empty()) GTEST_SKIP() << "needs a process of its own";
  TemporaryFolder folder;
  const fs::path removed = folder / "removed";
  fs::create_directory(removed);
  CurrentDirectoryGuard current(removed);
  EXPECT_EQ(resolve("../x"), folder / "x");
  fs::remove(removed);
  EXPECT_EQ(resolve("a/../b"), "a/../b") << "nothing to resolve against";
}

TEST(FmDir, AcceptsDirectoriesByTheirCanonicalPathAndNothingElse) {
  TemporaryFolder folder;
  const fs::path real = folder / "real", odd = folder / "odd\xFF\xC3", closed = folder / "closed";
  for (const fs::path& path : {real, odd, closed}) fs::create_directory(path);
  fs::permissions(closed, fs::perms::none);
  folder.write("file", "");
  fs::create_directory_symlink("real", folder / "link");
  fs::create_directory_symlink("link", folder / "linkToLink");
  fs::create_symlink("loop", folder / "loop");

  CurrentDirectoryGuard current(folder.path());
  // 4095 bytes is the longest path that the system takes. What is refused changes nothing.
  const std::pair<std::string, fs::path> rows[] = {{"link/../real//", real},
                                                   {folder / "linkToLink", real},
                                                   {"/", "/"},
                                                   {"odd\xFF\xC3", odd},
                                                   {closed, closed},
                                                   {stretched(real, 4095), real},
                                                   {"", "/usr"},
                                                   {"missing", "/usr"},
                                                   {"file", "/usr"},
                                                   {"file/..", "/usr"},
                                                   {"loop", "/usr"},
                                                   {"real\0x"s, "/usr"},
                                                   {stretched(real, 4096), "/usr"}};
  for (const auto& [given, kept] : rows) {
    ASSERT_EQ(accept("/usr"), 1);
    EXPECT_EQ(accept(given), kept == "/usr" ? 0 : 1) << given;
    EXPECT_EQ(accepted(), kept.native()) << given;
  }
  ASSERT_EQ(accept("link"), 1);
  fs::remove_all(folder.path());
  EXPECT_EQ(resolve("file"), real / "file") << "kept whatever becomes of it";
}

TEST(FmDir, ExistsComparesTypeAndPermissions) {
  TemporaryFolder folder;
  fs::create_symlink("file", folder / "link");
  fs::create_directory_symlink(".", folder / "dirLink");
  fs::permissions(folder.write("file", "x"), fs::perms(0640));
  fs::permissions(folder.write("closed", "x"), fs::perms(0240));
  ASSERT_EQ(::mknod((folder / "socket").c_str(), S_IFSOCK | 0700, 0), 0);
  CurrentDirectoryGuard current(folder.path());

  // A socket's type holds all bits of the regular file's. A mode without a type takes any.
  const struct {
    std::string path;
    unsigned mode;
    int result;
  } rows[] = {{"file", 0x8100, 1},
              {"link", 0x8100, 1},
              {"closed", 0x8100, 0},
              {"socket", 0x8100, 0},
              {"missing", 0, 0},
              {std::string(5000, 'x'), 0, 0},
              {"file", S_IFREG | 0641, 0},
              {"file", S_IFREG | S_ISUID, 0},
              {"dirLink", S_IFDIR | 0400, 1},
              {"link", S_IFLNK, 0},
              {"closed", 0, 1}};
  for (const auto& row : rows) {
    EXPECT_EQ(VRDFmDir::exists(row.path.c_str(), static_cast<unsigned short>(row.mode)), row.result)
        << row.path.substr(0, 80) << " " << std::oct << row.mode;
  }
  EXPECT_EQ(VRDFmDir::exists(nullptr, 0), 0);
}

TEST(FmDir, JoinsWithOneSlash) {
  const struct {
    std::string base, tail, expected;
  } rows[] = {{"/opt", "bin", "/opt/bin"},  {"/opt//a", "//b//c/", "/opt//a/b//c/"},
              {"/opt/", "//", "/opt/"},     {"/", "/", "/"},
              {"", "/bin", "/bin"},         {"/opt/", "", "/opt/"},
              {"\xFF", "\xC3", "\xFF/\xC3"}};
  for (const auto& row : rows) {
    std::string bytes = row.base;
    VRDFmDir::joinPath(bytes, row.tail.c_str());
    EXPECT_EQ(bytes, row.expected) << row.base << " + " << row.tail;
    I18NString chars = text(row.base);
    VRDFmDir::joinPath(chars, text(row.tail));
    EXPECT_EQ(chars.utf8(), row.expected) << row.base << " + " << row.tail;
  }
  std::string base = "/opt";
  VRDFmDir::joinPath(base, nullptr);
  EXPECT_EQ(base, "/opt");
  VRDFmDir::joinPath(base, base.c_str());
  EXPECT_EQ(base, "/opt/opt") << "a path joined to itself";
}

TEST(FmDir, IsReadAndSetFromManyThreads) {
  TemporaryFolder folder;
  const std::string directories[] = {folder / "a", folder / std::string(200, 'b')};
  for (const std::string& directory : directories) fs::create_directory(directory);
  const auto set = [&](int i) {
    accept(directories[i % 2]);
    VRDFmDir::setTempPath(text(directories[i % 2]));
  };
  set(0);
  std::atomic<bool> stop{false};
  const auto read = [&] {
    while (!stop) {
      std::string path = "file";
      VRDFmDir::resolveEffectivePath(path);
      EXPECT_TRUE(path == directories[0] + "/file" || path == directories[1] + "/file") << path;
      const std::string temp(VRDFmDir::getTempPath().utf8());
      EXPECT_TRUE(temp == directories[0] || temp == directories[1]) << temp;
    }
  };
  std::thread readers[] = {std::thread(read), std::thread(read), std::thread(read)};
  for (int i = 0; i < 2000; ++i) set(i);
  stop = true;
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(VRDFmDir::getTempPath().utf8(), directories[1]);
  VRDFmDir::setTempPath(I18NString());
  EXPECT_TRUE(VRDFmDir::getTempPath().empty());
}

}  // namespace
