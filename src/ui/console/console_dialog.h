// ConsoleDialog: a dialog as a form on standard error, driven by lines of commands.
// Room: ui. Used by: the console user interface.
// May touch: the lines that it is given a way to ask for.
// Must not: notify its owner of a change that the owner made.
// Invariant: the first control of an id answers to it.
#pragma once

#include "brindle/dialog.h"
#include "ui/dialog_template.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {

class ConsoleDialog : public CDialogWindow {
public:
  struct Terminal {
    // A line of input behind a prompt, nothing at the end of the input.
    std::function<std::optional<CString>(const std::string& prompt)> ask;
    std::function<void(const std::string& text)> tell;
  };

  ConsoleDialog(const CDialogDescription& description, const std::vector<DialogTemplate>& templates,
                CDialogEvents& events, Terminal terminal);

  [[nodiscard]] int Run() override;
  void End(int result) override;
  [[nodiscard]] bool HasControl(int id) const override { return Find(id) != nullptr; }
  [[nodiscard]] long GetHandle(int id) const override;
  void SetFocus(int id) override;
  [[nodiscard]] CString GetText(int id) const override;
  void SetText(int id, const CString& text) override;
  [[nodiscard]] bool IsChecked(int id) const override;
  void SetChecked(int id, bool checked) override;
  void AddItem(int id, const CString& text) override;
  void ClearItems(int id) override;
  [[nodiscard]] int GetItemCount(int id) const override;
  [[nodiscard]] CString GetItemText(int id, int index) const override;
  [[nodiscard]] std::vector<int> GetSelection(int id) const override;
  void SetSelection(int id, const std::vector<int>& indices) override;
  [[nodiscard]] int GetPosition(int id) const override;
  void SetPosition(int id, int position) override;
  [[nodiscard]] CString GetDate(int id) const override;
  void SetDate(int id, const CString& date) override;
  void Move(int id, int x, int y, int width, int height) override;
  void SetFont(int id, int pointSize, const CString& face) override;
  void Show(int id, bool shown) override;
  void Enable(int id, bool enabled) override;
  void AddMenuEntry(int id, const CString& caption) override;

private:
  struct Control {
    DialogItem item;
    ControlKind kind = ControlKind::Unknown;
    CString text; // an edit's contents, any other control's caption
    CString date;
    std::vector<CString> items;
    std::vector<int> selection;
    CStringArray menu;
    int position = 0;
    bool checked = false;
    bool shown = true;
    bool enabled = true;
    std::size_t page = 0;
  };
  struct Page {
    CString title;
    std::size_t firstControl;
  };

  [[nodiscard]] const Control* Find(int id) const;
  [[nodiscard]] Control* Find(int id);
  [[nodiscard]] std::string Form() const;
  [[nodiscard]] static std::string ValueText(const Control& control);

  // One command; empty, or why it was refused.
  [[nodiscard]] std::string Execute(const std::string& line);
  [[nodiscard]] std::string Click(int id);
  [[nodiscard]] std::string Type(Control& control, const CString& text);
  [[nodiscard]] std::string Select(Control& control, int index);
  [[nodiscard]] std::string Set(Control& control, const CString& value);
  [[nodiscard]] std::string ChooseMenu(int id, const CStringArray& menu, int entry);
  void CheckOnly(Control& radio);

  CDialogEvents& m_events;
  Terminal m_terminal;
  CString m_strTitle;
  bool m_bSheet;
  std::vector<Control> m_controls;
  std::vector<Page> m_pages;
  CStringArray m_menu;
  std::optional<int> m_result;
  int m_nFocus = 0;
  long m_nHandle;
};

} // namespace brindle
