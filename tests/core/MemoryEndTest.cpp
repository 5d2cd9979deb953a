#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <new>
#include <stdexcept>
#include <string>

#include "platform/core/I18NString.h"
#include "platform/core/VRDGuardedAllocation.h"

namespace {
thread_local long allocationsLeft = -1;  // negative: as many as are wanted
}

// clang's thread sanitizer lets nobody else define `operator new`.
#if defined(__clang__)
#if __has_feature(thread_sanitizer)
#define OPERATOR_NEW_IS_TAKEN
#endif
#endif

#ifndef OPERATOR_NEW_IS_TAKEN

// Not inlined: the compiler would take `free` for the wrong end of `new` there.
[[gnu::noinline]] void* operator new(std::size_t size) {
  void* memory = allocationsLeft == 0 ? nullptr : std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  if (allocationsLeft > 0) --allocationsLeft;
  return memory;
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

// Lets the n-th allocation of a change fail, for every n until the change succeeds.
void expectAllOrNothing(const char* what, const std::function<void(I18NString&)>& change) {
  const std::string start = "\xA9 a text that is too long for the string's own room \xC3";
  bool done = false;
  for (long allowed = 0; !done; ++allowed) {
    I18NString text{std::string_view(start)};
    allocationsLeft = allowed;
    try {
      change(text);
      done = true;
    } catch (const std::bad_alloc&) {
    }
    allocationsLeft = -1;
    EXPECT_EQ(text.length(), I18NString(text.utf8()).length()) << what;
    EXPECT_TRUE(done ? allowed > 0 : text.utf8() == start) << what << " after " << allowed;
  }
}

TEST(MemoryEnd, LeavesAStringAsItWas) {
  const I18NString other(std::string_view("\xA9" + std::string(200, 'x')));
  const std::u16string wide(300, 0x20AC);
  expectAllOrNothing("copy", [&](I18NString& s) { s = other; });
  expectAllOrNothing("assign", [&](I18NString& s) { s = other.c_str(); });
  expectAllOrNothing("append", [&](I18NString& s) { s += other; });
  expectAllOrNothing("append itself", [&](I18NString& s) { s += s; });
  expectAllOrNothing("replace", [&](I18NString& s) { s.replace(3, 4, other); });
  expectAllOrNothing("resize", [&](I18NString& s) { s.resize(400, 0xDCA9); });
  expectAllOrNothing("UTF-16", [&](I18NString& s) { s.appendUtf16(wide); });
  expectAllOrNothing("c_str", [&](I18NString& s) { s.c_str("Shift_JIS"); });
}

int* nested(int depth, const std::function<int*()>& allocate) {
  return VRDGuardedAllocation(
      {"Site", depth}, [&] { return depth == 0 ? allocate() : nested(depth - 1, allocate); });
}

// The error itself must not need what there is none of, and loses records rather than its way.
TEST(MemoryEnd, IsToldWithoutMemory) {
  const std::runtime_error large(std::string(1000, 'x'));
  const std::pair<std::function<int*()>, std::string> rows[] = {
      {[] { return new int; }, "VRDOutOfMemoryError\nerror 0\nmemory is exhausted"},
      {[] { return static_cast<int*>(nullptr); },
       "VRDOutOfMemoryError\nerror 0\nmemory is exhausted"},
      {[&]() -> int* { throw large; },
       "VRDStdExceptionError\nerror 0\na standard exception without a text"}};
  for (const auto& [allocate, expected] : rows) {
    try {
      allocationsLeft = 0;
      nested(9, allocate);
      ADD_FAILURE() << "nothing was thrown";
    } catch (VRDThrowable& error) {
      allocationsLeft = -1;
      const std::string told(error.toString().utf8());
      EXPECT_EQ(told.substr(0, told.find("\n  at ")), expected);
      EXPECT_EQ(error.getBackTraceCount(), 4u);
      EXPECT_NE(told.find("\n  at Site:0 VRD_THROW\n"), std::string::npos) << told;
    }
  }
}

}  // namespace

#endif
