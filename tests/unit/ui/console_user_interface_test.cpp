#include "brindle/console_user_interface.h"

#include "support/redirected_streams.h"
#include "support/text_printing.h"

#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

namespace {

using Policy = CConsoleUserInterface::ErrorPolicy;
using Answer = CUserInterface::ErrorAnswer;

struct Shown {
  std::string output;
  std::string error;
};

// Runs something on a console of its own with this input.
Shown OnConsole(std::string_view input, const std::function<void(CConsoleUserInterface&)>& use,
                Policy policy = Policy::Automatic) {
  RedirectedStreams redirected(input);
  {
    CConsoleUserInterface console(policy);
    use(console);
  }
  redirected.Stop();
  const Shown shown{redirected.Output(), redirected.Error()};
  if (testing::Test::HasFailure())
    std::cout << shown.output << shown.error; // a failed check of `use` was reported there
  return shown;
}

TEST(Console, messages_go_to_standard_output_byte_for_byte) {
  const Shown shown = OnConsole("", [](CConsoleUserInterface& console) {
    console.ShowMessage(CString(u"a\n"));
    console.ShowMessage(CString(u"ä€\U0001F600"));
    console.ShowMessage(CString());
    console.ShowMessage(CString(u"\r\n\t"));
    console.ShowMessage(CString(u"a\0b", 3));
  });
  EXPECT_EQ(shown.output, std::string("a\nä€😀\r\n\ta") + '\0' + "b");
  EXPECT_EQ(shown.error, "");
}

TEST(Console, notices_and_errors_go_to_standard_error_with_a_line_end) {
  int errors = 0;
  const Shown shown = OnConsole("", [&](CConsoleUserInterface& console) {
    EXPECT_EQ(console.GetNumberOfErrors(), 0);
    console.ShowMessage(CString(u"printed"));
    console.ShowNotice(CString(u"a notice"));
    EXPECT_EQ(console.ShowError(CString(u"Syntax error\n\nx = 1")), Answer::Cancel);
    errors = console.GetNumberOfErrors();
  });
  EXPECT_EQ(shown.output, "printed");
  EXPECT_EQ(shown.error, "a notice\nSyntax error\n\nx = 1\n");
  EXPECT_EQ(errors, 2);
}

TEST(Console, printed_text_stands_before_the_error_that_follows) {
  std::string atError;
  RedirectedStreams redirected("");
  {
    CConsoleUserInterface console;
    console.ShowMessage(CString(u"before"));
    console.ShowNotice(CString(u"notice"));
    atError = redirected.Output();
  }
  redirected.Stop();
  EXPECT_EQ(atError, "before");
}

TEST(Console, error_policy_decides_how_a_box_is_answered) {
  struct Row {
    const char* name;
    Policy policy;
    const char* input;
    Answer expected;
  };
  const Row rows[] = {
      {"automatic without a terminal", Policy::Automatic, "ok\n", Answer::Cancel},
      {"abort", Policy::Abort, "ok\n", Answer::Cancel},
      {"continue", Policy::Continue, "c\n", Answer::Ok},
      {"end of input", Policy::Ask, "", Answer::Cancel},
      {"empty line", Policy::Ask, "\n", Answer::Ok},
      {"c", Policy::Ask, "c\n", Answer::Cancel},
      {"C", Policy::Ask, "C\n", Answer::Cancel},
      {"cancel", Policy::Ask, "cancel\n", Answer::Cancel},
      {"CANCEL", Policy::Ask, "CaNcEl\r\n", Answer::Cancel},
      {"c without line end", Policy::Ask, "c", Answer::Cancel},
      {"cancel and more", Policy::Ask, "cancelled\n", Answer::Ok},
      {"ok", Policy::Ask, "ok\n", Answer::Ok},
      {"anything", Policy::Ask, "x y z\n", Answer::Ok},
  };
  for (const Row& row : rows) {
    auto answer = Answer::Ok;
    const Shown shown = OnConsole(
        row.input, [&](CConsoleUserInterface& console) { answer = console.ShowError(CString(u"text")); }, row.policy);
    EXPECT_EQ(answer, row.expected) << row.name;
    EXPECT_EQ(shown.error, "text\n") << row.name; // no prompt where no person reads it
    EXPECT_EQ(shown.output, "") << row.name;
  }
}

TEST(Console, error_policy_can_be_changed) {
  OnConsole("", [](CConsoleUserInterface& console) {
    EXPECT_EQ(console.ShowError(CString(u"text")), Answer::Cancel);
    console.SetErrorPolicy(Policy::Continue);
    EXPECT_EQ(console.ShowError(CString(u"text")), Answer::Ok);
    EXPECT_EQ(console.GetNumberOfErrors(), 2);
  });
}

TEST(Console, policies_that_do_not_ask_leave_the_input) {
  OnConsole("yes\n", [](CConsoleUserInterface& console) {
    console.SetErrorPolicy(Policy::Continue);
    EXPECT_EQ(console.ShowError(CString(u"text")), Answer::Ok);
    console.SetErrorPolicy(Policy::Abort);
    EXPECT_EQ(console.ShowError(CString(u"text")), Answer::Cancel);
    EXPECT_TRUE(console.AskYesNo(CString(u"question"), CString()));
  });
}

TEST(Console, question_is_answered_by_y_or_yes) {
  struct Row {
    const char* input;
    bool expected;
  };
  const Row rows[] = {{"y\n", true}, {"Y\n", true},     {"yes\n", true},   {"YeS\r\n", true},
                      {"y", true},   {"n\n", false},    {"no\n", false},   {"\n", false},
                      {"", false},   {"yeah\n", false}, {"yes!\n", false}, {"1\n", false}};
  for (const Row& row : rows) {
    bool answer = !row.expected;
    const Shown shown = OnConsole(row.input, [&](CConsoleUserInterface& console) {
      answer = console.AskYesNo(CString(u"Go on?"), CString(u"Title"));
    });
    EXPECT_EQ(answer, row.expected) << row.input;
    EXPECT_NE(shown.error.find("Go on?"), std::string::npos);
    EXPECT_NE(shown.error.find("Title"), std::string::npos);
    EXPECT_EQ(shown.output, "");
  }
}

TEST(Console, file_is_a_line_of_input) {
  struct Row {
    const char* input;
    std::optional<CString> expected;
  };
  const Row rows[] = {{"some file.txt\n", CString(u"some file.txt")},
                      {"ä.txt\n", CString(u"ä.txt")},
                      {"last", CString(u"last")},
                      {"\n", std::nullopt},
                      {"\r\n", std::nullopt},
                      {"", std::nullopt}};
  for (const Row& row : rows) {
    std::optional<CString> chosen;
    const Shown shown = OnConsole(row.input, [&](CConsoleUserInterface& console) { chosen = console.ChooseFile({}); });
    EXPECT_EQ(chosen, row.expected) << row.input;
    EXPECT_NE(shown.error, "");
    EXPECT_EQ(shown.output, "");
  }
}

TEST(Console, menu_entry_is_chosen_by_its_index) {
  CStringArray entries;
  for (const char16_t* entry : {u"first", u"-", u"third"})
    entries.Add(CString(entry));
  struct Row {
    const char* input;
    int expected;
  };
  const Row rows[] = {{"0\n", 0},    {"2\n", 2},    {"2", 2},
                      {"", -1},      {"1\n2\n", 2}, {"3\n0\n", 0},
                      {"x\n2\n", 2}, {"3\n", -1},   {"99999999999999999999\n0\n", 0},
                      {"1\n", -1}};
  for (const Row& row : rows) {
    int chosen = -2;
    const Shown shown =
        OnConsole(row.input, [&](CConsoleUserInterface& console) { chosen = console.ShowPopupMenu(entries); });
    EXPECT_EQ(chosen, row.expected) << row.input;
    EXPECT_NE(shown.error.find("first"), std::string::npos);
    EXPECT_NE(shown.error.find("third"), std::string::npos);
    EXPECT_EQ(shown.output, "");
  }
}

TEST(Console, answers_are_taken_line_by_line) {
  OnConsole("y\nfile\n0\nc\n", [](CConsoleUserInterface& console) {
    CStringArray entries;
    entries.Add(CString(u"entry"));
    console.SetErrorPolicy(Policy::Ask);
    EXPECT_TRUE(console.AskYesNo(CString(u"?"), CString()));
    EXPECT_EQ(console.ChooseFile({}), CString(u"file"));
    EXPECT_EQ(console.ShowPopupMenu(entries), 0);
    EXPECT_EQ(console.ShowError(CString(u"text")), Answer::Cancel);
    EXPECT_FALSE(console.AskYesNo(CString(u"?"), CString()));
    EXPECT_EQ(console.ShowPopupMenu(entries), -1);
  });
}

TEST(Console, timers_tick_while_a_prompt_waits) {
  RedirectedStreams redirected;
  int ticks = 0;
  bool answer = false;
  {
    CConsoleUserInterface console;
    unsigned timer = 0;
    timer = console.StartTimer(5, [&] {
      if (++ticks == 3) {
        console.StopTimer(timer);
        redirected.Feed("yes\n");
      }
    });
    EXPECT_NE(timer, 0U);
    answer = console.AskYesNo(CString(u"Go on?"), CString());
  }
  redirected.Stop();
  EXPECT_EQ(ticks, 3);
  EXPECT_TRUE(answer);
  EXPECT_EQ(redirected.Error().find("Go on?"), redirected.Error().rfind("Go on?")); // asked once
}

TEST(Console, tick_may_print_and_ask_itself) {
  RedirectedStreams redirected;
  bool inner = false;
  bool outer = true;
  {
    CConsoleUserInterface console;
    unsigned timer = 0;
    timer = console.StartTimer(5, [&] {
      console.StopTimer(timer);
      console.ShowMessage(CString(u"tick\n"));
      redirected.Feed("y\nn\n");
      inner = console.AskYesNo(CString(u"inner"), CString());
    });
    outer = console.AskYesNo(CString(u"outer"), CString());
  }
  redirected.Stop();
  EXPECT_TRUE(inner);
  EXPECT_FALSE(outer);
  EXPECT_EQ(redirected.Output(), "tick\n");
}

TEST(Console, serving_ends_with_the_input_and_ticks_meanwhile) {
  RedirectedStreams redirected;
  int ticks = 0;
  int ticksAfter = 0;
  {
    CConsoleUserInterface console;
    const unsigned timer = console.StartTimer(5, [&] {
      ++ticks;
      if (ticks == 2)
        redirected.Feed("some line\n");
      if (ticks == 4)
        redirected.EndInput();
    });
    EXPECT_NE(timer, 0U);
    console.ServeUntilEndOfInput();
    ticksAfter = ticks;
    console.ServeUntilEndOfInput(); // the end stays
  }
  redirected.Stop();
  EXPECT_EQ(ticksAfter, 4);
  EXPECT_EQ(ticks, 4);
}

TEST(Console, no_tick_comes_after_its_timer_was_stopped) {
  RedirectedStreams redirected;
  int stopped = 0;
  {
    CConsoleUserInterface console;
    const unsigned timer = console.StartTimer(1, [&] { ++stopped; });
    console.StopTimer(timer);
    console.StopTimer(timer);
    console.StopTimer(12345);
    EXPECT_NE(console.StartTimer(30, [&] { redirected.EndInput(); }), 0U);
    console.ServeUntilEndOfInput();
  }
  redirected.Stop();
  EXPECT_EQ(stopped, 0);
}

TEST(Console, line_that_is_not_utf8_is_read_as_windows_1252) {
  std::optional<CString> chosen;
  OnConsole("\xE4\x80.txt\n", [&](CConsoleUserInterface& console) { chosen = console.ChooseFile({}); });
  EXPECT_EQ(chosen, CString(u"ä€.txt"));
}

} // namespace
