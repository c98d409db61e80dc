// Numbers to text and back, printf conversions included, without the locale and without printf.
// Room: platform. Used by: CString::Format, values, the script function "format".
// May touch: nothing.
// Invariant: the digits are those that the C standard defines for the "C" locale, whatever the process has set.
#pragma once

#include "brindle/text.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace brindle {

// "%i".
[[nodiscard]] CString FormatInteger(std::int64_t value);

// "%f", with up to kMostQuickDecimals digits after the point; "nan", "inf", "-inf".
inline constexpr int kMostQuickDecimals = 9;
[[nodiscard]] CString FormatFixed(double value, int decimals = 6);

// The longest leading number: white space, sign, digits, point, exponent. Neither hexadecimal nor "inf"
// nor "nan". 0 when no number starts the text; infinity when it is too large. `used`, when given,
// receives the number of units read (0 when none was a number).
[[nodiscard]] double ParseDouble(std::u16string_view text, std::size_t* used = nullptr);

// The leading decimal integer, saturated at the 32-bit limits; 0 when there is none.
[[nodiscard]] std::int32_t ParseInteger(std::u16string_view text);

// Conversions of numbers out of a type's range are defined here, once, for everybody.
// Truncated toward zero, saturated at the limits, not-a-number gives 0.
[[nodiscard]] std::int32_t ToInt32(double value) noexcept;
// Truncated toward zero, modulo 2^32 (through 64 bits), not-a-number gives 0.
[[nodiscard]] std::uint32_t ToUint32(double value) noexcept;
// To the nearest; what rounds to more than the largest number is infinite.
[[nodiscard]] float ToFloat(double value) noexcept;

// One printf conversion: "%[flags][width][.precision][size]letter".
struct FormatDirective {
  bool leftAligned = false;
  bool plusSign = false;
  bool blankSign = false;
  bool alternate = false;
  bool zeroFilled = false;
  int width = 0;
  std::optional<int> precision;
  bool widthFromArgument = false;     // "*"
  bool precisionFromArgument = false; // ".*"
  int longs = 0;                      // number of "l" (2 also for "j", "z", "t", "L", "I64")
  int shorts = 0;                     // number of "h"
  char16_t conversion = 0;            // 0: the text ended before a letter came
};

// Reads a directive; `position` stands behind its "%" and is moved behind it. Width and precision saturate
// at 2^30.
[[nodiscard]] FormatDirective ReadDirective(std::u16string_view format, std::size_t& position);

// The text of one converted value, padded to the directive's width.
// d i u o x X: the 64 bits of `value` as the letter says (u, o, x, X take it as unsigned).
void AppendInteger(CString& out, const FormatDirective& directive, std::int64_t value);
// e E f F g G a A.
void AppendFloating(CString& out, const FormatDirective& directive, double value);
// s: at most `precision` units of the text; c: the text as it is.
void AppendText(CString& out, const FormatDirective& directive, std::u16string_view text);

// Units that a directive's output can take at most apart from the value's own length: for limit checks.
[[nodiscard]] inline int MinimumOutput(const FormatDirective& directive) noexcept {
  const int precision = directive.precision.value_or(0);
  return directive.width > precision ? directive.width : precision;
}

} // namespace brindle
