#pragma once

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMImplementation.hpp>

#include <cstddef>

/// Xerces-C in this process: started by the first `instance`, never ended.
class XercesRuntime {
 public:
  /// Throws what a failed start throws; the next call tries again.
  static const XercesRuntime& instance();

  /// An empty document in our own memory; the caller releases it.
  xercesc::DOMDocument* createDocument() const;

  /// Lets the memory of a document that holds no node yet start small. Most documents hold one
  /// parameter and live for one call; the blocks of a large one double in size soon enough.
  static void startSmall(xercesc::DOMDocument& document);

 private:
  XercesRuntime();

  xercesc::DOMImplementation* m_implementation;
};
