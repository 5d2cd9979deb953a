// Protected values, with the reference provider: a decrypting read beside the provider's own work,
// what many of them leave in memory, and base64 beside OpenSSL's.
//
//   bench_crypto BIN     the empty "bin" directory of an installation

#include <openssl/evp.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "bench/Measure.h"
#include "crypto/CryptoSession.h"
#include "crypto/VRDCrypto.h"
#include "crypto/ValueProtection.h"
#include "platform/core/VRDBase64.h"
#include "platform/core/VRDFmDir.h"
#include "provider/KeyFolder.h"
#include "store/VRDConfiguration.h"

namespace {

namespace fs = std::filesystem;

constexpr int inClearText = 1;
const std::string clearText(64, 'x');

/// Gives the installation the provider and a key.
void install(const fs::path& bin) {
  const fs::path provider = VRD_REFERENCE_PROVIDER;
  fs::create_symlink(provider, bin / provider.filename());
  VRDFmDir::setEffectiveWorkingDir(bin.c_str());
  SecretKey key;
  if (getCryptoInstance()->HLD_GetRandomData(SecretKey::size, key.data(), nullptr) < 0) {
    throw std::runtime_error("the provider gives no random bytes");
  }
  KeyFolder((bin / KeyFolder::belowBin).string()).add(key);
}

void writeDocument(const fs::path& bin, const std::string& stored) {
  std::ofstream(bin / "../configuration/zanstartup.xml")
      << "<vtn:parameters version=\"1.0\" xmlns:vtn=\"http://zandor.com/schemas/vtconfig/1/\">"
         "<vtn:parameter name=\"secret\"><vtn:value encrypted=\"true\">"
      << stored << "</vtn:value></vtn:parameter></vtn:parameters>";
}

/// The length of the clear text, read through the store.
std::size_t readThroughStore() {
  static const I18NString name("secret");
  I18NString text;
  VRDConfiguration::getInstance()->getValue(name, inClearText, text);
  return text.utf8().size();
}

/// The same from the provider, as a caller does it that has the stored text at hand.
std::size_t readFromProvider(const std::string& stored, void* session) {
  VRDCrypto& provider = *getCryptoInstance();
  char bytes[256];
  unsigned long size = sizeof bytes;
  VRDBase64Decode(stored.c_str(), bytes, &size);
  void* block = nullptr;
  unsigned long blockSize = 0;
  provider.HLD_UnprotectData(session, bytes, size, &block, &blockSize, nullptr);
  const std::size_t length = std::string(static_cast<const char*>(block), blockSize).size();
  provider.HLD_CryptoFree(block, nullptr);
  return length;
}

template <class Read>
bool readsMany(int count, Read read) {
  bool right = true;
  for (int i = 0; i < count; ++i) right = read() == clearText.size() && right;
  return right;
}

bool reads(const std::string& stored, void* session) {
  // Short pieces of work: on a busy machine most of them are then not interrupted.
  constexpr int atATime = 50;
  bool right = true;
  const PairOfTimes times = inTurn(
      2001, [&] { right = readsMany(atATime, readThroughStore) && right; },
      [&] {
        right = readsMany(atATime, [&] { return readFromProvider(stored, session); }) && right;
      });
  report("read", {times.ours / atATime, times.peers / atATime});
  return right;
}

bool growth() {
  const double before = processMemory("VmRSS");
  const bool right = readsMany(100000, readThroughStore);
  report("growth", processMemory("VmRSS") - before);
  return right;
}

bool decoding() {
  const std::string bytes(1 << 20, 'b');
  std::string text(bytes.size() / 3 * 4 + 5, '\0');
  std::string ours(text.size(), '\0');
  std::string peers(text.size(), '\0');
  const auto unsignedOf = [](std::string& chars) {
    return reinterpret_cast<unsigned char*>(chars.data());
  };
  const int length =
      EVP_EncodeBlock(unsignedOf(text), reinterpret_cast<const unsigned char*>(bytes.data()),
                      static_cast<int>(bytes.size()));
  unsigned long size = 0;
  report("base64", inTurn(
                       101,
                       [&] {
                         size = ours.size();
                         VRDBase64Decode(text.c_str(), ours.data(), &size);
                       },
                       [&] { EVP_DecodeBlock(unsignedOf(peers), unsignedOf(text), length); }));
  return ours.compare(0, size, bytes) == 0 && peers.compare(0, bytes.size(), bytes) == 0;
}

bool run(const fs::path& bin) {
  install(bin);
  void* session = nullptr;
  openCryptoSession(session);
  if (session == nullptr) throw std::runtime_error("the provider opens no session");
  const std::string stored = protectString(clearText, session);
  writeDocument(bin, stored);
  return reads(stored, session) && growth() && decoding();
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 2) return 2;
  try {
    const bool right = run(arguments[1]);
    std::fflush(stdout);
    _exit(right ? 0 : 1);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "bench_crypto: %s\n", error.what());
    return 1;
  }
}
