#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <limits>
#include <sstream>

#include "tests/support/DomTesting.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using namespace std::string_literals;

struct Verdict {
  std::string text;
  int code;
  unsigned long line = 1;
  unsigned long column = 0;  // 0: not looked at
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
  EXPECT_EQ(parser.getErrorLine(), result != 0 ? 0 : expected.line);
  EXPECT_TRUE(expected.column == 0 || parser.getErrorColumn() == expected.column);
  EXPECT_EQ(document.getDocumentElement().isNamed("before"), result == 0);
}

TEST(Parser, RefusesWhatIsMalformedAndTellsWhere) {
  for (const Verdict& each : {
           Verdict{"", 1, 1, 1},
           {"<a>\n<b>\n</a>", 1, 3, 3},
           {"<a/>x", 1, 1, 5},
           {"<a>a\0b</a>"s, 1, 1, 6},
           // Behind the root, where the scanner takes them for the end.
           {"<a/>\0<b/>"s, 1, 1, 5},
           {"<a/>\n<!-- c -->\xff x", 1, 2},
           {"<a/>" + std::string(100000, '\n') + "\xff", 1, 100001},
       }) {
    expectVerdict(each);
  }
  for (const std::string& text :
       {"<a xmlns:p='u' xmlns:q='u' p:x='1' q:x='2'/>"s, "<p:a/>"s, "<a>&b;</a>"s, "<a>\xff</a>"s,
        "<?xml version='1.0' encoding='nope'?><a/>"s, "<a/>\xe2\x82"s, "\xff\xfe<\0a\0/\0>\0x"s,
        "\xfe\xff\0<\0a\0/\0>\0"s}) {
    expectVerdict({text, VRDIDOM_Parser::Malformed});
  }
}

TEST(Parser, ReadsEncodingsReferencesAndPiecesIntoOneText) {
  const std::pair<std::string, std::string> rows[] = {
      {"<a>1<!-- c -->2<?pi d?>3<![CDATA[<4]]><![CDATA[]]>&#53;&amp;</a>", "123<45&"},
      {"<?xml version='1.0'?><!-- c --><a>\xF0\x9F\x98\x80</a><?pi?>\n", "\xF0\x9F\x98\x80"},
      {"\xff\xfe<\0a\0>\0\xe9\0<\0/\0a\0>\0"s, "\xC3\xA9"},
      {"<?xml version='1.0' encoding='windows-1252'?><a>\x80</a>", "\xE2\x82\xAC"},
      {"<a>" + std::string(10U << 20U, 'x') + "</a>", std::string(10U << 20U, 'x')}};
  for (const auto& [text, content] : rows) {
    VRDIDOM_Element root = parsedRoot(text);
    EXPECT_EQ(root.getChildNodes().getLength(), 1U) << text.substr(0, 80);
    EXPECT_TRUE(root.getFirstChild().getNodeValue() == content.c_str());
  }
}

TEST(Parser, RefusesEveryDoctypeAndOpensNothing) {
  const TemporaryFolder folder;
  const std::string pipe = (folder / "pipe").string();
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  // Whoever opened the pipe to read would wait in that for a writer, for ever. One who opened it
  // without waiting would be seen as a reader here.
  for (const std::string& doctype :
       {"<!DOCTYPE a>"s, "<!DOCTYPE a SYSTEM 'file://" + pipe + "'>",
        "<!DOCTYPE a [<!ENTITY % e SYSTEM '" + pipe + "'> %e;]>",
        "<!DOCTYPE a [<!ENTITY x '0123456789'><!ENTITY y '&x;&x;&x;'><!ENTITY e '&y;&y;&y;'>]>"s}) {
    expectVerdict({doctype + "<a>&e;</a>", VRDIDOM_Parser::DoctypeRefused, 1, 10});
    expectVerdict({"<?xml version='1.0'?>\n<!-- c -->\n" + doctype + "<a/>",
                   VRDIDOM_Parser::DoctypeRefused, 3, 10});
    EXPECT_EQ(::open(pipe.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC), -1);
  }
  expectVerdict({"<a/><!DOCTYPE a>", VRDIDOM_Parser::Malformed});
  expectVerdict({"<a xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:schemaLocation='u " +
                     pipe + "'/>",
                 VRDIDOM_Parser::NoError});
}

TEST(Parser, RefusesNestingBeyondTheLimit) {
  std::string before, after;
  for (int i = 1; i < VRDIDOM_Parser::maximumDepth; ++i) {
    before += "<a>";
    after += "</a>";
  }
  for (const char* innermost : {"<b/>", "<b></b>", "<b>t</b><b/>"}) {
    expectVerdict({before + innermost + after, VRDIDOM_Parser::NoError});
    expectVerdict({before + "<a>" + innermost + "</a>" + after, VRDIDOM_Parser::TooDeep});
  }
}

TEST(Parser, LeavesOutWhiteSpaceBelowTheRootWhereAsked) {
  const std::string text = "<a> \n<!-- c -->\t<b> <c/> </b> x <d/> <![CDATA[ ]]> </a>";
  EXPECT_EQ(written(parsedRoot(text)), "<a> \n\t<b> <c/> </b> x <d/>   </a>");
  VRDIDOM_Document document;
  VRDIDOM_Parser parser(VRDIDOM_Parser::DropRootWhitespace);
  ASSERT_TRUE(parser.parse(text.data(), static_cast<int>(text.size()), document));
  EXPECT_EQ(written(document), "<a><b> <c/> </b> x <d/></a>");
}

/// Gives some text; then it answers as a stream that is broken.
class BrokenInput : public IBJInputStream {
 public:
  BrokenInput(std::string text, int answer) : m_text(std::move(text)), m_answer(answer) {}
  int read(char* buffer, int count) override {
    const std::size_t given = m_text.copy(buffer, static_cast<std::size_t>(count));
    m_text.erase(0, given);
    return given > 0 ? static_cast<int>(given) : m_answer;
  }

 private:
  std::string m_text;
  int m_answer;
};

TEST(Parser, TellsAStreamThatFailsFromOneThatEnds) {
  VRDIDOM_Document document = parsed("<before/>");
  VRDIDOM_Parser parser(0);
  for (const char* text : {"", "<a><b/>", "<a/>"}) {
    for (const int answer : {-1, std::numeric_limits<int>::max()}) {
      BrokenInput input(text, answer);
      EXPECT_EQ(parser.parse(input, document), 0);
      EXPECT_EQ(parser.getErrorCode(), VRDIDOM_Parser::StreamFailed) << text;
      EXPECT_EQ(written(document), "<before/>");
    }
  }
  EXPECT_EQ(parser.parse(nullptr, 1, document) + parser.parse("<b/>", -1, document), 0);
  std::istringstream whole("<b>x</b>");
  EXPECT_NE(parser.parse(whole, document), 0);
  EXPECT_EQ(parser.getErrorCode(), VRDIDOM_Parser::NoError);
  EXPECT_EQ(written(document), "<b>x</b>");
}

}  // namespace
