// The commands that drive a console dialog.
#include "ui/console/console_dialog.h"

#include "platform/date_text.h"

#include <algorithm>

namespace brindle {

namespace {

// The next word of a command, taken off its front.
std::string TakeWord(std::string& rest) {
  const std::size_t start = std::min(rest.find_first_not_of(" \t"), rest.size());
  const std::size_t end = std::min(rest.find_first_of(" \t", start), rest.size());
  std::string word = rest.substr(start, end - start);
  rest.erase(0, end < rest.size() ? end + 1 : end);
  return word;
}

std::optional<int> NumberOf(const std::string& word) {
  const bool digits = !word.empty() && word.size() < 10 && word.find_first_not_of("0123456789") == std::string::npos;
  return digits ? std::optional(std::stoi(word)) : std::nullopt;
}

bool IsEdit(ControlKind kind) {
  return kind == ControlKind::Edit || kind == ControlKind::EditMultiLine || kind == ControlKind::EditNumber;
}

bool IsClickable(ControlKind kind) {
  return kind == ControlKind::Button || kind == ControlKind::DefaultButton || kind == ControlKind::CheckBox ||
         kind == ControlKind::RadioButton;
}

bool IsSelectable(ControlKind kind) {
  return kind == ControlKind::ListBox || kind == ControlKind::MultiListBox || kind == ControlKind::ComboBox ||
         kind == ControlKind::Tab || kind == ControlKind::Tree;
}

} // namespace

int ConsoleDialog::Run() {
  m_events.OnOpened();
  while (!m_result) {
    // At first, and when another dialog has been in between.
    if (m_terminal.screen->shown != m_nNumber)
      ShowForm();
    const auto line = m_terminal.ask([this] { return m_result.has_value(); });
    if (m_result)
      break; // a timer has ended it meanwhile
    if (!line) {
      m_events.OnCommand(kCancel, CDialogEvents::Clicked);
      End(kCancel); // no more input will come, whatever the handler thinks of it
      break;
    }
    const std::string refusal = Execute(line->ToUtf8());
    if (!refusal.empty())
      m_terminal.tell(refusal + "\n");
  }
  return *m_result;
}

std::string ConsoleDialog::Execute(const std::string& line) {
  std::string rest = line;
  const std::string command = CString::FromUtf8(TakeWord(rest)).MakeLower().ToUtf8();
  if (command.empty())
    return std::string();
  if (command == "show") {
    ShowForm();
    return std::string();
  }
  if (command == "ok" || command == "cancel")
    return Click(command == "ok" ? kOk : kCancel);
  const bool known =
      command == "click" || command == "type" || command == "select" || command == "set" || command == "menu";
  if (!known)
    return "Unknown command: " + command + " (" + kCommands + ")";

  const std::string word = TakeWord(rest);
  if (command == "menu" && word == "window")
    return ChooseMenu(kWindow, m_menu, NumberOf(TakeWord(rest)).value_or(-1));
  if (word.empty())
    return "Which control? (" + std::string(kCommands) + ")";
  const auto id = NumberOf(word);
  Control* control = id ? Find(*id) : nullptr;
  if (control == nullptr) {
    // The keys for OK and Cancel work without a button as well.
    const int key = command == "click" ? id.value_or(0) : 0;
    return key == kOk || key == kCancel ? Click(key) : "Unknown control: " + word;
  }
  if (!control->shown)
    return "Control " + word + " is hidden";
  if (!control->enabled)
    return "Control " + word + " is disabled";
  if (command == "click")
    return IsClickable(control->kind) ? Click(*id) : "Control " + word + " is no button";
  if (command == "type")
    return Type(*control, CString::FromUtf8(rest));
  if (command == "select")
    return Select(*control, NumberOf(TakeWord(rest)).value_or(-1));
  if (command == "set")
    return Set(*control, CString::FromUtf8(rest));
  return ChooseMenu(*id, control->menu, NumberOf(TakeWord(rest)).value_or(-1));
}

std::string ConsoleDialog::Click(int id) {
  if (Control* control = Find(id)) {
    if (!control->enabled)
      return "Control " + std::to_string(id) + " is disabled";
    if (control->kind == ControlKind::CheckBox)
      control->checked = !control->checked;
    else if (control->kind == ControlKind::RadioButton)
      CheckOnly(*control);
  }
  m_events.OnCommand(id, CDialogEvents::Clicked);
  return std::string();
}

// A group runs from a control with the group flag to the next one.
void ConsoleDialog::CheckOnly(Control& radio) {
  const auto startsGroup = [](const Control& control) { return (control.item.style & kStyleGroup) != 0; };
  const auto chosen = static_cast<std::size_t>(&radio - m_controls.data());
  std::size_t first = chosen;
  while (first > 0 && !startsGroup(m_controls[first]) && m_controls[first - 1].page == radio.page)
    --first;
  for (std::size_t i = first; i < m_controls.size() && m_controls[i].page == radio.page; ++i) {
    if (i > first && i > chosen && startsGroup(m_controls[i]))
      break;
    if (m_controls[i].kind == ControlKind::RadioButton)
      m_controls[i].checked = i == chosen;
  }
}

std::string ConsoleDialog::Type(Control& control, const CString& text) {
  const std::string id = std::to_string(control.item.id);
  if (!IsEdit(control.kind))
    return "Control " + id + " takes no text";
  const std::u16string_view units = text.View();
  const auto isDigit = [](char16_t unit) { return unit >= u'0' && unit <= u'9'; };
  if (control.kind == ControlKind::EditNumber && !std::all_of(units.begin(), units.end(), isDigit))
    return "Control " + id + " takes digits only";
  control.text = text; // typing tells, whatever was there before
  m_events.OnCommand(control.item.id, CDialogEvents::TextChanged);
  return std::string();
}

std::string ConsoleDialog::Select(Control& control, int index) {
  const std::string id = std::to_string(control.item.id);
  if (!IsSelectable(control.kind))
    return "Control " + id + " has nothing to select";
  if (index < 0 || index >= static_cast<int>(control.items.size()))
    return "Control " + id + " has no such item";
  if (control.kind == ControlKind::MultiListBox) {
    std::vector<int> selection = control.selection;
    const auto found = std::find(selection.begin(), selection.end(), index);
    if (found == selection.end())
      selection.push_back(index);
    else
      selection.erase(found);
    SetSelection(control.item.id, selection);
  } else {
    if (control.selection == std::vector<int>{index})
      return std::string();
    control.selection = {index};
  }
  if (control.kind == ControlKind::Tab || control.kind == ControlKind::Tree)
    m_events.OnNotify(control.item.id);
  else
    m_events.OnCommand(control.item.id, CDialogEvents::SelectionChanged);
  return std::string();
}

std::string ConsoleDialog::Set(Control& control, const CString& value) {
  const std::string id = std::to_string(control.item.id);
  switch (control.kind) {
  case ControlKind::SliderHorizontal:
  case ControlKind::SliderVertical: {
    const auto position = NumberOf(value.ToUtf8());
    if (!position || *position > kSliderLimit)
      return "Control " + id + " takes a position from 0 to 100";
    if (*position == control.position)
      return std::string();
    control.position = *position;
    break;
  }
  case ControlKind::Date:
    if (!IsDateText(value.View()))
      return "Control " + id + " takes a date, YYYY-MM-DD HH:MM:SS";
    if (value == control.date)
      return std::string();
    control.date = value;
    break;
  default: return "Control " + id + " cannot be set";
  }
  m_events.OnNotify(control.item.id);
  return std::string();
}

std::string ConsoleDialog::ChooseMenu(int id, const CStringArray& menu, int entry) {
  if (entry < 0 || entry >= menu.GetSize())
    return "No such menu entry";
  m_events.OnMenu(id, entry);
  return std::string();
}

} // namespace brindle
