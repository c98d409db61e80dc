// The dialog's state, as its owner reads and writes it.
#include "ui/console/console_dialog.h"

#include "platform/clock.h"
#include "platform/date_text.h"

#include <algorithm>

namespace brindle {

namespace {

CString CurrentDate() {
  const LocalTime now = Now();
  CString date;
  date.Format("%04d-%02d-%02d %02d:%02d:%02d", now.year, now.month, now.day, now.hour, now.minute, now.second);
  return date;
}

bool IsSlider(ControlKind kind) {
  return kind == ControlKind::SliderHorizontal || kind == ControlKind::SliderVertical;
}

// Adds a path's node behind those of its levels that are missing.
void AddNode(std::vector<CString>& nodes, const CString& path) {
  for (int end = path.Find(u'\\');; end = path.Find(u'\\', end + 1)) {
    const CString level = end < 0 ? path : path.Left(end);
    if (std::find(nodes.begin(), nodes.end(), level) == nodes.end())
      nodes.push_back(level);
    if (end < 0)
      return;
  }
}

} // namespace

ConsoleDialog::ConsoleDialog(const CDialogDescription& description, const std::vector<DialogTemplate>& templates,
                             CDialogEvents& events, Terminal terminal)
    : m_events(events), m_terminal(std::move(terminal)), m_strTitle(description.title), m_bSheet(description.sheet) {
  m_nNumber = ++m_terminal.screen->made;
  for (const DialogTemplate& page : templates) {
    if (!m_bSheet)
      m_strTitle = page.header.title;
    m_pages.push_back(page.header.title);
    for (const DialogItem& item : page.items) {
      Control control;
      control.item = item;
      control.kind = KindOf(item);
      control.text = item.caption;
      control.page = m_pages.size() - 1;
      control.shown = (item.style & kStyleVisible) != 0;
      if (control.kind == ControlKind::Date)
        control.date = CurrentDate();
      m_controls.push_back(std::move(control));
    }
  }
}

const ConsoleDialog::Control* ConsoleDialog::Find(int id) const {
  for (const Control& control : m_controls)
    if (control.item.id == id)
      return &control;
  return nullptr;
}

ConsoleDialog::Control* ConsoleDialog::Find(int id) {
  return const_cast<Control*>(std::as_const(*this).Find(id));
}

void ConsoleDialog::End(int result) {
  if (!m_result)
    m_result = result;
}

long ConsoleDialog::GetHandle(int id) const {
  // Fits an integer of a script, whatever the number of dialogs before this one.
  constexpr long kHandlesPerWindow = 0x10000;
  constexpr long kWindows = 0x7FFF;
  const long window = (1 + (m_nNumber - 1) % (kWindows - 1)) * kHandlesPerWindow;
  if (id == kWindow)
    return window;
  for (std::size_t i = 0; i < m_controls.size(); ++i)
    if (m_controls[i].item.id == id)
      return window + 1 + static_cast<long>(i);
  return 0;
}

void ConsoleDialog::SetFocus(int id) {
  m_nFocus = id;
}

CString ConsoleDialog::GetText(int id) const {
  if (id == kWindow)
    return m_strTitle;
  const Control* control = Find(id);
  if (control == nullptr)
    return CString();
  // The text of a combo box is its selected item's.
  if (control->kind == ControlKind::ComboBox)
    return control->selection.empty() ? CString() : GetItemText(id, control->selection.front());
  return control->kind == ControlKind::Date ? control->date : control->text;
}

void ConsoleDialog::SetText(int id, const CString& text) {
  if (id == kWindow)
    m_strTitle = text;
  else if (Control* control = Find(id))
    control->text = text;
}

bool ConsoleDialog::IsChecked(int id) const {
  const Control* control = Find(id);
  return control != nullptr && control->checked;
}

void ConsoleDialog::SetChecked(int id, bool checked) {
  Control* control = Find(id);
  if (control == nullptr)
    return;
  if (control->kind == ControlKind::RadioButton && checked)
    CheckOnly(*control); // one of its group, whoever chooses it
  else
    control->checked = checked;
}

void ConsoleDialog::AddItem(int id, const CString& text) {
  Control* control = Find(id);
  if (control == nullptr)
    return;
  if (control->kind == ControlKind::Tree)
    AddNode(control->items, text);
  else
    control->items.push_back(text);
  // The first tab of a tab control is in front at once.
  if (control->kind == ControlKind::Tab && control->items.size() == 1)
    control->selection = {0};
}

void ConsoleDialog::ClearItems(int id) {
  if (Control* control = Find(id)) {
    control->items.clear();
    control->selection.clear();
  }
}

int ConsoleDialog::GetItemCount(int id) const {
  const Control* control = Find(id);
  return control == nullptr ? 0 : static_cast<int>(control->items.size());
}

CString ConsoleDialog::GetItemText(int id, int index) const {
  const Control* control = Find(id);
  return control != nullptr && index >= 0 && index < GetItemCount(id) ? control->items[static_cast<std::size_t>(index)]
                                                                      : CString();
}

std::vector<int> ConsoleDialog::GetSelection(int id) const {
  const Control* control = Find(id);
  return control == nullptr ? std::vector<int>() : control->selection;
}

void ConsoleDialog::SetSelection(int id, const std::vector<int>& indices) {
  Control* control = Find(id);
  if (control == nullptr)
    return;
  control->selection.clear();
  for (const int index : indices)
    if (index >= 0 && index < static_cast<int>(control->items.size()))
      control->selection.push_back(index);
  std::sort(control->selection.begin(), control->selection.end());
  const auto last = std::unique(control->selection.begin(), control->selection.end());
  control->selection.erase(last, control->selection.end());
}

int ConsoleDialog::GetPosition(int id) const {
  const Control* control = Find(id);
  return control == nullptr ? 0 : control->position;
}

void ConsoleDialog::SetPosition(int id, int position) {
  Control* control = Find(id);
  if (control != nullptr && IsSlider(control->kind))
    control->position = std::clamp(position, 0, kSliderLimit);
}

CString ConsoleDialog::GetDate(int id) const {
  const Control* control = Find(id);
  return control == nullptr ? CString() : control->date;
}

void ConsoleDialog::SetDate(int id, const CString& date) {
  Control* control = Find(id);
  if (control != nullptr && control->kind == ControlKind::Date && IsDateText(date.View()))
    control->date = date;
}

// A form in lines has neither places nor fonts.
void ConsoleDialog::Move(int, int, int, int, int) {}

void ConsoleDialog::SetFont(int, int, const CString&) {}

void ConsoleDialog::Show(int id, bool shown) {
  if (Control* control = Find(id))
    control->shown = shown;
}

void ConsoleDialog::Enable(int id, bool enabled) {
  if (Control* control = Find(id))
    control->enabled = enabled;
}

void ConsoleDialog::AddMenuEntry(int id, const CString& caption) {
  if (id == kWindow)
    m_menu.Add(caption);
  else if (Control* control = Find(id))
    control->menu.Add(caption);
}

} // namespace brindle
