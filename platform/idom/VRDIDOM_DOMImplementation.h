#pragma once

#include "platform/core/VRDExport.h"
#include "platform/idom/VRDIDOM_Document.h"

/// A handle on the factory of documents; may end while its documents are in use.
class VRD_EXPORT VRDIDOM_DOMImplementation {
 public:
  /// Begins a use of the layer. Calls nest and may come from any thread. The first call of the
  /// process starts Xerces-C, which is then never ended: call it before other threads start if they
  /// use Xerces-C by themselves, as its start is not safe against itself.
  /// Creating or parsing a document does the same first call by itself.
  static void initialize();
  /// Ends one use begun by `initialize`. Documents that still have handles stay usable.
  static void terminate();

  /// The one factory; any thread may use it.
  static VRDIDOM_DOMImplementation getInstance();

  /// A new document without a root.
  VRDIDOM_Document createDocument();
};
