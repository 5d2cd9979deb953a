#include "provider/Cipher.h"

#include <openssl/crypto.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/rand.h>

#include <algorithm>
#include <atomic>
#include <memory>

// Each call has a cipher context of its own. A context that is kept for a key would save half of
// the time, but two threads could not share it, and a lock or a pool would cost what it saves.

namespace {

/// Set when the library below has begun to take itself down. Its objects are gone soon after, so
/// that a call which comes later has to end here.
std::atomic<bool> closedDown{false};

/// Takes away what a call leaves in the error queue of the thread, which is the host's.
class ErrorQueueMark {
 public:
  ErrorQueueMark() { ERR_set_mark(); }
  ~ErrorQueueMark() { ERR_pop_to_mark(); }
  ErrorQueueMark(const ErrorQueueMark&) = delete;
  ErrorQueueMark& operator=(const ErrorQueueMark&) = delete;
};

/// Fetched once and never freed: its look-up costs more than a decryption.
EVP_CIPHER* fetchCipher() {
  // A handler at exit can run after the library has gone, and a thread can still be at work then.
  OPENSSL_atexit([] { closedDown = true; });
  return EVP_CIPHER_fetch(nullptr, "AES-256-GCM", nullptr);
}

const EVP_CIPHER* cipher() {
  static EVP_CIPHER* const fetched = fetchCipher();
  if (closedDown) throw CipherError("the process is exiting");
  if (fetched == nullptr) throw CipherError("AES-256-GCM is not available");
  return fetched;
}

struct ContextDeleter {
  void operator()(EVP_CIPHER_CTX* context) const { EVP_CIPHER_CTX_free(context); }
};
using Context = std::unique_ptr<EVP_CIPHER_CTX, ContextDeleter>;

// As the library below takes it.
constexpr int decrypting = 0;
constexpr int encrypting = 1;

void require(bool done) {
  if (!done) throw CipherError("the cryptographic library failed");
}

/// The library takes sizes as int, and would take a large one for a negative one.
int intOf(std::size_t size) {
  if (size > Cipher::maximumSize) throw CipherError("more data than the cipher takes at once");
  return static_cast<int>(size);
}

/// A context that has taken in everything but the data.
Context makeContext(int direction, const SecretKey& key, const unsigned char* nonce, Bytes label) {
  Context context(EVP_CIPHER_CTX_new());
  // The key schedule is part of the context and is wiped with it.
  int count = 0;
  require(context != nullptr &&
          EVP_CipherInit_ex2(context.get(), cipher(), key.data(), nonce, direction, nullptr) == 1 &&
          EVP_CipherUpdate(context.get(), nullptr, &count, label.data, intOf(label.size)) == 1);
  return context;
}

void update(const Context& context, Bytes data, unsigned char* out) {
  // The library would take no data at all for a question about padding.
  int count = 0;
  require(data.size == 0 ||
          EVP_CipherUpdate(context.get(), out, &count, data.data, intOf(data.size)) == 1);
}

void setExpectedTag(const Context& context, const unsigned char* tag) {
  unsigned char copy[Cipher::tagSize];  // the call takes it as writable
  std::copy(tag, tag + Cipher::tagSize, copy);
  require(EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_AEAD_SET_TAG, Cipher::tagSize, copy) == 1);
}

}  // namespace

void Cipher::start() {
  const ErrorQueueMark mark;
  cipher();
}

void Cipher::encrypt(const SecretKey& key, const unsigned char* nonce, Bytes label, Bytes clear,
                     unsigned char* out) {
  const ErrorQueueMark mark;
  const Context context = makeContext(encrypting, key, nonce, label);
  update(context, clear, out);
  // The final call of this mode writes no data; where it would go, the tag goes then.
  unsigned char* tag = out + clear.size;
  int count = 0;
  require(EVP_CipherFinal_ex(context.get(), tag, &count) == 1 &&
          EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_AEAD_GET_TAG, tagSize, tag) == 1);
}

bool Cipher::decrypt(const SecretKey& key, const unsigned char* nonce, Bytes label, Bytes sealed,
                     unsigned char* out) {
  const ErrorQueueMark mark;
  const std::size_t size = sealed.size - tagSize;
  const Context context = makeContext(decrypting, key, nonce, label);
  // Told in front, so that the final call can compare; until then the output proves nothing.
  setExpectedTag(context, sealed.data + size);
  update(context, {sealed.data, size}, out);
  unsigned char rest[EVP_MAX_BLOCK_LENGTH];
  int count = 0;
  if (EVP_CipherFinal_ex(context.get(), rest, &count) == 1) return true;
  // Nobody may see what was not proved to be genuine.
  OPENSSL_cleanse(out, size);
  return false;
}

void Cipher::random(unsigned char* out, std::size_t size) {
  const ErrorQueueMark mark;
  // For its look at the exit: the generator is as far gone then as the cipher.
  cipher();
  // From the generator that the library keeps for secrets, also for a nonce, which is none: what is
  // seen of the one for public values says nothing about keys.
  require(RAND_priv_bytes(out, intOf(size)) == 1);
}
