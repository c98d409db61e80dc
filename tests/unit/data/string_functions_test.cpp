// The string functions called directly: argument counts, kinds of results, and results left alone.
#include "support/script_test.h"

#include <limits>

namespace {

using StringFunctionsTest = ScriptTest;
using Values = std::vector<CBasicVariable>;

CBasicVariableArray Arguments(const Values& values) {
  CBasicVariableArray arguments;
  for (const CBasicVariable& value : values)
    arguments.Add(value);
  return arguments;
}

struct Row {
  const char* name;
  FUNCTION_TYPE type;
  Values arguments;
  std::string expected;
  BASICVARTYPE kind;
};

TEST_F(StringFunctionsTest, results) {
  const Row rows[] = {
      {"len of a text", FUNCTION_LEN, {u"12345"}, "5", BVT_NUMBER},
      {"len of a number is a double", FUNCTION_LEN, {12345}, "0.000000", BVT_NUMBER},
      {"len of nothing", FUNCTION_LEN, {CBasicVariable()}, "0.000000", BVT_NUMBER},
      {"len counts units", FUNCTION_LEN, {u"𝄞"}, "2", BVT_NUMBER},
      {"left", FUNCTION_LEFT, {u"abc", 2}, "ab", BVT_STRING},
      {"left of a fraction", FUNCTION_LEFT, {u"abc", 2.9}, "ab", BVT_STRING},
      {"left of too many", FUNCTION_LEFT, {u"abc", 9}, "abc", BVT_STRING},
      {"left of less than nothing", FUNCTION_LEFT, {u"abc", -1}, "", BVT_STRING},
      {"left of a number's text", FUNCTION_LEFT, {123, 2}, "12", BVT_STRING},
      {"left of not-a-number", FUNCTION_LEFT, {u"abc", std::numeric_limits<double>::quiet_NaN()}, "", BVT_STRING},
      {"left of infinity", FUNCTION_LEFT, {u"abc", std::numeric_limits<double>::infinity()}, "abc", BVT_STRING},
      {"right", FUNCTION_RIGHT, {u"abc", 2}, "bc", BVT_STRING},
      {"right of too many", FUNCTION_RIGHT, {u"abc", 9}, "abc", BVT_STRING},
      {"right of less than nothing", FUNCTION_RIGHT, {u"abc", -1}, "", BVT_STRING},
      {"mid", FUNCTION_MID, {u"abcdef", 1, 3}, "bcd", BVT_STRING},
      {"mid from a negative start", FUNCTION_MID, {u"abcdef", -2, 3}, "abc", BVT_STRING},
      {"mid from the end", FUNCTION_MID, {u"abc", 3, 1}, "", BVT_STRING},
      {"mid beyond the end", FUNCTION_MID, {u"abc", 9, 1}, "", BVT_STRING},
      {"mid of less than nothing", FUNCTION_MID, {u"abc", 1, -1}, "", BVT_STRING},
      {"mid of the largest numbers", FUNCTION_MID, {u"abc", 2147483647, 2147483647}, "", BVT_STRING},
      {"instr", FUNCTION_INSTR, {u"abcabc", u"c"}, "2", BVT_NUMBER},
      {"instr of what is absent", FUNCTION_INSTR, {u"abc", u"z"}, "-1", BVT_NUMBER},
      {"instr of an empty text", FUNCTION_INSTR, {u"abc", u""}, "0", BVT_NUMBER},
      {"instr goes by letter case", FUNCTION_INSTR, {u"abc", u"B"}, "-1", BVT_NUMBER},
      {"lcase", FUNCTION_LCASE, {u"ÄbC"}, "äbc", BVT_STRING},
      {"ucase", FUNCTION_UCASE, {u"äbC"}, "ÄBC", BVT_STRING},
      {"replace", FUNCTION_REPLACE, {u"aaa", u"aa", u"b"}, "ba", BVT_STRING},
      {"replace by nothing", FUNCTION_REPLACE, {u"abab", u"a", u""}, "bb", BVT_STRING},
      {"replace of an empty text", FUNCTION_REPLACE, {u"abc", u"", u"x"}, "abc", BVT_STRING},
      {"val", FUNCTION_VAL, {u" 12.5x"}, "12.500000", BVT_NUMBER},
      {"val of no number", FUNCTION_VAL, {u"x"}, "0.000000", BVT_NUMBER},
      {"val knows no hexadecimal", FUNCTION_VAL, {u"0x10"}, "0.000000", BVT_NUMBER},
      {"val knows no infinity", FUNCTION_VAL, {u"inf"}, "0.000000", BVT_NUMBER},
      {"str of an integer", FUNCTION_STR, {2}, "2", BVT_STRING},
      {"str of a double", FUNCTION_STR, {2.0}, "2.000000", BVT_STRING},
      {"str of a boolean", FUNCTION_STR, {true}, "True", BVT_STRING},
      {"str of nothing", FUNCTION_STR, {CBasicVariable()}, "", BVT_STRING},
      {"repeat", FUNCTION_REPEAT, {u"ab", 3}, "ababab", BVT_STRING},
      {"repeat less than nothing", FUNCTION_REPEAT, {u"ab", -1}, "", BVT_STRING},
      {"repeat ignores further arguments", FUNCTION_REPEAT, {u"ab", 1, u"x"}, "ab", BVT_STRING},
      {"repeat an empty text for ever", FUNCTION_REPEAT, {u"", 2147483647}, "", BVT_STRING},
      {"format of a double", FUNCTION_FORMAT, {2.5, u"<%6.2f>"}, "<  2.50>", BVT_STRING},
      {"format of an integer conversion", FUNCTION_FORMAT, {2.9, u"%d"}, "2", BVT_STRING},
      {"format of a text", FUNCTION_FORMAT, {u"ab", u"[%4s]"}, "[  ab]", BVT_STRING},
      {"format of a number as text", FUNCTION_FORMAT, {2, u"%s"}, "2", BVT_STRING},
      {"format of a text as a number", FUNCTION_FORMAT, {u"2.5", u"%.1f"}, "2.5", BVT_STRING},
      {"format of a character", FUNCTION_FORMAT, {65, u"%c"}, "A", BVT_STRING},
      {"format prints one value", FUNCTION_FORMAT, {1.0, u"%.0f %.0f %s %n"}, "1   ", BVT_STRING},
      {"format of a percent sign", FUNCTION_FORMAT, {1, u"100%%"}, "100%", BVT_STRING},
      {"getpath", FUNCTION_GETPATH, {u"c:\\dir\\file"}, "c:\\dir\\", BVT_STRING},
      {"getname", FUNCTION_GETNAME, {u"c:\\dir\\file"}, "file", BVT_STRING},
      {"getname at the start", FUNCTION_GETNAME, {u"\\file"}, "file", BVT_STRING},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    CBasicVariableArray arguments = Arguments(row.arguments);
    CBasicVariable result;
    EXPECT_TRUE(Access::ExecStringOperation(Interpreter(), result, arguments, row.type));
    EXPECT_EQ(result.GetStringValue().ToUtf8(), row.expected);
    EXPECT_EQ(result.GetType(), row.kind);
    EXPECT_TRUE(m_ui.errors.empty());
  }
}

TEST_F(StringFunctionsTest, a_path_without_its_part_leaves_the_result_alone) {
  const std::pair<FUNCTION_TYPE, const char16_t*> rows[] = {{FUNCTION_GETPATH, u"file"}, {FUNCTION_GETPATH, u"\\file"},
                                                            {FUNCTION_GETPATH, u""},     {FUNCTION_GETPATH, u"a/file"},
                                                            {FUNCTION_GETNAME, u"file"}, {FUNCTION_GETNAME, u"dir\\"},
                                                            {FUNCTION_GETNAME, u""},     {FUNCTION_GETNAME, u"a/file"}};
  for (const auto& [type, path] : rows) {
    CBasicVariableArray arguments = Arguments({path});
    CBasicVariable result(u"as before");
    EXPECT_TRUE(Access::ExecStringOperation(Interpreter(), result, arguments, type));
    EXPECT_EQ(result.GetStringValue().ToUtf8(), "as before") << CString(path).ToUtf8();
  }
}

TEST_F(StringFunctionsTest, a_wrong_count_reports_24_and_leaves_the_result_alone) {
  struct Count {
    FUNCTION_TYPE type;
    std::vector<int> refused;
    std::vector<int> taken;
  };
  const Count rows[] = {
      {FUNCTION_LEN, {0}, {1, 2}},       {FUNCTION_LEFT, {0, 1, 3}, {2}},       {FUNCTION_RIGHT, {0, 1, 3}, {2}},
      {FUNCTION_MID, {0, 1, 2, 4}, {3}}, {FUNCTION_INSTR, {0, 1, 3}, {2}},      {FUNCTION_LCASE, {0}, {1, 2}},
      {FUNCTION_UCASE, {0}, {1, 2}},     {FUNCTION_REPLACE, {0, 1, 2, 4}, {3}}, {FUNCTION_VAL, {0}, {1, 2}},
      {FUNCTION_STR, {0}, {1, 2}},       {FUNCTION_REPEAT, {0, 1}, {2, 3}},     {FUNCTION_FORMAT, {0, 1, 3}, {2}},
      {FUNCTION_GETPATH, {0}, {1, 2}},   {FUNCTION_GETNAME, {0}, {1, 2}},
  };
  const auto ones = [](int count) { return Arguments(Values(static_cast<std::size_t>(count), CBasicVariable(u"1"))); };
  for (const Count& row : rows) {
    for (const int count : row.refused) {
      SCOPED_TRACE("function " + std::to_string(row.type) + " with " + std::to_string(count));
      m_ui.Forget();
      CBasicVariableArray arguments = ones(count);
      CBasicVariable result(u"as before");
      EXPECT_FALSE(Access::ExecStringOperation(Interpreter(), result, arguments, row.type));
      EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{24});
      EXPECT_EQ(result.GetStringValue().ToUtf8(), "as before");
    }
    m_ui.Forget();
    for (const int count : row.taken) {
      SCOPED_TRACE("function " + std::to_string(row.type) + " with " + std::to_string(count));
      CBasicVariableArray arguments = ones(count);
      CBasicVariable result;
      EXPECT_TRUE(Access::ExecStringOperation(Interpreter(), result, arguments, row.type));
      EXPECT_TRUE(m_ui.errors.empty());
    }
  }
}

TEST_F(StringFunctionsTest, a_text_too_long_for_memory_reports_50) {
  const CString million(u'x', 1000000);
  const std::pair<FUNCTION_TYPE, Values> rows[] = {
      {FUNCTION_REPEAT, {u"ab", 2147483647}},
      {FUNCTION_REPEAT, {million, 68}},
      {FUNCTION_REPLACE, {million, u"x", CString(u'y', 100)}},
      {FUNCTION_FORMAT, {1, u"%999999999d"}},
      {FUNCTION_FORMAT, {1.0, u"%.999999999f"}},
      {FUNCTION_FORMAT, {u"a", u"%2147483647s"}},
      {FUNCTION_FORMAT, {1, u"%99999999999999999999d"}},
  };
  for (const auto& [type, values] : rows) {
    SCOPED_TRACE(type);
    m_ui.Forget();
    CBasicVariableArray arguments = Arguments(values);
    CBasicVariable result;
    EXPECT_FALSE(Access::ExecStringOperation(Interpreter(), result, arguments, type));
    EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{50});
  }
}

TEST_F(StringFunctionsTest, a_function_of_another_family_is_refused_without_a_message) {
  for (const FUNCTION_TYPE type : {FUNCTION_NONE, FUNCTION_SIN, FUNCTION_YEAR, FUNCTION_RAND}) {
    CBasicVariableArray arguments = Arguments({u"a"});
    CBasicVariable result(u"as before");
    EXPECT_FALSE(Access::ExecStringOperation(Interpreter(), result, arguments, type));
    EXPECT_EQ(result.GetStringValue().ToUtf8(), "as before");
  }
  EXPECT_TRUE(m_ui.errors.empty());
}

} // namespace
