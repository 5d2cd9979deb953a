#pragma once

#include <istream>

#include "platform/core/VRDExport.h"

/// A source of bytes. One thread reads at a time.
class VRD_EXPORT IBJInputStream {
 public:
  virtual ~IBJInputStream();
  /// Reads up to @p count bytes into @p buffer.
  /// @return the number of bytes read, 0 at the end, -1 on failure and for a null buffer or a
  ///         negative count
  virtual int read(char* buffer, int count) = 0;

 protected:
  IBJInputStream() = default;
  IBJInputStream(const IBJInputStream&) = default;
  IBJInputStream& operator=(const IBJInputStream&) = default;
};

/// Reads from a standard stream, which it does not own and which must outlive it. A standard
/// stream that has failed, or whose buffer throws, reads as a failure. No exception of the standard
/// stream comes out, whatever `exceptions()` asks for; reaching the end is the end in any case.
class VRD_EXPORT IBJBufferedInputStream : public IBJInputStream {
 public:
  explicit IBJBufferedInputStream(std::istream& source);
  ~IBJBufferedInputStream() override;
  int read(char* buffer, int count) override;

 private:
  std::istream& m_source;
};
