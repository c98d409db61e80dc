// QtDialog: a dialog or property sheet of Qt widgets.
// Room: ui. Used by: the Qt user interface.
// May touch: the window that it makes.
// Must not: notify of anything before it is opened or after its end.
// Invariant: the first control of an id answers to it; a window that the host has destroyed is cancelled.
#pragma once

#include "brindle/dialog.h"
#include "ui/qt/dialog_units.h"
#include "ui/qt/form_window.h"
#include "ui/qt/qt_control.h"

#include <QPointer>

#include <memory>
#include <optional>
#include <vector>

class QEventLoop;

namespace brindle {

class QtDialog : public CDialogWindow {
public:
  QtDialog(const CDialogDescription& description, const std::vector<DialogTemplate>& templates, CDialogEvents& events,
           QWidget* parent);
  QtDialog(const QtDialog&) = delete;
  QtDialog& operator=(const QtDialog&) = delete;
  ~QtDialog() override;

  [[nodiscard]] int Run() override;
  void End(int result) override;
  [[nodiscard]] bool HasControl(int id) const override;
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
  struct Placed {
    std::unique_ptr<QtControl> control;
    std::size_t page;
    int group; // radio buttons of one group exclude each other
    int menuEntries = 0;
  };

  void AddPage(const DialogTemplate& page, const CDialogDescription& description);
  void PlaceWindow(int x, int y);
  // The order of the template is the order of the keyboard.
  void ConnectKeyboard();
  void ConnectMnemonics();
  void FocusFirst();
  void ConnectRadioButton(std::size_t index);

  [[nodiscard]] const Placed* Find(int id) const;
  [[nodiscard]] QtControl* Control(int id) const;
  [[nodiscard]] QWidget* WidgetOf(int id) const;

  // What the user does.
  void OnCommand(int id, int code);
  void OnNotify(int id);
  void OnMenu(int id, int entry);
  void OnEnter();
  // A click on the button of that id, also where the dialog has none.
  void Press(int id);
  void CheckOnly(const Placed& radio);
  [[nodiscard]] bool MoveInGroup(std::size_t index, int step);

  CDialogEvents& m_events;
  QtControl::Events m_controlEvents;
  CString m_strTitle;
  long m_nNumber;
  int m_nGroup = 0;
  int m_nWindowMenuEntries = 0;
  std::vector<Placed> m_controls;
  std::vector<QWidget*> m_pages;
  std::optional<DialogUnits> m_units;
  QPointer<FormWindow> m_pForm;
  QEventLoop* m_pLoop = nullptr;
  std::optional<int> m_result;
  bool m_bOpened = false;
};

} // namespace brindle
