// get, list, dump: what they show of parameters, and what they keep to themselves; and the commands
// that ask the service for its tables.

#include <gtest/gtest.h>

#include "tests/tools/TestInstallation.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr char parameters[] = R"(
<vtn:parameter name="plain"><vtn:value xsi:type="xsd:string">Zürich &amp; "Bern"</vtn:value></vtn:parameter>
<vtn:parameter name="empty"><vtn:value/></vtn:parameter>
<vtn:parameter name="lines"><vtn:value>one
two	tab</vtn:value></vtn:parameter>
<vtn:parameter name="folder"><vtn:value xsi:type="cfg:folderPath">../data</vtn:value></vtn:parameter>
<vtn:parameter name="secret"><vtn:value encrypted="TRUE">U1RPUkVE</vtn:value></vtn:parameter>
<vtn:parameter name="system"><vtn:value xsi:type="cfg:systemPassword">PLAINPW</vtn:value></vtn:parameter>
<vtn:parameter name="nested" opaque="true"><vtn:value><a user="u"><b encrypted="true">U1RPUkVE</b><c xsi:type="cfg:systemPassword">PLAINPW</c></a></vtn:value></vtn:parameter>
<vtn:parameter name="住所"><vtn:value>千代田区</vtn:value></vtn:parameter>
)";

const std::vector<Answer> answers = {
    {{"get", "plain"}, 0, "Zürich & \"Bern\"\n"},
    {{"get", "住所", "lines"}, 0, "住所   千代田区\nlines  one\\ntwo\\ttab\n"},
    {{"get", "empty"}, 0, "\n"},
    {{"get", "plian"}, 1, "", HasSubstr("Near it: \"plain\".")},
    {{"get", "plain", "no"}, 1, "plain  Zürich & \"Bern\"\n", HasSubstr("\"no\"")},
    {{"get", "--decrypt", "system", "plain"}, 0, "system  PLAINPW\nplain   Zürich & \"Bern\"\n"},
    {{"get", "secret", "--decrypt"}, 2, "", HasSubstr("(state 7)")},
    {{"dump", "--decrypt"}, 2, "", HasSubstr("(state 7)")},
    {{"get", "plain", "secret", "--json"},
     0,
     R"({"parameters":[{"name":"plain","value":"Zürich & \"Bern\"","type":"xsd:string","opaque":false,)"
     R"("encrypted":false,"masked":false,"undecryptable":false},{"name":"secret","value":"********",)"
     R"("type":"","opaque":false,"encrypted":true,"masked":true,"undecryptable":false}]})"
     "\n"},
    {{"list"}, 0, "empty\nfolder\nlines\nnested\nplain\nsecret\nsystem\n住所\n"},
    {{"list", "*[sn]t*", "--json"}, 0, "{\"names\":[\"nested\",\"system\"]}\n"},
    {{"list", "nothing*"}, 1, "", HasSubstr("no parameter matches")},
    {{"list", "--values", "[ln]*"},
     0,
     "lines   one\\ntwo\\ttab\n"
     "nested  <a user=\"u\"><b encrypted=\"true\">********</b><c xsi:type=\"cf…    "
     "opaque,encrypted\n"},
    {{"get", "--xml", "plain"}, 0, HasSubstr(">Zürich &amp; \"Bern\"</vtn:value>\n")},
};

TEST(QueryCommands, Answer) {
  const TestInstallation installation(parameters);
  expectAnswers(installation.call(), answers);
  EXPECT_THAT(installation.run({"dump"}).out,
              AllOf(HasSubstr("Zürich &amp; \"Bern\""), HasSubstr(installation.file("data"))));
}

TEST(QueryCommands, NeverShowSecretsUnasked) {
  const TestInstallation installation(parameters);
  const auto masked =
      AllOf(HasSubstr("********"), Not(HasSubstr("U1RPUkVE")), Not(HasSubstr("PLAINPW")));
  const std::vector<std::string> calls[] = {{"get", "secret", "nested", "system"},
                                            {"get", "--xml", "system", "nested"},
                                            {"list", "--values"},
                                            {"dump"},
                                            {"startup"}};
  for (std::vector<std::string> call : calls) {
    expectAnswers(installation.call(), {{call, 0, masked}});
    call.emplace_back("--json");
    expectAnswers(installation.call(), {{call, 0, masked}});
  }
}

TEST(ServiceCommands, AnswerForTheSample) {
  expectAnswers(sampleCall(),
                {{{"fonts", "--json"}, 0, HasSubstr(R"({"font":"serif","use":"DejaVu Serif"})")},
                 {{"component", "METRICS"}, 0, "0.9.3-beta\n"},
                 {{"locales", "--in", "fr_CA"}, 0, HasSubstr("cs     tchèque\n")},
                 {{"content-locales", "--in", "de"}, 0, HasSubstr("de-at  Deutsch (Österreich)\n")},
                 {{"time-zones", "--in", "en"}, 0, HasSubstr("Europe/Zurich")},
                 {{"currencies", "--in", "sv"}, 0, HasSubstr("CHF  schweizisk franc\n")},
                 {{"map-locale", "ZH_sg"}, 0, "zh-cn\n"},
                 {{"map-locale", "x"}, 1, "", HasSubstr("locale \"x\": no mapping exists")},
                 {{"normalize-locale", " FR_ca_x "}, 0, "fr-ca\n"},
                 {{"startup", "logFile"}, 0, HasSubstr("logFile  %ZAN_ROOT%/logs/server.log  /")}});
}

}  // namespace
