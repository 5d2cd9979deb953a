#pragma once

#include <cstddef>
#include <memory>

// Memory that callers of the provider receive and give back with HLD_CryptoFree. It knows its own
// size, so that it can be wiped then.

/// Throws `std::bad_alloc`.
unsigned char* allocateGiven(std::size_t size);
/// Wipes and frees; a null pointer is nothing to free.
void releaseGiven(void* memory) noexcept;

struct GivenDeleter {
  void operator()(void* memory) const noexcept { releaseGiven(memory); }
};
/// Such memory as long as it has not been handed out.
using GivenMemory = std::unique_ptr<unsigned char, GivenDeleter>;
