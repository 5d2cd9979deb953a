// Unit VRDConfiguration: how the startup document enters the effective tree.
//
// The startup document is by far the larger side. So the two trees meet in its document: its root
// becomes the effective tree's, what stands in the effective tree so far is copied in front, and
// what is no parameter goes. None of its parameters is copied or moved, and nothing of the store
// changes before all is in place.

#include <algorithm>
#include <utility>
#include <vector>

#include "foundation/ConfigurationVocabulary.h"
#include "foundation/VRDIDOMUtils.h"
#include "store/EffectiveRoot.h"
#include "store/ParameterIndex.h"
#include "store/VRDConfiguration.h"

/// The parameters of a tree in document order, until it is known which of a name is the last.
class VRDConfiguration::Merged {
 public:
  void add(const I18NString& name, const VRDIDOM_Element& parameter, const ParameterValue& value) {
    m_entries.push_back({name, parameter, value});
  }

  /// Moves the last parameter of each name into @p table, which is empty, and its index. The others
  /// leave their tree.
  void moveTo(ParameterTable& table, ParameterIndex& index) {
    // A large table is slow to search for the place of each name, so they come in its order.
    const std::vector<Entry*> entries = sorted();
    index.reserve(entries.size());
    for (std::size_t position = 0; position < entries.size(); ++position) {
      Entry& entry = *entries[position];
      if (position + 1 < entries.size() && entries[position + 1]->name == entry.name) {
        VRDIDOM_Node parent = entry.parameter.getParentNode();
        if (!parent.isNull()) parent.removeChild(entry.parameter);
      } else {
        index.add(*table.emplace_hint(table.end(), std::move(entry.name), entry.parameter),
                  entry.value);
      }
    }
  }

 private:
  struct Entry {
    I18NString name;
    VRDIDOM_Element parameter;
    ParameterValue value;
  };

  /// By name, and in document order those of one name.
  std::vector<Entry*> sorted() {
    std::vector<Entry*> entries;
    entries.reserve(m_entries.size());
    for (Entry& entry : m_entries) entries.push_back(&entry);
    std::stable_sort(entries.begin(), entries.end(), [](const Entry* left, const Entry* right) {
      return left->name < right->name;
    });
    return entries;
  }

  std::vector<Entry> m_entries;
};

/// Copies what stands in the effective tree to the front of @p root, in another document, and adds
/// the copies of what the table designates. What is in the table alone is copied without a parent.
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
      merged.add(name, copy, valueOf(copy));
    }
  }
  for (auto [name, element] : m_parameters) {
    if (!element.getParentNode().isNull()) continue;
    VRDIDOM_Element copy = document.importNode(element, 1);
    merged.add(name, copy, valueOf(copy));
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
    merged.add(parameter.getAttribute(*m_nameAttribute), parameter, value);
  }

  ParameterTable table;
  ParameterIndex index;
  merged.moveTo(table, index);
  m_parameters.swap(table);
  std::swap(*m_index, index);
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
