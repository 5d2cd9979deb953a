#include <gtest/gtest.h>

#include <string>

#include "tests/support/DomTesting.h"
#include "tests/support/Installation.h"
#include "tests/support/Store.h"

namespace {

/// Takes in a query result with @p parameters below its one group.
VRDCFGAPI_ErrorState take(const std::string& parameters) {
  return initWith(
      "<q:queryResult xmlns:q='urn:q'"
      " xmlns:i='http://www.w3.org/2001/XMLSchema-instance'><group>" +
      parameters + "</group></q:queryResult>");
}

/// The order of the parameters in the tree, by name.
std::string order() {
  const std::string tree = textOf(""), mark = "<vtn:parameter name=\"";
  std::string names;
  for (auto at = tree.find(mark); at != std::string::npos; at = tree.find(mark, at + 1)) {
    const auto begin = at + mark.size();
    names += tree.substr(begin, tree.find('"', begin) - begin) + " ";
  }
  return names;
}

TEST(ScanTest, WhatAParameterBecomes) {
  const CurrentInstallation installation;
  ASSERT_EQ(take("<text><value encrypted='true'>v</value></text>"
                 "<p:prefixed xmlns:p='urn:p'><value>v</value></p:prefixed>"
                 "<plain opaque='FALSE'><value>a<b>c</b>d</value></plain>"
                 "<xml opaque='True'>text<value>t<b>1</b><c/></value></xml>"
                 "<bare opaque='true'><value>t</value></bare>"
                 "<typed><value i:type='cfg:filePath'>rel</value></typed>"
                 "<advancedSettings><value/></advancedSettings> - "
                 "<none/><other><p:value xmlns:p='urn:p'>v</p:value></other>"),
            VRDCFGAPI_NoError);
  EXPECT_EQ(order(), "text p:prefixed plain xml bare typed advancedSettings ");
  EXPECT_EQ(textOf("text"), "v");
  EXPECT_EQ(readText("text", 1).state, VRDCFGAPI_NoError) << "the mark does not come along";
  EXPECT_EQ(textOf("p:prefixed"), "v");
  EXPECT_EQ(textOf("plain"), "ad");
  EXPECT_EQ(textOf("typed"), installation.bin() + "/rel");
  const std::string xml = textOf("xml");
  EXPECT_NE(xml.find("><b>1</b><c/></vtn:value>"), std::string::npos) << xml;
  const std::string bare = textOf("bare");
  EXPECT_EQ(bare.substr(bare.size() - 2), "/>") << bare;
}

TEST(ScanTest, AChangedParameterKeepsItsPlace) {
  const CurrentInstallation installation(parameter("a", "1") + parameter("b", "1") +
                                         parameter("c", "1"));
  EXPECT_EQ(textOf("a") + textOf("b") + textOf("c"), "111");
  EXPECT_EQ(take("<b><value>1</value></b><c><value>2</value></c><d><value>2</value></d>"
                 "<b><value>2</value></b><a/>"),
            VRDCFGAPI_NoError);
  EXPECT_EQ(order(), "a b c d ");
  EXPECT_EQ(textOf("a") + textOf("b") + textOf("c") + textOf("d"), "1222");
}

TEST(ScanTest, QueryResultsAreFoundAtAnyDepth) {
  const CurrentInstallation installation;
  EXPECT_EQ(initWith("<all><queryResult><p><value>not a parameter</value></p>"
                     "<g><n><value>1</value></n></g></queryResult>"
                     "<deeper><queryResult><g><n><value>2</value></n><m><value>2</value></m></g>"
                     "</queryResult></deeper></all>"),
            VRDCFGAPI_NoError);
  EXPECT_EQ(order(), "n m ");
  EXPECT_EQ(textOf("n"), "2");

  VRDIDOM_Element element = parsedRoot("<queryResult><g><n><value>3</value></n></g></queryResult>");
  EXPECT_EQ(store().init(element), VRDCFGAPI_NoError);
  EXPECT_EQ(textOf("n"), "3");
}

TEST(ScanTest, AdvancedSettingsAreAppliedOnce) {
  const CurrentInstallation installation(parameter("a", "document"));
  const auto settings = [](const std::string& text) {
    return "<advancedSettings><value>&lt;s>" + text + "&lt;/s></value></advancedSettings>";
  };
  EXPECT_EQ(take(settings("&lt;x name='a'>one&lt;/x>&lt;x name='n'>\xC3\xA9&lt;/x>"
                          "&lt;x>no name&lt;/x>&lt;x name='e'/>")),
            VRDCFGAPI_NoError);
  EXPECT_EQ(textOf("a"), "one");
  EXPECT_EQ(textOf("n"), "\xC3\xA9");
  EXPECT_EQ(textOf("e"), "");
  EXPECT_EQ(order(), "advancedSettings ");
  EXPECT_EQ(take(settings("&lt;x name='a'>two&lt;/x>")), VRDCFGAPI_NoError);
  EXPECT_EQ(textOf("a"), "one");
}

TEST(ScanTest, AFailureInTheMiddleKeepsWhatWasTaken) {
  const CurrentInstallation installation(parameter("path", "rel", "", "xsi:type='cfg:filePath'"));
  VRDConfiguration alone;  // the failure is in its first load
  EXPECT_EQ(initWith("<queryResult><g><before><value>1</value></before>"
                     "<advancedSettings><value>not xml</value></advancedSettings>"
                     "<behind><value>1</value></behind></g></queryResult>",
                     alone),
            VRDCFGAPI_InternalError);
  EXPECT_EQ(alone.init(), VRDCFGAPI_NoError);
  const std::pair<const char*, const char*> rows[] = {
      {"before", "1"}, {"advancedSettings", "not xml"}, {"behind", ""}, {"path", "rel"}};
  for (const auto& [name, value] : rows) EXPECT_EQ(textOf(name, alone), value) << name;
}

TEST(ScanTest, WhatSetValueMadeIsNotReplaced) {
  const CurrentInstallation installation(parameter("a", "1"));
  ASSERT_EQ(store().setValue("a", "set"), VRDCFGAPI_NoError);
  const std::string before = textOf("");
  EXPECT_EQ(take("<a><value>2</value></a>"), VRDCFGAPI_InternalError);
  EXPECT_EQ(take("<a><value>set</value></a>"), VRDCFGAPI_NoError) << "it is equal";
  EXPECT_EQ(textOf("a"), "set");
  EXPECT_EQ(textOf(""), before);
}

}  // namespace
