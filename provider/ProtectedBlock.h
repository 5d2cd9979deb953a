#pragma once

#include <cstddef>

#include "provider/Cipher.h"
#include "provider/GivenMemory.h"
#include "provider/KeyRing.h"

// The form in which values are protected:
//
//   | bytes | content                                                                |
//   |-------|------------------------------------------------------------------------|
//   | 4     | 0, 'V', 'R', 'D'. Who takes a refused block for plain text sees the    |
//   |       | NUL first, and so no text                                              |
//   | 1     | version of the form: 1                                                 |
//   | 1     | algorithm: 1, AES-256-GCM                                              |
//   | 4     | number of the key, most significant byte first                         |
//   | 12    | nonce, random for each block                                           |
//   | n     | the data, encrypted                                                    |
//   | 16    | authentication tag over the ten bytes at the front and the data        |
//
// With random nonces a key is good for 2^32 blocks.

/// The data are no block of this form, or were changed, or were sealed with another key of the same
/// number: which of these is not told apart.
class RefusedBlock : public std::runtime_error {
 public:
  RefusedBlock();
};

struct Given {
  GivenMemory memory;
  std::size_t size = 0;
};

/// Protects @p clear, of any length, with the newest key.
Given protectBlock(KeyRing& keys, Bytes clear);

/// The data of a block; one NUL more stands behind them, for callers who read them as text. Throws
/// `RefusedBlock`, and `KeyError` if there is no such key.
Given unprotectBlock(KeyRing& keys, Bytes block);
