#pragma once

#include "platform/idom/VRDIDOM_Element.h"

// Values that must not be shown: those marked encrypted="true" and those of type
// "cfg:systemPassword", at any depth.

inline constexpr char secretMask[] = "********";

/// Whether the element is marked as encrypted.
bool isEncrypted(VRDIDOM_Element& element);
/// Whether the element itself is to be masked.
bool isSecret(VRDIDOM_Element& element);
/// Whether it or anything below it is marked as encrypted.
bool holdsEncrypted(VRDIDOM_Element element);
/// Whether anything below it is still encrypted that a decrypting read should have opened. A system
/// password is never opened there.
bool holdsUndecrypted(VRDIDOM_Element element);
/// Masks it, or what is secret below it. @return whether there was anything to mask
bool maskSecrets(VRDIDOM_Element element);
/// The value of `xsi:type`, or an empty text.
I18NString typeOf(VRDIDOM_Element& element);
