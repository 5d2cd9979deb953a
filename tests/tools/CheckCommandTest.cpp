// check: each kind of finding, in its place and with what to do, from one broken installation.

#include <gtest/gtest.h>

#include <regex>

#include "tests/tools/TestInstallation.h"

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

constexpr char startup[] = "configuration/zanstartup.xml";
constexpr char locales[] = "configuration/zanlocale.xml";
constexpr char components[] = "cmplst.txt";

constexpr char brokenParameters[] = R"(
<parameter name='x'/>
<vtn:parameter nam='a'><vtn:value/></vtn:parameter>
<vtn:parameter name='a'><value>x</value></vtn:parameter>
<vtn:parameter name='b'><vtn:value/><vtn:value>x</vtn:value></vtn:parameter>
<vtn:parameter name='c'><vtn:value/></vtn:parameter>
<vtn:parameter name='c'><vtn:value xsi:type='cfg:filepath'/></vtn:parameter>
<vtn:parameter name='d'><vtn:value xsi:type='cfg:filePath'>%VRD_NO%/a</vtn:value></vtn:parameter>
<vtn:parameter name='e' opaque='yes'><vtn:value/></vtn:parameter>
<vtn:parameter name='f' opaque='true'><vtn:value><y disabled='true'/></vtn:value></vtn:parameter>
<vtn:parameter name='g'><vtn:value>Ω𝄞<y/></vtn:value></vtn:parameter>
<vtn:parameter name='h'><vtn:value encrypted='true'>kg66-T</vtn:value></vtn:parameter>
<vtn:parameter name='i'><vtn:value encrypted='true'/></vtn:parameter>
<vtn:parameter name='productLocaleMap' opaque='true'><vtn:value><item/></vtn:value></vtn:parameter>
<vtn:parameter name='supportedFonts'><vtn:value>Arial</vtn:value></vtn:parameter>
)";
constexpr char brokenLocales[] = R"(<localeConfiguration xmlns:p='p'>
<p:fontsMap/>
<fontMaps/>
<supportedFonts><fonts id='a'/></supportedFonts>
<productLocaleMap><localeMap key='zh_hk' value='zh'/>
<localeMap key='*' value=''/><localeMap key='zh' value='zh'/>
<localeMap key='zh' value='zh'/></productLocaleMap>
<productLocaleMap/>
</localeConfiguration>)";
constexpr char brokenComponents[] =
    "A_version=1\nA_version=2\nB_version=1\r\nC_version=\n_version=1\nD_version= 1\nE_Version =1\n"
    "F_version=2";
constexpr char findings[] = R"(zanstartup.xml:2:1 ignored-element
zanstartup.xml:3:1 no-name
zanstartup.xml:4:1 no-value
zanstartup.xml:5:37 second-value
zanstartup.xml:6:1 duplicate-name
zanstartup.xml:7:25 unknown-type
zanstartup.xml:8:25 unresolved-path
zanstartup.xml:9:1 odd-mark
zanstartup.xml:10:50 misplaced-mark
zanstartup.xml:11:38 hidden-xml
zanstartup.xml:12:25 bad-secret
zanstartup.xml:13:25 empty-secret
zanstartup.xml:14:65 incomplete-item
zanstartup.xml:14:65 incomplete-item
zanstartup.xml:15:38 empty-table
zanlocale.xml:2:1 prefixed-section
zanlocale.xml:3:1 unknown-section
zanlocale.xml:4:17 ignored-element
zanlocale.xml:5:19 odd-locale
zanlocale.xml:6:1 no-attribute
zanlocale.xml:7:1 duplicate-entry
zanlocale.xml:8:1 duplicate-section
cmplst.txt:2:1 duplicate-name
cmplst.txt:3:11 carriage-return
cmplst.txt:4:11 empty-version
cmplst.txt:5:1 empty-name
cmplst.txt:6:1 blanks
cmplst.txt:7:1 ignored-line
cmplst.txt:8:1 no-last-newline
findings: 29
)";

TEST(CheckCommand, NamesThePlaceOfEachKindAndWhatToDo) {
  const TestInstallation broken(brokenParameters);
  broken.write(locales, brokenLocales);
  broken.write(components, brokenComponents);
  const std::regex finding(".*/(.*:[0-9]+:[0-9]+): .+\n    to do: .+  \\[(.*)\\]\n");
  EXPECT_EQ(std::regex_replace(broken.run({"check"}).out, finding, "$1 $2\n"), findings);
  const std::string blanks =
      R"({"kind":"blanks","file":")" + broken.file(components) +
      R"(","line":6,"column":1,"message":"blanks around the name or the version of \"D\" belong )"
      R"(to it","advice":"remove them"})";
  expectAnswers(broken.call(), {{{"check", "--json"}, 1, HasSubstr(blanks)}});
  expectAnswers(sampleCall(), {{{"check"}, 0, "no findings\n"}});
}

TEST(CheckCommand, TellsOfFilesThatDoNotCountAtAll) {
  const std::tuple<const char*, const char*, const char*> rows[] = {
      {startup, "<vtn:parameters xmlns:vtn='other'/>", "nothing in the document counts"},
      {locales, "<locales/>", "the root is \"locales\""},
      {locales, "<a>\n</b>", ":2:"},
      {components, nullptr, "missing"},
  };
  for (const auto& [name, content, message] : rows) {
    const TestInstallation installation("");
    installation.write(locales, "<localeConfiguration/>");
    if (name != components) installation.write(components, "");
    if (content != nullptr) installation.write(name, content);
    const auto one =
        AllOf(HasSubstr(installation.file(name)), HasSubstr(message), EndsWith("findings: 1\n"));
    expectAnswers(installation.call(), {{{"check"}, 1, one}});
  }
}

}  // namespace
