#include "platform/core/VRDFmDir.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
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

TEST(FmDir, ResolvesRelativePathsOnly) {
  TemporaryFolder folder;
  const std::string home = folder.path(), bin = folder / "bin";
  fs::create_directory(bin);
  ASSERT_EQ(accept(bin), 1);
  const std::pair<std::string, std::string> rows[] = {
      {"./file", bin + "/file"},
      {"../configuration/x.xml", home + "/configuration/x.xml"},
      {"a/./b//c/../d", bin + "/a/b/d"},
      {"../../../../../../../../../../etc", "/etc"},
      {".odd\xFF\xC3/..x/...", bin + "/.odd\xFF\xC3/..x/..."},
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
  // What is refused changes nothing.
  const std::pair<std::string, fs::path> rows[] = {{"link/../real//", real},
                                                   {folder / "linkToLink", real},
                                                   {"odd\xFF\xC3", odd},
                                                   {closed, closed},
                                                   {"", "/usr"},
                                                   {"missing", "/usr"},
                                                   {"file", "/usr"},
                                                   {"loop", "/usr"},
                                                   {"real\0x"s, "/usr"},
                                                   {std::string(5000, 'x'), "/usr"}};
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
    const char* path;
    unsigned mode;
    int result;
  } rows[] = {{"file", 0x8100, 1},
              {"link", 0x8100, 1},
              {"closed", 0x8100, 0},
              {"socket", 0x8100, 0},
              {"missing", 0, 0},
              {"file", S_IFREG | 0641, 0},
              {"dirLink", S_IFDIR | 0400, 1},
              {"closed", 0, 1}};
  for (const auto& row : rows) {
    EXPECT_EQ(VRDFmDir::exists(row.path, static_cast<unsigned short>(row.mode)), row.result)
        << row.path << " " << std::oct << row.mode;
  }
  EXPECT_EQ(VRDFmDir::exists(nullptr, 0), 0);
}

TEST(FmDir, JoinsWithOneSlash) {
  const struct {
    std::string base, tail, expected;
  } rows[] = {{"/opt", "bin", "/opt/bin"}, {"/opt//a", "//b//c/", "/opt//a/b//c/"},
              {"/opt/", "//", "/opt/"},    {"/", "/", "/"},
              {"", "/bin", "/bin"},        {"\xFF", "\xC3", "\xFF/\xC3"}};
  for (const auto& [base, tail, expected] : rows) {
    std::string bytes = base;
    VRDFmDir::joinPath(bytes, tail.c_str());
    EXPECT_EQ(bytes, expected) << base << " + " << tail;
    I18NString chars = text(base);
    VRDFmDir::joinPath(chars, text(tail));
    EXPECT_EQ(chars.utf8(), expected) << base << " + " << tail;
  }
}

}  // namespace
