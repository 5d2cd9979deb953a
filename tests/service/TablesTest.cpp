#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/service/Service.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::PrintToString;

namespace {

std::vector<std::string> codes(const std::map<I18NString, I18NString>& names) {
  std::vector<std::string> texts;
  for (const auto& entry : names) texts.emplace_back(entry.first.c_str());
  return texts;
}

/// Everything the replaceable tables answer, as one text for each table.
std::vector<std::string> answers(IVRDConfiguration& service) {
  return {PrintToString(codes(service.getProductLocaleList("en"))),
          service.mapProductLocale("xx", 1).c_str(),
          PrintToString(codes(service.getContentLocaleList("en"))),
          service.mapContentLocale("xx", 1).c_str(),
          PrintToString(codes(service.getCurrencies("en"))),
          PrintToString(plain(service.getFonts("")))};
}

const std::vector<std::string> fromDocument = {
    R"({ "de", "en" })", "product", R"({ "fr" })", "content", R"({ "EUR" })", R"({ "Serif" })"};

}  // namespace

// Every source of every table says who it is; each parameter replaces its own table and no other.
TEST(ServiceTables, EachParameterReplacesItsTable) {
  struct {
    const char* parameter;
    std::string value;
    const char* expected;
  } const cases[] = {
      {"supportedProductLocales", items("sv"), R"({ "sv" })"},
      {"productLocaleMap", pairs("*=mapped *=again"), "mapped"},
      {"supportedContentLocales", items("nl nl it"), R"({ "it", "nl" })"},
      {"contentLocaleMap", pairs("*=mapped"), "mapped"},
      {"supportedCurrencies", items("USD SEK"), R"({ "SEK", "USD" })"},
      {"supportedFonts", items("Mono Sans Mono"), R"({ "Mono", "Sans", "Mono" })"},
  };
  const ServiceInstallation installation;
  installation.setLocales(allSections);
  const PrivateService loaded, bystander, unasked;
  EXPECT_EQ(answers(*loaded), fromDocument);
  EXPECT_EQ(answers(*bystander), fromDocument);
  std::vector<std::string> expected = fromDocument;
  for (std::size_t table = 0; table < expected.size(); ++table) {
    const PrivateService fresh;  // has loaded nothing when the parameter comes
    initWith(*fresh, queried(cases[table].parameter, cases[table].value));
    initWith(*loaded, queried("unrelated", "x"));
    expected[table] = cases[table].expected;
    EXPECT_EQ(answers(*fresh), expected) << cases[table].parameter;
    EXPECT_EQ(answers(*loaded), expected) << cases[table].parameter;
  }
  EXPECT_EQ(answers(*bystander), fromDocument) << "another object keeps its tables";
  unasked->init();
  EXPECT_EQ(answers(*unasked), fromDocument) << "init() replaces nothing";
  EXPECT_EQ(stateOf([&] { initWith(*unasked, "<"); }), VRDCFGAPI_StreamParseFailed);
  EXPECT_EQ(answers(*unasked), fromDocument) << "nor does what fails";
  VRDIDOM_Element none;
  unasked->init(none);
  EXPECT_EQ(answers(*unasked), expected) << "an element does as a stream does";
}

TEST(ServiceTables, WhatIsNoItemIsPassedOver) {
  const ServiceInstallation installation;
  const PrivateService service;
  initWith(*service, queried("supportedFonts", "<a>" + items("x") + "</a><font id='y'/>") +
                         queried("supportedProductLocales", "") +
                         queried("supportedCurrencies", "<p:item xmlns:p='urn:p'>EUR</p:item>") +
                         queried("productLocaleMap",
                                 "<item><key>en</key></item><item><value>v</value></item>"
                                 "<item><x><key>fr</key><value>v</value></x></item>" +
                                     pairs("de=last")));
  EXPECT_THAT(plain(service->getProductLocaleList("en")), IsEmpty());
  EXPECT_THAT(plain(service->getCurrencies("en")), IsEmpty());
  EXPECT_EQ(service->mapProductLocale("de", 1), "last");
  for (const char* locale : {"en", "fr"}) {
    EXPECT_EQ(stateOf([&] { service->mapProductLocale(locale, 1); }), VRDCFGAPI_LocaleUnmapped);
  }
  EXPECT_EQ(stateOf([&] { service->getFonts(""); }), VRDCFGAPI_LocaleFileMissing)
      << "the mapping of fonts is the first table that needs the document";
  EXPECT_THAT(plain(service->getFonts("")), ElementsAre("x"));
}

TEST(ServiceTables, Fonts) {
  const ServiceInstallation installation;
  installation.setLocales(allSections);
  const PrivateService service;
  for (const auto& [font, expected] : std::map<const char*, const char*>{
           {"Old", "Serif"}, {"Serif", "New"}, {"old", "old"}, {"Other", "Other"}, {"", ""}}) {
    I18NString text = font;
    EXPECT_EQ(&service->mapFont(text), &text);
    EXPECT_EQ(text, expected) << font;
  }
  initWith(*service, queried("fontsMap", pairs("Old=Mono")));
  EXPECT_THAT(plain(service->getFontMappings()),
              ElementsAre(Pair("Old", "Serif"), Pair("Serif", "New")));
}
