#include "ui/script_dialog.h"

#include "platform/number_text.h"

#include <algorithm>
#include <iterator>

namespace brindle {

bool ScriptDialog::ReadTemplates() {
  for (const std::vector<std::byte>& bytes : description.templates) {
    const auto dialogTemplate = ReadDialogTemplate(bytes);
    if (!dialogTemplate)
      return false;
    for (const DialogItem& item : dialogTemplate->items)
      m_kinds.try_emplace(item.id, KindOf(item)); // the first control of an id answers to it
  }
  return true;
}

// The window system calls in here: nothing may be thrown back through it.
void ScriptDialog::RaiseSafely(const CString& handler, const CBasicVariable& value) {
  if (handler.IsEmpty() || m_bAborted)
    return;
  try {
    m_raise(handler, value);
  } catch (...) {
    m_bAborted = true;
    m_keepException(); // and the dialog ends
  }
}

void ScriptDialog::OnOpened() {
  for (const CPropertyPageInfo& page : pages)
    RaiseSafely(page.m_strOnInit, CBasicVariable(0));
}

void ScriptDialog::RaiseExit(int result) {
  for (const CPropertyPageInfo& page : pages)
    RaiseSafely(page.m_strOnExit, CBasicVariable(result));
}

void ScriptDialog::OnCommand(int id, int code) {
  const auto handler = handlers.find(id);
  if (handler != handlers.end() && HasControl(id)) {
    const CString name = handler->second;
    switch (code) {
    case Clicked: RaiseSafely(name, CBasicVariable(window->IsChecked(id) ? 1 : 0)); break;
    case SelectionChanged: {
      const int item = ChosenItem(id);
      if (item >= 0)
        RaiseSafely(name, CBasicVariable(window->GetItemText(id, item)));
      break;
    }
    case TextChanged: RaiseSafely(name, CBasicVariable(window->GetText(id))); break;
    default: break;
    }
  }
  if (code == Clicked && (id == CDialogWindow::kOk || id == CDialogWindow::kCancel))
    window->End(id);
}

// The item that the user has just selected, or toggled where several can be; -1 when there is none.
int ScriptDialog::ChosenItem(int id) {
  const ControlKind kind = Kind(id);
  if (kind == ControlKind::MultiListBox) {
    const std::vector<int> before = m_selections[id];
    NoteSelection(id);
    const std::vector<int>& now = m_selections[id];
    std::vector<int> changed;
    std::set_symmetric_difference(before.begin(), before.end(), now.begin(), now.end(), std::back_inserter(changed));
    return changed.empty() ? -1 : changed.back();
  }
  if (kind != ControlKind::ListBox && kind != ControlKind::ComboBox)
    return -1;
  const std::vector<int> selection = window->GetSelection(id);
  return selection.empty() ? -1 : selection.front();
}

void ScriptDialog::NoteSelection(int id) {
  if (Kind(id) == ControlKind::MultiListBox)
    m_selections[id] = window->GetSelection(id);
}

void ScriptDialog::OnNotify(int id) {
  const auto handler = handlers.find(id);
  if (handler != handlers.end() && HasControl(id)) {
    const CString name = handler->second;
    RaiseSafely(name, ValueOf(id));
  }
}

void ScriptDialog::OnMenu(int id, int entry) {
  const auto menu = m_menus.find(id);
  if (menu == m_menus.end() || entry < 0 || static_cast<std::size_t>(entry) >= menu->second.size())
    return;
  const MenuEntry chosen = menu->second[static_cast<std::size_t>(entry)];
  RaiseSafely(chosen.handler, CBasicVariable(chosen.caption));
}

void ScriptDialog::AddMenuEntry(int id, const CString& caption, const CString& handler) {
  m_menus[id].push_back({caption, handler});
  window->AddMenuEntry(id, caption);
}

CBasicVariable ScriptDialog::ValueOf(int id) const {
  switch (Kind(id)) {
  case ControlKind::EditNumber: return CBasicVariable(ParseInteger(window->GetText(id).View()));
  case ControlKind::CheckBox:
  case ControlKind::RadioButton: return CBasicVariable(window->IsChecked(id) ? 1 : 0);
  case ControlKind::ListBox:
  case ControlKind::ComboBox:
  case ControlKind::Tree: {
    const std::vector<int> selection = window->GetSelection(id);
    return CBasicVariable(selection.empty() ? CString() : window->GetItemText(id, selection.front()));
  }
  case ControlKind::MultiListBox: {
    CBasicVariable texts;
    for (const int index : window->GetSelection(id))
      texts.AddItem(window->GetItemText(id, index));
    return texts;
  }
  case ControlKind::SliderHorizontal:
  case ControlKind::SliderVertical: return CBasicVariable(window->GetPosition(id));
  case ControlKind::Tab: {
    const std::vector<int> selection = window->GetSelection(id);
    return CBasicVariable(selection.empty() ? -1 : selection.front());
  }
  case ControlKind::Date: return CBasicVariable(window->GetDate(id));
  default: return CBasicVariable(window->GetText(id));
  }
}

} // namespace brindle
