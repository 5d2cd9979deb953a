#include "platform/idom/DomMemory.h"

#include <malloc.h>
#include <string.h>

#include <cstdlib>
#include <xercesc/util/OutOfMemoryException.hpp>

DomMemory& DomMemory::instance() {
  static DomMemory& memory = *new DomMemory;
  return memory;
}

void* DomMemory::allocate(XMLSize_t size) {
  void* memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw xercesc::OutOfMemoryException();
  m_bytesInUse.fetch_add(::malloc_usable_size(memory), std::memory_order_relaxed);
  return memory;
}

void DomMemory::deallocate(void* memory) {
  if (memory == nullptr) return;
  const std::size_t size = ::malloc_usable_size(memory);
  m_bytesInUse.fetch_sub(size, std::memory_order_relaxed);
  // Whether it held a decrypted value is not known here. It costs little: a document goes in large
  // pieces, and seldom.
  ::explicit_bzero(memory, size);
  std::free(memory);
}
