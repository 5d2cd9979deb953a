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
    if (surroundings.link != noLink) {
      std::ofstream("zanroot.link", std::ios::binary) << surroundings.link;
    }
  }

 private:
  CurrentDirectoryGuard m_directory;
  EnvironmentGuard m_execPath;
  EnvironmentGuard m_root;
  EnvironmentGuard m_libraryPath;
};

/// Expects that the process finds @p installation, and reads it, from where it stands.
void expectFound(const Installation& installation) {
  startOver();
  EXPECT_EQ(textOf("who"), "the installation");
  EXPECT_EQ(VRDFmDir::getEffectiveWorkingDir().c_str(), installation.bin());
  I18NString path = "../configuration/zanstartup.xml";
  store().resolveEffectivePath(path);
  EXPECT_EQ(path.c_str(), installation.startupFile().string());
}

const std::string who = parameter("who", "the installation");

TEST(DiscoveryTest, EveryWayLeadsToTheSameInstallation) {
  const Installation installation(who, "not utf8 \xE9 ");
  installation.write("bin/libVRDCFGAPI.so", "");
  const TemporaryFolder elsewhere;
  const std::string root = installation.path().string();
  const std::string bin = installation.bin();
  const std::string twoDirectories = elsewhere.path().string() + "::" + bin + ":";
  struct Row {
    const char* way;
    fs::path directory;
    Surroundings surroundings;
  };
  const Row rows[] = {
      {"exec path", elsewhere.path(), {bin.c_str()}},
      {"root", elsewhere.path(), {nullptr, root.c_str()}},
      {"current directory", installation.bin(), {}},
      {"other child of the root", installation / "configuration", {}},
      {"link", elsewhere.path(), {nullptr, nullptr, nullptr, root + "\n"}},
      {"link without a newline", elsewhere.path(), {nullptr, nullptr, nullptr, root}},
      {"link with more lines", elsewhere.path(), {nullptr, nullptr, nullptr, root + "\nx\n"}},
      {"library path", elsewhere.path(), {nullptr, nullptr, twoDirectories.c_str()}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.way);
    fs::remove(elsewhere / "zanroot.link");
    const Placed placed(row.directory, row.surroundings);
    expectFound(installation);
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
  installation.write("lib/libVRDCFGAPI.so", "");
  installation.write("lib2/libVRDCFGAPI.so", "");
  const std::string lib = (installation / "lib").string();
  const std::string lib2 = (installation / "lib2").string();
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
  struct Row {
    Surroundings surroundings;
    std::string offered;
  };
  const Row rows[] = {
      {{}, ""},
      {{""}, "exec "},
      {{nullptr, ""}, "root ./bin"},
      {{nullptr, nullptr, ":::"}, ""},
      {{nullptr, nullptr, "/nowhere:/dev"}, ""},
      {{nullptr, nullptr, nullptr, ""}, ""},
      {{nullptr, nullptr, nullptr, "\n/second\n"}, ""},
      {{nullptr, nullptr, nullptr, "/l\r\n"}, "link /l\r/./bin"},
      {{nullptr, nullptr, nullptr, " /l \n"}, "link  /l /./bin"},
      {{nullptr, nullptr, nullptr, "/caf\xE9\n"}, "link /caf\xE9/./bin"},
      {{nullptr, nullptr, nullptr, longest + "\n"}, "link " + longest + "/./bin"},
      {{nullptr, nullptr, nullptr, longest + "q\n"}, "link " + longest + "/./bin"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.offered.substr(0, 40));
    fs::remove(folder / "zanroot.link");
    const Placed placed(folder.path(), row.surroundings);
    EXPECT_EQ(offers(), row.offered);
  }
  fs::remove(folder / "zanroot.link");
  fs::create_directory(folder / "zanroot.link");
  const Placed placed(folder.path(), {});
  EXPECT_EQ(offers(), "");
  // Opening it would wait for a writer.
  fs::remove(folder / "zanroot.link");
  ASSERT_EQ(::mkfifo("zanroot.link", 0600), 0);
  EXPECT_EQ(offers(), "");
}

TEST(DiscoveryTest, ARefusedSourceLeadsToTheNext) {
  const Installation installation(who);
  const std::string root = installation.path().string();
  const std::string file = installation.startupFile().string();
  const std::string tooLong(5000, 'x');
  for (const std::string& refused : {std::string(), std::string("/nowhere"), file, tooLong}) {
    SCOPED_TRACE(refused.substr(0, 40));
    const Placed placed("/", {refused.c_str(), root.c_str()});
    expectFound(installation);
  }
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
