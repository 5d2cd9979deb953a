#include "foundation/VRDConfigurationException.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/support/EnvironmentGuard.h"

namespace {

constexpr VRDFileLocation here{"ConfigurationExceptionTest", 42};

const VRDMessage& messageAt(const VRDConfigurationException& error, std::size_t index) {
  return dynamic_cast<const VRDMessage&>(error.getMessageAt(index));
}

TEST(ConfigurationExceptionTest, CarriesTheMessageOfItsState) {
  struct Row {
    int state;
    unsigned long number;  // 0: no message
  };
  const Row rows[] = {
      {-1, 0},         {0, 0},           {1, 0x6102852C},  {2, 0},           {3, 0x610F7369},
      {4, 0x6100810F}, {5, 0x61058FF4},  {6, 0},           {7, 0x61048389},  {8, 0x610BE3C6},
      {9, 0x61040660}, {10, 0x610C607B}, {11, 0x610CB517}, {12, 0x610E2D99}, {13, 0x610B54C9},
      {14, 0},         {15, 0},          {16, 0x610F265C}, {17, 0},          {1 << 30, 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.state);
    const VRDConfigurationException error(VRDSeverity_Error,
                                          static_cast<VRDCFGAPI_ErrorState>(row.state));
    EXPECT_EQ(error.getCode(), row.state);
    EXPECT_EQ(error.getSeverity(), 1);
    ASSERT_EQ(error.getMessageCount(), row.number == 0 ? 0U : 1U);
    if (row.number == 0) continue;
    EXPECT_EQ(messageAt(error, 0).getNumber(), row.number);
    EXPECT_TRUE(messageAt(error, 0).getCatalogue() == "vrdcfgapimsgs");
    EXPECT_EQ(error.getMessage().find("vrdcfgapimsgs", 0), -1) << "no text in the catalogue";
  }
}

VRDConfigurationException unmapped(const char* locale) {
  VRDMessage message("vrdcfgapimsgs", 0x610B54C9);
  message << VRDMessageParm(locale);
  return {VRDSeverity_Error, VRDCFGAPI_LocaleUnmapped, message};
}

TEST(ConfigurationExceptionTest, CarriesAGivenMessageAndNoOther) {
  const VRDConfigurationException error = unmapped("xx_YY");
  ASSERT_EQ(error.getMessageCount(), 1U);
  ASSERT_EQ(messageAt(error, 0).getParmCount(), 1U);
  EXPECT_TRUE(messageAt(error, 0).getParmAt(0).getText() == "xx_YY");
  const EnvironmentGuard english("LC_ALL", "C");
  EXPECT_TRUE(error.getMessage() == "There is no mapping for the locale \"xx_YY\".");
}

TEST(ConfigurationExceptionTest, KeepsTypeMessagesAndTraceWhenCopied) {
  VRDConfigurationException error = unmapped("xx");
  try {
    error.hurl(here, nullptr, "VRD_THROW");
  } catch (VRDThrowable& caught) {
    const std::unique_ptr<VRDThrowable> copy(caught.clone());
    auto* same = dynamic_cast<VRDConfigurationException*>(copy.get());
    ASSERT_NE(same, nullptr);
    EXPECT_STREQ(same->getThrowableName(), "VRDConfigurationException");
    EXPECT_EQ(same->getCode(), VRDCFGAPI_LocaleUnmapped);
    EXPECT_EQ(same->getMessageCount(), 1U);
    ASSERT_EQ(same->getBackTraceCount(), 1U);
    EXPECT_EQ(same->getBackTraceAt(0).line, 42);
    error = *same;
    error << VRDMessage("vrdcfgapimsgs", 1);
    error = *&error;
    EXPECT_EQ(error.getMessageCount(), 2U);
  }
}

}  // namespace
