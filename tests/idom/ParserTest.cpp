#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <limits>
#include <sstream>
#include <stdexcept>
#include <streambuf>

#include "tests/idom/DomTesting.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using namespace std::string_literals;

struct Verdict {
  std::string text;
  int code;
  unsigned long line;
  unsigned long column;  // 0: not looked at
};

/// Parses from memory and checks that a failure leaves the document as it was.
void expectVerdict(const Verdict& expected) {
  VRDIDOM_Document document = parsed("<before/>");
  VRDIDOM_Parser parser(0);
  const int result =
      parser.parse(expected.text.data(), static_cast<int>(expected.text.size()), document);
  SCOPED_TRACE(expected.text.substr(0, 80));
  EXPECT_EQ(parser.getErrorCode(), expected.code) << parser.getErrorText().c_str();
  EXPECT_EQ(result != 0, expected.code == VRDIDOM_Parser::NoError);
  EXPECT_EQ(parser.getErrorText().empty(), result != 0);
  EXPECT_EQ(parser.getErrorLine(), expected.line);
  if (expected.column != 0) {
    EXPECT_EQ(parser.getErrorColumn(), expected.column);
  }
  const bool isUntouched = document.getDocumentElement().isNamed("before") != 0;
  EXPECT_EQ(isUntouched, result == 0);
}

TEST(Parser, RefusesWhatIsMalformedAndTellsWhere) {
  const Verdict placed[] = {
      {"", 1, 1, 1},
      {"  ", 1, 1, 3},
      {"text", 1, 1, 1},
      {"<a>", 1, 1, 4},
      {"<a></b>", 1, 1, 6},
      {"<a>\n<b>\n</a>", 1, 3, 3},
      {"<a/><b/>", 1, 1, 5},
      {"<a/>x", 1, 1, 5},
      {"\n<?xml version='1.0'?><a/>", 1, 2, 7},
      {"<p:a/>", 1, 1, 7},
      {"<a p:x='1'/>", 1, 1, 13},
      {"<a>a\0b</a>"s, 1, 1, 6},
      {"<a/>\n\xff x", 1, 2, 0},
      {"<a/>\n<!-- c -->\xff x", 1, 2, 0},
      {"<a/>\0<b/>"s, 1, 1, 5},
      {"<a/>\0"s, 1, 1, 5},
      {"<a/>" + std::string(100000, '\n') + "\xff", 1, 100001, 0},
  };
  for (const Verdict& each : placed) expectVerdict(each);
  const std::string onTheFirstLine[] = {"<a xmlns:p=''/>",
                                        "<a xmlns:p='u'><p:b/></a><p:c/>",
                                        "<a x='1' x='2'/>",
                                        "<a xmlns:p='u' xmlns:q='u' p:x='1' q:x='2'/>",
                                        "<a xmlns:p='u' xmlns:p='v'/>",
                                        "<a xmlns:xml='u'/>",
                                        "<a xmlns:xmlns='u'/>",
                                        "<a:b:c xmlns:a='u'/>",
                                        "<xmlns:a/>",
                                        "<a x='<'/>",
                                        "<a x='&'/>",
                                        "<a>&b;</a>",
                                        "<a>&#1;</a>",
                                        "<a>&#xD800;</a>",
                                        "<a>]]></a>",
                                        "<a>\x01</a>",
                                        "<a>\xEF\xBF\xBE</a>",
                                        "<a>\xff</a>",
                                        "<a>\xc3</a>",
                                        "<a>\xc0\x80</a>",
                                        "<a>\xed\xa0\x80</a>",
                                        "<a><!-- x</a>",
                                        "<?xml version='1.0' encoding='nope'?><a/>",
                                        "<?xml version='2.0'?><a/>",
                                        "<?xml version='1.1'?><a/>",
                                        "<?xml version='1.x'?><a/>",
                                        "<?xml version='1.'?><a/>",
                                        "<?xml version='1.0 '?><a/>",
                                        "<a/>\xff",
                                        "<a/>\xe2\x82",
                                        "\xff\xfe<\0a\0/\0>\0x"s,
                                        "\xfe\xff\0<\0a\0/\0>\0"s};
  for (const std::string& text : onTheFirstLine) expectVerdict({text, 1, 1, 0});
}

struct Reading {
  std::string text;
  const char* content;  // of the root's only text node; its attribute b where it has none
};

TEST(Parser, ReadsEncodingsReferencesAndPiecesIntoOneText) {
  for (const Reading& each : {
           Reading{"<a>x<![CDATA[<y&]]>z</a>", "x<y&z"},
           {"<a>1<!-- c -->2<?pi d?>3<![CDATA[4]]><![CDATA[]]>&#53;&amp;</a>", "12345&"},
           {"<a> <![CDATA[ ]]> </a>", "   "},
           {"<a>&lt;&gt;&quot;&apos;&#65;&#x1F600;</a>", "<>\"'A\xF0\x9F\x98\x80"},
           {"<a>x\r\ny\rz</a>", "x\ny\nz"},
           {"<a b='x\ny\tz&#10;w'/>", "x y z\nw"},
           {"<a>\xF0\x9F\x98\x80</a>\n", "\xF0\x9F\x98\x80"},
           {"\xEF\xBB\xBF<a>x</a>", "x"},
           {"\xff\xfe<\0a\0>\0\xe9\0<\0/\0a\0>\0"s, "\xC3\xA9"},
           {"\xfe\xff\0<\0a\0>\0\xe9\0<\0/\0a\0>"s, "\xC3\xA9"},
           {"<?xml version='1.0' encoding='ISO-8859-1'?><a>\xe9</a>", "\xC3\xA9"},
           {"<?xml version='1.0' encoding='windows-1252'?><a>\x80</a>", "\xE2\x82\xAC"},
           {"<?xml version='1.0'?><!-- c --><?pi?><a>x</a><?pi?>", "x"},
       }) {
    SCOPED_TRACE(each.text);
    VRDIDOM_Element root = parsedRoot(each.text);
    ASSERT_FALSE(root.isNull());
    VRDIDOM_Node child = root.getFirstChild();
    EXPECT_EQ(child.isNull() ? root.getAttribute("b") : child.getNodeValue(), each.content);
    EXPECT_LE(root.getChildNodes().getLength(), 1U);
  }
  // White space between elements stays.
  EXPECT_EQ(written(parsedRoot("<a>\n <b/> <c> </c>\t</a>")), "<a>\n <b/> <c> </c>\t</a>");
}

TEST(Parser, RefusesEveryDoctypeAndOpensNothing) {
  const TemporaryFolder folder;
  const std::string pipe = (folder / "pipe").string();
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  // Whoever opened the pipe to read would wait in that for a writer, for ever. One who opened it
  // without waiting would be seen as a reader here.
  for (const std::string& doctype :
       {"<!DOCTYPE a>"s, "<!DOCTYPE a SYSTEM 'file://" + pipe + "'>",
        "<!DOCTYPE a PUBLIC 'p' '" + pipe + "'>",
        "<!DOCTYPE a [<!ENTITY e SYSTEM '" + pipe + "'>]>",
        "<!DOCTYPE a [<!ENTITY % e SYSTEM '" + pipe + "'> %e;]>",
        "<!DOCTYPE a [<!ENTITY x '0123456789'><!ENTITY y '&x;&x;&x;'><!ENTITY e '&y;&y;&y;'>]>"s,
        "<!DOCTYPE a [<!ATTLIST a b CDATA 'default'>]>"s}) {
    expectVerdict({doctype + "<a>&e;</a>", VRDIDOM_Parser::DoctypeRefused, 1, 10});
    expectVerdict({"<?xml version='1.0'?>\n<!-- c -->\n" + doctype + "<a/>",
                   VRDIDOM_Parser::DoctypeRefused, 3, 10});
    EXPECT_EQ(::open(pipe.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC), -1);
  }
  expectVerdict({"<a/><!DOCTYPE a>", VRDIDOM_Parser::Malformed, 1, 0});
  expectVerdict({"<a xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:schemaLocation='u " +
                     pipe + "'/>",
                 VRDIDOM_Parser::NoError, 0, 0});
}

std::string nested(int depth, const std::string& innermost) {
  std::string text;
  for (int i = 1; i < depth; ++i) text += "<a>";
  text += innermost;
  for (int i = 1; i < depth; ++i) text += "</a>";
  return text;
}

TEST(Parser, RefusesNestingBeyondTheLimit) {
  constexpr int most = VRDIDOM_Parser::maximumDepth;
  for (const char* innermost : {"<b/>", "<b></b>", "<b>t</b><b/>"}) {
    expectVerdict({nested(most, innermost), VRDIDOM_Parser::NoError, 0, 0});
    expectVerdict({nested(most + 1, innermost), VRDIDOM_Parser::TooDeep, 1, 0});
  }
  std::string wide = "<r>";
  for (int i = 0; i < 3 * most; ++i) wide += i % 2 == 0 ? "<b/>" : "<b></b>";
  expectVerdict({wide + "</r>", VRDIDOM_Parser::NoError, 0, 0});
}

TEST(Parser, LeavesOutWhiteSpaceBelowTheRootWhereAsked) {
  const std::string text = "<a> \n<!-- c -->\t<b> <c/> </b> x <d/> <![CDATA[ ]]> </a>";
  VRDIDOM_Document document;
  VRDIDOM_Parser parser(VRDIDOM_Parser::DropRootWhitespace);
  ASSERT_TRUE(parser.parse(text.data(), static_cast<int>(text.size()), document));
  EXPECT_EQ(written(document.getDocumentElement()), "<a><b> <c/> </b> x <d/></a>");
}

TEST(Parser, TakesADocumentCutShortForNoDocument) {
  const std::string whole =
      "<?xml version='1.0' encoding='UTF-8'?><!-- c --><p:a xmlns:p='u' b='\xC3\xA9&amp;'>"
      "x<![CDATA[y]]><p:c/><?pi d?>\xF0\x9F\x98\x80</p:a>";
  for (std::size_t size = 0; size < whole.size(); ++size) {
    VRDIDOM_Document document;
    VRDIDOM_Parser parser(0);
    EXPECT_EQ(parser.parse(whole.data(), static_cast<int>(size), document), 0) << size;
    EXPECT_TRUE(document.isNull());
  }
  expectVerdict({whole, VRDIDOM_Parser::NoError, 0, 0});
  VRDIDOM_Document document;
  EXPECT_EQ(VRDIDOM_Parser(0).parse(nullptr, 5, document), 0);
  EXPECT_EQ(VRDIDOM_Parser(0).parse("<a/>", -1, document), 0);
}

/// Gives some text, then fails as a broken disk does.
class FailingBuffer : public std::streambuf {
 public:
  explicit FailingBuffer(std::string text) : m_text(std::move(text)) {
    setg(m_text.data(), m_text.data(), m_text.data() + m_text.size());
  }

 protected:
  int_type underflow() override { throw std::runtime_error("broken"); }

 private:
  std::string m_text;
};

class ThrowingInput : public IBJInputStream {
  int read(char*, int) override { throw std::runtime_error("broken"); }
};

class FailingInput : public IBJInputStream {
 public:
  explicit FailingInput(int answer) : m_answer(answer) {}
  int read(char*, int) override { return m_answer; }

 private:
  int m_answer;
};

TEST(Parser, TellsAStreamThatFailsFromOneThatEnds) {
  VRDIDOM_Document document;
  VRDIDOM_Parser parser(0);
  // Failed in the middle, and behind a text that is complete.
  for (const char* text : {"<a><b/>", "<a/>"}) {
    FailingBuffer buffer(text);
    std::istream stream(&buffer);
    EXPECT_EQ(parser.parse(stream, document), 0);
    EXPECT_EQ(parser.getErrorCode(), VRDIDOM_Parser::StreamFailed);
  }
  std::istringstream failedBefore("<a/>");
  failedBefore.setstate(std::ios::failbit);
  EXPECT_EQ(parser.parse(failedBefore, document), 0);
  EXPECT_EQ(parser.getErrorCode(), VRDIDOM_Parser::StreamFailed);
  for (const int answer : {-1, std::numeric_limits<int>::max()}) {
    FailingInput input(answer);
    EXPECT_EQ(parser.parse(input, document), 0);
    EXPECT_EQ(parser.getErrorCode(), VRDIDOM_Parser::StreamFailed);
  }
  ThrowingInput thrower;
  EXPECT_NE(parser.parse("<a/>", 4, document), 0);
  EXPECT_THROW(parser.parse(thrower, document), std::runtime_error);
  EXPECT_EQ(parser.getErrorCode(), VRDIDOM_Parser::StreamFailed);
  EXPECT_TRUE(document.getDocumentElement().isNamed("a"));

  std::istringstream throwing("<a>x</a>");
  throwing.exceptions(std::ios::failbit | std::ios::badbit | std::ios::eofbit);
  EXPECT_NE(parser.parse(throwing, document), 0);
  EXPECT_EQ(parser.getErrorCode(), VRDIDOM_Parser::NoError);
  EXPECT_EQ(parser.getErrorLine(), 0U);
  EXPECT_EQ(written(document), "<a>x</a>");
}

TEST(Parser, ReadsOneVeryLargeText) {
  const std::string text(10U << 20U, 'x');
  EXPECT_EQ(written(parsedRoot("<a>" + text + "</a>\n")), "<a>" + text + "</a>");
}

}  // namespace
