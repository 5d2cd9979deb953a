// where, path, --root and --bin: which installation is asked, and what is said when there is none.

#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/tools/TestInstallation.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

const std::string parameters = parameter("name", "this one");

TEST(Discovery, LeadsToTheSameInstallationOnEveryRoute) {
  const TestInstallation there(parameters);
  const std::string root = there.path().string();
  const std::string bin = there.bin();
  there.write("elsewhere/sub/zanroot.link", root + "\n");
  // With LD_LIBRARY_PATH the command itself runs on the libraries it finds there.
  for (const auto& library : std::filesystem::directory_iterator(VRDCFG_LIBRARIES)) {
    std::filesystem::create_symlink(library, there / "bin" / library.path().filename());
  }
  const std::pair<const char*, CommandCall> routes[] = {
      {"ZAN_EXEC_PATH", {{}, {{"ZAN_EXEC_PATH", bin}}}},
      {"ZAN_ROOT", {{}, {{"ZAN_ROOT", root}}}},
      {"current folder", {{}, {}, there / "configuration"}},
      {"./zanroot.link", {{}, {}, there / "elsewhere/sub"}},
      {"LD_LIBRARY_PATH", {{}, {{"LD_LIBRARY_PATH", "/nowhere:" + bin}}}},
      {"ZAN_ROOT", {{"--root", root}, {{"ZAN_EXEC_PATH", "/tmp"}}}},
      {"ZAN_ROOT", {{"--root", there.path().filename()}, {}, there.path().parent_path()}},
      {"ZAN_EXEC_PATH", {{"--bin=" + bin}, {{"ZAN_ROOT", "/tmp"}}}},
  };
  for (const auto& [source, call] : routes) {
    SCOPED_TRACE(source);
    const std::string where =
        "{\"found\":true,\"source\":\"" + std::string(source) + "\",\"bin\":\"";
    const auto found = AllOf(HasSubstr(where + bin + "\""), testing::Truly(isJson));
    expectAnswers(call, {{{"get", "name"}, 0, "this one\n"},
                         {{"path", "../data/x"}, 0, there.file("data/x") + "\n"},
                         {{"where", "--json"}, 0, found}});
  }
}

TEST(WhereCommand, TellsWhatWasRefusedAndWhy) {
  const TestInstallation there(parameters);
  const std::string file = there.write("file", "").string();
  CommandCall call{{"where"}, {{"ZAN_EXEC_PATH", file}, {"ZAN_ROOT", "/no/such/root"}}};
  call.folder = there / "configuration";
  EXPECT_EQ(runCommand(call).out,
            "    ZAN_EXEC_PATH    refused: not a folder  " + file + "\n" +
                "    ZAN_ROOT         refused: missing       /no/such/root/./bin\n"
                "=>  current folder   accepted               ../bin\n"
                "    ./zanroot.link   not looked at\n"
                "    LD_LIBRARY_PATH  not looked at\n"
                "\n"
                "bin               " +
                there.bin() + "\n" + "startup document  " + there.startupFile().string() +
                "  there\n" + "locale document   " + there.file("configuration/zanlocale.xml") +
                "   missing\n" + "component list    " + there.file("cmplst.txt") +
                "                    missing\n");
}

TEST(Installation, IsNeededAndNeverReplacedByAnother) {
  const auto nothing = AllOf(HasSubstr("ZAN_ROOT         names nothing"), Not(HasSubstr("=>")));
  expectAnswers({}, {{{"where"}, 1, nothing, HasSubstr("--root DIR")}});
  const TestInstallation other(parameters);
  const auto noRoot = HasSubstr("--root /no/root is no ");
  expectAnswers({{}, {}, other / "configuration"},
                {{{"get", "name", "--root", "/no/root"}, 2, "", noRoot},
                 {{"list", "--root", "/etc"}, 2, "", HasSubstr("/./bin is refused (missing)")},
                 {{"dump", "--bin", "/etc/passwd"}, 2, "", HasSubstr("is refused (not a folder)")},
                 {{"check", "--root", "/no/root"}, 2, "", noRoot}});
}

TEST(StartupDocument, IsToldOfWhereTheLibraryIsSilent) {
  const TestInstallation there;
  const auto expectWarning = [&](const char* state) {
    const auto told = AllOf(HasSubstr("configuration/zanstartup.xml: "), HasSubstr(state),
                            HasSubstr("no parameter \"name\""));
    expectAnswers(there.call(), {{{"get", "name"}, 1, "", told}});
  };
  expectWarning("(state 1)");
  there.setDocument("<a><b></a>");
  expectWarning("(state 3)");
  there.setDocument("<parameters/>");
  expectWarning("(state 4)");
}

TEST(PathCommand, KeepsOddBytesAndMakesValidJson) {
  const TestInstallation there(parameters);
  const std::string resolved = there.file("a");
  expectAnswers(
      there.call(),
      {{{"path", "../a\xFF"}, 0, resolved + "\xFF\n"},
       {{"path", "../a\xFF\"\n", "--json"}, 0, "{\"path\":\"" + resolved + "\uFFFD\\\"\\n\"}\n"}});
}

TEST(CommandLine, IsUnderstoodOrRefused) {
  expectAnswers({}, {{{"--help"}, 0, HasSubstr("Exit status: 0 done")},
                     {{"--version"}, 0, HasSubstr("vrdcfg ")},
                     {{}, 2, "", HasSubstr("which command?")},
                     {{"gte"}, 2, "", HasSubstr("no command \"gte\". Near it: \"get\".")},
                     {{"get"}, 2, "", HasSubstr("NAME is required")},
                     {{"list", "--valeus"}, 2, "", HasSubstr("--valeus")}});
}

TEST(Answer, ReaderThatWentAwayIsNoFailureButAFullDiskIs) {
  const TestInstallation there(parameters);
  CommandCall call = there.call({"list"});
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  ASSERT_EQ(::dup2(ends[1], 9), 9);
  ::close(ends[0]);
  call.sink = "&9";
  const CommandResult unread = runCommand(call);
  EXPECT_EQ(unread.status, 0);
  EXPECT_EQ(unread.err, "");

  call.sink = "/dev/full";
  const CommandResult full = runCommand(call);
  EXPECT_EQ(full.status, 2);
  EXPECT_THAT(full.err, HasSubstr("could not be written"));
}

}  // namespace
