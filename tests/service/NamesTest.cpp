#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
    EXPECT_THAT(service->getProductLocaleList(english),
                ElementsAre(Pair("de", "German"), Pair("fr-ca", "French (Canada)"),
                            Pair("zh_TW", "Chinese (Taiwan)")));
  }
  EXPECT_THAT(service->getProductLocaleList("TR_tr.UTF-8"),
              ElementsAre(Pair("de", "Almanca"), Pair("fr-ca", "Fransızca (Kanada)"),
                          Pair("zh_TW", "Çince (Tayvan)")));
  EXPECT_EQ(service->getTimeZones("de").at("Europe/Paris"), "Mitteleuropäische Normalzeit");
  EXPECT_THAT(service->getContentLocaleList("de"), ElementsAre(Pair("tr", "Türkisch")));
  EXPECT_THAT(service->getCurrencies("fr-CA"), ElementsAre(Pair("EUR", "euro"), Pair("QQQ", "QQQ"),
                                                           Pair("USD", "dollar des États-Unis")));
  // Blanks are not the empty text that "en" stands in for: they come to the root locale.
  EXPECT_EQ(service->getCurrencies("  ").at("USD"), "USD");
}
