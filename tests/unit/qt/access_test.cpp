// Dialogs in windows as a host's own code sees them: what a control has not is neutral, as on the console.
#include "qt/window_test.h"
#include "ui/dialog_template.h"

#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTreeWidget>

using brindle::DialogItem;
using brindle::WindowClass;

namespace {

class Silent final : public CDialogEvents {
public:
  void OnOpened() override {}
  void OnCommand(int id, int) override {
    ++told;
    if (ends != nullptr)
      ends->End(id);
  }
  void OnNotify(int) override { ++told; }
  void OnMenu(int, int) override { ++told; }
  int told = 0;
  CDialogWindow* ends = nullptr;
};

// Visible, and without the borders that scripts give.
DialogItem Item(int id, WindowClass windowClass, const char16_t* className = u"") {
  DialogItem item;
  item.id = static_cast<std::uint16_t>(id);
  item.windowClass = windowClass;
  item.style = 0x10000000;
  item.className = CString(className);
  item.caption = CString(u"caption");
  return item;
}

constexpr int kText = 10;
constexpr int kList = 11;
constexpr int kTree = 12;
constexpr int kTabs = 13;
constexpr int kDate = 14;
constexpr int kButton = 15;
constexpr int kLines = 16;

CDialogDescription Description() {
  brindle::DialogHeader header;
  header.title = CString(u"Title");
  DialogItem lines = Item(kLines, WindowClass::Edit);
  lines.style |= 0x0004; // several lines
  CDialogDescription description;
  description.templates.push_back(brindle::MakeDialogHeader(header));
  for (const DialogItem& item :
       {Item(kText, WindowClass::Static), Item(kList, WindowClass::ListBox),
        Item(kTree, WindowClass::Named, u"SysTreeView32"), Item(kTabs, WindowClass::Named, u"SysTabControl32"),
        Item(kDate, WindowClass::Named, u"SysDateTimePick32"), Item(kButton, WindowClass::Button), lines})
    brindle::AppendItem(description.templates[0], brindle::MakeDialogItem(item));
  return description;
}

} // namespace

class Access : public WindowTest {
protected:
  Access() : m_dialog(m_windows.CreateDialogWindow(Description(), m_events)) {}

  Silent m_events;
  std::unique_ptr<CDialogWindow> m_dialog;
};

TEST_F(Access, a_control_that_is_not_there_is_neutral) {
  ASSERT_NE(m_dialog, nullptr);
  constexpr int kNone = 99;
  m_dialog->SetText(kNone, CString(u"x"));
  m_dialog->SetChecked(kNone, true);
  m_dialog->AddItem(kNone, CString(u"x"));
  m_dialog->ClearItems(kNone);
  m_dialog->SetSelection(kNone, {0});
  m_dialog->SetPosition(kNone, 5);
  m_dialog->SetDate(kNone, CString(u"2024-02-29 00:00:00"));
  m_dialog->Move(kNone, 1, 2, 3, 4);
  m_dialog->SetFont(kNone, 9, CString(u"DejaVu Sans"));
  m_dialog->Show(kNone, false);
  m_dialog->Enable(kNone, false);
  m_dialog->SetFocus(kNone);
  m_dialog->AddMenuEntry(kNone, CString(u"x"));
  EXPECT_FALSE(m_dialog->HasControl(kNone));
  EXPECT_TRUE(m_dialog->HasControl(kTree));
  EXPECT_EQ(m_dialog->GetHandle(kNone), 0);
  EXPECT_EQ(m_dialog->GetText(kNone), CString());
  EXPECT_FALSE(m_dialog->IsChecked(kNone));
  EXPECT_EQ(m_dialog->GetItemCount(kNone), 0);
  EXPECT_EQ(m_dialog->GetItemText(kNone, 0), CString());
  EXPECT_TRUE(m_dialog->GetSelection(kNone).empty());
  EXPECT_EQ(m_dialog->GetPosition(kNone), 0);
  EXPECT_EQ(m_dialog->GetDate(kNone), CString());
  EXPECT_EQ(m_events.told, 0);
}

TEST_F(Access, what_a_kind_of_control_has_not_is_neutral) {
  ASSERT_NE(m_dialog, nullptr);
  m_dialog->SetChecked(kText, true);
  EXPECT_FALSE(m_dialog->IsChecked(kText));
  m_dialog->AddItem(kText, CString(u"x"));
  EXPECT_EQ(m_dialog->GetItemCount(kText), 0);
  EXPECT_EQ(m_dialog->GetItemText(kText, 0), CString());
  m_dialog->SetSelection(kText, {0});
  EXPECT_TRUE(m_dialog->GetSelection(kText).empty());
  m_dialog->ClearItems(kText);
  m_dialog->SetPosition(kText, 5);
  EXPECT_EQ(m_dialog->GetPosition(kText), 0);
  m_dialog->SetDate(kText, CString(u"2024-02-29 00:00:00"));
  EXPECT_EQ(m_dialog->GetDate(kText), CString());
  EXPECT_EQ(m_dialog->GetText(kText), CString(u"caption"));
  EXPECT_EQ(m_events.told, 0);
}

TEST_F(Access, items_are_chosen_by_their_index_and_others_left_out) {
  ASSERT_NE(m_dialog, nullptr);
  m_dialog->AddItem(kTree, CString(u"a\\b"));
  m_dialog->AddItem(kTabs, CString(u"one"));
  m_dialog->AddItem(kTabs, CString(u"two"));
  EXPECT_EQ(m_dialog->GetItemCount(kTree), 2);
  EXPECT_EQ(m_dialog->GetItemText(kTree, 1), CString(u"a\\b"));
  EXPECT_EQ(m_dialog->GetItemText(kTree, 2), CString());
  m_dialog->SetSelection(kTree, {7, 1});
  EXPECT_EQ(m_dialog->GetSelection(kTree), std::vector<int>{1});
  m_dialog->SetSelection(kTree, {-1});
  EXPECT_TRUE(m_dialog->GetSelection(kTree).empty());
  EXPECT_EQ(m_dialog->GetItemText(kTabs, 1), CString(u"two"));
  EXPECT_EQ(m_dialog->GetItemText(kTabs, -1), CString());
  m_dialog->SetSelection(kTabs, {1});
  EXPECT_EQ(m_dialog->GetSelection(kTabs), std::vector<int>{1});
  m_dialog->SetDate(kDate, CString(u"2024-02-29 01:02:03"));
  m_dialog->SetDate(kDate, CString(u"2023-02-29 01:02:03"));
  EXPECT_EQ(m_dialog->GetDate(kDate), CString(u"2024-02-29 01:02:03")) << "no such day";
  EXPECT_EQ(m_events.told, 0) << "the owner's own changes";
}

TEST_F(Access, a_control_has_the_border_that_its_style_says) {
  ASSERT_NE(m_dialog, nullptr);
  Then([](QWidget& window) {
    EXPECT_EQ(window.findChild<QListWidget*>()->frameShape(), QFrame::NoFrame);
    EXPECT_EQ(window.findChild<QTreeWidget*>()->frameShape(), QFrame::NoFrame);
    EXPECT_EQ(window.findChild<QPlainTextEdit*>()->frameShape(), QFrame::NoFrame);
    window.close();
  });
  m_events.ends = m_dialog.get();
  EXPECT_EQ(m_dialog->Run(), CDialogWindow::kCancel);
}

TEST_F(Access, a_notice_is_a_box_unless_the_policy_answers_errors) {
  m_driver.Then([](QWidget& window) {
    auto& box = As<QMessageBox>(window);
    EXPECT_EQ(box.icon(), QMessageBox::Warning);
    EXPECT_EQ(box.text(), QStringLiteral("Member not found"));
    WindowDriver::Press(box, QMessageBox::Ok);
  });
  m_windows.ShowNotice(CString(u"Member not found"));
  EXPECT_EQ(m_windows.GetNumberOfErrors(), 1);
}
