#pragma once

#include <optional>
#include <string>

/// The whole content of a file; nothing if it cannot be read, and then errno tells why.
std::optional<std::string> readFile(const std::string& path);

/// What stands on the standard input, up to its end; nothing if it cannot be read.
std::optional<std::string> readStandardInput();
