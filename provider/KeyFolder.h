#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

#include "provider/SecretKey.h"

/// Keys are numbered from 1 in the order of their making.
using KeyNumber = std::uint32_t;

/// A key that is not there or may not be used as it is, or a folder that cannot be written. The
/// text names the file and tells the rule or the system's reason; it never holds a key.
class KeyError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The folder with the keys of an installation.
///
/// Each key has a file of its own, "0000000001.key", with one line: `vrdkey 1 `, then 64
/// hexadecimal digits. The file belongs to the user of the process or to root (root itself takes
/// any owner's), and has mode 0600 exactly; any other is refused. The key with the highest number
/// is the one to protect with; the others are there to read what they protected.
///
/// Any number of processes and threads may read and add at the same time. Needs the standard
/// library and POSIX only, so that a program can make keys without linking any cryptography.
class KeyFolder {
 public:
  /// Where an installation keeps its keys, relative to its "bin" directory.
  static constexpr char belowBin[] = "../configuration/keys";

  explicit KeyFolder(std::string path) : m_path(std::move(path)) {}

  /// The file of a key, whether it exists or not.
  std::string fileOf(KeyNumber number) const;

  /// The highest number that a key has; 0 if there is no key, or no folder. Throws `KeyError` if
  /// the folder cannot be listed.
  KeyNumber newest() const;

  /// Reads a key into @p key. Throws `KeyError`; @p key then holds nothing of use.
  void read(KeyNumber number, SecretKey& key) const;

  /// Writes @p key as the newest one, and makes the folder (mode 0700) if there is none. The file
  /// appears complete or not at all, is on the disk when this returns, and never replaces another.
  /// What root makes belongs to the owner of the folder around it.
  /// @return its number. Throws `KeyError`; nothing was added then.
  KeyNumber add(const SecretKey& key) const;

 private:
  std::string m_path;
};
