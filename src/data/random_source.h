// The numbers behind the script function "rand".
// Room: data. Used by: arithmetic functions.
// May touch: nothing.
// Invariant: every number lies in 0..32767.
#pragma once

#include <cstdint>
#include <random>

namespace brindle {

class RandomSource {
public:
  void Seed(std::uint32_t seed) { m_generator.seed(seed); }
  [[nodiscard]] int Next() { return static_cast<int>(m_generator() >> 17) & 0x7FFF; }

private:
  std::mt19937 m_generator;
};

} // namespace brindle
