#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>

#include "platform/core/VRDErrors.h"
#include "tests/support/DomTesting.h"

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
           {"<a/>", nullptr, "xmlns:p", "http://www.w3.org/XML/1998/namespace", "<a/>"},
           {"<a/>", nullptr, "xmlns:p", "http://www.w3.org/2000/xmlns/", "<a/>"},
           {"<p:a xmlns:p='http://www.w3.org/2000/xmlns/'/>", nullptr, "b", "1",
            "<p:a b='1' xmlns:p='urn:prefix:p'/>"},
           {"<xml:a/>", nullptr, "xml:b", "1", "<xml:a xml:b='1'/>"},
           // A prefix that means nothing, or something by its declaration, or is a second spelling.
           {"<a/>", nullptr, "q:b", "1", "<a q:b='1' xmlns:q='urn:prefix:q'/>"},
           {"<a xmlns:q='u'/>", nullptr, "q:b", "1", "<a q:b='1' xmlns:q='u'/>"},
           {"<a q:b='1' xmlns:p='u' xmlns:q='u'/>", nullptr, "p:b", "2",
            "<a q:b='1' xmlns:p='u' xmlns:q='u'/>"},
           // An attribute whose prefix is taken, or that has none.
           {"<p:a xmlns:p='u'/>", "v", "p:b", "1", "<p:a ns1:b='1' xmlns:p='u' xmlns:ns1='v'/>"},
           {"<a xmlns='u'/>", "u", "b", "1", "<a ns1:b='1' xmlns='u' xmlns:ns1='u'/>"},
           {"<p:a xmlns:p='u' xmlns:ns1='u'/>", "v", "p:b", "1",
            "<p:a ns2:b='1' xmlns:ns1='u' xmlns:p='u' xmlns:ns2='v'/>"},
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
  EXPECT_EQ(inEncoding(text, "US-ASCII"), "<a b=\"&#x20AC;>\">&#xE9;</a>");
  EXPECT_EQ(inEncoding(text, "ISO-8859-1"), "<a b=\"&#x20AC;>\">\xE9</a>");
  EXPECT_THROW(inEncoding(text, "no such encoding"), VRDStdExceptionError);
  // A name can hold no reference.
  EXPECT_EQ(inEncoding("<a b=\">\"><c \xC3\xA9=\">\"/></a>", "US-ASCII"), "refused");
}

TEST(Writer, AppendsWholeTreesAndReplacesTexts) {
  VRDIDOM_Element root = parsedRoot("<a>1<b>2</b>3</a>");
  I18NString text = "before ";
  VRDIDOM_Helper::write(root, text);
  EXPECT_EQ(text, "before <a>1<b>2</b>3</a>");
  VRDIDOM_Helper::getElementText(root, text);
  EXPECT_EQ(text, "13");
}

/// A tree of namespaces redeclared, hidden and undone, with values of all characters.
VRDIDOM_Element randomTree(VRDIDOM_Document& document, int depth, std::mt19937& random) {
  const auto pick = [&](std::initializer_list<const char*> choices) {
    return choices.begin()[random() % choices.size()];
  };
  const auto value = [&] {
    return std::string(random() % 50 == 0 ? 2000 : 0, 'x') +
           pick({"\t", "\n", "\r", "<", "&", ">", "\"", "'", "]]>", "\x7f", "\u0085", "\u2028"}) +
           pick({" ", "\u00E9", "\uFFFD", "\uE000", "\U00010000", "\U0010FFFD"});
  };
  VRDIDOM_Element element =
      document.createElementNS(pick({"u", "v", "w"}), pick({"a", "p:a", "q:a", "q:\u00E9"}));
  element.setAttribute(pick({"a", "b", "xml:lang"}), value().c_str());
  element.setAttributeNS(pick({"u", "v"}), pick({"p:k", "q:k", "r:l"}), value().c_str());
  element.setAttribute(pick({"xmlns:p", "xmlns:q", "xmlns"}), pick({"u", "v", "w"}));
  if (depth == 0) element.appendChild(document.createElementNS("", "none"));
  for (int i = depth; i > 0; --i) {
    element.appendChild(document.createTextNode(value().c_str()));
    element.appendChild(randomTree(document, depth - 1, random));
  }
  return element;
}

/// What a tree means, whatever its prefixes: names with their namespace, and attributes looked up
/// one by one, since handles have no list of them.
std::string meaningOf(VRDIDOM_Element element) {
  std::string out = "<{" + bytesOf(element.getNamespaceURI()) + "}" +
                    bytesOf(element.getLocalName() + "=" + element.getNodeValue());
  for (const char* uri : {"", "u", "v", "http://www.w3.org/XML/1998/namespace"}) {
    for (const char* local : {"a", "b", "k", "l", "lang"}) {
      if (element.getNodeType() != 1 || element.hasAttributeNS(uri, local) == 0) continue;
      out += " {"s + uri + "}" + local + "=" + bytesOf(element.getAttributeNS(uri, local));
    }
  }
  VRDIDOM_NodeList children = element.getChildNodes();
  for (unsigned long i = 0; i < children.getLength(); ++i) out += meaningOf(children.item(i));
  return out + ">";
}

TEST(Writer, WhatIsWrittenIsReadAsTheSameTree) {
  std::mt19937 random(1);
  for (int round = 1; round <= 1000; ++round) {
    VRDIDOM_Document document = newDocument();
    VRDIDOM_Element tree = randomTree(document, 3, random);
    const std::string text = written(tree);
    VRDIDOM_Element again = parsedRoot(text);
    ASSERT_EQ(meaningOf(tree), meaningOf(again)) << text;
    // From here on nothing is to be put right, so it is the same to the byte.
    ASSERT_TRUE(parsedRoot(written(again)).isEqualNode(again)) << text;
  }
}

}  // namespace
