// The token reader: what stands at a position, and how a token is given back.
#include "support/script_test.h"

namespace {

using TokensTest = ScriptTest;

struct Read {
  BASIC_TOKEN_TYPE kind;
  std::string text;
  int command;
  int keyword;
  friend bool operator==(const Read&, const Read&) = default;
  friend void PrintTo(const Read& read, std::ostream* out) {
    *out << "{kind " << read.kind << ", '" << read.text << "', command " << read.command << ", keyword " << read.keyword
         << "}";
  }
};

// The next token.
Read ReadOne(CBrindle& interpreter) {
  const BASIC_TOKEN_TYPE kind = BrindleTestAccess::get_token(interpreter);
  const brindle::TokenState& token = BrindleTestAccess::State(interpreter).token;
  EXPECT_EQ(kind, token.kind);
  return {token.kind, token.Text().ToUtf8(), token.command, token.keyword};
}

TEST_F(TokensTest, every_kind_of_token_has_its_text) {
  struct Row {
    const char* name;
    std::u16string text;
    Read expected;
    std::uint32_t end; // the position behind it
  };
  const Row rows[] = {
      {"variable", u"total = 1", {TOKEN_VARIABLE, "total", 0, 0}, 5},
      {"variable keeps its case", u"ToTal ", {TOKEN_VARIABLE, "ToTal", 0, 0}, 5},
      {"variable with an underscore inside", u"a_b c", {TOKEN_VARIABLE, "a_b", 0, 0}, 3},
      {"variable with digits", u"x12+", {TOKEN_VARIABLE, "x12", 0, 0}, 3},
      {"variable with a quote inside", u"a\"b c", {TOKEN_VARIABLE, "a\"b", 0, 0}, 3},
      {"variable with # inside", u"a#b c", {TOKEN_VARIABLE, "a#b", 0, 0}, 3},
      {"letter beyond ASCII", u"größe=", {TOKEN_VARIABLE, "größe", 0, 0}, 5},
      {"blanks and tabs before it", u" \t \tx", {TOKEN_VARIABLE, "x", 0, 0}, 5},
      {"dotted name", u"a.b.c =", {TOKEN_FIELD_UNKNOWN, "a.b.c", 0, 0}, 5},
      {"dotted keyword", u"as.b", {TOKEN_FIELD_UNKNOWN, "as.b", 0, 0}, 4},
      {"number", u"42)", {TOKEN_NUMBER, "42", 0, 0}, 2},
      {"number with a point", u"1.5 ", {TOKEN_NUMBER, "1.5", 0, 0}, 3},
      {"number with an exponent", u"1e3,", {TOKEN_NUMBER, "1e3", 0, 0}, 3},
      {"number with a signed exponent", u"1e+3", {TOKEN_NUMBER, "1e", 0, 0}, 2},
      {"number with letters", u"7up ", {TOKEN_NUMBER, "7up", 0, 0}, 3},
      {"string", u"\"a b\" ", {TOKEN_STRING, "a b", 0, 0}, 5},
      {"empty string", u"\"\"x", {TOKEN_STRING, "", 0, 0}, 2},
      {"string with separators", u"\"a;b'c:d#\"", {TOKEN_STRING, "a;b'c:d#", 0, 0}, 10},
      {"string over a line end", u"\"a\nb\"", {TOKEN_STRING, "a\nb", 0, 0}, 5},
      {"string without an end", u"\"ab\n", {TOKEN_STRING, "ab\n", 0, 0}, 4},
      {"string of one quote", u"\"", {TOKEN_STRING, "", 0, 0}, 1},
      {"string with a degree sign", u"\"5°\"", {TOKEN_STRING, "5°", 0, 0}, 4},
      {"string with a control character", u"\"\x0001\"", {TOKEN_STRING, "\x01", 0, 0}, 3},
      {"command", u"PRINT x", {TOKEN_COMMAND, "PRINT", 1, 0}, 5},
      {"command before a parenthesis", u"if(x", {TOKEN_COMMAND, "if", 2, 0}, 2},
      {"keyword", u"While x", {TOKEN_KEYWORD, "While", 0, 3}, 5},
      {"keyword before a parenthesis is a function", u"while(", {TOKEN_FUNCTION, "while", 0, 0}, 5},
      {"label", u"Again: x", {TOKEN_LABEL, "Again", 0, 0}, 6},
      {"label of a command word", u"else:", {TOKEN_LABEL, "else", 0, 0}, 5},
      {"label of a dotted name", u"a.b:", {TOKEN_LABEL, "a.b", 0, 0}, 4},
      {"a blank before the colon makes no label", u"again :", {TOKEN_VARIABLE, "again", 0, 0}, 5},
      {"function", u"Sin(x)", {TOKEN_FUNCTION, "Sin", 0, 0}, 3},
      {"unknown function", u"nope(x)", {TOKEN_FUNCTION, "nope", 0, 0}, 4},
      {"a blank before the parenthesis makes no function", u"sin (x)", {TOKEN_VARIABLE, "sin", 0, 0}, 3},
      {"method", u"x.y(1)", {TOKEN_FUNCTION, "x.y", 0, 0}, 3},
      {"comment", u"# all of it\nx", {TOKEN_COMMENT, "", 0, 0}, 11},
      {"comment at the end", u"#x", {TOKEN_COMMENT, "", 0, 0}, 2},
      {"line feed", u"\nx", {TOKEN_DELIMITER, "\n", 10, 0}, 1},
      {"carriage return and line feed", u"\r\nx", {TOKEN_DELIMITER, "\n", 10, 0}, 2},
      {"a blank line goes with the line end before it", u"\n\nx", {TOKEN_DELIMITER, "\n", 10, 0}, 2},
      {"three line ends are two tokens", u"\n\n\n", {TOKEN_DELIMITER, "\n", 10, 0}, 2},
      {"NUL is a line end", std::u16string(u"\0x", 2), {TOKEN_DELIMITER, "\n", 10, 0}, 1},
      {"end", u"", {TOKEN_DELIMITER, "", 11, 0}, 0},
      {"underscore starts nothing", u"_x", {TOKEN_NONE, "", 0, 0}, 0},
      {"point starts nothing", u" .5", {TOKEN_NONE, "", 0, 0}, 1},
      {"backslash starts nothing", u"\\", {TOKEN_NONE, "", 0, 0}, 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    for (const bool kept : {false, true}) {
      SetText(row.text, kept);
      EXPECT_EQ(ReadOne(Interpreter()), row.expected);
      EXPECT_EQ(State().position, row.end);
    }
  }
}

TEST_F(TokensTest, every_delimiter_is_a_token_of_its_own) {
  for (const char16_t unit : std::u16string(u";,+-<>/*%^=()[]~:!'@&{}|?$")) {
    SetText(std::u16string(2, unit));
    const std::string text(1, static_cast<char>(unit));
    EXPECT_EQ(ReadOne(Interpreter()), (Read{TOKEN_DELIMITER, text, 0, 0}));
    EXPECT_EQ(State().position, 1U);
  }
}

TEST_F(TokensTest, a_comparison_operator_is_two_tokens) {
  SetText(u"a<=b");
  EXPECT_EQ(ReadOne(Interpreter()), (Read{TOKEN_VARIABLE, "a", 0, 0}));
  EXPECT_EQ(ReadOne(Interpreter()), (Read{TOKEN_DELIMITER, "<", 0, 0}));
  EXPECT_EQ(ReadOne(Interpreter()), (Read{TOKEN_DELIMITER, "=", 0, 0}));
  EXPECT_EQ(ReadOne(Interpreter()), (Read{TOKEN_VARIABLE, "b", 0, 0}));
  EXPECT_EQ(ReadOne(Interpreter()), (Read{TOKEN_DELIMITER, "", 11, 0}));
}

TEST_F(TokensTest, a_signed_exponent_is_three_tokens) {
  SetText(u"1e+3");
  EXPECT_EQ(ReadOne(Interpreter()).text, "1e");
  EXPECT_EQ(ReadOne(Interpreter()).text, "+");
  EXPECT_EQ(ReadOne(Interpreter()).text, "3");
}

TEST_F(TokensTest, the_end_is_given_again_and_again) {
  SetText(u"x");
  ReadOne(Interpreter());
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(ReadOne(Interpreter()), (Read{TOKEN_DELIMITER, "", 11, 0}));
}

TEST_F(TokensTest, blanks_at_the_end_are_the_end) {
  SetText(u"  \t");
  EXPECT_EQ(ReadOne(Interpreter()).command, COMMAND_END_OF_PROGRAM);
}

TEST_F(TokensTest, a_character_of_no_token_is_not_consumed) {
  SetText(u"_");
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(ReadOne(Interpreter()).kind, TOKEN_NONE);
    EXPECT_EQ(State().position, 0U);
  }
}

TEST_F(TokensTest, the_kind_of_the_token_before_is_kept) {
  SetText(u"print x + 1\n");
  const BASIC_TOKEN_TYPE before[] = {TOKEN_NONE, TOKEN_COMMAND, TOKEN_VARIABLE, TOKEN_DELIMITER, TOKEN_NUMBER};
  for (const BASIC_TOKEN_TYPE kind : before) {
    ReadOne(Interpreter());
    EXPECT_EQ(State().token.previousKind, kind);
  }
}

TEST_F(TokensTest, codes_do_not_outlive_their_token) {
  SetText(u"print as x");
  EXPECT_EQ(ReadOne(Interpreter()).command, COMMAND_PRINT);
  EXPECT_EQ(ReadOne(Interpreter()), (Read{TOKEN_KEYWORD, "as", 0, KEYWORD_AS}));
  EXPECT_EQ(ReadOne(Interpreter()), (Read{TOKEN_VARIABLE, "x", 0, 0}));
}

TEST_F(TokensTest, putback_goes_back_by_the_token) {
  struct Row {
    const char* name;
    std::u16string text;
    std::uint32_t distance;
  };
  const Row rows[] = {
      {"two-character literal", u"x \"ab\" ", 4},
      {"empty literal", u"x \"\" ", 2},
      {"literal over a line end", u"x \"a\nb\"", 5},
      {"command word", u"x print ", 5},
      {"keyword", u"x while ", 5},
      {"variable", u"x total ", 5},
      {"dotted name", u"x a.bc ", 4},
      {"function", u"x sin(", 3},
      {"number", u"x 12.50 ", 5},
      {"delimiter", u"x + ", 1},
      {"line feed", u"x \ny", 1},
      {"end of the program", u"x ", 0},
      {"character of no token", u"x _", 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    for (const bool kept : {false, true}) {
      SetText(row.text, kept);
      ReadOne(Interpreter());
      const Read token = ReadOne(Interpreter());
      const std::uint32_t end = State().position;
      Access::putback(Interpreter());
      EXPECT_EQ(end - State().position, row.distance);
      EXPECT_EQ(ReadOne(Interpreter()), token);
      EXPECT_EQ(State().position, end);
    }
  }
}

TEST_F(TokensTest, putback_leaves_the_token_as_it_is) {
  SetText(u"print \"ab\"");
  ReadOne(Interpreter());
  ReadOne(Interpreter());
  Access::putback(Interpreter());
  EXPECT_EQ(State().token.kind, TOKEN_STRING);
  EXPECT_EQ(State().token.previousKind, TOKEN_COMMAND);
  EXPECT_EQ(State().token.Text().ToUtf8(), "ab");
}

TEST_F(TokensTest, what_stands_behind_the_token_given_back_is_read_again) {
  const std::u16string texts[] = {u"\"ab\nc", u"\r\nx", u"\n\nx", u"label: x", u"# comment\nx"};
  for (const std::u16string& text : texts) {
    SetText(text);
    const Read first = ReadOne(Interpreter());
    const Read second = ReadOne(Interpreter());
    SetText(text);
    ReadOne(Interpreter());
    Access::putback(Interpreter());
    EXPECT_EQ(ReadOne(Interpreter()), first);
    EXPECT_EQ(ReadOne(Interpreter()), second);
  }
}

TEST_F(TokensTest, putback_never_goes_below_the_start) {
  SetText(u"\"ab");
  ReadOne(Interpreter());
  Access::putback(Interpreter());
  EXPECT_EQ(State().position, 0U);
}

TEST_F(TokensTest, a_function_token_carries_its_code) {
  SetText(u"Sin(x.y(nope(");
  ReadOne(Interpreter());
  EXPECT_EQ(State().token.function, FUNCTION_SIN);
  SetText(u"x.y(1)");
  ReadOne(Interpreter());
  EXPECT_EQ(State().token.function, FUNCTION_AUTOMATION);
  SetText(u"nope(1)");
  ReadOne(Interpreter());
  EXPECT_EQ(State().token.function, FUNCTION_NONE);
}

TEST_F(TokensTest, reading_tokens_reports_nothing) {
  SetText(u"\"never closed\nnope( _ a.b \r\n # x");
  while (!Access::IsEndOfProgram(Interpreter()))
    if (ReadOne(Interpreter()).kind == TOKEN_NONE)
      Access::NextChar(Interpreter());
  EXPECT_TRUE(m_ui.errors.empty());
}

} // namespace
