#include <gtest/gtest.h>

#include <string>

#include "platform/idom/VRDIDOM_NodeList.h"
#include "platform/idom/VRDIDOM_Parser.h"
#include "tests/support/Installation.h"
#include "tests/support/Store.h"

namespace {

/// Passes both rewriting steps over the whole tree once more.
void rewriteAgain() {
  VRDIDOM_Document document;
  std::istringstream text("<nothing/>");
  IBJBufferedInputStream stream(text);
  ASSERT_EQ(store().init(stream), VRDCFGAPI_NoError);
}

TEST(RewritingTest, ReferencesAreReplacedAndPathsMadeAbsolute) {
  const EnvironmentGuard a("A", "/opt/x");
  const EnvironmentGuard b("B", "yy");
  const EnvironmentGuard c("C", nullptr);
  const EnvironmentGuard e("E", "");
  const EnvironmentGuard g("G", "/12345%A%");
  struct Row {
    const char* text;
    const char* replaced;
    const char* after;  // "/" in front stands for the installation's bin where "@" stands
  };
  const Row rows[] = {
      {"%A%/logs", "/opt/x/logs", "/opt/x/logs"},
      {"logs/%A%", "logs//opt/x", "@/logs/opt/x"},
      {"%C%/logs", "%C%/logs", "%C%/logs"},
      {"%A", "%A", "%A"},
      {"%%A%", "%/opt/x", "%/opt/x"},
      {"%A%%B%", "/opt/xyy", "/opt/xyy"},
      {"%B%%A%", "yy%A%", "yy/opt/x"},
      {"100%", "100%", "100%"},
      {"%%", "%%", "%%"},
      {"%C%A%", "%C%A%", "%C%A%"},
      {"a%E%b", "ab", "@/ab"},
      {"%G%", "/12345/opt/x", "/12345/opt/x"},
      {"", "", ""},
      {"../logs/./x", "../logs/./x", "@@/logs/x"},
      {"/abs/../path", "/abs/../path", "/abs/../path"},
      {"\xD0\xBB\xD0\xBE\xD0\xB3", "\xD0\xBB\xD0\xBE\xD0\xB3", "@/\xD0\xBB\xD0\xBE\xD0\xB3"},
  };
  std::string parameters;
  int number = 0;
  for (const Row& row : rows) {
    EXPECT_STREQ(VRDConfiguration::replaceEnvVariables(row.text).c_str(), row.replaced);
    const char* type = number % 2 == 0 ? "xsi:type='cfg:filePath'" : "xsi:type='cfg:folderPath'";
    parameters += parameter(std::to_string(number++), row.text, "", type);
  }
  const CurrentInstallation installation(parameters);

  const auto expected = [&](const Row& row) {
    std::string text = row.after;
    const std::string root = installation.path().string();
    if (text.rfind("@@", 0) == 0) return root + text.substr(2);
    if (text.rfind('@', 0) == 0) return installation.bin() + text.substr(1);
    return text;
  };
  // %B%%A%: the first pass leaves the second reference, the next one takes it; it is relative then.
  const auto afterFirstPass = [&](const Row& row) {
    return std::string(row.text) == "%B%%A%" ? "yy%A%" : expected(row);
  };
  const auto afterSecondPass = [&](const Row& row) {
    return std::string(row.text) == "%B%%A%" ? installation.bin() + "/yy/opt/x" : expected(row);
  };
  for (std::size_t index = 0; index < std::size(rows); ++index) {
    EXPECT_EQ(textOf(std::to_string(index).c_str()), afterFirstPass(rows[index]))
        << rows[index].text;
  }
  for (int pass = 2; pass < 4; ++pass) {
    rewriteAgain();
    for (std::size_t index = 0; index < std::size(rows); ++index) {
      EXPECT_EQ(textOf(std::to_string(index).c_str()), afterSecondPass(rows[index]))
          << rows[index].text << " in pass " << pass;
    }
  }
}

TEST(RewritingTest, ADisabledElementStepsTheIndexBack) {
  const std::string text =
      startupDocument(parameter("1", "", "disabled='true'") +
                      parameter("2", "", "disabled='true'") + parameter("3", ""));
  VRDIDOM_Document document;
  VRDIDOM_Parser(0).parse(text.data(), static_cast<int>(text.size()), document);
  VRDIDOM_NodeList children = document.getDocumentElement().getChildNodes();
  std::string visited;
  for (unsigned long index = 0; index < children.getLength(); ++index) {
    VRDIDOM_Element child = children.item(index);
    visited += child.getAttribute("name").c_str();
    VRDConfiguration::removeDisabledElements(child, index);
  }
  EXPECT_EQ(visited, "123");
  EXPECT_EQ(children.getLength(), 1U);
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
  for (const char* name : {"no type", "other type", "other case", "other attribute"}) {
    EXPECT_EQ(textOf(name), "%A%") << name;
  }
  EXPECT_NE(textOf("nested").find(">/opt/x/in<"), std::string::npos);
  store().setValue("set", "%A%");
  rewriteAgain();
  EXPECT_EQ(textOf("set"), "%A%");
}

TEST(RewritingTest, AVariableThatLeadsBackToItselfEnds) {
  const EnvironmentGuard loop("LOOP", "12345%LOOP%");
  const EnvironmentGuard big("BIG", std::string(10000, 'x').append("%BIG%%BIG%").c_str());
  for (const char* text : {"%LOOP%", "a%LOOP%b%UNSET%", "%BIG%"}) {
    EXPECT_STREQ(VRDConfiguration::replaceEnvVariables(text).c_str(), text);
  }
  // Just within the bound.
  std::string many;
  const EnvironmentGuard value("V", "1234");
  for (int count = 0; count < 1000; ++count) many += "/%V%-";
  std::string replaced;
  for (int count = 0; count < 1000; ++count) replaced += "/1234-";
  EXPECT_EQ(VRDConfiguration::replaceEnvVariables(many.c_str()).c_str(), replaced);
  EXPECT_EQ(VRDConfiguration::replaceEnvVariables((many + "/%V%").c_str()).c_str(), many + "/%V%");
}

}  // namespace
