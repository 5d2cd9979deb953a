#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unicode/locid.h>
#include <unicode/timezone.h>

#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "platform/core/I18NLocale.h"
#include "platform/core/I18NNumericFormat.h"
#include "platform/core/I18NTimeZone.h"

// Registered twice with CTest: once more in the Turkish world, where "I" and "i" are two letters
// and which ICU would show what it does not know in. No expectation here depends on it.

namespace {

std::string nameOf(const char* code, const char* inLocale) {
  I18NLocale display(inLocale);
  I18NString name = "left over";
  I18NLocale(code).getDisplayName(name, display);
  return name.c_str();
}

std::string lower(const char* text, const char* locale = nullptr) {
  I18NString changed = text;
  I18NLocale(locale).toLower(changed);
  return changed.c_str();
}

std::string zoneName(const char* id, const char* inLocale) {
  I18NString name = "left over";
  I18NTimeZone(id).getDisplayName(name, I18NLocale(inLocale));
  return name.c_str();
}

std::string currencyName(const char* code, const char* inLocale) {
  const I18NLocale display(inLocale);
  return I18NNumericFormat::getCurrencyDescription(code, &display).c_str();
}

/// What ICU says by its plain, slow way.
std::string icuZoneName(const std::string& id, const char* locale) {
  const std::unique_ptr<icu::TimeZone> zone(
      icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(id)));
  icu::UnicodeString name;
  std::string text;
  zone->getDisplayName(false, icu::TimeZone::LONG, icu::Locale(locale), name).toUTF8String(text);
  return text;
}

std::vector<std::string> allZoneIds() {
  int count = 0;
  const I18NTimeZone* zones = I18NTimeZone::getAvailableTimeZones(count);
  std::vector<std::string> ids;
  I18NString id;
  for (int index = 0; index < count; ++index) {
    zones[index].getID(id);
    ids.emplace_back(id.c_str());
  }
  return ids;
}

}  // namespace

TEST(Locale, LowersByTheRulesForAllLanguagesUnlessOneIsNamed) {
  struct {
    const char* text;
    const char* locale;
    const char* expected;
  } const cases[] = {
      {"FI-in", nullptr, "fi-in"},
      {"FI", "tr_TR", "f\u0131"},
      {"FI", "tr-TR", "f\u0131"},
      {"FI", "nobody knows this", "fi"},
      {"ÄÖÜ İ", nullptr, "äöü i\u0307"},
      {"A\xFF"
       "B\xC3",
       nullptr,
       "a\xFF"
       "b\xC3"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(lower(row.text, row.locale), row.expected)
        << row.text << " in " << (row.locale ? row.locale : "null");
  }
}

TEST(Locale, ComparesWithoutRegardToCase) {
  struct {
    const char* a;
    const char* b;
    const char* locale;
    bool equal;
  } const cases[] = {
      {"IN-ID", "in-id", nullptr, true}, {"iw", "il", nullptr, false},
      {"", "a", nullptr, false},         {"STRASSE", "straße", nullptr, true},
      {"FI", "fi", "tr", false},         {"FI", "f\u0131", "tr", true},
      {"\xFF", "\xFE", nullptr, false},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(I18NLocale(row.locale).compareIgnoreCase(row.a, row.b) == 0, row.equal)
        << row.a << " and " << row.b;
  }
}

TEST(Locale, ShowsNamesInTheLanguageAskedFor) {
  struct {
    const char* code;
    const char* inLocale;
    const char* expected;
  } const cases[] = {
      {"fr-ca", "en", "French (Canada)"},
      {"fr-ca", "de_DE", "Französisch (Kanada)"},
      {"fr-ca", "tr", "Fransızca (Kanada)"},
      {"fr-ca", "en_US.UTF-8", "French (Canada)"},
      // A language that nobody knows is shown in English, and so is none at all.
      {"fr-ca", "xx", "French (Canada)"},
      {"fr-ca", "../../etc", "French (Canada)"},
      {"fr-ca", nullptr, "French (Canada)"},
      // The root locale shows codes.
      {"fr-ca", "", "fr (CA)"},
      {"", "en", "Unknown language"},
      {nullptr, "en", ""},
      // What is no locale stays as it is.
      {"bogus id!!", "en", "bogus id!!"},
      {"../../etc", "en", "../../etc"},
      {"zh-ha", "en", "Chinese (HA)"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(nameOf(row.code, row.inLocale), row.expected)
        << (row.code ? row.code : "null") << " in " << (row.inLocale ? row.inLocale : "null");
  }
}

TEST(Locale, TakesANameOfAnyLength) {
  for (const std::size_t length : {156U, 157U, 100000U}) {
    const std::string name(length, 'a');
    EXPECT_EQ(nameOf("de", name.c_str()), "German") << length;
    EXPECT_FALSE(nameOf(name.c_str(), "en").empty()) << length;
  }
}

TEST(TimeZone, ListsEveryZoneOnce) {
  int count = 0;
  const I18NTimeZone* zones = I18NTimeZone::getAvailableTimeZones(count);
  int again = 0;
  EXPECT_EQ(I18NTimeZone::getAvailableTimeZones(again), zones);
  EXPECT_EQ(again, count);

  const std::vector<std::string> ids = allZoneIds();
  EXPECT_THAT(ids, testing::IsSupersetOf({"Europe/Paris", "Asia/Kolkata", "UTC", "US/Pacific"}));
  EXPECT_EQ(std::set<std::string>(ids.begin(), ids.end()).size(), ids.size());
}

// The names come by a faster way than ICU's plain one; the text must not show it.
TEST(TimeZone, NamesEveryZoneAsThePlainWayDoes) {
  const std::vector<std::string> ids = allZoneIds();
  int count = 0;
  const icu::Locale* locales = icu::Locale::getAvailableLocales(count);
  int languages = 0;
  for (int index = 0; index < count; ++index) {
    const char* locale = locales[index].getName();
    if (*locales[index].getCountry() != '\0') continue;
    ++languages;
    const I18NLocale display(locale);
    for (const std::string& id : ids) {
      I18NString name;
      I18NTimeZone(I18NString(id)).getDisplayName(name, display);
      ASSERT_EQ(name.c_str(), icuZoneName(id, locale)) << id << " in " << locale;
    }
  }
  EXPECT_GT(languages, 100);
}

TEST(TimeZone, TakesAnyIdAndLanguage) {
  EXPECT_EQ(zoneName("Europe/Paris", "en"), "Central European Standard Time");
  EXPECT_EQ(zoneName("Europe/Paris", "xx"), "Central European Standard Time");
  for (const char* id : {"", "No/Such", "europe/paris", "\xFF"}) {
    EXPECT_EQ(zoneName(id, "en"), zoneName("Etc/Unknown", "en")) << id;
  }
  EXPECT_EQ(zoneName("GMT+5", "en"), "GMT+05:00");
  I18NString id;
  I18NTimeZone("No/Such").getID(id);
  EXPECT_EQ(id, "No/Such");
}

TEST(Currency, NamesACodeOrGivesItBack) {
  struct {
    const char* code;
    const char* inLocale;
    const char* expected;
  } const cases[] = {
      {"eur", "fr_CA", "euro"}, {"USD", "de", "US-Dollar"},   {"USD", "xx", "US Dollar"},
      {"USD", "", "USD"},       {"DEM", "en", "German Mark"}, {"qqq", "en", "qqq"},
      {"", "en", ""},           {"USDX", "en", "USDX"},       {"€€€", "en", "€€€"},
      {"\xFF", "en", "\xFF"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(currencyName(row.code, row.inLocale), row.expected)
        << row.code << " in " << row.inLocale;
  }
  EXPECT_EQ(I18NNumericFormat::getCurrencyDescription("USD", nullptr), "US Dollar");
}

// One locale object, and what it makes at first need, shared by threads that all come at once.
TEST(Locale, IsSharedByThreads) {
  I18NLocale display("sv");
  const I18NLocale root(nullptr);
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 8; ++thread) {
    threads.emplace_back([&display, &root] {
      for (int round = 0; round < 100; ++round) {
        I18NString name;
        I18NLocale("de").getDisplayName(name, display);
        EXPECT_EQ(name, "tyska");
        I18NTimeZone("Europe/Paris").getDisplayName(name, display);
        EXPECT_EQ(name, "centraleuropeisk normaltid");
        EXPECT_EQ(I18NNumericFormat::getCurrencyDescription("USD", &display), "amerikansk dollar");
        I18NString text = "FI";
        root.toLower(text);
        EXPECT_EQ(text, "fi");
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}
