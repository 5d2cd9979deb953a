#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <vector>

#include "platform/core/VRDErrors.h"
#include "platform/idom/VRDIDOM_Exception.h"
#include "tests/idom/DomTesting.h"

namespace {

using namespace std::string_literals;

struct Setting {
  const char* uri;  // null: set without a namespace
  const char* name;
  const char* value;
};

struct FixUp {
  const char* uri;
  const char* name;
  std::vector<Setting> attributes;
  const char* text;
};

void expectText(const VRDIDOM_Element& element, const char* text) {
  EXPECT_EQ(written(element), text);
  EXPECT_FALSE(parsedRoot(written(element)).isNull()) << written(element);
}

// What the handles let one build and the text must put right.
TEST(Writer, DeclaresWhatIsInUseAndNothingTwice) {
  const FixUp cases[] = {
      {"u", "p:a", {}, "<p:a xmlns:p=\"u\"/>"},
      {"u", "a", {}, "<a xmlns=\"u\"/>"},
      {"u", "p:a", {{nullptr, "xmlns:p", "u"}}, "<p:a xmlns:p=\"u\"/>"},
      // The element's own name wins over a declaration on it.
      {"u", "p:a", {{nullptr, "xmlns:p", "v"}}, "<p:a xmlns:p=\"u\"/>"},
      {"", "a", {{nullptr, "xmlns", "v"}}, "<a/>"},
      // What is forbidden is left out.
      {"", "a", {{nullptr, "xmlns:p", ""}, {nullptr, "xmlns:xml", "u"}}, "<a/>"},
      {"", "a", {{nullptr, "xmlns:unused", "u"}}, "<a xmlns:unused=\"u\"/>"},
      {"", "a", {{nullptr, "xml:lang", "de"}}, "<a xml:lang=\"de\"/>"},
      // A prefix that means nothing, or something by its declaration.
      {"", "a", {{nullptr, "q:b", "1"}}, "<a q:b=\"1\" xmlns:q=\"urn:prefix:q\"/>"},
      {"", "a", {{nullptr, "q:b", "1"}, {nullptr, "xmlns:q", "u"}}, "<a q:b=\"1\" xmlns:q=\"u\"/>"},
      // An attribute whose prefix is taken, or that has none.
      {"u", "p:a", {{"v", "p:b", "1"}}, "<p:a ns1:b=\"1\" xmlns:p=\"u\" xmlns:ns1=\"v\"/>"},
      {"u", "a", {{"u", "b", "1"}}, "<a ns1:b=\"1\" xmlns=\"u\" xmlns:ns1=\"u\"/>"},
      {"u", "p:a", {{"u", "b", "1"}}, "<p:a p:b=\"1\" xmlns:p=\"u\"/>"},
      // Two spellings of one name.
      {"",
       "a",
       {{nullptr, "p:b", "plain"}, {nullptr, "xmlns:p", "u"}, {"u", "q:b", "1"}},
       "<a q:b=\"1\" xmlns:p=\"u\" xmlns:q=\"u\"/>"}};
  for (const FixUp& each : cases) {
    VRDIDOM_Element element = newDocument().createElementNS(each.uri, each.name);
    for (const Setting& a : each.attributes) {
      a.uri == nullptr ? element.setAttribute(a.name, a.value)
                       : element.setAttributeNS(a.uri, a.name, a.value);
    }
    expectText(element, each.text);
  }
}

TEST(Writer, DeclaresWhatAnOuterElementHides) {
  VRDIDOM_Document document = newDocument();
  VRDIDOM_Element a = document.createElementNS("u", "a");
  VRDIDOM_Element inner = a.appendChild(document.createElementNS("", "b"));
  inner.appendChild(document.createElementNS("u", "c"));
  a.appendChild(document.createElementNS("u", "d"));
  expectText(a, "<a xmlns=\"u\"><b xmlns=\"\"><c xmlns=\"u\"/></b><d/></a>");

  a = document.createElementNS("u", "p:a");
  inner = a.appendChild(document.createElementNS("v", "p:b"));
  inner.setAttributeNS("u", "p:k", "1");
  a.appendChild(document.createElementNS("u", "p:c"));
  expectText(a, "<p:a xmlns:p=\"u\"><p:b ns1:k=\"1\" xmlns:p=\"v\" xmlns:ns1=\"u\"/><p:c/></p:a>");
}

TEST(Writer, EscapesWhatAParserWouldChange) {
  VRDIDOM_Element root = parsedRoot("<a/>");
  root.setAttribute("v", "<&>\"'\t\n\r\x01 \xC3\xA9");
  root.appendChild(root.getOwnerDocument().createTextNode("<&>\"'\t\n\r]]>"));
  EXPECT_EQ(written(root),
            "<a v=\"&lt;&amp;>&quot;'&#x9;&#xA;&#xD;\xEF\xBF\xBD \xC3\xA9\">"
            "&lt;&amp;&gt;\"'\t\n&#xD;]]&gt;</a>");
}

TEST(Writer, PutsAReplacementForWhatXmlCannotHold) {
  VRDIDOM_Document document = newDocument();
  for (const std::string& text :
       {"\x01"s, "\x1f"s, "\0"s, "\xff"s, "\xED\xA0\x80"s, "\xEF\xBF\xBE"s, "\xEF\xBF\xBF"s}) {
    const std::string shown = written(document.createTextNode(I18NString(std::string_view(text))));
    EXPECT_EQ(shown.find_first_not_of("\xEF\xBF\xBD"), std::string::npos) << shown;
    EXPECT_GE(shown.size(), 3U);
  }
  for (const char* text : {"\x7f\xC2\x80", "\xEF\xBF\xBD", "\xEE\x80\x80", "\xF4\x8F\xBF\xBF"}) {
    EXPECT_EQ(written(document.createTextNode(text)), text);
  }
}

TEST(Writer, WritesStreamsInAnyEncoding) {
  VRDIDOM_Element root = parsedRoot("<a b='\xE2\x82\xAC'>\xC3\xA9</a>");
  const auto inEncoding = [&root](const char* encoding) {
    std::ostringstream stream;
    VRDIDOM_Helper::write(root, stream, encoding);
    return stream.str();
  };
  EXPECT_EQ(inEncoding(nullptr), "<a b=\"\xE2\x82\xAC\">\xC3\xA9</a>");
  EXPECT_EQ(inEncoding("UTF-8"), inEncoding(nullptr));
  EXPECT_EQ(inEncoding("US-ASCII"), "<a b=\"&#x20AC;\">&#xE9;</a>");
  EXPECT_EQ(inEncoding("ISO-8859-1"), "<a b=\"&#x20AC;\">\xE9</a>");
  std::ostringstream untouched;
  EXPECT_THROW(VRDIDOM_Helper::write(root, untouched, "no such encoding"), VRDStdExceptionError);
  for (const char* text : {"<\xC3\xA9>\"</\xC3\xA9>", "<a b='x>'><c \xC3\xA9='>'/></a>"}) {
    EXPECT_THROW(VRDIDOM_Helper::write(parsedRoot(text), untouched, "US-ASCII"), VRDIDOM_Exception);
    std::ostringstream latin;
    EXPECT_NO_THROW(VRDIDOM_Helper::write(parsedRoot(text), latin, "ISO-8859-1"));
  }
  EXPECT_EQ(untouched.str(), "");
  I18NString appended = "before ";
  VRDIDOM_Helper::write(root.getFirstChild(), appended);
  EXPECT_EQ(appended, "before \xC3\xA9");
}

TEST(Writer, KeepsTheTextOfAnElementApart) {
  I18NString text = "old";
  VRDIDOM_Helper::getElementText(parsedRoot("<a>a<b>b</b>c</a>"), text);
  EXPECT_EQ(text, "ac");
  VRDIDOM_Helper::getElementText(VRDIDOM_Element(), text);
  EXPECT_EQ(text, "");
}

void appendUtf8(std::string& out, char32_t character) {
  const char16_t lead = static_cast<char16_t>(0xD7C0 + (character >> 10));
  const char16_t units[] = {lead, static_cast<char16_t>(0xDC00 + (character & 0x3FF))};
  const char16_t single = static_cast<char16_t>(character);
  const bool isPair = character > 0xFFFF;
  out += bytesOf(I18NString::fromUtf16(isPair ? std::u16string_view(units, 2)
                                              : std::u16string_view(&single, 1)));
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
    switch (below(4)) {
      case 0:
        return element.setAttribute(pick({"a", "b", "c"}), text(0).c_str());
      case 1:
        return element.setAttributeNS(pick({"u", "v"}), pick({"p:k", "q:k", "r:l"}),
                                      text(0).c_str());
      case 2:
        return element.setAttribute(pick({"xmlns:p", "xmlns:q", "xmlns"}), pick({"u", "v", "w"}));
      default:
        return element.setAttribute("xml:lang", text(0).c_str());
    }
  }

  std::string text(int least) {
    static const std::u32string characters =
        U"x \t\n\r<&>\"']]\u0085\u2028\u00E9\uFFFD\uE000\U00010000\U0010FFFD";
    std::string result;
    const int length = below(20) == 0 ? 1100 + below(1100) : least + below(6);
    for (int i = 0; i < length; ++i) appendUtf8(result, characters[m_random() % characters.size()]);
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
    for (const char* local : {"a", "b", "c", "k", "l", "lang"}) {
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
    std::string before;
    std::string after;
    describe(tree, before);
    describe(again, after);
    ASSERT_EQ(before, after) << "seed " << seed << ": " << text;
    // From here on nothing is to be put right, so it is the same to the byte.
    ASSERT_TRUE(parsedRoot(written(again)).isEqualNode(again)) << "seed " << seed;
  }
}

}  // namespace
