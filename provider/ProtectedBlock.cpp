#include "provider/ProtectedBlock.h"

#include <algorithm>
#include <array>

namespace {

// A form that is changed gets another version and is then read beside this one.
constexpr std::array<unsigned char, 6> opening = {0, 'V', 'R', 'D', 1, 1};
constexpr std::size_t headerSize = opening.size() + sizeof(KeyNumber);
constexpr std::size_t sealedOffset = headerSize + Cipher::nonceSize;
constexpr std::size_t overhead = sealedOffset + Cipher::tagSize;

void putNumber(KeyNumber number, unsigned char* out) {
  for (unsigned shift = 32; shift > 0; shift -= 8) {
    *out++ = static_cast<unsigned char>(number >> (shift - 8));
  }
}

KeyNumber numberAt(const unsigned char* bytes) {
  KeyNumber number = 0;
  for (std::size_t i = 0; i < sizeof number; ++i) number = number << 8 | bytes[i];
  return number;
}

bool isBlock(Bytes block) {
  return block.size >= overhead && std::equal(opening.begin(), opening.end(), block.data);
}

}  // namespace

RefusedBlock::RefusedBlock() : std::runtime_error("the block is not genuine") {}

Given protectBlock(KeyRing& keys, Bytes clear) {
  if (clear.size > Cipher::maximumSize - overhead) throw CipherError("the data are too long");
  Given block{GivenMemory(allocateGiven(clear.size + overhead)), clear.size + overhead};
  unsigned char* header = block.memory.get();
  unsigned char* nonce = header + headerSize;
  // The header is not secret, but it is authenticated: nobody can make a block ask for another key.
  putNumber(keys.newest(), std::copy(opening.begin(), opening.end(), header));
  Cipher::random(nonce, Cipher::nonceSize);
  Cipher::encrypt(keys.key(keys.newest()), nonce, {header, headerSize}, clear,
                  header + sealedOffset);
  return block;
}

Given unprotectBlock(KeyRing& keys, Bytes block) {
  // Before anything is computed with it.
  if (!isBlock(block)) throw RefusedBlock();
  const SecretKey& key = keys.key(numberAt(block.data + opening.size()));
  const std::size_t size = block.size - overhead;
  // Room for the NUL behind the text. If the block is refused, the memory goes as it came.
  Given clear{GivenMemory(allocateGiven(size + 1)), size};
  if (!Cipher::decrypt(key, block.data + headerSize, {block.data, headerSize},
                       {block.data + sealedOffset, block.size - sealedOffset},
                       clear.memory.get())) {
    throw RefusedBlock();
  }
  clear.memory.get()[size] = 0;
  return clear;
}
