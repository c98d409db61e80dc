// "format": any text as the format of any value; and each conversion beside the C library's.
#include "fuzz_support.h"

#include "interpreter/limits.h"
#include "interpreter/script_abort.h"
#include "platform/number_text.h"
#include "support/test_access.h"

#include <bit>
#include <cmath>
#include <cstdio>

using namespace brindle;
using fuzz::Require;

namespace {

constexpr int kMostCompared = 2000; // units; wider output shows nothing new

CBasicVariable ValueOf(fuzz::Input& input) {
  switch (input.Byte() % 4) {
  case 0: return CBasicVariable(std::bit_cast<double>(input.Number(8)));
  case 1: return CBasicVariable(static_cast<int>(static_cast<std::int32_t>(input.Number(4))));
  case 2: return CBasicVariable(static_cast<double>(static_cast<std::int16_t>(input.Number(2))) / 8);
  default: return CBasicVariable(CString::FromUtf8(std::string(input.Bytes(input.Byte() % 16))));
  }
}

// Megabytes of blanks take long and show what a few of them show; what is more than the limit is refused at once.
bool IsSlow(std::u16string_view format) {
  constexpr int kQuickDigits = 5;
  constexpr int kRefusedDigits = 9;
  int digits = 0;
  for (const char16_t unit : format) {
    digits = unit >= u'0' && unit <= u'9' ? digits + 1 : 0;
    if (digits > kQuickDigits && digits < kRefusedDigits)
      return true;
  }
  return false;
}

std::string PatternOf(const FormatDirective& directive, const char* size) {
  std::string pattern = "%";
  pattern += directive.leftAligned ? "-" : "";
  pattern += directive.plusSign ? "+" : "";
  pattern += directive.blankSign ? " " : "";
  pattern += directive.alternate ? "#" : "";
  pattern += directive.zeroFilled ? "0" : "";
  pattern += directive.width > 0 ? std::to_string(directive.width) : "";
  pattern += directive.precision ? "." + std::to_string(*directive.precision) : "";
  return pattern + size + static_cast<char>(directive.conversion);
}

template <class Number> std::string Printed(const std::string& pattern, Number number) {
  const int length = std::snprintf(nullptr, 0, pattern.c_str(), number);
  std::string text(static_cast<std::size_t>(length), '\0');
  std::snprintf(text.data(), text.size() + 1, pattern.c_str(), number);
  return text;
}

void CompareWithLibrary(std::u16string_view format, const CBasicVariable& value) {
  const std::size_t percent = format.find(u'%');
  if (percent == std::u16string_view::npos)
    return;
  std::size_t position = percent + 1;
  const FormatDirective directive = ReadDirective(format, position);
  Require(position > percent && position <= format.size(), "a directive lies in the text");
  if (directive.widthFromArgument || directive.precisionFromArgument || MinimumOutput(directive) > kMostCompared ||
      directive.conversion == 0)
    return;
  CString ours;
  if (std::u16string_view(u"diuoxX").find(directive.conversion) != std::u16string_view::npos) {
    const auto integer = static_cast<long long>(std::bit_cast<std::int64_t>(value.GetNumberValue()));
    AppendInteger(ours, directive, integer);
    Require(ours.ToUtf8() == Printed(PatternOf(directive, "ll"), integer),
            "an integer looks as the C library prints it");
  } else if (std::u16string_view(u"eEfFgGaA").find(directive.conversion) != std::u16string_view::npos) {
    const double number = value.GetNumberValue();
    AppendFloating(ours, directive, number);
    Require(std::isnan(number) || ours.ToUtf8() == Printed(PatternOf(directive, ""), number),
            "a number looks as the C library prints it");
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  CBasicVariableArray arguments;
  arguments.Add(ValueOf(input));
  const CString format = CString::FromUtf8(std::string(input.Rest()));
  arguments.Add(CBasicVariable(format));
  if (IsSlow(format.View()))
    return 0;

  CUserInterface nobody;
  CBrindle interpreter;
  interpreter.SetUserInterface(&nobody);
  CBasicVariable result;
  bool done = false;
  try {
    done = BrindleTestAccess::ExecStringOperation(interpreter, result, arguments, FUNCTION_FORMAT);
  } catch (const ScriptAbort&) {
    return 0; // the error box was answered by Cancel
  }
  const CString text = result.GetStringValue();
  Require(!done || text.GetLength() <= kLongestText, "a text has its limit");
  if (done && format.Find(u'%') < 0)
    Require(text == format, "a text without directives stays as it is");
  CompareWithLibrary(format.View(), arguments[0]);
  return 0;
}
