// Operators: which there are, what they compute, and what they report.
#include "support/script_test.h"

#include <cmath>
#include <string>

namespace {

using OperatorsTest = ScriptTest;

TEST_F(OperatorsTest, arithmetic_operators_have_their_codes) {
  const std::pair<char16_t, int> rows[] = {{u'+', 1}, {u'-', 2}, {u'*', 3}, {u'/', 4}, {u'^', 5}, {u'%', 6}};
  std::u16string known;
  for (const auto& [operation, code] : rows) {
    EXPECT_EQ(Access::GetArithOperation(operation), code);
    known += operation;
  }
  for (char16_t unit = 0; unit < 300; ++unit) {
    const bool isOperator = known.find(unit) != std::u16string::npos;
    EXPECT_EQ(Access::GetArithOperation(unit) != ARITHMETIC_NONE, isOperator) << static_cast<int>(unit);
  }
}

TEST_F(OperatorsTest, comparison_operators_have_their_codes) {
  struct Row {
    const char16_t* text;
    int expected;
    std::uint32_t end; // how far it is read
  };
  const Row rows[] = {
      {u"= b", 1, 1},   {u"== b", 1, 2},  {u"< b", 3, 1},    {u"> b", 2, 1},  {u"<> b", 4, 2}, {u"!= b", 4, 2},
      {u"<= b", 6, 2},  {u"=> b", 5, 2},  {u"~~ b", 7, 2},   {u">= b", 0, 2}, {u"=< b", 0, 2}, {u"! b", 0, 1},
      {u"~ b", 0, 1},   {u">> b", 0, 2},  {u"<< b", 0, 2},   {u">< b", 0, 2}, {u"!! b", 0, 2}, {u"=! b", 0, 2},
      {u"~= b", 0, 2},  {u"=~ b", 0, 2},  {u"+ b", 0, 1},    {u"=-1", 1, 1},  {u"=(b", 1, 1},  {u"<-1", 3, 1},
      {u"= = b", 1, 3}, {u"< > b", 4, 3}, {u"=\"b\"", 1, 1}, {u"=", 1, 1},    {u"<\n", 3, 1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(CString(row.text).ToUtf8());
    SetText(row.text);
    EXPECT_EQ(Access::GetLogOperation(Interpreter()), row.expected);
    // A token given back leaves the blanks in front of it read or unread.
    EXPECT_EQ(brindle::SkipBlanks(State().program->Text(), State().position),
              brindle::SkipBlanks(State().program->Text(), row.end));
    EXPECT_TRUE(m_ui.errors.empty());
  }
}

TEST_F(OperatorsTest, what_is_no_delimiter_is_no_comparison) {
  for (const char16_t* text : {u"then", u"b", u"5", u"\"=\"", u"_", u"# ="}) {
    SetText(text);
    EXPECT_EQ(Access::GetLogOperation(Interpreter()), LOGICAL_NONE) << CString(text).ToUtf8();
  }
}

// Two values, the operator, and the text and kind of what comes out.
struct Computation {
  const char* name;
  CBasicVariable left;
  char16_t operation;
  CBasicVariable right;
  std::string expected;
  BASICVARTYPE kind;
};

TEST_F(OperatorsTest, the_left_operand_decides) {
  Computation rows[] = {
      {"numbers add", 1, u'+', 2, "3.000000", BVT_NUMBER},
      {"numbers subtract", 1.5, u'-', 2, "-0.500000", BVT_NUMBER},
      {"numbers multiply", 3, u'*', 4, "12.000000", BVT_NUMBER},
      {"numbers divide", 1, u'/', 4, "0.250000", BVT_NUMBER},
      {"division by zero", 1, u'/', 0, "inf", BVT_NUMBER},
      {"negative division by zero", -1, u'/', 0, "-inf", BVT_NUMBER},
      {"zero by zero", 0, u'/', 0, "nan", BVT_NUMBER},
      {"remainder is a residue", 7, u'%', 2, "0.000000", BVT_NUMBER},
      {"power of 0", 2, u'^', 0, "1.000000", BVT_NUMBER},
      {"power of 1", 2, u'^', 1, "2.000000", BVT_NUMBER},
      {"power of a fraction", 2, u'^', 0.5, "2.000000", BVT_NUMBER},
      {"negative power", 2, u'^', -1, "2.000000", BVT_NUMBER},
      {"power of 3", 2, u'^', 3, "8.000000", BVT_NUMBER},
      {"power of 2.5 cubes", 2, u'^', 2.5, "8.000000", BVT_NUMBER},
      {"a number takes the number of a text", 1, u'+', u"2", "3.000000", BVT_NUMBER},
      {"a number takes what is not set as 0", 1, u'+', CBasicVariable(), "1.000000", BVT_NUMBER},
      {"a boolean is a number", true, u'+', 1, "2.000000", BVT_NUMBER},
      {"texts join", u"ab", u'+', u"cd", "abcd", BVT_STRING},
      {"a text takes the text of an integer", u"a", u'+', 1, "a1", BVT_STRING},
      {"a text takes the text of a double", u"a", u'+', 1.0, "a1.000000", BVT_STRING},
      {"a text takes what is not set as empty", u"a", u'+', CBasicVariable(), "a", BVT_STRING},
  };
  for (Computation& row : rows) {
    SCOPED_TRACE(row.name);
    Access::ComputeOperation(Interpreter(), row.operation, row.left, row.right);
    EXPECT_EQ(row.left.GetStringValue().ToUtf8(), row.expected);
    EXPECT_EQ(row.left.GetType(), row.kind);
    EXPECT_TRUE(m_ui.errors.empty());
  }
}

TEST_F(OperatorsTest, operators_without_a_meaning_report_a_neighbouring_number) {
  Computation rows[] = {
      {"texts do not subtract", u"ab", u'-', u"b", "ab", BVT_STRING},
      {"texts do not multiply", u"ab", u'*', 2, "ab", BVT_STRING},
      {"texts have no power", u"ab", u'^', 2, "ab", BVT_STRING},
      {"numbers know no other operator", 2.0, u'&', 2, "2.000000", BVT_NUMBER},
  };
  for (Computation& row : rows) {
    SCOPED_TRACE(row.name);
    m_ui.Forget();
    Access::ComputeOperation(Interpreter(), row.operation, row.left, row.right);
    EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{14});
    EXPECT_EQ(row.left.GetStringValue().ToUtf8(), row.expected);
  }
}

TEST_F(OperatorsTest, what_is_not_set_takes_no_operator) {
  CBasicVariable left;
  CBasicVariable right(1);
  Access::ComputeOperation(Interpreter(), u'+', left, right);
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{18});
  EXPECT_EQ(left.GetType(), BVT_NONE);
}

TEST_F(OperatorsTest, power_counts_multiplications_up_to_a_million_steps) {
  CBasicVariable base(1.000001);
  CBasicVariable exponent(1000001);
  Access::ComputeOperation(Interpreter(), u'^', base, exponent);
  double expected = 1.000001;
  for (int i = 0; i < 1000000; ++i)
    expected *= 1.000001;
  EXPECT_EQ(base.GetNumberValue(), expected);

  CBasicVariable beyond(1.000001);
  CBasicVariable large(1e9);
  Access::ComputeOperation(Interpreter(), u'^', beyond, large);
  EXPECT_DOUBLE_EQ(beyond.GetNumberValue(), std::pow(1.000001, 1e9));
}

TEST_F(OperatorsTest, minus_makes_any_value_a_number) {
  struct Row {
    char16_t sign;
    CBasicVariable value;
    double expected;
    BASICVARTYPE kind;
  };
  Row rows[] = {{u'-', 5, -5, BVT_NUMBER},
                {u'-', u"3x", -3, BVT_NUMBER},
                {u'-', u"x", -0.0, BVT_NUMBER},
                {u'+', 5, 5, BVT_NUMBER},
                {u'+', u"3", 3, BVT_STRING}};
  for (Row& row : rows) {
    Access::unary(Interpreter(), row.sign, row.value);
    EXPECT_EQ(row.value.GetNumberValue(), row.expected);
    EXPECT_EQ(row.value.GetType(), row.kind);
  }
}

TEST_F(OperatorsTest, a_condition_is_one_comparison) {
  struct Row {
    const char16_t* text;
    bool expected;
  };
  const Row rows[] = {
      {u"1 = 1", true},
      {u"1 == 1", true},
      {u"1 <> 1", false},
      {u"1 != 2", true},
      {u"1 < 2", true},
      {u"2 > 2", false},
      {u"2 => 2", true},
      {u"2 <= 1", false},
      {u"0.1+0.2 ~~ 0.3", true},
      {u"0.1+0.2 = 0.3", false},
      {u"1 ~~ 1.00000000001", false},
      {u"1 = \"1\"", true},
      {u"\"abc\" ~~ \"b\"", true},
      {u"\"abc\" ~~ \"B\"", false},
      {u"\"a\" = \"A\"", false},
      {u"\"a\" < \"ab\"", true},
      {u"\"a\" => \"a\"", true},
      {u"\"a\" <= \"a\"", true},
      {u"\"a\" > \"a\"", false},
      {u"\"Z\" < \"a\"", true},
      {u"\"1\" = 1", false},
      {u"Nothing = 0", false},
      {u"Nothing = Nothing", false},
  };
  for (const Row& row : rows) {
    SetText(row.text);
    EXPECT_EQ(Access::ExecLogicalStatement(Interpreter()), row.expected) << CString(row.text).ToUtf8();
    EXPECT_TRUE(m_ui.errors.empty());
  }
}

TEST_F(OperatorsTest, greater_or_equal_the_wrong_way_round_reports_0) {
  SetText(u"1 >= 1");
  EXPECT_FALSE(Access::ExecLogicalStatement(Interpreter()));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{0});
  EXPECT_EQ(m_ui.notices.size(), 1U);
}

TEST_F(OperatorsTest, an_expression_gives_the_token_behind_it_back) {
  struct Row {
    const char16_t* text;
    double expected;
    const char16_t* next;
  };
  const Row rows[] = {
      {u"1+2*3 then", 7, u"then"},   {u"2^2^3,", 256, u","},   {u"-2^2)", 4, u")"},    {u"(1+2)*3 # x", 9, u""},
      {u"8/4/2 print", 1, u"print"}, {u"10-4-3;", 3, u";"},    {u"+5 \"x\"", 5, u"x"}, {u"True+True", 2, u""},
      {u"2*-3 x", -6, u"x"},         {u"((((7))))=", 7, u"="},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(CString(row.text).ToUtf8());
    SetText(row.text);
    CBasicVariable value;
    Access::get_exp(Interpreter(), value);
    EXPECT_EQ(value.GetNumberValue(), row.expected);
    Access::get_token(Interpreter());
    EXPECT_EQ(State().token.Text().ToUtf8(), CString(row.next).ToUtf8());
    EXPECT_TRUE(m_ui.errors.empty());
  }
}

TEST_F(OperatorsTest, a_missing_expression_reports_2_and_leaves_the_result) {
  for (const char16_t* text : {u"", u"# x", u"_"}) {
    m_ui.Forget();
    SetText(text);
    CBasicVariable value(u"as before");
    Access::get_exp(Interpreter(), value);
    EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{2}) << CString(text).ToUtf8();
    EXPECT_EQ(value.GetStringValue().ToUtf8(), "as before");
  }
}

} // namespace
