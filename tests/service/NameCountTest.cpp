#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>

#include "platform/core/I18NNumericFormat.h"
#include "tests/service/Service.h"

// The currency service is replaced in this program by one that counts, so that a test sees how
// often names are computed.

namespace {

std::atomic<int> computed{0};

const char* const threeCurrencies =
    "<supportedCurrencies><currency id='A'/><currency id='B'/><currency id='C'/>"
    "</supportedCurrencies>";

}  // namespace

I18NString I18NNumericFormat::getCurrencyDescription(const I18NString& code, const I18NLocale*) {
  ++computed;
  std::this_thread::yield();
  if (code == "failing") throw std::runtime_error("no name");
  return code + "!";
}

TEST(ServiceNameCount, NamesAreComputedOnceForEachLocale) {
  constexpr int localeCount = 40;
  const ServiceInstallation installation;
  installation.setLocales(threeCurrencies);
  const PrivateService service;
  std::vector<std::thread> threads;
  for (int number = 0; number < 8; ++number) {
    threads.emplace_back([&, number] {
      for (int index = 0; index < localeCount; ++index) {
        // Each thread begins with another locale, and half of them write it in another way.
        const int locale = (index + 5 * number) % localeCount;
        const std::string language{static_cast<char>('a' + locale / 20),
                                   static_cast<char>('a' + locale % 20)};
        const std::string text = number % 2 == 1 ? " " + language + "_GB.UTF-8" : language + "-gb";
        EXPECT_EQ(service->getCurrencies(I18NString(text)).size(), 3U);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(computed, localeCount * 3);
}

TEST(ServiceNameCount, NamesAreComputedAnewForAnotherLocaleAndAnotherList) {
  const ServiceInstallation installation;
  installation.setLocales(threeCurrencies);
  const PrivateService service;
  const auto expectComputed = [&](int expected, std::initializer_list<const char*> locales) {
    computed = 0;
    for (const char* locale : locales) service->getCurrencies(locale);
    EXPECT_EQ(computed, expected) << *locales.begin();
  };
  expectComputed(3, {"fr-ca", "fr_CA", " FR-ca", "fr-ca-x"});
  expectComputed(3, {"", "en"});
  expectComputed(3, {" "});
  initWith(*service, queried("supportedFonts", items("Mono")));
  expectComputed(0, {"fr-ca", "en", "  "});
  initWith(*service, queried("supportedCurrencies", items("D")));
  expectComputed(1, {"fr-ca"});
  // A failure leaves no half of a list behind.
  initWith(*service, queried("supportedCurrencies", items("D failing")));
  for (int time = 0; time < 2; ++time) {
    EXPECT_THROW(service->getCurrencies("en"), std::runtime_error);
  }
}
