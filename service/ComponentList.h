#pragma once

#include <istream>

#include "service/ComponentVersions.h"

/// Adds the entries of a component list to @p versions and completes them.
///
/// An entry is a line that holds "_version=": its name stands before the first of these, its
/// version behind it, up to the newline. Other lines say nothing. A last line without a newline is
/// not read: it may be the half of one that is still being written. Where @p list, a stream with a
/// buffer, fails, the list ends.
void readComponentList(std::istream& list, ComponentVersions& versions);
