#include "startup/VRDStartupConfiguration.h"

#include <utility>

#include "foundation/ConfigurationVocabulary.h"
#include "foundation/ElementWalk.h"
#include "foundation/VRDIDOMUtils.h"
#include "platform/core/I18NLibrary.h"
#include "platform/core/VRDThreads.h"
#include "platform/idom/VRDIDOM_DOMImplementation.h"
#include "platform/idom/VRDIDOM_Document.h"
#include "platform/idom/VRDIDOM_Helper.h"
#include "store/VRDConfiguration.h"

namespace {

using Values = std::map<I18NString, I18NString>;

/// Serialises reading the document across all objects; then `m_mutexDirPath` may be taken.
VRDThreadCriticalSection s_mutex(1);

/// The names that are matched in the document.
enum Word { NamespaceUri, Parameters, Parameter, Value, WordCount };
const I18NString* s_globStr = nullptr;

void makeWords() {
  if (s_globStr != nullptr) return;
  s_globStr =
      new const I18NString[WordCount]{ConfigNamespaceUri, "parameters", "parameter", "value"};
}

bool isNamed(VRDIDOM_Node& node, Word localName) {
  return VRDIDOMUtils::isQNameEquals(node, s_globStr[NamespaceUri], s_globStr[localName]) != 0;
}

VRDIDOM_Document newDocument() { return VRDIDOM_DOMImplementation::getInstance().createDocument(); }

I18NString xmlText(const VRDIDOM_Element& element) {
  I18NString text;
  VRDIDOM_Helper::write(element, text);
  return text;
}

/// What an opaque parameter without a value is shown as: readers expect an element.
I18NString emptyValueText(VRDIDOM_Element& parameter) {
  constexpr int capacity = 1024;
  const I18NString prefix = parameter.getPrefix();
  I18NString text(capacity, nullptr, nullptr);
  if (prefix.empty()) {
    text += "<value xmlns";
  } else {
    text += "<";
    text += prefix;
    text += ":value xmlns:";
    text += prefix;
  }
  text += "=\"";
  text += ParamsNamespaceUri;
  text += "\"/>";
  return text;
}

I18NString valueTextOf(VRDIDOM_Element& parameter) {
  VRDIDOM_Element value =
      VRDIDOMUtils::selectSingleNodeNS(parameter, s_globStr[NamespaceUri], s_globStr[Value]);
  if (!saysTrue(parameter.getAttribute("opaque"))) return VRDIDOMUtils::getText(value);
  if (value.isNull()) return emptyValueText(parameter);
  declareConfigurationPrefixes(value);
  return xmlText(value);
}

Values valuesBelow(VRDIDOM_Element& root) {
  Values values;
  forEachChildElement(root, [&](VRDIDOM_Element& child) {
    if (isNamed(child, Parameter)) values.emplace(child.getAttribute("name"), valueTextOf(child));
  });
  return values;
}

VRDCFGAPI_ErrorState readValues(Values& values) {
  makeWords();
  VRDIDOM_Document document = newDocument();
  const VRDCFGAPI_ErrorState state = VRDConfiguration::getConfigDoc(document);
  if (state != VRDCFGAPI_NoError) return state;
  VRDIDOM_Element root = document.getDocumentElement();
  if (!isNamed(root, Parameters)) return VRDCFGAPI_BadRootElement;
  values = valuesBelow(root);
  return VRDCFGAPI_NoError;
}

/// Runs @p operation so that an exception becomes a state.
template <class Operation>
VRDCFGAPI_ErrorState guarded(Operation operation) {
  try {
    return operation();
  } catch (...) {
    return VRDCFGAPI_InternalError;
  }
}

}  // namespace

VRDStartupConfiguration::VRDStartupConfiguration() {
  VRDIDOM_DOMImplementation::initialize();
  I18NInitialize();
}

VRDStartupConfiguration::VRDStartupConfiguration(const VRDStartupConfiguration&)
    : VRDStartupConfiguration() {}

VRDStartupConfiguration::~VRDStartupConfiguration() {
  try {
    m_values.clear();
    I18NTerminate();
    VRDIDOM_DOMImplementation::terminate();
  } catch (...) {
    // A destructor has nobody to tell.
  }
}

/// @param values receives the parameters, which may be read without a lock from then on. A table
///               that is still empty can be filled by another thread, so it is not given out.
VRDCFGAPI_ErrorState VRDStartupConfiguration::readOnce(const Values*& values) {
  static const Values& none = *new const Values;
  VRDThreadGuard guard(s_mutex);
  const VRDCFGAPI_ErrorState state = m_values.empty() ? readValues(m_values) : VRDCFGAPI_NoError;
  values = m_values.empty() ? &none : &m_values;
  return state;
}

VRDCFGAPI_ErrorState VRDStartupConfiguration::initialize() {
  const Values* values = nullptr;
  return readOnce(values);
}

VRDCFGAPI_ErrorState VRDStartupConfiguration::getParameterNames(std::list<I18NString>& names) {
  return guarded([&] {
    const Values* values = nullptr;
    const VRDCFGAPI_ErrorState state = readOnce(values);
    if (state != VRDCFGAPI_NoError) return state;
    std::list<I18NString> found;
    for (const auto& parameter : *values) found.push_back(parameter.first);
    names = std::move(found);
    return VRDCFGAPI_NoError;
  });
}

VRDCFGAPI_ErrorState VRDStartupConfiguration::getValue(const I18NString& name, int,
                                                       I18NString& value) {
  return guarded([&] {
    const Values* values = nullptr;
    const VRDCFGAPI_ErrorState state = readOnce(values);
    if (state != VRDCFGAPI_NoError) return state;
    const auto found = values->find(name);
    value = found == values->end() ? I18NString() : found->second;
    return VRDCFGAPI_NoError;
  });
}

VRDCFGAPI_ErrorState VRDStartupConfiguration::getStartupConfigurationDocument(I18NString& text) {
  return guarded([&] {
    VRDIDOM_Document document = newDocument();
    const VRDCFGAPI_ErrorState state = VRDConfiguration::getConfigDoc(document);
    if (state != VRDCFGAPI_NoError) return state;
    VRDIDOM_Element root = document.getDocumentElement();
    VRDConfiguration::fixupPaths(root);
    text = xmlText(root);
    return VRDCFGAPI_NoError;
  });
}
