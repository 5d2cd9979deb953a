#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/VRDIDOMUtils.h"
#include "tests/service/Service.h"

using testing::ElementsAre;

TEST(ServiceParameters, ComeFromTheStore) {
  const ServiceInstallation installation(parameter("b", "two") + parameter("a", "one") +
                                         parameter("s", "AAAA", "", "encrypted='true'"));
  const PrivateService service;
  EXPECT_EQ(service->getValue("a", 0), "one");
  VRDIDOM_Element element = service->getValueElement("b", 0);
  EXPECT_EQ(VRDIDOMUtils::getText(element), "two");
  VRDIDOMUtils::setText(element, "changed");
  EXPECT_EQ(service->getValue("b", 0), "two") << "the element is a copy";

  EXPECT_EQ(service->getValue("s", 0), "AAAA");
  EXPECT_EQ(stateOf([&] { service->getValue("s", 1); }), VRDCFGAPI_CryptoUnavailable);
  EXPECT_EQ(service->getValue("none", 1), "");
  EXPECT_TRUE(service->getValueElement("none", 1).isNull());
  EXPECT_NE(service->getValue("", 0).find("name=\"a\"", 0), -1) << "the whole configuration";

  I18NString path = "../data";
  EXPECT_EQ(&service->resolveEffectivePath(path), &path);
  EXPECT_EQ(path, (installation / "data").c_str());

  store().setValue("c", "three");
  EXPECT_THAT(service->getParameterNames(), ElementsAre("a", "b", "c", "s"));

  // The forms that answer nothing.
  EXPECT_EQ(service->getValue("a", 0, 0), "");
  EXPECT_TRUE(service->getValueElement("a", 0, 0).isNull());
  EXPECT_EQ(service->exportToCM(), "");
}

TEST(ServiceParameters, ADispatcherIsSecureIfItsAddressBeginsSo) {
  const ServiceInstallation installation;
  const PrivateService service;
  const std::pair<const char*, int> cases[] = {
      {"https://host:1", 1}, {"http://host", 0}, {"HTTPS://host", 0}, {" https://host", 0}};
  for (const auto& [address, secure] : cases) {
    store().setValue("internalDispatcher", address);
    store().setValue("externalDispatcher", secure == 1 ? "" : "https:");
    EXPECT_EQ(service->isInternalSSL(), secure) << address;
    EXPECT_EQ(service->isExternalSSL(), 1 - secure) << address;
  }
}
