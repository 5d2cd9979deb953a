#pragma once

#include <string>

/// What the library that this process runs with says of itself: the strings behind the markers
/// "@(#)" in its file, with a newline between them. Empty if the file cannot be read.
std::string buildIdentity();
