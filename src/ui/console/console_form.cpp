// The form of a console dialog: one line a control, in columns; below it the items and menu entries that its
// commands number.
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
};

constexpr std::size_t kIdWidth = 5;
constexpr std::size_t kWidestColumn = 32; // what is longer sticks out of its own line only

// On one line, and without what a terminal would take for a command.
std::string Visible(const CString& text) {
  std::u16string shown;
  for (const char16_t unit : text.View()) {
    switch (unit) {
    case u'\n': shown += u"\\n"; break;
    case u'\r': shown += u"\\r"; break;
    case u'\t': shown += u"\\t"; break;
    default: shown += unit < 0x20 || (unit >= 0x7F && unit < 0xA0) ? u'?' : unit; break;
    }
  }
  return CString(shown).ToUtf8();
}

std::string Quoted(const CString& text) {
  return "\"" + Visible(text) + "\"";
}

// Characters, not bytes.
std::size_t WidthOf(const std::string& utf8) {
  return static_cast<std::size_t>(
      std::count_if(utf8.begin(), utf8.end(), [](char byte) { return (byte & '\xC0') != '\x80'; }));
}

std::string Padded(std::string text, std::size_t width) {
  const std::size_t used = WidthOf(text);
  if (used < width)
    text.append(width - used, ' ');
  return text;
}

std::string Entries(const CStringArray& menu, const std::string& indent, const std::string& owner) {
  const std::string start = indent + "menu " + owner + " ";
  std::string text;
  for (int i = 0; i < menu.GetSize(); ++i)
    text.append(start).append(std::to_string(i)).append(": ").append(Visible(menu[i])).append("\n");
  return text;
}

bool HoldsItems(ControlKind kind) {
  return kind == ControlKind::ListBox || kind == ControlKind::MultiListBox || kind == ControlKind::ComboBox ||
         kind == ControlKind::Tree || kind == ControlKind::Tab;
}

} // namespace

void ConsoleDialog::ShowForm() {
  // A person is told what to type, once.
  if (m_terminal.isPerson && m_terminal.screen->shown == 0)
    m_terminal.tell(std::string("Commands: ") + kCommands + "\n");
  m_terminal.screen->shown = m_nNumber;
  m_terminal.tell(Form());
}

std::string ConsoleDialog::KindText(const Control& control) {
  // A cancel button differs from others by its identifier alone.
  if (control.kind == ControlKind::Button && control.item.id == kCancel)
    return "cancelbutton";
  const auto found =
      std::find_if(kKindNames.begin(), kKindNames.end(), [&](const KindName& row) { return row.kind == control.kind; });
  return found == kKindNames.end() ? "control" : found->name;
}

std::string ConsoleDialog::CaptionText(const Control& control) {
  const bool isEdit = control.kind == ControlKind::Edit || control.kind == ControlKind::EditMultiLine ||
                      control.kind == ControlKind::EditNumber;
  return isEdit ? std::string() : Visible(control.text);
}

std::string ConsoleDialog::ValueText(const Control& control) {
  switch (control.kind) {
  case ControlKind::CheckBox: return control.checked ? "[x]" : "[ ]";
  case ControlKind::RadioButton: return control.checked ? "(o)" : "( )";
  case ControlKind::Edit:
  case ControlKind::EditMultiLine:
  case ControlKind::EditNumber: return Quoted(control.text);
  case ControlKind::SliderHorizontal:
  case ControlKind::SliderVertical: return std::to_string(control.position) + " of " + std::to_string(kSliderLimit);
  case ControlKind::Date: return control.date.ToUtf8();
  default: break;
  }
  if (!HoldsItems(control.kind))
    return std::string();
  std::string selected;
  for (const int index : control.selection)
    selected += (selected.empty() ? "" : ", ") + Quoted(control.items[static_cast<std::size_t>(index)]);
  return selected.empty() ? "nothing selected" : selected;
}

std::string ConsoleDialog::Line(const Control& control, std::size_t kindWidth, std::size_t captionWidth) const {
  const std::string id = std::to_string(control.item.id);
  const std::string indent(kIdWidth + 5 + kindWidth, ' ');
  std::string line = (control.item.id == m_nFocus ? ">" : " ") +
                     std::string(kIdWidth - std::min(kIdWidth, id.size()), ' ') + id + "  " +
                     Padded(KindText(control), kindWidth) + "  " + Padded(CaptionText(control), captionWidth) + "  " +
                     ValueText(control) + (control.enabled ? "" : "  (disabled)");
  line.erase(line.find_last_not_of(' ') + 1);
  line += "\n";
  for (std::size_t i = 0; i < control.items.size(); ++i) {
    const bool selected =
        std::find(control.selection.begin(), control.selection.end(), static_cast<int>(i)) != control.selection.end();
    line += indent + (selected ? "* " : "  ") + std::to_string(i) + ": " + Visible(control.items[i]) + "\n";
  }
  return line + Entries(control.menu, indent + "  ", id);
}

std::string ConsoleDialog::Form() const {
  std::size_t kindWidth = 0;
  std::size_t captionWidth = 0;
  for (const Control& control : m_controls) {
    if (!control.shown)
      continue;
    kindWidth = std::max(kindWidth, WidthOf(KindText(control)));
    const std::size_t width = WidthOf(CaptionText(control));
    if (width <= kWidestColumn)
      captionWidth = std::max(captionWidth, width);
  }
  std::string form = "--- " + Visible(m_strTitle) + " ---\n";
  for (std::size_t page = 0; page < m_pages.size(); ++page) {
    if (m_bSheet)
      form += "== " + Visible(m_pages[page]) + " ==\n";
    for (const Control& control : m_controls)
      if (control.page == page && control.shown)
        form += Line(control, kindWidth, captionWidth);
  }
  form += Entries(m_menu, "  ", "window");
  return form;
}

} // namespace brindle
