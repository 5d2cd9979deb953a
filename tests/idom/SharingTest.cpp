#include <gtest/gtest.h>

#include <thread>
#include <vector>
#include <xercesc/util/PlatformUtils.hpp>

#include "platform/idom/DomMemory.h"
#include "platform/idom/VRDIDOM_Exception.h"
#include "tests/idom/DomTesting.h"

namespace {

/// Reads a whole tree in every way; gives something that depends on all of it.
std::size_t readAll(VRDIDOM_Element root) {
  std::size_t sum = 0;
  VRDIDOM_NodeList children = root.getChildNodes();
  for (unsigned long i = 0; i < children.getLength(); ++i) {
    VRDIDOM_Element child = children.item(i);
    sum += child.getNodeName().utf8().size() + child.getAttribute("name").utf8().size() +
           child.getAttributeNS("u", "kind").utf8().size() +
           child.getFirstChild().getNodeValue().utf8().size();
    sum += child.getParentNode().isEqualNode(root) != 0 ? 1U : 0U;
  }
  sum += root.getElementsByTagName("c").getLength();
  sum += written(root).size();
  VRDIDOM_Element copy = newDocument().importNode(root, 1);
  return sum + (copy.isEqualNode(root) != 0 ? 1U : 0U);
}

// The thread checker sees our own accesses: counts of handles, cursors of lists, the journal. It
// does not see into Xerces-C, which is not built for it; that Xerces-C writes nothing but a
// terminating zero over itself in the calls that we make was looked up there.
TEST(Sharing, ManyThreadsReadOneDocument) {
  std::string text = "<r xmlns:p='u'>";
  for (int i = 0; i < 50; ++i) text += "<c name='n' p:kind='k'>value</c>";
  VRDIDOM_Element root = parsedRoot(text + "</r>");
  const std::size_t expected = readAll(root);

  std::vector<std::thread> threads;
  std::vector<std::size_t> wrong(8);
  for (std::size_t& count : wrong) {
    threads.emplace_back([&count, root, expected] {
      for (int i = 0; i < 20; ++i) count += readAll(root) == expected ? 0U : 1U;
    });
  }
  root = VRDIDOM_Node();  // the last thread ends the document
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, std::vector<std::size_t>(8));
}

TEST(Sharing, ThreadsMayAllBeTheFirst) {
  std::vector<std::thread> threads;
  std::vector<std::string> results(8);
  for (std::string& result : results) {
    threads.emplace_back([&result] {
      VRDIDOM_DOMImplementation::initialize();
      result = written(parsedRoot("<a><b/></a>"));
      VRDIDOM_DOMImplementation::terminate();
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(results, std::vector<std::string>(8, "<a><b/></a>"));
}

TEST(Sharing, ANeighbourMayStartAndEndXercesAsItLikes) {
  using xercesc::XMLPlatformUtils;
  XMLPlatformUtils::Initialize();
  VRDIDOM_Element early = parsedRoot("<a><b/></a>");
  for (int i = 0; i < 50; ++i) XMLPlatformUtils::Terminate();
  VRDIDOM_DOMImplementation::initialize();
  VRDIDOM_DOMImplementation::initialize();
  VRDIDOM_DOMImplementation::terminate();
  VRDIDOM_Element between = parsedRoot("<c/>");
  VRDIDOM_DOMImplementation::terminate();
  VRDIDOM_DOMImplementation::terminate();
  XMLPlatformUtils::Terminate();
  XMLPlatformUtils::Initialize();
  for (int i = 0; i < 1000; ++i) VRDIDOM_Helper::appendChild(early, between);
  EXPECT_ANY_THROW(early.appendChild(between));
  EXPECT_EQ(early.getChildNodes().getLength(), 1001U);
  EXPECT_TRUE(parsed("<a>").isNull());
  XMLPlatformUtils::Terminate();
}

TEST(Sharing, ADocumentGrowsByTheLongestOfItsValuesOnly) {
  VRDIDOM_Document document = parsed("<a name='n' xmlns:p='u' p:k='v'>value</a>");
  VRDIDOM_Element root = document.getDocumentElement();
  VRDIDOM_Node text = root.getFirstChild();
  const auto change = [&](int i) {
    const std::string value(static_cast<std::size_t>(i * 7 % 1000), 'x');
    text.setNodeValue(value.c_str());
    root.setAttribute("name", value.c_str());
    root.setAttribute("p:k", value.c_str());
    root.setAttributeNS("u", "p:k", value.c_str());
    root.getAttributeNode("name").setNodeValue(value.c_str());
  };
  for (int i = 0; i < 1000; ++i) change(i);
  const std::size_t before = DomMemory::instance().bytesInUse();
  EXPECT_LT(before, 100000U);
  for (int i = 0; i < 100000; ++i) change(i);
  for (int i = 0; i < 100; ++i) written(root);
  EXPECT_EQ(DomMemory::instance().bytesInUse(), before);
}

TEST(Sharing, ADocumentDoesNotGrowByTreesThatAreReplacedAndRecycled) {
  VRDIDOM_Document document = parsed("<a/>");
  VRDIDOM_Element root = document.getDocumentElement();
  // Alternating shapes, so that what is made of spare parts must lose every trace of them.
  const std::string shapes[] = {
      "<p:b xmlns:p='u' k='v' p:l='w'>text<c/><p:d>deep<e>er</e></p:d></p:b>",
      "<b><c n='1'>other text, which is longer</c></b>",
  };
  VRDIDOM_Element sources[] = {parsedRoot(shapes[0]), parsedRoot(shapes[1])};
  const auto replace = [&](int i) {
    VRDIDOM_Node copy = document.importNode(sources[i % 2], 1);
    VRDIDOM_Node present = root.getFirstChild();
    if (present.isNull()) {
      root.appendChild(copy);
    } else {
      VRDIDOM_Node replaced = root.replaceChild(copy, present);
      present = VRDIDOM_Node();
      document.recycle(replaced);
      EXPECT_TRUE(replaced.isNull());
    }
    EXPECT_TRUE(copy.isEqualNode(sources[i % 2]));
  };
  for (int i = 0; i < 1000; ++i) replace(i);
  const std::size_t before = DomMemory::instance().bytesInUse();
  for (int i = 0; i < 20000; ++i) replace(i);
  EXPECT_EQ(DomMemory::instance().bytesInUse(), before);

  VRDIDOM_Node inTree = root.getFirstChild();
  EXPECT_THROW(document.recycle(inTree), VRDIDOM_Exception);
  EXPECT_EQ(written(root), "<a>" + written(sources[1]) + "</a>");
}

}  // namespace
