// The C library in the "C" locale is the reference: every digit has to agree with it.
#include "platform/number_text.h"

#include "support/numbers_to_print.h"
#include "support/text_printing.h"

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace brindle {
namespace {

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
