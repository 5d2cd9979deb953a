#include <gtest/gtest.h>

#include "platform/core/I18NNumericFormat.h"
#include "tests/service/Service.h"
#include "tests/support/Together.h"

// The currency service is replaced in this program by one that counts, so that a test sees how
// often names are computed.

namespace {

std::atomic<int> computed{0};

}  // namespace

I18NString I18NNumericFormat::getCurrencyDescription(const I18NString& code, const I18NLocale*) {
  ++computed;
  std::this_thread::yield();
  return code;
}

TEST(ServiceNameCount, NamesAreComputedOnceForEachLocaleAndList) {
  constexpr std::size_t localeCount = 40;
  const ServiceInstallation installation;
  const PrivateService service;
  for (const char* currencies : {"A B C", "D E F"}) {
    initWith(*service, queried("supportedCurrencies", items(currencies)));
    computed = 0;
    together(8, [&](std::size_t number) {
      for (std::size_t index = 0; index < localeCount; ++index) {
        // Each thread begins with another locale, and half of them write it in another way.
        const std::size_t locale = (index + 5 * number) % localeCount;
        const std::string language{"ab"[locale / 20], "abcdefghijklmnopqrst"[locale % 20]};
        const std::string text = number % 2 == 1 ? " " + language + "_GB.UTF-8" : language + "-gb";
        EXPECT_EQ(service->getCurrencies(I18NString(text)).size(), 3U);
      }
    });
    EXPECT_EQ(computed, 3 * localeCount);
  }
}
