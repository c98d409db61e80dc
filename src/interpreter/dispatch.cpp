// One statement: which handler runs it.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"

using namespace brindle;

bool CBrindle::Exec_command() {
  switch (m_pState->token.kind) {
  case TOKEN_VARIABLE:
  case TOKEN_FIELD:
  case TOKEN_FIELD_UNKNOWN:
    putback();
    assignment();
    return true;
  default: break;
  }
  // ORDER COMMAND
  switch (m_pState->token.command) {
  case COMMAND_PRINT: ExecPrint(); break;
  case COMMAND_IF: ExecIf(); break;
  case COMMAND_DO: ExecDoWhile(); break;
  case COMMAND_LOOP: ExecLoop(); break;
  case COMMAND_FOR: ExecFor(); break;
  case COMMAND_NEXT: ExecNext(); break;
  case COMMAND_GOTO: ExecGoto(); break;
  case COMMAND_END_OF_PROGRAM:
  case COMMAND_END: m_pState->stop = true; break;
  case COMMAND_GOSUB: ExecGosub(); break;
  case COMMAND_RETURN: ExecReturn(); break;
  case COMMAND_ELSE: ExecElse(); break;
  case COMMAND_DIM: ExecDim(false); break;
  case COMMAND_FUNCTION:
  case COMMAND_SUB: ReportError(kErrorFunctionInMain); break;
  case COMMAND_INCLUDE:
  case COMMAND_LIBRARY:
  case COMMAND_REM:
  case COMMAND_ENCRYPT: ExecCommandStatement(); break;
  case COMMAND_CALL: ExecCall(); break;
  case COMMAND_RUN: ExecRun(true); break;
  case COMMAND_RUNEXE: ExecRun(false); break;
  case COMMAND_OPEN: ExecOpenFile(); break;
  case COMMAND_CLOSE: ExecCloseFile(); break;
  case COMMAND_GLOBAL: ExecDim(true); break;
  case COMMAND_STAYRESIDENT: m_pState->resident = true; break;
  case COMMAND_PLAYSOUND: ExecPlaySound(); break;
  case COMMAND_MAP: ExecMap(); break;
  case COMMAND_TYPE_WORD: ExecType(); break;
  case COMMAND_EVENT: ExecEvent(); break;
  case COMMAND_THROW: ExecThrow(); break;
  case COMMAND_WATCH: ExecWatch(); break;
  case COMMAND_TIMERSTART: ExecTimerStart(); break;
  case COMMAND_TIMERSTOP: ExecTimerStop(); break;
  case COMMAND_DIALOG: ExecDialog(); break;
  case COMMAND_CLOSEDIALOG: ExecCloseDialog(); break;
  case COMMAND_ALTER: ExecAlterControl(); break;
  case COMMAND_SETFOCUS: ExecSetFocus(); break;
  case COMMAND_PROPERTYSHEET: ExecPropertySheet(); break;
  case COMMAND_DECLARE: ExecDeclare(); break;
  default: return false; // a word such as "then" or "endif" on its own is stepped over
  }
  return true;
}

bool CBrindle::ExecCommandStatement() {
  return FindEOL();
}

bool CBrindle::ExecPlaySound() {
  CBasicVariable file;
  get_exp(file);
  CString path = file.GetStringValue();
  if (!PathForOthers(path))
    return false;
  if (m_pState->budget->Root() == nullptr || !path.IsEmpty())
    GetUserInterface().PlaySoundFile(path);
  return true;
}
