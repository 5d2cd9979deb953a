#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <typeinfo>

#include "platform/core/VRDErrors.h"
#include "platform/core/VRDException.h"
#include "platform/core/VRDMessage.h"

namespace {

/// A client's own kind of message.
class PlainMessage : public VRDMessageBase {
 public:
  explicit PlainMessage(const char* text) : m_text(text) {}
  std::unique_ptr<VRDMessageBase> clone() const override {
    return std::make_unique<PlainMessage>(*this);
  }
  I18NString getText() const override { return m_text; }

 private:
  I18NString m_text;
};

VRDException sampleException() {
  VRDException exception(VRDSeverity_Error, 13);
  VRDMessage message("samplemsgs", 0x610B54C9);
  message << VRDMessageParm("fr-ca");
  exception << message << PlainMessage("two\nlines");
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
      const VRDBackTraceRecord& record = caught.getBackTraceAt(count);
      EXPECT_EQ(std::string(record.file) + record.macroWord, "SiteVRD_THROW");
      EXPECT_EQ(record.line, 99);
    }
    EXPECT_EQ(member->getBackTraceCount(), count) << "a copy changed its origin";
  }
}

TEST(Exception, AssignmentTakesOverEverything) {
  VRDException source = sampleException();
  VRDException target(VRDSeverity_Information, 2);
  target << PlainMessage("old");
  target.addBackTrace({"Old", 1}, nullptr, "VRD_THROW");
  target = source;
  target = *&target;
  expectSame(source, target);
  EXPECT_NE(&target.getMessageAt(0), &source.getMessageAt(0));
  for (int i = 0; i < 20; ++i) target.addMessage(target.getMessageAt(1));  // one of its own
  EXPECT_EQ(target.getMessageAt(21).getText(), "two\nlines");
}

TEST(Throwable, IsNeverWithoutMessage) {
  const std::pair<std::shared_ptr<VRDThrowable>, const char*> rows[] = {
      {std::make_shared<VRDException>(VRDSeverity_Information, 2), "information 2"},
      {std::make_shared<VRDException>(static_cast<VRDSeverity>(7), -3), "severity 7, code -3"},
      {std::make_shared<VRDAssertError>(0, nullptr), "an assertion failed"},
      {std::make_shared<VRDOutOfMemoryError>(0, nullptr), "memory is exhausted"},
      {std::make_shared<VRDStdExceptionError>(std::runtime_error("")),
       "a standard exception without a text"}};
  for (const auto& [error, message] : rows) {
    EXPECT_EQ(error->getMessage().utf8(), message);
    EXPECT_EQ(std::as_const(*error).getMessage().utf8(), message);
  }
}

TEST(Throwable, ToStringTellsEverythingOneFactALine) {
  VRDException exception = sampleException();
  exception.addBackTrace({nullptr, 0}, nullptr, nullptr);
  EXPECT_EQ(exception.toString().utf8(),
            "VRDException\nerror 13\nsamplemsgs 0x610B54C9 (fr-ca)\ntwo\nlines\n"
            "  at VRDConfigurationFactory:42 VRD_THROW\n  at ?:0 ?");
  EXPECT_EQ(VRDException(VRDSeverity_Error, 14).toString().utf8(), "VRDException\nerror 14");
  EXPECT_EQ(VRDOutOfMemoryError(5, "while sorting").toString().utf8(),
            "VRDOutOfMemoryError\nerror 5\nwhile sorting");

  I18NString out("before:");
  sampleException().toString("> ", "; ", out, 1);
  sampleException().toString(nullptr, nullptr, out, 0);
  EXPECT_EQ(out.utf8(),
            "before:> VRDException; > error 13; > samplemsgs 0x610B54C9 (fr-ca); > two; > lines; "
            ">   at VRDConfigurationFactory:42 VRD_THROW"
            "VRDException\nerror 13\nsamplemsgs 0x610B54C9 (fr-ca)\ntwo\nlines");
}

}  // namespace
