#include <gtest/gtest.h>

#include <string>

#include "foundation/VRDIDOMUtils.h"
#include "tests/support/DomTesting.h"
#include "tests/support/Installation.h"
#include "tests/support/Store.h"

namespace {

TEST(RewritingTest, ReferencesAreReplacedAndPathsMadeAbsolute) {
  const EnvironmentGuard a("A", "/opt/x"), b("B", "yy"), c("C", nullptr), e("E", "");
  const EnvironmentGuard g("G", "12345%A%"), h("H", "1234%A%");
  const CurrentInstallation installation("", "not utf8 \xE9 ");
  const std::string bin = installation.bin();
  struct Row {
    std::string text, replaced;
    std::string after = replaced;  // of all passes
  };
  const Row rows[] = {
      {"%A%/logs", "/opt/x/logs"},
      {"logs/%A%", "logs//opt/x", bin + "/logs/opt/x"},
      {"%C%/logs", "%C%/logs"},
      {"%A", "%A"},
      {"%%A%", "%/opt/x"},
      {"%A%%B%", "/opt/xyy"},
      // What the first pass leaves, the next one takes; it is relative then.
      {"%B%%A%", "yy%A%", bin + "/yy/opt/x"},
      {"%%", "%%"},
      {"a%E%b", "ab", bin + "/ab"},
      // Behind a replacement the search goes on five characters after its beginning.
      {"%G%", "12345/opt/x", bin + "/12345/opt/x"},
      {"%H%", "1234%A%", bin + "/1234/opt/x"},
      {"", ""},
      {"../logs/./x", "../logs/./x", (installation / "logs/x").string()},
      {"/abs/../path", "/abs/../path"},
  };
  std::string parameters;
  for (const Row& row : rows) {
    for (const std::string type : {"file", "folder"}) {
      parameters += parameter(type + row.text, row.text, "", "xsi:type='cfg:" + type + "Path'");
    }
  }
  installation.setParameters(parameters);
  VRDIDOM_Document document = newDocument();
  ASSERT_EQ(VRDConfiguration::getConfigDoc(document), VRDCFGAPI_NoError);
  VRDIDOM_Element root = document.getDocumentElement();
  VRDConfiguration::replaceVariables(root);
  for (std::size_t i = 0; i < 2 * std::size(rows); ++i) {
    VRDIDOM_Element value = root.getChildNodes().item(i).getFirstChild();
    EXPECT_EQ(VRDIDOMUtils::getText(value), rows[i / 2].replaced.c_str());
  }
  EXPECT_EQ(textOf("file%B%%A%"), "yy%A%");
  for (int pass = 2; pass < 4; ++pass) {
    EXPECT_EQ(initWith("<nothing/>"), VRDCFGAPI_NoError);
    for (const Row& row : rows) {
      EXPECT_EQ(textOf(("file" + row.text).c_str()), row.after) << row.text;
      EXPECT_EQ(textOf(("folder" + row.text).c_str()), row.after) << row.text;
    }
  }
}

TEST(RewritingTest, OnlyPathValuesAreRewritten) {
  const EnvironmentGuard a("A", "/opt/x");
  const CurrentInstallation installation(
      parameter("no type", "%A%") + parameter("other type", "%A%", "", "xsi:type='cfg:string'") +
      parameter("other case", "%A%", "", "xsi:type='cfg:filepath'") +
      parameter("other attribute", "%A%", "", "type='cfg:filePath'") +
      parameter("nested",
                "<vtn:instance>" + parameter("inner", "%A%/in", "", "xsi:type='cfg:filePath'") +
                    "</vtn:instance>",
                "opaque='true'"));
  store().setValue("set", "%A%");
  EXPECT_EQ(initWith("<nothing/>"), VRDCFGAPI_NoError);
  for (const char* name : {"no type", "other type", "other case", "other attribute", "set"}) {
    EXPECT_EQ(textOf(name), "%A%") << name;
  }
  EXPECT_NE(textOf("nested").find(">/opt/x/in<"), std::string::npos);
}

TEST(RewritingTest, AVariableThatLeadsBackToItselfEnds) {
  const EnvironmentGuard loop("LOOP", "12345%LOOP%");
  const EnvironmentGuard big("BIG", std::string(10000, 'x').append("%BIG%%BIG%").c_str());
  for (const char* text : {"%LOOP%", "a%LOOP%b%UNSET%", "%BIG%"}) {
    EXPECT_STREQ(VRDConfiguration::replaceEnvVariables(text).c_str(), text);
  }
}

}  // namespace
