// The C library in the "C" locale is the reference: every digit has to agree with it.
#include "platform/number_text.h"

#include "support/text_printing.h"

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace brindle {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr int kRandomNumbers = 100000;

template <class... Arguments> std::string Printed(const std::string& format, Arguments... arguments) {
  const int length = std::snprintf(nullptr, 0, format.c_str(), arguments...);
  std::string text(static_cast<std::size_t>(length) + 1, '\0');
  std::snprintf(text.data(), text.size(), format.c_str(), arguments...);
  text.pop_back();
  return text;
}

FormatDirective Directive(const std::string& format) {
  const CString text = CString::FromUtf8(format);
  std::size_t position = 1; // behind the "%"
  FormatDirective directive = ReadDirective(text.View(), position);
  EXPECT_EQ(position, format.size()) << format;
  return directive;
}

std::string Floating(const std::string& format, double value) {
  CString out;
  AppendFloating(out, Directive(format), value);
  return out.ToUtf8();
}

std::string Integer(const std::string& format, std::int64_t value) {
  CString out;
  AppendInteger(out, Directive(format), value);
  return out.ToUtf8();
}

const std::vector<double>& HandpickedNumbers() {
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

TEST(NumberText, integers_print_as_percent_i) {
  for (const std::int32_t value : {0, 1, -1, 9, 10, -10, 2147483647, -2147483647 - 1})
    EXPECT_EQ(FormatInteger(value).ToUtf8(), Printed("%i", value));
  std::mt19937 generator(1);
  for (int i = 0; i < kRandomNumbers; ++i) {
    const auto value = static_cast<std::int32_t>(generator());
    ASSERT_EQ(FormatInteger(value).ToUtf8(), Printed("%i", value));
  }
}

TEST(NumberText, doubles_print_as_percent_f) {
  for (const double value : HandpickedNumbers()) {
    EXPECT_EQ(FormatFixed(value).ToUtf8(), Printed("%f", value));
    EXPECT_EQ(FormatFixed(-value).ToUtf8(), Printed("%f", -value));
  }
  RandomNumbers random;
  for (int i = 0; i < kRandomNumbers; ++i) {
    const double value = random.Next();
    ASSERT_EQ(FormatFixed(value).ToUtf8(), Printed("%f", value));
  }
}

TEST(NumberText, doubles_print_with_as_many_decimals_as_are_asked_for) {
  RandomNumbers random;
  for (int decimals = 0; decimals <= kMostQuickDecimals; ++decimals) {
    const std::string format = "%." + std::to_string(decimals) + "f";
    for (const double value : HandpickedNumbers())
      EXPECT_EQ(FormatFixed(-value, decimals).ToUtf8(), Printed(format.c_str(), -value));
    for (int i = 0; i < kRandomNumbers / 10; ++i) {
      const double value = random.Next();
      ASSERT_EQ(FormatFixed(value, decimals).ToUtf8(), Printed(format.c_str(), value)) << Printed("%a", value);
    }
  }
}

TEST(NumberText, what_is_no_finite_number_prints_as_a_word) {
  EXPECT_EQ(FormatFixed(kInfinity), u"inf");
  EXPECT_EQ(FormatFixed(-kInfinity), u"-inf");
  EXPECT_EQ(FormatFixed(kNotANumber), u"nan");
  EXPECT_EQ(FormatFixed(-kNotANumber), u"nan");
  EXPECT_EQ(Floating("%F", kInfinity), "INF");
  EXPECT_EQ(Floating("%E", -kInfinity), "-INF");
  EXPECT_EQ(Floating("%G", kNotANumber), "NAN");
  EXPECT_EQ(Floating("%08f", kInfinity), "     inf");
  EXPECT_EQ(Floating("%+f", kInfinity), "+inf");
  EXPECT_EQ(Floating("%-6f", kInfinity), "inf   ");
}

TEST(NumberText, doubles_read_as_strtod_reads_them) {
  RandomNumbers random;
  for (int i = 0; i < kRandomNumbers; ++i) {
    const double value = random.Next();
    const std::string texts[] = {Printed("%.17g", value), Printed("%.6g", value), Printed("%f", value),
                                 Printed("%.20e", value)};
    for (const std::string& text : texts) {
      std::size_t used = 0;
      const double read = ParseDouble(CString::FromUtf8(text).View(), &used);
      ASSERT_EQ(std::bit_cast<std::uint64_t>(read), std::bit_cast<std::uint64_t>(std::strtod(text.c_str(), nullptr)))
          << text;
      ASSERT_EQ(used, text.size()) << text;
    }
  }
}

TEST(NumberText, odd_but_valid_numbers_read_as_strtod_reads_them) {
  const std::string zeros(400, '0');
  const std::string texts[] = {"0",
                               "-0",
                               "+0",
                               "00012",
                               ".5",
                               "5.",
                               "-.5",
                               "+5.",
                               "1e5",
                               "1E5",
                               "1e+5",
                               "1e-5",
                               "1.e2",
                               ".5e1",
                               " 3.5e2",
                               "\t\n\v\f\r 7",
                               "1e",
                               "1e+",
                               "1e-",
                               "1ex",
                               "1.5.5",
                               "12abc",
                               "1-2",
                               "1e5.5",
                               "5e-324",
                               "2.5e-324",
                               "2.4703282292062327e-324",
                               "2.4703282292062328e-324",
                               "1e-400",
                               "-1e-400",
                               "1e400",
                               "-1e400",
                               "1e308",
                               "1.7976931348623157e308",
                               "1.7976931348623158e308",
                               "1.7976931348623159e308",
                               "4.9e-324",
                               "2.2250738585072011e-308",
                               "2.2250738585072014e-308",
                               "1e99999999999999999999",
                               "1e-99999999999999999999",
                               "0e99999999999999999999",
                               "0e400",
                               "0.0e400",
                               "-0e999",
                               "0." + zeros + "1e401",
                               "0." + zeros + "1",
                               "1" + zeros,
                               "1" + zeros + "e-400",
                               "0." + zeros + "5e78",
                               zeros + "12.5",
                               "123456789012345678901234567890",
                               "0.1000000000000000055511151231257827021181583404541015625",
                               "9007199254740993",
                               "9007199254740992.9999999",
                               "0." + zeros + zeros + "e900",
                               "100" + zeros + "e-700"};
  for (const std::string& text : texts) {
    char* end = nullptr;
    const double expected = std::strtod(text.c_str(), &end);
    std::size_t used = 0;
    const double read = ParseDouble(CString::FromUtf8(text).View(), &used);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(read), std::bit_cast<std::uint64_t>(expected)) << text;
    EXPECT_EQ(used, static_cast<std::size_t>(end - text.c_str())) << text;
  }
}

TEST(NumberText, words_and_other_bases_are_no_numbers) {
  struct Row {
    const char16_t* text;
    double value;
    std::size_t used;
  };
  const Row rows[] = {{u"", 0, 0},      {u" ", 0, 0},     {u"abc", 0, 0}, {u"-", 0, 0},         {u"+", 0, 0},
                      {u".", 0, 0},     {u"-.", 0, 0},    {u".e5", 0, 0}, {u"e5", 0, 0},        {u"--5", 0, 0},
                      {u"- 5", 0, 0},   {u"inf", 0, 0},   {u"nan", 0, 0}, {u"-infinity", 0, 0}, {u"INF", 0, 0},
                      {u"0x1F", 0, 1},  {u"-0x10", 0, 2}, {u"0b1", 0, 1}, {u"1,5", 1, 1},       {u"1p5", 1, 1},
                      {u"1_000", 1, 1}, {u"١٢", 0, 0},    {u"½", 0, 0},   {u"１２", 0, 0},      {u"1\0002", 1, 1}};
  for (const Row& row : rows) {
    std::size_t used = 99;
    EXPECT_EQ(ParseDouble(row.text, &used), row.value) << CString(row.text).ToUtf8();
    EXPECT_EQ(used, row.used) << CString(row.text).ToUtf8();
  }
  EXPECT_EQ(ParseDouble(u"7"), 7.0);
}

TEST(NumberText, number_ends_with_the_view_not_with_the_text) {
  const std::u16string_view text = u"123456.75e2";
  EXPECT_EQ(ParseDouble(text.substr(0, 3)), 123.0);
  EXPECT_EQ(ParseDouble(text.substr(0, 8)), 123456.7);
  EXPECT_EQ(ParseDouble(text.substr(0, 10)), 123456.75);
  EXPECT_EQ(ParseInteger(text.substr(1, 2)), 23);
}

TEST(NumberText, leading_integers_saturate_at_32_bits) {
  struct Row {
    const char16_t* text;
    std::int32_t value;
  };
  const Row rows[] = {{u"", 0},
                      {u"abc", 0},
                      {u"-", 0},
                      {u"+-5", 0},
                      {u"12abc", 12},
                      {u" \t\n-7.9", -7},
                      {u"+5", 5},
                      {u"0x10", 0},
                      {u"3.5e2", 3},
                      {u"007", 7},
                      {u"2147483646", 2147483646},
                      {u"2147483647", 2147483647},
                      {u"2147483648", 2147483647},
                      {u"-2147483647", -2147483647},
                      {u"-2147483648", -2147483647 - 1},
                      {u"-2147483649", -2147483647 - 1},
                      {u"99999999999999999999999999", 2147483647},
                      {u"-99999999999999999999999999", -2147483647 - 1},
                      {u"00000000000000000000000000012", 12}};
  for (const Row& row : rows)
    EXPECT_EQ(ParseInteger(row.text), row.value) << CString(row.text).ToUtf8();
}

TEST(NumberText, doubles_to_32_bit_integers_truncate_and_saturate) {
  struct Row {
    double value;
    std::int32_t expected;
  };
  const std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
  const std::int32_t highest = std::numeric_limits<std::int32_t>::max();
  const Row rows[] = {{0.0, 0},
                      {-0.0, 0},
                      {0.9999, 0},
                      {-0.9999, 0},
                      {2.9, 2},
                      {-2.9, -2},
                      {2147483646.9, 2147483646},
                      {2147483647.0, highest},
                      {2147483647.5, highest},
                      {2147483648.0, highest},
                      {4294967296.0, highest},
                      {-2147483647.9, -2147483647},
                      {-2147483648.0, lowest},
                      {-2147483648.9, lowest},
                      {-2147483649.0, lowest},
                      {1e300, highest},
                      {-1e300, lowest},
                      {kInfinity, highest},
                      {-kInfinity, lowest},
                      {kNotANumber, 0},
                      {5e-324, 0}};
  for (const Row& row : rows)
    EXPECT_EQ(ToInt32(row.value), row.expected) << row.value;
}

TEST(NumberText, doubles_to_unsigned_wrap_modulo_32_bits) {
  struct Row {
    double value;
    std::uint32_t expected;
  };
  const Row rows[] = {{0.0, 0},
                      {0.9, 0},
                      {-0.9, 0},
                      {2.9, 2},
                      {-1.0, 0xFFFFFFFFU},
                      {-2.9, 0xFFFFFFFEU},
                      {2147483648.0, 0x80000000U},
                      {-2147483648.0, 0x80000000U},
                      {4294967295.0, 0xFFFFFFFFU},
                      {4294967296.0, 0},
                      {4294967297.5, 1},
                      {-4294967297.0, 0xFFFFFFFFU},
                      {287454020.0, 0x11223344U},
                      {9223372036854774784.0, 0xFFFFFC00U}, // the largest below 2^63
                      {-9223372036854775808.0, 0},
                      {kNotANumber, 0}};
  for (const Row& row : rows)
    EXPECT_EQ(ToUint32(row.value), row.expected) << row.value;
}

TEST(NumberText, doubles_beyond_64_bits_give_the_low_word_of_the_64_bit_limit) {
  for (const double value : {9223372036854775808.0, 1e300, kInfinity}) {
    EXPECT_EQ(ToUint32(value), 0xFFFFFFFFU);
    EXPECT_EQ(ToUint32(-value), 0U);
  }
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

// Sets a locale whose decimal point is a comma, when the system has one, until it ends.
class CommaLocale {
public:
  CommaLocale() : m_before(std::setlocale(LC_ALL, nullptr)) {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8", "nl_NL.UTF-8", "da_DK.UTF-8"})
      if (!m_set && std::setlocale(LC_ALL, name) != nullptr)
        m_set = Printed("%.1f", 0.5) == "0,5";
  }
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;
  ~CommaLocale() { std::setlocale(LC_ALL, m_before.c_str()); }
  [[nodiscard]] bool IsSet() const { return m_set; }

private:
  std::string m_before;
  bool m_set = false;
};

TEST(NumberText, locale_of_the_process_changes_nothing) {
  const CommaLocale locale;
  if (!locale.IsSet())
    GTEST_SKIP() << "this system has no locale with a decimal comma";
  EXPECT_EQ(FormatFixed(1234.5), u"1234.500000");
  EXPECT_EQ(ParseDouble(u"1.5"), 1.5);
  EXPECT_EQ(ParseDouble(u"1,5"), 1.0);
  EXPECT_EQ(Floating("%.2f", 1234.5), "1234.50");
  EXPECT_EQ(Floating("%#.0e", 1.0), "1.e+00");
  EXPECT_EQ(Floating("%g", 0.5), "0.5");
  EXPECT_EQ(Floating("%a", 1.5), "0x1.8p+0");
  CString text;
  text.Format(u"%f %g %e", 0.5, 0.5, 0.5);
  EXPECT_EQ(text, u"0.500000 0.5 5.000000e-01");
}

} // namespace
} // namespace brindle
