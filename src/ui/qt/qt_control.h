// QtControl: one control of a dialog as a widget; the base of every kind.
// Room: ui. Used by: the Qt dialogs.
// May touch: its own widget.
// Must not: notify of a change that the script made: such a change lasts as long as an OwnChange.
// Invariant: the text is kept here in full, whatever part of it the widget has room for.
#pragma once

#include "brindle/dialog.h"
#include "ui/dialog_template.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace brindle {

class QtControl {
public:
  // Where a user's changes go.
  struct Events {
    std::function<void(int id, int code)> command;
    std::function<void(int id)> notify;
  };

  QtControl(const DialogItem& item, QWidget* widget);
  QtControl(const QtControl&) = delete;
  QtControl& operator=(const QtControl&) = delete;
  virtual ~QtControl();

  void SetEvents(const Events* events) noexcept { m_pEvents = events; }
  [[nodiscard]] int Id() const noexcept { return m_item.id; }
  [[nodiscard]] ControlKind Kind() const noexcept { return KindOf(m_item); }
  [[nodiscard]] bool HasStyle(std::uint32_t bits) const noexcept { return (m_item.style & bits) == bits; }
  [[nodiscard]] const DialogItem& Item() const noexcept { return m_item; }
  [[nodiscard]] QWidget& Widget() const noexcept { return *m_pWidget; }

  void Move(const QRect& rectangle);
  void SetFont(const QFont& font);

  [[nodiscard]] virtual CString GetText() const { return m_strText; }
  virtual void SetText(const CString& text) { m_strText = text; }
  [[nodiscard]] virtual bool IsChecked() const { return false; }
  virtual void SetChecked(bool) {}
  virtual void AddItem(const CString&) {}
  virtual void ClearItems() {}
  [[nodiscard]] virtual int GetItemCount() const { return 0; }
  [[nodiscard]] virtual CString GetItemText(int) const { return CString(); }
  [[nodiscard]] virtual std::vector<int> GetSelection() const { return {}; }
  virtual void SetSelection(const std::vector<int>&) {}
  [[nodiscard]] virtual int GetPosition() const { return 0; }
  virtual void SetPosition(int) {}
  [[nodiscard]] virtual CString GetDate() const { return CString(); }
  virtual void SetDate(const CString&) {}

  // The widget that a static text's mnemonic leads to.
  virtual void SetBuddy(QWidget*) {}

protected:
  class OwnChange {
  public:
    explicit OwnChange(QtControl& control) : m_control(control) { ++m_control.m_nOwnChanges; }
    OwnChange(const OwnChange&) = delete;
    OwnChange& operator=(const OwnChange&) = delete;
    ~OwnChange() { --m_control.m_nOwnChanges; }

  private:
    QtControl& m_control;
  };

  [[nodiscard]] bool IsOwnChange() const noexcept { return m_nOwnChanges > 0; }
  void Command(int code) const;
  void Notify() const;
  // Shows as much of the text as there is room for; called when the room or the font has changed.
  virtual void FitText() {}
  // The text is read from right to left where its first letters are.
  void FollowTextDirection();
  // A caption of one line, cut where it has no room; the whole of it is then the tool tip.
  [[nodiscard]] QString Fitted(int width);
  // Those of the indices that have an item.
  [[nodiscard]] std::vector<int> ValidIndices(const std::vector<int>& indices) const;

  CString m_strText;

private:
  DialogItem m_item;
  QWidget* m_pWidget; // its parent owns it
  const Events* m_pEvents = nullptr;
  int m_nOwnChanges = 0;
};

// The control of a template's item, below `parent`.
[[nodiscard]] std::unique_ptr<QtControl> MakeControl(const DialogItem& item, QWidget* parent);

// The families of controls; each makes its own widget.
[[nodiscard]] std::unique_ptr<QtControl> MakePushButton(const DialogItem& item, QWidget* parent);
[[nodiscard]] std::unique_ptr<QtControl> MakeCheckBox(const DialogItem& item, QWidget* parent);
[[nodiscard]] std::unique_ptr<QtControl> MakeRadioButton(const DialogItem& item, QWidget* parent);
[[nodiscard]] std::unique_ptr<QtControl> MakeGroupBox(const DialogItem& item, QWidget* parent);
[[nodiscard]] std::unique_ptr<QtControl> MakeEdit(const DialogItem& item, QWidget* parent);
[[nodiscard]] std::unique_ptr<QtControl> MakeMultiLineEdit(const DialogItem& item, QWidget* parent);
[[nodiscard]] std::unique_ptr<QtControl> MakeStatic(const DialogItem& item, QWidget* parent);
[[nodiscard]] std::unique_ptr<QtControl> MakePicture(const DialogItem& item, QWidget* parent);
[[nodiscard]] std::unique_ptr<QtControl> MakeListBox(const DialogItem& item, QWidget* parent);
[[nodiscard]] std::unique_ptr<QtControl> MakeComboBox(const DialogItem& item, QWidget* parent);
[[nodiscard]] std::unique_ptr<QtControl> MakeTree(const DialogItem& item, QWidget* parent);
[[nodiscard]] std::unique_ptr<QtControl> MakeTab(const DialogItem& item, QWidget* parent);
[[nodiscard]] std::unique_ptr<QtControl> MakeSlider(const DialogItem& item, QWidget* parent);
[[nodiscard]] std::unique_ptr<QtControl> MakeDate(const DialogItem& item, QWidget* parent);

} // namespace brindle
