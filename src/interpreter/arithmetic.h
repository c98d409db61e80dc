// What the operators of numbers and texts mean, for both ways of running a program.
// Room: interpreter. Used by: operators, conditions, the fast route, the check of scripts.
// May touch: nothing.
// Invariant: one definition each, so that the two ways cannot drift apart.
#pragma once

#include "interpreter/language.h"

#include <cmath>
#include <string_view>

namespace brindle {

inline constexpr double kAbout = 1e-12; // what "~~" takes for equal

// The exponent counts multiplications: up to 1 there is none, 2 squares, 2.5 cubes.
inline double PowerOf(double base, double exponent) {
  constexpr double kLongestLoop = 1e6;
  if (exponent == 0)
    return 1;
  double left = exponent - 1;
  if (left > kLongestLoop)
    return std::pow(base, std::ceil(left) + 1);
  double value = base;
  for (; left > 0; left -= 1)
    value *= base;
  return value;
}

// What a comparison's text means; none for a text that is no comparison.
[[nodiscard]] LOGICAL_OPERATION ComparisonOf(std::u16string_view text) noexcept;

template <class T> bool Compare(LOGICAL_OPERATION operation, const T& left, const T& right) {
  switch (operation) {
  case LOGICAL_EQUAL: return left == right;
  case LOGICAL_GREATER: return left > right;
  case LOGICAL_LESS: return left < right;
  case LOGICAL_NOT_EQUAL: return left != right;
  case LOGICAL_GREATER_EQUAL: return left >= right;
  case LOGICAL_LESS_EQUAL: return left <= right;
  default: return false;
  }
}

} // namespace brindle
