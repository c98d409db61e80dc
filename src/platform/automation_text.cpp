#include "platform/automation_text.h"

#include "platform/number_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace brindle {

namespace {

CString Ascii(std::string_view text) {
  return CString(std::u16string(text.begin(), text.end()));
}

std::string WithLeadingZeros(long long number, std::size_t width) {
  std::string digits = std::to_string(number);
  return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

// Digits with a point before the last `scale` of them, zeros at the end of the fraction dropped.
std::string Scaled(std::string digits, std::size_t scale, bool negative) {
  if (digits.size() <= scale)
    digits.insert(0, scale + 1 - digits.size(), '0');
  std::string fraction = digits.substr(digits.size() - scale);
  digits.resize(digits.size() - scale);
  fraction.resize(fraction.find_last_not_of('0') + 1);
  if (!fraction.empty())
    digits += "." + fraction;
  return negative && digits.find_first_not_of("0.") != std::string::npos ? "-" + digits : digits;
}

std::string CurrencyText(std::int64_t tenThousandths) {
  constexpr std::size_t kScale = 4;
  const auto magnitude = static_cast<std::uint64_t>(tenThousandths);
  return Scaled(std::to_string(tenThousandths < 0 ? 0 - magnitude : magnitude), kScale, tenThousandths < 0);
}

// A decimal lies over the whole value: scale and sign behind the kind, then the high 32 bits, then the low 64.
std::string DecimalText(const VARIANT& value) {
  constexpr std::uint32_t kBase = 1000000000;
  constexpr std::size_t kLargestScale = 28;
  std::array<std::uint32_t, 3> limbs = {static_cast<std::uint32_t>(value.wReserved3) << 16 | value.wReserved2,
                                        static_cast<std::uint32_t>(value.ullVal >> 32),
                                        static_cast<std::uint32_t>(value.ullVal)};
  std::string digits;
  while (limbs[0] != 0 || limbs[1] != 0 || limbs[2] != 0) {
    std::uint64_t rest = 0;
    for (std::uint32_t& limb : limbs) {
      rest = rest << 32 | limb;
      limb = static_cast<std::uint32_t>(rest / kBase);
      rest %= kBase;
    }
    digits.insert(0, WithLeadingZeros(static_cast<long long>(rest), 9));
  }
  digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
  const std::size_t scale = std::min<std::size_t>(value.wReserved1 & 0xFF, kLargestScale);
  return Scaled(digits.empty() ? "0" : digits, scale, (value.wReserved1 & 0x8000) != 0);
}

} // namespace

CString DateText(DATE date) {
  constexpr double kFirst = -657434.0; // 0100-01-01
  constexpr double kBehindLast = 2958466.0;
  if (!(date > kFirst - 1.0 && date < kBehindLast))
    return CString();
  constexpr long long kSecondsOfDay = 86400;
  // The fraction is the time of day on either side of day 0.
  auto day = static_cast<long long>(date);
  auto second = std::llround(std::fabs(date - static_cast<double>(day)) * static_cast<double>(kSecondsOfDay));
  if (second == kSecondsOfDay) {
    second = 0;
    ++day;
  }
  // Days counted from 0000-03-01, so that the leap day ends a year.
  constexpr long long kEpoch = 693899; // 1899-12-30
  constexpr long long kFourHundredYears = 146097;
  const long long days = day + kEpoch;
  const long long era = days / kFourHundredYears;
  const long long dayOfEra = days % kFourHundredYears;
  const long long yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const long long dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const long long shiftedMonth = (5 * dayOfYear + 2) / 153;
  const long long dayOfMonth = dayOfYear - (153 * shiftedMonth + 2) / 5 + 1;
  const long long month = shiftedMonth < 10 ? shiftedMonth + 3 : shiftedMonth - 9;
  const long long year = era * 400 + yearOfEra + (month <= 2 ? 1 : 0);
  return Ascii(WithLeadingZeros(year, 4) + "-" + WithLeadingZeros(month, 2) + "-" + WithLeadingZeros(dayOfMonth, 2) +
               " " + WithLeadingZeros(second / 3600, 2) + ":" + WithLeadingZeros(second / 60 % 60, 2) + ":" +
               WithLeadingZeros(second % 60, 2));
}

CString VariantText(const VARIANT& value) {
  switch (value.vt) {
  case VT_I1: return Ascii(std::to_string(int{static_cast<signed char>(value.cVal)}));
  case VT_UI1: return Ascii(std::to_string(value.bVal));
  case VT_I2: return Ascii(std::to_string(value.iVal));
  case VT_UI2: return Ascii(std::to_string(value.uiVal));
  case VT_I4:
  case VT_INT: return Ascii(std::to_string(value.lVal));
  case VT_UI4:
  case VT_UINT: return Ascii(std::to_string(value.ulVal));
  case VT_I8: return Ascii(std::to_string(value.llVal));
  case VT_UI8: return Ascii(std::to_string(value.ullVal));
  case VT_R4: return FormatFixed(static_cast<double>(value.fltVal));
  case VT_R8: return FormatFixed(value.dblVal);
  case VT_BOOL: return Ascii(value.boolVal != 0 ? "True" : "False");
  case VT_BSTR: return CString(value.bstrVal, static_cast<int>(SysStringLen(value.bstrVal)));
  case VT_CY: return Ascii(CurrencyText(value.cyVal.int64));
  case VT_DATE: return DateText(value.date);
  case VT_DECIMAL: return Ascii(DecimalText(value));
  case VT_ERROR: return ResultText(value.scode);
  default: return CString();
  }
}

CString ResultText(HRESULT code) {
  struct Message {
    HRESULT code;
    std::u16string_view text;
  };
  static constexpr std::array kMessages = {
      Message{S_FALSE, u"The member had no effect"},
      Message{E_NOTIMPL, u"Not implemented"},
      Message{E_NOINTERFACE, u"No such interface supported"},
      Message{E_POINTER, u"Invalid pointer"},
      Message{E_ABORT, u"Operation aborted"},
      Message{E_FAIL, u"Unspecified error"},
      Message{E_UNEXPECTED, u"Unexpected failure"},
      Message{E_ACCESSDENIED, u"Access is denied"},
      Message{E_OUTOFMEMORY, u"Not enough memory to complete this operation"},
      Message{E_INVALIDARG, u"The parameter is incorrect"},
      Message{CLASS_E_NOAGGREGATION, u"The class does not support aggregation"},
      Message{CLASS_E_CLASSNOTAVAILABLE, u"The library cannot supply the requested class"},
      Message{REGDB_E_CLASSNOTREG, u"Class not registered"},
      Message{CO_E_CLASSSTRING, u"Invalid class string"},
      Message{CO_E_DLLNOTFOUND, u"The library of the class was not found"},
      Message{DISP_E_UNKNOWNINTERFACE, u"Unknown interface"},
      Message{DISP_E_MEMBERNOTFOUND, u"Member not found"},
      Message{DISP_E_PARAMNOTFOUND, u"Parameter not found"},
      Message{DISP_E_TYPEMISMATCH, u"Type mismatch"},
      Message{DISP_E_UNKNOWNNAME, u"Unknown name"},
      Message{DISP_E_NONAMEDARGS, u"No named arguments"},
      Message{DISP_E_BADVARTYPE, u"Bad variable type"},
      Message{DISP_E_EXCEPTION, u"Exception occurred"},
      Message{DISP_E_OVERFLOW, u"Out of present range"},
      Message{DISP_E_BADINDEX, u"Invalid index"},
      Message{DISP_E_UNKNOWNLCID, u"Unknown language"},
      Message{DISP_E_ARRAYISLOCKED, u"Memory is locked"},
      Message{DISP_E_BADPARAMCOUNT, u"Invalid number of parameters"},
      Message{DISP_E_PARAMNOTOPTIONAL, u"Parameter not optional"},
      Message{DISP_E_BADCALLEE, u"Invalid callee"},
      Message{DISP_E_NOTACOLLECTION, u"Does not support a collection"},
      Message{DISP_E_DIVBYZERO, u"Division by zero"},
  };
  for (const Message& message : kMessages)
    if (message.code == code)
      return CString(message.text);
  CString text;
  text.Format("Error 0x%08X", static_cast<std::uint32_t>(code));
  return text;
}

} // namespace brindle
