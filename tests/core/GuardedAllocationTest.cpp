#define VRD_SOURCE_UNIT "GuardedAllocationTest"

#include "platform/core/VRDGuardedAllocation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>

#include "platform/core/VRDException.h"

namespace {

/// A client's own member of the family.
class ClientException : public VRDException {
 public:
  using VRDException::VRDException;
  ClientException* clone() const override { return new ClientException(*this); }
  [[noreturn]] void hurl(const VRDFileLocation& where, const char* text,
                         const char* macroWord) override {
    addBackTrace(where, text, macroWord);
    throw *this;
  }
  const char* getThrowableName() const override { return "ClientException"; }
};

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
      {[]() -> int* { throw ClientException(VRDSeverity_Error, 5); },
       "ClientException|error 5" + passedOn},
      {[]() -> int* {
         VRDAssertError(0, "x").hurl({"Inner", 7}, nullptr, "VRD_THROW");
       },
       "VRDAssertError|error 0|x|  at Inner:7 VRD_THROW" + passedOn},
      {[]() -> int* { throw std::bad_array_new_length(); },
       "VRDOutOfMemoryError|error 0|memory is exhausted" + thrown},
      {[]() -> int* { throw std::out_of_range("beyond"); },
       "VRDStdExceptionError|error 0|beyond" + thrown}};
  for (const auto& [allocate, expected] : rows) {
    EXPECT_EQ(outcomeOf([&] { VRDGuardedAllocation({"Site", 42}, allocate); }), expected);
  }
  EXPECT_THROW(VRDGuardedAllocation(VRD_LOCATION, []() -> int* { throw 42; }), int);
}

std::string here(int line) { return "|  at GuardedAllocationTest:" + std::to_string(line); }

TEST(GuardedAllocation, GivesWhatWasAllocatedOrTellsTheLineOfTheSite) {
  EXPECT_EQ(*std::unique_ptr<std::string>(VRD_GUARDED_NEW(std::string, 3, 'x')), "xxx");
  EXPECT_EQ(*std::unique_ptr<std::string>(VRD_GUARDED_NEW(std::string, )), "");
  const std::string outcome =
      outcomeOf([&] { delete VRD_GUARDED_NEW(std::string, std::string("x"), 2); });
  EXPECT_EQ(outcome.substr(outcome.rfind('|')), here(__LINE__ - 1) + " VRD_THROW");
}

TEST(Raise, AssertsWithTheTextOfTheUse) {
  const bool status = true, err = true;
  EXPECT_NO_THROW(VRD_ASSERT(status && err));
  const std::string outcome = outcomeOf([&] { VRD_ASSERT(status && !err); });
  EXPECT_EQ(outcome, "VRDAssertError|error 0|VRD_ASSERT(status && !err);" + here(__LINE__ - 1) +
                         " VRD_THROW");
}

TEST(Raise, PassesOnTheSameObject) {
  const VRDThrowable* inner = nullptr;
  const std::string outcome = outcomeOf([&] {
    try {
      try {
        ClientException error(VRDSeverity_Error, 13);
        VRD_THROW(error);
      } catch (VRDThrowable& error) {
        inner = &error;
        VRD_RETHROW(error);
      }
    } catch (VRDThrowable& error) {
      EXPECT_EQ(inner, &error);
      VRD_RETHROW(error);
    }
  });
  EXPECT_THAT(outcome, testing::MatchesRegex(
                           "ClientException.error 13.*VRD_THROW.*VRD_RETHROW.*VRD_RETHROW"));
}

}  // namespace
