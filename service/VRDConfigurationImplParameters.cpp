// Unit VRDConfigurationImpl: what goes straight to the store.

#include "service/RaiseUnlessDone.h"
#include "service/VRDConfigurationImpl.h"
#include "store/VRDConfiguration.h"

std::list<I18NString> VRDConfigurationImpl::getParameterNames() {
  VRDConfiguration& store = *VRDConfiguration::getInstance();
  VRDThreadGuard guard(store.m_lock);
  TextList names;
  for (const auto& parameter : store.m_parameters) names.push_back(parameter.first);
  return names;
}

I18NString VRDConfigurationImpl::getValue(const I18NString& name, int decrypt) {
  I18NString value;
  raiseUnlessDone(VRDConfiguration::getInstance()->getValue(name, decrypt, value));
  return value;
}

VRDIDOM_Element VRDConfigurationImpl::getValueElement(const I18NString& name, int decrypt) {
  VRDIDOM_Node value;
  raiseUnlessDone(VRDConfiguration::getInstance()->getValue(name, decrypt, value));
  return value;
}

I18NString VRDConfigurationImpl::getValue(const I18NString&, int, int) { return I18NString(); }

VRDIDOM_Element VRDConfigurationImpl::getValueElement(const I18NString&, int, int) {
  static const VRDIDOM_Element empty;
  return empty;
}

I18NString& VRDConfigurationImpl::resolveEffectivePath(I18NString& path) {
  return VRDConfiguration::getInstance()->resolveEffectivePath(path);
}

int VRDConfigurationImpl::isInternalSSL() { return beginsSecure("internalDispatcher"); }

int VRDConfigurationImpl::isExternalSSL() { return beginsSecure("externalDispatcher"); }

int VRDConfigurationImpl::beginsSecure(const I18NString& parameter) {
  init();
  const int decrypt = 1;
  return getValue(parameter, decrypt).find("https", 0) == 0 ? 1 : 0;
}

I18NString VRDConfigurationImpl::exportToCM() { return I18NString(); }

void VRDConfigurationImpl::exportMap(TextMap&, VRDIDOM_Element&) {}

void VRDConfigurationImpl::exportList(TextList&, VRDIDOM_Element&, const I18NString&) {}
