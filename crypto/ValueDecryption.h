#pragma once

#include "platform/core/I18NString.h"
#include "platform/idom/VRDIDOM_Element.h"

// Stored values in clear text. Both take the handle of an open session, never null, and take no
// lock: the store calls them under its own.

/// The clear text of @p text, which is base64 of what the provider protected.
///
/// | what happens                              | result                                |
/// |-------------------------------------------|---------------------------------------|
/// | the provider gives the clear text         | it, up to its first NUL               |
/// | the provider refuses the decoded bytes    | these, as UTF-8 up to the first NUL   |
/// | @p text is empty or not base64            | an empty text                         |
/// | an exception                              | @p text                               |
I18NString decryptString(I18NString text, void* handle);

/// Decrypts in place what is marked below @p element, and returns @p element; its own marks are not
/// looked at. What the tree throws passes through, with the elements before it decrypted.
VRDIDOM_Element decryptXML(VRDIDOM_Element element, void* handle);
