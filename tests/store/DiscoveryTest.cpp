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

TEST(DiscoveryTest, EveryWayLeadsToTheSameInstallation) {
  const Installation installation(who, "not utf8 \xE9 ");
  installation.write("bin/libVRDCFGAPI.so", "");
  const TemporaryFolder elsewhere;
  const std::string root = installation.path().string();
  const std::string bin = installation.bin();
  const std::string file = installation.startupFile();
  const std::string libraries = elsewhere.path().string() + "::" + bin + ":";
  const std::pair<fs::path, Surroundings> rows[] = {
      {elsewhere.path(), {bin.c_str()}},
      {elsewhere.path(), {nullptr, root.c_str()}},
      {installation.bin(), {}},
      {installation / "configuration", {}},
      {elsewhere.path(), {nullptr, nullptr, nullptr, root + "\n"}},
      {elsewhere.path(), {nullptr, nullptr, libraries.c_str()}},
      // What is refused leads to the next.
      {elsewhere.path(), {"", root.c_str()}},
      {elsewhere.path(), {file.c_str(), root.c_str()}},
  };
  for (std::size_t row = 0; row < std::size(rows); ++row) {
    SCOPED_TRACE(row);
    const Placed placed(rows[row].first, rows[row].second);
    startOver();
    EXPECT_EQ(textOf("who"), "the installation");
    EXPECT_EQ(VRDFmDir::getEffectiveWorkingDir().c_str(), bin);
  }
}

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
  const std::string libraries = "/nowhere:" + lib + ":" + lib2;
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
