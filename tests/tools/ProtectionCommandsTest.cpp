// keygen, protect, get --decrypt and the part of check that asks the provider, end to end.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <regex>
#include <thread>

#include "tests/tools/TestInstallation.h"

using testing::_;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr char startup[] = "configuration/zanstartup.xml";
constexpr char provider[] = "bin/libHLD_Crypto_Interface.so";
constexpr char firstKey[] = "configuration/keys/0000000001.key";

constexpr char parameters[] = R"(<!-- Ω -->
<vtn:parameter name="plain"><vtn:value>a &amp; <!-- b --> c</vtn:value></vtn:parameter>
<vtn:parameter name="twice"><vtn:value>first</vtn:value></vtn:parameter>
<vtn:parameter name="twice"><vtn:value>second</vtn:value></vtn:parameter>
<vtn:parameter name="empty"><vtn:value
   xsi:type='cfg:password' /></vtn:parameter>
<vtn:parameter name="marked"><vtn:value encrypted = 'no' xsi:type="a>b">x</vtn:value></vtn:parameter>
<vtn:parameter name="off" disabled="true"><vtn:value>x</vtn:value></vtn:parameter>
<vtn:parameter name="opaque" opaque="true"><vtn:value><secret/></vtn:value></vtn:parameter>
)";

class Protection : public testing::Test {
 protected:
  Protection() {
    std::filesystem::create_symlink(VRDCFG_PROVIDER, m_there / provider);
    m_there.run({"keygen"});
  }
  void protect(const char* name, const std::string& clear) {
    const CommandResult result = m_there.run({"protect", "--parameter", name}, clear);
    EXPECT_EQ(result.status, 0) << result.err;
  }
  std::string decrypted(const char* name) { return m_there.run({"get", name, "--decrypt"}).out; }

  TestInstallation m_there{parameters};
};

TEST_F(Protection, ComesBackAndOnlyWhenAskedFor) {
  for (const std::string& output :
       {std::string("pässword🚀"), std::string(" two\nlines\n"), std::string((1 << 20) - 1, 'x')}) {
    protect("plain", output + "\n");
    expectAnswers(m_there.call({"get", "plain"}),
                  {{{}, 0, "********\n"}, {{"--decrypt"}, 0, output + "\n"}});
    EXPECT_EQ(m_there.read(startup).find(output), std::string::npos);
  }
}

TEST_F(Protection, ChangesNothingElseInTheDocument) {
  ::chmod((m_there / startup).c_str(), 0640);
  for (const char* name : {"plain", "twice", "empty", "marked"}) {
    protect(name, "secret");
    EXPECT_EQ(decrypted(name), "secret\n");
  }
  const std::regex stored("[A-Za-z0-9+/]{44,}=*");
  EXPECT_EQ(std::regex_replace(m_there.read(startup), stored, "STORED"),
            startupDocument(R"(<!-- Ω -->
<vtn:parameter name="plain"><vtn:value encrypted="true">STORED</vtn:value></vtn:parameter>
<vtn:parameter name="twice"><vtn:value>first</vtn:value></vtn:parameter>
<vtn:parameter name="twice"><vtn:value encrypted="true">STORED</vtn:value></vtn:parameter>
<vtn:parameter name="empty"><vtn:value encrypted="true"
   xsi:type='cfg:password'>STORED</vtn:value></vtn:parameter>
<vtn:parameter name="marked"><vtn:value encrypted = 'true' xsi:type="a>b">STORED</vtn:value></vtn:parameter>
<vtn:parameter name="off" disabled="true"><vtn:value>x</vtn:value></vtn:parameter>
<vtn:parameter name="opaque" opaque="true"><vtn:value><secret/></vtn:value></vtn:parameter>
)"));
  EXPECT_EQ(std::filesystem::status(m_there / startup).permissions(), std::filesystem::perms(0640));
  for (const auto& entry : std::filesystem::directory_iterator(m_there / "configuration")) {
    EXPECT_THAT(entry.path().filename(), testing::AnyOf("keys", "zanstartup.xml"));
  }
}

TEST_F(Protection, KeepsUtf16AndTheLinkToTheDocument) {
  std::string utf16 = "\xFE\xFF";
  for (const char unit : startupDocument(parameter("a", ""))) utf16 += {'\0', unit};
  std::filesystem::remove(m_there / startup);
  std::filesystem::create_symlink(m_there.write("real.xml", utf16), m_there / startup);
  protect("a", "secret");
  EXPECT_TRUE(std::filesystem::is_symlink(m_there / startup));
  EXPECT_THAT(m_there.read(startup), StartsWith(std::string("\xFE\xFF\0<\0v", 6)));
  EXPECT_EQ(decrypted("a"), "secret\n");
}

TEST_F(Protection, LosesNoneOfTwoAtOnce) {
  std::thread other([&] { protect("twice", "one"); });
  protect("plain", "two");
  other.join();
  EXPECT_EQ(decrypted("twice") + decrypted("plain"), "one\ntwo\n");
}

TEST_F(Protection, ChangesNothingWhenRefused) {
  const std::string before = m_there.read(startup);
  const std::string tooLong((1 << 20) + 1, 'x');
  expectAnswers(m_there.call({"protect"}),
                {{{"--parameter", "plain"}, 2, "", HasSubstr("is empty"), "\n"},
                 {{}, 2, "", HasSubstr("holds a NUL"), std::string("a\0b", 3)},
                 {{}, 2, "", HasSubstr("longer than 1 MiB"), tooLong},
                 {{"--parameter", "off"}, 2, "", HasSubstr("no parameter \"off\""), "x"},
                 {{"--parameter", "opaque"}, 2, "", HasSubstr("holds XML"), "x"}});
  EXPECT_EQ(m_there.read(startup), before);

  std::filesystem::remove_all(m_there / "configuration/keys");
  const auto noKey = AllOf(HasSubstr("configuration/keys"), HasSubstr("vrdcfg keygen"));
  expectAnswers(m_there.call(), {{{"protect"}, 2, "", noKey, "x"}});
  std::filesystem::remove(m_there / provider);
  expectAnswers(m_there.call(), {{{"protect"}, 2, "", HasSubstr(m_there.file(provider)), "x"}});
}

TEST_F(Protection, OfEachKeyOpensWhatItCanAndTellsWhatStaysShut) {
  protect("plain", "old");
  std::string stored = m_there.run({"protect"}, "nested secret").out;
  stored.pop_back();
  const std::string second = m_there.file("configuration/keys/0000000002.key");
  expectAnswers(m_there.call(), {{{"keygen"}, 0, HasSubstr(second)}});
  EXPECT_NE(contentOf(second), m_there.read(firstKey));
  protect("twice", "new");
  m_there.setDocument(std::regex_replace(m_there.read(startup), std::regex("<secret/>"),
                                         "<a encrypted='true'>" + stored + "</a>"));
  const auto shut = AllOf(HasSubstr("\"plain\""), HasSubstr("(state 8)"));
  const CommandCall get = m_there.call({"get", "--decrypt"});
  expectAnswers(get, {{{"plain", "twice"}, 0, "plain  old\ntwice  new\n"},
                      {{"opaque"}, 0, HasSubstr("<a>nested secret</a>")}});
  std::filesystem::remove(m_there / firstKey);
  expectAnswers(get, {{{"plain"}, 1, "", shut},
                      {{"plain", "--json"}, 1, HasSubstr("\"state\":8"), _},
                      {{"opaque"}, 1, HasSubstr(stored), HasSubstr("could not be decrypted")},
                      {{"twice"}, 0, "new\n"}});
}

TEST_F(Protection, CheckNamesWhatTheProviderRefuses) {
  protect("plain", "one");
  protect("twice", "two");
  std::string document = m_there.read(startup);
  char& letter = document[document.rfind("</vtn:value>", document.find("\"empty\"")) - 20];
  letter = letter == 'A' ? 'B' : 'A';
  m_there.setDocument(document);
  EXPECT_THAT(m_there.run({"check"}).out,
              AllOf(HasSubstr(":4:29: the encrypted value in parameter \"twice\" is refused"),
                    HasSubstr("[refused-secret]"), Not(HasSubstr("\"plain\""))));
  std::filesystem::remove_all(m_there / "configuration/keys");
  EXPECT_THAT(m_there.run({"check"}).out, HasSubstr("[no-session]"));
}

}  // namespace
