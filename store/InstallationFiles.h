#pragma once

#include <fstream>
#include <optional>

/// The files of an installation, relative to its "bin" directory.
namespace InstallationFiles {

inline constexpr char startupDocument[] = "../configuration/zanstartup.xml";
inline constexpr char localeDocument[] = "../configuration/zanlocale.xml";
inline constexpr char componentList[] = "../cmplst.txt";

/// As `VRDFmDir::exists` takes it.
inline constexpr unsigned short regularFile = 0x8000;
/// What each of them has to be, as `VRDFmDir::exists` takes it: a regular file that its owner may
/// read.
inline constexpr unsigned short readableFile = 0x8100;

}  // namespace InstallationFiles

/// Opens one of these files for reading; finds the installation first if that has not happened.
/// Throws as `VRDConfiguration::determineBinDir` does.
/// @return nothing if it is no regular file that its owner may read; a stream that has failed if it
///         cannot be opened all the same
std::optional<std::ifstream> openInstallationFile(const char* name);
