// A dialog's window and controls, as its owner reads and changes them.
#include "ui/qt/qt_dialog.h"
#include "ui/qt/qt_text.h"

#include <QAction>

#include <algorithm>

namespace brindle {

const QtDialog::Placed* QtDialog::Find(int id) const {
  if (m_pForm.isNull())
    return nullptr; // the controls' widgets are gone with it
  const auto found =
      std::find_if(m_controls.begin(), m_controls.end(), [id](const Placed& row) { return row.control->Id() == id; });
  return found == m_controls.end() ? nullptr : &*found;
}

QtControl* QtDialog::Control(int id) const {
  const Placed* const placed = Find(id);
  return placed == nullptr ? nullptr : placed->control.get();
}

QWidget* QtDialog::WidgetOf(int id) const {
  if (id == kWindow)
    return m_pForm;
  const QtControl* const control = Control(id);
  return control == nullptr ? nullptr : &control->Widget();
}

bool QtDialog::HasControl(int id) const {
  return Find(id) != nullptr;
}

long QtDialog::GetHandle(int id) const {
  // Fits an integer of a script, whatever the number of dialogs before this one.
  constexpr long kHandlesPerWindow = 0x10000;
  constexpr long kWindows = 0x7FFF;
  const long window = (1 + (m_nNumber - 1) % (kWindows - 1)) * kHandlesPerWindow;
  if (id == kWindow)
    return window;
  const Placed* const placed = Find(id);
  return placed == nullptr ? 0 : window + 1 + static_cast<long>(placed - m_controls.data());
}

void QtDialog::SetFocus(int id) {
  const Placed* const placed = Find(id);
  if (placed == nullptr)
    return;
  m_pForm->ShowPage(placed->page);
  placed->control->Widget().setFocus(Qt::OtherFocusReason);
}

CString QtDialog::GetText(int id) const {
  if (id == kWindow)
    return m_strTitle;
  const QtControl* const control = Control(id);
  return control == nullptr ? CString() : control->GetText();
}

void QtDialog::SetText(int id, const CString& text) {
  if (id == kWindow) {
    m_strTitle = text;
    if (!m_pForm.isNull())
      m_pForm->setWindowTitle(ToQt(text));
  } else if (QtControl* const control = Control(id)) {
    control->SetText(text);
  }
}

bool QtDialog::IsChecked(int id) const {
  const QtControl* const control = Control(id);
  return control != nullptr && control->IsChecked();
}

void QtDialog::SetChecked(int id, bool checked) {
  const Placed* const placed = Find(id);
  if (placed == nullptr)
    return;
  if (placed->control->Kind() == ControlKind::RadioButton && checked)
    CheckOnly(*placed); // one of its group, whoever chooses it
  else
    placed->control->SetChecked(checked);
}

void QtDialog::AddItem(int id, const CString& text) {
  if (QtControl* const control = Control(id))
    control->AddItem(text);
}

void QtDialog::ClearItems(int id) {
  if (QtControl* const control = Control(id))
    control->ClearItems();
}

int QtDialog::GetItemCount(int id) const {
  const QtControl* const control = Control(id);
  return control == nullptr ? 0 : control->GetItemCount();
}

CString QtDialog::GetItemText(int id, int index) const {
  const QtControl* const control = Control(id);
  return control == nullptr ? CString() : control->GetItemText(index);
}

std::vector<int> QtDialog::GetSelection(int id) const {
  const QtControl* const control = Control(id);
  return control == nullptr ? std::vector<int>() : control->GetSelection();
}

void QtDialog::SetSelection(int id, const std::vector<int>& indices) {
  if (QtControl* const control = Control(id))
    control->SetSelection(indices);
}

int QtDialog::GetPosition(int id) const {
  const QtControl* const control = Control(id);
  return control == nullptr ? 0 : control->GetPosition();
}

void QtDialog::SetPosition(int id, int position) {
  if (QtControl* const control = Control(id))
    control->SetPosition(position);
}

CString QtDialog::GetDate(int id) const {
  const QtControl* const control = Control(id);
  return control == nullptr ? CString() : control->GetDate();
}

void QtDialog::SetDate(int id, const CString& date) {
  if (QtControl* const control = Control(id))
    control->SetDate(date);
}

void QtDialog::Move(int id, int x, int y, int width, int height) {
  const auto coordinate = [](int value) { return static_cast<std::int16_t>(std::clamp(value, -0x8000, 0x7FFF)); };
  const DialogRectangle rectangle{coordinate(x), coordinate(y), coordinate(width), coordinate(height)};
  if (QtControl* const control = id == kWindow ? nullptr : Control(id)) {
    control->Move(m_units->ToPixels(rectangle));
  } else if (id == kWindow && !m_pForm.isNull()) {
    const QSize size = m_units->ToPixels({0, 0, rectangle.width, rectangle.height}).size().expandedTo(QSize(1, 1));
    for (std::size_t page = 0; page < m_pages.size(); ++page)
      m_pForm->SetPageSize(page, size);
    PlaceWindow(x, y);
  }
}

void QtDialog::SetFont(int id, int pointSize, const CString& face) {
  QWidget* const widget = WidgetOf(id);
  if (widget == nullptr)
    return;
  const QFont font = FontWith(widget->font(), pointSize, face);
  if (id != kWindow) {
    Control(id)->SetFont(font);
    return;
  }
  // Controls without a font of their own follow the window's.
  widget->setFont(font);
  for (const Placed& placed : m_controls)
    placed.control->Move(placed.control->Widget().geometry());
}

void QtDialog::Show(int id, bool shown) {
  if (QWidget* const widget = WidgetOf(id))
    widget->setVisible(shown);
}

void QtDialog::Enable(int id, bool enabled) {
  if (QWidget* const widget = WidgetOf(id))
    widget->setEnabled(enabled);
}

void QtDialog::AddMenuEntry(int id, const CString& caption) {
  if (id == kWindow && !m_pForm.isNull()) {
    m_pForm->AddMenuEntry(ToQt(caption), [this, entry = m_nWindowMenuEntries] { OnMenu(kWindow, entry); });
    ++m_nWindowMenuEntries;
    return;
  }
  const auto placed =
      std::find_if(m_controls.begin(), m_controls.end(), [id](const Placed& row) { return row.control->Id() == id; });
  if (m_pForm.isNull() || placed == m_controls.end())
    return;
  QWidget& widget = placed->control->Widget();
  auto* const action = new QAction(ToQt(caption), &widget);
  QObject::connect(action, &QAction::triggered, &widget,
                   [this, id, entry = placed->menuEntries] { OnMenu(id, entry); });
  ++placed->menuEntries;
  widget.addAction(action);
  widget.setContextMenuPolicy(Qt::ActionsContextMenu);
}

} // namespace brindle
