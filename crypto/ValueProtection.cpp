#include "crypto/ValueProtection.h"

#include <cstdint>
#include <cstring>

#include "crypto/CryptoSession.h"
#include "crypto/ProviderMemory.h"
#include "crypto/VRDCrypto.h"
#include "crypto/WipedMemory.h"

// Base64 is written here and not by the runtime layer, which only ever reads it.

namespace {

constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// The four characters of up to three bytes.
void appendQuad(std::string& text, const unsigned char* bytes, std::size_t count) {
  std::uint32_t bits = 0;
  // Missing bytes count as 0, as the decoder demands of bits that carry nothing.
  for (std::size_t i = 0; i < 3; ++i) bits = bits << 8 | (i < count ? bytes[i] : 0u);
  for (std::size_t i = 0; i < 4; ++i) {
    text += i <= count ? alphabet[bits >> (18 - 6 * i) & 63] : '=';
  }
}

std::string base64Of(const unsigned char* bytes, std::size_t size) {
  std::string text;
  text.reserve((size + 2) / 3 * 4);
  for (std::size_t i = 0; i < size; i += 3) {
    appendQuad(text, bytes + i, size - i < 3 ? size - i : 3);
  }
  return text;
}

}  // namespace

std::string protectString(std::string_view clearText, void* handle) {
  VRDCrypto& provider = *getCryptoInstance();
  // Of its own, since the provider may write to what it is given.
  WipedBuffer data(clearText.size() + 1);
  std::memcpy(data.data(), clearText.data(), clearText.size());

  void* block = nullptr;
  unsigned long size = 0;
  if (provider.HLD_ProtectData(handle, data.data(), clearText.size(), &block, &size, nullptr) < 0) {
    return std::string();
  }
  const ProviderMemory<void> owner(provider, block);
  return base64Of(static_cast<const unsigned char*>(owner.get()), size);
}
