#pragma once

#include <cstddef>
#include <stdexcept>

#include "provider/SecretKey.h"

/// The cryptographic library cannot do what is asked, for a reason that lies not in the data.
class CipherError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Bytes that somebody else owns.
struct Bytes {
  const unsigned char* data;
  std::size_t size;
};

/// AES-256-GCM and random bytes. Keeps no state between calls, so threads never wait for each
/// other. Throws `CipherError`, also once the process is so far in its exit that the cryptographic
/// library has closed down.
class Cipher {
 public:
  Cipher() = delete;

  static constexpr std::size_t nonceSize = 12;
  static constexpr std::size_t tagSize = 16;
  /// What the library below takes in one call.
  static constexpr std::size_t maximumSize = 0x7fffff00;

  /// Does what is done once a process, which takes milliseconds.
  static void start();

  /// Writes `clear.size` bytes to @p out and then the tag.
  /// @param nonce `nonceSize` bytes, never used twice with one key
  /// @param label is authenticated with the data
  static void encrypt(const SecretKey& key, const unsigned char* nonce, Bytes label, Bytes clear,
                      unsigned char* out);

  /// Writes the clear text to @p out, `sealed.size - tagSize` bytes.
  /// @param sealed what `encrypt` wrote
  /// @return false if key, nonce, label or data are not those that were sealed; @p out is wiped
  /// then
  static bool decrypt(const SecretKey& key, const unsigned char* nonce, Bytes label, Bytes sealed,
                      unsigned char* out);

  /// Fills @p out with random bytes fit for keys.
  static void random(unsigned char* out, std::size_t size);
};
