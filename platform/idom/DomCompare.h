#pragma once

#include <xercesc/dom/DOMNode.hpp>

/// Whether two trees are equal: types, qualified names, namespaces, values, attributes in whatever
/// order, and children in theirs. Takes no recursion.
bool areEqual(const xercesc::DOMNode& left, const xercesc::DOMNode& right);
