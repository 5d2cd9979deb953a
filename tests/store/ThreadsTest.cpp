#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <string>
#include <vector>

#include "platform/core/VRDFmDir.h"
#include "platform/idom/DomMemory.h"
#include "tests/support/Installation.h"
#include "tests/support/Store.h"
#include "tests/support/Together.h"

// ThreadSanitizer watches these. Xerces-C comes from the distribution and is not instrumented, so a
// race inside it on memory that it alone touches would go unseen; its reads store, at most, a value
// that is already there. Everything of ours is seen.

namespace {

TEST(ThreadsTest, TheFirstUseOnManyThreadsMakesOneStore) {
  constexpr std::size_t threadCount = 64;
  const CurrentInstallation installation(parameter("temp", "/var/tmp"));
  std::vector<VRDConfiguration*> seen(threadCount);
  together(threadCount, [&](std::size_t number) {
    seen[number] = VRDConfiguration::getInstance();
    // The path is set before anybody has the store, and by one thread alone.
    EXPECT_STREQ(VRDFmDir::getTempPath().c_str(), "/var/tmp");
  });
  EXPECT_EQ(std::set<VRDConfiguration*>(seen.begin(), seen.end()).size(), 1U);
  EXPECT_NE(seen.front(), nullptr);
}

TEST(ThreadsTest, ReadersAgainstSetValueAndInit) {
  const CurrentInstallation installation(parameter("changing", "old") +
                                         parameter("queried", "old") +
                                         parameter("opaque", "<x/>", "opaque='true'"));
  std::atomic<bool> done{false};
  together(5, [&](std::size_t number) {
    const int stored = 0;
    if (number == 0) {
      for (int round = 0; round < 1000; ++round) {
        store().setValue("changing", round % 2 == 0 ? "new" : "old");
        EXPECT_EQ(initWith("<queryResult><g><queried><value>" +
                           std::string(round % 2 == 0 ? "new" : "old") +
                           "</value></queried></g></queryResult>"),
                  VRDCFGAPI_NoError);
      }
      done = true;
    }
    while (!done) {
      for (const char* name : {"changing", "queried"}) {
        const std::string value = textOf(name);
        EXPECT_TRUE(value == "old" || value == "new") << value;
      }
      VRDIDOM_Node node;
      EXPECT_EQ(store().getValue(number % 2 == 0 ? "" : "opaque", stored, node), VRDCFGAPI_NoError);
      EXPECT_FALSE(node.getFirstChild().isNull());
    }
  });
}

// A process runs for months: changing values and rewriting the tree must not make it grow.
TEST(ThreadsTest, MemoryStaysFlat) {
  const CurrentInstallation installation(parameter("path", "logs", "", "xsi:type='cfg:filePath'"));
  const auto work = [](int rounds) {
    for (int round = 0; round < rounds; ++round) {
      const std::string value = "<value>" + std::to_string(round % 10) + "<x/>t</value>";
      store().setValue("set", std::to_string(round % 10).c_str());
      // The last of them was set and is not replaced.
      EXPECT_EQ(initWith("<queryResult><g><mixed>" + value + "</mixed><opaque opaque='true'>" +
                         value + "</opaque><set>" + value + "</set></g></queryResult>"),
                VRDCFGAPI_InternalError);
    }
  };
  work(20);
  const std::size_t before = DomMemory::instance().bytesInUse();
  work(1000);
  EXPECT_EQ(DomMemory::instance().bytesInUse(), before);
}

}  // namespace
