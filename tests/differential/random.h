// Random: numbers that depend on the seed alone, on every machine.
// Room: tests. Used by: the generator of programs.
// May touch: memory only.
// Must not: use the standard distributions: their results differ between libraries.
// Invariant: equal seeds give equal sequences.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

class Random {
public:
  explicit Random(std::uint64_t seed) noexcept : m_state(seed * 0x9E3779B97F4A7C15ULL + 1) {}

  [[nodiscard]] std::uint64_t Next() noexcept {
    m_state += 0x9E3779B97F4A7C15ULL;
    std::uint64_t mixed = m_state;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9ULL;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBULL;
    return mixed ^ (mixed >> 31);
  }
  // 0 ... bound - 1
  [[nodiscard]] int Below(int bound) noexcept { return static_cast<int>(Next() % static_cast<std::uint64_t>(bound)); }
  [[nodiscard]] bool Percent(int chance) noexcept { return Below(100) < chance; }
  template <std::size_t Count> [[nodiscard]] std::string Of(const char* const (&choices)[Count]) noexcept {
    return choices[Below(static_cast<int>(Count))];
  }

private:
  std::uint64_t m_state;
};
