#include <gtest/gtest.h>

#include <atomic>
#include <new>
#include <stdexcept>
#include <thread>
#include <vector>

#include "service/ServiceTable.h"

namespace {

std::atomic<int> alive{0};
std::atomic<bool> outOfMemory{false};

/// A content whose two halves must agree; it counts its objects.
struct Content {
  Content() {
    if (outOfMemory) throw std::bad_alloc();
    ++alive;
  }
  ~Content() { --alive; }
  int first = 0;
  int second = 0;
};

class ServiceTableTest : public testing::Test {
 protected:
  /// Fills so slowly that others come in between; a negative value is the end of a source.
  static auto filling(int value) {
    return [value](Content& content) {
      content.first = value;
      std::this_thread::yield();
      content.second = value;
      if (value < 0) throw std::runtime_error("source");
    };
  }
  void make(int value) { table.makeOnce(lock, here, filling(value)); }
  void replace(int value) {
    VRDThreadGuard guard(lock);
    table.replace(lock, here, filling(value));
  }
  int value() {
    return table.read([](const Content& content) {
      EXPECT_EQ(content.first, content.second);
      return content.first;
    });
  }

  const VRDFileLocation here{"ServiceTableTest", 1};
  VRDThreadCriticalSection lock{0};
  ServiceTable<Content> table;
};

}  // namespace

TEST_F(ServiceTableTest, WantOfMemoryIsTriedAgainAndAFailedFillIsNot) {
  outOfMemory = true;
  EXPECT_THROW(make(1), VRDOutOfMemoryError);
  outOfMemory = false;
  EXPECT_THROW(make(-2), std::runtime_error);
  make(3);
  EXPECT_EQ(value(), -2) << "what had been filled in stays";

  outOfMemory = true;
  EXPECT_THROW(replace(4), VRDOutOfMemoryError);
  outOfMemory = false;
  EXPECT_THROW(replace(-5), std::runtime_error);
  EXPECT_EQ(value(), -2);
  EXPECT_EQ(alive, 1);
}

// Readers meet neither a content half filled nor one that is gone, what one has seen is not older
// for the next, and the old contents go.
TEST_F(ServiceTableTest, IsMadeOnceAndReplacedUnderReaders) {
  std::atomic<int> made{0};
  std::atomic<bool> done{false};
  std::vector<std::thread> readers;
  for (int number = 0; number < 4; ++number) {
    readers.emplace_back([&] {
      table.makeOnce(lock, here, [&](Content& content) { filling(++made)(content); });
      for (int last = 1; !done; std::this_thread::yield()) {
        const int seen = value();
        EXPECT_GE(seen, last);
        last = seen;
      }
    });
  }
  while (made == 0) std::this_thread::yield();
  for (int round = 2; round <= 1000; ++round) {
    replace(round);
    EXPECT_EQ(alive, 1) << "the old content went before replace returned";
  }
  done = true;
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(made, 1);
}
