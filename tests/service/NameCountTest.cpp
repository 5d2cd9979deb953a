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

}  // namespace

I18NString I18NNumericFormat::getCurrencyDescription(const I18NString& code, const I18NLocale*) {
  ++computed;
  std::this_thread::yield();
  if (code == "failing") throw std::runtime_error("no name");
  return code + "!";
}

namespace {

constexpr int currencyCount = 3;
const char* const sections =
    "<supportedCurrencies><currency id='A'/><currency id='B'/><currency id='C'/>"
    "</supportedCurrencies>";

}  // namespace

TEST(ServiceNameCount, NamesAreComputedOnceForEachLocale) {
  constexpr int localeCount = 40;
  const ServiceInstallation installation;
  installation.setLocales(sections);
  const PrivateService service;
  std::vector<std::thread> threads;
  for (int number = 0; number < 8; ++number) {
    threads.emplace_back([&, number] {
      for (int index = 0; index < localeCount; ++index) {
        // Each thread begins with another locale, and half of them write it in another way.
        const int locale = (index + 5 * number) % localeCount;
        std::string text{static_cast<char>('a' + locale / 20),
                         static_cast<char>('a' + locale % 20)};
        if (number % 2 == 1)
          text = " " + text + "_GB.UTF-8";
        else
          text += "-gb";
        EXPECT_EQ(service->getCurrencies(I18NString(text)).size(), std::size_t{currencyCount});
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(computed, localeCount * currencyCount);
}

TEST(ServiceNameCount, FormsOfALocaleShareTheirNames) {
  computed = 0;
  const ServiceInstallation installation;
  installation.setLocales(sections);
  const PrivateService service;
  for (const char* locale : {"fr-ca", "fr_CA", " FR-ca", "fr-ca-x"}) service->getCurrencies(locale);
  EXPECT_EQ(computed, currencyCount);
  service->getCurrencies("");
  service->getCurrencies("en");
  EXPECT_EQ(computed, 2 * currencyCount);
  service->getCurrencies(" ");
  EXPECT_EQ(computed, 3 * currencyCount);

  // Names go with their list, and only with it.
  initWith(*service, queried("supportedFonts", items("Mono")));
  service->getCurrencies("fr-ca");
  EXPECT_EQ(computed, 3 * currencyCount);
  initWith(*service, queried("supportedCurrencies", items("D")));
  EXPECT_EQ(plain(service->getCurrencies("fr-ca")),
            (std::map<std::string, std::string>{{"D", "D!"}}));
  EXPECT_EQ(computed, 3 * currencyCount + 1);

  // A failure leaves no half of a list behind.
  initWith(*service, queried("supportedCurrencies", items("D failing")));
  for (int time = 0; time < 2; ++time) {
    EXPECT_THROW(service->getCurrencies("en"), std::runtime_error);
  }
}
