#include "platform/idom/ParseMemory.h"

#include <new>

ParseMemory::~ParseMemory() {
  while (m_ring.next != &m_ring) release(m_ring.next);
}

void* ParseMemory::allocate(XMLSize_t size) {
  void* memory = DomMemory::instance().allocate(sizeof(Block) + size);
  auto* block = new (memory) Block{&m_ring, m_ring.next};
  m_ring.next->previous = block;
  m_ring.next = block;
  return block + 1;
}

void ParseMemory::deallocate(void* memory) {
  if (memory != nullptr) release(static_cast<Block*>(memory) - 1);
}

void ParseMemory::release(Block* block) {
  block->previous->next = block->next;
  block->next->previous = block->previous;
  DomMemory::instance().deallocate(block);
}
