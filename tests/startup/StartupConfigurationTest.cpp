#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "startup/VRDStartupConfiguration.h"
#include "tests/support/DomTesting.h"
#include "tests/support/Installation.h"
#include "tests/support/Store.h"
#include "tests/support/Together.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

std::list<I18NString> namesOf(VRDStartupConfiguration& startup) {
  std::list<I18NString> names{"left over"};
  EXPECT_EQ(startup.getParameterNames(names), VRDCFGAPI_NoError);
  return names;
}

std::string valueOf(VRDStartupConfiguration& startup, const char* name, int unused = 0) {
  I18NString value = "left over";
  EXPECT_EQ(startup.getValue(name, unused, value), VRDCFGAPI_NoError);
  return value.c_str();
}

std::string documentOf(VRDStartupConfiguration& startup) {
  I18NString text;
  EXPECT_EQ(startup.getStartupConfigurationDocument(text), VRDCFGAPI_NoError);
  return text.c_str();
}

bool parses(const std::string& text) { return !parsed(text).isNull(); }

}  // namespace

TEST(StartupConfiguration, ShowsWhatStandsInTheDocument) {
  const CurrentInstallation installation(
      parameter("b", "two") + parameter("a", "one") + parameter("a", "again") +
      parameter("gone", "x", "disabled='TRUE'") + parameter("plain", "p<q>r</q>s", "opaque='yes'") +
      parameter("path", "../data", "", "xsi:type='cfg:folderPath'") +
      parameter("secret", "AAAA", "", "encrypted='true'") +
      "<vtn:parameter name='none'/><parameter name='foreign'/><x>" + parameter("nested", "x") +
      "</x>");
  VRDStartupConfiguration startup;
  EXPECT_THAT(namesOf(startup), ElementsAre("a", "b", "none", "path", "plain", "secret"));
  const std::pair<const char*, const char*> values[] = {
      {"a", "one"},        {"b", "two"},       {"plain", "ps"}, {"none", ""},
      {"path", "../data"}, {"secret", "AAAA"}, {"gone", ""},    {"unknown", ""}};
  for (const auto& [name, value] : values) {
    EXPECT_EQ(valueOf(startup, name), value) << name;
    EXPECT_EQ(valueOf(startup, name, 1), value) << name << " with the other argument set";
  }
  EXPECT_THAT(documentOf(startup),
              AllOf(testing::ResultOf(parses, true), Not(HasSubstr("gone")), HasSubstr("AAAA"),
                    HasSubstr(">" + (installation / "data").string() + "<")));
  EXPECT_EQ(VRDConfiguration::g_singletonVRDConfiguration, nullptr) << "the store sleeps on";
}

TEST(StartupConfiguration, AnOpaqueValueIsXml) {
  const CurrentInstallation installation(
      parameter("tree", "<a b='c'/>text", "opaque='TRUE'") +
      "<vtn:parameter name='empty' opaque='true'/>"
      "<parameter xmlns='http://zandor.com/schemas/vtconfig/1/' name='bare' opaque='true'/>");
  VRDStartupConfiguration startup;
  const std::string tree = valueOf(startup, "tree");
  EXPECT_THAT(tree, AllOf(StartsWith("<vtn:value "), HasSubstr("<a b=\"c\"/>text</vtn:value>"),
                          HasSubstr("xmlns:vtn="), HasSubstr("xmlns:cfg="), HasSubstr("xmlns:xsd="),
                          HasSubstr("xmlns:xsi=")));
  EXPECT_EQ(valueOf(startup, "empty"),
            "<vtn:value xmlns:vtn=\"http://zandor.com/schemas/configparams/XMLSchema/1/\"/>");
  for (const char* name : {"tree", "empty", "bare"}) EXPECT_TRUE(parses(valueOf(startup, name)));
}

TEST(StartupConfiguration, AFailureChangesNothingAndIsTriedAgain) {
  struct {
    const char* text;
    VRDCFGAPI_ErrorState state;
    VRDCFGAPI_ErrorState stateOfDocument;
  } const cases[] = {
      {nullptr, VRDCFGAPI_StartupFileMissing, VRDCFGAPI_StartupFileMissing},
      {"<a>", VRDCFGAPI_StartupFileParseFailed, VRDCFGAPI_StartupFileParseFailed},
      {"<parameters/>", VRDCFGAPI_BadRootElement, VRDCFGAPI_NoError},
  };
  const CurrentInstallation installation;
  for (const auto& row : cases) {
    std::filesystem::remove(installation.startupFile());
    if (row.text != nullptr) installation.setDocument(row.text);
    VRDStartupConfiguration startup;
    std::list<I18NString> names{"kept"};
    I18NString value = "kept";
    EXPECT_EQ(startup.initialize(), row.state);
    EXPECT_EQ(startup.getParameterNames(names), row.state);
    EXPECT_EQ(startup.getValue("a", 0, value), row.state);
    EXPECT_THAT(names, ElementsAre("kept"));
    EXPECT_EQ(value, "kept");
    EXPECT_EQ(startup.getStartupConfigurationDocument(value), row.stateOfDocument);
    EXPECT_EQ(value == "kept", row.stateOfDocument != VRDCFGAPI_NoError);

    installation.setParameters(parameter("a", "mended"));
    EXPECT_EQ(valueOf(startup, "a"), "mended") << row.state;
  }
}

// Without parameters the document is read again, also while others are looking at none.
TEST(StartupConfiguration, KeepsWhatItHasRead) {
  const CurrentInstallation installation;
  VRDStartupConfiguration startup;
  const auto complete = installation.write("next.xml", startupDocument(parameter("a", "one")));
  together(5, [&](std::size_t number) {
    if (number == 0) std::filesystem::rename(complete, installation.startupFile());
    while (valueOf(startup, "a").empty()) std::this_thread::yield();
    EXPECT_EQ(valueOf(startup, "a"), "one");
  });

  installation.setParameters(parameter("a", "two"));
  EXPECT_EQ(valueOf(startup, "a"), "one");
  EXPECT_THAT(documentOf(startup), HasSubstr(">two<"));
  VRDStartupConfiguration copy(startup);
  EXPECT_EQ(valueOf(copy, "a"), "two") << "a copy reads by itself";
}
