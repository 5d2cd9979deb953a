#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <vector>

#include "platform/core/VRDErrors.h"
#include "tests/idom/DomTesting.h"

namespace {

using namespace std::string_literals;

// What the handles let one build and the text must put right.
TEST(Writer, DeclaresWhatIsInUseAndNothingTwice) {
  struct Case {
    const char* element;
    const char *uri, *name, *value;  // of the attribute set on it; a null namespace for none
    const char* text;
  };
  for (const Case& c : {
           Case{"<p:a xmlns:p='u'/>", "u", "b", "1", "<p:a p:b='1' xmlns:p='u'/>"},
           {"<a xmlns:unused='u'/>", nullptr, "b", "1", "<a b='1' xmlns:unused='u'/>"},
           // The element's own name wins over a declaration on it; what is forbidden is left out.
           {"<p:a xmlns:p='u'/>", nullptr, "xmlns:p", "v", "<p:a xmlns:p='u'/>"},
           {"<a/>", nullptr, "xmlns", "v", "<a/>"},
           {"<a/>", nullptr, "xmlns:p", "", "<a/>"},
           {"<a/>", nullptr, "xmlns:xml", "u", "<a/>"},
           // A prefix that means nothing, or something by its declaration, or is a second spelling.
           {"<a/>", nullptr, "q:b", "1", "<a q:b='1' xmlns:q='urn:prefix:q'/>"},
           {"<a xmlns:q='u'/>", nullptr, "q:b", "1", "<a q:b='1' xmlns:q='u'/>"},
           {"<a q:b='1' xmlns:p='u' xmlns:q='u'/>", nullptr, "p:b", "2",
            "<a q:b='1' xmlns:p='u' xmlns:q='u'/>"},
           // An attribute whose prefix is taken, or that has none.
           {"<p:a xmlns:p='u'/>", "v", "p:b", "1", "<p:a ns1:b='1' xmlns:p='u' xmlns:ns1='v'/>"},
           {"<a xmlns='u'/>", "u", "b", "1", "<a ns1:b='1' xmlns='u' xmlns:ns1='u'/>"},
       }) {
    VRDIDOM_Element element = parsedRoot(c.element);
    c.uri == nullptr ? element.setAttribute(c.name, c.value)
                     : element.setAttributeNS(c.uri, c.name, c.value);
    std::string text = written(element);
    std::replace(text.begin(), text.end(), '"', '\'');
    EXPECT_EQ(text, c.text);
    EXPECT_FALSE(parsedRoot(text).isNull()) << text;
  }
}

TEST(Writer, PutsAReplacementForWhatXmlCannotHold) {
  VRDIDOM_Document document = newDocument();
  for (const std::string& text :
       {"\x01"s, "\x1f"s, "\0"s, "\xff"s, "\xED\xA0\x80"s, "\xEF\xBF\xBE"s, "\xEF\xBF\xBF"s}) {
    const std::string shown = written(document.createTextNode(I18NString(std::string_view(text))));
    EXPECT_EQ(shown.find_first_not_of("\xEF\xBF\xBD"), std::string::npos) << shown;
    EXPECT_GE(shown.size(), 3U);
  }
}

TEST(Writer, WritesStreamsInAnyEncoding) {
  const auto inEncoding = [](const char* text, const char* encoding) {
    std::ostringstream stream;
    const long refusal =
        refusalOf([&] { VRDIDOM_Helper::write(parsedRoot(text), stream, encoding); });
    return refusal == 0 ? stream.str() : "refused";
  };
  const char* text = "<a b=\"\xE2\x82\xAC>\">\xC3\xA9</a>";
  EXPECT_EQ(inEncoding(text, nullptr), text);
  EXPECT_EQ(inEncoding(text, "UTF-8"), text);
  EXPECT_EQ(inEncoding(text, "US-ASCII"), "<a b=\"&#x20AC;>\">&#xE9;</a>");
  EXPECT_EQ(inEncoding(text, "ISO-8859-1"), "<a b=\"&#x20AC;>\">\xE9</a>");
  EXPECT_THROW(inEncoding(text, "no such encoding"), VRDStdExceptionError);
  // A name can hold no reference.
  for (const char* named : {"<\xC3\xA9>\"</\xC3\xA9>", "<a b=\">\"><c \xC3\xA9=\">\"/></a>"}) {
    EXPECT_EQ(inEncoding(named, "US-ASCII"), "refused");
    EXPECT_NE(inEncoding(named, "ISO-8859-1"), "refused");
  }
}

TEST(Writer, AppendsWholeTreesAndReplacesTexts) {
  VRDIDOM_Element root = parsedRoot("<a>1<b>2</b>3</a>");
  I18NString text = "before ";
  VRDIDOM_Helper::write(root, text);
  EXPECT_EQ(text, "before <a>1<b>2</b>3</a>");
  VRDIDOM_Helper::getElementText(root, text);
  EXPECT_EQ(text, "13");
  VRDIDOM_Helper::getElementText(VRDIDOM_Element(), text);
  EXPECT_EQ(text, "");
}

/// Builds trees of every kind that has a text: namespaces redeclared, hidden and undone, values of
/// all characters.
class RandomTree {
 public:
  explicit RandomTree(unsigned seed) : m_random(seed), m_document(newDocument()) {}

  VRDIDOM_Element make(int depth) {
    const char* uri = pick({"", "u", "v", "w"});
    const char* prefix = pick({"", "p:", "q:"});
    const std::string name = (*uri == '\0' ? ""s : prefix) + pick({"a", "b", "\xC3\xA9"});
    VRDIDOM_Element element = m_document.createElementNS(uri, name.c_str());
    for (int i = below(4); i > 0; --i) addAttribute(element);
    bool mayBeText = true;
    for (int i = depth == 0 ? 0 : below(5); i > 0; --i) {
      // Two texts side by side come back as one.
      const bool isText = mayBeText && below(2) == 0;
      element.appendChild(isText ? VRDIDOM_Node(m_document.createTextNode(text(1).c_str()))
                                 : VRDIDOM_Node(make(depth - 1)));
      mayBeText = !isText;
    }
    return element;
  }

 private:
  int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
  const char* pick(std::initializer_list<const char*> choices) {
    return choices.begin()[below(static_cast<int>(choices.size()))];
  }

  void addAttribute(VRDIDOM_Element& element) {
    const std::string value = text(0);
    switch (below(3)) {
      case 0:
        return element.setAttribute(pick({"a", "b", "xml:lang"}), value.c_str());
      case 1:
        return element.setAttributeNS(pick({"u", "v"}), pick({"p:k", "q:k", "r:l"}), value.c_str());
      default:
        return element.setAttribute(pick({"xmlns:p", "xmlns:q", "xmlns"}), pick({"u", "v", "w"}));
    }
  }

  std::string text(int least) {
    std::string result;
    for (int i = below(20) == 0 ? 1100 + below(1100) : least + below(6); i > 0; --i) {
      result += pick({"x", " ", "\t", "\n", "\r", "<", "&", ">", "\"", "'", "]]", "\x7f", "\u0085",
                      "\u2028", "\u00E9", "\uFFFD", "\uE000", "\U00010000", "\U0010FFFD"});
    }
    return result;
  }

  std::mt19937 m_random;
  VRDIDOM_Document m_document;
};

/// What a tree means, whatever its prefixes: names in braces with their namespace, attributes
/// looked up one by one, since handles have no list of attributes.
void describe(VRDIDOM_Node node, std::string& out) {
  if (node.getNodeType() != 1) {
    out += "[" + bytesOf(node.getNodeValue()) + "]";
    return;
  }
  VRDIDOM_Element element = node;
  out += "<{" + bytesOf(node.getNamespaceURI()) + "}" + bytesOf(node.getNodeName());
  for (const char* uri : {"", "u", "v", "http://www.w3.org/XML/1998/namespace"}) {
    for (const char* local : {"a", "b", "k", "l", "lang"}) {
      if (element.hasAttributeNS(uri, local) == 0) continue;
      out += " {"s + uri + "}" + local + "=" + bytesOf(element.getAttributeNS(uri, local));
    }
  }
  VRDIDOM_NodeList children = node.getChildNodes();
  for (unsigned long i = 0; i < children.getLength(); ++i) describe(children.item(i), out);
  out += ">";
}

TEST(Writer, WhatIsWrittenIsReadAsTheSameTree) {
  for (unsigned seed = 1; seed <= 2500; ++seed) {
    VRDIDOM_Element tree = RandomTree(seed).make(4);
    const std::string text = written(tree);
    VRDIDOM_Element again = parsedRoot(text);
    ASSERT_FALSE(again.isNull()) << "seed " << seed << ": " << text;
    std::string before, after;
    describe(tree, before);
    describe(again, after);
    ASSERT_EQ(before, after) << "seed " << seed << ": " << text;
    // From here on nothing is to be put right, so it is the same to the byte.
    ASSERT_TRUE(parsedRoot(written(again)).isEqualNode(again)) << "seed " << seed;
  }
}

}  // namespace
