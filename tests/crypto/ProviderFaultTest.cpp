// Every way in which a provider can let the store down, seen from a reader of the store.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/crypto/StandInLibraries.h"
#include "tests/support/Store.h"

namespace {

// "protected" is what a provider that refuses leaves readable.
constexpr char storedText[] = "cHJvdGVjdGVk";

const std::string parameters =
    parameter("secret", storedText, "", "encrypted='true'") + parameter("plain", "as it is") +
    parameter("tree", "<a><b encrypted='true'>" + std::string(storedText) + "</b></a>",
              "opaque='true'");

constexpr char fourDocuments[] =
    "<initializeDocument><serviceID>CFGAPI</serviceID></initializeDocument>"
    "<sessionConfigDocument><serviceID>CFGAPI</serviceID></sessionConfigDocument>"
    "<setInfoDocument><action>CSKEncrypt</action><dataLocation>memory</dataLocation>"
    "</setInfoDocument>"
    "<terminateDocument><serviceID>CFGAPI</serviceID></terminateDocument>";

void expectRead(const TextRead& expected) {
  const TextRead got = readText("secret", 1);
  EXPECT_EQ(got.state, expected.state);
  EXPECT_EQ(got.text, expected.text);
  // Whatever the provider does, the tree keeps what is stored and the rest is answered.
  EXPECT_EQ(textOf("secret"), storedText);
  EXPECT_EQ(readText("plain", 1).text, "as it is");
}

TEST(ProviderFaultTest, IsToldByTheStateAndCostsNothing) {
  const TextRead clear = {VRDCFGAPI_NoError, "clear"};
  const TextRead refused = {VRDCFGAPI_NoError, "protected"};
  const TextRead stored = {VRDCFGAPI_NoError, storedText};
  const TextRead shut = {VRDCFGAPI_CryptoUnavailable, ""};
  const TextRead nothing = {VRDCFGAPI_DecryptFailed, ""};
  const TextRead broken = {VRDCFGAPI_InternalError, ""};

  constexpr auto fails = StandIn::fails, once = StandIn::once, warns = StandIn::warns,
                 throws = StandIn::throws, leavesHandle = StandIn::leavesHandle,
                 givesNoBlock = StandIn::givesNoBlock;
  struct Row {
    std::map<char, int> faults;
    TextRead first;
    TextRead second;
    const char* calls;  // from the first read to the end of the store
  };
  const Row rows[] = {
      {{}, clear, clear, "IBSUFUFCT"},
      {{{'I', fails | warns}}, shut, shut, "IFIF"},
      {{{'I', fails | once}}, shut, clear, "IIBSUFCT"},
      {{{'I', throws | warns}}, broken, broken, "IFIF"},
      {{{'I', warns}}, clear, clear, "IFBSUFUFCT"},
      {{{'B', fails | warns}}, shut, shut, "IBFIBF"},
      {{{'B', fails | leavesHandle}}, shut, shut, "IBIB"},
      {{{'B', fails | once}}, shut, clear, "IBIBSUFCT"},
      {{{'S', fails}, {'D', warns}}, shut, clear, "IBSDFUFCT"},
      {{{'U', fails | once}}, refused, clear, "IBSUUFCT"},
      {{{'U', throws}}, stored, stored, "IBSUUCT"},
      {{{'F', throws}}, stored, stored, "IBSUFUFCT"},
      {{{'U', givesNoBlock}}, nothing, nothing, "IBSUUCT"},
      {{{'C', fails | warns}, {'T', fails | warns}}, clear, clear, "IBSUFUFCFTF"},
      {{{'C', throws | warns}}, clear, clear, "IBSUFUFCF"},
  };
  const StandInInstallation standIn(parameters);
  textOf("secret");
  startOver();
  EXPECT_EQ(standIn->calls, "") << "without a decryption nobody is asked, not even at the end";
  for (const Row& row : rows) {
    SCOPED_TRACE("row " + std::to_string(&row - rows));
    *standIn = StandIn();
    standIn->clearText = "clear";
    standIn->faults = row.faults;
    expectRead(row.first);
    expectRead(row.second);
    startOver();
    EXPECT_EQ(standIn->calls, row.calls);
    if (row.faults.empty()) {
      EXPECT_EQ(standIn->documents, fourDocuments);
    }
    EXPECT_EQ(standIn->badArguments, 0);
    for (const auto& [memory, balance] : standIn->balance) EXPECT_EQ(balance, 0) << memory;
  }
}

TEST(ProviderFaultTest, EveryWayToReadDecryptsACopy) {
  const StandInInstallation standIn(parameters);
  standIn->clearText = "<c>clear</c>";
  for (const char* name : {"tree", ""}) {
    EXPECT_THAT(readText(name, 1).text, testing::HasSubstr("<b><c>clear</c></b>"));
  }
  for (const char* stored : {"tree", "secret", ""}) {
    EXPECT_THAT(textOf(stored), testing::AllOf(testing::HasSubstr(storedText),
                                               testing::Not(testing::HasSubstr("clear"))));
  }
}

}  // namespace
