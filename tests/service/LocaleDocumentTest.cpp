#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "service/VRDConfigurationImpl.h"
#include "tests/service/Service.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

TEST(LocaleDocument, WhatAListTakesFromIt) {
  struct {
    const char* what;
    const char* document;
    std::vector<std::string> expected;
  } const cases[] = {
      {"order and duplicates stay, values as they are, a missing one empty",
       "<localeConfiguration><supportedFonts><font id='b'/><font id=' a '/><font id='b'/>"
       "<font name='y'/></supportedFonts></localeConfiguration>",
       {"b", " a ", "b", ""}},
      {"the root and the entries may be in any namespace",
       "<p:localeConfiguration xmlns:p='urn:p'><supportedFonts><p:font id='a'/></supportedFonts>"
       "</p:localeConfiguration>",
       {"a"}},
      {"the first section counts, and none with a prefix",
       "<localeConfiguration><p:supportedFonts xmlns:p='urn:p'><font id='p'/></p:supportedFonts>"
       "<supportedFonts><font id='a'/></supportedFonts>"
       "<supportedFonts><font id='b'/></supportedFonts></localeConfiguration>",
       {"a"}},
      {"only children count",
       "<localeConfiguration><x><supportedFonts><font id='a'/></supportedFonts></x>"
       "<supportedFonts><x><font id='b'/></x><Font id='c'/>d<!--e--><font id='f'/>"
       "</supportedFonts></localeConfiguration>",
       {"f"}},
      {"another root", "<x><supportedFonts><font id='a'/></supportedFonts></x>", {}},
      {"no section", "<localeConfiguration/>", {}},
  };
  const ServiceInstallation installation;
  for (const auto& row : cases) {
    installation.setLocaleDocument(row.document);
    EXPECT_EQ(plain(PrivateService()->getFonts("")), row.expected) << row.what;
  }
}

TEST(LocaleDocument, WhatAMapTakesFromIt) {
  const ServiceInstallation installation;
  installation.setLocales(
      "<fontsMap><fontMap key='a' value='1'/><fontMap key='a' value='2'/>"
      "<fontMap value='nameless'/><fontMap key='b'/><x key='c' value='3'/></fontsMap>");
  EXPECT_THAT(plain(PrivateService()->getFontMappings()),
              ElementsAre(Pair("", "nameless"), Pair("a", "1"), Pair("b", "")));
}

// Each operation is once the first to meet the document. Where that fails, all others then answer
// from empty tables; where it does not, from what was read, whatever becomes of the file.
TEST(LocaleDocument, IsReadOnceForEachObject) {
  const std::pair<const char*, std::function<void(IVRDConfiguration&)>> operations[] = {
      {"getFonts", [](auto& service) { service.getFonts(""); }},
      {"getFontMappings", [](auto& service) { service.getFontMappings(); }},
      {"getCurrencies", [](auto& service) { service.getCurrencies("en"); }},
      {"getProductLocaleList", [](auto& service) { service.getProductLocaleList("en"); }},
      {"validateContentLocale", [](auto& service) { service.validateContentLocale("en"); }},
  };
  const std::pair<const char*, long> documents[] = {
      {nullptr, VRDCFGAPI_LocaleFileMissing},
      {"<localeConfiguration>", VRDCFGAPI_LocaleFileParseFailed},
      {"<localeConfiguration><supportedFonts><font id='old'/></supportedFonts>"
       "<supportedCurrencies><currency id='EUR'/></supportedCurrencies></localeConfiguration>",
       VRDCFGAPI_NoError}};
  const ServiceInstallation installation;
  for (const auto& [document, state] : documents) {
    for (const auto& first : operations) {
      std::filesystem::remove(installation / "configuration/zanlocale.xml");
      if (document != nullptr) installation.setLocaleDocument(document);
      const PrivateService service;
      EXPECT_EQ(service->validateProductLocale("malformed"), 0) << "needs no table";
      EXPECT_EQ(stateOf([&] { first.second(*service); }), state) << first.first;

      installation.setLocales(allSections);
      for (const auto& later : operations) {
        EXPECT_EQ(stateOf([&] { later.second(*service); }), 0) << later.first;
      }
      const std::size_t expected = state == VRDCFGAPI_NoError ? 1 : 0;
      EXPECT_EQ(service->getFonts(""), std::list<I18NString>(expected, "old"));
      EXPECT_EQ(service->getCurrencies("en").size(), expected);
      EXPECT_THAT(service->getFontMappings(), IsEmpty());
      EXPECT_EQ(service->validateProductLocale("en"), 0);
    }
  }
}

TEST(LocaleDocument, IsReadIntoADocument) {
  VRDIDOM_Document none;
  EXPECT_EQ(VRDConfigurationImpl::getLocaleDoc(none), VRDCFGAPI_NullDocument);
}
