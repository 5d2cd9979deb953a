#pragma once

#include <string>
#include <string_view>

#include "platform/core/I18NString.h"

// Texts at the border between the library and the terminal. Inside the command a text is UTF-8,
// with bytes that are not UTF-8 kept as they came.

inline std::string bytesOf(const I18NString& text) { return std::string(text.utf8()); }
inline I18NString textOf(std::string_view bytes) { return I18NString(bytes); }

/// @p text in quotation marks, for a message.
std::string inQuotes(std::string_view text);

/// The columns of a terminal that @p text takes: East Asian wide characters count two, combining
/// ones none. Needs a UTF-8 locale for character types, which `main` sets.
int displayWidth(std::string_view text);

/// @p text with control characters and bytes that are not UTF-8 written as escapes, so that it
/// stays on its line and cannot steer the terminal.
std::string onOneLine(std::string_view text);

/// @p text cut to @p width columns, with an ellipsis in the last one where something is missing.
std::string shortened(const std::string& text, int width);

/// The XML of an opaque value in short: without the tag around it, whose declarations are always
/// the same, and without line breaks.
std::string innerXml(const std::string& xml);

/// Replaces what is not UTF-8 by U+FFFD.
std::string validUtf8(std::string_view text);

/// The length of the UTF-8 character at @p at; 0 if there is none.
std::size_t characterLength(std::string_view text, std::size_t at);
