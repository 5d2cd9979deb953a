#pragma once

#include <string>
#include <string_view>

#include "platform/core/VRDExport.h"

/// The text of an XML document in @p encoding. A character that the encoding does not have comes
/// out as a hexadecimal character reference ("&#x20AC;"), which means the same where XML takes a
/// reference: in element content and attribute values, not in names, comments and instructions.
/// Any thread may call it.
///
/// @param utf8     the text, already escaped; a byte that is not UTF-8 counts as U+FFFD
/// @param encoding a name as `I18NString` takes it; null for UTF-8. UTF-16 and UTF-32 without LE or
///                 BE begin with a byte order mark, as XML wants it.
/// @throw VRDStdExceptionError for an encoding that nobody knows
VRD_EXPORT std::string I18NEncodeForXml(std::string_view utf8, const char* encoding);
