// The arithmetic and time functions called directly.
#include "support/script_test.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <limits>

namespace {

using ArithmeticFunctionsTest = ScriptTest;
using Values = std::vector<CBasicVariable>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

CBasicVariableArray Arguments(const Values& values) {
  CBasicVariableArray arguments;
  for (const CBasicVariable& value : values)
    arguments.Add(value);
  return arguments;
}

TEST_F(ArithmeticFunctionsTest, doubles) {
  struct Row {
    FUNCTION_TYPE type;
    double argument;
    double expected;
  };
  const Row rows[] = {
      {FUNCTION_SIN, 1, std::sin(1.0)},
      {FUNCTION_COS, 1, std::cos(1.0)},
      {FUNCTION_TAN, 1, std::tan(1.0)},
      {FUNCTION_ASIN, 0.5, std::asin(0.5)},
      {FUNCTION_ACOS, 0.5, std::acos(0.5)},
      {FUNCTION_ATAN, 1, std::atan(1.0)},
      {FUNCTION_SQR, 2, std::sqrt(2.0)},
      {FUNCTION_LOG, 2, std::log(2.0)},
      {FUNCTION_LOG10, 1000, 3},
      {FUNCTION_LOG2, 8, std::log(8.0) / std::log(2.0)},
      {FUNCTION_ABS, -2.5, 2.5},
      {FUNCTION_ABS, 0, 0},
      {FUNCTION_RAD2DMS, 0, 0},
      {FUNCTION_DMS2RAD, 0, 0},
  };
  for (const Row& row : rows) {
    CBasicVariableArray arguments = Arguments({row.argument});
    CBasicVariable result;
    EXPECT_TRUE(Access::ExecArithmetics(Interpreter(), result, arguments, row.type));
    EXPECT_DOUBLE_EQ(result.GetNumberValue(), row.expected) << row.type;
    EXPECT_NE(result.GetStringValue().Find(u'.'), -1) << "a double, not an integer: " << row.type;
  }
}

TEST_F(ArithmeticFunctionsTest, faults_of_mathematics_are_values) {
  const std::pair<FUNCTION_TYPE, double> rows[] = {{FUNCTION_SQR, -1},       {FUNCTION_LOG, -1}, {FUNCTION_LOG2, -1},
                                                   {FUNCTION_LOG10, -1},     {FUNCTION_ASIN, 2}, {FUNCTION_ACOS, 2},
                                                   {FUNCTION_SIN, kInfinity}};
  for (const auto& [type, argument] : rows) {
    CBasicVariableArray arguments = Arguments({argument});
    CBasicVariable result;
    EXPECT_TRUE(Access::ExecArithmetics(Interpreter(), result, arguments, type));
    EXPECT_TRUE(std::isnan(result.GetNumberValue())) << type;
  }
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(ArithmeticFunctionsTest, integers) {
  struct Row {
    FUNCTION_TYPE type;
    CBasicVariable argument;
    const char* expected;
  };
  const Row rows[] = {
      {FUNCTION_INT, -2.7, "-2"},
      {FUNCTION_INT, 2.7, "2"},
      {FUNCTION_INT, u"12.9x", "12"},
      {FUNCTION_INT, 1e300, "2147483647"},
      {FUNCTION_INT, -1e300, "-2147483648"},
      {FUNCTION_INT, kNan, "0"},
      {FUNCTION_ISNAN, kNan, "1"},
      {FUNCTION_ISNAN, 1.0, "0"},
      {FUNCTION_ISNAN, kInfinity, "0"},
      {FUNCTION_LOWORD, 0x12345678, "22136"},
      {FUNCTION_HIWORD, 0x12345678, "4660"},
      {FUNCTION_LOWORD, -1, "65535"},
      {FUNCTION_HIWORD, -1, "65535"},
      {FUNCTION_HIWORD, 4294901760.0, "65535"},
      {FUNCTION_SWAP, 0x11223344, "1144201745"},
      {FUNCTION_SWAP, 1, "16777216"},
      {FUNCTION_SWAP, 128, "-2147483648"},
  };
  for (const Row& row : rows) {
    CBasicVariableArray arguments = Arguments({row.argument});
    CBasicVariable result;
    EXPECT_TRUE(Access::ExecArithmetics(Interpreter(), result, arguments, row.type));
    EXPECT_EQ(result.GetStringValue().ToUtf8(), row.expected)
        << row.type << " of " << row.argument.GetStringValue().ToUtf8();
  }
}

TEST_F(ArithmeticFunctionsTest, max_and_min_give_doubles) {
  struct Row {
    FUNCTION_TYPE type;
    Values arguments;
    const char* expected;
  };
  const Row rows[] = {
      {FUNCTION_MAX, {3, 7, 5}, "7.000000"},      {FUNCTION_MIN, {3, 7, 5}, "3.000000"},
      {FUNCTION_MAX, {-1, -2}, "-1.000000"},      {FUNCTION_MIN, {u"4", u"3x"}, "3.000000"},
      {FUNCTION_MAX, {kNan, 1}, "nan"},           {FUNCTION_MAX, {1, kNan}, "1.000000"},
      {FUNCTION_MIN, {1, kInfinity}, "1.000000"},
  };
  for (const Row& row : rows) {
    CBasicVariableArray arguments = Arguments(row.arguments);
    CBasicVariable result;
    EXPECT_TRUE(Access::ExecArithmetics(Interpreter(), result, arguments, row.type));
    EXPECT_EQ(result.GetStringValue().ToUtf8(), row.expected);
  }
  for (const FUNCTION_TYPE type : {FUNCTION_MAX, FUNCTION_MIN}) {
    m_ui.Forget();
    CBasicVariableArray arguments = Arguments({1});
    CBasicVariable result;
    EXPECT_FALSE(Access::ExecArithmetics(Interpreter(), result, arguments, type));
    EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{24});
  }
}

TEST_F(ArithmeticFunctionsTest, without_an_argument_the_result_is_0_without_a_message) {
  for (const FUNCTION_TYPE type : {FUNCTION_SIN, FUNCTION_INT, FUNCTION_MAX, FUNCTION_UBOUND, FUNCTION_RAND}) {
    CBasicVariableArray none;
    CBasicVariable result(u"as before");
    EXPECT_FALSE(Access::ExecArithmetics(Interpreter(), result, none, type));
    EXPECT_EQ(result.GetStringValue().ToUtf8(), "0") << type;
  }
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(ArithmeticFunctionsTest, ubound_counts_items_of_a_named_variable) {
  Run("dim a[5]\ndim unset\nscalar = 1\nletters = \"a\"\n");
  const std::pair<const char16_t*, int> rows[] = {{u"a", 5},       {u"A", 5},      {u"unset", 0}, {u"scalar", 1},
                                                  {u"letters", 1}, {u"nobody", 0}, {u"", 0},      {u"True", 1}};
  for (const auto& [name, expected] : rows) {
    CBasicVariableArray arguments = Arguments({name});
    CBasicVariable result;
    EXPECT_TRUE(Access::ExecArithmetics(Interpreter(), result, arguments, FUNCTION_UBOUND));
    EXPECT_EQ(result.GetNumberValue(), expected) << CString(name).ToUtf8();
  }
}

TEST_F(ArithmeticFunctionsTest, rand_stays_between_0_and_its_argument) {
  for (const double limit : {0.0, 1.0, 6.0, 100.0, -10.0, 2147483647.0}) {
    for (int i = 0; i < 2000; ++i) {
      CBasicVariableArray arguments = Arguments({limit});
      CBasicVariable result;
      EXPECT_TRUE(Access::ExecArithmetics(Interpreter(), result, arguments, FUNCTION_RAND));
      const double value = result.GetNumberValue();
      ASSERT_GE(value, std::min(0.0, limit));
      ASSERT_LE(value, std::max(0.0, limit));
    }
  }
}

TEST_F(ArithmeticFunctionsTest, a_function_of_another_family_is_refused_without_a_message) {
  CBasicVariableArray arguments = Arguments({1});
  CBasicVariable result(u"as before");
  EXPECT_FALSE(Access::ExecArithmetics(Interpreter(), result, arguments, FUNCTION_LEN));
  EXPECT_FALSE(Access::ExecTimeFunc(Interpreter(), result, arguments, FUNCTION_LEN));
  EXPECT_EQ(result.GetStringValue().ToUtf8(), "as before");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(ArithmeticFunctionsTest, a_point_is_moved_to_the_left_of_its_line) {
  CBasicVariableArray arguments = Arguments({0, 0, 10, 0, 5, 5, 2});
  CBasicVariable result;
  EXPECT_TRUE(Access::ExecPointOffset(Interpreter(), result, arguments, FUNCTION_POINTOFFSET));
  ASSERT_EQ(result.GetNumItems(), 2);
  EXPECT_DOUBLE_EQ(result.GetNumberValue(), 5);
  result.SetCurIndex(1);
  EXPECT_DOUBLE_EQ(result.GetNumberValue(), 7);
  EXPECT_TRUE(Access::ExecPointOffset(Interpreter(), result, arguments, FUNCTION_POINTOFFSET));
  EXPECT_EQ(result.GetNumItems(), 4) << "values are appended";
}

TEST_F(ArithmeticFunctionsTest, a_line_without_length_gives_its_point) {
  CBasicVariableArray arguments = Arguments({3, 4, 3, 4, 5, 5, 2});
  CBasicVariable result;
  EXPECT_FALSE(Access::ExecPointOffset(Interpreter(), result, arguments, FUNCTION_POINTOFFSET));
  ASSERT_EQ(result.GetNumItems(), 2);
  EXPECT_EQ(result.GetNumberValue(), 3);
  CBasicVariableArray few = Arguments({1, 2, 3, 4, 5, 6});
  CBasicVariable untouched(u"as before");
  EXPECT_FALSE(Access::ExecPointOffset(Interpreter(), untouched, few, FUNCTION_POINTOFFSET));
  EXPECT_EQ(untouched.GetStringValue().ToUtf8(), "as before");
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(ArithmeticFunctionsTest, the_time_is_the_local_time_as_integers) {
  constexpr FUNCTION_TYPE kParts[] = {FUNCTION_YEAR,   FUNCTION_MONTH,  FUNCTION_DAY,    FUNCTION_HOUR,
                                      FUNCTION_MINUTE, FUNCTION_SECOND, FUNCTION_WEEKDAY};
  // The clock may step on between two readings: one of several attempts falls between the steps.
  for (int attempt = 0;; ++attempt) {
    const std::time_t before = std::time(nullptr);
    std::vector<std::string> read;
    for (const FUNCTION_TYPE part : kParts) {
      CBasicVariableArray none;
      CBasicVariable result;
      EXPECT_TRUE(Access::ExecTimeFunc(Interpreter(), result, none, part));
      read.push_back(result.GetStringValue().ToUtf8());
    }
    if (std::time(nullptr) != before && attempt < 10)
      continue;
    std::tm local{};
    localtime_r(&before, &local);
    std::vector<std::string> expected;
    for (const int part : {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                           local.tm_sec, local.tm_wday + 1})
      expected.push_back(std::to_string(part));
    EXPECT_EQ(read, expected);
    break;
  }
}

} // namespace
