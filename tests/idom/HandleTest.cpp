#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

#include "platform/idom/DomMemory.h"
#include "tests/support/DomTesting.h"

namespace {

const char* const xmlUri = "http://www.w3.org/XML/1998/namespace";
const char* const xmlnsUri = "http://www.w3.org/2000/xmlns/";

TEST(Handle, ReadsOfANullHandleGiveNothing) {
  VRDIDOM_Node node;
  VRDIDOM_Element element;
  VRDIDOM_Document document;
  element = parsedRoot("<a/>");
  EXPECT_TRUE(element != nullptr && element != &node && !element.isEqualNode(node));
  element = node;
  EXPECT_TRUE(element.isNull());
  element = static_cast<const VRDIDOM_Node*>(nullptr);
  EXPECT_TRUE(node.isNull() && node == nullptr && node == &element && node.isEqualNode(element));
  EXPECT_EQ(bytesOf(node.getNodeName() + node.getNodeValue() + element.getAttribute("a") +
                    node.getLocalName() + node.getNamespaceURI() + node.getPrefix()),
            "");
  EXPECT_TRUE(node.getNodeType() == 0 && node.getChildNodes().getLength() == 0);
  EXPECT_FALSE(node.isNamed("") || node.isNamed("", ""));
  EXPECT_TRUE(node.getFirstChild().isNull() && document.getDocumentElement().isNull());
  EXPECT_TRUE(node.getParentNode().isNull() && node.getNextSibling().isNull() &&
              node.getOwnerDocument().isNull());
  EXPECT_TRUE(newDocument().importNode(node, 1).isNull());
  EXPECT_TRUE(document.createTreeWalker(node, 1, nullptr, 0).firstChild().isNull());
}

TEST(Handle, AnyLastHandleOnAnyNodeKeepsTheDocument) {
  const std::size_t before = DomMemory::instance().bytesInUse();
  // Each takes another way to the text of the document, dropping everything else.
  const std::vector<std::function<VRDIDOM_Node()>> ways = {
      [] { return parsedRoot("<a>text</a>").getChildNodes().item(0); },
      [] { return parsedRoot("<a>text</a>").getFirstChild().getOwnerDocument().getFirstChild(); },
      [] { return VRDIDOM_Node(parsedRoot("<a b='text'/>").getAttributeNode("b")); },
      [] {
        VRDIDOM_Element root = parsedRoot("<r>text</r>");
        return root.removeChild(root.getFirstChild());
      },
      [] {
        VRDIDOM_Document document = parsed("<a>text</a>");
        return document.createTreeWalker(document, 4, nullptr, 0).firstChild();
      },
  };
  for (std::size_t i = 0; i < ways.size(); ++i) {
    auto first = std::make_unique<VRDIDOM_Node>(ways[i]());
    VRDIDOM_Node second = *first;
    first.reset();
    VRDIDOM_Node third = std::move(second);
    EXPECT_TRUE(second.isNull());  // NOLINT(bugprone-use-after-move)
    third = *&third;
    EXPECT_NE(written(third).find("text"), std::string::npos) << i;
  }
  EXPECT_EQ(DomMemory::instance().bytesInUse(), before);
}

TEST(Handle, AnAttributeIsFoundAndChangedHoweverItWasSet) {
  VRDIDOM_Element root = parsedRoot("<a z='1' xmlns:p='u' p:y='2' b=''/>");
  EXPECT_EQ(root.getAttribute("p:y") + root.getAttributeNS("u", "y"), "22");
  EXPECT_TRUE(root.getAttributeNode("absent").isNull() && !root.getAttributeNode("b").isNull());
  EXPECT_TRUE(root.hasAttribute("b") && !root.hasAttribute("absent"));

  // Attributes are searched for by the order of their names, which a new prefix changes.
  root.setAttributeNS("u", "a:y", "5");
  EXPECT_EQ(root.getAttribute("a:y") + root.getAttribute("p:y"), "5");
  root.setAttribute("r:n", "plain");
  EXPECT_FALSE(root.hasAttributeNS("", "n"));
  root.setAttributeNS("v", "r:n", "6");
  root.setAttribute("xmlns:k", "w");
  EXPECT_TRUE(root.hasAttributeNS(xmlnsUri, "k"));
  EXPECT_EQ(written(root),
            "<a a:y=\"5\" b=\"\" r:n=\"6\" xmlns:k=\"w\" xmlns:p=\"u\" z=\"1\""
            " xmlns:a=\"u\" xmlns:r=\"v\"/>");
  VRDIDOM_Attr removed = root.getAttributeNode("z");
  for (const char* name : {"z", "z", "a:y", "r:n"}) root.removeAttribute(name);
  EXPECT_EQ(removed.getValue(), "1");
  // A value may lie in several nodes.
  VRDIDOM_Attr b = root.getAttributeNode("b");
  for (const char* text : {"1", "2"}) b.appendChild(root.getOwnerDocument().createTextNode(text));
  VRDIDOM_Node copy = newDocument().importNode(b, 1);
  EXPECT_TRUE(b.getValue() == "12" && copy.isEqualNode(b));
  EXPECT_EQ(written(root), "<a b=\"12\" xmlns:k=\"w\" xmlns:p=\"u\"/>");
  root.setAttribute("b", "3");
  EXPECT_TRUE(b.getValue() == "3" && !copy.isEqualNode(b));
}

constexpr long hierarchy = 3;
constexpr long wrongDocument = 4;
constexpr long invalidCharacter = 5;
constexpr long notFound = 8;
constexpr long badNamespace = 14;

TEST(Handle, ANameThatCannotBeIsRefusedWhereverItIsGiven) {
  VRDIDOM_Document document = parsed("<a k='v'/>");
  VRDIDOM_Element a = document.getDocumentElement();
  // Names are looked at whether an element is made or made of a spare one.
  VRDIDOM_Node spare = document.createElementNS("", "spare");
  document.recycle(spare);
  const auto expectRefused = [&](const char* uri, const I18NString& name, long reason) {
    EXPECT_EQ(refusalOf([&] { document.createElementNS(uri, name); }), reason) << name.c_str();
    EXPECT_EQ(refusalOf([&] { document.renameNode(a, uri, name); }), reason) << name.c_str();
    EXPECT_EQ(refusalOf([&] { a.setAttributeNS(uri, name, ""); }), reason) << name.c_str();
  };
  expectRefused("u", I18NString(std::string_view("a\0b", 3)), invalidCharacter);
  for (const char* name : {"", "a b", "1bad"}) expectRefused("u", name, invalidCharacter);
  for (const char* name : {"a:b:c", "p:", "p:1x", "xml:x", "xmlns:x"}) {
    expectRefused("u", name, badNamespace);
  }
  expectRefused("", "p:x", badNamespace);
  expectRefused(xmlnsUri, "p:x", badNamespace);
  EXPECT_EQ(refusalOf([&] { a.setAttribute("1 2", ""); }), invalidCharacter);
  EXPECT_EQ(refusalOf([&] { a.setAttribute("xmlns:xmlns", ""); }), badNamespace);
  EXPECT_EQ(refusalOf([&] { a.setAttributeNS(xmlnsUri, "xmlns:xmlns", ""); }), badNamespace);
  EXPECT_EQ(refusalOf([&] { document.createElementNS(xmlUri, "p:x"); }), badNamespace);
  EXPECT_EQ(written(document), "<a k=\"v\"/>");
}

TEST(Handle, WhatTheTreeRefusesThrowsAndChangesNothing) {
  VRDIDOM_Document document = parsed("<a k='v'><b/>text</a>");
  VRDIDOM_Element a = document.getDocumentElement();
  VRDIDOM_Node b = a.getFirstChild();
  VRDIDOM_Node text = b.getNextSibling();
  VRDIDOM_Node k = a.getAttributeNode("k");
  VRDIDOM_Element foreign = newDocument().createElementNS("", "f");
  VRDIDOM_Node null;
  const std::string before = written(document);
  const std::vector<std::pair<long, std::function<void()>>> cases = {
      {hierarchy, [&] { b.appendChild(a); }},
      {hierarchy, [&] { a.appendChild(a); }},
      {hierarchy, [&] { VRDIDOM_Helper::appendChild(text, b); }},
      {hierarchy, [&] { VRDIDOM_Helper::appendChild(b, k); }},
      {hierarchy, [&] { VRDIDOM_Helper::appendChild(document, b); }},
      {hierarchy, [&] { VRDIDOM_Helper::appendChild(newDocument(), text); }},
      {hierarchy, [&] { document.renameNode(k, "", "l"); }},
      {hierarchy, [&] { document.recycle(b); }},
      {hierarchy, [&] { document.recycle(k); }},
      {hierarchy, [&] { document.recycle(foreign); }},
      {wrongDocument, [&] { document.renameNode(foreign, "", "l"); }},
      {wrongDocument, [&] { a.appendChild(foreign); }},
      {notFound, [&] { a.insertBefore(text, foreign); }},
      {notFound, [&] { a.replaceChild(text, foreign); }},
      {notFound, [&] { null.removeChild(b); }},
  };
  for (std::size_t i = 0; i < cases.size(); ++i) {
    EXPECT_EQ(refusalOf(cases[i].second), cases[i].first) << "case " << i;
    EXPECT_EQ(written(document), before) << "case " << i;
  }
  a.setNodeValue("an element has none");
  EXPECT_EQ(written(document), before);
}

TEST(Handle, ATreeEqualsItsCopiesAndNoOther) {
  const char* texts[] = {
      "<a/>",
      "<a xmlns='u'/>",
      "<p:a xmlns:p='u'/>",
      "<a b='1'/>",
      "<a b='2'/>",
      "<a c='1'/>",
      "<a b='1' c='2'/>",
      "<a>t</a>",
      "<a><b/>t</a>",
      "<a>t<b/></a>",
      "<p:a xmlns:p='u' xmlns='v' z='1' p:b='2'><b/>t<c xmlns=''><d e='f'>g</d></c>h<p:i/></p:a>"};
  for (const char* left : texts) {
    VRDIDOM_Element tree = parsedRoot(left);
    VRDIDOM_Node copy = newDocument().importNode(tree, 1);
    EXPECT_EQ(written(copy), written(tree));
    for (const char* right : texts) {
      EXPECT_EQ(copy.isEqualNode(parsedRoot(right)) != 0, left == right) << left << right;
    }
  }
  EXPECT_TRUE(parsedRoot("<a b='1' c='2'/>").isEqualNode(parsedRoot("<a c='2' b='1'/>")));

  VRDIDOM_Element source = parsedRoot("<s xmlns='v' k='1'><b/></s>");
  source.setAttribute("q:k", "2");
  for (const char* uri : {"u", "w"}) source.setAttributeNS(uri, "p:k", "3");  // two of one name
  EXPECT_EQ(written(newDocument().importNode(source, 0)),
            "<s k=\"1\" p:k=\"3\" ns1:k=\"3\" q:k=\"2\" xmlns=\"v\" xmlns:p=\"w\""
            " xmlns:ns1=\"u\" xmlns:q=\"urn:prefix:q\"/>");
  VRDIDOM_Element parent = parsedRoot("<r/>");
  VRDIDOM_Helper::appendChild(parent, source.getFirstChild());
  VRDIDOM_Helper::appendChild(parent, parent);
  VRDIDOM_Document document = newDocument();
  VRDIDOM_Helper::appendChild(document, parent);
  EXPECT_EQ(written(document), "<r><b xmlns=\"v\"/><r><b xmlns=\"v\"/></r></r>");
}

// What is not shown is looked through.
TEST(TreeWalker, StopsAtTheTypesAskedForOnly) {
  VRDIDOM_Document document = parsed("<r>1<a>2<b>3</b> </a>4<c/><d><e/></d></r>");
  for (const auto& [whatToShow, expected] : {std::pair(1UL, "a.c.d."), {4UL, "1.2.3. .4."}}) {
    VRDIDOM_TreeWalker walker =
        document.createTreeWalker(document.getDocumentElement(), whatToShow, nullptr, 0);
    EXPECT_TRUE(walker.nextSibling().isNull());
    std::string seen;
    for (VRDIDOM_Node node = walker.firstChild(); !node.isNull(); node = walker.nextSibling()) {
      seen += bytesOf(whatToShow == 1 ? node.getNodeName() : node.getNodeValue()) + ".";
    }
    EXPECT_EQ(seen, expected);
  }
  VRDIDOM_TreeWalker lost = document.createTreeWalker(document, 4, nullptr, 0);
  VRDIDOM_Node removed = lost.firstChild();
  document.getDocumentElement().removeChild(removed);
  EXPECT_TRUE(lost.nextSibling().isNull());
}

}  // namespace
