// A call inside an expression.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"

using namespace brindle;

bool CBrindle::ExecFunction(CBasicVariable& result) {
  // The arguments may hold calls of their own: keep what the token reader found.
  const FUNCTION_TYPE code = m_pState->token.function;
  const CString name = m_pState->token.Text();
  CFuncDesc* const function = m_pState->token.descriptor;
  if (code == FUNCTION_NONE)
    return Fail(kErrorUndefinedFunction);

  const int recordedNames = m_pState->m_arrTemporaries.GetSize();
  Arguments args;
  GetParamList(args);
  bool done = false;
  switch (code) {
  case FUNCTION_SCRIPT:
  case FUNCTION_HOST:
  case FUNCTION_EXTERNAL:
  case FUNCTION_AUTOMATION: {
    CBasicVariable value;
    done = code == FUNCTION_AUTOMATION ? ExecAutomationMethod(name, value, args, false)
                                       : ExecUserFunction(name, value, args, false);
    if (done)
      result.Set(value);
    break;
  }
  default:
    if (function->m_pHandler != nullptr)
      done = (this->*function->m_pHandler)(result, args, code);
    else
      ReportError(kErrorUndefinedFunction);
    break;
  }
  m_pState->m_arrTemporaries.SetSize(recordedNames);

  get_token();
  if (!IsDelimiter(u')'))
    return Fail(kErrorFunctionCall);
  return done;
}
