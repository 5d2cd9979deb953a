#pragma once

#include <sys/mman.h>

#include <cstddef>
#include <new>

/// An allocator that asks the system for large pages where there are several to fill: the first
/// touch of an ordinary page costs more than filling it, and a long table has thousands of them.
/// Where the system has none to give, the memory comes in ordinary ones. In both, what is allocated
/// and never touched takes no memory.
template <class Element>
class LargePages {
 public:
  using value_type = Element;

  LargePages() = default;
  template <class Other>
  LargePages(const LargePages<Other>&) noexcept {}

  Element* allocate(std::size_t count) {
    if (!isLarge(count)) return static_cast<Element*>(::operator new(count * sizeof(Element)));
    void* memory = ::mmap(nullptr, count * sizeof(Element), PROT_READ | PROT_WRITE,
                          MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) throw std::bad_alloc();
    ::madvise(memory, count * sizeof(Element), MADV_HUGEPAGE);
    return static_cast<Element*>(memory);
  }

  void deallocate(Element* memory, std::size_t count) noexcept {
    if (isLarge(count)) {
      ::munmap(memory, count * sizeof(Element));
    } else {
      ::operator delete(memory);
    }
  }

  bool operator==(const LargePages&) const noexcept { return true; }
  bool operator!=(const LargePages&) const noexcept { return false; }

 private:
  static bool isLarge(std::size_t count) {
    return count >= (std::size_t{1} << 21) / sizeof(Element);
  }
};
