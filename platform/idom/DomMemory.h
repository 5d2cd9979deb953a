#pragma once

#include <xercesc/framework/MemoryManager.hpp>

#include <atomic>
#include <cstddef>

/// The memory of all documents and parsers of the layer. Lives as long as the process and belongs
/// to nobody else, so that documents outlive a neighbour that ends Xerces-C. Wiped when it is given
/// back: documents can hold decrypted values.
class DomMemory final : public xercesc::MemoryManager {
 public:
  static DomMemory& instance();

  /// Throws `xercesc::OutOfMemoryException`, the one that Xerces-C itself expects.
  void* allocate(XMLSize_t size) override;
  void deallocate(void* memory) override;
  xercesc::MemoryManager* getExceptionMemoryManager() override { return this; }

  /// What is handed out at present, as the heap counts it.
  std::size_t bytesInUse() const { return m_bytesInUse.load(std::memory_order_relaxed); }

 private:
  DomMemory() = default;

  std::atomic<std::size_t> m_bytesInUse{0};
};
