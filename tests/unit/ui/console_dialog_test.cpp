// Dialogs of the console as their owner sees them; what they show is compared by the script tests.
#include "brindle/console_user_interface.h"
#include "ui/dialog_template.h"

#include "support/redirected_streams.h"
#include "support/text_printing.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using brindle::DialogItem;
using brindle::WindowClass;

// Notes what it is told; OnOpened may do more.
class Events final : public CDialogEvents {
public:
  std::vector<std::string> told;
  std::function<void()> onOpened;
  std::function<void(int id)> onClicked;

  void OnOpened() override {
    told.emplace_back("opened");
    if (onOpened)
      onOpened();
  }
  void OnCommand(int id, int code) override {
    told.push_back("command " + std::to_string(id) + " " + std::to_string(code));
    if (code == Clicked && onClicked)
      onClicked(id);
  }
  void OnNotify(int id) override { told.push_back("notify " + std::to_string(id)); }
  void OnMenu(int id, int entry) override {
    told.push_back("menu " + std::to_string(id) + " " + std::to_string(entry));
  }
};

DialogItem Item(int id, WindowClass windowClass, std::uint32_t style, const char16_t* className = u"") {
  DialogItem item;
  item.id = static_cast<std::uint16_t>(id);
  item.windowClass = windowClass;
  item.style = style;
  item.className = CString(className);
  item.caption = CString(u"caption");
  return item;
}

CDialogDescription Description(const std::vector<DialogItem>& items) {
  brindle::DialogHeader header;
  header.title = CString(u"Title");
  CDialogDescription description;
  description.templates.push_back(brindle::MakeDialogHeader(header));
  for (const DialogItem& item : items)
    brindle::AppendItem(description.templates[0], brindle::MakeDialogItem(item));
  return description;
}

const std::vector<DialogItem> kItems = {
    Item(10, WindowClass::Edit, 0x10810080),
    Item(11, WindowClass::Button, 0x10010003),
    Item(12, WindowClass::ListBox, 0x10B10041),
    Item(13, WindowClass::Named, 0x10010005, u"msctls_trackbar32"),
    Item(14, WindowClass::Named, 0x10010020, u"SysDateTimePick32"),
    Item(15, WindowClass::ListBox, 0x10B10049),
};

TEST(ConsoleDialog, tells_its_owner_what_the_user_does) {
  RedirectedStreams redirected("type 10 x\nclick 11\nselect 12 1\nset 13 5\nset 14 2024-02-29 00:00:00\n"
                               "select 15 0\nmenu 10 0\nmenu window 0\nok\n");
  Events events;
  int result = 0;
  {
    CConsoleUserInterface console;
    const auto dialog = console.CreateDialogWindow(Description(kItems), events);
    ASSERT_NE(dialog, nullptr);
    events.onOpened = [&] {
      for (const int id : {12, 15}) {
        dialog->AddItem(id, CString(u"a"));
        dialog->AddItem(id, CString(u"b"));
      }
      dialog->AddMenuEntry(10, CString(u"entry"));
      dialog->AddMenuEntry(CDialogWindow::kWindow, CString(u"entry"));
    };
    events.onClicked = [&](int id) {
      if (id == CDialogWindow::kOk)
        dialog->End(id);
    };
    result = dialog->Run();
    dialog->End(2);
  }
  redirected.Stop();
  EXPECT_EQ(result, 1);
  EXPECT_EQ(events.told,
            (std::vector<std::string>{"opened", "command 10 768", "command 11 0", "command 12 1", "notify 13",
                                      "notify 14", "command 15 1", "menu 10 0", "menu -1 0", "command 1 0"}));
  EXPECT_EQ(redirected.Output(), "");
}

TEST(ConsoleDialog, owners_changes_tell_nobody) {
  RedirectedStreams redirected("");
  Events events;
  CConsoleUserInterface console;
  const auto dialog = console.CreateDialogWindow(Description(kItems), events);
  dialog->SetText(10, CString(u"new"));
  dialog->SetChecked(11, true);
  dialog->AddItem(12, CString(u"a"));
  dialog->SetSelection(12, {0});
  dialog->SetPosition(13, 5);
  dialog->SetDate(14, CString(u"2024-02-29 00:00:00"));
  dialog->SetFocus(10);
  dialog->Move(10, 1, 2, 3, 4);
  dialog->SetFont(10, 9, CString(u"Sans"));
  dialog->Show(10, false);
  dialog->Enable(10, false);
  redirected.Stop();
  EXPECT_TRUE(events.told.empty());
  EXPECT_EQ(dialog->GetText(10), CString(u"new"));
  EXPECT_TRUE(dialog->IsChecked(11));
  EXPECT_EQ(dialog->GetSelection(12), std::vector<int>{0});
  EXPECT_EQ(dialog->GetPosition(13), 5);
  EXPECT_EQ(dialog->GetDate(14), CString(u"2024-02-29 00:00:00"));
}

TEST(ConsoleDialog, control_that_is_not_there_is_neutral) {
  RedirectedStreams redirected("");
  Events events;
  CConsoleUserInterface console;
  const auto dialog = console.CreateDialogWindow(Description(kItems), events);
  constexpr int kNone = 99;
  dialog->SetText(kNone, CString(u"x"));
  dialog->SetChecked(kNone, true);
  dialog->AddItem(kNone, CString(u"x"));
  dialog->ClearItems(kNone);
  dialog->SetSelection(kNone, {0});
  dialog->SetPosition(kNone, 5);
  dialog->SetDate(kNone, CString(u"2024-02-29 00:00:00"));
  dialog->Show(kNone, false);
  dialog->Enable(kNone, false);
  dialog->AddMenuEntry(kNone, CString(u"x"));
  redirected.Stop();
  EXPECT_FALSE(dialog->HasControl(kNone));
  EXPECT_EQ(dialog->GetHandle(kNone), 0);
  EXPECT_EQ(dialog->GetText(kNone), CString());
  EXPECT_FALSE(dialog->IsChecked(kNone));
  EXPECT_EQ(dialog->GetItemCount(kNone), 0);
  EXPECT_EQ(dialog->GetItemText(kNone, 0), CString());
  EXPECT_TRUE(dialog->GetSelection(kNone).empty());
  EXPECT_EQ(dialog->GetPosition(kNone), 0);
  EXPECT_EQ(dialog->GetDate(kNone), CString());
  // Nor has every control every property.
  dialog->SetPosition(10, 5);
  EXPECT_EQ(dialog->GetPosition(10), 0);
  dialog->SetDate(10, CString(u"2024-02-29 00:00:00"));
  EXPECT_EQ(dialog->GetDate(10), CString());
  EXPECT_EQ(dialog->GetItemText(12, 0), CString());
  EXPECT_EQ(dialog->GetItemText(12, -1), CString());
}

TEST(ConsoleDialog, properties_stay_within_their_bounds) {
  RedirectedStreams redirected("");
  Events events;
  CConsoleUserInterface console;
  const auto dialog = console.CreateDialogWindow(Description(kItems), events);
  redirected.Stop();
  dialog->SetPosition(13, -1);
  EXPECT_EQ(dialog->GetPosition(13), 0);
  dialog->SetPosition(13, 1000);
  EXPECT_EQ(dialog->GetPosition(13), 100);
  dialog->SetDate(14, CString(u"2024-02-29 00:00:00"));
  dialog->SetDate(14, CString(u"2023-02-29 00:00:00"));
  dialog->SetDate(14, CString(u"today"));
  EXPECT_EQ(dialog->GetDate(14), CString(u"2024-02-29 00:00:00"));
  dialog->AddItem(15, CString(u"a"));
  dialog->AddItem(15, CString(u"b"));
  dialog->SetSelection(15, {1, 0, 1, 2, -1});
  EXPECT_EQ(dialog->GetSelection(15), (std::vector<int>{0, 1}));
}

TEST(ConsoleDialog, tick_that_ends_it_needs_no_input) {
  RedirectedStreams redirected;
  Events events;
  int result = 0;
  std::optional<CString> next;
  {
    CConsoleUserInterface console;
    const auto dialog = console.CreateDialogWindow(Description(kItems), events);
    unsigned timer = 0;
    timer = console.StartTimer(5, [&] {
      console.StopTimer(timer);
      dialog->End(1);
      redirected.Feed("for the next one\n");
    });
    result = dialog->Run();
    next = console.ChooseFile({});
  }
  redirected.Stop();
  EXPECT_EQ(result, 1);
  EXPECT_EQ(next, CString(u"for the next one"));
  EXPECT_EQ(events.told, std::vector<std::string>{"opened"});
}

TEST(ConsoleDialog, dialog_that_its_owner_ends_at_once_shows_no_form) {
  RedirectedStreams redirected("ok\n");
  Events events;
  {
    CConsoleUserInterface console;
    const auto dialog = console.CreateDialogWindow(Description(kItems), events);
    events.onOpened = [&] { dialog->End(1); };
    EXPECT_EQ(dialog->Run(), 1);
  }
  redirected.Stop();
  EXPECT_EQ(redirected.Error(), "");
}

TEST(ConsoleDialog, owner_that_ignores_the_cancel_cannot_keep_it_open_without_input) {
  RedirectedStreams redirected("cancel\n");
  Events events;
  {
    CConsoleUserInterface console;
    const auto dialog = console.CreateDialogWindow(Description(kItems), events);
    EXPECT_EQ(dialog->Run(), 2);
  }
  redirected.Stop();
  EXPECT_EQ(events.told, (std::vector<std::string>{"opened", "command 2 0", "command 2 0"}));
}

TEST(ConsoleDialog, bytes_that_are_no_template_are_refused) {
  Events events;
  CConsoleUserInterface console;
  CDialogDescription description;
  description.templates.resize(1);
  EXPECT_EQ(console.CreateDialogWindow(description, events), nullptr);
  description = Description(kItems);
  description.templates[0].pop_back();
  EXPECT_EQ(console.CreateDialogWindow(description, events), nullptr);
}

TEST(ConsoleDialog, handles_fit_an_integer_however_many_dialogs_there_were) {
  Events events;
  CConsoleUserInterface console;
  const CDialogDescription description = Description({kItems[0]});
  for (int i = 0; i < 70000; ++i) {
    const auto dialog = console.CreateDialogWindow(description, events);
    ASSERT_GT(dialog->GetHandle(CDialogWindow::kWindow), 0);
    ASSERT_LE(dialog->GetHandle(10), 0x7FFFFFFF);
    ASSERT_NE(dialog->GetHandle(10), dialog->GetHandle(CDialogWindow::kWindow));
  }
}

} // namespace
