// Unit VRDConfigurationImpl: the locale document, and what fills a table.

#include "foundation/ElementWalk.h"
#include "foundation/VRDIDOMUtils.h"
#include "platform/core/VRDRaise.h"
#include "platform/idom/VRDIDOM_NodeList.h"
#include "platform/idom/VRDIDOM_Parser.h"
#include "service/RaiseUnlessDone.h"
#include "service/VRDConfigurationImpl.h"
#include "store/InstallationFiles.h"

#define VRD_SOURCE_UNIT "VRDConfigurationImpl"

namespace {

/// One for all service objects: guards the first load of the locale document of each.
VRDThreadCriticalSection g_localeDocMutex(0);

/// Gives each entry of a table in a parameter's value to @p visit, in document order.
template <class Visit>
void visitItems(VRDIDOM_Element& value, Visit visit) {
  VRDIDOM_NodeList items = value.getElementsByTagName("item");
  const unsigned long count = items.getLength();
  for (unsigned long index = 0; index < count; ++index) {
    VRDIDOM_Element item = items.item(index);
    visit(item);
  }
}

}  // namespace

VRDCFGAPI_ErrorState VRDConfigurationImpl::getLocaleDoc(VRDIDOM_Document& document) {
  if (document.isNull()) return VRDCFGAPI_NullDocument;
  std::optional<std::ifstream> file = openInstallationFile(InstallationFiles::localeDocument);
  if (!file) return VRDCFGAPI_LocaleFileMissing;
  VRDIDOM_Parser parser(0);
  return parser.parse(*file, document) != 0 ? VRDCFGAPI_NoError : VRDCFGAPI_LocaleFileParseFailed;
}

/// The object's own document, read at the first call. A handle of the caller's own: threads that
/// walk the document at the same time share no handle.
VRDIDOM_Document VRDConfigurationImpl::localeDocument() {
  m_localeDoc.makeOnce(g_localeDocMutex, VRD_LOCATION, [](LocaleDocument& content) {
    raiseUnlessDone(getLocaleDoc(content.document));
  });
  return m_localeDoc.read([](const LocaleDocument& content) { return content.document; });
}

/// Gives each entry element of a section to @p visit, in document order. A document without a root,
/// one with another root and a missing section have no entries.
template <class Visit>
void VRDConfigurationImpl::visitEntries(const I18NString& section, const I18NString& entry,
                                        Visit visit) {
  VRDIDOM_Element root = localeDocument().getDocumentElement();
  if (root.isNull() || root.getLocalName() != "localeConfiguration") return;
  VRDIDOM_Element parent = VRDIDOMUtils::selectSingleNode(root, section);
  forEachChildElement(parent, [&](VRDIDOM_Element& element) {
    if (element.getLocalName() == entry) visit(element);
  });
}

void VRDConfigurationImpl::loadList(TextList* list, const I18NString& section,
                                    const I18NString& entry) {
  const I18NString id = "id";
  visitEntries(section, entry,
               [&](VRDIDOM_Element& element) { list->push_back(element.getAttribute(id)); });
}

void VRDConfigurationImpl::loadMap(TextMap* map, const I18NString& section,
                                   const I18NString& entry) {
  const I18NString key = "key";
  const I18NString value = "value";
  visitEntries(section, entry, [&](VRDIDOM_Element& element) {
    map->emplace(element.getAttribute(key), element.getAttribute(value));
  });
}

void VRDConfigurationImpl::loadListFromParam(TextList* list, VRDIDOM_Element& value) {
  visitItems(value, [&](VRDIDOM_Element& item) { list->push_back(VRDIDOMUtils::getText(item)); });
}

void VRDConfigurationImpl::loadMapFromParam(TextMap* map, VRDIDOM_Element& value) {
  visitItems(value, [&](VRDIDOM_Element& item) {
    VRDIDOM_Element key = VRDIDOMUtils::selectSingleNode(item, "key");
    VRDIDOM_Element text = VRDIDOMUtils::selectSingleNode(item, "value");
    if (key.isNull() || text.isNull()) return;
    map->emplace(VRDIDOMUtils::getText(key), VRDIDOMUtils::getText(text));
  });
}

// The kind of the table decides how it is filled.

void VRDConfigurationImpl::load(TextList& list, const LocaleTableSource& source) {
  loadList(&list, source.section, source.entry);
}

void VRDConfigurationImpl::load(TextMap& map, const LocaleTableSource& source) {
  loadMap(&map, source.section, source.entry);
}

void VRDConfigurationImpl::loadFromParam(TextList& list, VRDIDOM_Element& value) {
  loadListFromParam(&list, value);
}

void VRDConfigurationImpl::loadFromParam(TextMap& map, VRDIDOM_Element& value) {
  loadMapFromParam(&map, value);
}
