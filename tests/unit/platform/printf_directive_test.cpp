// Directives of printf as "format" and CString::Format read and follow them; the C library is the reference.
#include "platform/number_text.h"

#include "support/numbers_to_print.h"
#include "support/text_printing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {
namespace {

std::string Integer(const std::string& format, std::int64_t value) {
  CString out;
  AppendInteger(out, Directive(format), value);
  return out.ToUtf8();
}

TEST(PrintfDirective, parts_are_read_in_order) {
  const FormatDirective plain = Directive("%d");
  EXPECT_EQ(plain.conversion, u'd');
  EXPECT_EQ(plain.width, 0);
  EXPECT_FALSE(plain.precision.has_value());
  EXPECT_FALSE(plain.leftAligned || plain.plusSign || plain.blankSign || plain.alternate || plain.zeroFilled);

  const FormatDirective full = Directive("%-+ #012.34lld");
  EXPECT_TRUE(full.leftAligned && full.plusSign && full.blankSign && full.alternate && full.zeroFilled);
  EXPECT_EQ(full.width, 12);
  EXPECT_EQ(full.precision, 34);
  EXPECT_EQ(full.longs, 2);
  EXPECT_EQ(full.conversion, u'd');

  EXPECT_EQ(Directive("%00--5d").width, 5);
  EXPECT_EQ(Directive("%.f").precision, 0);
  EXPECT_EQ(Directive("%5.f").width, 5);
  EXPECT_EQ(Directive("%hd").shorts, 1);
  EXPECT_EQ(Directive("%hhd").shorts, 2);
  EXPECT_EQ(Directive("%ld").longs, 1);
  for (const char* format : {"%jd", "%zd", "%td", "%Lf", "%I64d", "%lld"})
    EXPECT_EQ(Directive(format).longs, 2) << format;
  EXPECT_EQ(Directive("%%").conversion, u'%');
}

TEST(PrintfDirective, stars_ask_for_arguments) {
  const FormatDirective both = Directive("%*.*f");
  EXPECT_TRUE(both.widthFromArgument);
  EXPECT_TRUE(both.precisionFromArgument);
  EXPECT_EQ(both.conversion, u'f');
  EXPECT_FALSE(Directive("%5f").widthFromArgument);
}

TEST(PrintfDirective, text_may_end_anywhere) {
  for (const std::u16string_view format :
       {u"%", u"%-", u"%-5", u"%5.", u"%5.3", u"%5.3l", u"%*", u"%.*", u"%I", u"%I6"}) {
    std::size_t position = 1;
    const FormatDirective directive = ReadDirective(format, position);
    EXPECT_LE(position, format.size());
    EXPECT_TRUE(directive.conversion == 0 || directive.conversion == u'I') << CString(format).ToUtf8();
  }
  std::size_t position = 1;
  EXPECT_EQ(ReadDirective(u"%\u0436x", position).conversion, u'\u0436');
  EXPECT_EQ(position, 2U);
}

TEST(PrintfDirective, huge_numbers_saturate) {
  EXPECT_EQ(Directive("%99999999999999999999d").width, 1 << 30);
  EXPECT_EQ(Directive("%.99999999999999999999f").precision, 1 << 30);
  EXPECT_EQ(Directive("%1000000d").width, 1000000);
  EXPECT_EQ(MinimumOutput(Directive("%5.9d")), 9);
  EXPECT_EQ(MinimumOutput(Directive("%9.5d")), 9);
  EXPECT_EQ(MinimumOutput(Directive("%d")), 0);
}

// Every combination of flags with a choice of widths and precisions.
std::vector<std::string> Prefixes() {
  std::vector<std::string> prefixes;
  const char flags[] = {'-', '+', ' ', '#', '0'};
  for (unsigned set = 0; set < 32; ++set) {
    std::string flagged = "%";
    for (unsigned flag = 0; flag < 5; ++flag)
      if ((set >> flag & 1U) != 0)
        flagged += flags[flag];
    for (const char* width : {"", "1", "5", "12", "40"})
      for (const char* precision : {"", ".", ".0", ".1", ".3", ".6", ".17", ".30"})
        prefixes.push_back(flagged + width + precision);
  }
  return prefixes;
}

TEST(PrintfDirective, integer_conversions_agree_with_printf) {
  const std::int64_t values[] = {0,
                                 1,
                                 -1,
                                 7,
                                 8,
                                 255,
                                 -255,
                                 123456,
                                 2147483647,
                                 -2147483648LL,
                                 4294967295LL,
                                 std::numeric_limits<std::int64_t>::max(),
                                 std::numeric_limits<std::int64_t>::min()};
  for (const std::string& prefix : Prefixes()) {
    for (const char letter : {'d', 'i', 'u', 'o', 'x', 'X'}) {
      const std::string format = prefix + "ll" + letter;
      for (const std::int64_t value : values)
        ASSERT_EQ(Integer(format, value), Printed(format, static_cast<long long>(value))) << format << " of " << value;
    }
  }
}

// "%#g" put together from "%#e" and "%#f" as the standard defines it: some C libraries drop its zeros when
// rounding reaches the next power of ten.
std::string PrintedAlternateGeneral(const std::string& format, double value) {
  const FormatDirective directive = Directive(format);
  const int asked = directive.precision.value_or(6);
  const int digits = asked == 0 ? 1 : asked;
  const std::string scientific = Printed("%.*e", digits - 1, value);
  const int exponent = std::stoi(scientific.substr(scientific.find('e') + 1));
  const bool fixed = exponent >= -4 && exponent < digits;
  const char letter = static_cast<char>(format.back() == 'G' ? (fixed ? 'F' : 'E') : (fixed ? 'f' : 'e'));
  const std::string flagsAndWidth = format.substr(0, format.find_first_of(".gG"));
  return Printed(flagsAndWidth + ".*" + letter, fixed ? digits - 1 - exponent : digits - 1, value);
}

std::string PrintedFloating(const std::string& format, double value) {
  const bool alternateGeneral = (format.back() == 'g' || format.back() == 'G') && format.find('#') != std::string::npos;
  return alternateGeneral ? PrintedAlternateGeneral(format, value) : Printed(format, value);
}

TEST(PrintfDirective, floating_conversions_agree_with_printf) {
  const std::vector<std::string> prefixes = Prefixes();
  const std::vector<double>& numbers = HandpickedNumbers();
  for (const std::string& prefix : prefixes) {
    for (const char letter : {'e', 'E', 'f', 'F', 'g', 'G'}) {
      const std::string format = prefix + letter;
      for (const double value : numbers)
        for (const double signedValue : {value, -value})
          ASSERT_EQ(Floating(format, signedValue), PrintedFloating(format, signedValue))
              << format << " of " << signedValue;
    }
  }
  RandomNumbers random;
  for (int i = 0; i < kRandomNumbers; ++i) {
    const double value = random.Next();
    const std::string format = prefixes[static_cast<std::size_t>(i) % prefixes.size()] + "eEfFgG"[i % 6];
    ASSERT_EQ(Floating(format, value), PrintedFloating(format, value)) << format << " of " << Printed("%.17g", value);
  }
}

// Values halfway between two that can be printed, and their neighbours, are where a quick way could go wrong.
TEST(PrintfDirective, decimals_close_to_a_tie_agree_with_printf) {
  std::mt19937_64 source(20);
  std::uniform_int_distribution<std::int64_t> whole(0, 1 << 20);
  std::uniform_int_distribution<int> shift(0, 30);
  std::uniform_int_distribution<int> precision(0, 11);
  std::uniform_int_distribution<int> power(0, 11);
  for (int i = 0; i < kRandomNumbers / 5; ++i) {
    // Ties in binary, such as 0.125, and decimal ones, such as 1.005, which no double meets.
    const double tie = i % 2 == 0 ? std::ldexp(static_cast<double>(whole(source)), -shift(source))
                                  : (static_cast<double>(whole(source)) + 0.5) / std::pow(10.0, power(source));
    const std::string format = "%." + std::to_string(precision(source)) + "f";
    for (const double value : {tie, std::nextafter(tie, kInfinity), std::nextafter(tie, -kInfinity), -tie,
                               tie * 1073741824.0, tie * 4503599627370496.0}) {
      CString text;
      AppendFloating(text, Directive(format), value);
      ASSERT_EQ(text.ToUtf8(), Printed(format, value)) << format << " of " << Printed("%a", value);
      ASSERT_EQ(FormatFixed(value).ToUtf8(), Printed("%f", value)) << Printed("%a", value);
    }
  }
}

TEST(PrintfDirective, hexadecimal_floating_conversions_agree_with_printf) {
  RandomNumbers random;
  for (const char* format : {"%a", "%A", "%+a", "%24a", "%024a", "%-24a", "%#a", "%.13a"}) {
    for (int i = 0; i < 1000; ++i) {
      const double value = random.Next();
      if (std::fpclassify(value) == FP_NORMAL) {
        ASSERT_EQ(Floating(format, value), Printed(format, value)) << format;
      }
    }
    EXPECT_EQ(Floating(format, 0.0), Printed(format, 0.0)) << format;
  }
}

TEST(PrintfDirective, very_long_precisions_print_every_digit) {
  for (const double value : {0.1, 1e300, 5e-324, -1.0 / 3})
    for (const char* format : {"%.400f", "%.1100f", "%.800e", "%.900g", "%1500.1100f"})
      EXPECT_EQ(Floating(format, value), Printed(format, value)) << format << " of " << value;
}

TEST(PrintfDirective, texts_are_cut_and_padded) {
  const auto text = [](const std::string& format, std::u16string_view value) {
    CString out(u"<");
    AppendText(out, Directive(format), value);
    return (out += u'>').ToUtf8();
  };
  EXPECT_EQ(text("%s", u"abc"), "<abc>");
  EXPECT_EQ(text("%5s", u"abc"), "<  abc>");
  EXPECT_EQ(text("%-5s", u"abc"), "<abc  >");
  EXPECT_EQ(text("%2s", u"abc"), "<abc>");
  EXPECT_EQ(text("%.2s", u"abc"), "<ab>");
  EXPECT_EQ(text("%.0s", u"abc"), "<>");
  EXPECT_EQ(text("%5.2s", u"abc"), "<   ab>");
  EXPECT_EQ(text("%-5.2s", u"abc"), "<ab   >");
  EXPECT_EQ(text("%.9s", u"abc"), "<abc>");
  EXPECT_EQ(text("%3s", u""), "<   >");
  EXPECT_EQ(text("%3c", u"x"), "<  x>");
  EXPECT_EQ(text("%-3c", u"x"), "<x  >");
  EXPECT_EQ(text("%.0c", u"x"), "<x>");
}

} // namespace
} // namespace brindle
