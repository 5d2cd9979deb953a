#include "platform/core/VRDThreads.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <optional>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

extern VRDThreadCriticalSection plainLock;
extern VRDThreadRecursiveCriticalSection recursiveLock;
bool served = false;

/// Takes both locks before any constructor of normal priority has run, and counts on it that they
/// were initialised at compile time.
struct EarlyUser {
  EarlyUser() {
    VRDThreadGuard first(plainLock);
    VRDThreadGuard second(recursiveLock);
    served = true;
  }
};

__attribute__((init_priority(101))) EarlyUser earlyUser;
VRDThreadCriticalSection plainLock(0);
VRDThreadRecursiveCriticalSection recursiveLock;

TEST(Threads, StaticLocksServeBeforeAnyConstructor) { EXPECT_TRUE(served); }

TEST(Threads, ALockLetsOneThreadInAtATime) {
  VRDThreadCriticalSection plain(0), shared(1);
  VRDThreadRecursiveCriticalSection recursive;
  for (VRDThreadLockableResource* lock :
       std::initializer_list<VRDThreadLockableResource*>{&plain, &shared, &recursive}) {
    int value = 0;  // torn unless one thread at a time adds to it
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&value, lock] {
        for (int n = 0; n < 5000; ++n) {
          VRDThreadGuard guard(*lock);
          value = value + 1;
        }
      });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(value, 20000);
  }
}

VRD_NO_THREAD_CHECK void takeTwice(VRDThreadRecursiveCriticalSection& lock) {
  std::optional<VRDThreadGuard> outer(std::in_place, lock), inner(std::in_place, lock);
  std::atomic<bool> got{false};
  std::thread contender([&] {
    VRDThreadGuard guard(lock);
    got = true;
  });
  const auto gotSoon = [&got] {
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    return got.load();
  };
  EXPECT_FALSE(gotSoon());
  inner.reset();
  EXPECT_FALSE(gotSoon()) << "free after one of two guards";
  outer.reset();
  contender.join();
}

TEST(Threads, ARecursiveLockIsFreeAfterItsLastGuard) {
  VRDThreadRecursiveCriticalSection lock;
  takeTwice(lock);
}

TEST(Threads, AnExceptionReleasesTheLock) {
  const auto raise = [] {
    VRDThreadGuard guard(plainLock);
    throw std::runtime_error("out of the block");
  };
  EXPECT_THROW(raise(), std::runtime_error);
  std::thread([] { VRDThreadGuard guard(plainLock); }).join();
}

}  // namespace
