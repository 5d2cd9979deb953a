#pragma once

#include <string>
#include <string_view>

/// The stored text of a value: base64, without line breaks, of what the provider makes of
/// @p clearText. What `decryptString` turns back into the clear text, if that holds no NUL.
/// @param clearText any bytes; a value is UTF-8
/// @param handle    of an open session, not null
/// @return the stored text; empty if the provider refuses, and then
///         `HLD_CryptoGetLastErrorDetails` tells why
std::string protectString(std::string_view clearText, void* handle);
