// check: the sample installation is clean; each way of breaking one is found in its place, alone.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/tools/TestInstallation.h"

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

constexpr char startup[] = "configuration/zanstartup.xml";
constexpr char locales[] = "configuration/zanlocale.xml";
constexpr char components[] = "cmplst.txt";

/// A file's content, with "^" in front of the place that the finding points at.
struct Breakage {
  const char* kind;
  std::string content;
  const char* message;
};

/// An installation with nothing to find.
struct Clean : TestInstallation {
  Clean() : TestInstallation("") {
    write(locales, "<localeConfiguration/>");
    write(components, "");
  }
};

std::string takePlace(std::string& content) {
  const std::size_t at = content.find('^');
  const std::size_t lineBegin = content.rfind('\n', at) + 1;
  const auto here = content.begin() + static_cast<std::ptrdiff_t>(at);
  const auto line = std::count(content.begin(), here, '\n') + 1;
  content.erase(here);
  return std::to_string(line) + ':' + std::to_string(at - lineBegin + 1);
}

void expectFindings(const char* file, const std::vector<Breakage>& breakages) {
  for (const auto& [kind, marked, message] : breakages) {
    SCOPED_TRACE(marked);
    const Clean installation;
    std::string content = marked;
    const std::string place = installation.file(file) + ':' + takePlace(content) + ": ";
    installation.write(file, content);
    const auto alone = AllOf(HasSubstr(place), HasSubstr(message), HasSubstr("to do: "),
                             HasSubstr("[" + std::string(kind) + "]"), EndsWith("\nfindings: 1\n"));
    expectAnswers(installation.call(), {{{"check"}, 1, alone}});
  }
}

/// A document with one parameter of the value elements @p values.
std::string of(const std::string& values, const std::string& attributes = "name='a'") {
  return startupDocument("\n<vtn:parameter " + attributes + ">" + values + "</vtn:parameter>");
}

/// A document of one parameter with the value @p xml.
std::string xmlOf(const std::string& xml, const std::string& marks = "name='a' opaque='true'") {
  return of("<vtn:value>" + xml + "</vtn:value>", marks);
}

std::string pathOf(const std::string& value) {
  return of("^<vtn:value xsi:type='cfg:filePath'>" + value + "</vtn:value>");
}

/// A document of one parameter at which the finding points.
std::string at(const std::string& values, const std::string& attributes = "name='a'") {
  std::string document = of(values, attributes);
  return document.insert(document.find("<vtn:parameter "), "^");
}

TEST(CheckCommand, FindsWhatIsWrongInTheStartupDocument) {
  expectFindings(
      startup,
      {{"wrong-root", "^<vtn:parameters xmlns:vtn='other'/>", "nothing in the document counts"},
       {"ignored-element", startupDocument("\n^<parameter name='x'/>"), "is not a parameter"},
       {"no-name", at("<vtn:value/>", "nam='a'"), "has no name"},
       {"no-value", at(""), "it is dropped"},
       {"no-value", at("<value>x</value>"), "it is dropped"},
       {"no-value", at("<vtn:value disabled='True'/>"), "it is dropped"},
       {"second-value", of("<vtn:value/>\n  ^<vtn:value>x</vtn:value>"), "this one is not read"},
       {"duplicate-name", startupDocument("^" + parameter("a", "") + "\n" + parameter("a", "")),
        "later"},
       {"unknown-type", of("^<vtn:value xsi:type='cfg:filepath'/>"), "exactly \"cfg:filePath\""},
       {"unknown-type", of("^<vtn:value xsi:type='folderPath'/>"), "\"cfg:folderPath\""},
       {"unknown-type", xmlOf("^<y xsi:type='cfg:SystemPasword'/>"), "\"cfg:systemPassword\""},
       {"unresolved-path", pathOf("%VRD_TEST_UNSET%/a"), "\"VRD_TEST_UNSET\" is not set"},
       {"unresolved-path", pathOf("../100%"), "has no partner"},
       {"odd-mark", at("<vtn:value/>", "name='a' opaque='yes'"), "opaque=\"yes\""},
       {"misplaced-mark", of("^<vtn:value opaque='true'/>"), "put it on the parameter"},
       {"misplaced-mark", xmlOf("^<job disabled='true'/>"), "no effect on element \"job\""},
       {"hidden-xml", xmlOf("^<job/>", "name='a'"), "is not opaque"},
       {"bad-secret", of("^<vtn:value encrypted='true'>kg66-T</vtn:value>"), "\"a\" is not base64"},
       {"empty-secret", of("^<vtn:value encrypted='true'/>"), "is empty"},
       {"incomplete-item",
        xmlOf("^<item><key>a</key></item>", "name='productLocaleMap' opaque='true'"),
        "no element \"value\""},
       {"incomplete-item", xmlOf("^<item><value>a</value></item>", "name='contentLocaleMap'"),
        "no element \"key\""},
       {"empty-table", of("^<vtn:value>Arial</vtn:value>", "name='supportedFonts'"), "empty one"},
       {"parse-error", of("\n<vtn:value>x</^vtn:valu>"), "nothing in it counts"}});
}

std::string sections(const std::string& text) {
  return "<localeConfiguration>\n" + text + "</localeConfiguration>";
}
std::string section(const std::string& name, const std::string& entries) {
  return sections("<" + name + ">" + entries + "</" + name + ">");
}
std::string mapOf(const std::string& entries) { return section("productLocaleMap", entries); }

TEST(CheckCommand, FindsWhatIsWrongInTheLocaleDocument) {
  const std::string once = "<localeMap key='zh' value='zh'/>";
  expectFindings(
      locales,
      {{"wrong-root", "^<locales/>", "the root is \"locales\""},
       {"prefixed-section", sections("^<p:fontsMap xmlns:p='p'/>"), "has a prefix"},
       {"unknown-section", sections("^<fontMaps/>"), "Near it: \"fontsMap\""},
       {"duplicate-section", sections("<fontsMap/>^<fontsMap/>"), "only that one is read"},
       {"ignored-element", section("supportedFonts", "^<fonts id='a'/>"), "write it \"font\""},
       {"no-attribute", section("supportedCurrencies", "^<currency/>"), "has no \"id\""},
       {"no-attribute", mapOf("^<localeMap key='*' value=''/>"), "has no \"value\""},
       {"odd-locale", section("supportedProductLocales", "^<locale id='PL'/>"), "never counts"},
       {"odd-locale", mapOf("^<localeMap key='zh_hk' value='zh'/>"), "no normalised locale"},
       {"duplicate-entry", mapOf(once + "^" + once), "the first one counts"},
       {"duplicate-entry", section("supportedFonts", "<font id='A'/>^<font id='A'/>"), "twice"}});
}

TEST(CheckCommand, FindsWhatIsWrongInTheComponentList) {
  expectFindings(components,
                 {{"no-last-newline", "A_version=1\n^B_version=2", "it is not read"},
                  {"duplicate-name", "A_version=1\n^A_version=2\n", "the first one counts"},
                  {"carriage-return", "A_version=^1\r\n", "belongs to the version"},
                  {"empty-version", "A_version=^\nB_version=1\n", "version of \"A\" is empty"},
                  {"empty-name", "^_version=1\n", "empty name"},
                  {"blanks", "^A_version= 1\n", "belong to it"},
                  {"ignored-line", "^A_Version =1\n", "nearly an entry"}});
}

TEST(CheckCommand, FindsNothingInTheSampleAndThenTheMissingFile) {
  expectAnswers(SampleInstallation().call(), {{{"check"}, 0, "no findings\n"}});
  for (const char* name : {startup, locales, components}) {
    const Clean installation;
    const std::string file = installation.file(name);
    std::filesystem::remove(file);
    const auto missing =
        AllOf(HasSubstr(file + ": the "), HasSubstr("missing"), EndsWith("findings: 1\n"));
    expectAnswers(installation.call(), {{{"check"}, 1, missing}});
    std::filesystem::create_directory(file);
    EXPECT_THAT(installation.run({"check"}).out, HasSubstr("not a regular file"));
  }
}

TEST(CheckCommand, JsonNamesThePlace) {
  const Clean installation;
  installation.write(components, "\n_version=1.1.0\n");
  EXPECT_EQ(installation.run({"check", "--json"}).out,
            R"({"findings":[{"kind":"empty-name","file":")" + installation.file(components) +
                R"(","line":2,"column":1,"message":"the entry has an empty name",)"
                R"("advice":"write the component's name in front of \"_version=\""}]})" +
                "\n");
}

TEST(CheckCommand, CountsColumnsInCharactersAndReadsUtf16) {
  const Clean installation;
  const std::string head = "<?xml version='1.0'?>\r\n<!-- Ω -->";
  installation.write(locales, head + "<localeConfiguration>Ω𝄞<fonts/></localeConfiguration>");
  EXPECT_THAT(installation.run({"check"}).out, HasSubstr(":2:34: section \"fonts\""));

  std::string utf16 = "\xFF\xFE";
  for (const char16_t unit : u"<localeConfiguration>\nΩ𝄞<fonts/></localeConfiguration>\n") {
    if (unit != 0) utf16 += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
  }
  installation.write(locales, utf16);
  EXPECT_THAT(installation.run({"check"}).out, HasSubstr(":2:3: section \"fonts\""));
}

}  // namespace
