// get, list, dump: what they show of parameters, and what they keep to themselves.

#include <gtest/gtest.h>

#include "tests/tools/TestInstallation.h"

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

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
    {{"get", "lines"}, 0, "one\ntwo\ttab\n"},
    {{"get", "住所", "lines"}, 0, "住所   千代田区\nlines  one\\ntwo\\ttab\n"},
    {{"get", "empty"}, 0, "\n"},
    {{"get", "plian"}, 1, "", HasSubstr("Near it: \"plain\".")},
    {{"get", ""}, 1, "", HasSubstr("there is no parameter \"\"")},
    {{"get", "plain", "no"}, 1, "plain  Zürich & \"Bern\"\n", HasSubstr("\"no\"")},
    {{"get", "--decrypt", "system", "plain"}, 0, "system  PLAINPW\nplain   Zürich & \"Bern\"\n"},
    {{"get", "secret", "--decrypt"}, 2, "", HasSubstr("(state 7)")},
    {{"get", "nested", "--decrypt"}, 2, "", HasSubstr("(state 7)")},
    {{"dump", "--decrypt"}, 2, "", HasSubstr("(state 7)")},
    {{"get", "plain", "secret", "--json"},
     0,
     R"({"parameters":[{"name":"plain","value":"Zürich & \"Bern\"","type":"xsd:string","opaque":false,)"
     R"("encrypted":false,"masked":false,"undecryptable":false},{"name":"secret","value":"********",)"
     R"("type":"","opaque":false,"encrypted":true,"masked":true,"undecryptable":false}]})"
     "\n"},
    {{"get", "plai", "--json"},
     1,
     "{\"parameters\":[{\"name\":\"plai\",\"absent\":true,\"near\":[\"plain\"]}]}\n",
     HasSubstr("no parameter")},
    {{"list"}, 0, "empty\nfolder\nlines\nnested\nplain\nsecret\nsystem\n住所\n"},
    {{"list", "??"}, 0, "住所\n"},
    {{"list", "*[sn]t*", "--json"}, 0, "{\"names\":[\"nested\",\"system\"]}\n"},
    {{"list", "nothing*"}, 1, "", HasSubstr("no parameter matches")},
    {{"list", "--values", "[ln]*"},
     0,
     "lines   one\\ntwo\\ttab\n"
     "nested  <a user=\"u\"><b encrypted=\"true\">********</b><c xsi:type=\"cf…    "
     "opaque,encrypted\n"},
    {{"list", "--values", "--decrypt", "s*"},
     1,
     "secret                               encrypted,undecryptable\n"
     "system  PLAINPW  cfg:systemPassword\n",
     HasSubstr("undecryptable")},
    {{"get", "--xml", "plain"},
     0,
     AllOf(StartsWith("<vtn:value "), HasSubstr("xsi:type=\"xsd:string\""),
           EndsWith(">Zürich &amp; \"Bern\"</vtn:value>\n"))},
};

TEST(QueryCommands, Answer) {
  const TestInstallation installation(parameters);
  expectAnswers(installation.call(), answers);
  EXPECT_THAT(
      installation.run({"dump"}).out,
      AllOf(HasSubstr("<vtn:parameters "), HasSubstr("Zürich &amp; \"Bern\""),
            HasSubstr("<b encrypted=\"true\">********</b>"), HasSubstr(installation.file("data"))));
}

TEST(QueryCommands, NeverShowSecretsUnasked) {
  const TestInstallation installation(parameters);
  for (const std::vector<std::string>& call :
       std::vector<std::vector<std::string>>{{"get", "system"},
                                             {"get", "secret", "nested", "system"},
                                             {"get", "--xml", "nested"},
                                             {"get", "--xml", "system", "nested", "--json"},
                                             {"list", "--values"},
                                             {"list", "--values", "--json"},
                                             {"dump"},
                                             {"dump", "--json"},
                                             {"startup"},
                                             {"startup", "--json"}}) {
    const auto masked =
        AllOf(HasSubstr("********"), Not(HasSubstr("U1RPUkVE")), Not(HasSubstr("PLAINPW")));
    expectAnswers(installation.call(), {{call, 0, masked}});
    EXPECT_EQ(isJson(installation.run(call).out), call.back() == "--json");
  }
}

}  // namespace
