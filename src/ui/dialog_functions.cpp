// Window-level statements and functions: focus, closing, questions, file dialogs, menus, handles, messages.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"
#include "interpreter/user_interface_call.h"
#include "platform/collections.h"
#include "platform/number_text.h"
#include "platform/path.h"
#include "ui/script_dialog.h"

using namespace brindle;

ScriptDialog* CBrindle::CurrentDialog() const noexcept {
  return m_pState->openDialogs.empty() ? nullptr : m_pState->openDialogs.back();
}

bool CBrindle::GetControlWindow(int id) const {
  const ScriptDialog* dialog = CurrentDialog();
  return dialog != nullptr && dialog->HasControl(id);
}

bool CBrindle::ExecCloseDialog() {
  ScriptDialog* dialog = CurrentDialog();
  if (dialog == nullptr)
    return Fail(kErrorNoDialog);
  dialog->window->End(CDialogWindow::kOk);
  return true;
}

bool CBrindle::ExecSetFocus() {
  CBasicVariable value;
  get_exp(value);
  const int id = ToInt32(value.GetNumberValue());
  if (!GetControlWindow(id))
    return false;
  CurrentDialog()->window->SetFocus(id);
  return true;
}

bool CBrindle::ExecAsk(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type) {
  if (!CheckArguments(args, type))
    return false;
  const CString question = args[0].GetStringValue();
  const bool yes = CallUserInterface([&] { return GetUserInterface().AskYesNo(question, CString()); });
  result.SetValue(yes ? 1 : 0);
  return true;
}

// fileopendlg/filesaveasdlg(name, extension, filter [, folder]); what is not given is empty
bool CBrindle::ExecFileDlg(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type) {
  result.SetValue(CString());
  const auto textOf = [&args](int i) { return i < args.GetSize() ? args[i].GetStringValue() : CString(); };
  CUserInterface::FileRequest request;
  request.save = type == FUNCTION_FILESAVEASDLG;
  request.fileName = textOf(0);
  request.defaultExtension = textOf(1);
  request.filter = textOf(2);
  request.initialFolder = textOf(3);
  // The user sees the system's paths, a script that is held to a root only those below it.
  const FileRoot* const root = m_pState->budget->Root();
  if (root != nullptr) {
    const std::u16string folder =
        request.initialFolder.IsEmpty() ? u"\\" : std::u16string(request.initialFolder.View());
    request.initialFolder = CString(PathFromNative(root->PathOf(folder).value_or(std::string())));
  }
  const auto path = CallUserInterface([&] { return GetUserInterface().ChooseFile(request); });
  if (!path)
    return true;
  if (root == nullptr) {
    result.SetValue(*path);
    return true;
  }
  const auto name = root->NameOf(ResolvePath(path->View()));
  if (!name)
    return Fail(kErrorNotAllowed);
  result.SetValue(CString(*name));
  return true;
}

bool CBrindle::ExecPopupMenu(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type) {
  if (!CheckArguments(args, type))
    return false;
  CStringArray entries;
  for (CBasicVariable& argument : args) {
    for (int i = 0; i < argument.GetNumItems(); ++i) {
      argument.SetCurIndex(i);
      entries.Add(argument.GetStringValue());
    }
  }
  const int chosen = CallUserInterface([&] { return GetUserInterface().ShowPopupMenu(entries); });
  result.SetValue(chosen);
  return true;
}

bool CBrindle::ExecWindowHandle(CBasicVariable& result, Arguments& args, FUNCTION_TYPE) {
  const ScriptDialog* dialog = CurrentDialog();
  const int id = args.IsEmpty() ? CDialogWindow::kWindow : ToInt32(args[0].GetNumberValue());
  if (dialog == nullptr || (!args.IsEmpty() && !dialog->HasControl(id))) {
    result.SetValue(0);
    return true;
  }
  // A handle that is wider than a script's integer must not look like none.
  const int handle = static_cast<int>(dialog->window->GetHandle(id));
  result.SetValue(handle == 0 ? 1 : handle);
  return true;
}

// copydata(title, code, text): "OnCopyData" at the interpreter whose open dialog has that title
bool CBrindle::ExecCopyData(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type) {
  if (!CheckArguments(args, type))
    return false;
  const CString title = args[0].GetStringValue();
  for (void* member : m_List) {
    auto* interpreter = static_cast<CBrindle*>(member);
    for (const ScriptDialog* dialog : interpreter->m_pState->openDialogs) {
      if (dialog->window->GetText(CDialogWindow::kWindow) != title)
        continue;
      Arguments data;
      data.Add(args[1]);
      data.Add(args[2]);
      interpreter->EventThrow(CString(u"OnCopyData"), data);
      result.SetValue(1);
      return true;
    }
  }
  result.SetValue(0);
  return true;
}

// Deliberate: a reserved name that does nothing.
bool CBrindle::ExecSendMessage(CBasicVariable&, Arguments&, FUNCTION_TYPE) {
  return true;
}

// controlvalue(id [, "selection" | "text"])
bool CBrindle::ExecGetControlValue(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type) {
  if (!CheckArguments(args, type))
    return false;
  const ScriptDialog* dialog = CurrentDialog();
  if (dialog == nullptr)
    return Fail(kErrorNoDialog);
  const int id = ToInt32(args[0].GetNumberValue());
  if (!dialog->HasControl(id))
    return Fail(kErrorControlId);
  if (args.GetSize() < 2) {
    result.Set(dialog->ValueOf(id));
    return true;
  }
  const CString what = args[1].GetStringValue();
  if (what.CompareNoCase(CString(u"text")) == 0) {
    result.SetValue(dialog->window->GetText(id));
    return true;
  }
  if (what.CompareNoCase(CString(u"selection")) != 0)
    return Fail(kErrorParameter);
  const std::vector<int> selection = dialog->window->GetSelection(id);
  if (dialog->Kind(id) != ControlKind::MultiListBox) {
    result.SetValue(selection.empty() ? -1 : selection.front());
    return true;
  }
  for (const int index : selection)
    result.AddItem(index);
  return true;
}
