#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <typeinfo>

#include "platform/core/VRDErrors.h"
#include "platform/core/VRDException.h"
#include "platform/core/VRDMessage.h"

namespace {

VRDException sampleException() {
  VRDException exception(VRDSeverity_Error, 13);
  VRDMessage message("samplemsgs", 0x610B54C9);
  message << VRDMessageParm("fr-ca");
  exception << message << (VRDMessage("plain", 1) << VRDMessageParm("two\nlines"));
  message << VRDMessageParm("too late");
  exception.addBackTrace({"VRDConfigurationFactory", 42}, nullptr, "VRD_THROW");
  return exception;
}

void expectSame(VRDThrowable& left, VRDThrowable& right) {
  EXPECT_EQ(typeid(left), typeid(right));
  EXPECT_EQ(left.toString(), right.toString());
  EXPECT_EQ(left.getBackTraceCount(), right.getBackTraceCount());
}

TEST(Exception, ClonesAndIsHurledAsAnEqualObjectOfItsOwn) {
  const std::unique_ptr<VRDThrowable> family[] = {
      std::make_unique<VRDException>(sampleException()),
      std::make_unique<VRDAssertError>(3, "VRD_ASSERT(x);"),
      std::make_unique<VRDOutOfMemoryError>(4, "while sorting"),
      std::make_unique<VRDStdExceptionError>(std::runtime_error("broken pipe"))};
  for (const auto& member : family) {
    SCOPED_TRACE(member->getThrowableName());
    // More records than an object has room for.
    for (long line = 1; line <= 7; ++line)
      member->addBackTrace({"Unit", line}, nullptr, "VRD_RETHROW");
    const std::size_t count = member->getBackTraceCount();
    const std::unique_ptr<VRDThrowable> copy(member->clone());
    expectSame(*member, *copy);
    try {
      copy->hurl({"Site", 99}, "a remark", "VRD_THROW");
      ADD_FAILURE() << "came back";
    } catch (VRDThrowable& caught) {
      EXPECT_NE(&caught, copy.get());
      expectSame(*copy, caught);
      ASSERT_EQ(caught.getBackTraceCount(), count + 1);
      EXPECT_EQ(caught.getBackTraceAt(count).line, 99);
    }
    EXPECT_EQ(member->getBackTraceCount(), count) << "a copy changed its origin";
  }
}

TEST(Throwable, ToStringTellsEverythingOneFactALine) {
  const std::pair<std::shared_ptr<VRDThrowable>, const char*> rows[] = {
      {std::make_shared<VRDException>(sampleException()),
       "VRDException\nerror 13\nsamplemsgs 0x610B54C9 (fr-ca)\nplain 0x00000001 (two\nlines)\n"
       "  at VRDConfigurationFactory:42 VRD_THROW"},
      {std::make_shared<VRDException>(VRDSeverity_Information, 5), "VRDException\ninformation 5"},
      {std::make_shared<VRDException>(VRDSeverity(7), 5), "VRDException\nseverity 7, code 5"},
      {std::make_shared<VRDStdExceptionError>(std::runtime_error("")),
       "VRDStdExceptionError\nerror 0\na standard exception without a text"}};
  for (const auto& [error, told] : rows) {
    EXPECT_EQ(error->toString().utf8(), told);
    EXPECT_FALSE(error->getMessage().empty());
  }
  I18NString out("before:");
  sampleException().toString("> ", "; ", out, 1);
  EXPECT_EQ(out.utf8(),
            "before:> VRDException; > error 13; > samplemsgs 0x610B54C9 (fr-ca); "
            "> plain 0x00000001 (two; > lines); >   at VRDConfigurationFactory:42 VRD_THROW");
}

}  // namespace
