#include "tools/StartupWarning.h"

#include "foundation/ConfigurationVocabulary.h"
#include "platform/idom/VRDIDOM_DOMImplementation.h"
#include "platform/idom/VRDIDOM_Document.h"
#include "store/VRDConfiguration.h"
#include "tools/Installation.h"
#include "tools/States.h"
#include "tools/Text.h"

namespace {

/// What the store met when it loaded the document. It keeps that to itself, so the document is read
/// again; the root is tested by the same name.
VRDCFGAPI_ErrorState startupState() {
  VRDIDOM_Document document = VRDIDOM_DOMImplementation::getInstance().createDocument();
  const VRDCFGAPI_ErrorState state = VRDConfiguration::getConfigDoc(document);
  if (state != VRDCFGAPI_NoError) return state;
  return document.getDocumentElement().isNamed(ConfigNamespaceUri, "parameters")
             ? VRDCFGAPI_NoError
             : VRDCFGAPI_BadRootElement;
}

}  // namespace

void warnAboutStartupDocument(const Output& output) {
  const VRDCFGAPI_ErrorState state = startupState();
  if (state == VRDCFGAPI_NoError) return;
  output.warning(onOneLine(startupDocument().path) + ": " + explanationOf(state) +
                 ". The built-in defaults are in force.");
}
