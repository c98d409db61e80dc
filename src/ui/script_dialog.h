// ScriptDialog: a dialog or property sheet that a script has declared, and its run.
// Room: ui. Used by: the dialog statements, control access.
// May touch: the window that a user interface made of it, the interpreter that it belongs to.
// Must not: let an exception pass into the window system: it is kept, and thrown on behind the dialog's end.
// Invariant: while it runs it stands in its interpreter's list of open dialogs.
#pragma once

#include "brindle/dialog.h"
#include "brindle/interpreter.h"
#include "ui/dialog_template.h"

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace brindle {

// A page of a property sheet, or all of a dialog: what belongs to one template.
class CPropertyPageInfo {
public:
  CString m_strOnInit;
  CString m_strOnExit;
};

class ScriptDialog : public CDialogEvents {
public:
  using Raise = std::function<void(const CString& handler, const CBasicVariable& value)>;
  using KeepException = std::function<void()>;

  // Called before it runs: how handlers are raised, and what keeps an exception that one of them throws.
  void Connect(Raise raise, KeepException keep) {
    m_raise = std::move(raise);
    m_keepException = std::move(keep);
  }
  // Takes over the templates: what each control is. False when one of them cannot be read.
  [[nodiscard]] bool ReadTemplates();

  void OnOpened() override;
  void OnCommand(int id, int code) override;
  void OnNotify(int id) override;
  void OnMenu(int id, int entry) override;
  void RaiseExit(int result);

  [[nodiscard]] bool HasControl(int id) const { return m_kinds.contains(id); }
  [[nodiscard]] ControlKind Kind(int id) const {
    const auto kind = m_kinds.find(id);
    return kind == m_kinds.end() ? ControlKind::Unknown : kind->second;
  }
  // What "controlvalue" gives for the control.
  [[nodiscard]] CBasicVariable ValueOf(int id) const;
  // To be called when the script itself may have changed what is selected in a list.
  void NoteSelection(int id);
  void AddMenuEntry(int id, const CString& caption, const CString& handler);

  CDialogDescription description;
  std::vector<CPropertyPageInfo> pages;
  std::map<int, CString> handlers;
  std::unique_ptr<CDialogWindow> window;

private:
  struct MenuEntry {
    CString caption;
    CString handler;
  };
  void RaiseSafely(const CString& handler, const CBasicVariable& value);

  [[nodiscard]] int ChosenItem(int id);

  Raise m_raise;
  KeepException m_keepException;
  std::map<int, ControlKind> m_kinds;
  std::map<int, std::vector<MenuEntry>> m_menus;
  std::map<int, std::vector<int>> m_selections; // of lists where several items can be selected, as last seen
  bool m_bAborted = false;                      // a handler has thrown: no other one runs on the way out
};

} // namespace brindle
