// FormWindow: the window around a dialog's controls.
// Room: ui. Used by: the Qt dialogs.
// May touch: its own widgets, the screen's size.
// Must not: end itself: Enter, Escape and the close button are the dialog's to answer.
// Invariant: it is no larger than the screen; what does not fit can be scrolled to.
#pragma once

#include <QDialog>

#include <functional>
#include <vector>

class QMenuBar;
class QScrollArea;
class QTabWidget;
class QVBoxLayout;

namespace brindle {

class FormWindow : public QDialog {
public:
  struct Actions {
    std::function<void()> enter;
    std::function<void()> cancel;
  };

  FormWindow(QWidget* parent, Actions actions);

  // A page of a property sheet with its title, or all of a dialog. Its controls go into the widget returned.
  QWidget* AddPage(const QString& title, bool asTab);
  void SetPageSize(std::size_t page, QSize size);
  void ShowPage(std::size_t page);
  // Buttons below the pages.
  void AddButtons(const std::function<void()>& ok, const std::function<void()>& cancel);
  // Entries stand side by side in the window's menu bar.
  void AddMenuEntry(const QString& caption, const std::function<void()>& chosen);

protected:
  void keyPressEvent(QKeyEvent* event) override;
  void reject() override { m_actions.cancel(); }

private:
  Actions m_actions;
  QVBoxLayout* m_pLayout;
  QTabWidget* m_pTabs = nullptr;
  QMenuBar* m_pMenuBar = nullptr;
  std::vector<QScrollArea*> m_pages;
};

} // namespace brindle
