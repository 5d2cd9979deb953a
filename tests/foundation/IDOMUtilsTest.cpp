#include "foundation/VRDIDOMUtils.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "platform/idom/VRDIDOM_Document.h"
#include "platform/idom/VRDIDOM_Helper.h"
#include "platform/idom/VRDIDOM_Parser.h"

namespace {

VRDIDOM_Element parse(const char* xml) {
  VRDIDOM_Document document;
  VRDIDOM_Parser parser(0);
  EXPECT_TRUE(parser.parse(xml, static_cast<int>(std::strlen(xml)), document));
  return document.getDocumentElement();
}

std::string written(VRDIDOM_Node node) {
  I18NString text;
  VRDIDOM_Helper::write(node, text);
  return text.c_str();
}

TEST(IDOMUtilsTest, TextIsThatOfTheDirectChildren) {
  struct Row {
    const char* xml;
    const char* text;
    int textOnly;
  };
  const Row rows[] = {
      {"<a/>", "", 1},
      {"<a>x</a>", "x", 1},
      {"<a> \n x </a>", " \n x ", 1},
      {"<a>a<b>b</b>c</a>", "ac", 0},
      {"<a><b>b</b></a>", "", 0},
      {"<a>x<!-- note -->y<![CDATA[<z>]]></a>", "xy<z>", 1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.xml);
    VRDIDOM_Element element = parse(row.xml);
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
      SCOPED_TRACE(std::string(xml) + " <- " + text);
      VRDIDOM_Element element = parse(xml);
      VRDIDOMUtils::setText(element, text);
      VRDIDOM_Node child = element.getFirstChild();
      ASSERT_FALSE(child.isNull());
      EXPECT_EQ(child.getNodeType(), 3);
      EXPECT_TRUE(child.getNextSibling().isNull());
      EXPECT_STREQ(VRDIDOMUtils::getText(element).c_str(), text);
    }
  }
}

TEST(IDOMUtilsTest, FindsTheFirstDirectChildOfAName) {
  VRDIDOM_Element root = parse(
      "<a xmlns:p='urn:1' xmlns:q='urn:2'> <!-- c --> <deep><p:v>0</p:v><v>0</v></deep>"
      "<p:v>1</p:v><q:v>2</q:v><v>3</v><v>4</v><w xmlns='urn:1'/></a>");
  EXPECT_EQ(written(VRDIDOMUtils::selectSingleNode(root, "v")), "<v>3</v>");
  EXPECT_EQ(written(VRDIDOMUtils::selectSingleNodeNS(root, "", "v")), "<v>3</v>");
  VRDIDOM_Element first = VRDIDOMUtils::selectSingleNodeNS(root, "urn:1", "v");
  VRDIDOM_Element second = VRDIDOMUtils::selectSingleNode(root, "q:v");
  EXPECT_STREQ(VRDIDOMUtils::getText(first).c_str(), "1");
  EXPECT_STREQ(VRDIDOMUtils::getText(second).c_str(), "2");
  EXPECT_FALSE(VRDIDOMUtils::selectSingleNodeNS(root, "urn:1", "w").isNull());

  for (const char* absent : {"x", "V", "p:w", "q:V", ""}) {
    EXPECT_TRUE(VRDIDOMUtils::selectSingleNode(root, absent).isNull()) << absent;
  }
  EXPECT_TRUE(VRDIDOMUtils::selectSingleNodeNS(root, "urn:3", "v").isNull());
  EXPECT_TRUE(VRDIDOMUtils::selectSingleNodeNS(root, "urn:1", "p:v").isNull());
}

}  // namespace
