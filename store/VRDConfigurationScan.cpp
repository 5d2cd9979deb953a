// Unit VRDConfiguration: query results. In a query result the name of a parameter is the name of
// its element; here it becomes a parameter of the effective tree.

#include "foundation/ConfigurationVocabulary.h"
#include "foundation/ElementWalk.h"
#include "foundation/VRDIDOMUtils.h"
#include "platform/core/VRDRaise.h"
#include "platform/idom/VRDIDOM_DOMImplementation.h"
#include "platform/idom/VRDIDOM_Exception.h"
#include "platform/idom/VRDIDOM_Helper.h"
#include "platform/idom/VRDIDOM_NodeList.h"
#include "platform/idom/VRDIDOM_Parser.h"
#include "store/ParameterIndex.h"
#include "store/VRDConfiguration.h"

#define VRD_SOURCE_UNIT "VRDConfiguration"

namespace {

void copyChildElements(VRDIDOM_Element& source, VRDIDOM_Element& value) {
  forEachChildElement(source,
                      [&](VRDIDOM_Element& child) { VRDIDOM_Helper::appendChild(value, child); });
}

/// Fills @p value, the value of a new parameter, from the value of a query result. Where nothing
/// says whether the value is opaque, one with elements in it arrives whole, its own tag included.
void fillValue(const I18NString& opaque, VRDIDOM_Element& source, VRDIDOM_Element& value) {
  if (saysTrue(opaque)) {
    copyChildElements(source, value);
  } else if (saysFalse(opaque) || VRDIDOMUtils::isTextOnly(source)) {
    VRDIDOMUtils::setText(value, VRDIDOMUtils::getText(source));
  } else {
    VRDIDOM_Helper::appendChild(value, source);
  }
}

/// Gives @p parameter, which is new, what a query result says of its value.
void fillParameter(VRDIDOM_Element& source, VRDIDOM_Element& sourceValue,
                   VRDIDOM_Element& parameter) {
  VRDIDOM_Element value = parameter.getFirstChild();
  if (sourceValue.hasAttributeNS(vocabulary().schemaInstanceUri, vocabulary().type)) {
    value.setAttributeNS(
        vocabulary().schemaInstanceUri, "xsi:type",
        sourceValue.getAttributeNS(vocabulary().schemaInstanceUri, vocabulary().type));
  }
  const I18NString opaque = source.getAttribute(vocabulary().opaque);
  if (saysTrue(opaque)) {
    declareConfigurationPrefixes(value);
    parameter.setAttribute(vocabulary().opaque, "true");
  }
  fillValue(opaque, sourceValue, value);
}

/// What `setValue` made stands in no tree, so nothing can take its place there. Asked before the
/// tree is given anything, since a query that comes again and again would make it grow.
void requireInTree(VRDIDOM_Element& element) {
  constexpr short notFound = 8;
  if (element.getParentNode().isNull()) {
    throw VRDIDOM_Exception(notFound, "a value that was set is not replaced by a query result");
  }
}

}  // namespace

void VRDConfiguration::scan(VRDIDOM_Element& element) {
  VRDIDOM_Element root = m_configDoc.getDocumentElement();
  if (element.getLocalName() == vocabulary().queryResult) {
    _scanParametersHelper(element, root);
    return;
  }
  VRDIDOM_NodeList results = element.getElementsByTagName(vocabulary().queryResult);
  const unsigned long count = results.getLength();
  for (unsigned long index = 0; index < count; ++index) {
    VRDIDOM_Node result = results.item(index);
    _scanParametersHelper(result, root);
  }
}

void VRDConfiguration::_scanParametersHelper(VRDIDOM_Node& queryResult, VRDIDOM_Element& root) {
  // The lock is held, which the check does not see from inside a lambda.
  const auto scanOne = [&](VRDIDOM_Element& parameter)
                           VRD_NO_THREAD_CHECK { scanParameter(parameter, root); };
  forEachChildElement(queryResult,
                      [&](VRDIDOM_Element& group) { forEachChildElement(group, scanOne); });
}

void VRDConfiguration::scanParameter(VRDIDOM_Element& source, VRDIDOM_Element& root) {
  static const char s_AdvSettings[] = "advancedSettings";
  VRDIDOM_Element sourceValue = VRDIDOMUtils::selectSingleNode(source, vocabulary().value);
  if (sourceValue.isNull()) return;
  const I18NString name = source.getNodeName();
  VRDIDOM_Document scratch = VRDIDOM_DOMImplementation::getInstance().createDocument();
  VRDIDOM_Element scanned = makeParameter(scratch, name);
  fillParameter(source, sourceValue, scanned);

  if (IndexedParameter* existing = m_index->find(name)) {
    if (existing->element->isEqualNode(scanned)) return;
    requireInTree(*existing->element);
    VRDIDOM_Element replacement = m_configDoc.importNode(scanned, 1);
    const ParameterValue value = valueOf(replacement);
    VRDIDOM_Node replaced = root.replaceChild(replacement, *existing->element);
    existing->become(replacement, value);
    m_configDoc.recycle(replaced);
    return;
  }
  append(root, name, m_configDoc.importNode(scanned, 1));
  // Only where they are new: settings that were applied once are not applied again.
  if (name == s_AdvSettings) _scanAdvancedSettingsHelper(sourceValue);
}

void VRDConfiguration::_scanAdvancedSettingsHelper(VRDIDOM_Element& value) {
  const I18NString text = VRDIDOMUtils::getText(value);
  if (text.empty()) return;

  VRDIDOM_Parser parser(0);
  VRDIDOM_Document settings;
  int size = 0;
  const std::unique_ptr<char[]> bytes(
      text.toBytes("utf-8", &size, VRDI18NStringAllocator, nullptr));
  const int status = parser.parse(bytes.get(), size - 1, settings);
  const int err = parser.getErrorCode();
  VRD_ASSERT(status && !err);

  VRDIDOM_Element root = settings.getDocumentElement();
  if (root.isNull()) return;
  constexpr unsigned long showElements = 1;
  VRDIDOM_TreeWalker walker = settings.createTreeWalker(root, showElements, nullptr, 0);
  for (VRDIDOM_Node node = walker.firstChild(); !node.isNull(); node = walker.nextSibling()) {
    VRDIDOM_Element setting = node;
    I18NString settingName;
    I18NString settingValue;
    setting.getAttribute(vocabulary().name, settingName);
    VRDIDOM_Helper::getElementText(setting, settingValue);
    setValue(settingName, settingValue);
  }
}
