#include "platform/core/VRDThreads.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <optional>
#include <thread>

namespace {

extern VRDThreadCriticalSection plainLock;
bool served = false;

/// Takes the lock before any constructor of normal priority has run, and counts on it that it was
/// initialised at compile time.
__attribute__((init_priority(101))) struct EarlyUser {
  EarlyUser() {
    VRDThreadGuard guard(plainLock);
    served = true;
  }
} earlyUser;
VRDThreadCriticalSection plainLock(0);

TEST(Threads, ALockLetsOneThreadInAtATime) {
  EXPECT_TRUE(served);
  VRDThreadRecursiveCriticalSection recursive;
  for (VRDThreadLockableResource* lock :
       std::initializer_list<VRDThreadLockableResource*>{&plainLock, &recursive}) {
    int value = 0;  // torn unless one thread at a time adds to it
    const auto add = [&value, lock] {
      for (int n = 0; n < 10000; ++n) {
        VRDThreadGuard guard(*lock);
        value = value + 1;
      }
    };
    std::thread threads[] = {std::thread(add), std::thread(add), std::thread(add)};
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(value, 30000);
  }
}

VRD_NO_THREAD_CHECK void takeTwice(VRDThreadRecursiveCriticalSection& lock) {
  std::optional<VRDThreadGuard> outer(std::in_place, lock), inner(std::in_place, lock);
  std::atomic<bool> got{false};
  std::thread contender([&] {
    VRDThreadGuard guard(lock);
    got = true;
  });
  inner.reset();
  std::this_thread::sleep_for(std::chrono::milliseconds(30));
  EXPECT_FALSE(got) << "free after one of two guards";
  outer.reset();
  contender.join();
}

TEST(Threads, ARecursiveLockIsFreeAfterItsLastGuard) {
  VRDThreadRecursiveCriticalSection lock;
  takeTwice(lock);
}

}  // namespace
