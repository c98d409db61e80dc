// The line that an error quotes: from the line break before it, by rules that lose the shortest lines.
#include "support/script_test.h"

namespace {

using CurrentLineTest = ScriptTest;

TEST_F(CurrentLineTest, the_line_is_taken_from_the_break_before_it) {
  struct Row {
    const char* name;
    std::u16string text;
    std::uint32_t position;
    std::string expected;
  };
  const Row rows[] = {
      {"first line, at its start", u"abc\ndef\n", 0, "abc"},
      {"first line, inside", u"abc\ndef\n", 2, "abc"},
      {"first line, at its end", u"abc\ndef\n", 3, "abc"},
      {"second line, at its start", u"abc\ndef\n", 4, "\ndef"},
      {"second line, inside", u"abc\ndef\n", 6, "\ndef"},
      {"second line, at its end", u"abc\ndef\n", 7, "\ndef"},
      {"at the end of the text", u"abc\ndef\n", 8, "\ndef"},
      {"last line without a line end", u"abc\ndef", 5, ""},
      {"only line without a line end", u"abc", 1, ""},
      {"CR LF, first line", u"abc\r\ndef\r\n", 1, "abc\r"},
      {"CR LF, second line", u"abc\r\ndef\r\n", 6, "\ndef\r"},
      {"CR LF, at the carriage return", u"abc\r\ndef\r\n", 3, "abc\r"},
      {"CR LF, at the line feed", u"abc\r\ndef\r\n", 4, "abc\r"},
      {"CR LF, at the end", u"abc\r\ndef\r\n", 10, "\ndef\r"},
      {"carriage returns alone end a line only backwards", u"abc\rdef\n", 5, "\rdef"},
      {"empty lines belong to the line before them", u"abc\n\n\n\ndef\n", 5, "abc"},
      {"behind empty lines", u"abc\n\n\ndef\n", 7, "\ndef"},
      {"empty lines at the end", u"abc\ndef\n\n\n", 10, "\ndef"},
      {"one character on the first line is taken with the next line", u"a\nbcd\n", 0, "a\nbcd"},
      {"one character on the first line of two", u"a\n", 0, ""},
      {"one character on the second line", u"abc\nd\nef\n", 4, "\nd"},
      {"empty first line", u"\nabc\n", 0, "\nabc"},
      {"two empty lines", u"\n\n", 0, ""},
      {"nothing but a line end", u"\n", 0, ""},
      {"nothing but a line end, behind it", u"\n", 1, ""},
      {"no text", u"", 0, ""},
      {"NUL ends a line backwards", std::u16string(u"abc\0def\n", 8), 5, std::string("\0def", 4)},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    SetText(row.text);
    State().position = row.position;
    EXPECT_EQ(Access::GetCurrentLine(Interpreter()).ToUtf8(), row.expected);
    EXPECT_EQ(State().position, row.position) << "the position stays";
  }
}

TEST_F(CurrentLineTest, the_last_error_is_message_line_feed_and_line) {
  EXPECT_TRUE(Interpreter().GetLastError().IsEmpty());
  SetText(u"abc\ndef\n");
  State().position = 5;
  Interpreter().ReportError(12);
  EXPECT_EQ(Interpreter().GetLastError().ToUtf8(), "NEXT without FOR\n\ndef");
  EXPECT_EQ(m_ui.errors, std::vector<std::string>{"NEXT without FOR\n\ndef"});
  State().position = 0;
  Interpreter().ReportError(6);
  EXPECT_EQ(Interpreter().GetLastError().ToUtf8(), "Lable table full\nabc");
}

TEST_F(CurrentLineTest, a_number_without_a_text_shows_a_notice_and_the_line) {
  SetText(u"abc\n");
  for (const int number : {0, 66, -1, 100000}) {
    m_ui.Forget();
    Interpreter().ReportError(number);
    EXPECT_EQ(m_ui.notices, std::vector<std::string>{"Error loading resource string."});
    EXPECT_EQ(m_ui.errors, std::vector<std::string>{"\nabc"});
    EXPECT_EQ(Interpreter().GetLastError().ToUtf8(), "\nabc");
  }
}

TEST_F(CurrentLineTest, an_error_before_any_program_has_no_line) {
  Interpreter().ReportError(1);
  EXPECT_EQ(Interpreter().GetLastError().ToUtf8(), "Syntax error\n");
}

TEST_F(CurrentLineTest, every_message_has_its_text) {
  // The misspelt ones are meant to be so.
  const std::pair<int, const char*> rows[] = {
      {6, "Lable table full"},
      {29, "Invalid keyword "},
      {34, "Field name does not exists in data structure"},
      {38, "Incorrect assignment operator. Can't assign array to a varaible."},
      {39, "Incorrect assignment operator. Can't assign variable to an array."},
      {48, "OK"},
      {50, "Brindle unrecoverable error"},
      {52, "File is not open in text mode.\nCan't perform operation."},
      {54, "\"While\" keyword is missing."},
      {58, "True"},
      {59, "False"},
  };
  SetText(u"abc\n");
  for (const auto& [number, text] : rows) {
    Interpreter().ReportError(number);
    EXPECT_EQ(Interpreter().GetLastError().ToUtf8(), std::string(text) + "\nabc");
  }
  for (int number = 1; number <= 59; ++number) {
    m_ui.Forget();
    Interpreter().ReportError(number);
    EXPECT_TRUE(m_ui.notices.empty()) << number;
  }
}

} // namespace
