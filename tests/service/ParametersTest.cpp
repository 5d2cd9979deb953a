#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/VRDIDOMUtils.h"
#include "store/VRDConfiguration.h"
#include "tests/service/Service.h"

using testing::ElementsAre;

TEST(ServiceParameters, ComeFromTheStore) {
  const ServiceInstallation installation(parameter("b", "two") + parameter("a", "one"));
  const PrivateService service;
  EXPECT_THAT(plain(service->getParameterNames()), ElementsAre("a", "b"));
  EXPECT_EQ(service->getValue("a", 0), "one");
  VRDIDOM_Element element = service->getValueElement("b", 0);
  EXPECT_EQ(VRDIDOMUtils::getText(element), "two");

  // The element is a copy: the tree does not see what a client does to it.
  VRDIDOMUtils::setText(element, "changed");
  EXPECT_EQ(service->getValue("b", 0), "two");

  EXPECT_EQ(service->getValue("none", 1), "");
  EXPECT_TRUE(service->getValueElement("none", 1).isNull());
  EXPECT_NE(service->getValue("", 0).find("name=\"a\"", 0), -1) << "the whole configuration";
  EXPECT_EQ(service->getValue("a", 0, 0), "") << "a form that answers nothing";

  I18NString path = "../data";
  EXPECT_EQ(&service->resolveEffectivePath(path), &path);
  EXPECT_EQ(path, (installation / "data").c_str());

  VRDConfiguration::getInstance()->setValue("c", "three");
  EXPECT_THAT(plain(service->getParameterNames()), ElementsAre("a", "b", "c"));
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
    ASSERT_EQ(error.getMessageCount(), 1U);
    const auto& message = dynamic_cast<const VRDMessage&>(error.getMessageAt(0));
    EXPECT_EQ(message.getCatalogue(), "vrdcfgapimsgs");
    EXPECT_EQ(message.getNumber(), 0x61048389U);
    EXPECT_EQ(error.getBackTraceCount(), 0U);
  }
  EXPECT_EQ(service->getValue("secret", 0), "AAAA");
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

TEST(ServiceParameters, ABadStreamIsRaisedAndChangesNothing) {
  const ServiceInstallation installation;
  installation.setLocales("<supportedFonts><font id='Serif'/></supportedFonts>");
  const PrivateService service;
  ASSERT_THAT(plain(service->getFonts("")), ElementsAre("Serif"));
  std::istringstream text("<queryResult><group>" + queried("supportedFonts", items("Mono")));
  IBJBufferedInputStream stream(text);
  EXPECT_EQ(stateOf([&] { service->init(stream); }), VRDCFGAPI_StreamParseFailed);
  EXPECT_THAT(plain(service->getFonts("")), ElementsAre("Serif"));
  EXPECT_EQ(stateOf([&] { service->init(); }), VRDCFGAPI_NoError);
}
