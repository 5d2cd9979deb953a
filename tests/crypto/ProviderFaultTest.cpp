// Every way in which a provider can let the store down, seen from a reader of the store.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/VRDIDOMUtils.h"
#include "tests/crypto/StandInLibraries.h"
#include "tests/support/Store.h"

namespace {

// "protected" is what a provider that refuses leaves readable.
constexpr char storedText[] = "cHJvdGVjdGVk";

const std::string parameters =
    parameter("secret", storedText, "", "encrypted='true'") + parameter("plain", "as it is") +
    parameter("tree", "<a><b encrypted='true'>" + std::string(storedText) + "</b></a>",
              "opaque='true'");

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

  const std::string init = "HLD_CryptoInitialize ";
  const std::string session = "HLD_PersistentInitialize ";
  const std::string settings = "HLD_SetInfo ";
  const std::string details = "HLD_CryptoGetLastErrorDetails ";
  const std::string unprotect = "HLD_UnprotectData ";
  const std::string freed = "HLD_CryptoFree ";
  const std::string close = "HLD_CloseHandle ";
  const std::string terminate = "HLD_CryptoTerminate ";
  const std::string begin = init + session + settings;
  const std::string reading = unprotect + freed;
  const std::string end = close + terminate;
  constexpr auto fails = StandIn::fails, once = StandIn::once, warns = StandIn::warns,
                 throws = StandIn::throws;

  struct Row {
    std::map<std::string, int> faults;
    TextRead first;
    TextRead second;
    std::string calls;  // from the first read to the end of the store
  };
  const Row rows[] = {
      {{}, clear, clear, begin + reading + reading + end},

      {{{init, fails}}, shut, shut, init + init},
      {{{init, fails | warns}}, shut, shut, init + freed + init + freed},
      {{{init, fails | once}}, shut, clear, init + begin + reading + end},
      {{{init, throws | warns}}, broken, broken, init + freed + init + freed},
      {{{init, warns}}, clear, clear, init + freed + session + settings + reading + reading + end},

      {{{session, fails | warns}}, shut, shut, init + session + freed + init + session + freed},
      {{{session, fails | StandIn::leavesHandle}}, shut, shut, init + session + init + session},
      {{{session, fails | once}}, shut, clear, init + session + begin + reading + end},

      {{{settings, fails}}, shut, clear, begin + details + reading + end},
      {{{settings, fails}, {details, warns}}, shut, clear, begin + details + freed + reading + end},
      {{{settings, fails}, {details, fails}}, shut, clear, begin + details + reading + end},

      {{{unprotect, fails}}, refused, refused, begin + unprotect + unprotect + end},
      {{{unprotect, fails | once}}, refused, clear, begin + unprotect + reading + end},
      {{{unprotect, throws}}, stored, stored, begin + unprotect + unprotect + end},
      {{{freed, throws}}, stored, stored, begin + reading + reading + end},
      {{{unprotect, StandIn::givesNoBlock}}, nothing, nothing, begin + unprotect + unprotect + end},

      {{{close, fails | warns}, {terminate, fails | warns}},
       clear,
       clear,
       begin + reading + reading + close + freed + terminate + freed},
      {{{close, throws | warns}}, clear, clear, begin + reading + reading + close + freed},
  };
  const StandInInstallation standIn(parameters);
  for (const Row& row : rows) {
    SCOPED_TRACE("row " + std::to_string(&row - rows));
    *standIn = StandIn();
    standIn->clearText = "clear";
    standIn->faults = row.faults;
    expectRead(row.first);
    expectRead(row.second);
    startOver();
    EXPECT_EQ(standIn->calls, row.calls);
    EXPECT_EQ(standIn->badArguments, 0);
    for (const auto& [memory, balance] : standIn->balance) EXPECT_EQ(balance, 0) << memory;
  }
}

TEST(SessionTest, SendsTheFourDocumentsAsTheyAre) {
  const StandInInstallation standIn(parameters);
  readText("secret", 0);
  EXPECT_EQ(standIn->calls, "");
  readText("secret", 1);
  startOver();
  EXPECT_EQ(standIn->documents,
            "<initializeDocument><serviceID>CFGAPI</serviceID></initializeDocument>"
            "<sessionConfigDocument><serviceID>CFGAPI</serviceID></sessionConfigDocument>"
            "<setInfoDocument><action>CSKEncrypt</action><dataLocation>memory</dataLocation>"
            "</setInfoDocument>"
            "<terminateDocument><serviceID>CFGAPI</serviceID></terminateDocument>");
}

TEST(SessionTest, EveryWayToReadDecryptsACopy) {
  const StandInInstallation standIn(parameters);
  standIn->clearText = "<c>clear</c>";
  for (const char* name : {"tree", ""}) {
    EXPECT_THAT(readText(name, 1).text, testing::HasSubstr("<b><c>clear</c></b>"));
  }
  // The node's own mark is not looked at: what is asked for is what lies below.
  VRDIDOM_Node node;
  const int decrypt = 1;
  ASSERT_EQ(store().getValue("secret", decrypt, node), VRDCFGAPI_NoError);
  VRDIDOM_Element marked = node;
  EXPECT_EQ(VRDIDOMUtils::getText(marked), storedText);
  EXPECT_EQ(marked.getAttribute("encrypted"), "true");

  for (const char* name : {"tree", "secret", ""}) {
    EXPECT_THAT(readText(name, 0).text, testing::HasSubstr(storedText)) << name;
    EXPECT_THAT(readText(name, 0).text, testing::Not(testing::HasSubstr("clear"))) << name;
  }
}

}  // namespace
