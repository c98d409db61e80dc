// The reading position, saved positions, line ends and labels.
#include "support/script_test.h"

namespace {

using PositionTest = ScriptTest;

TEST_F(PositionTest, rewind_takes_positions_below_the_length_only) {
  SetText(u"abc");
  EXPECT_TRUE(Access::Rewind(Interpreter(), 2));
  EXPECT_EQ(State().position, 2U);
  EXPECT_FALSE(Access::Rewind(Interpreter(), 3));
  EXPECT_EQ(State().position, 2U);
  EXPECT_FALSE(Access::Rewind(Interpreter(), 0xFFFFFFFFUL));
  EXPECT_EQ(State().position, 2U);
  EXPECT_TRUE(Access::Rewind(Interpreter(), 0));
  EXPECT_EQ(State().position, 0U);
}

TEST_F(PositionTest, rewind_of_an_empty_text_fails) {
  SetText(u"");
  EXPECT_FALSE(Access::Rewind(Interpreter(), 0));
}

TEST_F(PositionTest, rewind_to_the_start_forgets_the_token) {
  SetText(u"print x");
  Access::get_token(Interpreter());
  EXPECT_TRUE(Access::Rewind(Interpreter()));
  EXPECT_EQ(State().position, 0U);
  EXPECT_TRUE(State().token.Text().IsEmpty());
  EXPECT_EQ(State().token.kind, TOKEN_NONE);
  EXPECT_EQ(State().token.command, COMMAND_NONE);
}

TEST_F(PositionTest, the_current_character_is_nul_at_the_end) {
  SetText(u"ab");
  EXPECT_EQ(Access::CurChar(Interpreter()), u'a');
  Access::NextChar(Interpreter());
  EXPECT_EQ(Access::CurChar(Interpreter()), u'b');
  EXPECT_FALSE(Access::IsEndOfProgram(Interpreter()));
  Access::NextChar(Interpreter());
  EXPECT_EQ(Access::CurChar(Interpreter()), u'\0');
  EXPECT_TRUE(Access::IsEndOfProgram(Interpreter()));
  Access::NextChar(Interpreter());
  EXPECT_EQ(State().position, 2U);
}

TEST_F(PositionTest, a_fresh_interpreter_stands_at_the_end_of_nothing) {
  EXPECT_EQ(Access::CurChar(Interpreter()), u'\0');
  EXPECT_TRUE(Access::IsEndOfProgram(Interpreter()));
  EXPECT_FALSE(Access::Rewind(Interpreter(), 0));
  EXPECT_TRUE(Access::GetCurrentLine(Interpreter()).IsEmpty());
}

TEST_F(PositionTest, saved_positions_come_back_last_one_first) {
  SetText(u"abcdef");
  Access::PushPosition(Interpreter(), 3);
  Access::PushPosition(Interpreter(), 5);
  unsigned long position = 0;
  EXPECT_TRUE(Access::PopPosition(Interpreter(), position));
  EXPECT_EQ(position, 5U);
  EXPECT_TRUE(Access::PopPosition(Interpreter(), position));
  EXPECT_EQ(position, 3U);
}

TEST_F(PositionTest, no_saved_position_cannot_be_popped) {
  SetText(u"abc");
  unsigned long position = 77;
  EXPECT_FALSE(Access::PopPosition(Interpreter(), position));
  EXPECT_EQ(position, 77U);
}

TEST_F(PositionTest, find_eol_stops_at_every_kind_of_line_end) {
  struct Row {
    const char* name;
    std::u16string text;
    std::uint32_t from;
    std::uint32_t expected;
  };
  const Row rows[] = {
      {"line feed", u"abc\nd", 0, 3},
      {"carriage return", u"abc\r\nd", 0, 3},
      {"NUL", std::u16string(u"ab\0c", 4), 0, 2},
      {"end of the text", u"abc", 1, 3},
      {"already there", u"abc\nd", 3, 3},
      {"empty", u"", 0, 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    SetText(row.text);
    Access::Rewind(Interpreter(), row.from);
    EXPECT_TRUE(Access::FindEOL(Interpreter()));
    EXPECT_EQ(State().position, row.expected);
  }
}

TEST_F(PositionTest, go_past_eol_makes_the_first_token_of_the_next_line_current) {
  for (const char16_t* text : {u"a b\nprint", u"a b\r\nprint", u"a b\n\n\n\n\n  print", u"a b\r\n\r\n\r\nprint"}) {
    SetText(text);
    Access::get_token(Interpreter());
    EXPECT_TRUE(Access::GoPastEOL(Interpreter()));
    EXPECT_EQ(State().token.command, COMMAND_PRINT);
    EXPECT_TRUE(Access::IsEndOfProgram(Interpreter()));
  }
}

TEST_F(PositionTest, go_past_eol_ends_at_the_end) {
  SetText(u"a b\n\n");
  EXPECT_TRUE(Access::GoPastEOL(Interpreter()));
  EXPECT_EQ(State().token.command, COMMAND_END_OF_PROGRAM);
}

TEST_F(PositionTest, a_label_is_added_once) {
  SetText(u"abcdef");
  EXPECT_TRUE(Access::LabelAdd(Interpreter(), u"Again", 2));
  EXPECT_FALSE(Access::LabelAdd(Interpreter(), u"Again", 4));
  EXPECT_TRUE(Access::LabelAdd(Interpreter(), u"again", 5)) << "letter case counts";
  unsigned long position = 0;
  EXPECT_TRUE(Access::LabelGet(Interpreter(), u"Again", position));
  EXPECT_EQ(position, 2U);
  EXPECT_TRUE(Access::LabelGet(Interpreter(), u"again", position));
  EXPECT_EQ(position, 5U);
}

TEST_F(PositionTest, an_unknown_label_leaves_the_position_alone) {
  SetText(u"abc");
  unsigned long position = 77;
  EXPECT_FALSE(Access::LabelGet(Interpreter(), u"nowhere", position));
  EXPECT_EQ(position, 77U);
}

TEST_F(PositionTest, freed_labels_are_gone) {
  SetText(u"abc");
  Access::LabelAdd(Interpreter(), u"a", 1);
  EXPECT_TRUE(Access::LabelsFree(Interpreter()));
  unsigned long position = 0;
  EXPECT_FALSE(Access::LabelGet(Interpreter(), u"a", position));
  EXPECT_TRUE(Access::LabelAdd(Interpreter(), u"a", 2));
}

TEST_F(PositionTest, the_scan_finds_labels_behind_their_colon) {
  SetText(u"first: print 1\n# no: label\nrem nor: this\nx = \"nor: that\" second: x = 2\nFirst:\n");
  EXPECT_TRUE(Access::LabelsScan(Interpreter()));
  unsigned long position = 0;
  EXPECT_TRUE(Access::LabelGet(Interpreter(), u"first", position));
  EXPECT_EQ(position, 6U);
  EXPECT_TRUE(Access::LabelGet(Interpreter(), u"second", position));
  EXPECT_EQ(State().program->Text().substr(position, 6), u" x = 2");
  EXPECT_TRUE(Access::LabelGet(Interpreter(), u"First", position));
  for (const char16_t* name : {u"no", u"nor", u"label", u"print"})
    EXPECT_FALSE(Access::LabelGet(Interpreter(), name, position));
  EXPECT_EQ(State().position, 0U) << "the scan goes back to the start";
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(PositionTest, the_scan_stops_at_a_duplicate_and_still_goes_back_to_the_start) {
  SetText(u"a:\nb:\na:\nc:\n");
  EXPECT_FALSE(Access::LabelsScan(Interpreter()));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{6});
  unsigned long position = 0;
  EXPECT_TRUE(Access::LabelGet(Interpreter(), u"b", position));
  EXPECT_FALSE(Access::LabelGet(Interpreter(), u"c", position));
  EXPECT_EQ(State().position, 0U);
}

TEST_F(PositionTest, a_new_scan_forgets_the_labels_of_the_last_one) {
  SetText(u"a:\n");
  EXPECT_TRUE(Access::LabelsScan(Interpreter()));
  EXPECT_TRUE(Access::LabelsScan(Interpreter()));
  EXPECT_TRUE(m_ui.errors.empty());
}

TEST_F(PositionTest, gosub_jumps_to_a_label_and_keeps_the_way_back) {
  SetText(u"x: there y");
  Access::LabelAdd(Interpreter(), u"there", 3);
  Access::get_token(Interpreter());
  EXPECT_TRUE(Access::ExecGosub(Interpreter()));
  EXPECT_EQ(State().position, 3U);
  unsigned long position = 0;
  EXPECT_TRUE(Access::PopPosition(Interpreter(), position));
  EXPECT_EQ(position, 8U);
}

TEST_F(PositionTest, gosub_to_nowhere_reports_7) {
  SetText(u"nowhere");
  EXPECT_FALSE(Access::ExecGosub(Interpreter()));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{7});
  unsigned long position = 0;
  EXPECT_FALSE(Access::PopPosition(Interpreter(), position));
}

} // namespace
