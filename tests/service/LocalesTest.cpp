#include <gtest/gtest.h>

#include "tests/service/Service.h"

// Registered twice with CTest: once more in the Turkish world, with the same results.

namespace {

/// The two families, which behave alike but for how much of the server locale they take.
struct Family {
  const char* supported;
  const char* mapping;
  int (IVRDConfiguration::*validate)(const I18NString&);
  I18NString (IVRDConfiguration::*map)(const I18NString&, int);
  const char* serverLocale;  // what "fr_CA.UTF-8" comes to
};

const Family families[] = {
    {"supportedProductLocales", "productLocaleMap", &IVRDConfiguration::validateProductLocale,
     &IVRDConfiguration::mapProductLocale, "fr"},
    {"supportedContentLocales", "contentLocaleMap", &IVRDConfiguration::validateContentLocale,
     &IVRDConfiguration::mapContentLocale, "fr-ca"},
};

/// A mapping in which each key has itself as its value, so that a result tells which key was found.
std::string mapping(const std::string& keys) {
  return pairs(std::regex_replace(keys, std::regex("\\S+"), "$&=$&"));
}

/// Runs @p work for each family on a service with tables of these codes and keys.
template <class Work>
void forEachFamily(const std::string& codes, const std::string& keys, Work work,
                   const std::string& parameters = "") {
  for (const Family& family : families) {
    SCOPED_TRACE(family.mapping);
    const ServiceInstallation installation(parameters);
    const PrivateService service;
    initWith(*service,
             queried(family.supported, items(codes)) + queried(family.mapping, mapping(keys)));
    work(*service, family);
  }
}

}  // namespace

TEST(ServiceLocales, AreNormalised) {
  const std::pair<const char*, const char*> cases[] = {
      {" EN_us ", "en-us"},  {"fr_CA_EURO", "fr-ca"}, {"zh-Hant-TW", "zh-ha"}, {"", ""},
      {" Fr_ca ", "fr-ca"},  {"fr-CA-x", "fr-ca"},    {"a_b_c", "a-b-c"},      {"   ", ""},
      {"ab_cd_ef", "ab-cd"}, {"   en-us", "en-us"},   {"\tEN", "\ten"},        {"*", "*"},
      {"FI-IN", "fi-in"},    {"ÄÖÜÄÖÜ", "äöüäö"},     {" e n ", "e n"},        {"I\xFF_", "i\xFF-"},
  };
  const ServiceInstallation installation;
  const PrivateService service;
  for (const auto& [given, canonical] : cases) {
    EXPECT_STREQ(service->normalizeLocale(given).c_str(), canonical) << given;
  }
}

// Old codes are looked for under their new names, and not the other way round; what has not the
// shape of a locale is not looked for.
TEST(ServiceLocales, AreSupportedIfListed) {
  struct {
    const char* listed;
    std::vector<const char*> supported, others;
  } const cases[] = {
      {"en de-at EN-us iw-us", {"en", "de-at", "iw-us"}, {"de", "en-us", "zz"}},
      {"he id-id", {"iw", "he", "in-id", "id-id"}, {"in", "id", "iw-il", "he-il"}},
      {"id he-il", {"in", "id", "iw-il", "he-il"}, {"iw", "he", "in-id", "id-id"}},
      {"in iw in-id iw-il", {}, {"in", "id", "iw", "he", "in-id", "id-id", "iw-il", "he-il"}},
      {"e EN eN en_us en- eng fr-* en-u1 en-US en-usa -en-u {{ `` é éé *",
       {},
       {"", "e", "EN", "eN", "en_us", "en-", "eng", "fr-*", "en-u1", "en-US", "en-usa", "-en-u",
        "{{", "``", "é", "éé", "*", "en us", "\xFF\xFF"}},
  };
  for (const auto& row : cases) {
    forEachFamily(row.listed, "", [&](IVRDConfiguration& service, const Family& family) {
      const auto answer = [&](const char* locale) { return (service.*family.validate)(locale); };
      for (const char* locale : row.supported) EXPECT_EQ(answer(locale), 1) << locale;
      for (const char* locale : row.others) EXPECT_EQ(answer(locale), 0) << locale;
    });
  }
}

// For each locale: the keys that are looked up, in their order. Only the first that is there
// counts, so the table is given all of them at first and loses them one by one from the front. When
// none is left, the server locale stands in.
TEST(ServiceLocales, AreMappedByTheClosestKey) {
  struct {
    const char* locale;
    int normalize;
    std::vector<std::string> keys;
  } const cases[] = {
      {"en-CA", 1, {"en-ca", "en-*", "*"}},
      {"fr", 1, {"fr", "fr-*", "*"}},
      {"fr-*", 1, {"fr-*", "*"}},
      {"iw", 1, {"iw", "iw-*", "*"}},
      {"en_US.UTF-8", 1, {"en-us", "en-*", "*"}},
      {"chi", 1, {"chi", "chi-*", "chi*", "*"}},
      {"EN", 0, {"EN", "EN-*", "*"}},
      {"en_US", 0, {"en_US", "en_US-*", "en_*", "*"}},
      {" FI ", 1, {"fi", "fi-*", "*"}},
  };
  for (const auto& row : cases) {
    for (auto first = row.keys.begin();; ++first) {
      std::string keys = "e - -* e-* EN-us FI fi* en* en_us";
      for (auto key = first; key != row.keys.end(); ++key) keys += " " + *key;
      const auto expectFirst = [&](IVRDConfiguration& service, const Family& family) {
        EXPECT_EQ((service.*family.map)(row.locale, row.normalize),
                  first == row.keys.end() ? family.serverLocale : first->c_str())
            << row.locale << " in " << keys;
      };
      forEachFamily("", keys, expectFirst, parameter("serverLocale", " fr_CA.UTF-8"));
      if (first == row.keys.end()) break;
    }
  }
}

// What is too short to be a locale is not looked for: neither the catch-all nor the server locale
// stands in.
TEST(ServiceLocales, WhatCannotBeMappedIsToldAsItWasGiven) {
  struct {
    const char *locale, *keys, *serverLocale;
  } const cases[] = {
      {"", "* x", "fr"}, {"*", "* x", "fr"}, {" X ", "* x", "fr"}, {"De_AT", "en", " f "}};
  for (const auto& row : cases) {
    const auto expectUnmapped = [&](IVRDConfiguration& service, const Family& family) {
      try {
        (service.*family.map)(row.locale, 1);
        ADD_FAILURE() << row.locale;
      } catch (const VRDConfigurationException& error) {
        EXPECT_EQ(error.getCode(), VRDCFGAPI_LocaleUnmapped);
        const auto& message = dynamic_cast<const VRDMessage&>(error.getMessageAt(0));
        EXPECT_EQ(message.getNumber(), 0x610B54C9U);
        EXPECT_EQ(message.getParmAt(0).getText(), row.locale);
      }
    };
    forEachFamily("", row.keys, expectUnmapped, parameter("serverLocale", row.serverLocale));
  }
}
