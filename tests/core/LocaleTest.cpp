#include <gtest/gtest.h>

#include <string>
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

void expectEach(const std::vector<Row>& rows, I18NString (*textIn)(const Row&, I18NLocale&)) {
  for (const Row& row : rows) {
    I18NLocale locale(row.locale);
    EXPECT_EQ(textIn(row, locale).utf8(), row.expected) << row.text << " in " << row.locale;
  }
}

TEST(Locale, HasTheRulesOfCaseForAllLanguagesUnlessOneIsNamed) {
  expectEach({{"FI-in", nullptr, "fi-in"},
              {"FI", "tr_TR", "f\u0131"},
              {"FI", "az", "f\u0131"},
              {"FI", "nobody knows this", "fi"},
              {"ÄÖÜ İ\xC3", nullptr, "äöü i\u0307\xC3"}},
             [](const Row& row, I18NLocale& locale) {
               I18NString text = row.text;
               EXPECT_EQ(locale.compareIgnoreCase(text, row.expected), 0) << row.text;
               locale.toLower(text);
               return text;
             });
  const I18NLocale common(nullptr);
  EXPECT_EQ(common.compareIgnoreCase("STRASSE", "straße"), 0);
  EXPECT_NE(common.compareIgnoreCase("\xFF", "\xFE"), 0);
  EXPECT_NE(I18NLocale("tr").compareIgnoreCase("FI", "fi"), 0);
}

TEST(Locale, ShowsNamesInTheLanguageAskedFor) {
  const std::string overlong(100000, 'a');
  // A language that nobody knows is shown in English, and so is none at all; the root locale shows
  // codes; what is no locale stays as it is.
  expectEach({{"fr-ca", "en_US.UTF-8", "French (Canada)"},
              {"fr_CA", "tr-TR", "Fransızca (Kanada)"},
              {"fr-ca", "xx", "French (Canada)"},
              {"fr-ca", "../../etc", "French (Canada)"},
              {"fr-ca", overlong.c_str(), "French (Canada)"},
              {"fr-ca", nullptr, "French (Canada)"},
              {"fr-ca", "", "fr (CA)"},
              {"", "en", "Unknown language"},
              {nullptr, "en", ""},
              {"../../etc", "en", "../../etc"},
              {"zh-ha", "en", "Chinese (HA)"}},
             [](const Row& row, I18NLocale& display) {
               I18NString name = "left over";
               I18NLocale(row.text).getDisplayName(name, display);
               return name;
             });
}

TEST(TimeZone, IsNamedByItsGroupByItselfOrByItsOffset) {
  int count = 0;
  I18NTimeZone::getAvailableTimeZones(count);
  EXPECT_GT(count, 400);
  expectEach({{"Europe/Paris", "de", "Mitteleuropäische Normalzeit"},
              {"Europe/Paris", "xx", "Central European Standard Time"},
              {"UTC", "de", "Koordinierte Weltzeit"},
              {"Etc/GMT+3", "de", "GMT-03:00"},
              {"America/Sao_Paulo", "", "GMT-03:00"},
              {"GMT+5", "fr", "UTC+05:00"},
              {"europe/paris", "en", "GMT"},
              {"\xFF", "en", "GMT"}},
             [](const Row& row, I18NLocale& display) {
               I18NString name = "left over";
               I18NTimeZone(row.text).getDisplayName(name, display);
               return name;
             });
}

TEST(Currency, NamesACodeOrGivesItBack) {
  expectEach({{"eur", "fr_CA", "euro"},
              {"USD", "de", "US-Dollar"},
              {"USD", "xx", "US Dollar"},
              {"USD", "", "USD"},
              {"DEM", "en", "German Mark"},
              {"", "en", ""},
              {"USDX", "en", "USDX"},
              {"\xFF€€", "en", "\xFF€€"}},
             [](const Row& row, I18NLocale& display) {
               return I18NNumericFormat::getCurrencyDescription(row.text, &display);
             });
  EXPECT_EQ(I18NNumericFormat::getCurrencyDescription("USD", nullptr), "US Dollar");
}

}  // namespace
