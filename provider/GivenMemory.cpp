#include "provider/GivenMemory.h"

#include <string.h>

#include <cstdlib>
#include <limits>
#include <new>

namespace {

/// In front of the bytes; aligned so that these can hold anything.
struct alignas(std::max_align_t) Prefix {
  std::size_t size;
};

}  // namespace

// From the C heap and not from that of the cryptographic library, which a host may replace or take
// down while blocks are still out.

unsigned char* allocateGiven(std::size_t size) {
  if (size > std::numeric_limits<std::size_t>::max() - sizeof(Prefix)) throw std::bad_alloc();
  void* memory = std::malloc(sizeof(Prefix) + size);
  if (memory == nullptr) throw std::bad_alloc();
  auto* prefix = new (memory) Prefix{size};
  return reinterpret_cast<unsigned char*>(prefix + 1);
}

void releaseGiven(void* memory) noexcept {
  if (memory == nullptr) return;
  // Whether it held a secret is not known any more, so everything is wiped.
  Prefix* prefix = static_cast<Prefix*>(memory) - 1;
  ::explicit_bzero(memory, prefix->size);
  std::free(prefix);
}
