#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <thread>
#include <vector>

#include "platform/idom/VRDIDOM_Document.h"
#include "platform/idom/VRDIDOM_Parser.h"
#include "startup/VRDStartupConfiguration.h"
#include "store/VRDConfigurationState.h"
#include "tests/support/Installation.h"
#include "tests/support/Store.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

std::vector<std::string> namesOf(VRDStartupConfiguration& startup) {
  std::list<I18NString> names{"left over"};
  EXPECT_EQ(startup.getParameterNames(names), VRDCFGAPI_NoError);
  std::vector<std::string> texts;
  for (const I18NString& name : names) texts.emplace_back(name.c_str());
  return texts;
}

std::string valueOf(VRDStartupConfiguration& startup, const char* name, int unused = 0) {
  I18NString value = "left over";
  EXPECT_EQ(startup.getValue(name, unused, value), VRDCFGAPI_NoError);
  return value.c_str();
}

std::string documentOf(VRDStartupConfiguration& startup) {
  I18NString text = "left over";
  EXPECT_EQ(startup.getStartupConfigurationDocument(text), VRDCFGAPI_NoError);
  return text.c_str();
}

bool parses(const std::string& text) {
  VRDIDOM_Document document;
  return VRDIDOM_Parser(0).parse(text.data(), static_cast<int>(text.size()), document) != 0;
}

}  // namespace

TEST(StartupConfiguration, ShowsWhatStandsInTheDocument) {
  const CurrentInstallation installation(
      parameter("b", "two") + parameter("a", "one") + parameter("a", "again") +
      parameter("gone", "x", "disabled='TRUE'") +
      parameter("path", "../data", "", "xsi:type='cfg:folderPath'") +
      parameter("secret", "AAAA", "", "encrypted='true'") +
      "<vtn:parameter name='none'/><parameter name='foreign'/>" + "<x>" + parameter("nested", "x") +
      "</x>" + parameter("mixed", "p<q>r</q>s"));
  VRDStartupConfiguration startup;
  EXPECT_THAT(namesOf(startup), ElementsAre("a", "b", "mixed", "none", "path", "secret"));
  const std::pair<const char*, const char*> values[] = {
      {"a", "one"},        {"b", "two"},       {"mixed", "ps"}, {"none", ""},
      {"path", "../data"}, {"secret", "AAAA"}, {"gone", ""},    {"unknown", ""}};
  for (const auto& [name, value] : values) {
    EXPECT_EQ(valueOf(startup, name), value) << name;
    EXPECT_EQ(valueOf(startup, name, 1), value) << name << " with the other argument set";
  }

  const std::string document = documentOf(startup);
  EXPECT_TRUE(parses(document));
  EXPECT_THAT(document, HasSubstr(">" + (installation / "data").string() + "<"));
  EXPECT_THAT(document, HasSubstr("AAAA"));
  EXPECT_THAT(document, Not(HasSubstr("gone")));
  EXPECT_EQ(VRDConfiguration::g_singletonVRDConfiguration, nullptr) << "the store sleeps on";
}

TEST(StartupConfiguration, AnOpaqueValueIsXml) {
  const CurrentInstallation installation(
      parameter("tree", "<a b='c'/>text", "opaque='TRUE'") +
      parameter("plain", "t", "opaque='yes'") +
      "<vtn:parameter name='empty' opaque='true'/>"
      "<parameter xmlns='http://zandor.com/schemas/vtconfig/1/' name='bare' opaque='true'/>");
  VRDStartupConfiguration startup;
  const std::string tree = valueOf(startup, "tree");
  EXPECT_THAT(tree, StartsWith("<vtn:value "));
  EXPECT_THAT(tree, HasSubstr("<a b=\"c\"/>text</vtn:value>"));
  for (const char* prefix : {"vtn", "cfg", "xsd", "xsi"}) {
    EXPECT_THAT(tree, HasSubstr("xmlns:" + std::string(prefix) + "=\""));
  }
  EXPECT_TRUE(parses(tree)) << tree;
  EXPECT_EQ(valueOf(startup, "plain"), "t");
  EXPECT_EQ(valueOf(startup, "empty"),
            "<vtn:value xmlns:vtn=\"http://zandor.com/schemas/configparams/XMLSchema/1/\"/>");
  EXPECT_TRUE(parses(valueOf(startup, "bare"))) << valueOf(startup, "bare");
}

TEST(StartupConfiguration, AFailureChangesNothingAndIsTriedAgain) {
  struct {
    const char* what;
    const char* text;
    VRDCFGAPI_ErrorState state;
    VRDCFGAPI_ErrorState stateOfDocument;
  } const cases[] = {
      {"missing", nullptr, VRDCFGAPI_StartupFileMissing, VRDCFGAPI_StartupFileMissing},
      {"empty", "", VRDCFGAPI_StartupFileParseFailed, VRDCFGAPI_StartupFileParseFailed},
      {"malformed", "<a>", VRDCFGAPI_StartupFileParseFailed, VRDCFGAPI_StartupFileParseFailed},
      {"another root", "<parameters/>", VRDCFGAPI_BadRootElement, VRDCFGAPI_NoError},
  };
  const CurrentInstallation installation;
  for (const auto& row : cases) {
    std::filesystem::remove(installation.startupFile());
    if (row.text != nullptr) installation.setDocument(row.text);
    VRDStartupConfiguration startup;
    std::list<I18NString> names{"kept"};
    I18NString value = "kept";
    EXPECT_EQ(startup.getParameterNames(names), row.state) << row.what;
    EXPECT_EQ(startup.getValue("a", 0, value), row.state) << row.what;
    EXPECT_EQ(names, std::list<I18NString>{"kept"});
    EXPECT_EQ(value, "kept");
    EXPECT_EQ(startup.getStartupConfigurationDocument(value), row.stateOfDocument) << row.what;
    EXPECT_EQ(value == "kept", row.stateOfDocument != VRDCFGAPI_NoError);

    installation.setParameters(parameter("a", "mended"));
    EXPECT_EQ(valueOf(startup, "a"), "mended") << row.what;
  }
}

TEST(StartupConfiguration, KeepsWhatItHasRead) {
  const CurrentInstallation installation;
  VRDStartupConfiguration startup;
  EXPECT_THAT(namesOf(startup), ElementsAre());
  installation.setParameters(parameter("a", "one"));
  EXPECT_THAT(namesOf(startup), ElementsAre("a")) << "without parameters it is read again";

  installation.setParameters(parameter("a", "two"));
  EXPECT_EQ(valueOf(startup, "a"), "one");
  EXPECT_THAT(documentOf(startup), HasSubstr(">two<"));
  VRDStartupConfiguration copy(startup);
  EXPECT_EQ(valueOf(copy, "a"), "two") << "a copy reads by itself";
}

// The first parameters may come while others are reading the empty table.
TEST(StartupConfiguration, IsSharedByThreads) {
  const CurrentInstallation installation;
  VRDStartupConfiguration startup;
  std::atomic<bool> done{false};
  std::vector<std::thread> threads;
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([&] {
      while (!done) {
        const std::string value = valueOf(startup, "a");
        EXPECT_TRUE(value.empty() || value == "one") << value;
        if (!value.empty()) done = true;
      }
    });
  }
  const auto complete =
      installation.write("configuration/next.xml", startupDocument(parameter("a", "one")));
  std::filesystem::rename(complete, installation.startupFile());
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(namesOf(startup), ElementsAre("a"));
}
