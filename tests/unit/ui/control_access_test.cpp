// Functions that look at the dialog that runs, or put up small boxes.
#include "ui/dialog_script_test.h"

namespace {

using Strings = std::vector<std::string>;

class ControlAccess : public DialogScriptTest {
protected:
  // Runs the lines as a handler of a dialog with a few controls.
  void InDialog(const std::string& lines) {
    m_dialogs.Forget();
    Run("dialog \"D\", 0, 0, 1, 1\n"
        "control edittext \"text\", 10, 0, 0, 1, 1\n"
        "control listbox \"\", 11, 0, 0, 1, 1\n"
        "control button \"b\", 12, 0, 0, 1, 1, \"looks\"\n"
        "oninit looks\nenddialog\nprint \"on\"\nend\n"
        "sub looks(v)\n" +
        lines + "\nendsub\n");
  }
};

TEST_F(ControlAccess, controlvalue_reports_what_is_missing) {
  Run("print controlvalue(10)\n");
  EXPECT_EQ(Errors(), Numbers{43});
  m_dialogs.Forget();
  Run("print controlvalue()\n", "none.bas");
  EXPECT_EQ(Errors(), Numbers{24});
  struct Row {
    const char* call;
    int error;
  };
  const Row rows[] = {{"controlvalue()", 24},         {"controlvalue(99)", 44},
                      {"controlvalue(0 - 1)", 44},    {"controlvalue(10, \"colour\")", 45},
                      {"controlvalue(10, \"\")", 45}, {"controlvalue(99, \"colour\")", 44}};
  for (const Row& row : rows) {
    InDialog(std::string("x = ") + row.call);
    EXPECT_EQ(Errors().front(), row.error) << row.call;
    EXPECT_EQ(Output(), "on\n") << row.call;
  }
}

TEST_F(ControlAccess, second_word_ignores_case) {
  InDialog("print controlvalue(10, \"TEXT\"); controlvalue(11, \"Selection\")");
  EXPECT_EQ(Output(), "text-1\non\n");
}

TEST_F(ControlAccess, closed_dialog_is_asked_no_more) {
  InDialog("x = 1");
  Run("print controlvalue(10)\n", "behind.bas");
  EXPECT_EQ(Errors(), Numbers{43});
}

TEST_F(ControlAccess, closedialog_without_a_dialog_reports_43) {
  Run("closedialog\nprint \"on\"\n");
  EXPECT_EQ(Errors(), Numbers{43});
  EXPECT_EQ(Output(), "on\n");
}

TEST_F(ControlAccess, setfocus_on_nothing_fails_quietly) {
  Run("setfocus 10\nprint \"on\"\n");
  EXPECT_EQ(Errors(), Numbers());
  EXPECT_EQ(Output(), "on\n");
  m_dialogs.calls.clear();
  InDialog("setfocus 99\nsetfocus 0 - 1\nsetfocus 12.7");
  EXPECT_EQ(Errors(), Numbers());
  EXPECT_EQ(m_dialogs.calls, (Strings{"opened D", "focus 12", "closed D 2"}));
}

TEST_F(ControlAccess, handles_are_not_0_when_there_is_something) {
  Run("print getwindowhandle(); getwindowhandle(10)\n");
  EXPECT_EQ(Output(), "00\n");
  InDialog("print getwindowhandle(); \" \"; getwindowhandle(10); \" \"; getwindowhandle(99)");
  EXPECT_EQ(Output(), "77 87 0\non\n");
  m_dialogs.handle = 0x100000000;
  InDialog("print getwindowhandle()");
  EXPECT_EQ(Output(), "1\non\n");
}

TEST_F(ControlAccess, sendmessage_does_nothing) {
  InDialog("x = 5\nx = sendmessage(10, 20, 30)\nprint \"behind\"\ncall sendmessage()");
  EXPECT_EQ(Output(), "behind\non\n");
  EXPECT_EQ(Errors(), Numbers());
}

TEST_F(ControlAccess, sendmessage_leaves_its_result_untouched) {
  CBasicVariable result(5);
  CBasicVariableArray arguments;
  EXPECT_TRUE(Access::ExecUserFunction(Interpreter(), CString(u"sendmessage"), result, arguments, true));
  EXPECT_EQ(result.GetStringValue(), CString(u"5"));
}

TEST_F(ControlAccess, ask_needs_its_question) {
  m_dialogs.yesNoAnswers = {true, false};
  Run("print ask(\"one?\"); ask(\"two?\")\n");
  EXPECT_EQ(Output(), "10\n");
  EXPECT_EQ(m_dialogs.questions, (Strings{"one?", "two?"}));
  Run("x = ask()\nprint \"on\"\n", "none.bas");
  EXPECT_EQ(Errors().front(), 24);
}

TEST_F(ControlAccess, file_dialogs_pass_their_arguments) {
  m_dialogs.fileAnswers = {CString(u"/a/b.txt"), std::nullopt, CString(u"/c")};
  Run("print fileopendlg(\"name\", \"txt\", \"Text|*.txt||\", \"/folder\")\n"
      "x = \"before\"\nx = filesaveasdlg(\"n\", \"e\", \"f\")\nprint \"[\"; x; \"]\"\n"
      "print fileopendlg()\n");
  EXPECT_EQ(Output(), "/a/b.txt\n[]\n/c\n");
  ASSERT_EQ(m_dialogs.fileRequests.size(), 3U);
  const CUserInterface::FileRequest& open = m_dialogs.fileRequests[0];
  EXPECT_FALSE(open.save);
  EXPECT_EQ(open.fileName, CString(u"name"));
  EXPECT_EQ(open.defaultExtension, CString(u"txt"));
  EXPECT_EQ(open.filter, CString(u"Text|*.txt||"));
  EXPECT_EQ(open.initialFolder, CString(u"/folder"));
  EXPECT_TRUE(m_dialogs.fileRequests[1].save);
  EXPECT_EQ(m_dialogs.fileRequests[1].initialFolder, CString());
}

TEST_F(ControlAccess, popupmenu_takes_every_item_of_every_argument) {
  m_dialogs.menuAnswers = {3, -1};
  Run("dim more[2]\nmore[0] = \"-\"\nmore[1] = \"last\"\nprint popupmenu(\"first\", more, 5); popupmenu(\"x\")\n");
  EXPECT_EQ(Output(), "3-1\n");
  ASSERT_EQ(m_dialogs.menus.size(), 2U);
  EXPECT_EQ(m_dialogs.menus[0], (Strings{"first", "-", "last", "5.000000"}));
}

TEST_F(ControlAccess, copydata_raises_an_event_at_the_dialog_of_that_title) {
  const std::string handlers = "sub received(code, what)\nprint code; \": \"; what\nendsub\n";
  InDialog("event create OnCopyData received\n"
           "print copydata(\"D\", 7, \"hello\")\nprint copydata(\"d\", 7, \"hello\")\nprint copydata(\"\", 7, \"x\")\n"
           "endsub\n" +
           handlers + "sub unused(v)");
  EXPECT_EQ(Output(), "7.000000: hello\n1\n0\n0\non\n");
  m_dialogs.Forget();
  Run("print copydata(\"D\", 7, \"hello\")\n", "behind.bas");
  EXPECT_EQ(Output(), "0\n");
  Run("x = copydata(\"D\", 7)\n", "few.bas");
  EXPECT_EQ(Errors().front(), 24);
}

TEST_F(ControlAccess, copydata_reaches_another_interpreter) {
  CBrindle sender;
  RecordingUserInterface senderBoxes;
  sender.SetUserInterface(&senderBoxes);
  Then([&](PlayedDialog&) {
    sender.ExecuteProgram(m_folder.Write("sender.bas", "print copydata(\"D\", 7, \"from afar\")\n"));
  });
  Run("event create OnCopyData received\n"
      "dialog \"D\", 0, 0, 1, 1\nenddialog\nend\n"
      "sub received(code, what)\nprint code; \": \"; what\nendsub\n");
  EXPECT_EQ(Output(), "7.000000: from afar\n");
  EXPECT_EQ(senderBoxes.Output(), "1\n");
}

TEST_F(ControlAccess, title_that_was_altered_is_the_one_copydata_finds) {
  InDialog("alter window\ntitle \"New\"\nendalter\nprint copydata(\"New\", 1, \"x\"); copydata(\"D\", 1, \"x\")");
  EXPECT_EQ(Output(), "10\non\n");
}

} // namespace
