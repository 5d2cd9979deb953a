// Unit VRDConfiguration: how the startup document enters the effective tree.
//
// The startup document is by far the larger side. So the two trees meet in its document: its root
// becomes the effective tree's, what stands in the effective tree so far is copied in front, and
// what is no parameter goes. None of its parameters is copied or moved, and nothing of the store
// changes before all is in place.

#include <utility>

#include "foundation/ConfigurationVocabulary.h"
#include "foundation/VRDIDOMUtils.h"
#include "store/EffectiveRoot.h"
#include "store/ParameterIndex.h"
#include "store/VRDConfiguration.h"

/// A table and its index, under way.
struct VRDConfiguration::Merged {
  ParameterTable table;
  ParameterIndex index;

  /// Gives @p parameter the name. An element that had it leaves its tree.
  void enter(const I18NString& name, const VRDIDOM_Element& parameter,
             const ParameterValue& value) {
    if (ParameterIndex::Parameter* present = index.find(name)) {
      VRDIDOM_Node parent = present->element->getParentNode();
      if (!parent.isNull()) parent.removeChild(*present->element);
      present->become(parameter, value);
      return;
    }
    // A document whose names rise needs no search.
    index.add(*table.insert(table.end(), {name, parameter}), value);
  }
};

/// Copies what stands in the effective tree to the front of @p root, in another document, and
/// enters the copies of what the table designates. What is in the table alone is copied without a
/// parent.
void VRDConfiguration::copyTreeTo(VRDIDOM_Document& document, VRDIDOM_Element& root,
                                  Merged& merged) {
  VRDIDOM_Node front = root.getFirstChild();
  for (VRDIDOM_Node child = m_configDoc.getDocumentElement().getFirstChild(); !child.isNull();
       child = child.getNextSibling()) {
    VRDIDOM_Element copy = document.importNode(child, 1);
    if (front.isNull()) {
      root.appendChild(copy);
    } else {
      root.insertBefore(copy, front);
    }
    const I18NString name = copy.getAttribute(*m_nameAttribute);
    const auto entry = m_parameters.find(name);
    if (entry != m_parameters.end() && entry->second == &child) {
      merged.enter(name, copy, valueOf(copy));
    }
  }
  for (auto [name, element] : m_parameters) {
    if (merged.index.find(name) != nullptr) continue;
    VRDIDOM_Element copy = document.importNode(element, 1);
    merged.enter(name, copy, valueOf(copy));
  }
}

void VRDConfiguration::mergeStartup(VRDIDOM_Document& startup) {
  VRDIDOM_Element root = startup.getDocumentElement();
  startup.renameNode(root, *m_namespaceUri, *m_parametersQName);
  root.removeAttributes();
  setRootAttributes(root);

  Merged merged;
  VRDIDOM_Node next = root.getFirstChild();
  copyTreeTo(startup, root, merged);
  while (!next.isNull()) {
    VRDIDOM_Element parameter = next;
    next = next.getNextSibling();
    ParameterValue value = startupValueOf(parameter);
    if (value.element.isNull()) {
      root.removeChild(parameter);
      continue;
    }
    if (value.isOpaque) declareConfigurationPrefixes(value.element);
    merged.enter(parameter.getAttribute(*m_nameAttribute), parameter, value);
  }

  m_parameters.swap(merged.table);
  std::swap(*m_index, merged.index);
  m_configDoc = startup;
}

/// The value of a child of the startup document's root; its element is null if that is no parameter
/// with a value.
ParameterValue VRDConfiguration::startupValueOf(VRDIDOM_Element& child) {
  const bool isParameter =
      child.getNodeType() == VRDIDOMUtils::elementNode &&
      VRDIDOMUtils::isQNameEquals(child, *m_namespaceUri, *m_parameterLocalName) != 0;
  return isParameter ? valueOf(child) : ParameterValue();
}
