// CDialogWindow and CDialogEvents: a running dialog between the scripts and a window system.
// Room: platform. Used by: ui, and hosts that bring a window system of their own.
// May touch: nothing; two interfaces.
// Must not: know what a script is.
// Invariant: the template is all that a window system learns of a dialog before it runs.
#pragma once

#include "brindle/collections.h"
#include "brindle/text.h"

#include <cstddef>
#include <span>
#include <vector>

/// What a dialog tells its owner while it runs, on the thread that runs it. The members do not throw.
class BRINDLE_API CDialogEvents {
public:
  /// The notification codes of buttons, lists and edits.
  enum Code : int { Clicked = 0, SelectionChanged = 1, TextChanged = 0x300 };

  virtual ~CDialogEvents();
  /// The dialog is up; called once, before anything else.
  virtual void OnOpened() = 0;
  /// A button was clicked (a check box or radio button has changed its state already), a list's or combo
  /// box's selection or an edit's text has changed. Never called for a change that the owner made itself.
  virtual void OnCommand(int id, int code) = 0;
  /// The selection of a tree view or tab control, the position of a slider, the date of a picker has changed.
  virtual void OnNotify(int id) = 0;
  /// An entry of a control's menu (or of the dialog's, id kWindow) was chosen: the index at which it was added.
  virtual void OnMenu(int id, int entry) = 0;
};

/// One dialog or property sheet of a window system. Members that name a control which is not there, or
/// which has no such property, do nothing and return the neutral value. Positions are dialog units.
class BRINDLE_API CDialogWindow {
public:
  /// The identifier that stands for the dialog itself.
  static constexpr int kWindow = -1;
  /// The results of a dialog that ended by its OK and Cancel actions.
  static constexpr int kOk = 1;
  static constexpr int kCancel = 2;

  virtual ~CDialogWindow();

  /// Shows the dialog and serves it until it ends; the result. Called once.
  [[nodiscard]] virtual int Run() = 0;
  /// Ends it with this result as soon as control is back in Run. A second call changes nothing.
  virtual void End(int result) = 0;

  [[nodiscard]] virtual bool HasControl(int id) const = 0;
  /// Not 0 for the window and for each control.
  [[nodiscard]] virtual long GetHandle(int id) const = 0;
  virtual void SetFocus(int id) = 0;

  [[nodiscard]] virtual CString GetText(int id) const = 0;
  virtual void SetText(int id, const CString& text) = 0;
  [[nodiscard]] virtual bool IsChecked(int id) const = 0;
  virtual void SetChecked(int id, bool checked) = 0;

  /// Items of a list, combo box or tab control, or nodes of a tree in the order of adding. A node is added
  /// by its path, "\" between the levels (none of them empty); levels that are missing are added with it.
  virtual void AddItem(int id, const CString& text) = 0;
  virtual void ClearItems(int id) = 0;
  [[nodiscard]] virtual int GetItemCount(int id) const = 0;
  /// A node's text is its whole path.
  [[nodiscard]] virtual CString GetItemText(int id, int index) const = 0;
  /// The selected indices, ascending; at most one but for a multiple selection.
  [[nodiscard]] virtual std::vector<int> GetSelection(int id) const = 0;
  virtual void SetSelection(int id, const std::vector<int>& indices) = 0;

  /// A slider's position, 0 to 100.
  [[nodiscard]] virtual int GetPosition(int id) const = 0;
  virtual void SetPosition(int id, int position) = 0;
  /// A date picker's date, "YYYY-MM-DD HH:MM:SS"; a text that is no date changes nothing.
  [[nodiscard]] virtual CString GetDate(int id) const = 0;
  virtual void SetDate(int id, const CString& date) = 0;

  virtual void Move(int id, int x, int y, int width, int height) = 0;
  virtual void SetFont(int id, int pointSize, const CString& face) = 0;
  virtual void Show(int id, bool shown) = 0;
  virtual void Enable(int id, bool enabled) = 0;
  virtual void AddMenuEntry(int id, const CString& caption) = 0;
};

/// What a dialog is made of: one template, or a property sheet of several, each a page with its own title.
struct CDialogDescription {
  bool sheet = false;
  CString title;                                 ///< of a property sheet
  int x = 0, y = 0, width = 0, height = 0;       ///< of a property sheet; all 0: as large as its pages need
  std::vector<std::vector<std::byte>> templates; ///< in-memory dialog templates; exactly one unless it is a sheet
};
