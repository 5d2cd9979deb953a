#pragma once

#include <utility>

#include "crypto/VRDCrypto.h"

/// Memory that the provider gave out, an error document (`char`) or a block (`void`), which goes
/// back to it exactly once: with `giveBack`, or else when the block ends.
template <class Memory>
class ProviderMemory {
 public:
  explicit ProviderMemory(VRDCrypto& provider, Memory* memory = nullptr)
      : m_provider(provider), m_memory(memory) {}
  ~ProviderMemory() {
    try {
      giveBack();
    } catch (...) {
      // Another exception is on its way already; it tells what went wrong first.
    }
  }
  ProviderMemory(const ProviderMemory&) = delete;
  ProviderMemory& operator=(const ProviderMemory&) = delete;

  /// Where the provider puts the pointer.
  Memory** address() { return &m_memory; }
  Memory* get() const { return m_memory; }

  /// Does nothing where there is nothing to give back. What the provider throws passes through.
  void giveBack() {
    if (m_memory != nullptr) {
      m_provider.HLD_CryptoFree(std::exchange(m_memory, nullptr), nullptr);
    }
  }

 private:
  VRDCrypto& m_provider;
  Memory* m_memory;
};
