#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/VRDIDOMUtils.h"
#include "tests/service/Service.h"

using testing::ElementsAre;

TEST(ServiceParameters, ComeFromTheStore) {
  const ServiceInstallation installation(parameter("b", "two") + parameter("a", "one"));
  const PrivateService service;
  EXPECT_EQ(service->getValue("a", 0), "one");
  VRDIDOM_Element element = service->getValueElement("b", 0);
  EXPECT_EQ(VRDIDOMUtils::getText(element), "two");
  VRDIDOMUtils::setText(element, "changed");
  EXPECT_EQ(service->getValue("b", 0), "two") << "the element is a copy";

  EXPECT_EQ(service->getValue("none", 1), "");
  EXPECT_TRUE(service->getValueElement("none", 1).isNull());
  EXPECT_NE(service->getValue("", 0).find("name=\"a\"", 0), -1) << "the whole configuration";

  I18NString path = "../data";
  EXPECT_EQ(&service->resolveEffectivePath(path), &path);
  EXPECT_EQ(path, (installation / "data").c_str());

  store().setValue("c", "three");
  EXPECT_THAT(plain(service->getParameterNames()), ElementsAre("a", "b", "c"));

  // The forms that answer nothing.
  EXPECT_EQ(service->getValue("a", 0, 0), "");
  EXPECT_TRUE(service->getValueElement("a", 0, 0).isNull());
  EXPECT_EQ(service->exportToCM(), "");
}

TEST(ServiceParameters, AStateIsRaisedWithItsMessage) {
  const ServiceInstallation installation(parameter("secret", "AAAA", "", "encrypted='true'"));
  const PrivateService service;
  EXPECT_EQ(service->getValue("secret", 0), "AAAA");
  try {
    service->getValue("secret", 1);
    FAIL() << "there is no provider";
  } catch (const VRDConfigurationException& error) {
    EXPECT_EQ(error.getCode(), VRDCFGAPI_CryptoUnavailable);
    EXPECT_EQ(error.getSeverity(), 1);
    EXPECT_EQ(error.getMessageCount(), 1U);
    EXPECT_EQ(error.getBackTraceCount(), 0U);
  }
}

TEST(ServiceParameters, ADispatcherIsSecureIfItsAddressBeginsSo) {
  const ServiceInstallation installation;
  const PrivateService service;
  for (const auto& [address, secure] : std::map<std::string, int>{{"https://host:1", 1},
                                                                  {"http://host", 0},
                                                                  {"HTTPS://host", 0},
                                                                  {" https://host", 0},
                                                                  {"", 0}}) {
    initWith(*service, "<internalDispatcher><value>" + address + "</value></internalDispatcher>");
    EXPECT_EQ(service->isInternalSSL(), secure) << address;
    EXPECT_EQ(service->isExternalSSL(), 0) << address;
  }
  initWith(*service, "<externalDispatcher><value>https:</value></externalDispatcher>");
  EXPECT_EQ(service->isExternalSSL(), 1);
}
