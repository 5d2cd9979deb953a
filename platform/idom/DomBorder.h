#pragma once

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>

#include <new>

// Nothing that Xerces-C throws leaves the layer: its exceptions hold their texts in its memory, and
// callers have none of its headers.

/// Throws a `VRDIDOM_Exception`.
/// @param code the DOM's exception code
[[noreturn]] void refuse(short code, const char* text);
[[noreturn]] void raiseAsOurs(const xercesc::DOMException& error);
[[noreturn]] void raiseAsOurs(const xercesc::XMLException& error);

/// Runs @p action, which may call Xerces-C, and gives its result.
template <class Action>
auto atBorder(Action&& action) -> decltype(action()) {
  try {
    return action();
  } catch (const xercesc::OutOfMemoryException&) {
    throw std::bad_alloc();
  } catch (const xercesc::DOMException& error) {
    raiseAsOurs(error);
  } catch (const xercesc::XMLException& error) {
    raiseAsOurs(error);
  }
}
