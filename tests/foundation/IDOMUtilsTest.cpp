#include "foundation/VRDIDOMUtils.h"

#include <gtest/gtest.h>

#include "tests/support/DomTesting.h"

namespace {

TEST(IDOMUtilsTest, TextIsThatOfTheDirectChildren) {
  struct Row {
    const char *xml, *text;
    int textOnly;
  };
  const Row rows[] = {
      {"<a/>", "", 1},
      {"<a> \n x </a>", " \n x ", 1},
      {"<a>a<b>b</b>c</a>", "ac", 0},
      {"<a>x<!-- note -->y<![CDATA[<z>]]></a>", "xy<z>", 1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.xml);
    VRDIDOM_Element element = parsedRoot(row.xml);
    EXPECT_STREQ(VRDIDOMUtils::getText(element).c_str(), row.text);
    EXPECT_EQ(VRDIDOMUtils::isTextOnly(element), row.textOnly);
  }
  VRDIDOM_Element none;
  EXPECT_TRUE(VRDIDOMUtils::getText(none).empty());
  EXPECT_EQ(VRDIDOMUtils::isTextOnly(none), 0);
}

TEST(IDOMUtilsTest, SettingTextLeavesOneTextChild) {
  for (const char* xml : {"<a/>", "<a>x</a>", "<a>a<b>b</b>c</a>", "<a><b/><c/></a>"}) {
    for (const char* text : {"new", "", "<&>"}) {
      VRDIDOM_Element element = parsedRoot(xml);
      VRDIDOMUtils::setText(element, text);
      EXPECT_EQ(element.getChildNodes().getLength(), 1U) << xml;
      EXPECT_EQ(element.getFirstChild().getNodeValue(), text) << xml;
    }
  }
}

TEST(IDOMUtilsTest, FindsTheFirstDirectChildOfAName) {
  VRDIDOM_Element root = parsedRoot(
      "<a xmlns:p='urn:1' xmlns:q='urn:2'> <!-- c --> <deep><p:v>0</p:v><v>0</v></deep>"
      "<p:v>1</p:v><q:v>2</q:v><v>3</v><v>4</v><w xmlns='urn:1'>5</w></a>");
  const auto named = [&](const char* name) {
    VRDIDOM_Element found = VRDIDOMUtils::selectSingleNode(root, name);
    return VRDIDOMUtils::getText(found);
  };
  const auto namedNS = [&](const char* uri, const char* name) {
    VRDIDOM_Element found = VRDIDOMUtils::selectSingleNodeNS(root, uri, name);
    return VRDIDOMUtils::getText(found);
  };
  EXPECT_EQ(named("v") + named("p:v") + named("q:v") + named("w"), "3125");
  EXPECT_EQ(named("x") + named("V") + named("p:w") + named(""), "");
  EXPECT_EQ(namedNS("", "v") + namedNS("urn:1", "v") + namedNS("urn:1", "w"), "315");
  EXPECT_EQ(namedNS("urn:3", "v") + namedNS("urn:1", "p:v") + namedNS("", "w"), "");
}

}  // namespace
