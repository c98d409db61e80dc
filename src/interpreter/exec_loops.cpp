// Loops: for/next, do while/loop, and the control stack.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"

using namespace brindle;

bool CBrindle::PushToStack(const CStackData& entry) {
  CStackData pushed = entry;
  pushed.inUse = true;
  m_pState->control.push(std::move(pushed));
  return true;
}

bool CBrindle::PushToStack(const CString& name, double value, unsigned long position) {
  return PushToStack(CStackData{name, value, static_cast<std::uint32_t>(position), true});
}

bool CBrindle::PopFromStack(CStackData& out) {
  if (m_pState->control.empty())
    return false;
  out = m_pState->control.Take();
  return true;
}

// "for" variable "=" start "to" end; the step is always 1.
bool CBrindle::ExecFor() {
  get_token();
  if (m_pState->token.kind != TOKEN_VARIABLE)
    return Fail(kErrorExpectedEqual);
  const CString variable = m_pState->token.Text();
  const Token* const site = m_pState->keepTokens ? m_pState->token.token : nullptr;
  get_token();
  if (!IsDelimiter(u'='))
    return Fail(kErrorExpectedEqual);
  CBasicVariable start;
  get_exp(start);
  SetVariable(variable, start.GetNumberValue(), 0);

  get_token();
  if (m_pState->token.command != COMMAND_TO)
    return Fail(kErrorExpectedTo);
  CBasicVariable end;
  get_exp(end);
  if (end.GetNumberValue() >= start.GetNumberValue())
    return PushToStack(CStackData{variable, end.GetNumberValue(), m_pState->position, true, site});
  return FindLastPair(COMMAND_FOR, COMMAND_NEXT, COMMAND_NONE);
}

bool CBrindle::ExecNext() {
  CStackData loop;
  if (!PopFromStack(loop))
    return Fail(kErrorIllegalNext);
  VariableSlot* counter = FindSlot(loop.name);
  if (counter == nullptr || !counter->Increment())
    return Fail(kErrorIllegalNext);
  counter = FindSlot(loop.name); // a handler of its change event may have moved it
  if (counter == nullptr || counter->CurrentItem().GetDoubleValue() > loop.value)
    return true;
  const std::uint32_t body = loop.position;
  m_pState->control.push(std::move(loop));
  if (body < m_pState->program->Length())
    m_pState->position = body;
  return true;
}

// "do" "while" condition; "loop" comes back to the word "do".
bool CBrindle::ExecDoWhile() {
  const std::uint32_t start = m_pState->token.token->start;
  get_token();
  if (m_pState->token.kind != TOKEN_KEYWORD)
    ReportError(kErrorSyntax); // and reading goes on
  if (m_pState->token.keyword != KEYWORD_WHILE)
    return Fail(kErrorWhileMissing);
  if (ExecLogicalStatement())
    return PushToStack(CString(), 0, start);
  return FindLastPair(COMMAND_DO, COMMAND_LOOP, COMMAND_NONE);
}

// Takes whatever loop is on top, a "for" as well.
bool CBrindle::ExecLoop() {
  CStackData loop;
  if (PopFromStack(loop) && loop.position < m_pState->program->Length())
    m_pState->position = loop.position;
  return true;
}
