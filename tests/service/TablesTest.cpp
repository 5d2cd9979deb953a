#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/service/Service.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Everything the tables answer, as one text for each. A font is mapped in one step.
std::vector<std::string> answers(IVRDConfiguration& service) {
  const auto codes = [](const std::map<I18NString, I18NString>& names) {
    std::string text;
    for (const auto& entry : names) text += std::string(entry.first.c_str()) + " ";
    return text;
  };
  const auto mapped = [&](I18NString font) { return service.mapFont(font) + " "; };
  I18NString fonts;
  for (const I18NString& font : service.getFonts("")) fonts += font + " ";
  return {codes(service.getProductLocaleList("en")), service.mapProductLocale("xx", 1).c_str(),
          codes(service.getContentLocaleList("en")), service.mapContentLocale("xx", 1).c_str(),
          codes(service.getCurrencies("en")),        fonts.c_str(),
          (mapped("Old") + mapped("Other")).c_str()};
}

const std::vector<std::string> fromDocument = {"de en ", "product", "fr ",         "content",
                                               "EUR ",   "Serif ",  "Serif Other "};

}  // namespace

// Every source of every table says who it is; each parameter replaces its own table and no other.
TEST(ServiceTables, EachParameterReplacesItsTable) {
  struct {
    const char* parameter;
    std::string value;
    const char* expected;
  } const cases[] = {
      {"supportedProductLocales", items("sv"), "sv "},
      {"productLocaleMap", pairs("*=mapped *=again"), "mapped"},
      {"supportedContentLocales", items("nl nl it"), "it nl "},
      {"contentLocaleMap", pairs("*=mapped"), "mapped"},
      {"supportedCurrencies", items("USD SEK"), "SEK USD "},
      {"supportedFonts", items("Mono Sans Mono"), "Mono Sans Mono "},
  };
  const ServiceInstallation installation;
  installation.setLocales(allSections);
  const PrivateService loaded, bystander;
  EXPECT_EQ(answers(*loaded), fromDocument);
  EXPECT_EQ(answers(*bystander), fromDocument);
  std::vector<std::string> expected = fromDocument;
  for (std::size_t table = 0; table < std::size(cases); ++table) {
    const PrivateService fresh;  // has loaded nothing when the parameter comes
    initWith(*fresh, queried(cases[table].parameter, cases[table].value));
    initWith(*loaded, queried("fontsMap", pairs("Old=of-no-effect")));
    expected[table] = cases[table].expected;
    EXPECT_EQ(answers(*fresh), expected) << cases[table].parameter;
    EXPECT_EQ(answers(*loaded), expected) << cases[table].parameter;
  }
  bystander->init();
  EXPECT_EQ(stateOf([&] { initWith(*bystander, "<"); }), VRDCFGAPI_StreamParseFailed);
  EXPECT_EQ(answers(*bystander), fromDocument) << "neither of these, nor another object's";
  VRDIDOM_Element none;
  bystander->init(none);
  EXPECT_EQ(answers(*bystander), expected) << "an element does as a stream does";
}

TEST(ServiceTables, WhatIsNoItemIsPassedOver) {
  const ServiceInstallation installation;
  installation.setLocales("");
  const PrivateService service;
  initWith(*service, queried("supportedFonts", "<a>" + items("x") + "</a><font id='y'/>") +
                         queried("supportedCurrencies", "<p:item xmlns:p='urn:p'>EUR</p:item>") +
                         queried("productLocaleMap",
                                 "<item><key>en</key></item><item><value>v</value></item>"
                                 "<item><x><key>fr</key><value>v</value></x></item>" +
                                     pairs("de=last fi=")));
  EXPECT_THAT(service->getFonts(""), ElementsAre("x"));
  EXPECT_THAT(service->getCurrencies("en"), IsEmpty());
  EXPECT_EQ(service->mapProductLocale("de", 1), "last");
  EXPECT_EQ(service->mapProductLocale("fi", 1), "") << "an empty value is one all the same";
  for (const char* locale : {"en", "fr"}) {
    EXPECT_EQ(stateOf([&] { service->mapProductLocale(locale, 1); }), VRDCFGAPI_LocaleUnmapped);
  }
}
