#include "tests/faults/FailingMemory.h"

#include <unicode/uclean.h>

#include <cstddef>
#include <cstdlib>
#include <new>

#include "platform/core/IcuText.h"

// The linker leads `malloc` and its family in our objects to `__wrap_`; the C library's own come as
// `__real_`. What the C library takes for itself does not fail: it has its own tests.

namespace {

struct Plan {
  long left = 0;  // up to the failure; 0 or less: it is here or was
  bool armed = false;
  bool lasts = false;
  bool failed = false;
};
thread_local Plan plan;
// ICU's reserve was there: what ICU takes then is there too, until our own code takes some.
thread_local bool icuHasReserve = false;

bool mayHave() {
  if (!plan.armed) return true;
  --plan.left;
  const bool fails = plan.left == 0 || (plan.left < 0 && plan.lasts);
  plan.failed = plan.failed || fails;
  return !fails;
}

}  // namespace

FailingMemory::FailingMemory(long first, Which which) {
  plan = {first, true, which == Which::AllFrom, false};
}
FailingMemory::~FailingMemory() { plan.armed = false; }

bool FailingMemory::hasFailed() { return plan.failed; }

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* memory, std::size_t size);
void* __wrap_malloc(std::size_t size) { return mayHave() ? __real_malloc(size) : nullptr; }
void* __wrap_calloc(std::size_t count, std::size_t size) {
  return mayHave() ? __real_calloc(count, size) : nullptr;
}
void* __wrap_realloc(void* memory, std::size_t size) {
  return mayHave() ? __real_realloc(memory, size) : nullptr;
}

static void* icuMalloc(const void*, std::size_t size) {
  return icuHasReserve || mayHave() ? __real_malloc(size) : nullptr;
}
static void* icuRealloc(const void*, void* memory, std::size_t size) {
  return icuHasReserve || mayHave() ? __real_realloc(memory, size) : nullptr;
}
static void icuFree(const void*, void* memory) { std::free(memory); }
}

// Not inlined: the compiler would take `free` for the wrong end of `new` there.
[[gnu::noinline]] void* operator new(std::size_t size) {
  void* memory = mayHave() ? __real_malloc(size == 0 ? 1 : size) : nullptr;
  icuHasReserve = memory != nullptr && size == icuReserve;
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return mayHave() ? __real_malloc(size == 0 ? 1 : size) : nullptr;
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

// Before anything has used ICU.
static const bool icuIsOurs = [] {
  UErrorCode error = U_ZERO_ERROR;
  u_setMemoryFunctions(nullptr, icuMalloc, icuRealloc, icuFree, &error);
  return U_SUCCESS(error);
}();

// A pool of strings of Xerces-C that finds no memory for its second part loses the first. It is
// known by its name, so stacks have to be taken through code without frame pointers; that is slow,
// so they are short.
extern "C" {
[[gnu::visibility("default")]] const char* __lsan_default_suppressions();
[[gnu::visibility("default")]] const char* __asan_default_options();
const char* __lsan_default_suppressions() {
  return "leak:xercesc_3_2::XMLStringPool::XMLStringPool";
}
const char* __asan_default_options() { return "fast_unwind_on_malloc=0:malloc_context_size=8"; }
}
