#include <gtest/gtest.h>
#include <malloc.h>

#include <atomic>
#include <functional>
#include <set>
#include <thread>

#include "tests/service/Service.h"

namespace {

const char* const sections =
    "<supportedProductLocales><locale id='en'/><locale id='de'/></supportedProductLocales>"
    "<productLocaleMap><localeMap key='*' value='en'/></productLocaleMap>"
    "<supportedContentLocales><locale id='fr'/></supportedContentLocales>"
    "<contentLocaleMap><localeMap key='*' value='fr'/></contentLocaleMap>"
    "<supportedCurrencies><currency id='EUR'/></supportedCurrencies>"
    "<supportedFonts><font id='Serif'/></supportedFonts>"
    "<fontsMap><fontMap key='Old' value='Serif'/></fontsMap>";

void together(std::size_t count, const std::function<void(std::size_t)>& work) {
  std::atomic<std::size_t> waiting{count};
  std::vector<std::thread> threads;
  for (std::size_t number = 0; number < count; ++number) {
    threads.emplace_back([&, number] {
      --waiting;
      while (waiting > 0) std::this_thread::yield();
      work(number);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

using Question = std::function<void(IVRDConfiguration&)>;

/// Every operation of a service, with the answer that it must give.
const std::vector<Question>& questions() {
  static const auto& all = *new const std::vector<Question>{
      [](auto& service) { EXPECT_EQ(service.getValue("a", 0), "one"); },
      [](auto& service) { EXPECT_EQ(service.getParameterNames().size(), 1U); },
      [](auto& service) { EXPECT_EQ(service.getProductLocaleList("de").size(), 2U); },
      [](auto& service) { EXPECT_EQ(service.getContentLocaleList("de").size(), 1U); },
      [](auto& service) { EXPECT_GT(service.getTimeZones("de").size(), 400U); },
      [](auto& service) { EXPECT_EQ(service.getCurrencies("de").size(), 1U); },
      [](auto& service) { EXPECT_EQ(service.validateProductLocale("de"), 1); },
      [](auto& service) { EXPECT_EQ(service.validateContentLocale("de"), 0); },
      [](auto& service) { EXPECT_EQ(service.normalizeLocale("DE"), "de"); },
      [](auto& service) { EXPECT_EQ(service.mapProductLocale("xx", 1), "en"); },
      [](auto& service) { EXPECT_EQ(service.mapContentLocale("xx", 1), "fr"); },
      [](auto& service) { EXPECT_EQ(service.getFonts("").size(), 1U); },
      [](auto& service) { EXPECT_EQ(service.getFontMappings().size(), 1U); },
      [](auto& service) { EXPECT_EQ(service.getComponentVersion("CORE"), "1"); },
      [](auto& service) {
        I18NString font = "Old";
        EXPECT_EQ(service.mapFont(font), "Serif");
      },
  };
  return all;
}

}  // namespace

TEST(ServiceThreads, EverythingFromAColdStart) {
  const ServiceInstallation installation(parameter("a", "one"));
  installation.setLocales(sections);
  installation.setComponents("CORE_version=1\n");
  // Each thread asks in an order of its own.
  together(8, [](std::size_t number) {
    const std::size_t count = questions().size();
    for (std::size_t index = 0; index < count; ++index) {
      questions()[(index + 2 * number) % count](*VRDConfigurationFactory::getInstance());
    }
  });
}

// Each answer comes from the tables before a change or behind it: all codes of it bear its number.
TEST(ServiceThreads, ReadersWhileOneInitialises) {
  constexpr int rounds = 1000;
  const ServiceInstallation installation;
  installation.setLocales(sections);
  const PrivateService service;
  const auto one = [](const std::vector<std::string>& codes) {
    return std::set<std::string>(codes.begin(), codes.end()).size();
  };
  std::atomic<bool> done{false};
  together(5, [&](std::size_t number) {
    if (number == 0) {
      for (int round = 0; round < rounds; ++round) {
        const std::string code = std::to_string(round);
        const std::string list = items(code + " " + code + " " + code);
        initWith(*service, queried("supportedFonts", list) +
                               queried("supportedProductLocales", list) +
                               queried("supportedCurrencies", list) +
                               queried("productLocaleMap", pairs("*=" + code + " de=" + code)));
      }
      done = true;
      return;
    }
    while (!done) {
      EXPECT_LE(one(plain(service->getFonts(""))), 1U);
      EXPECT_FALSE(service->mapProductLocale("de", 1).empty());
      EXPECT_LE(service->getProductLocaleList("en").size(), 2U);
      EXPECT_EQ(service->getCurrencies("en").size(), 1U);
      EXPECT_LE(service->validateProductLocale("de"), 1);
      EXPECT_EQ(service->getFontMappings().size(), 1U);
    }
  });
  EXPECT_EQ(plain(service->getFonts("")), std::vector<std::string>(3, std::to_string(rounds - 1)));
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define VRD_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define VRD_SANITIZED 1
#endif
#endif

namespace {

/// How much the heap grows from the first hundred rounds to the last. A sanitizer keeps a heap of
/// its own: there the rounds show whether anything leaks.
template <class Round>
void expectFlat(int rounds, Round round) {
#ifdef VRD_SANITIZED
  for (int index = 0; index < rounds / 50; ++index) round();
#else
  for (int index = 0; index < 100; ++index) round();
  const std::size_t before = mallinfo2().uordblks;
  for (int index = 100; index < rounds; ++index) round();
  const std::size_t after = mallinfo2().uordblks;
  EXPECT_LT(after, before + (std::size_t{1} << 20));
#endif
}

}  // namespace

TEST(ServiceMemory, ObjectsComeAndGo) {
  const ServiceInstallation installation(parameter("a", "one"));
  installation.setLocales(sections);
  installation.setComponents("CORE_version=1\n");
  expectFlat(10000, [] {
    const PrivateService service;
    EXPECT_EQ(service->getCurrencies("de").size(), 1U);
    EXPECT_EQ(service->getProductLocaleList("fr").size(), 2U);
    EXPECT_EQ(service->mapContentLocale("xx", 1), "fr");
    EXPECT_EQ(service->getFonts("").size(), 1U);
    EXPECT_EQ(service->getComponentVersion("CORE"), "1");
    EXPECT_EQ(service->getValue("a", 0), "one");
  });
}

TEST(ServiceMemory, TablesComeAndGo) {
  const ServiceInstallation installation(parameter("a", "one"));
  installation.setLocales(sections);
  const PrivateService service;
  int round = 0;
  expectFlat(20000, [&] {
    initWith(*service, queried("supportedFonts", items(++round % 2 == 0 ? "A" : "B C")) +
                           queried("supportedCurrencies", items("EUR")));
    EXPECT_EQ(service->getCurrencies("de").size(), 1U);
    EXPECT_EQ(service->getFonts("").size(), round % 2 == 0 ? 1U : 2U);
  });
}
