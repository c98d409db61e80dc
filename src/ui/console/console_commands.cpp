// The form of a console dialog and the commands that drive it.
#include "platform/date_text.h"
#include "platform/number_text.h"
#include "ui/console/console_dialog.h"

#include <algorithm>
#include <array>

namespace brindle {

namespace {

struct KindName {
  ControlKind kind;
  const char* name;
};

constexpr std::array kKindNames = {
    KindName{ControlKind::Button, "button"},
    KindName{ControlKind::DefaultButton, "okbutton"},
    KindName{ControlKind::CheckBox, "checkbox"},
    KindName{ControlKind::RadioButton, "radiogroup"},
    KindName{ControlKind::GroupBox, "groupbox"},
    KindName{ControlKind::Edit, "edittext"},
    KindName{ControlKind::EditMultiLine, "editmultiline"},
    KindName{ControlKind::EditNumber, "editnumber"},
    KindName{ControlKind::Static, "statictext"},
    KindName{ControlKind::Bitmap, "bitmap"},
    KindName{ControlKind::ListBox, "listbox"},
    KindName{ControlKind::MultiListBox, "multilistbox"},
    KindName{ControlKind::ComboBox, "combobox"},
    KindName{ControlKind::Date, "datetime"},
    KindName{ControlKind::Tree, "treeview"},
    KindName{ControlKind::SliderHorizontal, "sliderhorz"},
    KindName{ControlKind::SliderVertical, "slidervert"},
    KindName{ControlKind::Tab, "tabcontrol"},
    KindName{ControlKind::Unknown, "control"},
};

std::string NameOf(ControlKind kind) {
  for (const KindName& row : kKindNames)
    if (row.kind == kind)
      return row.name;
  return std::string();
}

std::string Padded(std::string text, std::size_t width) {
  if (text.size() < width)
    text.append(width - text.size(), ' ');
  return text;
}

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

std::string Entries(const CStringArray& menu) {
  std::string text;
  for (int i = 0; i < menu.GetSize(); ++i)
    text += "      menu " + std::to_string(i) + ": " + menu[i].ToUtf8() + "\n";
  return text;
}

} // namespace

std::string ConsoleDialog::ValueText(const Control& control) {
  switch (control.kind) {
  case ControlKind::CheckBox: return control.checked ? "[x]" : "[ ]";
  case ControlKind::RadioButton: return control.checked ? "(o)" : "( )";
  case ControlKind::Edit:
  case ControlKind::EditMultiLine:
  case ControlKind::EditNumber: return "\"" + control.text.ToUtf8() + "\"";
  case ControlKind::SliderHorizontal:
  case ControlKind::SliderVertical: return std::to_string(control.position) + " of 100";
  case ControlKind::Date: return control.date.ToUtf8();
  default: return std::string();
  }
}

std::string ConsoleDialog::Form() const {
  std::string form = "--- " + m_strTitle.ToUtf8() + " ---\n";
  std::size_t nextPage = 0;
  for (const Control& control : m_controls) {
    for (; m_bSheet && nextPage <= control.page; ++nextPage)
      form += "== " + m_pages[nextPage].title.ToUtf8() + "\n";
    if (!control.shown)
      continue;
    const bool ownsText = !IsEdit(control.kind) && control.kind != ControlKind::Date;
    form += Padded(std::to_string(control.item.id), 5) + (control.item.id == m_nFocus ? ">" : " ") +
            Padded(NameOf(control.kind), 14) + Padded(ValueText(control), 4) +
            (ownsText && !control.text.IsEmpty() ? " " + control.text.ToUtf8() : std::string()) +
            (control.enabled ? "" : " (disabled)") + "\n";
    for (std::size_t i = 0; i < control.items.size(); ++i) {
      const bool selected =
          std::find(control.selection.begin(), control.selection.end(), static_cast<int>(i)) != control.selection.end();
      form += std::string("      ") + (selected ? "* " : "  ") + std::to_string(i) + ": " + control.items[i].ToUtf8() +
              "\n";
    }
    form += Entries(control.menu);
  }
  return form + Entries(m_menu);
}

int ConsoleDialog::Run() {
  m_events.OnOpened();
  if (!m_result)
    m_terminal.tell(Form());
  while (!m_result) {
    const auto line = m_terminal.ask("> ");
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
  const std::string command = TakeWord(rest);
  if (command.empty())
    return std::string();
  if (command == "show") {
    m_terminal.tell(Form());
    return std::string();
  }
  if (command == "ok" || command == "cancel")
    return Click(command == "ok" ? kOk : kCancel);
  const bool known =
      command == "click" || command == "type" || command == "select" || command == "set" || command == "menu";
  if (!known)
    return "Unknown command: " + command;

  const std::string word = TakeWord(rest);
  if (command == "menu" && word == "window")
    return ChooseMenu(kWindow, m_menu, NumberOf(rest).value_or(-1));
  const auto id = NumberOf(word);
  Control* control = id ? Find(*id) : nullptr;
  if (control == nullptr)
    return "Unknown control: " + word;
  if (!control->shown || !control->enabled)
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
  control.text = text;
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
  const auto number = NumberOf(value.ToUtf8());
  switch (control.kind) {
  case ControlKind::SliderHorizontal:
  case ControlKind::SliderVertical:
    if (!number)
      return "Control " + id + " takes a position from 0 to 100";
    SetPosition(control.item.id, *number);
    break;
  case ControlKind::Date:
    if (!IsDateText(value.View()))
      return "Control " + id + " takes a date, YYYY-MM-DD HH:MM:SS";
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
