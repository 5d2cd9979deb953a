#include <gtest/gtest.h>

#include <atomic>
#include <list>
#include <new>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

#include "service/ServiceTable.h"

namespace {

std::atomic<int> alive{0};
std::atomic<bool> outOfMemory{false};

/// A content whose two halves must agree; it counts its objects and knows when it is gone.
class Content {
 public:
  Content() {
    if (outOfMemory) throw std::bad_alloc();
    ++alive;
  }
  Content(const Content&) = delete;
  Content& operator=(const Content&) = delete;
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
  void make(int value) {
    table.makeOnce(lock, here,
                   [value](Content& content) { content.first = content.second = value; });
  }
  void replace(int value) {
    VRDThreadGuard guard(lock);
    table.replace(lock, here, [value](Content& content) {
      content.first = value;
      std::this_thread::yield();
      content.second = value;
    });
  }
  /// Looks at the halves some time apart, so that a change in between would show.
  int value() {
    const auto seen = table.read([](const Content& content) {
      const int first = content.first;
      std::atomic_signal_fence(std::memory_order_seq_cst);
      return std::pair(first, content.second);
    });
    EXPECT_EQ(seen.first, seen.second);
    EXPECT_GE(seen.first, 0) << "read after its end";
    return seen.first;
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
  EXPECT_EQ(alive, 1);
  table.free();
  EXPECT_EQ(alive, 0);
}

TEST_F(ServiceTableTest, AFailedFillIsNotTriedAgain) {
  const auto fail = [](Content& content) {
    content.first = content.second = 5;
    throw std::runtime_error("source");
  };
  EXPECT_THROW(table.makeOnce(lock, here, fail), std::runtime_error);
  make(1);
  EXPECT_EQ(value(), 5) << "what had been filled in stays";
  {
    VRDThreadGuard guard(lock);
    EXPECT_THROW(table.replace(lock, here, fail), std::runtime_error);
  }
  EXPECT_EQ(alive, 1);
}

TEST_F(ServiceTableTest, WantOfMemoryIsTriedAgain) {
  outOfMemory = true;
  try {
    make(1);
    ADD_FAILURE();
  } catch (const VRDOutOfMemoryError& error) {
    ASSERT_EQ(error.getBackTraceCount(), 1U);
    EXPECT_STREQ(error.getBackTraceAt(0).file, here.file);
  }
  outOfMemory = false;
  make(2);
  EXPECT_EQ(value(), 2);
  outOfMemory = true;
  EXPECT_THROW(replace(3), VRDOutOfMemoryError);
  outOfMemory = false;
  EXPECT_EQ(value(), 2);
}

TEST_F(ServiceTableTest, ManyThreadsSeeOneFilling) {
  std::atomic<int> fillings{0};
  std::vector<std::thread> threads;
  for (int number = 0; number < 8; ++number) {
    threads.emplace_back([&] {
      table.makeOnce(lock, here, [&](Content& content) {
        ++fillings;
        content.first = 7;
        std::this_thread::yield();
        content.second = 7;
      });
      EXPECT_EQ(value(), 7);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(fillings, 1);
}

// Readers must neither meet a content that is gone nor keep the old ones from
// going, and what one thread has seen is not older for the next.
TEST_F(ServiceTableTest, ReplacingUnderReaders) {
  constexpr int replacements = 1000;
  make(0);
  std::atomic<bool> done{false};
  std::vector<std::thread> readers;
  for (int number = 0; number < 4; ++number) {
    readers.emplace_back([&] {
      int last = 0;
      while (!done) {
        const int seen = value();
        EXPECT_GE(seen, last);
        last = seen;
        std::this_thread::yield();  // so that it is seldom interrupted while it reads
      }
    });
  }
  for (int round = 1; round <= replacements; ++round) {
    replace(round);
    EXPECT_EQ(alive, 1) << "the old content went before replace returned";
  }
  done = true;
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(value(), replacements);
}
