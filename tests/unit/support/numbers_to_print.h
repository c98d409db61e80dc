// Numbers, and what the C library prints for them in the "C" locale: every digit of ours has to agree with it.
// Room: tests. Used by: unit tests of numbers as text.
// May touch: nothing.
// Must not: be the reference while another locale is set.
// Invariant: the same numbers in every run.
#pragma once

#include "platform/number_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace brindle {

inline constexpr double kInfinity = std::numeric_limits<double>::infinity();
inline constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
inline constexpr int kRandomNumbers = 100000;

template <class... Arguments> std::string Printed(const std::string& format, Arguments... arguments) {
  const int length = std::snprintf(nullptr, 0, format.c_str(), arguments...);
  std::string text(static_cast<std::size_t>(length) + 1, '\0');
  std::snprintf(text.data(), text.size(), format.c_str(), arguments...);
  text.pop_back();
  return text;
}

inline FormatDirective Directive(const std::string& format) {
  const CString text = CString::FromUtf8(format);
  std::size_t position = 1; // behind the "%"
  FormatDirective directive = ReadDirective(text.View(), position);
  EXPECT_EQ(position, format.size()) << format;
  return directive;
}

inline std::string Floating(const std::string& format, double value) {
  CString out;
  AppendFloating(out, Directive(format), value);
  return out.ToUtf8();
}

inline const std::vector<double>& HandpickedNumbers() {
  static const std::vector<double> numbers = {0.0,
                                              -0.0,
                                              1.0,
                                              -1.0,
                                              0.5,
                                              1.5,
                                              2.5,
                                              3.5,
                                              0.25,
                                              -0.25,
                                              0.125,
                                              1e-5,
                                              1e-6,
                                              5e-7,
                                              4.9e-7,
                                              5.1e-7,
                                              1e-7,
                                              0.1,
                                              0.2,
                                              0.3,
                                              1.0 / 3,
                                              2.0 / 3,
                                              9.5,
                                              99.5,
                                              999999.5,
                                              9.9999995,
                                              99999.9,
                                              123456,
                                              1234567,
                                              1e5,
                                              1e6,
                                              1e15,
                                              1e16,
                                              1e17,
                                              1e21,
                                              1e22,
                                              1e23,
                                              1e100,
                                              1e300,
                                              1e-100,
                                              1e-300,
                                              5e-324,
                                              3e-320,
                                              0.0001,
                                              0.00001,
                                              2147483647.0,
                                              2147483648.0,
                                              4294967296.0,
                                              9007199254740993.0,
                                              0.045,
                                              1.005,
                                              2.675,
                                              1e-4,
                                              9.9995e-5,
                                              std::numeric_limits<double>::max(),
                                              std::numeric_limits<double>::min(),
                                              std::numeric_limits<double>::epsilon()};
  return numbers;
}

// Doubles of every magnitude, and such as scripts compute with.
class RandomNumbers {
public:
  double Next() {
    switch (m_generator() % 4) {
    case 0:
    case 1: {
      const double number = std::bit_cast<double>(m_generator());
      return std::isfinite(number) ? number : 1.0;
    }
    case 2: return std::uniform_real_distribution<double>(-1e6, 1e6)(m_generator);
    default: return static_cast<double>(static_cast<std::int64_t>(m_generator() % 2000000000) - 1000000000) / 1000.0;
    }
  }

private:
  std::mt19937_64 m_generator{20240229};
};

} // namespace brindle
