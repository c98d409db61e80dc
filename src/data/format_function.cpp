// "format": one value through a printf-style text that comes from the script and is never trusted.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/limits.h"
#include "interpreter/state.h"
#include "platform/number_text.h"

#include <algorithm>
#include <cmath>

using namespace brindle;

namespace {

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

// What a text can take without a width or a precision; a number is short.
int TextOutput(const CBasicVariable& value) {
  return value.GetType() == BVT_STRING ? value.GetStringValue().GetLength() : 0;
}

void AppendValue(CString& out, const FormatDirective& directive, const CBasicVariable& value) {
  switch (directive.conversion) {
  case u'd':
  case u'i':
  case u'u':
  case u'o':
  case u'x':
  case u'X': AppendInteger(out, directive, IntegerFor(directive, value.GetNumberValue())); break;
  case u'e':
  case u'E':
  case u'f':
  case u'F':
  case u'g':
  case u'G':
  case u'a':
  case u'A': AppendFloating(out, directive, value.GetNumberValue()); break;
  case u'c':
  case u'C': {
    FormatDirective character = directive;
    character.conversion = u'c';
    if (value.GetType() == BVT_NUMBER) {
      const auto unit = static_cast<char16_t>(ToUint32(value.GetNumberValue()) & 0xFFFFU);
      AppendText(out, character, std::u16string_view(&unit, 1));
    } else {
      AppendText(out, character, value.GetStringValue().Left(1).View());
    }
    break;
  }
  case u's':
  case u'S': AppendText(out, directive, value.GetStringValue().View()); break;
  default: break; // unknown letters print nothing
  }
}

} // namespace

bool CBrindle::ExecFormat(CBasicVariable& result, const CBasicVariable& value, const CString& format) {
  const std::u16string_view text = format.View();
  CString out;
  bool valueUsed = false;
  std::size_t position = 0;
  while (position < text.size()) {
    const std::size_t percent = std::min(text.find(u'%', position), text.size());
    out.Append(text.substr(position, percent - position));
    position = percent;
    if (position == text.size())
      break;
    ++position;
    FormatDirective directive = ReadDirective(text, position);
    if (directive.conversion == u'%') {
      out += u'%';
      continue;
    }
    // There is one value: a second conversion has nothing to print, and neither has "*".
    if (valueUsed || directive.widthFromArgument || directive.precisionFromArgument)
      continue;
    valueUsed = true;
    const std::int64_t room = kLongestText - out.GetLength();
    if (MinimumOutput(directive) > room || TextOutput(value) > room)
      return Fail(kErrorUnrecoverable);
    AppendValue(out, directive, value);
  }
  if (out.GetLength() > kLongestText)
    return Fail(kErrorUnrecoverable);
  result.SetValue(out);
  return true;
}
