#pragma once

#include <string>
#include <string_view>

#include "platform/idom/VRDIDOM_DOMImplementation.h"
#include "platform/idom/VRDIDOM_Exception.h"
#include "platform/idom/VRDIDOM_Helper.h"
#include "platform/idom/VRDIDOM_NodeList.h"
#include "platform/idom/VRDIDOM_Parser.h"

inline std::string bytesOf(const I18NString& text) { return std::string(text.utf8()); }

inline VRDIDOM_Document newDocument() {
  return VRDIDOM_DOMImplementation::getInstance().createDocument();
}

/// A null document if the text cannot be parsed.
inline VRDIDOM_Document parsed(std::string_view text) {
  VRDIDOM_Document document;
  VRDIDOM_Parser(0).parse(text.data(), static_cast<int>(text.size()), document);
  return document;
}

inline VRDIDOM_Element parsedRoot(std::string_view text) {
  return parsed(text).getDocumentElement();
}

inline std::string written(const VRDIDOM_Node& node) {
  I18NString text;
  VRDIDOM_Helper::write(node, text);
  return bytesOf(text);
}

/// The DOM's number of the reason why a change is refused; 0 if it is not.
template <class Change>
long refusalOf(const Change& change) {
  try {
    change();
    return 0;
  } catch (const VRDIDOM_Exception& error) {
    return error.getCode();
  }
}
