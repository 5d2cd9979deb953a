#pragma once

#include "platform/core/VRDExport.h"

/// Begins a use of the text layer. Calls nest and may come from any thread; none of these functions
/// throws.
/// Construction, assignment, appending, null-encoding `c_str` and destruction of an `I18NString`
/// work without it, before the first call and after the last end.
VRD_EXPORT void I18NInitialize();

/// Ends one use begun by `I18NInitialize`. The layer stays usable until the last use has ended.
VRD_EXPORT void I18NTerminate();

/// The encoding of file names and of the process environment: UTF-8, whatever the process locale
/// is. A name with bytes that are not UTF-8 passes through it unharmed, both ways.
/// The pointer stays valid for the life of the process. Never null.
VRD_EXPORT const char* I18NGetPlatformDefaultEncoding();
