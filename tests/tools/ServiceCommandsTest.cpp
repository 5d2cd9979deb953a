// The commands that ask the service for its tables, and startup, which looks beside the store.

#include <gtest/gtest.h>

#include "tests/tools/TestInstallation.h"

using testing::AllOf;
using testing::HasSubstr;

namespace {

TEST(ServiceCommands, AnswerForTheSample) {
  expectAnswers(
      SampleInstallation().call(),
      {{{"fonts"}, 0, HasSubstr("mapped     sans-serif         DejaVu Sans\n")},
       {{"fonts", "--json"}, 0, HasSubstr(R"({"font":"serif","use":"DejaVu Serif"})")},
       {{"component", "METRICS"}, 0, "0.9.3-beta\n"},
       {{"component", "MAIL", "--json"}, 0, HasSubstr(R"({"component":"MAIL","version":"1.1.0"})")},
       {{"component", "MIAL"}, 1, "", HasSubstr("Near it: \"MAIL\".")},
       {{"locales", "--in", "fr_CA"}, 0, HasSubstr("cs     tchèque\n")},
       {{"content-locales", "--in", "de"}, 0, HasSubstr("de-at  Deutsch (Österreich)\n")},
       {{"time-zones", "--in", "en", "--json"},
        0,
        HasSubstr(R"({"code":"Europe/Zurich","name":"Central European Standard Time"})")},
       {{"currencies", "--in", "sv"}, 0, HasSubstr("CHF  schweizisk franc\n")},
       {{"map-locale", "ZH_sg"}, 0, "zh-cn\n"},
       {{"map-locale", "--content", "fr-BE"}, 0, "fr-fr\n"},
       {{"map-locale", "x"}, 1, "", HasSubstr("locale \"x\": no mapping exists")},
       {{"normalize-locale", " FR_ca_x "}, 0, "fr-ca\n"},
       {{"startup", "logFile"}, 0, HasSubstr("logFile  %ZAN_ROOT%/logs/server.log  /")},
       {{"startup", "logLevel"}, 0, HasSubstr("logLevel  info     =\n")}});
}

TEST(ServiceCommands, NeedNoInstallationWhereTheServiceNeedsNone) {
  expectAnswers({}, {{{"normalize-locale", "EN_us"}, 0, "en-us\n"},
                     {{"time-zones"}, 0, HasSubstr("Europe/Zurich")},
                     {{"locales"}, 2, "", HasSubstr("--root")}});
}

TEST(ServiceCommands, SayWhichFileIsMissing) {
  const auto locales = AllOf(HasSubstr("locale document is missing"), HasSubstr("(state 11)"));
  expectAnswers(
      TestInstallation("").call(),
      {{{"fonts"}, 2, "", locales}, {{"component", "A"}, 2, "", HasSubstr("(state 14)")}});
}

TEST(StartupCommand, ShowsBothWhenADuplicateMakesThemDiffer) {
  const TestInstallation installation(parameter("a", "first") + parameter("a", "last") +
                                      "<vtn:parameter name='b'/>");
  EXPECT_EQ(installation.run({"startup"}).out,
            "NAME  ON DISK  IN FORCE\n"
            "a     first    last\n"
            "b              (absent)\n");
}

}  // namespace
