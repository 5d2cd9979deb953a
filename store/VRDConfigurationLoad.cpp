// Unit VRDConfiguration: how the effective tree comes about.

#include <new>

#include "foundation/VRDIDOMUtils.h"
#include "platform/idom/VRDIDOM_DOMImplementation.h"
#include "platform/idom/VRDIDOM_Parser.h"
#include "platform/mcf/DefaultLists.h"
#include "store/EffectiveRoot.h"
#include "store/ParameterIndex.h"
#include "store/PathRewriting.h"
#include "store/PlatformText.h"
#include "store/StartupDocument.h"
#include "store/VRDConfiguration.h"
#include "store/VRDConfigurationState.h"

namespace {

VRDIDOM_Document newDocument() { return VRDIDOM_DOMImplementation::getInstance().createDocument(); }

}  // namespace

VRDCFGAPI_ErrorState VRDConfiguration::_init(IBJBufferedInputStream* stream) {
  if (stream == nullptr) return _init(static_cast<VRDIDOM_Element*>(nullptr));
  try {
    VRDIDOM_Document document = newDocument();
    VRDIDOM_Parser parser(0);
    if (parser.parse(*stream, document) == 0) return VRDCFGAPI_StreamParseFailed;
    VRDIDOM_Element root = document.getDocumentElement();
    return _init(&root);
  } catch (...) {
    return VRDCFGAPI_InternalError;
  }
}

VRDCFGAPI_ErrorState VRDConfiguration::_init(VRDIDOM_Element* element) {
  VRDThreadGuard guard(m_lock);
  bool isChanged = m_isRewriteDue;
  try {
    VRDCFGAPI_ErrorState state = VRDCFGAPI_NoError;
    if (m_configDoc.isNull()) {
      beginTree();
      isChanged = true;
    }
    if (m_bStartupInitialized.load(std::memory_order_relaxed) != 1) {
      state = loadStartup();
      isChanged = isChanged || state == VRDCFGAPI_NoError;
    }
    if (element != nullptr && !element->isNull()) {
      scan(*element);
      isChanged = true;
    }
    if (isChanged && state == VRDCFGAPI_NoError) rewriteTree();
    m_isRewriteDue = false;
    return state;
  } catch (const std::bad_alloc&) {
    m_isRewriteDue = isChanged;
    return VRDCFGAPI_InternalError;
  } catch (...) {
    // A fault of the query results: what stands by now stays as it was written.
    return VRDCFGAPI_InternalError;
  }
}

/// All path values of the tree are in parameters of the table: what else is in the tree came from a
/// default list, and has no type.
void VRDConfiguration::rewriteTree() {
  m_index->visitAll([](IndexedParameter& parameter) {
    if (!parameter.value.hasPaths) return;
    parameter.forgetText();
    rewritePathValues(*parameter.element);
  });
}

/// The tree with its root and the runtime defaults, or nothing: without them it would pass for
/// complete.
void VRDConfiguration::beginTree() {
  VRDIDOM_Document document = newDocument();
  VRDIDOM_Element root = document.createElementNS(*m_namespaceUri, *m_parametersQName);
  document.appendChild(root);
  setRootAttributes(root);
  m_configDoc = document;
  try {
    addDefaults(getruntimeDefaults);
  } catch (...) {
    m_configDoc = VRDIDOM_Document();
    throw;
  }
}

/// Adds all of a list to tree and table, or nothing: the next attempt would add again what were
/// left of this one. A name that is in the table keeps the element it has; the tree shows the new
/// one too.
void VRDConfiguration::addDefaults(const char* const* (*defaults)()) {
  VRDIDOM_Element list = m_configDoc.createElementNS(*m_namespaceUri, *m_parametersQName);
  ParameterTable table;
  ParameterIndex index;
  for (int entry = 0;; entry += 2) {
    const I18NString name = platformText(defaults()[entry]);
    if (name.empty()) break;
    VRDIDOM_Element parameter = makePlainParameter(name, platformText(defaults()[entry + 1]));
    list.appendChild(parameter);
    const auto [place, isNew] = table.insert({name, parameter});
    if (isNew) index.add(*place, valueOf(parameter));
  }
  m_index->merge(index);
  m_parameters.merge(table);
  VRDIDOM_Element root = m_configDoc.getDocumentElement();
  for (VRDIDOM_Node parameter = list.getFirstChild(); !parameter.isNull();
       parameter = list.getFirstChild()) {
    root.appendChild(parameter);
  }
}

/// Merges the startup document or, where it cannot be had, the startup defaults. Happens once a
/// process whatever comes of it: a wrong root is not tried again.
VRDCFGAPI_ErrorState VRDConfiguration::loadStartup() {
  VRDIDOM_Document startup = newDocument();
  VRDCFGAPI_ErrorState state = readStartupDocument(startup, VRDIDOM_Parser::DropRootWhitespace);
  if (state != VRDCFGAPI_NoError) {
    addDefaults(getstartupDefaults);
    state = VRDCFGAPI_NoError;
  } else {
    VRDIDOM_Element root = startup.getDocumentElement();
    if (VRDIDOMUtils::isQNameEquals(root, *m_namespaceUri, *m_parametersLocalName)) {
      mergeStartup(startup);
    } else {
      state = VRDCFGAPI_BadRootElement;
    }
  }
  m_bStartupInitialized.store(1, std::memory_order_relaxed);
  return state;
}
