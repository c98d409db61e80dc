// "format": one value through a printf-style text.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/limits.h"
#include "interpreter/state.h"
#include "values/value_format.h"

using namespace brindle;

namespace {

// What a text can take without a width or a precision; a number is short.
int TextOutput(const CBasicVariable& value) {
  return value.GetType() == BVT_STRING ? value.GetStringValue().GetLength() : 0;
}

void AppendValue(CString& out, const FormatDirective& directive, const CBasicVariable& value) {
  switch (directive.conversion) {
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
  const ValueFormat parts = ReadFormat(format.View());
  CString out = parts.before;
  if (parts.hasValue) {
    const std::int64_t room = kLongestText - out.GetLength();
    if (MinimumOutput(parts.directive) > room || TextOutput(value) > room)
      return Fail(kErrorUnrecoverable);
    if (PrintsNumber(parts.directive)) {
      out = FormatNumber(parts, value.GetNumberValue());
    } else {
      AppendValue(out, parts.directive, value);
      out.Append(parts.behind.View());
    }
  }
  if (out.GetLength() > kLongestText)
    return Fail(kErrorUnrecoverable);
  result.SetValue(out);
  return true;
}
