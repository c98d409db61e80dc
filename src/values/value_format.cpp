#include "values/value_format.h"

#include <algorithm>
#include <cmath>

namespace brindle {

namespace {

constexpr std::u16string_view kIntegers = u"diuoxX";
constexpr std::u16string_view kFloatings = u"eEfFgGaA";

// Truncated toward zero, saturated at 64 bits.
std::int64_t ToInt64(double value) {
  if (std::isnan(value))
    return 0;
  if (value >= 9223372036854775808.0)
    return INT64_MAX;
  if (value <= -9223372036854775808.0)
    return INT64_MIN;
  return static_cast<std::int64_t>(value);
}

// Negative values of the unsigned conversions show as 32-bit words unless the directive asks for more.
std::int64_t IntegerFor(const FormatDirective& directive, double value) {
  const std::int64_t integer = ToInt64(value);
  const bool isUnsigned = directive.conversion != u'd' && directive.conversion != u'i';
  return isUnsigned && integer < 0 && directive.longs < 2 ? static_cast<std::int64_t>(ToUint32(value)) : integer;
}

} // namespace

ValueFormat ReadFormat(std::u16string_view text) {
  ValueFormat format;
  std::size_t position = 0;
  while (position < text.size()) {
    CString& out = format.hasValue ? format.behind : format.before;
    const std::size_t percent = std::min(text.find(u'%', position), text.size());
    out.Append(text.substr(position, percent - position));
    position = percent;
    if (position == text.size())
      break;
    ++position;
    const FormatDirective directive = ReadDirective(text, position);
    if (directive.conversion == u'%') {
      out += u'%';
    } else if (!format.hasValue && !directive.widthFromArgument && !directive.precisionFromArgument) {
      format.hasValue = true;
      format.directive = directive;
    }
  }
  const FormatDirective& directive = format.directive;
  const bool isBare = format.before.IsEmpty() && format.behind.IsEmpty() && directive.width == 0 &&
                      !directive.leftAligned && !directive.plusSign && !directive.blankSign && !directive.alternate;
  format.isPlain = format.hasValue && isBare &&
                   ((directive.conversion == u'd' && !directive.precision) ||
                    (directive.conversion == u'f' && directive.precision.value_or(6) <= kMostQuickDecimals));
  return format;
}

bool PrintsNumber(const FormatDirective& directive) noexcept {
  return kIntegers.find(directive.conversion) != kIntegers.npos ||
         kFloatings.find(directive.conversion) != kFloatings.npos;
}

CString FormatNumber(const ValueFormat& format, double value) {
  if (format.isPlain)
    return format.directive.conversion == u'd' ? FormatInteger(ToInt64(value))
                                               : FormatFixed(value, format.directive.precision.value_or(6));
  CString out = format.before;
  if (kIntegers.find(format.directive.conversion) != kIntegers.npos)
    AppendInteger(out, format.directive, IntegerFor(format.directive, value));
  else
    AppendFloating(out, format.directive, value);
  out.Append(format.behind.View());
  return out;
}

} // namespace brindle
