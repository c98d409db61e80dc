#include "brindle/console_user_interface.h"
#include "brindle/user_interface.h"
#include "brindle/window_user_interface.h"

#include "support/text_printing.h"

#include <gtest/gtest.h>

namespace {

TEST(UserInterface, the_one_that_shows_nothing_answers_everything_with_no) {
  CUserInterface silent;
  CStringArray entries;
  entries.Add(CString(u"entry"));
  silent.ShowMessage(CString(u"text"));
  silent.ShowNotice(CString(u"text"));
  EXPECT_EQ(silent.ShowError(CString(u"text")), CUserInterface::ErrorAnswer::Cancel);
  EXPECT_FALSE(silent.AskYesNo(CString(u"question"), CString(u"title")));
  EXPECT_FALSE(silent.ChooseFile({}).has_value());
  EXPECT_EQ(silent.ShowPopupMenu(entries), -1);
  silent.PlaySoundFile(CString(u"no such file.wav"));
  EXPECT_EQ(silent.StartTimer(10, [] {}), 0U);
  silent.StopTimer(0);
  silent.StopTimer(7);
  struct Events final : CDialogEvents {
    void OnOpened() override {}
    void OnCommand(int, int) override {}
    void OnNotify(int) override {}
    void OnMenu(int, int) override {}
  } events;
  EXPECT_EQ(silent.CreateDialogWindow({}, events), nullptr);
}

TEST(UserInterface, default_is_the_console_until_another_is_set) {
  EXPECT_NE(dynamic_cast<CConsoleUserInterface*>(&CUserInterface::Default()), nullptr);
  CUserInterface own;
  CUserInterface::SetDefault(&own);
  EXPECT_EQ(&CUserInterface::Default(), &own);
  CUserInterface::SetDefault(nullptr);
  EXPECT_NE(dynamic_cast<CConsoleUserInterface*>(&CUserInterface::Default()), nullptr);
}

TEST(UserInterface, a_window_system_that_cannot_be_loaded_says_why) {
  std::string reason;
  for (const char* name : {"", "../qt", "Qt", "q t"}) {
    EXPECT_EQ(CWindowUserInterface::Load(name, reason), nullptr);
    EXPECT_EQ(reason, "no name of a window system: " + std::string(name));
  }
  EXPECT_EQ(CWindowUserInterface::Load("nosuchsystem", reason), nullptr);
  EXPECT_NE(reason.find("libbrindle-nosuchsystem.so"), std::string::npos) << reason;
}

} // namespace
