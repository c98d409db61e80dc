// "alter" ... "endalter": changing the controls of the dialog that runs.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"
#include "platform/date_text.h"
#include "platform/number_text.h"
#include "ui/dialog_words.h"
#include "ui/script_dialog.h"

#include <algorithm>
#include <string>
#include <string_view>

using namespace brindle;

namespace {

int IntegerOf(const CBasicVariable& value) {
  return ToInt32(value.GetNumberValue());
}

bool IsTextBox(ControlKind kind) {
  return kind == ControlKind::Edit || kind == ControlKind::EditMultiLine || kind == ControlKind::EditNumber;
}

// Holds items of which one or some can be selected by index.
bool IsList(ControlKind kind) {
  return kind == ControlKind::ListBox || kind == ControlKind::MultiListBox || kind == ControlKind::ComboBox ||
         kind == ControlKind::Tab;
}

// The path of a tree's node without empty levels, so that every window system splits it alike.
CString TreePath(const CString& text) {
  std::u16string path;
  const std::u16string_view units = text.View();
  for (std::size_t at = 0; at < units.size();) {
    const std::size_t end = std::min(units.find(u'\\', at), units.size());
    if (end > at)
      path.append(path.empty() ? u"" : u"\\").append(units.substr(at, end - at));
    at = end + 1;
  }
  return CString(path);
}

// The members below are false when the line does not fit the control.

bool SetTextOf(ScriptDialog& dialog, int id, const CString& text) {
  const ControlKind kind = dialog.Kind(id);
  if (IsTextBox(kind) || kind == ControlKind::Static) {
    dialog.window->SetText(id, text);
    return true;
  }
  if (!IsList(kind) || kind == ControlKind::Tab)
    return false;
  for (int i = 0; i < dialog.window->GetItemCount(id); ++i) {
    if (dialog.window->GetItemText(id, i) == text) {
      dialog.window->SetSelection(id, {i});
      return true;
    }
  }
  return false;
}

bool SetValueOf(ScriptDialog& dialog, int id, CBasicVariable& value) {
  const ControlKind kind = dialog.Kind(id);
  switch (kind) {
  case ControlKind::CheckBox:
  case ControlKind::RadioButton: dialog.window->SetChecked(id, value.GetNumberValue() != 0); return true;
  case ControlKind::SliderHorizontal:
  case ControlKind::SliderVertical: dialog.window->SetPosition(id, IntegerOf(value)); return true;
  case ControlKind::Date:
    if (!IsDateText(value.GetStringValue().View()))
      return false;
    dialog.window->SetDate(id, value.GetStringValue());
    return true;
  default: break;
  }
  if (IsTextBox(kind)) {
    dialog.window->SetText(id, value.GetStringValue());
    return true;
  }
  if (!IsList(kind) && kind != ControlKind::Tree)
    return false;
  for (int i = 0; i < value.GetNumItems(); ++i) {
    value.SetCurIndex(i);
    const CString item = kind == ControlKind::Tree ? TreePath(value.GetStringValue()) : value.GetStringValue();
    if (kind != ControlKind::Tree || !item.IsEmpty())
      dialog.window->AddItem(id, item);
  }
  return true;
}

bool SetSelectionOf(ScriptDialog& dialog, int id, CBasicVariable& value) {
  if (!IsList(dialog.Kind(id)))
    return false;
  std::vector<int> indices;
  for (int i = 0; i < value.GetNumItems(); ++i) {
    value.SetCurIndex(i);
    const int index = IntegerOf(value);
    if (index == -1)
      continue; // none
    if (index < 0 || index >= dialog.window->GetItemCount(id))
      return false;
    indices.push_back(index);
  }
  if (dialog.Kind(id) != ControlKind::MultiListBox && indices.size() > 1)
    return false;
  dialog.window->SetSelection(id, indices);
  return true;
}

bool ClearOf(ScriptDialog& dialog, int id) {
  const ControlKind kind = dialog.Kind(id);
  if (IsTextBox(kind))
    dialog.window->SetText(id, CString());
  else if (IsList(kind) || kind == ControlKind::Tree)
    dialog.window->ClearItems(id);
  else
    return false;
  return true;
}

} // namespace

// alter ID, alter control ID, alter window; one alteration a line; endalter
bool CBrindle::ExecAlterControl() {
  ScriptDialog* dialog = CurrentDialog();
  if (dialog == nullptr)
    return LeaveBlock(kErrorNoDialog, COMMAND_ENDALTER);
  int id = CDialogWindow::kWindow;
  get_token();
  if (m_pState->token.keyword != KEYWORD_WINDOW) {
    if (m_pState->token.keyword != KEYWORD_CONTROL)
      putback();
    CBasicVariable value;
    get_exp(value);
    id = IntegerOf(value);
    if (value.GetType() == BVT_NONE || !dialog->HasControl(id))
      return LeaveBlock(kErrorControlId, COMMAND_ENDALTER);
  }
  for (NextBlockLine();
       m_pState->token.command != COMMAND_ENDALTER && m_pState->token.command != COMMAND_END_OF_PROGRAM;
       NextBlockLine()) {
    if (const int error = AlterLine(*dialog, id))
      return LeaveBlock(error, COMMAND_ENDALTER);
  }
  return true;
}

// One line, its first word the current token. 0, or the number of the error.
int CBrindle::AlterLine(ScriptDialog& dialog, int id) {
  const KEYWORD_TYPE keyword = m_pState->token.keyword;
  const int operands = AlterationOperands(keyword).value_or(1);
  Arguments args;
  if (operands > 0 && !ReadOperands(args, operands))
    return kErrorParameter;
  for (const CBasicVariable& operand : args)
    if (operand.GetType() == BVT_NONE)
      return kErrorParameter;
  CDialogWindow& window = *dialog.window;
  bool fits = true;
  switch (keyword) {
  case KEYWORD_TITLE: {
    CString title = args[0].GetStringValue();
    if (dialog.Kind(id) == ControlKind::Bitmap && !PathForOthers(title))
      break; // reported
    window.SetText(id, title);
    break;
  }
  case KEYWORD_TEXT: fits = SetTextOf(dialog, id, args[0].GetStringValue()); break;
  case KEYWORD_VALUE: fits = SetValueOf(dialog, id, args[0]); break;
  case KEYWORD_SELECTION: fits = SetSelectionOf(dialog, id, args[0]); break;
  case KEYWORD_CLEAR: fits = ClearOf(dialog, id); break;
  case KEYWORD_POSITION:
    window.Move(id, IntegerOf(args[0]), IntegerOf(args[1]), IntegerOf(args[2]), IntegerOf(args[3]));
    break;
  case KEYWORD_FONT: window.SetFont(id, IntegerOf(args[0]), args[1].GetStringValue()); break;
  case KEYWORD_SHOW: window.Show(id, args[0].GetNumberValue() != 0); break;
  case KEYWORD_ENABLE: window.Enable(id, args[0].GetNumberValue() != 0); break;
  case KEYWORD_MENUITEM: dialog.AddMenuEntry(id, args[0].GetStringValue(), args[1].GetStringValue()); break;
  default: fits = false; break;
  }
  dialog.NoteSelection(id);
  return fits ? 0 : static_cast<int>(kErrorParameter);
}
