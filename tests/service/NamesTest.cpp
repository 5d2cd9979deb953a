#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/core/I18NTimeZone.h"
#include "tests/service/Service.h"

// Registered twice with CTest: once more in the Turkish world, with the same results.

using testing::ElementsAre;
using testing::Pair;

namespace {

const char* const sections =
    "<supportedProductLocales><locale id='fr-ca'/><locale id='de'/><locale id='de'/>"
    "<locale id='zh_TW'/></supportedProductLocales>"
    "<supportedContentLocales><locale id='tr'/></supportedContentLocales>"
    "<supportedCurrencies><currency id='USD'/><currency id='EUR'/><currency id='QQQ'/>"
    "</supportedCurrencies>";

using Names = std::map<std::string, std::string>;

}  // namespace

TEST(ServiceNames, AreInTheLanguageAskedFor) {
  const ServiceInstallation installation;
  installation.setLocales(sections);
  const PrivateService service;
  const Names english{
      {"de", "German"}, {"fr-ca", "French (Canada)"}, {"zh_TW", "Chinese (Taiwan)"}};
  EXPECT_EQ(plain(service->getProductLocaleList("en")), english);
  EXPECT_EQ(plain(service->getProductLocaleList("")), english);
  EXPECT_EQ(plain(service->getProductLocaleList("xx")), english) << "nobody knows the language";
  EXPECT_THAT(plain(service->getProductLocaleList("TR_tr.UTF-8")),
              ElementsAre(Pair("de", "Almanca"), Pair("fr-ca", "Fransızca (Kanada)"),
                          Pair("zh_TW", "Çince (Tayvan)")));
  EXPECT_THAT(plain(service->getContentLocaleList("de")), ElementsAre(Pair("tr", "Türkisch")));
  EXPECT_THAT(
      plain(service->getCurrencies("fr-CA")),
      ElementsAre(Pair("EUR", "euro"), Pair("QQQ", "QQQ"), Pair("USD", "dollar des États-Unis")));
  // Blanks are not the empty text that "en" stands in for: they come to the root locale.
  EXPECT_EQ(plain(service->getCurrencies("  ")).at("USD"), "USD");
  EXPECT_EQ(plain(service->getCurrencies("")).at("USD"), "US Dollar");
}

TEST(ServiceNames, TimeZonesNeedNoTable) {
  const ServiceInstallation installation;  // without a locale document
  const PrivateService service;
  const Names german = plain(service->getTimeZones("de"));
  EXPECT_EQ(german.at("Europe/Paris"), "Mitteleuropäische Normalzeit");
  int count = 0;
  I18NTimeZone::getAvailableTimeZones(count);
  EXPECT_EQ(german.size(), static_cast<std::size_t>(count));
  initWith(*service, queried("supportedTimeZones", items("UTC")));
  EXPECT_EQ(plain(service->getTimeZones("de")), german);
}
