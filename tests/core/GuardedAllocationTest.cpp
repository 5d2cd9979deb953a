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
  const std::pair<std::function<int*()>, std::string> rows[] = {
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

TEST(Raise, AssertsWithTheTextOfTheUseAndPassesItOn) {
  const bool status = true, err = true;
  int line = 0;
  const std::string outcome = outcomeOf([&] {
    VRD_ASSERT(status && err);
    try {
      line = __LINE__ + 1;
      VRD_ASSERT(status && !err);
    } catch (VRDThrowable& error) {
      VRD_RETHROW(error);
    }
  });
  const std::string at = "|  at GuardedAllocationTest:";
  EXPECT_EQ(outcome, "VRDAssertError|error 0|VRD_ASSERT(status && !err);" + at +
                         std::to_string(line) + " VRD_THROW" + at + std::to_string(line + 2) +
                         " VRD_RETHROW");
}

}  // namespace
