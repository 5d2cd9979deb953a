// Unit VRDConfiguration: values by name.

#include <utility>

#include "crypto/CryptoSession.h"
#include "crypto/ValueDecryption.h"
#include "foundation/VRDIDOMUtils.h"
#include "platform/idom/VRDIDOM_DOMImplementation.h"
#include "platform/idom/VRDIDOM_Helper.h"
#include "store/ParameterIndex.h"
#include "store/VRDConfiguration.h"

namespace {

/// A deep copy of @p element in a document of its own.
VRDIDOM_Element privateCopy(VRDIDOM_Element& element) {
  return VRDIDOM_DOMImplementation::getInstance().createDocument().importNode(element, 1);
}

}  // namespace

VRDCFGAPI_ErrorState VRDConfiguration::getValue(const I18NString& name, const int& decrypt,
                                                I18NString& result) {
  VRDThreadGuard guard(m_lock);
  I18NString text;
  VRDCFGAPI_ErrorState state = VRDCFGAPI_InternalError;
  try {
    state = readText(name, decrypt, text);
  } catch (...) {
    // The state says it.
  }
  if (state != VRDCFGAPI_NoError) text.resize(0, L' ');
  result = std::move(text);
  return state;
}

VRDCFGAPI_ErrorState VRDConfiguration::readText(const I18NString& name, int decrypt,
                                                I18NString& text) {
  if (name.empty()) return readXml(m_configDoc.getDocumentElement(), decrypt, text);
  IndexedParameter* parameter = m_index->find(name);
  if (parameter == nullptr) return VRDCFGAPI_NoError;
  return parameter->value.isOpaque ? readXml(parameter->value.element, decrypt, text)
                                   : readPlain(*parameter, decrypt, text);
}

VRDCFGAPI_ErrorState VRDConfiguration::readXml(VRDIDOM_Element element, int decrypt,
                                               I18NString& text) {
  if (decrypt != 0) {
    const VRDCFGAPI_ErrorState state = toDecryptedCopy(element);
    if (state != VRDCFGAPI_NoError) return state;
  }
  VRDIDOM_Helper::write(element, text);
  return VRDCFGAPI_NoError;
}

VRDCFGAPI_ErrorState VRDConfiguration::readPlain(IndexedParameter& parameter, int decrypt,
                                                 I18NString& text) {
  parameter.getText(text);
  if (decrypt == 0 || !parameter.value.isEncrypted) return VRDCFGAPI_NoError;
  void* session = getCryptoHandle();
  if (session == nullptr) return VRDCFGAPI_CryptoUnavailable;
  text = decryptString(std::move(text), session);
  return text.empty() ? VRDCFGAPI_DecryptFailed : VRDCFGAPI_NoError;
}

/// Makes @p element designate a copy of itself in a document of its own, with what lies below it
/// decrypted. The session is asked for in every case: whether anything is marked is not known
/// before.
VRDCFGAPI_ErrorState VRDConfiguration::toDecryptedCopy(VRDIDOM_Element& element) {
  void* session = getCryptoHandle();
  if (session == nullptr) return VRDCFGAPI_CryptoUnavailable;
  element = decryptXML(privateCopy(element), session);
  return element.isNull() ? VRDCFGAPI_DecryptFailed : VRDCFGAPI_NoError;
}

VRDCFGAPI_ErrorState VRDConfiguration::getValue(const I18NString& name, const int& decrypt,
                                                VRDIDOM_Node& result) {
  VRDThreadGuard guard(m_lock);
  try {
    return readNode(name, decrypt, result);
  } catch (...) {
    return VRDCFGAPI_InternalError;
  }
}

VRDCFGAPI_ErrorState VRDConfiguration::readNode(const I18NString& name, int decrypt,
                                                VRDIDOM_Node& result) {
  VRDIDOM_Element element;
  if (name.empty()) {
    element = m_configDoc.getDocumentElement();
  } else if (IndexedParameter* parameter = m_index->find(name)) {
    element = parameter->value.element;
  }
  if (element.isNull()) return VRDCFGAPI_NoError;

  if (decrypt != 0) {
    const VRDCFGAPI_ErrorState state = toDecryptedCopy(element);
    if (state != VRDCFGAPI_NoError) return state;
  } else {
    element = privateCopy(element);
  }
  result = element;
  return VRDCFGAPI_NoError;
}

VRDCFGAPI_ErrorState VRDConfiguration::setValue(const I18NString& name, const I18NString& value) {
  VRDThreadGuard guard(m_lock);
  try {
    if (name.empty() || value.empty()) return VRDCFGAPI_NoError;
    IndexedParameter* parameter = m_index->find(name);
    if (parameter == nullptr) {
      insert(name, makePlainParameter(name, value));
      return VRDCFGAPI_NoError;
    }
    VRDIDOM_Node parent = parameter->element->getParentNode();
    if (parent.isNull()) {
      // Made here before, so it is plain and the table's own: its text changes in place, and
      // settings that change for months do not make the tree grow.
      parameter->forgetText();
      VRDIDOMUtils::setText(parameter->value.element, value);
    } else {
      VRDIDOM_Element replacement = makePlainParameter(name, value);
      const ParameterValue itsValue = valueOf(replacement);
      VRDIDOM_Node replaced = parent.removeChild(*parameter->element);
      parameter->become(replacement, itsValue);
      m_configDoc.recycle(replaced);
    }
    return VRDCFGAPI_NoError;
  } catch (...) {
    return VRDCFGAPI_InternalError;
  }
}

void* VRDConfiguration::getCryptoHandle() {
  return m_cryptoHandle != nullptr ? m_cryptoHandle : openCryptoSession(m_cryptoHandle);
}
