// Unit VRDConfiguration: parameters as elements, how they are made and what is read of them.

#include "foundation/ConfigurationVocabulary.h"
#include "foundation/VRDIDOMUtils.h"
#include "store/ParameterIndex.h"
#include "store/PathRewriting.h"
#include "store/VRDConfiguration.h"

/// With a name and an empty value, not in the tree yet.
VRDIDOM_Element VRDConfiguration::makeParameter(VRDIDOM_Document& document,
                                                const I18NString& name) {
  VRDIDOM_Element parameter = document.createElementNS(*m_namespaceUri, *m_parameterQName);
  parameter.setAttribute(*m_nameAttribute, name);
  parameter.appendChild(document.createElementNS(*m_namespaceUri, *m_valueQName));
  return parameter;
}

/// One of the effective tree's document, with a text.
VRDIDOM_Element VRDConfiguration::makePlainParameter(const I18NString& name,
                                                     const I18NString& text) {
  VRDIDOM_Element parameter = makeParameter(m_configDoc, name);
  VRDIDOM_Element value = parameter.getFirstChild();
  VRDIDOMUtils::setText(value, text);
  return parameter;
}

/// The value's element is null if there is none.
ParameterValue VRDConfiguration::valueOf(VRDIDOM_Element& parameter) {
  VRDIDOM_Element value =
      VRDIDOMUtils::selectSingleNodeNS(parameter, *m_namespaceUri, *m_valueLocalName);
  return {value, saysTrue(parameter, vocabulary().opaque), saysTrue(value, *m_encryptedAttribute),
          holdsPathValue(parameter)};
}

/// Puts a parameter at the end of the tree and into the table, or into neither.
void VRDConfiguration::append(VRDIDOM_Element& root, const I18NString& name,
                              const VRDIDOM_Element& parameter) {
  root.appendChild(parameter);
  try {
    insert(name, parameter);
  } catch (...) {
    root.removeChild(parameter);
    throw;
  }
}

/// A name that is in the table keeps the element it has.
void VRDConfiguration::insert(const I18NString& name, VRDIDOM_Element parameter) {
  const auto [entry, isNew] = m_parameters.insert({name, parameter});
  if (!isNew) return;
  try {
    m_index->add(*entry, valueOf(parameter));
  } catch (...) {
    m_parameters.erase(entry);
    throw;
  }
}
