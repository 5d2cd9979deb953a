#include <gtest/gtest.h>
#include <malloc.h>

#include <set>

#include "tests/service/Service.h"
#include "tests/support/Together.h"

namespace {

/// Operations of a service, each with the answer that it must give.
const std::function<void(IVRDConfiguration&)> questions[] = {
    [](auto& service) { EXPECT_EQ(service.getValue("a", 0), "one"); },
    [](auto& service) { EXPECT_EQ(service.getParameterNames().size(), 1U); },
    [](auto& service) { EXPECT_EQ(service.getProductLocaleList("de").size(), 2U); },
    [](auto& service) { EXPECT_EQ(service.getContentLocaleList("de").size(), 1U); },
    [](auto& service) { EXPECT_GT(service.getTimeZones("de").size(), 400U); },
    [](auto& service) { EXPECT_EQ(service.getCurrencies("de").size(), 1U); },
    [](auto& service) { EXPECT_EQ(service.validateProductLocale("de"), 1); },
    [](auto& service) { EXPECT_EQ(service.validateContentLocale("de"), 0); },
    [](auto& service) { EXPECT_EQ(service.mapProductLocale("xx", 1), "product"); },
    [](auto& service) { EXPECT_EQ(service.mapContentLocale("xx", 1), "content"); },
    [](auto& service) { EXPECT_EQ(service.getFonts("").size(), 1U); },
    [](auto& service) { EXPECT_EQ(service.getFontMappings().size(), 2U); },
    [](auto& service) { EXPECT_EQ(service.getComponentVersion("CORE"), "1"); },
};

class ServiceThreads : public testing::Test {
 protected:
  ServiceThreads() {
    m_installation.setLocales(allSections);
    m_installation.setComponents("CORE_version=1\n");
  }

 private:
  const ServiceInstallation m_installation{parameter("a", "one")};
};

}  // namespace

// Each thread asks in an order of its own.
TEST_F(ServiceThreads, EverythingFromAColdStart) {
  std::vector<IVRDConfiguration*> shared(8);
  together(shared.size(), [&](std::size_t number) {
    shared[number] = VRDConfigurationFactory::getInstance();
    for (std::size_t index = 0; index < std::size(questions); ++index) {
      questions[(index + 2 * number) % std::size(questions)](*shared[number]);
    }
  });
  EXPECT_EQ(std::set<IVRDConfiguration*>(shared.begin(), shared.end()).size(), 1U);
}

// Each answer comes from the tables before a change or behind it: all codes of it bear its number.
TEST_F(ServiceThreads, ReadersWhileOneInitialises) {
  const PrivateService service;
  std::atomic<bool> done{false};
  together(5, [&](std::size_t number) {
    for (int round = 0; number == 0 && round < 1000; ++round) {
      const std::string code = std::to_string(round);
      const std::string list = items(code + " " + code + " " + code);
      initWith(*service, queried("supportedFonts", list) +
                             queried("supportedProductLocales", list) +
                             queried("supportedCurrencies", list) +
                             queried("productLocaleMap", pairs("*=" + code + " de=" + code)));
    }
    if (number == 0) done = true;
    while (!done) {
      const std::list<I18NString> fonts = service->getFonts("");
      EXPECT_EQ(std::set<I18NString>(fonts.begin(), fonts.end()).size(), 1U);
      EXPECT_FALSE(service->mapProductLocale("de", 1).empty());
      EXPECT_LE(service->getProductLocaleList("en").size(), 2U);
      EXPECT_EQ(service->getCurrencies("en").size(), 1U);
      EXPECT_LE(service->validateProductLocale("de"), 1);
      EXPECT_EQ(service->getFontMappings().size(), 2U);
    }
  });
  EXPECT_EQ(service->getFonts(""), std::list<I18NString>(3, "999"));
}

// Of the last 9,900 rounds. A sanitizer keeps a heap of its own: there some rounds show whether
// anything leaks.
TEST_F(ServiceThreads, ObjectsAndTablesComeAndGoInTheSameMemory) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  constexpr int rounds = 200;
#else
  constexpr int rounds = 10000;
#endif
  std::size_t before = 0;
  for (int round = 0; round < rounds; ++round) {
    if (round == 100) before = mallinfo2().uordblks;
    const PrivateService service;
    EXPECT_EQ(service->getCurrencies("de").size(), 1U);
    EXPECT_EQ(service->getProductLocaleList("fr").size(), 2U);
    EXPECT_EQ(service->mapContentLocale("xx", 1), "content");
    EXPECT_EQ(service->getComponentVersion("CORE"), "1");
    for (const std::size_t fonts : {1U, 2U}) {
      initWith(*service, queried("supportedFonts", items(fonts == 1 ? "A" : "B C")) +
                             queried("supportedCurrencies", items("EUR")));
      EXPECT_EQ(service->getFonts("").size(), fonts);
    }
  }
  EXPECT_LT(mallinfo2().uordblks, before + (std::size_t{1} << 20));
}
