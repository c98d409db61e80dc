#include "brindle/blowfish.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <utility>

namespace {

constexpr std::size_t kRounds = 16;
constexpr std::size_t kPWords = kRounds + 2;
constexpr std::size_t kBoxes = 4;
constexpr std::size_t kBoxWords = 256;
constexpr unsigned long kBlock = 8;

constexpr std::array<std::uint32_t, kPWords + kBoxes* kBoxWords> kInitial = {
#include "calls/blowfish_tables.inc"
};

std::uint32_t LoadWord(const unsigned char* bytes) {
  return bytes[0] | (static_cast<std::uint32_t>(bytes[1]) << 8) | (static_cast<std::uint32_t>(bytes[2]) << 16) |
         (static_cast<std::uint32_t>(bytes[3]) << 24);
}

void StoreWord(unsigned char* bytes, std::uint32_t word) {
  for (int i = 0; i < 4; ++i)
    bytes[i] = static_cast<unsigned char>(word >> (8 * i));
}

} // namespace

struct CBlowFish::Boxes {
  std::array<std::uint32_t, kPWords> p;
  std::array<std::array<std::uint32_t, kBoxWords>, kBoxes> s;
};

CBlowFish::CBlowFish() : m_pBoxes(std::make_unique<Boxes>()) {}

CBlowFish::~CBlowFish() = default;

void CBlowFish::Initialize(unsigned char* key, int keyLength) {
  if (keyLength < 1)
    return;
  std::copy_n(kInitial.begin(), kPWords, m_pBoxes->p.begin());
  for (std::size_t box = 0; box < kBoxes; ++box)
    std::copy_n(kInitial.begin() + kPWords + box * kBoxWords, kBoxWords, m_pBoxes->s[box].begin());

  int next = 0;
  for (std::uint32_t& word : m_pBoxes->p) {
    std::uint32_t keyWord = 0;
    for (int i = 0; i < 4; ++i) {
      keyWord = (keyWord << 8) | key[next];
      next = (next + 1) % keyLength;
    }
    word ^= keyWord;
  }

  std::uint32_t left = 0;
  std::uint32_t right = 0;
  const auto replacePair = [&](std::uint32_t& first, std::uint32_t& second) {
    Blowfish_encipher(left, right);
    first = left;
    second = right;
  };
  for (std::size_t i = 0; i < kPWords; i += 2)
    replacePair(m_pBoxes->p[i], m_pBoxes->p[i + 1]);
  for (auto& box : m_pBoxes->s)
    for (std::size_t i = 0; i < kBoxWords; i += 2)
      replacePair(box[i], box[i + 1]);
}

std::uint32_t CBlowFish::Mix(std::uint32_t half) const {
  const auto& s = m_pBoxes->s;
  return ((s[0][half >> 24] + s[1][(half >> 16) & 0xFF]) ^ s[2][(half >> 8) & 0xFF]) + s[3][half & 0xFF];
}

void CBlowFish::Blowfish_encipher(std::uint32_t& left, std::uint32_t& right) const {
  for (std::size_t round = 0; round < kRounds; ++round) {
    left ^= m_pBoxes->p[round];
    right ^= Mix(left);
    std::swap(left, right);
  }
  std::swap(left, right);
  right ^= m_pBoxes->p[kRounds];
  left ^= m_pBoxes->p[kRounds + 1];
}

void CBlowFish::Blowfish_decipher(std::uint32_t& left, std::uint32_t& right) const {
  for (std::size_t round = kRounds + 1; round > 1; --round) {
    left ^= m_pBoxes->p[round];
    right ^= Mix(left);
    std::swap(left, right);
  }
  std::swap(left, right);
  right ^= m_pBoxes->p[1];
  left ^= m_pBoxes->p[0];
}

unsigned long CBlowFish::GetOutputLength(unsigned long n) {
  return (n + kBlock - 1) / kBlock * kBlock;
}

unsigned long CBlowFish::Encode(unsigned char* in, unsigned char* out, unsigned long n) {
  const unsigned long length = GetOutputLength(n);
  if (n > 0 && in != out)
    std::memcpy(out, in, n);
  std::fill(out + n, out + length, static_cast<unsigned char>(0));
  for (unsigned long at = 0; at < length; at += kBlock) {
    std::uint32_t left = LoadWord(out + at);
    std::uint32_t right = LoadWord(out + at + 4);
    Blowfish_encipher(left, right);
    StoreWord(out + at, left);
    StoreWord(out + at + 4, right);
  }
  return length;
}

void CBlowFish::Decode(unsigned char* in, unsigned char* out, unsigned long n) {
  const unsigned long length = GetOutputLength(n);
  for (unsigned long at = 0; at < length; at += kBlock) {
    std::uint32_t left = LoadWord(in + at);
    std::uint32_t right = LoadWord(in + at + 4);
    Blowfish_decipher(left, right);
    StoreWord(out + at, left);
    StoreWord(out + at + 4, right);
  }
}
