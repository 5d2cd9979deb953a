#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "service/VRDConfigurationImpl.h"
#include "tests/service/Service.h"

// Registered twice with CTest: once more in the Turkish world, with the same results.

using testing::ElementsAre;
using testing::Pair;

TEST(ServiceNames, AreInTheLanguageAskedFor) {
  const ServiceInstallation installation;
  installation.setLocales(
      "<supportedProductLocales><locale id='fr-ca'/><locale id='de'/><locale id='de'/>"
      "<locale id='zh_TW'/></supportedProductLocales>"
      "<supportedContentLocales><locale id='tr'/></supportedContentLocales>"
      "<supportedCurrencies><currency id='USD'/><currency id='EUR'/><currency id='QQQ'/>"
      "</supportedCurrencies>");
  const PrivateService service;
  for (const char* english : {"en", "", "xx"}) {  // nobody knows the last
    EXPECT_THAT(plain(service->getProductLocaleList(english)),
                ElementsAre(Pair("de", "German"), Pair("fr-ca", "French (Canada)"),
                            Pair("zh_TW", "Chinese (Taiwan)")));
  }
  EXPECT_THAT(plain(service->getProductLocaleList("TR_tr.UTF-8")),
              ElementsAre(Pair("de", "Almanca"), Pair("fr-ca", "Fransızca (Kanada)"),
                          Pair("zh_TW", "Çince (Tayvan)")));
  EXPECT_THAT(plain(service->getContentLocaleList("de")), ElementsAre(Pair("tr", "Türkisch")));
  EXPECT_THAT(
      plain(service->getCurrencies("fr-CA")),
      ElementsAre(Pair("EUR", "euro"), Pair("QQQ", "QQQ"), Pair("USD", "dollar des États-Unis")));
  // Blanks are not the empty text that "en" stands in for: they come to the root locale.
  EXPECT_EQ(plain(service->getCurrencies("  ")).at("USD"), "USD");
}

TEST(ServiceNames, TimeZonesNeedNoTable) {
  const ServiceInstallation installation;  // without a locale document
  const PrivateService service;
  const std::map<std::string, std::string> german = plain(service->getTimeZones("de"));
  EXPECT_EQ(german.at("Europe/Paris"), "Mitteleuropäische Normalzeit");
  initWith(*service, queried("supportedTimeZones", items("UTC")));
  EXPECT_EQ(plain(service->getTimeZones("de")), german);
}

TEST(ServiceNames, CodesOfAnUnknownKindHaveNone) {
  VRDConfigurationImpl::NameCache cache;
  const std::list<I18NString> codes{"en"};
  const auto kind = static_cast<VRDConfigurationImpl::CodeKind>(4);
  EXPECT_TRUE(VRDConfigurationImpl::getListFromMapHelper("en", &cache, &codes, kind)->empty());
}
