#pragma once

#include <xercesc/framework/MemoryManager.hpp>

#include <cstddef>

#include "platform/idom/DomMemory.h"

/// The memory of one parser: what it has not given back when it ends goes with this object. Where
/// memory ends while a parser is made, Xerces-C loses the parts that it has so far.
///
/// Must outlive the parser. Documents outlive both, so theirs is `DomMemory`.
class ParseMemory final : public xercesc::MemoryManager {
 public:
  ParseMemory() = default;
  ~ParseMemory() override;
  ParseMemory(const ParseMemory&) = delete;
  ParseMemory& operator=(const ParseMemory&) = delete;

  void* allocate(XMLSize_t size) override;
  void deallocate(void* memory) override;
  /// An exception is on its way when the parser is gone.
  xercesc::MemoryManager* getExceptionMemoryManager() override { return &DomMemory::instance(); }

 private:
  /// In front of what is handed out; all that is out stands in a ring.
  struct alignas(std::max_align_t) Block {
    Block* previous;
    Block* next;
  };

  static void release(Block* block);

  Block m_ring{&m_ring, &m_ring};
};
