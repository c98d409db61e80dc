// The statements of events: "event", "throw", "watch", "timerstart", "timerstop".
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"
#include "interpreter/user_interface_call.h"
#include "platform/number_text.h"

using namespace brindle;

namespace {

bool IsName(const TokenState& token) {
  return token.kind == TOKEN_VARIABLE || token.kind == TOKEN_STRING;
}

} // namespace

// event create|remove EVENT HANDLER
bool CBrindle::ExecEvent() {
  const TokenState& token = m_pState->token;
  get_token();
  if (token.kind != TOKEN_KEYWORD)
    return Fail(kErrorSyntax);
  const KEYWORD_TYPE keyword = token.keyword;
  get_token();
  if (!IsName(token))
    return Fail(kErrorSyntax);
  const CString event = token.Text();
  get_token();
  if (!IsName(token))
    return Fail(kErrorSyntax);
  const CString handler = token.Text();
  if (LookupFunction(handler) == FUNCTION_NONE)
    return Fail(kErrorUndefinedFunction);
  switch (keyword) {
  case KEYWORD_CREATE: return EventAdd(event, handler);
  case KEYWORD_REMOVE: return EventRemove(event, handler);
  default: return Fail(kErrorUnsupportedKeyword);
  }
}

// throw EVENT(arguments); an event without handlers is no error
bool CBrindle::ExecThrow() {
  get_token();
  if (m_pState->token.kind != TOKEN_FUNCTION)
    return Fail(kErrorSyntax);
  const CString event = m_pState->token.Text();
  const int recordedNames = m_pState->m_arrTemporaries.GetSize();
  Arguments args;
  GetParamList(args);
  const bool thrown = RaiseEvent(event, args);
  m_pState->m_arrTemporaries.SetSize(recordedNames);
  ReadClosingParenthesis();
  return thrown;
}

// watch create VARIABLE EVENT, watch remove VARIABLE
bool CBrindle::ExecWatch() {
  const TokenState& token = m_pState->token;
  get_token();
  if (token.kind != TOKEN_KEYWORD)
    return Fail(kErrorSyntax);
  const KEYWORD_TYPE keyword = token.keyword;
  get_token();
  if (token.kind != TOKEN_VARIABLE)
    return Fail(kErrorSyntax);
  CString name = token.Text();
  CString event;
  if (keyword == KEYWORD_CREATE) {
    get_token();
    if (!IsName(token))
      return Fail(kErrorSyntax);
    event = token.Text();
  }
  CBasicVariable* variable = FindVariable(name);
  if (variable == nullptr)
    return Fail(kErrorUndefinedVariable);
  switch (keyword) {
  case KEYWORD_CREATE: variable->SetChangeEvent(this, event); return true;
  case KEYWORD_REMOVE: variable->RemoveChangeEvent(); return true;
  default: return Fail(kErrorUnsupportedKeyword);
  }
}

// timerstart MILLISECONDS: "OnTimer" from now on, instead of what a timer that runs already does
bool CBrindle::ExecTimerStart() {
  ExecTimerStop();
  CBasicVariable period;
  get_exp(period);
  const int milliseconds = ToInt32(period.GetNumberValue());
  CUserInterface& userInterface = GetUserInterface();
  m_pState->timer = userInterface.StartTimer(milliseconds < 1 ? 1U : static_cast<unsigned>(milliseconds), [this] {
    // The interpreter stops its timer when it ends; a window system that ticks once more finds it gone.
    if (IsValidInterpreter(this))
      TimerTick();
  });
  m_pState->timerOwner = &userInterface;
  return true;
}

// The tick comes out of a window system's loop, which no exception may pass: one waits for the loop's end.
void CBrindle::TimerTick() {
  if (m_pState->ticking)
    return; // its handler is not done with the last tick
  struct Ticking {
    explicit Ticking(bool& flag) : m_flag(flag) { m_flag = true; }
    Ticking(const Ticking&) = delete;
    Ticking& operator=(const Ticking&) = delete;
    ~Ticking() { m_flag = false; }
    bool& m_flag;
  };
  const Ticking ticking(m_pState->ticking);
  try {
    CBasicVariable unset;
    EventThrow(CString(u"OnTimer"), &unset);
  } catch (...) {
    if (!UserInterfaceCalls::KeepException())
      throw;
  }
}

bool CBrindle::ExecTimerStop() {
  if (m_pState->timer != 0)
    m_pState->timerOwner->StopTimer(m_pState->timer);
  m_pState->timer = 0;
  m_pState->timerOwner = nullptr;
  return true;
}
