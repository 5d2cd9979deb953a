#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "platform/core/VRDFmDir.h"
#include "store/InstallationDiscovery.h"
#include "tests/support/Installation.h"
#include "tests/support/Store.h"

namespace {

namespace fs = std::filesystem;

const std::string noLink = "no link";

/// What a process may find around it: null means that it is not there.
struct Surroundings {
  const char* execPath = nullptr;
  const char* root = nullptr;
  const char* libraryPath = nullptr;
  std::string link = noLink;
};

/// Puts the process into @p surroundings and the current directory @p directory for one block.
class Placed {
 public:
  Placed(const fs::path& directory, const Surroundings& surroundings)
      : m_directory(directory),
        m_execPath("ZAN_EXEC_PATH", surroundings.execPath),
        m_root("ZAN_ROOT", surroundings.root),
        m_libraryPath("LD_LIBRARY_PATH", surroundings.libraryPath) {
    fs::remove_all("zanroot.link");
    if (surroundings.link != noLink) {
      std::ofstream("zanroot.link", std::ios::binary) << surroundings.link;
    }
  }

 private:
  CurrentDirectoryGuard m_directory;
  EnvironmentGuard m_execPath, m_root, m_libraryPath;
};

const std::string who = parameter("who", "the installation");

/// The candidates that are offered, in order, up to the one in @p accepted.
std::string offers(const std::string& accepted = "") {
  static const char* const names[] = {"exec ", "root ", "current ", "link ", "library "};
  std::string offered;
  discoverInstallation([&](InstallationSource source, const I18NString& binDir) {
    if (!offered.empty()) offered += "; ";
    offered += names[static_cast<int>(source)] + std::string(binDir.utf8());
    return binDir == accepted.c_str();
  });
  return offered;
}

TEST(DiscoveryTest, SourcesAreTriedInOrderUntilOneIsAccepted) {
  const Installation installation(who);
  const std::string lib = installation.write("lib/libVRDCFGAPI.so", "").parent_path();
  const std::string lib2 = installation.write("lib2/libVRDCFGAPI.so", "").parent_path();
  const std::string libraries = "/nowhere::" + lib + ":" + lib2 + ":";
  const Placed placed(installation.bin(), {"/e", "/r", libraries.c_str(), "/l\n"});

  EXPECT_EQ(offers("/e"), "exec /e");
  EXPECT_EQ(offers("/r/./bin"), "exec /e; root /r/./bin");
  EXPECT_EQ(offers("../bin"), "exec /e; root /r/./bin; current ../bin");
  EXPECT_EQ(offers("/l/./bin"), "exec /e; root /r/./bin; current ../bin; link /l/./bin");
  // The library that the process runs is the first one found; a refusal ends the search there.
  EXPECT_EQ(offers(), "exec /e; root /r/./bin; current ../bin; link /l/./bin; library " + lib);
}

TEST(DiscoveryTest, OddSourcesAreOfferedAsTheyStand) {
  const TemporaryFolder folder;
  const std::string longest(4095, 'p');
  const std::pair<Surroundings, std::string> rows[] = {
      {{}, ""},
      {{""}, "exec "},
      {{nullptr, ""}, "root ./bin"},
      {{nullptr, nullptr, "/nowhere:/dev"}, ""},
      {{nullptr, nullptr, nullptr, "\n/second\n"}, ""},
      {{nullptr, nullptr, nullptr, "/no newline"}, "link /no newline/./bin"},
      {{nullptr, nullptr, nullptr, " /caf\xE9 \r\n/second"}, "link  /caf\xE9 \r/./bin"},
      {{nullptr, nullptr, nullptr, longest + "q\n"}, "link " + longest + "/./bin"},
  };
  for (const auto& [surroundings, offered] : rows) {
    const Placed placed(folder.path(), surroundings);
    EXPECT_EQ(offers(), offered);
  }
  const Placed placed(folder.path(), {});
  // Opening it would wait for a writer.
  ASSERT_EQ(::mkfifo("zanroot.link", 0600), 0);
  EXPECT_EQ(offers(), "");
}

TEST(DiscoveryTest, NothingFoundIsFinal) {
  const Installation installation(who);
  const TemporaryFolder elsewhere;
  const Placed placed(elsewhere.path(), {});
  VRDConfiguration::determineBinDir();
  const EnvironmentGuard late("ZAN_ROOT", installation.path().c_str());
  EXPECT_EQ(textOf("who"), "");
  EXPECT_TRUE(VRDFmDir::getEffectiveWorkingDir().empty());
}

}  // namespace
