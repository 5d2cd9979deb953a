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

 private:
  XercesRuntime();

  xercesc::DOMImplementation* m_implementation;
};
