// CBlowFish: the block cipher behind enciphered scripts.
// Room: calls. Used by: script encryption, hosts.
// May touch: nothing but the buffers it is given.
// Invariant: blocks are enciphered independently; bytes 0-3 and 4-7 of a block are its two halves, each
// little-endian.
#pragma once

#include "brindle/export.h"

#include <cstdint>
#include <memory>

/// Blowfish in electronic-codebook mode. Call Initialize once before Encode or Decode; an object may then be
/// used any number of times, by one thread at a time.
class BRINDLE_API CBlowFish {
public:
  CBlowFish();
  ~CBlowFish();
  CBlowFish(const CBlowFish&) = delete;
  CBlowFish& operator=(const CBlowFish&) = delete;

  /// Sets the key, 1 to 56 bytes; of a longer one the first 72 count. A length below 1 changes nothing.
  void Initialize(unsigned char* key, int keyLength);
  /// `n` rounded up to whole blocks of 8 bytes.
  [[nodiscard]] unsigned long GetOutputLength(unsigned long n);
  /// Enciphers `n` bytes, the last block filled up with zeros, and returns the output's length. `out`, which
  /// may be `in`, holds GetOutputLength(n) bytes.
  unsigned long Encode(unsigned char* in, unsigned char* out, unsigned long n);
  /// Deciphers the blocks that `n` bytes begin; both buffers hold GetOutputLength(n) bytes and may be one.
  void Decode(unsigned char* in, unsigned char* out, unsigned long n);

private:
  struct Boxes;
  void Blowfish_encipher(std::uint32_t& left, std::uint32_t& right) const;
  void Blowfish_decipher(std::uint32_t& left, std::uint32_t& right) const;
  [[nodiscard]] std::uint32_t Mix(std::uint32_t half) const;

  std::unique_ptr<Boxes> m_pBoxes;
};
