#include <gtest/gtest.h>

#include <string>

#include "platform/core/VRDFmDir.h"
#include "tests/support/Installation.h"
#include "tests/support/StandInDefaults.h"
#include "tests/support/Store.h"

namespace {

TEST(LifecycleTest, TempIsHandedOnOnce) {
  // The parameter, and the temporary path after the first use, "before" being set before it.
  const std::pair<std::string, const char*> rows[] = {
      {parameter("temp", "/var/tmp"), "/var/tmp"},
      {"", ""},
      {parameter("temp", "c2VjcmV0", "", "encrypted='true'"), "before"},
  };
  for (const auto& [temp, expected] : rows) {
    const CurrentInstallation installation(temp);
    startOver();
    VRDFmDir::setTempPath("before");
    store();
    EXPECT_STREQ(VRDFmDir::getTempPath().c_str(), expected);
    VRDFmDir::setTempPath("since");
    store().init();
    store();
    EXPECT_STREQ(VRDFmDir::getTempPath().c_str(), "since");
  }
}

TEST(LifecycleTest, ASecondStoreDoesNotReadTheDocumentAgain) {
  StandInDefaults::setRuntime({{"r", "runtime"}});
  const CurrentInstallation installation(parameter("n", "document") + parameter("r", "document"));
  EXPECT_EQ(textOf("n") + textOf("r"), "documentdocument");
  delete VRDConfiguration::getInstance();
  EXPECT_EQ(VRDConfiguration::g_singletonVRDConfiguration, nullptr);
  EXPECT_EQ(textOf("n") + textOf("r"), "runtime");
  EXPECT_EQ(VRDConfiguration::getInstance(), VRDConfiguration::g_singletonVRDConfiguration);
}

}  // namespace
