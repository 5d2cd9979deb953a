#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "tests/service/Service.h"

using testing::IsEmpty;

TEST(LocaleDocument, WhatTheTablesTakeFromIt) {
  struct {
    const char* what;
    const char* document;
    std::list<I18NString> fonts;
    std::map<I18NString, I18NString> mappings = {};
  } const cases[] = {
      {"a list keeps order and duplicates, values as they are, a missing one empty",
       "<localeConfiguration><supportedFonts><font id='b'/><font id=' a '/><font id='b'/>"
       "<font name='y'/></supportedFonts></localeConfiguration>",
       {"b", " a ", "b", ""}},
      {"a map keeps the first of a key, a missing key or value empty",
       "<localeConfiguration><fontsMap><fontMap key='a' value='1'/><fontMap key='a' value='2'/>"
       "<fontMap value='nameless'/><fontMap key='b'/></fontsMap></localeConfiguration>",
       {},
       {{"", "nameless"}, {"a", "1"}, {"b", ""}}},
      {"the root and the entries may be in any namespace",
       "<p:localeConfiguration xmlns:p='urn:p'><supportedFonts><p:font id='a'/></supportedFonts>"
       "</p:localeConfiguration>",
       {"a"}},
      {"only the first section counts, none with a prefix, and only children of each",
       "<localeConfiguration><p:supportedFonts xmlns:p='urn:p'><font id='p'/></p:supportedFonts>"
       "<x><supportedFonts><font id='a'/></supportedFonts></x>"
       "<supportedFonts><x><font id='b'/></x><Font id='c'/>d<!--e--><font id='f'/>"
       "</supportedFonts><supportedFonts><font id='g'/></supportedFonts></localeConfiguration>",
       {"f"}},
      {"another root", "<x><supportedFonts><font id='a'/></supportedFonts></x>", {}},
      {"no section", "<localeConfiguration/>", {}},
  };
  const ServiceInstallation installation;
  for (const auto& row : cases) {
    installation.setLocaleDocument(row.document);
    const PrivateService service;
    EXPECT_EQ(service->getFonts(""), row.fonts) << row.what;
    EXPECT_EQ(service->getFontMappings(), row.mappings) << row.what;
  }
}

// Each operation is once the first to meet the document. Where that fails, all others then answer
// from empty tables; where it does not, from what was read, whatever becomes of the file.
TEST(LocaleDocument, IsReadOnceForEachObject) {
  const std::function<void(IVRDConfiguration&)> operations[] = {
      [](auto& service) { service.getFonts(""); },
      [](auto& service) { service.getCurrencies("en"); },
      [](auto& service) { service.getProductLocaleList("en"); },
      [](auto& service) { service.validateContentLocale("en"); },
  };
  const std::pair<const char*, long> documents[] = {
      {nullptr, VRDCFGAPI_LocaleFileMissing},
      {"<localeConfiguration>", VRDCFGAPI_LocaleFileParseFailed},
      {"<localeConfiguration><supportedFonts><font id='old'/></supportedFonts>"
       "</localeConfiguration>",
       VRDCFGAPI_NoError}};
  const ServiceInstallation installation;
  for (const auto& [document, state] : documents) {
    for (const auto& first : operations) {
      SCOPED_TRACE(&first - operations);
      std::filesystem::remove(installation / "configuration/zanlocale.xml");
      if (document != nullptr) installation.setLocaleDocument(document);
      const PrivateService service;
      EXPECT_EQ(service->validateProductLocale("malformed"), 0) << "needs no table";
      EXPECT_EQ(stateOf([&] { first(*service); }), state);

      installation.setLocales(allSections);
      for (const auto& later : operations) EXPECT_EQ(stateOf([&] { later(*service); }), 0);
      const std::size_t expected = state == VRDCFGAPI_NoError ? 1 : 0;
      EXPECT_EQ(service->getFonts(""), std::list<I18NString>(expected, "old"));
      EXPECT_THAT(service->getCurrencies("en"), IsEmpty());
      EXPECT_EQ(service->validateProductLocale("en"), 0);
    }
  }
}
