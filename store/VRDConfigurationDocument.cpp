// Unit VRDConfiguration: the startup document, as it lies on the disk.

#include "foundation/ConfigurationVocabulary.h"
#include "foundation/ElementWalk.h"
#include "foundation/VRDIDOMUtils.h"
#include "platform/idom/VRDIDOM_Parser.h"
#include "store/InstallationFiles.h"
#include "store/StartupDocument.h"
#include "store/VRDConfiguration.h"

namespace {

/// Removes what is disabled in the parameters of a startup document.
void prune(VRDIDOM_Element root) {
  forEachChildElement(root, [](VRDIDOM_Element& child) {
    unsigned long unused = 0;
    if (VRDIDOMUtils::isQNameEquals(child, vocabulary().configUri, vocabulary().parameter)) {
      VRDConfiguration::removeDisabledElements(child, unused);
    }
  });
}

}  // namespace

VRDCFGAPI_ErrorState readStartupDocument(VRDIDOM_Document& document, int parserFlag) {
  if (document.isNull()) return VRDCFGAPI_NullDocument;
  std::optional<std::ifstream> file = openInstallationFile(InstallationFiles::startupDocument);
  if (!file) return VRDCFGAPI_StartupFileMissing;
  VRDIDOM_Parser parser(parserFlag);
  if (parser.parse(*file, document) == 0) return VRDCFGAPI_StartupFileParseFailed;
  prune(document.getDocumentElement());
  return VRDCFGAPI_NoError;
}

VRDCFGAPI_ErrorState VRDConfiguration::getConfigDoc(VRDIDOM_Document& document) {
  return readStartupDocument(document, 0);
}
