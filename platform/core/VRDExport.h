#pragma once

/// Marks what a library of this project shows to its clients; everything else is hidden.
/// Exception classes and interfaces carry it as a whole, so that their type identity is one
/// across libraries.
#define VRD_EXPORT __attribute__((visibility("default")))
