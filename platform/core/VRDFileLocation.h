#pragma once

/// The place in the source where an error is raised. A plain record, built on the stack at the
/// site.
struct VRDFileLocation {
  const char* file;  ///< Name of the source unit, without folder and ending; static storage.
  long line;         ///< Line in that unit.
};
