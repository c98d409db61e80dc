#include "values/value_format.h"

#include "support/text_printing.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <limits>
#include <string>

namespace brindle {
namespace {

TEST(ValueFormat, has_one_place_for_the_value) {
  struct Row {
    std::u16string_view text;
    std::u16string_view before;
    char16_t conversion; // 0: no place
    std::u16string_view behind;
    bool isPlain;
  };
  const Row rows[] = {
      {u"", u"", 0, u"", false},
      {u"nothing", u"nothing", 0, u"", false},
      {u"%d", u"", u'd', u"", true},
      {u"%.2f", u"", u'f', u"", true},
      {u"%f", u"", u'f', u"", true},
      {u"%.10f", u"", u'f', u"", false},
      {u"%i", u"", u'i', u"", false},
      {u"%5d", u"", u'd', u"", false},
      {u"%.3d", u"", u'd', u"", false},
      {u"%+d", u"", u'd', u"", false},
      {u"% d", u"", u'd', u"", false},
      {u"%#.0f", u"", u'f', u"", false},
      {u"%-d", u"", u'd', u"", false},
      {u"n=%d", u"n=", u'd', u"", false},
      {u"%d m", u"", u'd', u" m", false},
      {u"%d%%", u"", u'd', u"%", false},
      {u"100%% of %s!", u"100% of ", u's', u"!", false},
      {u"%d %d", u"", u'd', u" ", false},
      {u"%*d%x", u"", u'x', u"", false},
      {u"%.*f", u"", 0, u"", false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(CString(row.text).ToUtf8());
    const ValueFormat format = ReadFormat(row.text);
    EXPECT_EQ(format.before.View(), row.before);
    EXPECT_EQ(format.behind.View(), row.behind);
    EXPECT_EQ(format.isPlain, row.isPlain);
    EXPECT_EQ(format.hasValue, row.conversion != 0);
    EXPECT_EQ(format.directive.conversion, row.conversion);
  }
}

TEST(ValueFormat, a_directive_cut_off_by_the_end_is_the_place_and_prints_nothing) {
  const ValueFormat format = ReadFormat(u"a%5");
  EXPECT_EQ(format.before, u"a");
  EXPECT_TRUE(format.hasValue);
  EXPECT_EQ(format.directive.conversion, 0);
  EXPECT_FALSE(PrintsNumber(format.directive));
}

TEST(ValueFormat, numbers_print_as_the_c_library_prints_them) {
  const double values[] = {0.0,  -0.0,   1.0,      -1.0,       2.5,  -2.5,       0.125,   1e9,
                           -1e9, 4096.5, 1e15 / 3, 123456.789, 1e-7, -99999.995, 999.995, 2147483647.0};
  for (const char* text : {"%f", "%.0f", "%.2f", "%.9f", "%8.3f|", "<%-9.1f>", "%+.1f", "% f", "%010.2f", "%e", "%g"}) {
    const ValueFormat format = ReadFormat(CString(text).View());
    ASSERT_TRUE(PrintsNumber(format.directive));
    for (const double value : values) {
      char expected[100];
      std::snprintf(expected, sizeof expected, text, value);
      EXPECT_EQ(FormatNumber(format, value).ToUtf8(), expected) << text;
    }
  }
  for (const char* text :
       {"%lld", "%+lld", "%8lld|", "<%-8lld>", "%08lld", "%.4lld", "a%lldb", "%llu", "%#llx", "%llX", "%#llo"}) {
    const ValueFormat format = ReadFormat(CString(text).View());
    ASSERT_TRUE(PrintsNumber(format.directive));
    for (const double value : values) {
      char expected[100];
      std::snprintf(expected, sizeof expected, text, static_cast<long long>(value));
      EXPECT_EQ(FormatNumber(format, value).ToUtf8(), expected) << text;
    }
  }
}

TEST(ValueFormat, integers_beyond_64_bits_saturate) {
  const ValueFormat format = ReadFormat(u"%d");
  EXPECT_EQ(FormatNumber(format, 1e300), u"9223372036854775807");
  EXPECT_EQ(FormatNumber(format, -1e300), u"-9223372036854775808");
  EXPECT_EQ(FormatNumber(format, std::numeric_limits<double>::quiet_NaN()), u"0");
}

TEST(ValueFormat, texts_and_characters_are_no_numbers) {
  for (const std::u16string_view text : {u"%s", u"%S", u"%c", u"%C", u"%q"})
    EXPECT_FALSE(PrintsNumber(ReadFormat(text).directive));
}

} // namespace
} // namespace brindle
