#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

#include "platform/idom/DomMemory.h"
#include "platform/idom/VRDIDOM_Exception.h"
#include "tests/idom/DomTesting.h"

namespace {

TEST(Handle, ReadsOfANullHandleGiveNothingAndChangesThrow) {
  VRDIDOM_Node node;
  VRDIDOM_Element element;
  VRDIDOM_Document document;
  EXPECT_TRUE(node.isNull() && node == nullptr && node == &element && node.isEqualNode(element));
  EXPECT_EQ(static_cast<xercesc_2_7::DOMNode*>(node), nullptr);
  EXPECT_EQ(bytesOf(node.getNodeName() + node.getLocalName() + node.getNamespaceURI() +
                    node.getPrefix() + node.getNodeValue() + element.getAttribute("a") +
                    element.getAttributeNS("", "a") + VRDIDOM_Attr().getValue()) +
                written(node),
            "");
  EXPECT_EQ(node.getNodeType() + node.getChildNodes().getLength(), 0U);
  for (VRDIDOM_Node& none : std::vector<VRDIDOM_Node>{
           node.getParentNode(), node.getFirstChild(), node.getNextSibling(),
           node.getOwnerDocument(), document.getDocumentElement(), element.getAttributeNode("a"),
           node.getChildNodes().item(0), newDocument().importNode(node, 1),
           document.createTreeWalker(node, 1, nullptr, 0).firstChild()}) {
    EXPECT_TRUE(none.isNull());
  }
  VRDIDOM_Element root = parsedRoot("<a/>");
  EXPECT_FALSE(node.isEqualNode(root));
  const std::vector<std::function<void()>> changes = {
      [&] { node.setNodeValue("x"); },
      [&] { node.appendChild(root); },
      [&] { root.appendChild(node); },
      [&] { node.removeChild(root); },
      [&] { root.replaceChild(node, root); },
      [&] { element.setAttribute("a", "b"); },
      [&] { document.createElementNS("", "a"); },
      [&] { document.importNode(root, 1); },
      [&] { VRDIDOM_Helper::appendChild(node, root); },
  };
  for (const auto& change : changes) EXPECT_THROW(change(), VRDIDOM_Exception);
}

TEST(Handle, AnyLastHandleOnAnyNodeKeepsTheDocument) {
  const std::size_t before = DomMemory::instance().bytesInUse();
  // Each takes another way to the text of the document, dropping everything else.
  const std::vector<std::function<VRDIDOM_Node()>> ways = {
      [] { return parsed("<a>text</a>").getDocumentElement().getFirstChild(); },
      [] { return parsedRoot("<a>text</a>").getChildNodes().item(0); },
      [] { return parsedRoot("<a>text</a>").getFirstChild().getOwnerDocument().getFirstChild(); },
      [] { return VRDIDOM_Node(parsedRoot("<a b='text'/>").getAttributeNode("b")); },
      [] { return parsedRoot("<r><a>text</a></r>").getElementsByTagName("a").item(0); },
      [] {
        VRDIDOM_Element root = parsedRoot("<r>text</r>");
        return root.removeChild(root.getFirstChild());
      },
      [] {
        VRDIDOM_Element source = parsedRoot("<a>text</a>");
        return newDocument().importNode(source, 1);
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
    const std::string text = written(third);
    EXPECT_NE(text.find("text"), std::string::npos) << i << ": " << text;
  }
  EXPECT_EQ(DomMemory::instance().bytesInUse(), before);
}

TEST(Handle, ChangesShowThroughEveryHandle) {
  VRDIDOM_Element first = parsedRoot("<a/>");
  VRDIDOM_Element second = first;
  second.setAttribute("name", "value");
  EXPECT_EQ(first.getAttribute("name"), "value");
  EXPECT_TRUE(first == &second);
  VRDIDOM_Element third;
  third = static_cast<const VRDIDOM_Node&>(first);
  EXPECT_TRUE(third == &first);
  third = static_cast<const VRDIDOM_Node*>(nullptr);
  EXPECT_TRUE(third.isNull());
}

struct NameCase {
  const char* text;
  const char* qualified;
  const char* prefix;
  const char* local;
  const char* uri;
};

TEST(Handle, NamesComeInTheirParts) {
  for (const NameCase& c :
       {NameCase{"<a/>", "a", "", "a", ""}, NameCase{"<p:a xmlns:p='u'/>", "p:a", "p", "a", "u"},
        NameCase{"<a xmlns='u'/>", "a", "", "a", "u"},
        NameCase{"<é xmlns='ü'/>", "é", "", "é", "ü"}}) {
    VRDIDOM_Element root = parsedRoot(c.text);
    EXPECT_EQ(root.getNodeName(), c.qualified);
    EXPECT_EQ(root.getPrefix(), c.prefix);
    EXPECT_EQ(root.getLocalName(), c.local);
    EXPECT_EQ(root.getNamespaceURI(), c.uri);
    EXPECT_TRUE(root.isNamed(c.qualified) && root.isNamed(c.uri, c.local));
    EXPECT_FALSE(root.isNamed("x") || root.isNamed("x", c.local) || root.isNamed(c.uri, "x"));
  }
}

TEST(Handle, AnAttributeIsFoundAndChangedHoweverItWasSet) {
  VRDIDOM_Element root = parsedRoot("<a z='1' xmlns:p='u' p:y='2' b='' x='3'/>");
  EXPECT_EQ(root.getAttribute("z"), "1");
  EXPECT_EQ(root.getAttribute("p:y"), "2");
  EXPECT_EQ(root.getAttributeNS("u", "y"), "2");
  EXPECT_EQ(root.getAttribute("absent"), "");
  EXPECT_TRUE(root.getAttributeNode("absent").isNull());
  EXPECT_FALSE(root.getAttributeNode("b").isNull());
  EXPECT_FALSE(root.hasAttributeNS("", "y"));

  root.setAttribute("p:y", "4");
  root.setAttributeNS("u", "q:y", "5");
  EXPECT_EQ(root.getAttribute("q:y"), "5");
  EXPECT_TRUE(root.getAttributeNode("p:y").isNull());
  root.setAttribute("r:n", "plain");
  EXPECT_FALSE(root.hasAttributeNS("", "n"));
  root.setAttributeNS("v", "r:n", "6");
  EXPECT_EQ(root.getAttribute("r:n"), "6");
  root.setAttribute("b", "seven");
  root.setAttribute("xmlns:k", "w");
  EXPECT_TRUE(root.hasAttributeNS("http://www.w3.org/2000/xmlns/", "k"));
  EXPECT_EQ(written(root),
            "<a b=\"seven\" q:y=\"5\" r:n=\"6\" x=\"3\" xmlns:k=\"w\" xmlns:p=\"u\" z=\"1\""
            " xmlns:q=\"u\" xmlns:r=\"v\"/>");
  VRDIDOM_Attr removed = root.getAttributeNode("z");
  root.removeAttribute("z");
  root.removeAttribute("z");
  EXPECT_EQ(removed.getValue(), "1");
  EXPECT_TRUE(root.getAttributeNode("z").isNull());
}

TEST(Handle, APlainAttributeGivesWayToItsNamesake) {
  for (const char* other : {"a", "z"}) {
    VRDIDOM_Element root = parsedRoot("<e/>");
    root.setAttribute(other, "1");
    root.setAttribute("r:n", "plain");
    root.setAttributeNS("v", "r:n", "2");
    EXPECT_EQ(root.getAttributeNS("v", "n"), "2");
    root.removeAttribute("r:n");
    root.removeAttribute(other);
    EXPECT_EQ(written(root), "<e/>");
  }
}

TEST(Handle, WhatTheTreeRefusesThrowsAndChangesNothing) {
  VRDIDOM_Document document = parsed("<a k='v'><b/>text</a>");
  VRDIDOM_Element a = document.getDocumentElement();
  VRDIDOM_Node b = a.getFirstChild();
  VRDIDOM_Node text = b.getNextSibling();
  VRDIDOM_Node attribute = a.getAttributeNode("k");
  VRDIDOM_Element foreign = newDocument().createElementNS("", "f");
  const char* xmlUri = "http://www.w3.org/XML/1998/namespace";
  const char* xmlnsUri = "http://www.w3.org/2000/xmlns/";
  // Names are looked at whether an element is made or made of a spare one.
  VRDIDOM_Node spare = document.createElementNS("", "spare");
  document.recycle(spare);
  const std::string before = written(document);
  struct Case {
    long code;
    std::function<void()> change;
  };
  const std::vector<Case> cases = {
      {3, [&] { b.appendChild(a); }},
      {3, [&] { a.appendChild(a); }},
      {3, [&] { text.appendChild(b); }},
      {3, [&] { document.appendChild(document.createElementNS("", "second")); }},
      {3, [&] { a.replaceChild(a, b); }},
      {4, [&] { a.appendChild(foreign); }},
      {4, [&] { a.replaceChild(foreign, b); }},
      {3, [&] { a.insertBefore(a, b); }},
      {8, [&] { a.insertBefore(text, foreign); }},
      {8, [&] { b.removeChild(text); }},
      {8, [&] { a.replaceChild(text, foreign); }},
      {5, [&] { a.setAttribute("1 2", ""); }},
      {5, [&] { a.setAttribute(I18NString(std::string_view("a\0b", 3)), ""); }},
      {14, [&] { a.setAttribute("a:b:c", ""); }},
      {14, [&] { a.setAttribute("p:", ""); }},
      {14, [&] { a.setAttributeNS("", "p:x", ""); }},
      {14, [&] { document.createElementNS("", "p:x"); }},
      {5, [&] { document.createElementNS("", "<"); }},
      {5, [&] { document.createElementNS("", ""); }},
      {3, [&] { VRDIDOM_Element(text).setAttribute("a", "b"); }},
      {9, [&] { document.importNode(document, 1); }},
      {3, [&] { VRDIDOM_Helper::appendChild(text, b); }},
      {3, [&] { VRDIDOM_Helper::appendChild(document, b); }},
      {14, [&] { document.createElementNS("u", "xmlns:x"); }},
      {14, [&] { document.createElementNS("u", "xml:x"); }},
      {14, [&] { document.createElementNS(xmlUri, "x"); }},
      {5, [&] { document.createElementNS("u", "a b"); }},
      {5, [&] { document.createElementNS("u", "1bad"); }},
      {5, [&] { document.createElementNS("u", "x<y"); }},
      {14, [&] { a.setAttribute("p:1x", ""); }},
      {14, [&] { a.setAttribute("xmlns:xmlns", "u"); }},
      {14, [&] { a.setAttributeNS(xmlnsUri, "foo:bar", ""); }},
      {14, [&] { a.setAttributeNS("u", "xmlns:bar", ""); }},
      {5, [&] { a.setAttributeNS("", "k v", ""); }},
      {14, [&] { document.renameNode(a, "u", "x:y:z"); }},
      {14, [&] { document.renameNode(a, "", "p:e"); }},
      {5, [&] { document.renameNode(a, "u", "a b"); }},
      {3, [&] { document.renameNode(a.getAttributeNode("k"), "", "l"); }},
      {3, [&] { document.renameNode(text, "", "l"); }},
      {4, [&] { document.renameNode(foreign, "", "l"); }},
      {3, [&] { document.recycle(b); }},
      {3, [&] { document.recycle(foreign); }},
      {3, [&] { document.recycle(attribute); }},
      {3, [&] { document.recycle(document); }},
  };
  for (std::size_t i = 0; i < cases.size(); ++i) {
    try {
      cases[i].change();
      ADD_FAILURE() << "case " << i;
    } catch (const VRDIDOM_Exception& error) {
      EXPECT_EQ(error.getCode(), cases[i].code) << "case " << i;
      EXPECT_FALSE(error.getMessage().empty());
    }
    EXPECT_EQ(written(document), before) << "case " << i;
  }
}

TEST(Handle, ChildrenAreAppendedMovedRemovedAndReplaced) {
  VRDIDOM_Element root = parsedRoot("<r><a/><b><c/></b>t</r>");
  VRDIDOM_Node a = root.getFirstChild();
  VRDIDOM_Node b = a.getNextSibling();
  VRDIDOM_Node c = b.getFirstChild();
  root.appendChild(c);
  EXPECT_EQ(written(root), "<r><a/><b/>t<c/></r>");
  EXPECT_TRUE(root.replaceChild(c, a) == &a);
  EXPECT_EQ(written(root), "<r><c/><b/>t</r>");
  EXPECT_TRUE(a.getParentNode().isNull());
  root.replaceChild(b, b);
  root.appendChild(c);
  EXPECT_EQ(written(root), "<r><b/>t<c/></r>");
  EXPECT_TRUE(root.removeChild(b) == &b);
  EXPECT_EQ(written(root), "<r>t<c/></r>");
  EXPECT_TRUE(root.getParentNode().getNodeType() == 9);
  EXPECT_TRUE(root.getOwnerDocument().getOwnerDocument().isNull());
}

TEST(Handle, AnElementIsRenamedAndStrippedInPlace) {
  VRDIDOM_Document document = parsed("<r><a b='1' c='2' xmlns:p='u' p:d='3'>t</a></r>");
  VRDIDOM_Element root = document.getDocumentElement();
  VRDIDOM_Element a = root.getFirstChild();
  VRDIDOM_Attr b = a.getAttributeNode("b");
  EXPECT_TRUE(document.renameNode(a, "v", "q:n") == &a);
  a.removeAttributes();
  root.insertBefore(document.createTextNode("x"), a);
  EXPECT_EQ(written(root), "<r>x<q:n xmlns:q=\"v\">t</q:n></r>");
  EXPECT_EQ(b.getValue(), "1");
}

TEST(Handle, ValuesAreExact) {
  VRDIDOM_Document document = parsed("<a/>");
  VRDIDOM_Element root = document.getDocumentElement();
  for (const char* value : {"", "x", "\xC3\xA9\xF0\x9F\x98\x80", "\xff\xfe", "a\r\n\tb", "<&>\""}) {
    VRDIDOM_Text text = document.createTextNode(value);
    root.setAttribute("v", value);
    EXPECT_EQ(text.getNodeValue(), value);
    EXPECT_EQ(root.getAttribute("v"), value);
    text.setNodeValue("changed");
    EXPECT_EQ(text.getNodeValue(), "changed");
  }
  // A NUL, which neither XML nor Xerces-C can hold, must not cut the text.
  const I18NString withNul(std::string_view("a\0b", 3));
  EXPECT_EQ(document.createTextNode(withNul).getNodeValue(),
            "a\xEF\xBF\xBD"
            "b");
  VRDIDOM_Attr attribute = root.getAttributeNode("v");
  attribute.setNodeValue("by its node");
  EXPECT_EQ(root.getAttribute("v"), "by its node");
}

TEST(Handle, ACopyIsEqualAndApart) {
  const char* text =
      "<p:a xmlns:p='u' xmlns='v' z='1' p:b='2'><b/>t<c xmlns=''><d e='f'>g</d></c>h<p:i/></p:a>";
  VRDIDOM_Element source = parsedRoot(text);
  VRDIDOM_Document document = newDocument();
  VRDIDOM_Node copy = document.importNode(source, 1);
  EXPECT_TRUE(copy.isEqualNode(source));
  EXPECT_EQ(written(copy), written(source));
  EXPECT_TRUE(copy.getParentNode().isNull() && document.getDocumentElement().isNull());
  copy.appendChild(document.createTextNode("x"));
  EXPECT_FALSE(copy.isEqualNode(source));
  EXPECT_EQ(written(document.importNode(source, 0)),
            "<p:a p:b=\"2\" xmlns=\"v\" xmlns:p=\"u\" z=\"1\"/>");

  VRDIDOM_Element parent = parsedRoot("<r/>");
  VRDIDOM_Helper::appendChild(parent, source.getFirstChild());
  VRDIDOM_Helper::appendChild(parent, parent);
  EXPECT_EQ(written(parent), "<r><b xmlns=\"v\"/><r><b xmlns=\"v\"/></r></r>");
  EXPECT_TRUE(source.isEqualNode(parsedRoot(text)));
}

TEST(Handle, AnAttributeThatChangesItsPrefixIsAsOneSetAfresh) {
  VRDIDOM_Element changed = parsedRoot("<a/>");
  for (const char* name : {"a:x", "z:x"}) {
    changed.setAttributeNS("u", name, "1");
    changed.setAttribute("m", "2");
    changed.setAttribute("p:n", "3");
  }
  VRDIDOM_Element fresh = parsedRoot("<a/>");
  fresh.setAttribute("p:n", "3");
  fresh.setAttributeNS("u", "z:x", "1");
  fresh.setAttribute("m", "2");
  EXPECT_TRUE(changed.isEqualNode(fresh));
  changed.setAttribute("b:x", "plain");
  changed.setAttributeNS("u", "b:x", "4");
  EXPECT_EQ(changed.getAttribute("b:x"), "4");
  for (const char* name : {"p:n", "b:x", "m"}) changed.removeAttribute(name);
  EXPECT_EQ(written(changed), "<a/>");
  // Two of one qualified name, as the DOM lets it, survive a copy.
  fresh.setAttributeNS("v", "z:x", "5");
  EXPECT_TRUE(newDocument().importNode(fresh, 1).isEqualNode(fresh));
}

TEST(Handle, EqualityIsOfWholeTrees) {
  struct Case {
    const char* left;
    const char* right;
    bool areEqual;
  };
  for (const Case& c :
       {Case{"<a b='1' c='2'/>", "<a c='2' b='1'/>", true}, Case{"<a b='1'/>", "<a b='2'/>", false},
        Case{"<a b='1'/>", "<a/>", false}, Case{"<a><b/>t</a>", "<a><b/>t</a>", true},
        Case{"<a><b/>t</a>", "<a>t<b/></a>", false},
        Case{"<a><b><c/></b></a>", "<a><b/><c/></a>", false},
        Case{"<a><b/></a>", "<a><b/><b/></a>", false},
        Case{"<a><b/><b/></a>", "<a><b/></a>", false}, Case{"<a>t</a>", "<a>u</a>", false},
        Case{"<a xmlns='u'/>", "<a xmlns='v'/>", false},
        Case{"<p:a xmlns:p='u'/>", "<q:a xmlns:q='u'/>", false}}) {
    EXPECT_EQ(parsedRoot(c.left).isEqualNode(parsedRoot(c.right)) != 0, c.areEqual)
        << c.left << " and " << c.right;
  }
}

TEST(Handle, ATreeMayBeDeeperThanAnyStack) {
  constexpr int depth = 200000;
  VRDIDOM_Document document = newDocument();
  VRDIDOM_Element root = document.createElementNS("u", "p:e");
  VRDIDOM_Node innermost = root;
  for (int i = 1; i < depth; ++i) {
    innermost = innermost.appendChild(document.createElementNS("u", "p:e"));
  }
  VRDIDOM_Document target = newDocument();
  VRDIDOM_Node copy = target.importNode(root, 1);
  EXPECT_TRUE(copy.isEqualNode(root));
  EXPECT_EQ(root.getElementsByTagName("p:e").getLength(), depth - 1U);
  EXPECT_GT(written(copy).size(), std::size_t{10} * depth);
}

TEST(TreeWalker, StopsAtTheTypesAskedForOnly) {
  VRDIDOM_Document document = parsed("<r>a<b>c<d/></b>e<f/></r>");
  VRDIDOM_Element root = document.getDocumentElement();
  VRDIDOM_TreeWalker elements = document.createTreeWalker(root, 1, nullptr, 0);
  EXPECT_TRUE(elements.nextSibling().isNull());
  EXPECT_EQ(elements.firstChild().getNodeName(), "b");
  EXPECT_EQ(elements.nextSibling().getNodeName(), "f");
  EXPECT_TRUE(elements.nextSibling().isNull());
  EXPECT_TRUE(elements.firstChild().isNull());

  // Elements that are not shown are looked through.
  VRDIDOM_TreeWalker texts = document.createTreeWalker(root, 4, nullptr, 0);
  EXPECT_EQ(texts.firstChild().getNodeValue(), "a");
  EXPECT_EQ(texts.nextSibling().getNodeValue(), "c");
  EXPECT_EQ(texts.nextSibling().getNodeValue(), "e");
  EXPECT_TRUE(texts.nextSibling().isNull());
}

}  // namespace
