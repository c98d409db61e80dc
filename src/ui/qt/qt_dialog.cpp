// A dialog's run and what the user does to it.
#include "ui/qt/qt_dialog.h"

#include "ui/qt/stop_watch.h"

#include <QAbstractButton>
#include <QEventLoop>
#include <QPushButton>

#include <algorithm>

namespace brindle {

int QtDialog::Run() {
  if (m_pForm.isNull() || CStopRequest::IsMade())
    return m_result.value_or(kCancel);
  QEventLoop loop;
  m_pLoop = &loop;
  // The host may destroy the parent, and the window with it, while the dialog runs.
  const auto destroyed = QObject::connect(m_pForm, &QObject::destroyed, &loop, &QEventLoop::quit);
  m_pForm->show();
  FocusFirst();
  m_bOpened = true;
  m_events.OnOpened();
  if (!m_result && !m_pForm.isNull()) {
    const StopWatch watch([this] { End(kCancel); });
    loop.exec(QEventLoop::DialogExec);
  }
  QObject::disconnect(destroyed);
  m_pLoop = nullptr;
  m_result = m_result.value_or(kCancel); // the application is told to end, or the window is gone
  if (!m_pForm.isNull())
    m_pForm->hide();
  return *m_result;
}

void QtDialog::End(int result) {
  if (m_result)
    return;
  m_result = result;
  // An application that wants to end asks its windows to go, and takes one that stays for a refusal.
  if (!m_pForm.isNull())
    m_pForm->hide();
  if (m_pLoop != nullptr)
    m_pLoop->quit();
}

void QtDialog::OnCommand(int id, int code) {
  if (!m_bOpened || m_result)
    return;
  const Placed* const placed = Find(id);
  if (code == CDialogEvents::Clicked && placed != nullptr && placed->control->Kind() == ControlKind::RadioButton)
    CheckOnly(*placed);
  m_events.OnCommand(id, code);
}

void QtDialog::OnNotify(int id) {
  if (m_bOpened && !m_result)
    m_events.OnNotify(id);
}

void QtDialog::OnMenu(int id, int entry) {
  if (m_bOpened && !m_result)
    m_events.OnMenu(id, entry);
}

// The button that has the focus, else the default button, else the OK action.
void QtDialog::OnEnter() {
  if (auto* const button = qobject_cast<QPushButton*>(m_pForm->focusWidget())) {
    button->click();
    return;
  }
  const auto isDefault = [](const Placed& placed) { return placed.control->Kind() == ControlKind::DefaultButton; };
  const auto found = std::find_if(m_controls.begin(), m_controls.end(), isDefault);
  Press(found != m_controls.end() ? found->control->Id() : kOk);
}

void QtDialog::Press(int id) {
  QWidget* const widget = id == kWindow ? nullptr : WidgetOf(id);
  if (auto* const button = qobject_cast<QAbstractButton*>(widget))
    button->click(); // nothing where it is disabled
  else if (widget == nullptr || widget->isEnabled())
    OnCommand(id, CDialogEvents::Clicked);
}

void QtDialog::CheckOnly(const Placed& radio) {
  for (const Placed& placed : m_controls)
    if (placed.group == radio.group && placed.control->Kind() == ControlKind::RadioButton)
      placed.control->SetChecked(&placed == &radio);
}

// Round the buttons of the group that can be used; the one that is reached is clicked.
bool QtDialog::MoveInGroup(std::size_t index, int step) {
  std::vector<std::size_t> group;
  for (std::size_t i = 0; i < m_controls.size(); ++i) {
    const Placed& placed = m_controls[i];
    if (placed.group == m_controls[index].group && placed.control->Kind() == ControlKind::RadioButton &&
        placed.control->Widget().isEnabled() && placed.control->Widget().isVisible())
      group.push_back(i);
  }
  const auto here = std::find(group.begin(), group.end(), index);
  if (here == group.end())
    return false;
  const auto count = static_cast<std::ptrdiff_t>(group.size());
  const std::ptrdiff_t next = (here - group.begin() + step + count) % count;
  auto& button = static_cast<QAbstractButton&>(m_controls[group[static_cast<std::size_t>(next)]].control->Widget());
  button.setFocus(Qt::TabFocusReason);
  if (count > 1)
    button.click();
  return true;
}

} // namespace brindle
