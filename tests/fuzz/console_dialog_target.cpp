// Dialogs of the console: any lines as commands to a form with every kind of control, whose owner changes it meanwhile.
#include "fuzz_support.h"

#include "platform/code_page.h"
#include "ui/console/console_dialog.h"

#include <memory>
#include <utility>

using namespace brindle;
using fuzz::Require;

namespace {

constexpr int kControls = 18;
constexpr int kMostLines = 200;

// What a script does in its handlers: reads everything, and changes what was touched.
class Owner final : public CDialogEvents {
public:
  CDialogWindow* window = nullptr;

  void OnOpened() override {
    for (int id = 0; id < kControls; ++id)
      for (const char16_t* item : {u"one", u"two\\deep", u""})
        window->AddItem(id, CString(item));
    window->AddMenuEntry(CDialogWindow::kWindow, CString(u"entry"));
    window->AddMenuEntry(3, CString(u"-"));
  }
  void OnCommand(int id, int code) override {
    ReadAll();
    if (id == CDialogWindow::kOk || id == CDialogWindow::kCancel)
      window->End(id);
    else if (code == Clicked)
      window->SetSelection(id + 1, {m_nCalls % 4, m_nCalls % 3 - 1});
    else
      window->SetText(id + 1, window->GetText(id));
  }
  void OnNotify(int id) override {
    window->SetDate(id + 1, window->GetText(id));
    window->SetPosition(id + 1, m_nCalls * 7 - 50);
    window->Enable(id, m_nCalls % 3 != 0);
    window->Show(id + 1, m_nCalls % 2 == 0);
  }
  void OnMenu(int id, int entry) override {
    Require(entry >= 0, "an entry is counted from 0");
    window->ClearItems(id);
    window->SetChecked(id + 1, true);
  }

private:
  void ReadAll() {
    ++m_nCalls;
    for (int id = -1; id <= kControls; ++id) {
      const int count = window->GetItemCount(id);
      for (const int selected : window->GetSelection(id))
        Require(selected >= 0 && selected < count, "what is selected is there");
      for (int item = -1; item <= count; ++item)
        (void)window->GetItemText(id, item);
      const int position = window->GetPosition(id);
      Require(position >= 0 && position <= 100, "a slider stays on its scale");
      (void)window->GetDate(id);
      (void)window->IsChecked(id);
      Require(window->HasControl(id) || window->GetText(id).IsEmpty() || id == CDialogWindow::kWindow,
              "what is not there has no text");
    }
  }

  int m_nCalls = 0;
};

DialogTemplate Form() {
  constexpr std::pair<WindowClass, std::uint32_t> kPredefined[] = {
      {WindowClass::Button, 0},    {WindowClass::Button, 1},  {WindowClass::Button, 2},   {WindowClass::Button, 9},
      {WindowClass::Button, 9},    {WindowClass::Button, 7},  {WindowClass::Edit, 0},     {WindowClass::Edit, 4},
      {WindowClass::Edit, 0x2000}, {WindowClass::Static, 0},  {WindowClass::Static, 0xE}, {WindowClass::ListBox, 0},
      {WindowClass::ListBox, 8},   {WindowClass::ComboBox, 0}};
  DialogTemplate form;
  form.header.title = CString(u"Form");
  const auto add = [&form](WindowClass windowClass, std::uint32_t style, const char16_t* className) {
    DialogItem item;
    item.windowClass = windowClass;
    item.style = style;
    item.className = CString(className);
    item.caption = CString(u"caption");
    item.id = static_cast<std::uint16_t>(form.items.size());
    form.items.push_back(item);
  };
  for (const auto& [windowClass, style] : kPredefined)
    add(windowClass, style, u"");
  for (const char16_t* className : {u"SysDateTimePick32", u"SysTreeView32", u"msctls_trackbar32", u"SysTabControl32"})
    add(WindowClass::Named, 0, className);
  form.header.itemCount = static_cast<std::uint16_t>(form.items.size());
  return form;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::vector<DialogTemplate> forms = {Form()};
  std::string_view lines(reinterpret_cast<const char*>(data), size);
  int asked = 0;
  std::size_t told = 0;
  ConsoleDialog::Screen screen;
  const auto ask = [&](const std::function<bool()>& isOver) -> std::optional<CString> {
    if (lines.empty() || isOver() || ++asked > kMostLines)
      return std::nullopt;
    const std::string_view line = lines.substr(0, lines.find('\n'));
    lines.remove_prefix(std::min(line.size() + 1, lines.size()));
    return CString(CodePage::Utf8().Decode(line));
  };
  Owner owner;
  ConsoleDialog dialog({}, forms, owner,
                       {ask, [&told](const std::string& text) { told += text.size(); }, size % 2 == 0, &screen});
  owner.window = &dialog;
  (void)dialog.Run();
  Require(told > 0, "a form is shown");
  return 0;
}
