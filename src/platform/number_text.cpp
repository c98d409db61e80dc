#include "platform/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace brindle {

namespace {

constexpr int kLongestNumber = 1 << 30;

bool IsBlank(char16_t unit) {
  return unit == u' ' || (unit >= 9 && unit <= 13);
}

bool IsDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}

// Puts sign, prefix, zeros, digits and padding together.
void AppendPadded(CString& out, const FormatDirective& directive, std::string_view sign, std::string_view digits,
                  bool zeroFill) {
  const int before = out.GetLength();
  const int length = static_cast<int>(sign.size() + digits.size());
  const int total = std::max(directive.width, length);
  const int missing = total - length;
  std::array<char, 48> ascii;
  if (before == 0 && missing == 0 && sign.size() + digits.size() <= ascii.size()) {
    char* const middle = std::copy(sign.begin(), sign.end(), ascii.data());
    out = CString::FromBytes({ascii.data(), std::copy(digits.begin(), digits.end(), middle)});
    return;
  }
  unsigned short* units = out.GetBuffer(before + total) + before;
  const auto widen = [&units](std::string_view text) {
    for (const char c : text)
      *units++ = static_cast<unsigned char>(c);
  };
  if (!directive.leftAligned && !zeroFill)
    units = std::fill_n(units, missing, u' ');
  widen(sign);
  if (!directive.leftAligned && zeroFill)
    units = std::fill_n(units, missing, u'0');
  widen(digits);
  if (directive.leftAligned)
    std::fill_n(units, missing, u' ');
  out.ReleaseBuffer(before + total);
}

std::string_view SignOf(const FormatDirective& directive, bool negative) {
  if (negative)
    return "-";
  if (directive.plusSign)
    return "+";
  return directive.blankSign ? " " : "";
}

void MakeUpperAscii(std::string& text) {
  for (char& c : text)
    if (c >= 'a' && c <= 'z')
      c = static_cast<char>(c - 'a' + 'A');
}

// Up to so many digits are an integer that a double holds exactly, and so is a power of ten up to 10^22: their
// quotient is rounded once, as it should be.
constexpr std::size_t kExactDigits = 15;
constexpr std::array<double, kExactDigits + 1> kPowersOfTen = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                               1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// The digits of a finite, non-negative value with so many decimals; null when it takes the general conversion to find
// them. The value times a power of ten is the nearest double and a rest, which is exact and less than half of that
// double's last place: it says nothing unless the double lies halfway between two integers.
char* QuickFixed(double value, int precision, char* out) {
  constexpr double kHalvesAreExact = 2251799813685248.0; // 2^51
  if (precision > kMostQuickDecimals)
    return nullptr;
  const double power = kPowersOfTen[static_cast<std::size_t>(precision)];
  const double scaled = value * power;
  if (!(scaled < kHalvesAreExact))
    return nullptr;
  auto whole = static_cast<std::uint64_t>(scaled);
  const double part = scaled - static_cast<double>(whole);
  if (part > 0.5) {
    ++whole;
  } else if (part == 0.5) {
    const double rest = std::fma(value, power, -scaled);
    if (rest > 0.0 || (rest == 0.0 && whole % 2 != 0))
      ++whole;
  }
  const auto unit = static_cast<std::uint64_t>(power);
  constexpr std::ptrdiff_t kMostDigits = 20;
  out = std::to_chars(out, out + kMostDigits, whole / unit).ptr;
  if (precision == 0)
    return out;
  *out = '.';
  std::uint64_t decimals = whole % unit;
  for (char* digit = out + precision; digit != out; --digit, decimals /= 10)
    *digit = static_cast<char>('0' + decimals % 10);
  return out + precision + 1;
}

// Digits of a finite, non-negative value in one of the three classic styles.
std::string FloatingDigits(double value, char style, int precision, bool alternate) {
  const std::chars_format format = style == 'f'   ? std::chars_format::fixed
                                   : style == 'e' ? std::chars_format::scientific
                                                  : std::chars_format::general;
  std::string digits(static_cast<std::size_t>(precision) + 400, '\0');
  const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value, format, precision);
  digits.resize(static_cast<std::size_t>(result.ptr - digits.data()));
  if (!alternate)
    return digits;
  // "#" keeps the point, and for the general style the trailing zeros as well.
  const std::size_t exponent = digits.find('e');
  std::string mantissa = digits.substr(0, exponent);
  const std::string tail = exponent == std::string::npos ? "" : digits.substr(exponent);
  if (mantissa.find('.') == std::string::npos)
    mantissa += '.';
  if (style == 'g') {
    int significant = 0;
    bool started = false;
    for (const char c : mantissa) {
      if (c == '.')
        continue;
      started = started || c != '0';
      significant += started ? 1 : 0;
    }
    if (!started)
      significant = 1; // the zero itself counts
    const int wanted = precision == 0 ? 1 : precision;
    if (significant < wanted)
      mantissa.append(static_cast<std::size_t>(wanted - significant), '0');
  }
  return mantissa + tail;
}

std::string HexadecimalDigits(double value, std::optional<int> precision, bool alternate) {
  std::string digits(static_cast<std::size_t>(precision.value_or(0)) + 64, '\0');
  char* const last = digits.data() + digits.size();
  const auto result = precision ? std::to_chars(digits.data(), last, value, std::chars_format::hex, *precision)
                                : std::to_chars(digits.data(), last, value, std::chars_format::hex);
  digits.resize(static_cast<std::size_t>(result.ptr - digits.data()));
  const std::size_t exponent = digits.find('p');
  if (alternate && digits.find('.') == std::string::npos)
    digits.insert(digits.begin() + static_cast<std::ptrdiff_t>(std::min(exponent, digits.size())), '.');
  return digits;
}

// Whether a number that no double can hold is too large (rather than too small).
bool IsHuge(std::string_view number) {
  const std::size_t letter = number.find_first_of("eE");
  const std::string_view mantissa = number.substr(0, letter);
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  const std::size_t first = mantissa.find_first_of("123456789");
  const auto magnitude = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
  std::int64_t exponent = 0;
  if (letter != std::string_view::npos) {
    const bool negative = number[letter + 1] == '-';
    for (const char c : number.substr(letter + 1))
      if (c >= '0' && c <= '9' && exponent < kLongestNumber)
        exponent = exponent * 10 + (c - '0');
    exponent = negative ? -exponent : exponent;
  }
  return magnitude + exponent > 0;
}

} // namespace

CString FormatInteger(std::int64_t value) {
  std::array<char, 24> buffer;
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return CString::FromBytes({buffer.data(), result.ptr});
}

CString FormatFixed(double value, int decimals) {
  if (std::isnan(value))
    return CString(u"nan");
  if (std::isinf(value))
    return CString(value < 0 ? u"-inf" : u"inf");
  std::array<char, 330> buffer; // 309 digits, a sign, a point and the decimals
  const bool negative = std::signbit(value);
  buffer[0] = '-';
  if (const char* last = QuickFixed(std::fabs(value), decimals, buffer.data() + (negative ? 1 : 0)))
    return CString::FromBytes({buffer.data(), last});
  const auto result =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimals);
  return CString::FromBytes({buffer.data(), result.ptr});
}

double ParseDouble(std::u16string_view text, std::size_t* used) {
  if (used != nullptr)
    *used = 0;
  std::size_t at = 0;
  while (at < text.size() && IsBlank(text[at]))
    ++at;
  // Find the extent of the number first, so that nothing but a plain decimal reaches the conversion.
  const bool negative = at < text.size() && text[at] == u'-';
  if (at < text.size() && (text[at] == u'-' || text[at] == u'+'))
    ++at;
  const std::size_t start = at;
  std::uint64_t units = 0; // of the digits; of use when they are few
  std::size_t digits = 0;
  std::size_t decimals = 0;
  for (; at < text.size() && IsDigit(text[at]); ++at, ++digits)
    units = units * 10 + (text[at] - u'0');
  if (at < text.size() && text[at] == u'.') {
    std::size_t fraction = at + 1;
    for (; fraction < text.size() && IsDigit(text[fraction]); ++fraction, ++decimals)
      units = units * 10 + (text[fraction] - u'0');
    digits += decimals;
    if (digits > 0)
      at = fraction;
  }
  if (digits == 0)
    return 0.0;
  bool hasExponent = false;
  if (at < text.size() && (text[at] == u'e' || text[at] == u'E')) {
    std::size_t exponent = at + 1;
    if (exponent < text.size() && (text[exponent] == u'-' || text[exponent] == u'+'))
      ++exponent;
    const std::size_t firstDigit = exponent;
    while (exponent < text.size() && IsDigit(text[exponent]))
      ++exponent;
    hasExponent = exponent > firstDigit;
    if (hasExponent)
      at = exponent;
  }
  if (used != nullptr)
    *used = at;
  if (digits <= kExactDigits && !hasExponent) {
    const double exact = static_cast<double>(units) / kPowersOfTen[decimals];
    return negative ? -exact : exact;
  }

  std::array<char, 64> small{};
  std::string large;
  const std::size_t length = at - start;
  char* buffer = small.data();
  if (length > small.size()) {
    large.resize(length);
    buffer = large.data();
  }
  for (std::size_t i = 0; i < length; ++i)
    buffer[i] = static_cast<char>(text[start + i]);
  double value = 0.0;
  const auto result = std::from_chars(buffer, buffer + length, value);
  if (result.ec == std::errc::result_out_of_range)
    value = IsHuge(std::string_view(buffer, length)) ? std::numeric_limits<double>::infinity() : 0.0;
  return negative ? -value : value;
}

std::int32_t ParseInteger(std::u16string_view text) {
  std::size_t at = 0;
  while (at < text.size() && IsBlank(text[at]))
    ++at;
  const bool negative = at < text.size() && text[at] == u'-';
  if (at < text.size() && (text[at] == u'-' || text[at] == u'+'))
    ++at;
  std::int64_t value = 0;
  for (; at < text.size() && IsDigit(text[at]); ++at) {
    value = value * 10 + (text[at] - u'0');
    if (value > std::numeric_limits<std::int32_t>::max())
      return negative ? std::numeric_limits<std::int32_t>::min() : std::numeric_limits<std::int32_t>::max();
  }
  return static_cast<std::int32_t>(negative ? -value : value);
}

std::int32_t ToInt32(double value) noexcept {
  if (std::isnan(value))
    return 0;
  if (value >= 2147483647.0)
    return std::numeric_limits<std::int32_t>::max();
  if (value <= -2147483648.0)
    return std::numeric_limits<std::int32_t>::min();
  return static_cast<std::int32_t>(value);
}

std::uint32_t ToUint32(double value) noexcept {
  if (std::isnan(value))
    return 0;
  // Beyond 64 bits there is no low word worth keeping: saturate there.
  if (value >= 9223372036854775808.0)
    return static_cast<std::uint32_t>(std::numeric_limits<std::int64_t>::max());
  if (value <= -9223372036854775808.0)
    return static_cast<std::uint32_t>(std::numeric_limits<std::int64_t>::min());
  return static_cast<std::uint32_t>(static_cast<std::int64_t>(value));
}

float ToFloat(double value) noexcept {
  constexpr double kLargest = std::numeric_limits<float>::max();
  constexpr double kInfiniteFrom = 0x1.ffffffp+127; // half a step beyond it
  if (std::fabs(value) >= kInfiniteFrom)
    return value < 0 ? -std::numeric_limits<float>::infinity() : std::numeric_limits<float>::infinity();
  return static_cast<float>(std::clamp(value, -kLargest, kLargest));
}

FormatDirective ReadDirective(std::u16string_view format, std::size_t& position) {
  FormatDirective directive;
  const auto peek = [&] { return position < format.size() ? format[position] : u'\0'; };
  const auto readNumber = [&] {
    int number = 0;
    while (IsDigit(peek())) {
      number = number > kLongestNumber / 10 - 10 ? kLongestNumber : number * 10 + (peek() - u'0');
      ++position;
    }
    return number;
  };

  for (bool reading = true; reading;) {
    switch (peek()) {
    case u'-': directive.leftAligned = true; break;
    case u'+': directive.plusSign = true; break;
    case u' ': directive.blankSign = true; break;
    case u'#': directive.alternate = true; break;
    case u'0': directive.zeroFilled = true; break;
    default: reading = false; break;
    }
    if (reading)
      ++position;
  }
  if (peek() == u'*') {
    directive.widthFromArgument = true;
    ++position;
  } else {
    directive.width = readNumber();
  }
  if (peek() == u'.') {
    ++position;
    if (peek() == u'*') {
      directive.precisionFromArgument = true;
      ++position;
    } else {
      directive.precision = readNumber();
    }
  }
  for (bool reading = true; reading;) {
    switch (peek()) {
    case u'l': ++directive.longs; break;
    case u'h': ++directive.shorts; break;
    case u'j':
    case u'z':
    case u't':
    case u'L': directive.longs = 2; break;
    case u'I':
      if (format.substr(position, 3) == u"I64") {
        directive.longs = 2;
        position += 2;
        break;
      }
      reading = false;
      break;
    default: reading = false; break;
    }
    if (reading)
      ++position;
  }
  directive.conversion = peek();
  if (position < format.size())
    ++position;
  return directive;
}

void AppendInteger(CString& out, const FormatDirective& directive, std::int64_t value) {
  const char16_t letter = directive.conversion;
  const bool isSigned = letter == u'd' || letter == u'i';
  const bool negative = isSigned && value < 0;
  const std::uint64_t magnitude = negative ? ~static_cast<std::uint64_t>(value) + 1 : static_cast<std::uint64_t>(value);
  const int base = letter == u'o' ? 8 : letter == u'x' || letter == u'X' ? 16 : 10;

  std::array<char, 32> buffer;
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude, base);
  if (!directive.precision && !directive.alternate && letter != u'X')
    return AppendPadded(out, directive, isSigned ? SignOf(directive, negative) : std::string_view(),
                        std::string_view(buffer.data(), result.ptr), directive.zeroFilled);
  std::string digits(buffer.data(), result.ptr);
  if (directive.precision == 0 && magnitude == 0)
    digits.clear();
  if (directive.precision && static_cast<int>(digits.size()) < *directive.precision)
    digits.insert(0, static_cast<std::size_t>(*directive.precision) - digits.size(), '0');

  std::string sign(isSigned ? SignOf(directive, negative) : std::string_view());
  if (directive.alternate && base == 8 && (digits.empty() || digits[0] != '0'))
    digits.insert(digits.begin(), '0');
  if (directive.alternate && base == 16 && magnitude != 0)
    sign += "0x";
  if (letter == u'X') {
    MakeUpperAscii(digits);
    MakeUpperAscii(sign);
  }
  AppendPadded(out, directive, sign, digits, directive.zeroFilled && !directive.precision);
}

void AppendFloating(CString& out, const FormatDirective& directive, double value) {
  const char16_t letter = directive.conversion;
  const bool upper = letter < u'a';
  const char style = static_cast<char>(upper ? letter - u'A' + u'a' : letter);
  const bool negative = std::signbit(value) && !std::isnan(value);
  const double magnitude = std::fabs(value);
  if (style == 'f' && !directive.alternate && std::isfinite(value)) {
    std::array<char, 40> quick;
    if (const char* last = QuickFixed(magnitude, directive.precision.value_or(6), quick.data()))
      return AppendPadded(out, directive, SignOf(directive, negative), std::string_view(quick.data(), last),
                          directive.zeroFilled);
  }
  std::string sign(SignOf(directive, negative));
  std::string digits;
  bool zeroFill = directive.zeroFilled;
  if (std::isnan(value) || std::isinf(value)) {
    digits = std::isnan(value) ? "nan" : "inf";
    zeroFill = false;
  } else if (style == 'a') {
    sign += "0x";
    digits = HexadecimalDigits(magnitude, directive.precision, directive.alternate);
  } else {
    digits = FloatingDigits(magnitude, style, directive.precision.value_or(6), directive.alternate);
  }
  if (upper) {
    MakeUpperAscii(digits);
    MakeUpperAscii(sign);
  }
  AppendPadded(out, directive, sign, digits, zeroFill);
}

void AppendText(CString& out, const FormatDirective& directive, std::u16string_view text) {
  if (directive.conversion != u'c' && directive.precision)
    text = text.substr(0, static_cast<std::size_t>(*directive.precision));
  const int length = static_cast<int>(text.size());
  const int missing = directive.width > length ? directive.width - length : 0;
  if (!directive.leftAligned && missing > 0)
    out += CString(u' ', missing);
  out.Append(text);
  if (directive.leftAligned && missing > 0)
    out += CString(u' ', missing);
}

} // namespace brindle
