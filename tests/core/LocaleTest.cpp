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

/// What a text or code comes to in a locale; null stands for the default locale.
struct Row {
  const char* text;
  const char* locale;
  const char* expected;
};

std::string nameOf(const char* code, const char* inLocale) {
  I18NLocale display(inLocale);
  I18NString name = "left over";
  I18NLocale(code).getDisplayName(name, display);
  return name.c_str();
}

std::string zoneName(const char* id, const I18NLocale& display) {
  I18NString name = "left over";
  I18NTimeZone(id).getDisplayName(name, display);
  return name.c_str();
}

/// What ICU says by its plain, slow way.
std::string icuZoneName(const char* id, const char* locale) {
  const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(id));
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

TEST(Locale, HasTheRulesOfCaseForAllLanguagesUnlessOneIsNamed) {
  const Row cases[] = {
      {"FI-in", nullptr, "fi-in"},       {"FI", "tr_TR", "f\u0131"},
      {"FI", "tr-TR", "f\u0131"},        {"FI", "nobody knows this", "fi"},
      {"ÄÖÜ İ", nullptr, "äöü i\u0307"}, {"IA\xC3", nullptr, "ia\xC3"},
  };
  for (const auto& row : cases) {
    const I18NLocale locale(row.locale);
    I18NString text = row.text;
    EXPECT_EQ(locale.compareIgnoreCase(text, row.expected), 0) << row.text << " in " << row.locale;
    locale.toLower(text);
    EXPECT_EQ(text, row.expected) << row.text << " in " << row.locale;
  }
  const I18NLocale common(nullptr);
  EXPECT_EQ(common.compareIgnoreCase("STRASSE", "straße"), 0);
  EXPECT_NE(common.compareIgnoreCase("iw", "il"), 0);
  EXPECT_NE(common.compareIgnoreCase("\xFF", "\xFE"), 0);
  EXPECT_NE(I18NLocale("tr").compareIgnoreCase("FI", "fi"), 0);
}

TEST(Locale, ShowsNamesInTheLanguageAskedFor) {
  const Row cases[] = {
      {"fr-ca", "en_US.UTF-8", "French (Canada)"},
      {"fr_CA", "tr-TR", "Fransızca (Kanada)"},
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
    EXPECT_EQ(nameOf(row.text, row.locale), row.expected) << row.text << " in " << row.locale;
  }
  // Around the longest that ICU takes.
  for (const std::size_t length : {156U, 157U, 100000U}) {
    const std::string name(length, 'a');
    EXPECT_EQ(nameOf("de", name.c_str()), "German") << length;
    EXPECT_FALSE(nameOf(name.c_str(), "en").empty()) << length;
  }
}

// The names come by a faster way than ICU's plain one; the text must not show it.
TEST(TimeZone, IsNamedAsByThePlainWay) {
  std::vector<std::string> ids = allZoneIds();
  EXPECT_EQ(std::set<std::string>(ids.begin(), ids.end()).size(), ids.size());
  ASSERT_GT(ids.size(), 400U);
  // What is no zone is taken as well; case counts.
  ids.insert(ids.end(), {"", "No/Such", "europe/paris", "\xFF", "GMT+5"});
  // A tenth of ICU's locales. They differ in what they have names for, not in the way to them.
  int count = 0;
  const icu::Locale* locales = icu::Locale::getAvailableLocales(count);
  for (int index = 0; index < count; index += 10) {
    const char* locale = locales[index].getName();
    const I18NLocale display(locale);
    for (const std::string& id : ids) {
      ASSERT_EQ(zoneName(id.c_str(), display), icuZoneName(id.c_str(), locale)) << id << locale;
    }
  }
  EXPECT_EQ(zoneName("Europe/Paris", I18NLocale("xx")), "Central European Standard Time");
}

TEST(Currency, NamesACodeOrGivesItBack) {
  const Row cases[] = {
      {"eur", "fr_CA", "euro"}, {"USD", "de", "US-Dollar"},    {"USD", "xx", "US Dollar"},
      {"USD", "", "USD"},       {"DEM", "en", "German Mark"},  {"qqq", "en", "qqq"},
      {"", "en", ""},           {"USDX", "en", "USDX"},        {"€€€", "en", "€€€"},
      {"\xFF", "en", "\xFF"},   {"USD", nullptr, "US Dollar"},
  };
  for (const auto& row : cases) {
    const I18NLocale display(row.locale);
    const I18NLocale* inLocale = row.locale == nullptr ? nullptr : &display;
    EXPECT_EQ(I18NNumericFormat::getCurrencyDescription(row.text, inLocale), row.expected)
        << row.text << " in " << row.locale;
  }
}

// One locale object, and what it makes at first need, shared by threads that all come at once.
TEST(Locale, IsSharedByThreads) {
  I18NLocale display("sv");
  const I18NLocale root(nullptr);
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 8; ++thread) {
    threads.emplace_back([&display, &root] {
      for (int round = 0; round < 100; ++round) {
        I18NString text;
        I18NLocale("de").getDisplayName(text, display);
        EXPECT_EQ(text, "tyska");
        EXPECT_EQ(zoneName("Europe/Paris", display), "centraleuropeisk normaltid");
        EXPECT_EQ(I18NNumericFormat::getCurrencyDescription("USD", &display), "amerikansk dollar");
        text = "FI";
        root.toLower(text);
        EXPECT_EQ(text, "fi");
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}
