// The control stack, and forward skips: found by reading, then remembered.
#include "support/script_test.h"

namespace {

using ControlStackTest = ScriptTest;

TEST_F(ControlStackTest, entries_come_back_last_one_first) {
  EXPECT_TRUE(Access::PushToStack(Interpreter(), u"i", 2.5, 7));
  CStackData entry;
  entry.position = 9;
  entry.inUse = false;
  EXPECT_TRUE(Access::PushToStack(Interpreter(), entry));

  CStackData out;
  EXPECT_TRUE(Access::PopFromStack(Interpreter(), out));
  EXPECT_TRUE(out.name.IsEmpty());
  EXPECT_EQ(out.value, 0);
  EXPECT_EQ(out.position, 9U);
  EXPECT_TRUE(out.inUse) << "set on every push";
  EXPECT_TRUE(Access::PopFromStack(Interpreter(), out));
  EXPECT_EQ(out.name.ToUtf8(), "i");
  EXPECT_EQ(out.value, 2.5);
  EXPECT_EQ(out.position, 7U);
  EXPECT_TRUE(out.inUse);
}

TEST_F(ControlStackTest, nothing_can_be_popped_from_an_empty_stack) {
  CStackData out;
  out.name = u"as before";
  EXPECT_FALSE(Access::PopFromStack(Interpreter(), out));
  EXPECT_EQ(out.name.ToUtf8(), "as before");
}

TEST_F(ControlStackTest, the_stack_has_no_limit) {
  constexpr int kEntries = 100000;
  for (int i = 0; i < kEntries; ++i)
    EXPECT_TRUE(Access::PushToStack(Interpreter(), CString(), i, 0));
  CStackData out;
  for (int i = kEntries; i-- > 0;) {
    ASSERT_TRUE(Access::PopFromStack(Interpreter(), out));
    ASSERT_EQ(out.value, i);
  }
  EXPECT_FALSE(Access::PopFromStack(Interpreter(), out));
}

struct Skip {
  const char* name;
  std::u16string text;
  COMMAND_TYPE open;
  COMMAND_TYPE close;
  COMMAND_TYPE middle;
  int lastCommand;   // the word that it stopped on
  std::uint32_t end; // the position behind it
};

const Skip kSkips[] = {
    {"to endif", u"x endif y", COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE, COMMAND_ENDIF, 7},
    {"to else", u"x else y endif", COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE, COMMAND_ELSE, 6},
    {"past an else without a middle", u"else y endif", COMMAND_IF, COMMAND_ENDIF, COMMAND_NONE, COMMAND_ENDIF, 12},
    {"over a nested if", u"if a then b else c endif else", COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE, COMMAND_ELSE, 29},
    {"over nested loops", u"for i\nfor j\nnext\nnext\nnext z", COMMAND_FOR, COMMAND_NEXT, COMMAND_NONE, COMMAND_NEXT,
     26},
    {"words of other pairs do not count", u"for loop do next endif", COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE,
     COMMAND_ENDIF, 22},
    {"to the end of the program", u"x y z", COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE, COMMAND_END_OF_PROGRAM, 5},
    {"to endsub", u"x endsub endif", COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE, COMMAND_ENDSUB, 8},
    {"not to endfunction", u"endfunction endif", COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE, COMMAND_ENDIF, 17},
    {"words in texts do not count", u"\"endif\" endif", COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE, COMMAND_ENDIF, 13},
    {"words in comments do not count", u"# endif\nendif", COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE, COMMAND_ENDIF, 13},
    {"words behind rem do not count", u"rem endif\nendif", COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE, COMMAND_ENDIF, 15},
    {"the for of an open starts no loop", u"open \"x\" for append as 1\nnext", COMMAND_FOR, COMMAND_NEXT, COMMAND_NONE,
     COMMAND_NEXT, 29},
    {"a for behind an open's statement does", u"open \"x\" as 1 : for i = 1 to 2\nnext\nnext", COMMAND_FOR,
     COMMAND_NEXT, COMMAND_NONE, COMMAND_NEXT, 40},
    {"a for on the line behind an open does", u"open \"x\" as 1\nfor i = 1 to 2\nnext\nnext", COMMAND_FOR, COMMAND_NEXT,
     COMMAND_NONE, COMMAND_NEXT, 38},
    {"characters of no token are stepped over", u"_ . \\ endif", COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE, COMMAND_ENDIF,
     11},
    {"labels do not count", u"endif: endif", COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE, COMMAND_ENDIF, 12},
    {"any case", u"EndIf x", COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE, COMMAND_ENDIF, 5},
};

TEST_F(ControlStackTest, a_skip_ends_at_the_word_that_closes) {
  for (const Skip& skip : kSkips) {
    SCOPED_TRACE(skip.name);
    SetText(skip.text, true);
    EXPECT_TRUE(Access::FindLastPair(Interpreter(), skip.open, skip.close, skip.middle));
    EXPECT_EQ(State().token.command, skip.lastCommand);
    EXPECT_EQ(State().position, skip.end);
    EXPECT_TRUE(State().keepTokens) << "as before";
  }
}

TEST_F(ControlStackTest, a_remembered_skip_ends_like_the_first_one) {
  for (const Skip& skip : kSkips) {
    SCOPED_TRACE(skip.name);
    SetText(skip.text, true);
    Access::FindLastPair(Interpreter(), skip.open, skip.close, skip.middle);
    const brindle::TokenState first = State().token;
    const CString text = first.Text();
    const std::uint32_t start = first.token->start;
    ASSERT_NE(State().program->FindSkip(0, skip.open, skip.middle), nullptr);

    Access::Rewind(Interpreter(), 0);
    EXPECT_TRUE(Access::FindLastPair(Interpreter(), skip.open, skip.close, skip.middle));
    EXPECT_EQ(State().token.kind, first.kind);
    EXPECT_EQ(State().token.previousKind, first.previousKind);
    EXPECT_EQ(State().token.command, first.command);
    EXPECT_EQ(State().token.keyword, first.keyword);
    EXPECT_EQ(State().token.Text().ToUtf8(), text.ToUtf8());
    EXPECT_EQ(State().token.token->start, start);
    EXPECT_EQ(State().position, skip.end);
    Access::putback(Interpreter());
    EXPECT_EQ(State().position, start);
  }
}

TEST_F(ControlStackTest, skips_of_different_words_from_one_place_are_kept_apart) {
  SetText(u" x next loop else endif", true);
  struct Row {
    COMMAND_TYPE open, close, middle;
    std::uint32_t end;
  };
  const Row rows[] = {{COMMAND_FOR, COMMAND_NEXT, COMMAND_NONE, 7},
                      {COMMAND_DO, COMMAND_LOOP, COMMAND_NONE, 12},
                      {COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE, 17},
                      {COMMAND_IF, COMMAND_ENDIF, COMMAND_NONE, 23}};
  for (int round = 0; round < 2; ++round)
    for (const Row& row : rows) {
      State().position = 0;
      Access::FindLastPair(Interpreter(), row.open, row.close, row.middle);
      EXPECT_EQ(State().position, row.end);
    }
}

} // namespace
