#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/service/Service.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

const char* const sections =
    "<supportedProductLocales><locale id='en'/><locale id='de'/></supportedProductLocales>"
    "<productLocaleMap><localeMap key='*' value='product'/></productLocaleMap>"
    "<supportedContentLocales><locale id='fr'/></supportedContentLocales>"
    "<contentLocaleMap><localeMap key='*' value='content'/></contentLocaleMap>"
    "<supportedCurrencies><currency id='EUR'/></supportedCurrencies>"
    "<supportedFonts><font id='Serif'/></supportedFonts>"
    "<fontsMap><fontMap key='Old' value='Serif'/><fontMap key='Serif' value='New'/></fontsMap>";

std::vector<std::string> codes(const std::map<I18NString, I18NString>& names) {
  std::vector<std::string> texts;
  for (const auto& entry : names) texts.emplace_back(entry.first.c_str());
  return texts;
}

/// Everything the replaceable tables answer, as one text for each table.
std::vector<std::string> answers(IVRDConfiguration& service) {
  return {testing::PrintToString(codes(service.getProductLocaleList("en"))),
          service.mapProductLocale("xx", 1).c_str(),
          testing::PrintToString(codes(service.getContentLocaleList("en"))),
          service.mapContentLocale("xx", 1).c_str(),
          testing::PrintToString(codes(service.getCurrencies("en"))),
          testing::PrintToString(plain(service.getFonts("")))};
}

const std::vector<std::string> fromDocument = {
    R"({ "de", "en" })", "product", R"({ "fr" })", "content", R"({ "EUR" })", R"({ "Serif" })"};

}  // namespace

// Every source of every table says who it is; each parameter replaces its own table and no other.
TEST(ServiceTables, EachParameterReplacesItsTable) {
  struct {
    const char* parameter;
    std::string value;
    std::size_t table;
    const char* expected;
  } const cases[] = {
      {"supportedProductLocales", items("sv"), 0, R"({ "sv" })"},
      {"productLocaleMap", pairs("*=mapped"), 1, "mapped"},
      {"supportedContentLocales", items("nl nl it"), 2, R"({ "it", "nl" })"},
      {"contentLocaleMap", pairs("*=mapped"), 3, "mapped"},
      {"supportedCurrencies", items("USD SEK"), 4, R"({ "SEK", "USD" })"},
      {"supportedFonts", items("Mono Sans Mono"), 5, R"({ "Mono", "Sans", "Mono" })"},
  };
  const ServiceInstallation installation;
  installation.setLocales(sections);
  const PrivateService loaded;
  const PrivateService bystander;
  ASSERT_EQ(answers(*loaded), fromDocument);
  ASSERT_EQ(answers(*bystander), fromDocument);
  std::vector<std::string> expected = fromDocument;
  for (const auto& row : cases) {
    const PrivateService fresh;  // has loaded nothing when the parameter comes
    initWith(*fresh, queried(row.parameter, row.value));
    initWith(*loaded, queried("unrelated", "x"));
    expected[row.table] = row.expected;
    EXPECT_EQ(answers(*fresh), expected) << row.parameter;
    EXPECT_EQ(answers(*loaded), expected) << row.parameter;
  }
  EXPECT_EQ(answers(*bystander), fromDocument) << "another object keeps its tables";
  const PrivateService unasked;
  unasked->init();
  EXPECT_EQ(answers(*unasked), fromDocument) << "init() replaces nothing";
}

TEST(ServiceTables, AnElementReplacesAsAStreamDoes) {
  const ServiceInstallation installation(parameter(
      "supportedFonts", "<a><item>Mono</item><b><item>Sans</item></b></a>", "opaque='true'"));
  installation.setLocales(sections);
  const PrivateService service;
  ASSERT_EQ(answers(*service), fromDocument);
  VRDIDOM_Element none;
  service->init(none);
  EXPECT_THAT(plain(service->getFonts("")), ElementsAre("Mono", "Sans"));
}

TEST(ServiceTables, WhatIsNoItemIsPassedOver) {
  const ServiceInstallation installation;
  installation.setLocales(sections);
  const PrivateService service;
  initWith(*service, queried("supportedFonts", "<font id='x'/>") +
                         queried("supportedProductLocales", "") +
                         queried("supportedCurrencies", "<p:item xmlns:p='urn:p'>EUR</p:item>") +
                         queried("productLocaleMap",
                                 "<item><key>en</key></item><item><value>v</value></item>"
                                 "<item><x><key>fr</key><value>v</value></x></item>" +
                                     pairs("de=first de=second")));
  EXPECT_THAT(plain(service->getFonts("")), IsEmpty());
  EXPECT_THAT(plain(service->getProductLocaleList("en")), IsEmpty());
  EXPECT_THAT(plain(service->getCurrencies("en")), IsEmpty());
  EXPECT_EQ(service->mapProductLocale("de", 1), "first");
  for (const char* locale : {"en", "fr"}) {
    EXPECT_EQ(stateOf([&] { service->mapProductLocale(locale, 1); }), VRDCFGAPI_LocaleUnmapped);
  }
}

TEST(ServiceTables, TablesAreLoadedEachByItself) {
  const ServiceInstallation installation;  // without a locale document
  const PrivateService service;
  initWith(*service, queried("supportedProductLocales", items("en")) +
                         queried("productLocaleMap", pairs("*=en")));
  EXPECT_EQ(service->validateProductLocale("en"), 1);
  EXPECT_EQ(service->mapProductLocale("xx", 1), "en");
  EXPECT_EQ(stateOf([&] { service->validateContentLocale("en"); }), VRDCFGAPI_LocaleFileMissing);
  EXPECT_EQ(service->validateProductLocale("en"), 1);
}

TEST(ServiceTables, Fonts) {
  const ServiceInstallation installation;
  installation.setLocales(sections);
  const PrivateService service;
  for (const auto& [font, expected] : std::map<const char*, const char*>{
           {"Old", "Serif"}, {"Serif", "New"}, {"old", "old"}, {"Other", "Other"}, {"", ""}}) {
    I18NString text = font;
    EXPECT_EQ(&service->mapFont(text), &text);
    EXPECT_EQ(text, expected) << font;
  }
  service->getFontMappings().clear();
  initWith(*service,
           queried("supportedFonts", items("Mono")) + queried("fontsMap", pairs("Old=Mono")));
  EXPECT_THAT(plain(service->getFonts("en")), ElementsAre("Mono"));
  EXPECT_THAT(plain(service->getFontMappings()),
              ElementsAre(Pair("Old", "Serif"), Pair("Serif", "New")));
}
