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

/// The last record of @p outcome as it is on that line of this file.
std::string here(int line, const char* macroWord) {
  return "|  at GuardedAllocationTest:" + std::to_string(line) + " " + macroWord;
}

TEST(GuardedAllocation, GivesWhatWasAllocatedOrTellsTheLineOfTheSite) {
  EXPECT_EQ(*std::unique_ptr<std::string>(VRD_GUARDED_NEW(std::string, 3, 'x')), "xxx");
  EXPECT_EQ(*std::unique_ptr<std::string>(VRD_GUARDED_NEW(std::string, )), "");
  const std::string outcome =
      outcomeOf([&] { delete VRD_GUARDED_NEW(std::string, std::string("x"), 2); });
  EXPECT_EQ(outcome.substr(outcome.rfind('|')), here(__LINE__ - 1, "VRD_THROW"));
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
  EXPECT_EQ(outcome, "VRDAssertError|error 0|VRD_ASSERT(status && !err);" +
                         here(line, "VRD_THROW") + here(line + 2, "VRD_RETHROW"));
}

}  // namespace
