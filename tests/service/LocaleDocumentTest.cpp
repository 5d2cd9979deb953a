#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "tests/service/Service.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

/// The fonts, which are a list, and their mappings, a map, that a locale document gives.
struct Fonts {
  std::vector<std::string> list;
  std::map<std::string, std::string> mappings;
};

Fonts fontsOf(IVRDConfiguration& service) {
  return {plain(service.getFonts("")), plain(service.getFontMappings())};
}

Fonts fontsIn(const std::string& document) {
  const ServiceInstallation installation;
  installation.setLocaleDocument(document);
  const PrivateService service;
  return fontsOf(*service);
}

}  // namespace

TEST(LocaleDocument, WhatAListTakesFromIt) {
  struct {
    const char* what;
    const char* document;
    std::vector<std::string> expected;
  } const cases[] = {
      {"order and duplicates stay",
       "<localeConfiguration><supportedFonts><font id='b'/><font id='a'/><font id='b'/>"
       "</supportedFonts></localeConfiguration>",
       {"b", "a", "b"}},
      {"values are taken as they are; a missing one is empty",
       "<localeConfiguration><supportedFonts><font id=' x '/><font name='y'/></supportedFonts>"
       "</localeConfiguration>",
       {" x ", ""}},
      {"the root and the entries may be in any namespace",
       "<p:localeConfiguration xmlns:p='urn:p'><supportedFonts><p:font id='a'/></supportedFonts>"
       "</p:localeConfiguration>",
       {"a"}},
      {"a section may not have a prefix",
       "<localeConfiguration xmlns:p='urn:p'><p:supportedFonts><font id='a'/></p:supportedFonts>"
       "</localeConfiguration>",
       {}},
      {"the first section counts",
       "<localeConfiguration><supportedFonts><font id='a'/></supportedFonts>"
       "<supportedFonts><font id='b'/></supportedFonts></localeConfiguration>",
       {"a"}},
      {"only children count",
       "<localeConfiguration><x><supportedFonts><font id='a'/></supportedFonts></x>"
       "<supportedFonts><x><font id='b'/></x><Font id='c'/>d<!--e--><font id='f'/>"
       "</supportedFonts></localeConfiguration>",
       {"f"}},
      {"another root",
       "<configuration><supportedFonts><font id='a'/></supportedFonts></configuration>",
       {}},
      {"no section", "<localeConfiguration/>", {}},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(fontsIn(row.document).list, row.expected) << row.what;
  }
}

TEST(LocaleDocument, WhatAMapTakesFromIt) {
  const Fonts fonts = fontsIn(
      "<localeConfiguration><fontsMap><fontMap key='a' value='1'/><fontMap key='a' value='2'/>"
      "<fontMap value='nameless'/><fontMap key='b'/><x key='c' value='3'/></fontsMap>"
      "</localeConfiguration>");
  EXPECT_THAT(fonts.mappings, ElementsAre(Pair("", "nameless"), Pair("a", "1"), Pair("b", "")));
}

TEST(LocaleDocument, IsReadOnceForEachObject) {
  const ServiceInstallation installation;
  installation.setLocales(
      "<supportedFonts><font id='old'/></supportedFonts>"
      "<supportedCurrencies><currency id='EUR'/></supportedCurrencies>");
  const PrivateService service;
  ASSERT_THAT(plain(service->getFonts("")), ElementsAre("old"));

  installation.setLocales("<supportedFonts><font id='new'/></supportedFonts>");
  EXPECT_THAT(plain(service->getCurrencies("en")), ElementsAre(Pair("EUR", "Euro")));
  EXPECT_THAT(plain(service->getFonts("")), ElementsAre("old"));
  const PrivateService later;
  EXPECT_THAT(plain(later->getFonts("")), ElementsAre("new"));
}

// Each operation is once the first to meet the failure; all others then answer from empty tables.
TEST(LocaleDocument, AFailureIsToldOnce) {
  const std::pair<const char*, std::function<void(IVRDConfiguration&)>> operations[] = {
      {"getFonts", [](auto& service) { service.getFonts(""); }},
      {"getFontMappings", [](auto& service) { service.getFontMappings(); }},
      {"getCurrencies", [](auto& service) { service.getCurrencies("en"); }},
      {"getProductLocaleList", [](auto& service) { service.getProductLocaleList("en"); }},
      {"validateContentLocale", [](auto& service) { service.validateContentLocale("en"); }},
  };
  for (const bool missing : {true, false}) {
    const ServiceInstallation installation;
    if (!missing) installation.setLocaleDocument("<localeConfiguration>");
    const long expected = missing ? VRDCFGAPI_LocaleFileMissing : VRDCFGAPI_LocaleFileParseFailed;
    for (const auto& first : operations) {
      const PrivateService service;
      EXPECT_EQ(stateOf([&] { first.second(*service); }), expected) << first.first;
      installation.setLocales("<supportedFonts><font id='mended'/></supportedFonts>");
      for (const auto& later : operations) {
        EXPECT_EQ(stateOf([&] { later.second(*service); }), 0) << later.first;
      }
      EXPECT_THAT(fontsOf(*service).list, IsEmpty());
      EXPECT_THAT(plain(service->getCurrencies("en")), IsEmpty());
      EXPECT_EQ(service->validateProductLocale("en"), 0);
      if (missing) {
        std::filesystem::remove(installation / "configuration/zanlocale.xml");
      } else {
        installation.setLocaleDocument("<localeConfiguration>");
      }
    }
  }
}
