#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "service/VRDConfigurationImpl.h"
#include "tests/service/Service.h"

// Registered twice with CTest: once more in the Turkish world, with the same results.

namespace {

using Operation = int (IVRDConfiguration::*)(const I18NString&);
using Mapping = I18NString (IVRDConfiguration::*)(const I18NString&, int);

/// The two families, which behave alike but for how much of the server locale they take.
struct Family {
  const char* name;
  const char* supported;
  const char* mapping;
  Operation validate;
  Mapping map;
  const char* serverLocale;  // what "fr_CA.UTF-8" comes to
};

const Family families[] = {
    {"product", "supportedProductLocales", "productLocaleMap",
     &IVRDConfiguration::validateProductLocale, &IVRDConfiguration::mapProductLocale, "fr"},
    {"content", "supportedContentLocales", "contentLocaleMap",
     &IVRDConfiguration::validateContentLocale, &IVRDConfiguration::mapContentLocale, "fr-ca"},
};

std::string section(const char* name, const std::string& entries) {
  return "<" + std::string(name) + ">" + entries + "</" + name + ">";
}

std::string supported(const std::string& codes) {
  std::istringstream words(codes);
  std::string entries;
  for (std::string code; words >> code;) entries += "<locale id='" + code + "'/>";
  return entries;
}

/// A mapping in which each key has itself as its value, so that a result tells which key was found.
std::string mapping(const std::string& keys) {
  std::istringstream words(keys);
  std::string entries;
  for (std::string key; words >> key;) {
    entries += "<localeMap key='" + key + "' value='" + key + "'/>";
  }
  return entries;
}

/// Runs @p work for each family on a service whose tables of that family alone are filled.
template <class Work>
void forEachFamily(const std::string& codes, const std::string& keys, Work work,
                   const std::string& parameters = "") {
  const ServiceInstallation installation(parameters);
  for (const Family& family : families) {
    SCOPED_TRACE(family.name);
    installation.setLocales(section(family.supported, supported(codes)) +
                            section(family.mapping, mapping(keys)));
    const PrivateService service;
    work(*service, family);
  }
}

}  // namespace

TEST(ServiceLocales, AreNormalised) {
  struct {
    const char* given;
    const char* canonical;
  } const cases[] = {
      {" EN_us ", "en-us"},    {"fr_CA_EURO", "fr-ca"},
      {"zh-Hant-TW", "zh-ha"}, {"", ""},
      {" Fr_ca ", "fr-ca"},    {"fr-CA-x", "fr-ca"},
      {"a_b_c", "a-b-c"},      {"ab_cd_ef", "ab-cd"},
      {"   en-us", "en-us"},   {"   ", ""},
      {"\tEN", "\ten"},        {"_____", "-----"},
      {"FI-IN", "fi-in"},      {"*", "*"},
      {"ÄÖÜÄÖÜ", "äöüäö"},     {"abcd__", "abcd-"},
      {" e n ", "e n"},        {"I\xFF_", "i\xFF-"},
  };
  const ServiceInstallation installation;
  const PrivateService service;
  for (const auto& row : cases) {
    EXPECT_STREQ(service->normalizeLocale(row.given).c_str(), row.canonical) << row.given;
  }
}

TEST(ServiceLocales, HaveOneShape) {
  for (const char* locale : {"en", "en-us", "zz", "in-id"}) {
    EXPECT_EQ(VRDConfigurationImpl::validateLocaleHelper(locale), 1) << locale;
  }
  for (const char* locale :
       {"",       "e",     "EN", "eN", "en_us", "en-", "eng",  "fr-*", "en-u1", "en-US",
        "en-usa", "-en-u", "{{", "``", "é",     "éé",  "en-é", "*",    "en us", "\xFF\xFF"}) {
    EXPECT_EQ(VRDConfigurationImpl::validateLocaleHelper(locale), 0) << locale;
  }
}

TEST(ServiceLocales, AreSupportedIfListed) {
  struct {
    const char* listed;
    const char* locale;
    int supported;
  } const cases[] = {
      {"en de-at", "de-at", 1},
      {"en de-at", "de", 0},
      {"EN", "en", 0},
      {"", "en", 0},
      // Old codes are looked for under their new names, and not the other way round.
      {"he", "iw", 1},
      {"iw", "iw", 0},
      {"iw", "he", 0},
      {"he", "he", 1},
      {"id", "in", 1},
      {"in", "in", 0},
      {"in", "id", 0},
      {"id", "id", 1},
      {"he-il", "iw-il", 1},
      {"iw-il", "iw-il", 0},
      {"id-id", "in-id", 1},
      {"in-id", "in-id", 0},
      {"iw-us", "iw-us", 1},
  };
  for (const auto& row : cases) {
    forEachFamily(row.listed, "", [&](IVRDConfiguration& service, const Family& family) {
      EXPECT_EQ((service.*family.validate)(row.locale), row.supported)
          << row.locale << " in " << row.listed;
    });
  }
}

// For each locale: the keys that are looked up, in their order. Only the first that is there
// counts, so the table is given all of them at first and loses them one by one from the front.
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
      {"in-ID", 1, {"in-id", "in-*", "*"}},
      {"en_US.UTF-8", 1, {"en-us", "en-*", "*"}},
      {"chi", 1, {"chi", "chi-*", "chi*", "*"}},
      {"EN", 0, {"EN", "EN-*", "*"}},
      {"en_US", 0, {"en_US", "en_US-*", "en_*", "*"}},
      {" FI ", 1, {"fi", "fi-*", "*"}},
  };
  const char* const decoys = " e - -* e-* EN-us FI fi* en* en_us";
  for (const auto& row : cases) {
    for (std::size_t first = 0; first < row.keys.size(); ++first) {
      std::string keys;
      for (std::size_t key = first; key < row.keys.size(); ++key) keys += row.keys[key] + " ";
      forEachFamily("", keys + decoys, [&](IVRDConfiguration& service, const Family& family) {
        EXPECT_EQ((service.*family.map)(row.locale, row.normalize), row.keys[first].c_str())
            << row.locale << " in " << keys;
      });
    }
  }
}

TEST(ServiceLocales, WithoutAMappingTheServerLocaleStandsIn) {
  forEachFamily(
      "", "",
      [](IVRDConfiguration& service, const Family& family) {
        EXPECT_EQ((service.*family.map)("de", 1), family.serverLocale);
      },
      parameter("serverLocale", " fr_CA.UTF-8"));
  // Anything in the table goes before it, also an empty text.
  const ServiceInstallation installation;
  installation.setLocales("<productLocaleMap><localeMap key='*'/></productLocaleMap>");
  const PrivateService service;
  EXPECT_EQ(service->mapProductLocale("de", 1), "");
}

TEST(ServiceLocales, WhatCannotBeMappedIsTold) {
  const auto expectUnmapped = [](IVRDConfiguration& service, const Family& family,
                                 const char* locale) {
    try {
      (service.*family.map)(locale, 1);
      ADD_FAILURE() << locale;
    } catch (const VRDConfigurationException& error) {
      EXPECT_EQ(error.getCode(), VRDCFGAPI_LocaleUnmapped);
      ASSERT_EQ(error.getMessageCount(), 1U);
      const auto& message = dynamic_cast<const VRDMessage&>(error.getMessageAt(0));
      EXPECT_EQ(message.getNumber(), 0x610B54C9U);
      ASSERT_EQ(message.getParmCount(), 1U);
      EXPECT_EQ(message.getParmAt(0).getText(), locale) << "as it was given";
    }
  };
  // Too short to be a locale: not even the catch-all is asked.
  forEachFamily("", "* x", [&](IVRDConfiguration& service, const Family& family) {
    for (const char* locale : {"", "x", "*", " X "}) expectUnmapped(service, family, locale);
  });
  forEachFamily("", "", [&](IVRDConfiguration& service, const Family& family) {
    expectUnmapped(service, family, "De_AT");
  });
}
