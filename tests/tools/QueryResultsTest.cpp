// --query and explain: what a process would answer after taking in query results, and why.

#include <gtest/gtest.h>

#include "tests/tools/TestInstallation.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr char parameters[] =
    R"(<vtn:parameter name="b"><vtn:value>kept</vtn:value></vtn:parameter>
<vtn:parameter name="a"><vtn:value>first</vtn:value></vtn:parameter>
<vtn:parameter name="a"><vtn:value>startup</vtn:value></vtn:parameter>
<vtn:parameter name="log"><vtn:value xsi:type="cfg:filePath">%ZAN_ROOT%/a.log</vtn:value></vtn:parameter>
<vtn:parameter name="off" disabled="true"><vtn:value>x</vtn:value></vtn:parameter>
<vtn:parameter name="pw"><vtn:value encrypted="true">U1RPUkVE</vtn:value></vtn:parameter>
)";

std::string resultOf(const std::string& content) {
  return "<results>\n<queryResult><group>" + content + "</group></queryResult></results>";
}

std::string valueOf(const std::string& name, const std::string& value) {
  return '<' + name + "><value>" + value + "</value></" + name + '>';
}

class QueryResults : public testing::Test {
 protected:
  QueryResults() {
    m_there.write("one.xml", resultOf(valueOf("a", "one") + valueOf("new", "n")));
    m_there.write("two.xml", resultOf(valueOf("a", "two")));
  }

  TestInstallation m_there{parameters};
  const std::string m_one = m_there.file("one.xml");
  const std::string m_two = m_there.file("two.xml");
  const std::string m_document = "startup document " + m_there.startupFile().string();
};

TEST_F(QueryResults, AreTakenInTheirOrderBeforeTheCommand) {
  expectAnswers(
      m_there.call(),
      {{{"--query", m_one, "--query", m_two, "get", "a", "b", "new"},
        0,
        "a    two\nb    kept\nnew  n\n"},
       {{"--query", "-", "get", "a"}, 0, "piped\n", "", resultOf(valueOf("a", "piped"))}});
}

TEST_F(QueryResults, EndTheCommandWhenRefused) {
  const std::pair<std::string, const char*> rows[] = {
      {"<a>\n  <b></a>", ":2:"},
      {resultOf(valueOf("advancedSettings", "x")), "\"advancedSettings\" does not parse"},
  };
  for (const auto& [content, message] : rows) {
    m_there.write("one.xml", content);
    expectAnswers(
        m_there.call(),
        {{{"--query", m_one, "get", "a"}, 2, "", AllOf(HasSubstr(m_one), HasSubstr(message))}});
  }
}

TEST_F(QueryResults, AreExplainedEachInItsRole) {
  const auto masked = AllOf(HasSubstr("********"), Not(HasSubstr("U1RPUkVE")));
  const auto setting =
      AllOf(HasSubstr("value      set\n"), HasSubstr("in force   advanced setting"));
  const std::string set =
      valueOf("advancedSettings", "&lt;s&gt;&lt;x name=\"b\"&gt;set&lt;/x&gt;&lt;/s&gt;");
  const std::string off = "ignored  " + m_document + ":5:1, since it is disabled";
  const std::string a = "name       a\nvalue      two\ndisplaced  " + m_document +
                        ":2:1: first\ndisplaced  " + m_document +
                        ":3:1: startup\ndisplaced  query result " + m_one +
                        ":2:21: one\nin force   query result " + m_two + ":2:21\n";
  const auto log = AllOf(HasSubstr("\nvalue             " + m_there.file("a.log") + "\n"),
                         HasSubstr("before rewriting  %ZAN_ROOT%/a.log\n"));
  expectAnswers(
      m_there.call(),
      {{{"--query", m_one, "--query", m_two, "explain", "a"}, 0, a},
       {{"explain", "log"}, 0, log},
       {{"explain", "off"}, 1, HasSubstr(off), testing::_},
       {{"--query", "-", "explain", "b"}, 0, setting, "", resultOf(valueOf("b", "q") + set)},
       {{"--query", "-", "explain", "pw"}, 0, masked, "", resultOf(valueOf("pw", "new"))}});
}

}  // namespace
