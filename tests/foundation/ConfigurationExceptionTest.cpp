#include "foundation/VRDConfigurationException.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/support/EnvironmentGuard.h"

namespace {

const VRDMessage& messageAt(const VRDConfigurationException& error, std::size_t index) {
  return dynamic_cast<const VRDMessage&>(error.getMessageAt(index));
}

TEST(ConfigurationExceptionTest, CarriesTheMessageOfItsState) {
  // State and number; 0: no message.
  const std::pair<int, unsigned long> rows[] = {
      {-1, 0},         {0, 0},           {1, 0x6102852C},  {2, 0},           {3, 0x610F7369},
      {4, 0x6100810F}, {5, 0x61058FF4},  {6, 0},           {7, 0x61048389},  {8, 0x610BE3C6},
      {9, 0x61040660}, {10, 0x610C607B}, {11, 0x610CB517}, {12, 0x610E2D99}, {13, 0x610B54C9},
      {14, 0},         {15, 0},          {16, 0x610F265C}, {17, 0},          {1 << 30, 0},
  };
  for (const auto& [state, number] : rows) {
    SCOPED_TRACE(state);
    const VRDConfigurationException error(VRDSeverity_Error, VRDCFGAPI_ErrorState(state));
    EXPECT_EQ(error.getCode(), state);
    EXPECT_EQ(error.getSeverity(), 1);
    ASSERT_EQ(error.getMessageCount(), number == 0 ? 0U : 1U);
    if (number == 0) continue;
    EXPECT_EQ(messageAt(error, 0).getNumber(), number);
    EXPECT_EQ(messageAt(error, 0).getCatalogue(), "vrdcfgapimsgs");
    EXPECT_EQ(error.getMessage().find("vrdcfgapimsgs", 0), -1) << "no text in the catalogue";
  }
}

VRDConfigurationException unmapped(const char* locale) {
  VRDMessage message("vrdcfgapimsgs", 0x610B54C9);
  message << VRDMessageParm(locale);
  return {VRDSeverity_Error, VRDCFGAPI_LocaleUnmapped, message};
}

TEST(ConfigurationExceptionTest, KeepsTypeMessagesAndTraceWhenHurledAndCopied) {
  try {
    unmapped("xx_YY").hurl({"Site", 42}, nullptr, "VRD_THROW");
  } catch (VRDThrowable& caught) {
    const std::unique_ptr<VRDThrowable> clone(caught.clone());
    VRDConfigurationException copy(VRDSeverity_Error, VRDCFGAPI_InternalError);
    copy = dynamic_cast<VRDConfigurationException&>(*clone);
    copy = *&copy;
    EXPECT_EQ(&(copy << VRDMessage("added", 1)), &copy);
    const EnvironmentGuard english("LC_ALL", "C");
    EXPECT_EQ(copy.toString().utf8(),
              "VRDConfigurationException\nerror 13\nThere is no mapping for the locale \"xx_YY\".\n"
              "added 0x00000001\n  at Site:42 VRD_THROW");
  }
}

}  // namespace
