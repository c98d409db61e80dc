// "dialog", "propertysheet" and their lines: a script's text becomes templates, and the dialog runs.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"
#include "interpreter/user_interface_call.h"
#include "platform/number_text.h"
#include "ui/dialog_words.h"
#include "ui/script_dialog.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

using namespace brindle;

namespace {

struct Control {
  KEYWORD_TYPE keyword;
  std::uint16_t classCode;
  std::u16string_view className;
  std::uint32_t style;
};

// ORDER KEYWORD
constexpr std::array kControls = {
    Control{KEYWORD_BUTTON, 0x80, u"", 0x10010000},
    Control{KEYWORD_EDITTEXT, 0x81, u"", 0x10810080},
    Control{KEYWORD_CHECKBOX, 0x80, u"", 0x10010003},
    Control{KEYWORD_LISTBOX, 0x83, u"", 0x10B10041},
    Control{KEYWORD_OKBUTTON, 0x80, u"", 0x10010001},
    Control{KEYWORD_STATICTEXT, 0x82, u"", 0x10000000},
    Control{KEYWORD_BITMAP, 0x82, u"", 0x1000000E},
    Control{KEYWORD_GROUPBOX, 0x80, u"", 0x10020007},
    Control{KEYWORD_MULTILISTBOX, 0x83, u"", 0x10B10049},
    Control{KEYWORD_DATETIME, 0, u"SysDateTimePick32", 0x10010020},
    Control{KEYWORD_EDITMULTILINE, 0x81, u"", 0x10B110C4},
    Control{KEYWORD_CANCELBUTTON, 0x80, u"", 0x10010000},
    Control{KEYWORD_COMBOBOX, 0x85, u"", 0x10210203},
    Control{KEYWORD_EDITNUMBER, 0x81, u"", 0x10812080},
    Control{KEYWORD_RADIOGROUP, 0x80, u"", 0x10010009},
    Control{KEYWORD_TREEVIEW, 0, u"SysTreeView32", 0x10810037},
    Control{KEYWORD_SLIDERHORZ, 0, u"msctls_trackbar32", 0x10010005},
    Control{KEYWORD_SLIDERVERT, 0, u"msctls_trackbar32", 0x10010007},
    Control{KEYWORD_TABCONTROL, 0, u"SysTabControl32", 0x10010000},
};

constexpr int kPageWidth = 200; // of a property sheet that gives no size, in dialog units
constexpr int kPageHeight = 150;
constexpr std::uint16_t kMostItems = 0xFFFF;

int IntegerOf(const CBasicVariable& value) {
  return ToInt32(value.GetNumberValue());
}

// Coordinates are 16 bits wide in a template.
DialogRectangle RectangleOf(const CBasicVariableArray& args, int first) {
  const auto coordinate = [&](int i) { return static_cast<std::int16_t>(IntegerOf(args[first + i])); };
  return {coordinate(0), coordinate(1), coordinate(2), coordinate(3)};
}

const Control* FindControl(KEYWORD_TYPE keyword) {
  const auto row = std::find_if(kControls.begin(), kControls.end(),
                                [keyword](const Control& row) { return row.keyword == keyword; });
  return row == kControls.end() ? nullptr : &*row;
}

} // namespace

bool brindle::IsControlKind(KEYWORD_TYPE keyword) noexcept {
  return FindControl(keyword) != nullptr;
}

bool CBrindle::CreateItemTemplate(std::uint32_t style, const CBasicVariableArray& args, int id, std::uint16_t classCode,
                                  std::vector<std::byte>& item) {
  item = MakeDialogItem({.style = style,
                         .rectangle = RectangleOf(args, 2),
                         .id = static_cast<std::uint16_t>(id),
                         .windowClass = static_cast<WindowClass>(classCode),
                         .className = CString(),
                         .caption = args[0].GetStringValue()});
  return !item.empty();
}

bool CBrindle::CreateItemTemplate(std::uint32_t style, const CBasicVariableArray& args, int id,
                                  const CString& className, std::vector<std::byte>& item) {
  item = MakeDialogItem({.style = style,
                         .rectangle = RectangleOf(args, 2),
                         .id = static_cast<std::uint16_t>(id),
                         .windowClass = WindowClass::Named,
                         .className = className,
                         .caption = args[0].GetStringValue()});
  return !item.empty();
}

// control KIND caption, id, x, y, width, height [, handler]. Reports its own errors.
bool CBrindle::ExecControl(std::vector<std::byte>& item, int& id, CString& handler) {
  get_token();
  if (m_pState->token.kind != TOKEN_KEYWORD)
    return Fail(kErrorSyntax);
  const KEYWORD_TYPE keyword = m_pState->token.keyword;
  Arguments args;
  ReadOperands(args, kControlParameters);
  const Control* const control = FindControl(keyword);
  if (control == nullptr)
    return Fail(kErrorDialogControl);
  if (args.GetSize() < kControlParameters)
    return Fail(kErrorSyntax);
  if (keyword == KEYWORD_BITMAP) {
    CString picture = args[0].GetStringValue();
    if (!PathForOthers(picture))
      return false;
    args[0].SetValue(picture);
  }
  id = keyword == KEYWORD_OKBUTTON       ? CDialogWindow::kOk
       : keyword == KEYWORD_CANCELBUTTON ? CDialogWindow::kCancel
                                         : IntegerOf(args[1]);
  id = static_cast<std::uint16_t>(id);
  handler = args.GetSize() > kControlParameters ? args[kControlParameters].GetStringValue() : CString();
  return control->className.empty() ? CreateItemTemplate(control->style, args, id, control->classCode, item)
                                    : CreateItemTemplate(control->style, args, id, CString(control->className), item);
}

// The rest of the line as operands; what stands behind them is left. False when they are too few.
bool CBrindle::ReadOperands(Arguments& args, int count) {
  args.RemoveAll();
  get_token();
  putback();
  if (AtStatementEnd())
    return false;
  const int recordedNames = m_pState->m_arrTemporaries.GetSize();
  GetParamGroup(args);
  putback();
  m_pState->m_arrTemporaries.SetSize(recordedNames);
  return args.GetSize() >= count;
}

int CBrindle::ReadDialogName(CString& name) {
  get_token();
  const bool isName = !m_pState->token.Text().IsEmpty() && m_pState->token.kind != TOKEN_DELIMITER;
  if (!isName)
    return kErrorSyntax;
  name = m_pState->token.Text();
  return 0;
}

// One token inside a dialog or page. 0, the number of an error, or -1 for one that has been reported.
int CBrindle::ReadDialogLine(ScriptDialog& dialog, std::vector<std::byte>& dialogTemplate) {
  constexpr int kReported = -1;
  StepOver();
  switch (m_pState->token.keyword) {
  case KEYWORD_CONTROL: {
    std::vector<std::byte> item;
    int id = 0;
    CString handler;
    if (!ExecControl(item, id, handler))
      return kReported;
    if (ItemCountOf(dialogTemplate) == kMostItems)
      return kErrorDialogCreating;
    AppendItem(dialogTemplate, item);
    if (!handler.IsEmpty())
      dialog.handlers[id] = handler;
    return 0;
  }
  case KEYWORD_ONINIT: return ReadDialogName(dialog.pages.back().m_strOnInit);
  case KEYWORD_ONEXIT: return ReadDialogName(dialog.pages.back().m_strOnExit);
  default: return 0;
  }
}

namespace {

bool EndsBlock(COMMAND_TYPE command, COMMAND_TYPE end) {
  return command == end || command == COMMAND_END_OF_PROGRAM;
}

} // namespace

// dialog title, x, y, width, height [, point size, face], the lines of its controls, enddialog
bool CBrindle::ExecDialog() {
  Arguments args;
  if (!ReadOperands(args, kDialogParameters))
    return LeaveBlock(kErrorSyntax, COMMAND_ENDDIALOG);
  DialogHeader header;
  header.title = args[0].GetStringValue();
  header.rectangle = RectangleOf(args, 1);
  header.hasFont = args.GetSize() >= kFontParameters;
  if (header.hasFont) {
    header.pointSize = static_cast<std::uint16_t>(IntegerOf(args[5]));
    header.face = args[6].GetStringValue();
  }

  ScriptDialog dialog;
  dialog.pages.resize(1);
  std::vector<std::byte> dialogTemplate = MakeDialogHeader(header);
  for (get_token(); !EndsBlock(m_pState->token.command, COMMAND_ENDDIALOG); get_token()) {
    if (const int error = ReadDialogLine(dialog, dialogTemplate))
      return LeaveBlock(error, COMMAND_ENDDIALOG);
  }
  dialog.description.templates.push_back(std::move(dialogTemplate));
  return RunDialog(dialog);
}

// propertysheet title [, x, y, width, height], its pages, enddialog
bool CBrindle::ExecPropertySheet() {
  Arguments args;
  if (!ReadOperands(args, 1))
    return LeaveBlock(kErrorSyntax, COMMAND_ENDDIALOG);
  ScriptDialog dialog;
  dialog.description.sheet = true;
  dialog.description.title = args[0].GetStringValue();
  if (args.GetSize() >= kDialogParameters) {
    const DialogRectangle rectangle = RectangleOf(args, 1);
    dialog.description.x = rectangle.x;
    dialog.description.y = rectangle.y;
    dialog.description.width = rectangle.width;
    dialog.description.height = rectangle.height;
  }
  for (get_token(); !EndsBlock(m_pState->token.command, COMMAND_ENDDIALOG); get_token()) {
    StepOver();
    if (m_pState->token.command == COMMAND_PAGE && !ExecPropertyPage(dialog))
      return false;
  }
  if (dialog.description.templates.empty())
    return LeaveBlock(kErrorDialogCreating, COMMAND_ENDDIALOG);
  return RunDialog(dialog);
}

// page title, the lines of its controls, endpage
bool CBrindle::ExecPropertyPage(ScriptDialog& dialog) {
  Arguments args;
  if (!ReadOperands(args, 1))
    return LeaveBlock(kErrorSyntax, COMMAND_ENDDIALOG);
  DialogHeader header;
  header.title = args[0].GetStringValue();
  header.rectangle.width =
      static_cast<std::int16_t>(dialog.description.width > 0 ? dialog.description.width : kPageWidth);
  header.rectangle.height =
      static_cast<std::int16_t>(dialog.description.height > 0 ? dialog.description.height : kPageHeight);
  dialog.pages.emplace_back();
  std::vector<std::byte> page = MakeDialogHeader(header);
  for (get_token(); !EndsBlock(m_pState->token.command, COMMAND_ENDPAGE); get_token()) {
    if (m_pState->token.command == COMMAND_ENDDIALOG) {
      putback(); // a page without its end ends with the sheet
      break;
    }
    if (const int error = ReadDialogLine(dialog, page))
      return LeaveBlock(error, COMMAND_ENDDIALOG);
  }
  dialog.description.templates.push_back(std::move(page));
  return true;
}

void CBrindle::RaiseHandler(const CString& name, const CBasicVariable& value) {
  Arguments args;
  args.Add(value);
  if (EventThrow(name, args))
    return;
  const TokenState token = m_pState->token; // a look-up notes what it found
  const bool known = LookupFunction(name) != FUNCTION_NONE;
  m_pState->token = token;
  if (known) {
    CBasicVariable dropped;
    m_pState->callKind = CCallFrame::Kind::Handler;
    ExecUserFunction(name, dropped, args, true);
    m_pState->callKind = CCallFrame::Kind::Procedure;
  }
}

bool CBrindle::RunDialog(ScriptDialog& dialog) {
  CheckNesting();
  dialog.Connect([this](const CString& name, const CBasicVariable& value) { RaiseHandler(name, value); },
                 [] {
                   if (!UserInterfaceCalls::KeepException())
                     throw;
                 });
  if (dialog.ReadTemplates())
    dialog.window =
        CallUserInterface([&] { return GetUserInterface().CreateDialogWindow(dialog.description, dialog); });
  if (dialog.window == nullptr)
    return Fail(kErrorDialogCreating);

  struct Open {
    Open(std::vector<ScriptDialog*>& list, ScriptDialog& dialog) : m_list(list) { m_list.push_back(&dialog); }
    Open(const Open&) = delete;
    Open& operator=(const Open&) = delete;
    ~Open() { m_list.pop_back(); }
    std::vector<ScriptDialog*>& m_list;
  };
  const Open open(m_pState->openDialogs, dialog);
  const int result = CallUserInterface([&] { return dialog.window->Run(); }, dialog.window.get());
  CallUserInterface([&] { dialog.RaiseExit(result); });
  return true;
}
