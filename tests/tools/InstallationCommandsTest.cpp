// where, path, --root and --bin: which installation is asked, and what is said when there is none.

#include <gtest/gtest.h>

#include "tests/tools/TestInstallation.h"

using testing::AllOf;
using testing::HasSubstr;

namespace {

const std::string parameters = parameter("name", "this one");

TEST(Installation, IsTheOneThatIsNamedAndNoOther) {
  const TestInstallation there(parameters);
  CommandCall call{{}, {{"ZAN_EXEC_PATH", "/etc/passwd"}}, there / "configuration"};
  const auto told = AllOf(HasSubstr("    ZAN_EXEC_PATH    refused: not a folder  /etc/passwd\n"),
                          HasSubstr("=>  current folder   accepted               ../bin\n"),
                          HasSubstr("    LD_LIBRARY_PATH  not looked at\n"),
                          HasSubstr("zanstartup.xml  there\n"), HasSubstr(" missing\n"));
  const auto refused = HasSubstr("is refused (not a folder)");
  expectAnswers(call, {{{"where"}, 0, told},
                       {{"get", "name"}, 0, "this one\n"},
                       {{"get", "name", "--root", "/no/root"}, 2, "", HasSubstr("/no/root is no ")},
                       {{"dump", "--bin", "/etc/passwd"}, 2, "", refused}});
  call.folder = there.path().parent_path();
  expectAnswers(call, {{{"get", "name"}, 2, "", HasSubstr("--root DIR")},
                       {{"get", "name", "--root", there.path().filename()}, 0, "this one\n"},
                       {{"get", "name", "--bin=" + there.bin()}, 0, "this one\n"},
                       {{"where", "--json", "--root", there.path()},
                        0,
                        HasSubstr("\"source\":\"ZAN_ROOT\",\"bin\":\"" + there.bin())}});
}

TEST(StartupDocument, IsToldOfWhereTheLibraryIsSilent) {
  const TestInstallation there;
  const std::pair<const char*, const char*> rows[] = {
      {nullptr, "(state 1)"}, {"<a><b></a>", "(state 3)"}, {"<parameters/>", "(state 4)"}};
  for (const auto& [document, state] : rows) {
    if (document != nullptr) there.setDocument(document);
    const auto told = AllOf(HasSubstr("configuration/zanstartup.xml: "), HasSubstr(state),
                            HasSubstr("no parameter \"name\""));
    expectAnswers(there.call(), {{{"get", "name"}, 1, "", told}});
  }
}

TEST(CommandLine, IsUnderstoodOrRefused) {
  const TestInstallation there;
  expectAnswers(there.call(),
                {{{"--help"}, 0, HasSubstr("Exit status: 0 done")},
                 {{"--version"}, 0, HasSubstr("vrdcfg ")},
                 {{}, 2, "", HasSubstr("which command?")},
                 {{"gte"}, 2, "", HasSubstr("no command \"gte\". Near it: \"get\".")},
                 {{"get"}, 2, "", HasSubstr("NAME is required")},
                 {{"list", "--valeus"}, 2, "", HasSubstr("--valeus")},
                 {{"path", "../\xFF"}, 0, there.file("\xFF\n")},
                 {{"path", "/\xFF\"\n", "--json"}, 0, "{\"path\":\"/\uFFFD\\\"\\n\"}\n"}});
}

TEST(Answer, IsNotLostSilently) {
  const TestInstallation there(parameters);
  CommandCall call = there.call({"list"});
  call.sink = "/dev/full";
  const CommandResult full = runCommand(call);
  EXPECT_EQ(full.status, 2);
  EXPECT_THAT(full.err, HasSubstr("could not be written"));
}

}  // namespace
