#include "service/TableReaders.h"

#include <thread>

#include "platform/core/VRDThreads.h"

namespace {

constexpr unsigned cacheLine = 64;
constexpr unsigned stripeCount = 16;

/// The open sections of the threads that share the stripe, by the phase in which they were opened.
struct alignas(cacheLine) Stripe {
  std::atomic<long> open[2];
};

Stripe stripes[stripeCount];
std::atomic<unsigned> phase{0};
VRDThreadCriticalSection waitMutex(0);

Stripe& stripeOfThread() {
  static std::atomic<unsigned> threads{0};
  thread_local const unsigned number = threads.fetch_add(1, std::memory_order_relaxed);
  return stripes[number % stripeCount];
}

void drain(unsigned index) {
  for (const Stripe& stripe : stripes) {
    while (stripe.open[index].load(std::memory_order_seq_cst) != 0) std::this_thread::yield();
  }
}

}  // namespace

TableReaders::Section::Section() noexcept
    : m_open(stripeOfThread().open[phase.load(std::memory_order_relaxed)]) {
  m_open.fetch_add(1, std::memory_order_seq_cst);
}

// Both phases are drained, so it does not matter in which one a reader was counted. Changing the
// phase in between only sees to it that an end comes: new readers go where nobody is waiting.
void TableReaders::wait() {
  VRDThreadGuard guard(waitMutex);
  const unsigned current = phase.load(std::memory_order_relaxed);
  const unsigned next = 1 - current;
  drain(next);
  phase.store(next, std::memory_order_relaxed);
  drain(current);
}
