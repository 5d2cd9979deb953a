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

/// A content whose two halves must agree; it counts its objects and knows when it is gone.
struct Content {
  Content() {
    if (outOfMemory) throw std::bad_alloc();
    ++alive;
  }
  Content(const Content&) = delete;
  ~Content() {
    --alive;
    first = second = -1;
  }
  int first = 0;
  int second = 0;
};

constexpr VRDFileLocation here{"ServiceTableTest", 1};

class ServiceTableTest : public testing::Test {
 protected:
  /// Fills a content so slowly that others come in between.
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
      const int first = content.first;
      std::atomic_signal_fence(std::memory_order_seq_cst);  // so that a change would show
      EXPECT_EQ(first, content.second);
      return first;
    });
  }

  VRDThreadCriticalSection lock{0};
  ServiceTable<Content> table;
};

}  // namespace

TEST_F(ServiceTableTest, IsMadeOnce) {
  make(1);
  make(2);
  EXPECT_EQ(value(), 1);
  replace(3);
  make(4);
  EXPECT_EQ(value(), 3);
  table.free();
  EXPECT_EQ(alive, 0);
}

TEST_F(ServiceTableTest, AFailedFillIsNotTriedAgain) {
  EXPECT_THROW(make(-5), std::runtime_error);
  make(1);
  EXPECT_EQ(value(), -5) << "what had been filled in stays";
  EXPECT_THROW(replace(-6), std::runtime_error);
  EXPECT_EQ(value(), -5);
  EXPECT_EQ(alive, 1);
}

TEST_F(ServiceTableTest, WantOfMemoryIsTriedAgain) {
  outOfMemory = true;
  EXPECT_THROW(make(1), VRDOutOfMemoryError);
  outOfMemory = false;
  make(2);
  outOfMemory = true;
  EXPECT_THROW(replace(3), VRDOutOfMemoryError);
  outOfMemory = false;
  EXPECT_EQ(value(), 2);
}

// Readers meet neither a content half filled nor one that is gone, what one has seen is not older
// for the next, and the old contents go.
TEST_F(ServiceTableTest, IsReplacedUnderReaders) {
  constexpr int replacements = 1000;
  std::atomic<int> fillings{0};
  std::atomic<bool> done{false};
  std::vector<std::thread> readers;
  for (int number = 0; number < 4; ++number) {
    readers.emplace_back([&] {
      table.makeOnce(lock, here, [&](Content& content) { filling(++fillings)(content); });
      for (int last = 1; !done; std::this_thread::yield()) {
        const int seen = value();
        EXPECT_GE(seen, last);
        last = seen;
      }
    });
  }
  while (fillings == 0) std::this_thread::yield();
  for (int round = 2; round <= replacements; ++round) {
    replace(round);
    EXPECT_EQ(alive, 1) << "the old content went before replace returned";
  }
  done = true;
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(value(), replacements);
  EXPECT_EQ(fillings, 1);
}
