#include "foundation/ConfigurationVocabulary.h"

#include <strings.h>

const ConfigurationVocabulary& vocabulary() {
  static const ConfigurationVocabulary& immortal = *new ConfigurationVocabulary;
  return immortal;
}

bool saysTrue(const I18NString& value) { return strcasecmp(value.c_str(), "true") == 0; }

bool saysTrue(VRDIDOM_Element& element, const I18NString& name) {
  I18NString value;
  element.getAttribute(name, value);
  return saysTrue(value);
}

bool saysFalse(const I18NString& value) { return strcasecmp(value.c_str(), "false") == 0; }

void declareConfigurationPrefixes(VRDIDOM_Element& element) {
  element.setAttribute("xmlns:vtn", ConfigNamespaceUri);
  element.setAttribute("xmlns:cfg", ParamsNamespaceUri);
  element.setAttribute("xmlns:xsd", XmlSchemaNamespaceUri);
  element.setAttribute("xmlns:xsi", XmlSchemaInstanceNamespaceUri);
}
