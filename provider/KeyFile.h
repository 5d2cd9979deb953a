#pragma once

#include <string>

#include "provider/SecretKey.h"

/// Reads one key file, after looking at its type, owner and mode. Throws `KeyError`.
void readKeyFile(const std::string& path, SecretKey& key);

/// A complete key file under a name that nobody looks for, on the disk, which is gone again at the
/// end. Throws `KeyError`.
class UnpublishedKeyFile {
 public:
  UnpublishedKeyFile(const std::string& folder, const SecretKey& key);
  ~UnpublishedKeyFile();
  UnpublishedKeyFile(const UnpublishedKeyFile&) = delete;
  UnpublishedKeyFile& operator=(const UnpublishedKeyFile&) = delete;

  /// Gives the file the name @p path as well.
  /// @return false if something of that name exists
  bool publish(const std::string& path) const;

 private:
  std::string m_path;
};
