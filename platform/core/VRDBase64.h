#pragma once

#include "platform/core/VRDExport.h"

/// Decodes base64 as RFC 4648 tells, padding required. Line breaks (LF, CR LF) may stand anywhere,
/// and blanks, tabs and single CRs before and behind it all, as a value in an indented document has
/// them.
///
/// Bits of the last character that carry no data must be 0, so that bytes have one text only.
///
/// Throws nothing and keeps nothing: no copy of the bytes is left behind. Any thread may call it.
///
/// @param text NUL-terminated base64; empty text gives no bytes; null is not base64
/// @param out  receives the bytes, and a NUL behind them; may not overlap @p text. Nothing
///             beyond its room is written
/// @param size on entry the room in @p out, the NUL included; on success the number of decoded
///             bytes, the NUL not counted; on failure 0
/// @return 0 on success; 1 if @p text is not base64; 2 if the room does not suffice, or there is
///         none because @p out or @p size is null. Where both are true, what is met first counts.
///         After a failure @p out may hold part of the bytes, without a NUL: wipe it, do not read
///         it.
VRD_EXPORT int VRDBase64Decode(const char* text, char* out, unsigned long* size);
