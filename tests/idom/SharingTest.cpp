#include <gtest/gtest.h>

#include <thread>
#include <vector>
#include <xercesc/util/PlatformUtils.hpp>

#include "platform/idom/DomMemory.h"
#include "tests/support/DomTesting.h"

namespace {

/// Reads a whole tree in every way; gives something that depends on all of it.
std::string readAll(VRDIDOM_Element root) {
  I18NString all;
  VRDIDOM_NodeList children = root.getChildNodes();
  for (unsigned long i = 0; i < children.getLength(); ++i) {
    VRDIDOM_Element child = children.item(i);
    all += child.getNodeName() + child.getAttribute("name") + child.getAttributeNS("u", "kind") +
           child.getFirstChild().getNodeValue() + child.getParentNode().getNodeName();
  }
  return bytesOf(all) + written(newDocument().importNode(root, 1));
}

// The thread checker sees our own accesses: counts of handles, cursors of lists, the journal. It
// does not see into Xerces-C, which is not built for it; that Xerces-C writes nothing but a
// terminating zero over itself in the calls that we make was looked up there.
TEST(Sharing, ManyThreadsReadOneDocument) {
  std::string text = "<r xmlns:p='u'>";
  for (int i = 0; i < 50; ++i) text += "<c name='n' p:kind='k'>value</c>";
  VRDIDOM_Element root = parsedRoot(text + "</r>");
  const std::string expected = readAll(root);
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([shared = root, &expected] {
      for (int round = 0; round < 20; ++round) EXPECT_EQ(readAll(shared), expected);
    });
  }
  root = VRDIDOM_Element();  // the last thread ends the document
  for (std::thread& thread : threads) thread.join();
}

TEST(Sharing, ANeighbourMayStartAndEndXercesAsItLikes) {
  using xercesc::XMLPlatformUtils;
  XMLPlatformUtils::Initialize();
  VRDIDOM_Element early = parsedRoot("<a><b/></a>");
  for (int i = 0; i < 50; ++i) XMLPlatformUtils::Terminate();
  VRDIDOM_DOMImplementation::terminate();
  VRDIDOM_Element between = parsedRoot("<c/>");
  for (int i = 0; i < 1000; ++i) VRDIDOM_Helper::appendChild(early, between);
  EXPECT_NE(refusalOf([&] { early.appendChild(between); }), 0);
  EXPECT_EQ(early.getChildNodes().getLength(), 1001U);
  EXPECT_TRUE(parsed("<a>").isNull());
}

// Alternating shapes, so that what is made of spare parts must lose every trace of them; and values
// of all lengths in nodes that stay.
TEST(Sharing, ADocumentDoesNotGrowByWhatIsReplacedInIt) {
  VRDIDOM_Element shapes[] = {
      parsedRoot("<p:b xmlns:p='u' k='v' p:l='w'>text<c/><p:d>deep<e>er</e></p:d></p:b>"),
      parsedRoot("<b><c n='1'>other text, which is longer</c></b>")};
  VRDIDOM_Document document = parsed("<a name='n' xmlns:p='u' p:k='v'><b/>value</a>");
  VRDIDOM_Element root = document.getDocumentElement();
  VRDIDOM_Node text = root.getFirstChild().getNextSibling();
  std::size_t before = 0;
  for (int round = 0; round < 6000; ++round) {
    if (round == 1000) before = DomMemory::instance().bytesInUse();
    VRDIDOM_Node copy = document.importNode(shapes[round % 2], 1);
    VRDIDOM_Node replaced = root.replaceChild(copy, root.getFirstChild());
    document.recycle(replaced);
    EXPECT_TRUE(replaced.isNull() && copy.isEqualNode(shapes[round % 2]));
    const std::string value(static_cast<std::size_t>(round * 7 % 1000), 'x');
    text.setNodeValue(value.c_str());
    for (const char* name : {"name", "p:k"}) root.setAttribute(name, value.c_str());
    EXPECT_EQ(text.getNodeValue() + root.getAttribute("name"), (value + value).c_str());
  }
  EXPECT_EQ(DomMemory::instance().bytesInUse(), before);
}

}  // namespace
