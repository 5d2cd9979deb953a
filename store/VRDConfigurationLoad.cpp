// Unit VRDConfiguration: how the effective tree comes about.

#include <fstream>

#include "foundation/ConfigurationVocabulary.h"
#include "foundation/VRDIDOMUtils.h"
#include "platform/core/I18NLibrary.h"
#include "platform/core/VRDFmDir.h"
#include "platform/idom/VRDIDOM_DOMImplementation.h"
#include "platform/idom/VRDIDOM_Parser.h"
#include "platform/mcf/DefaultLists.h"
#include "store/InstallationFiles.h"
#include "store/ParameterIndex.h"
#include "store/PlatformText.h"
#include "store/VRDConfiguration.h"
#include "store/VRDConfigurationState.h"

namespace {

VRDIDOM_Document newDocument() { return VRDIDOM_DOMImplementation::getInstance().createDocument(); }

/// Removes what is disabled in the parameters of a startup document.
void prune(VRDIDOM_Element root) {
  const I18NString namespaceUri = ConfigNamespaceUri;
  const I18NString parameter = "parameter";
  VRDIDOM_Node next = root.getFirstChild();
  while (!next.isNull()) {
    VRDIDOM_Element child = next;
    next = next.getNextSibling();
    unsigned long unused = 0;
    if (child.getNodeType() == VRDIDOMUtils::elementNode &&
        VRDIDOMUtils::isQNameEquals(child, namespaceUri, parameter)) {
      VRDConfiguration::removeDisabledElements(child, unused);
    }
  }
}

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
  try {
    bool isChanged = false;
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
    if (isChanged && state == VRDCFGAPI_NoError) {
      VRDIDOM_Element root = m_configDoc.getDocumentElement();
      rewrite(root);
    }
    return state;
  } catch (...) {
    return VRDCFGAPI_InternalError;
  }
}

/// The tree with its root and the runtime defaults, or nothing: without them it would pass for
/// complete.
void VRDConfiguration::beginTree() {
  VRDIDOM_Document document = newDocument();
  VRDIDOM_Element root = document.createElementNS(*m_namespaceUri, *m_parametersQName);
  document.appendChild(root);
  setRootAttributes(root);
  try {
    m_configDoc = document;
    addDefaults(getruntimeDefaults);
  } catch (...) {
    m_index->clear();
    m_parameters.clear();
    m_configDoc = VRDIDOM_Document();
    throw;
  }
}

void VRDConfiguration::addDefaults(const char* const* (*defaults)()) {
  VRDIDOM_Element root = m_configDoc.getDocumentElement();
  for (int index = 0;; index += 2) {
    const I18NString name = platformText(defaults()[index]);
    if (name.empty()) return;
    VRDIDOM_Element parameter = makePlainParameter(name, platformText(defaults()[index + 1]));
    root.appendChild(parameter);
    insert(name, parameter);
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

/// Merges the startup document or, where it cannot be had, the startup defaults. Happens once a
/// process whatever comes of it: a wrong root is not tried again.
VRDCFGAPI_ErrorState VRDConfiguration::loadStartup() {
  VRDIDOM_Document startup = newDocument();
  VRDCFGAPI_ErrorState state = readStartup(startup, VRDIDOM_Parser::DropRootWhitespace);
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

void VRDConfiguration::setRootAttributes(VRDIDOM_Element& root) {
  root.setAttribute("version", "1.0");
  declareConfigurationPrefixes(root);
}

VRDIDOM_Element VRDConfiguration::makeParameter(VRDIDOM_Document& document,
                                                const I18NString& name) {
  VRDIDOM_Element parameter = document.createElementNS(*m_namespaceUri, *m_parameterQName);
  parameter.setAttribute(*m_nameAttribute, name);
  parameter.appendChild(document.createElementNS(*m_namespaceUri, *m_valueQName));
  return parameter;
}

/// A parameter of the effective tree's document, not in the tree yet: a name and a text.
VRDIDOM_Element VRDConfiguration::makePlainParameter(const I18NString& name,
                                                     const I18NString& text) {
  VRDIDOM_Element parameter = makeParameter(m_configDoc, name);
  VRDIDOM_Element value = parameter.getFirstChild();
  VRDIDOMUtils::setText(value, text);
  return parameter;
}

VRDIDOM_Element VRDConfiguration::valueOf(VRDIDOM_Element& parameter) {
  return VRDIDOMUtils::selectSingleNodeNS(parameter, *m_namespaceUri, *m_valueLocalName);
}

VRDCFGAPI_ErrorState VRDConfiguration::getConfigDoc(VRDIDOM_Document& document) {
  return readStartup(document, 0);
}

VRDCFGAPI_ErrorState VRDConfiguration::readStartup(VRDIDOM_Document& document, int parserFlag) {
  if (document.isNull()) return VRDCFGAPI_NullDocument;
  I18NString path = InstallationFiles::startupDocument;
  determineBinDir();
  VRDFmDir::resolveEffectivePath(path);
  const char* file = path.c_str(I18NGetPlatformDefaultEncoding());
  if (!VRDFmDir::exists(file, InstallationFiles::readableFile)) {
    return VRDCFGAPI_StartupFileMissing;
  }
  VRDIDOM_Parser parser(parserFlag);
  std::ifstream stream(file, std::ios::in | std::ios::binary);
  if (parser.parse(stream, document) == 0) return VRDCFGAPI_StartupFileParseFailed;
  prune(document.getDocumentElement());
  return VRDCFGAPI_NoError;
}
