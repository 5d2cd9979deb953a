#pragma once

// The built-in defaults of the store. They stand in a library of their own, so that an installation
// can put its own in its place; such a library defines these two functions and needs nothing else
// of this project.
//
// Each function gives an array of names and values in turn, ended by an empty name: name, value,
// name, value, "". The texts are NUL-terminated, in the platform's encoding, and live as long as
// the process; every call gives the same array.

#pragma GCC visibility push(default)
extern "C" {

/// Defaults that hold in every process, below the startup document.
const char* const* getruntimeDefaults();

/// Defaults that stand in for a startup document which cannot be had.
const char* const* getstartupDefaults();
}
#pragma GCC visibility pop
