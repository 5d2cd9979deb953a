#define VRD_SOURCE_UNIT "GuardedAllocationTest"

#include "platform/core/VRDGuardedAllocation.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>

#include "platform/core/VRDException.h"

namespace {

/// All that leaves @p action tells of itself.
std::string outcomeOf(const std::function<void()>& action) {
  I18NString told;
  try {
    action();
  } catch (VRDThrowable& error) {
    error.toString("", "|", told, 1);
  }
  return std::string(told.utf8());
}

TEST(GuardedAllocation, TurnsEveryFailureIntoAMemberOfTheFamily) {
  const std::string thrown = "|  at Site:42 VRD_THROW", passedOn = "|  at Site:42 VRD_RETHROW";
  const std::string here = "|  at GuardedAllocationTest:" + std::to_string(__LINE__ + 3);
  const std::pair<std::function<int*()>, std::string> rows[] = {
      {[]() -> int* {
         VRD_ASSERT(1 > 2);
         return nullptr;
       },
       "VRDAssertError|error 0|VRD_ASSERT(1 > 2);" + here + " VRD_THROW" + passedOn},
      {[] { return static_cast<int*>(nullptr); },
       "VRDOutOfMemoryError|error 0|memory is exhausted" + thrown + passedOn},
      {[]() -> int* {
         VRDAssertError(0, "x").hurl({"Inner", 7}, nullptr, "VRD_THROW");
       },
       "VRDAssertError|error 0|x|  at Inner:7 VRD_THROW" + passedOn},
      {[]() -> int* { throw std::bad_array_new_length(); },
       "VRDOutOfMemoryError|error 0|memory is exhausted" + thrown},
      {[]() -> int* { throw std::out_of_range("beyond"); },
       "VRDStdExceptionError|error 0|beyond" + thrown}};
  for (const auto& [allocate, expected] : rows) {
    EXPECT_EQ(outcomeOf([&allocate = allocate] {
                VRDGuardedAllocation({"Site", 42}, allocate);
              }),
              expected);
  }
  EXPECT_THROW(VRDGuardedAllocation(VRD_LOCATION, []() -> int* { throw 42; }), int);
  EXPECT_EQ(*std::unique_ptr<std::string>(VRD_GUARDED_NEW(std::string, 3, 'x')), "xxx");
}

}  // namespace
