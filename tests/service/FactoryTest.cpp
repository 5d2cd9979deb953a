#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <set>

#include "tests/service/Service.h"

namespace {

using Text = const I18NString&;
using Service = IVRDConfiguration;

/// The place of a virtual operation in the table that compiled clients index, counted from 0.
template <class Operation>
std::uintptr_t slotOf(Operation operation) {
  std::uintptr_t words[2];
  static_assert(sizeof words == sizeof operation);
  std::memcpy(words, &operation, sizeof words);
  return words[0] / sizeof(void*);
}

}  // namespace

// Clients that were compiled long ago find the operations by their place.
TEST(ServiceInterface, OperationsStandInTheirOrder) {
  const std::uintptr_t slots[] = {
      slotOf<void (Service::*)()>(&Service::init),
      slotOf<void (Service::*)(IBJBufferedInputStream&)>(&Service::init),
      slotOf<void (Service::*)(VRDIDOM_Element&)>(&Service::init),
      slotOf(&Service::getParameterNames),
      slotOf<I18NString (Service::*)(Text, int)>(&Service::getValue),
      slotOf<VRDIDOM_Element (Service::*)(Text, int)>(&Service::getValueElement),
      slotOf(&Service::getProductLocaleList),
      slotOf(&Service::getContentLocaleList),
      slotOf(&Service::getTimeZones),
      slotOf(&Service::exportToCM),
      slotOf(&Service::validateProductLocale),
      slotOf(&Service::validateContentLocale),
      slotOf(&Service::normalizeLocale),
      slotOf(&Service::mapProductLocale),
      slotOf(&Service::mapContentLocale),
      slotOf(&Service::resolveEffectivePath),
      slotOf(&Service::getCurrencies),
      slotOf(&Service::getFonts),
      slotOf(&Service::mapFont),
      slotOf(&Service::getFontMappings),
      slotOf(&Service::isInternalSSL),
      slotOf(&Service::isExternalSSL),
      slotOf(&Service::getComponentVersion),
      slotOf<I18NString (Service::*)(Text, int, int)>(&Service::getValue),
      slotOf<VRDIDOM_Element (Service::*)(Text, int, int)>(&Service::getValueElement),
  };
  std::uintptr_t expected = 0;
  for (const std::uintptr_t slot : slots) EXPECT_EQ(slot, expected++);
}

TEST(ServiceFactory, SharesOneObjectAndGivesPrivateOnesWithoutAnInstallation) {
  const EnvironmentGuard execPath("ZAN_EXEC_PATH", "/no/such/folder");
  const EnvironmentGuard root("ZAN_ROOT", nullptr), libraryPath("LD_LIBRARY_PATH", nullptr);
  const TemporaryFolder empty;
  const CurrentDirectoryGuard directory(empty.path());
  IVRDConfiguration* shared = VRDConfigurationFactory::getInstance();
  const PrivateService first, second;
  EXPECT_EQ((std::set<IVRDConfiguration*>{nullptr, shared, first.get(), second.get()}).size(), 4U);

  VRDConfigurationFactory::releaseObject(shared);
  VRDConfigurationFactory::releaseObject(nullptr);
  EXPECT_EQ(VRDConfigurationFactory::getInstance(), shared);
  EXPECT_EQ(shared->normalizeLocale(" FR_ca "), "fr-ca");
  EXPECT_EQ(shared->getTimeZones("en").at("Europe/Paris"), "Central European Standard Time");
}
