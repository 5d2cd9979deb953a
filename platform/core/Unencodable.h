#pragma once

#include <string>

/// What stands for a character that the target encoding does not have.
enum class Unencodable {
  Substitute,    ///< The encoding's substitution character.
  XmlReference,  ///< "&#x20AC;", in the encoding. For texts without odd bytes.
};

/// The reference of the second policy, in ASCII. Allocates nothing, since it is asked for inside
/// ICU's callbacks, which no exception may leave.
std::string xmlReference(char32_t character) noexcept;
