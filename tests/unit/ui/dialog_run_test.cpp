// A running dialog: notifications and handlers, nesting, ending, aborting.
#include "ui/dialog_script_test.h"

#include <stdexcept>

namespace {

using Strings = std::vector<std::string>;

class DialogRun : public DialogScriptTest {
protected:
  // A dialog with the given lines, and procedures that say what they are given.
  void Show(const std::string& lines) {
    Run("dialog \"D\", 0, 0, 100, 100\n" + lines +
        "enddialog\n"
        "print \"end\"\n"
        "end\n"
        "sub told(v)\nprint \"told \"; v\nendsub\n"
        "sub opened(v)\nprint \"opened \"; v\nendsub\n"
        "sub closed(v)\nprint \"closed \"; v\nendsub\n"
        "sub fails(v)\nclosedialog closedialog alter 9999\nendalter\nprint \"on\"\nendsub\n");
  }
};

TEST_F(DialogRun, click_gives_the_check_state) {
  Then([](PlayedDialog& dialog) {
    dialog.Click(10);
    dialog.Check(11, true);
    dialog.Check(11, false);
    dialog.Click(12); // has no handler
    dialog.Click(4711);
  });
  Show("control button \"b\", 10, 0, 0, 1, 1, \"told\"\n"
       "control checkbox \"c\", 11, 0, 0, 1, 1, \"told\"\n"
       "control checkbox \"c\", 12, 0, 0, 1, 1\n");
  EXPECT_EQ(Output(), "told 0\ntold 1\ntold 0\nend\n");
}

TEST_F(DialogRun, selection_gives_the_text_of_the_item_and_none_gives_nothing) {
  Then([](PlayedDialog& dialog) {
    for (const int id : {10, 11}) {
      dialog.At(id).items = {CString(u"zero"), CString(u"one")};
      dialog.Select(id, {1});
      dialog.Select(id, {});
      dialog.Select(id, {0});
    }
  });
  Show("control listbox \"\", 10, 0, 0, 1, 1, \"told\"\n"
       "control combobox \"\", 11, 0, 0, 1, 1, \"told\"\n");
  EXPECT_EQ(Output(), "told one\ntold zero\ntold one\ntold zero\nend\n");
}

TEST_F(DialogRun, multiple_selection_gives_the_text_of_the_toggled_item) {
  Then([](PlayedDialog& dialog) {
    dialog.At(10).items = {CString(u"zero"), CString(u"one"), CString(u"two")};
    dialog.Select(10, {1});
    dialog.Select(10, {0, 1});
    dialog.Select(10, {0});
    dialog.Select(10, {0}); // nothing toggled
    dialog.Select(10, {});
  });
  Show("control multilistbox \"\", 10, 0, 0, 1, 1, \"told\"\n");
  EXPECT_EQ(Output(), "told one\ntold zero\ntold one\ntold zero\nend\n");
}

TEST_F(DialogRun, multiple_selection_made_by_the_script_is_not_taken_for_the_users) {
  Then([](PlayedDialog& dialog) { dialog.Select(10, {1}); });
  Run("dialog \"D\", 0, 0, 100, 100\n"
      "control multilistbox \"\", 10, 0, 0, 1, 1, \"told\"\n"
      "oninit fill\n"
      "enddialog\nend\n"
      "sub fill(v)\nalter 10\nvalue \"zero\"\nvalue \"one\"\nvalue \"two\"\ndim s[2]\nselection 0\nendalter\nendsub\n"
      "sub told(v)\nprint v\nendsub\n");
  EXPECT_EQ(Errors(), Numbers{45}); // "dim" is no alteration
  m_dialogs.Forget();
  Then([](PlayedDialog& dialog) { dialog.Select(10, {0, 1}); });
  Run("dialog \"D\", 0, 0, 100, 100\n"
      "control multilistbox \"\", 10, 0, 0, 1, 1, \"told\"\n"
      "oninit fill\n"
      "enddialog\nend\n"
      "sub fill(v)\nalter 10\nvalue \"zero\"\nvalue \"one\"\nselection 1\nendalter\nendsub\n"
      "sub told(v)\nprint v\nendsub\n",
      "again.bas");
  EXPECT_EQ(Output(), "zero\n");
}

TEST_F(DialogRun, selection_code_of_another_class_does_nothing) {
  Then([](PlayedDialog& dialog) {
    for (const int id : {10, 11, 12}) {
      dialog.At(id).items = {CString(u"zero")};
      dialog.Select(id, {0});
    }
  });
  Show("control treeview \"\", 10, 0, 0, 1, 1, \"told\"\n"
       "control tabcontrol \"\", 11, 0, 0, 1, 1, \"told\"\n"
       "control edittext \"\", 12, 0, 0, 1, 1, \"told\"\n");
  EXPECT_EQ(Output(), "end\n");
}

TEST_F(DialogRun, text_change_gives_the_window_text) {
  Then([](PlayedDialog& dialog) {
    dialog.Type(10, u"new text");
    dialog.Type(10, u"");
    dialog.Type(11, u"12");
  });
  Show("control edittext \"old\", 10, 0, 0, 1, 1, \"told\"\n"
       "control editnumber \"\", 11, 0, 0, 1, 1, \"told\"\n");
  EXPECT_EQ(Output(), "told new text\ntold \ntold 12\nend\n");
}

TEST_F(DialogRun, other_codes_do_nothing) {
  Then([](PlayedDialog& dialog) {
    for (const int code : {2, 3, 5, 6, 0x100, 0x200, 0x301, 0x400, -1})
      dialog.Command(10, code);
  });
  Show("control edittext \"old\", 10, 0, 0, 1, 1, \"told\"\n");
  EXPECT_EQ(Output(), "end\n");
}

TEST_F(DialogRun, notifications_of_other_kinds_give_what_controlvalue_gives) {
  Then([](PlayedDialog& dialog) {
    dialog.At(10).position = 42;
    dialog.At(11).date = CString(u"2024-02-29 01:02:03");
    dialog.At(12).items = {CString(u"a"), CString(u"a\\b")};
    dialog.At(12).selection = {1};
    dialog.At(13).items = {CString(u"x"), CString(u"y")};
    dialog.At(13).selection = {1};
    for (const int id : {10, 11, 12, 13, 14, 4711})
      dialog.Notify(id);
  });
  Show("control sliderhorz \"\", 10, 0, 0, 1, 1, \"told\"\n"
       "control datetime \"\", 11, 0, 0, 1, 1, \"told\"\n"
       "control treeview \"\", 12, 0, 0, 1, 1, \"told\"\n"
       "control tabcontrol \"\", 13, 0, 0, 1, 1, \"told\"\n"
       "control slidervert \"\", 14, 0, 0, 1, 1\n");
  EXPECT_EQ(Output(), "told 42\ntold 2024-02-29 01:02:03\ntold a\\b\ntold 1\nend\n");
}

TEST_F(DialogRun, handler_is_an_event_before_it_is_a_procedure) {
  const auto click = [](PlayedDialog& dialog) { dialog.Click(10); };
  const std::string program = "dialog \"D\", 0, 0, 100, 100\n"
                              "control button \"b\", 10, 0, 0, 1, 1, \"Pressed\"\n"
                              "enddialog\nend\n"
                              "sub pressed(v)\nprint \"procedure \"; v\nendsub\n"
                              "sub first(v)\nprint \"first \"; v\nendsub\n"
                              "sub other(v)\nprint \"other \"; v\nendsub\n";
  Then(click);
  Run(program);
  EXPECT_EQ(Output(), "procedure 0\n");
  m_dialogs.Forget();
  Then(click);
  Run("event create pressed first\nevent create PRESSED other\n" + program, "events.bas");
  EXPECT_EQ(Output(), "first 0\nother 0\n");
  m_dialogs.Forget();
  // An event without handlers exists all the same.
  Then(click);
  Run("event remove pressed first\nevent remove pressed other\n" + program, "none.bas");
  EXPECT_EQ(Output(), "");
}

TEST_F(DialogRun, name_that_is_neither_event_nor_procedure_does_nothing) {
  Then([](PlayedDialog& dialog) {
    dialog.Click(10);
    dialog.Click(11);
  });
  Show("control button \"b\", 10, 0, 0, 1, 1, \"nowhere\"\n"
       "control button \"b\", 11, 0, 0, 1, 1, \"\"\n"
       "oninit nowhere\nonexit nowhere\n");
  EXPECT_EQ(Output(), "end\n");
  EXPECT_EQ(Errors(), Numbers());
}

TEST_F(DialogRun, oninit_and_onexit_get_the_result) {
  for (const int result : {1, 2}) {
    m_dialogs.Forget();
    Then([result](PlayedDialog& dialog) {
      dialog.Click(result);
      EXPECT_TRUE(dialog.IsEnded());
    });
    Show("oninit opened\nonexit closed\n");
    EXPECT_EQ(Output(), "opened 0\nclosed " + std::to_string(result) + "\nend\n");
  }
}

TEST_F(DialogRun, closing_without_a_button_is_a_cancel) {
  Show("onexit closed\n");
  EXPECT_EQ(Output(), "closed 2\nend\n");
}

TEST_F(DialogRun, ok_raises_its_handler_before_the_dialog_ends) {
  Then([](PlayedDialog& dialog) { dialog.Click(1); });
  Show("control okbutton \"b\", 10, 0, 0, 1, 1, \"told\"\nonexit closed\n");
  EXPECT_EQ(Output(), "told 0\nclosed 1\nend\n");
}

TEST_F(DialogRun, list_of_open_dialogs_follows_opening_and_closing) {
  std::vector<std::size_t> open;
  Then([&](PlayedDialog& outer) {
    open.push_back(OpenDialogs());
    Then([&](PlayedDialog& inner) {
      open.push_back(OpenDialogs());
      inner.Click(1);
    });
    outer.Click(10);
    open.push_back(OpenDialogs());
  });
  Run("dialog \"Outer\", 0, 0, 1, 1\ncontrol button \"b\", 10, 0, 0, 1, 1, \"more\"\nenddialog\nend\n"
      "sub more(v)\ndialog \"Inner\", 0, 0, 1, 1\nenddialog\nendsub\n");
  EXPECT_EQ(open, (std::vector<std::size_t>{1, 2, 1}));
  EXPECT_EQ(OpenDialogs(), 0U);
}

TEST_F(DialogRun, focus_and_closing_go_to_the_last_opened_dialog) {
  Then([&](PlayedDialog& outer) {
    Then([](PlayedDialog& inner) {
      inner.Click(11);
      EXPECT_TRUE(inner.IsEnded());
    });
    outer.Click(10);
    EXPECT_FALSE(outer.IsEnded());
    m_dialogs.calls.emplace_back("back");
    outer.Click(11);
    EXPECT_TRUE(outer.IsEnded());
  });
  Run("dialog \"Outer\", 0, 0, 1, 1\n"
      "control button \"b\", 10, 0, 0, 1, 1, \"more\"\n"
      "control button \"b\", 11, 0, 0, 1, 1, \"leave\"\nenddialog\nend\n"
      "sub more(v)\ndialog \"Inner\", 0, 0, 1, 1\n"
      "control button \"b\", 11, 0, 0, 1, 1, \"leave\"\nenddialog\nendsub\n"
      "sub leave(v)\nsetfocus 10\nsetfocus 11.9\nclosedialog\nclosedialog\nendsub\n");
  EXPECT_EQ(m_dialogs.calls, (Strings{"opened Outer", "opened Inner", "focus 11", "closed Inner 1", "back", "focus 10",
                                      "focus 11", "closed Outer 1"}));
  EXPECT_EQ(Errors(), Numbers());
}

TEST_F(DialogRun, refused_dialog_reports_42_and_the_run_goes_on) {
  m_dialogs.refusesDialogs = true;
  Show("oninit opened\nonexit closed\n");
  EXPECT_EQ(Errors(), Numbers{42});
  EXPECT_EQ(Output(), "end\n");
  EXPECT_EQ(OpenDialogs(), 0U);
}

TEST_F(DialogRun, abort_in_a_handler_closes_the_dialog_and_ends_the_run) {
  m_dialogs.CancelErrors();
  Then([](PlayedDialog& dialog) {
    dialog.Click(10);
    EXPECT_TRUE(dialog.IsEnded());
    dialog.Click(11); // what a window system still had to say
    dialog.Notify(11);
    dialog.Menu(CDialogWindow::kWindow, 0);
  });
  Show("control button \"b\", 10, 0, 0, 1, 1, \"fails\"\n"
       "control button \"b\", 11, 0, 0, 1, 1, \"told\"\n"
       "onexit closed\n");
  EXPECT_EQ(Errors(), Numbers{44});
  EXPECT_EQ(Output(), "");
  EXPECT_EQ(OpenDialogs(), 0U);
  // The interpreter is as good as new.
  m_dialogs.Forget();
  Then([](PlayedDialog& dialog) { dialog.Click(11); });
  Run("dialog \"D\", 0, 0, 1, 1\ncontrol button \"b\", 11, 0, 0, 1, 1, \"told\"\nenddialog\n", "again.bas");
  EXPECT_EQ(Output(), "told 0\n");
}

TEST_F(DialogRun, abort_in_oninit_shows_nothing_more) {
  m_dialogs.CancelErrors();
  bool played = false;
  Then([&](PlayedDialog&) { played = true; });
  Show("oninit fails\nonexit closed\n");
  EXPECT_EQ(Errors(), Numbers{44});
  EXPECT_FALSE(played);
  EXPECT_EQ(Output(), "");
  EXPECT_EQ(OpenDialogs(), 0U);
}

TEST_F(DialogRun, abort_in_onexit_raises_no_onexit_of_later_pages) {
  m_dialogs.CancelErrors();
  Run("propertysheet \"S\"\npage \"1\"\nonexit fails\nendpage\npage \"2\"\nonexit closed\nendpage\nenddialog\n"
      "print \"end\"\nend\n"
      "sub closed(v)\nprint \"closed\"\nendsub\n"
      "sub fails(v)\nalter 9999\nendalter\nendsub\n");
  EXPECT_EQ(Errors(), Numbers{44});
  EXPECT_EQ(Output(), "");
  EXPECT_EQ(OpenDialogs(), 0U);
}

TEST_F(DialogRun, abort_in_a_nested_dialog_closes_both) {
  m_dialogs.CancelErrors();
  Then([&](PlayedDialog& outer) {
    Then([](PlayedDialog& inner) {
      inner.Click(10);
      EXPECT_TRUE(inner.IsEnded());
    });
    outer.Click(10);
    EXPECT_TRUE(outer.IsEnded());
  });
  Run("dialog \"Outer\", 0, 0, 1, 1\ncontrol button \"b\", 10, 0, 0, 1, 1, \"more\"\nonexit closed\nenddialog\n"
      "print \"end\"\nend\n"
      "sub more(v)\ndialog \"Inner\", 0, 0, 1, 1\n"
      "control button \"b\", 10, 0, 0, 1, 1, \"fails\"\nonexit closed\nenddialog\nprint \"behind\"\nendsub\n"
      "sub closed(v)\nprint \"closed\"\nendsub\n"
      "sub fails(v)\nalter 9999\nendalter\nendsub\n");
  EXPECT_EQ(Output(), "");
  EXPECT_EQ(OpenDialogs(), 0U);
}

TEST_F(DialogRun, exception_of_the_window_system_reaches_the_host_and_leaves_nothing_behind) {
  m_dialogs.CancelErrors();
  Then([](PlayedDialog& dialog) {
    dialog.Click(10); // aborts, which the window system does not live to see
    throw std::runtime_error("no window system any more");
  });
  EXPECT_THROW(Show("control button \"b\", 10, 0, 0, 1, 1, \"fails\"\n"), std::runtime_error);
  EXPECT_EQ(OpenDialogs(), 0U);
  m_dialogs.Forget();
  Run("print \"one\"\nprint \"two\"\n", "again.bas");
  EXPECT_EQ(Output(), "one\ntwo\n");
}

TEST_F(DialogRun, error_in_a_handler_that_is_answered_with_ok_leaves_the_dialog_up) {
  Then([](PlayedDialog& dialog) {
    dialog.Click(10);
    EXPECT_FALSE(dialog.IsEnded());
  });
  Run("dialog \"D\", 0, 0, 1, 1\ncontrol button \"b\", 10, 0, 0, 1, 1, \"fails\"\nenddialog\nprint \"end\"\nend\n"
      "sub fails(v)\nalter 9999\ntitle \"x\"\nendalter\nprint \"on\"\nendsub\n");
  EXPECT_EQ(Errors(), Numbers{44});
  EXPECT_EQ(Output(), "on\nend\n");
}

TEST_F(DialogRun, end_in_a_handler_ends_the_run_when_the_dialog_is_closed) {
  Then([](PlayedDialog& dialog) {
    dialog.Click(10);
    EXPECT_FALSE(dialog.IsEnded());
    dialog.Click(11);
  });
  Run("dialog \"D\", 0, 0, 1, 1\n"
      "control button \"b\", 10, 0, 0, 1, 1, \"ends\"\n"
      "control button \"b\", 11, 0, 0, 1, 1, \"told\"\n"
      "onexit closed\nenddialog\nprint \"never\"\nend\n"
      "sub ends(v)\nprint \"ending\"\nend\nprint \"never\"\nendsub\n"
      "sub told(v)\nprint \"told\"\nprint \"in full\"\nendsub\n"
      "sub closed(v)\nprint \"closed \"; v\nendsub\n");
  EXPECT_EQ(Output(), "ending\ntold\nin full\nclosed 2\n");
}

TEST_F(DialogRun, value_stack_is_as_it_was) {
  int whileOpen = -1;
  Interpreter().AddCustomFunction(
      CString(u"stacksize"),
      [](CBrindle* interpreter, CBasicVariableArray&, int) {
        return CBasicVariable(Access::State(*interpreter).m_arrTemporaries.GetSize());
      },
      0, nullptr);
  Then([&](PlayedDialog& dialog) {
    whileOpen = State().m_arrTemporaries.GetSize();
    dialog.Click(1);
  });
  Run("before = stacksize()\n"
      "x = 1\n"
      "dialog \"D\", x, x, x, x, x, \"f\"\n"
      "control button x, x, x, x, x, x, \"h\"\n"
      "enddialog\n"
      "after = stacksize()\n");
  EXPECT_EQ(whileOpen, 0);
  EXPECT_EQ(TextOf(u"after"), TextOf(u"before"));
}

TEST_F(DialogRun, pages_of_a_property_sheet_open_and_close_in_order) {
  Then([](PlayedDialog& sheet) {
    EXPECT_TRUE(sheet.HasControl(10));
    EXPECT_TRUE(sheet.HasControl(20));
    sheet.Click(20);
    sheet.Click(1);
  });
  Run("propertysheet \"Sheet\"\n"
      "page \"1\"\ncontrol edittext \"one\", 10, 0, 0, 1, 1\noninit a\nonexit b\nendpage\n"
      "page \"2\"\nendpage\n"
      "page \"3\"\noninit c\nonexit d\ncontrol button \"b\", 20, 0, 0, 1, 1, \"reads\"\nendpage\n"
      "enddialog\nprint \"end\"\nend\n"
      "sub a(v)\nprint \"a \"; v\nendsub\nsub b(v)\nprint \"b \"; v\nendsub\n"
      "sub c(v)\nprint \"c \"; v\nendsub\nsub d(v)\nprint \"d \"; v\nendsub\n"
      "sub reads(v)\nprint controlvalue(10)\nendsub\n");
  EXPECT_EQ(Output(), "a 0\nc 0\none\nb 1\nd 1\nend\n");
}

TEST_F(DialogRun, menu_entries_raise_their_handlers) {
  Then([](PlayedDialog& dialog) {
    dialog.Menu(10, 1);
    dialog.Menu(CDialogWindow::kWindow, 0);
    dialog.Menu(10, 0);
    dialog.Menu(10, 2); // none of these are there
    dialog.Menu(10, -1);
    dialog.Menu(11, 0);
    dialog.Menu(CDialogWindow::kWindow, 1);
  });
  Run("dialog \"D\", 0, 0, 1, 1\ncontrol button \"b\", 10, 0, 0, 1, 1\noninit fill\nenddialog\nend\n"
      "sub fill(v)\nalter 10\nmenuitem \"Copy\", \"told\"\nmenuitem \"Paste\", \"other\"\nendalter\n"
      "alter window\nmenuitem \"About\", \"told\"\nendalter\nendsub\n"
      "sub told(v)\nprint \"told \"; v\nendsub\nsub other(v)\nprint \"other \"; v\nendsub\n");
  EXPECT_EQ(Output(), "other Paste\ntold About\ntold Copy\n");
  EXPECT_EQ(m_dialogs.calls, (Strings{"opened D", "menu 10 Copy", "menu 10 Paste", "menu -1 About", "closed D 2"}));
}

TEST_F(DialogRun, timers_tick_while_a_dialog_waits) {
  Then([&](PlayedDialog& dialog) {
    ASSERT_EQ(m_dialogs.timers.size(), 1U);
    const auto tick = m_dialogs.timers.begin()->second;
    tick();
    EXPECT_FALSE(dialog.IsEnded());
    tick();
    EXPECT_TRUE(dialog.IsEnded());
  });
  Run("global ticks\nticks = 0\nevent create OnTimer tick\ntimerstart 10\n"
      "dialog \"D\", 0, 0, 1, 1\nonexit closed\nenddialog\nprint \"end\"\nend\n"
      "sub tick(v)\nticks = ticks + 1\nprint \"tick \"; int(ticks)\n"
      "if ticks = 2 then\nclosedialog\nendif\nendsub\n"
      "sub closed(v)\nprint \"closed \"; v\nendsub\n");
  EXPECT_EQ(Output(), "tick 1\ntick 2\nclosed 1\nend\n");
}

TEST_F(DialogRun, abort_in_a_timer_closes_the_dialog) {
  m_dialogs.CancelErrors();
  Then([&](PlayedDialog& dialog) {
    m_dialogs.timers.begin()->second();
    EXPECT_TRUE(dialog.IsEnded());
  });
  Run("event create OnTimer tick\ntimerstart 10\n"
      "dialog \"D\", 0, 0, 1, 1\nonexit closed\nenddialog\nprint \"never\"\nend\n"
      "sub tick(v)\nalter 9999\nendalter\nendsub\n"
      "sub closed(v)\nprint \"never\"\nendsub\n");
  EXPECT_EQ(Errors(), Numbers{44});
  EXPECT_EQ(Output(), "");
  EXPECT_EQ(OpenDialogs(), 0U);
}

TEST_F(DialogRun, dialog_that_opens_itself_for_ever_ends_with_error_50) {
  std::function<void(PlayedDialog&)> again = [&](PlayedDialog& dialog) {
    Then(again);
    dialog.Click(10);
  };
  Then(again);
  m_dialogs.defaultErrorAnswer = CUserInterface::ErrorAnswer::Ok;
  Run("call more(0)\nend\n"
      "sub more(v)\ndialog \"D\", 0, 0, 1, 1\ncontrol button \"b\", 10, 0, 0, 1, 1, \"more\"\nenddialog\nendsub\n");
  EXPECT_EQ(Errors(), Numbers{50});
  EXPECT_EQ(OpenDialogs(), 0U);
}

} // namespace
