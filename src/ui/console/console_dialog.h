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
  // What the dialogs of one console share.
  struct Screen {
    long made = 0;  // dialogs so far
    long shown = 0; // the one whose form was shown last
  };
  struct Terminal {
    // A line of input; nothing at the end of the input, or as soon as the dialog is over.
    std::function<std::optional<CString>(const std::function<bool()>& isOver)> ask;
    std::function<void(const std::string& text)> tell;
    bool isPerson = false; // who types the commands
    Screen* screen = nullptr;
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
  static constexpr int kSliderLimit = 100;
  static constexpr const char* kCommands =
      "click ID, type ID TEXT, select ID N, set ID VALUE, menu ID N, menu window N, ok, cancel, show";

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

  [[nodiscard]] const Control* Find(int id) const;
  [[nodiscard]] Control* Find(int id);
  void ShowForm();
  [[nodiscard]] std::string Form() const;
  [[nodiscard]] std::string Line(const Control& control, std::size_t kindWidth, std::size_t captionWidth) const;
  [[nodiscard]] static std::string KindText(const Control& control);
  [[nodiscard]] static std::string CaptionText(const Control& control);
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
  std::vector<CString> m_pages; // titles
  CStringArray m_menu;
  std::optional<int> m_result;
  int m_nFocus = 0;
  long m_nNumber;
};

} // namespace brindle
