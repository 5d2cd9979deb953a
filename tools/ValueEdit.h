#pragma once

#include <stdexcept>
#include <string>

#include "tools/LocatedDocument.h"

/// The value of a parameter cannot be replaced in a document; the text tells why.
class ValueEditError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The startup document with the value of parameter @p name replaced by @p storedText and marked as
/// encrypted; every other byte as it was. Of several parameters of that name it is the one that
/// counts. Throws `ValueEditError`.
/// @param content the file's content
std::string withProtectedValue(const std::string& content, const std::string& name,
                               const std::string& storedText);
