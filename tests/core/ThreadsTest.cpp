#include "platform/core/VRDThreads.h"

#include <gtest/gtest.h>

#include <initializer_list>

#include "tests/support/Together.h"

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
    together(3, [&value, lock](std::size_t) {
      for (int n = 0; n < 10000; ++n) {
        VRDThreadGuard guard(*lock);
        value = value + 1;
      }
    });
    EXPECT_EQ(value, 30000);
  }
}

}  // namespace
