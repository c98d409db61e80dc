// Calls by name, and the frame that a script procedure runs in.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"
#include "platform/collections.h"

#include <utility>

using namespace brindle;

// A call's scope: what it enters, and what has to be as before however the call ends.
struct CBrindle::ProcedureScope {
  ProcedureScope(CBrindle& owner, const CFuncDesc& function)
      : m_owner(owner), m_state(*owner.m_pState), m_program(m_state.program), m_position(m_state.position),
        m_token(m_state.token), m_keepTokens(m_state.keepTokens), m_stop(m_state.stop),
        m_positions(m_state.positions.size()), m_control(m_state.control.size()),
        m_level(m_state.m_nScopeLevel), m_record{m_state.calls,
                                                 std::exchange(m_state.callKind, CCallFrame::Kind::Procedure),
                                                 &function,
                                                 m_state.program.get(),
                                                 m_position,
                                                 m_state.atStatement,
                                                 m_state.fast.frames.size()} {
    owner.PushPosition(m_position); // needs memory: before anything points to this scope
    m_state.calls = &m_record;
    m_state.atStatement = true;
    if (m_token.token == &m_state.scratch)
      m_scratch = m_state.scratch;
    ++m_state.m_nScopeLevel;
    m_state.stop = false; // a call runs in full, also while the statement that ended the program finishes
    m_state.keepTokens = true;
    if (function.m_pProgram != nullptr)
      m_state.program = function.m_pProgram;
    if (m_state.program != nullptr && function.m_nPosition < m_state.program->Length())
      m_state.position = function.m_nPosition;
  }
  ProcedureScope(const ProcedureScope&) = delete;
  ProcedureScope& operator=(const ProcedureScope&) = delete;
  ~ProcedureScope() {
    m_state.calls = m_record.outer;
    m_state.atStatement = m_record.hasPlace;
    m_state.m_nScopeLevel = m_level;
    m_state.positions.resize(m_positions);
    m_state.control.shrink(m_control);
    m_state.program = m_program;
    m_state.position = m_position;
    m_state.token = m_token;
    if (m_token.token == &m_state.scratch)
      m_state.scratch = m_scratch;
    m_state.keepTokens = m_keepTokens;
    m_state.stop = m_state.stop || m_stop;
  }

private:
  CBrindle& m_owner;
  InterpreterState& m_state;
  std::shared_ptr<ProgramText> m_program;
  std::uint32_t m_position;
  TokenState m_token;
  Token m_scratch;
  bool m_keepTokens;
  bool m_stop;
  std::size_t m_positions;
  std::size_t m_control;
  int m_level;
  CallRecord m_record;
};

bool CBrindle::ExecUserFunction(const CString& name, CBasicVariable& result, Arguments& args, bool isCall) {
  CheckNesting(); // a host's function may change what it watches
  const FUNCTION_TYPE type = LookupFunction(name);
  CFuncDesc* const function = m_pState->token.descriptor;
  switch (type) {
  case FUNCTION_NONE: ReportError(kErrorUndefinedFunction); return false;
  case FUNCTION_AUTOMATION: return ExecAutomationMethod(name, result, args, isCall);
  case FUNCTION_HOST: return ExecCustomFunction(*function, result, args);
  case FUNCTION_SCRIPT: return RunProcedure(*function, result, args, isCall);
  case FUNCTION_EXTERNAL:
    // Deliberate: only a declared function reaches its library, a declared sub is run as a procedure.
    return function->m_nKind == CFuncDesc::kExternalFunction ? ExecExternalFunction(*function, result, args)
                                                             : RunProcedure(*function, result, args, isCall);
  default: break;
  }
  if (function->m_pHandler == nullptr)
    return Fail(kErrorUndefinedFunction);
  return (this->*function->m_pHandler)(result, args, type);
}

bool CBrindle::RunProcedure(const CFuncDesc& function, CBasicVariable& result, Arguments& args, bool isCall) {
  CheckCallDepth();
  const CString name = function.m_strName;
  ProcedureScope scope(*this, function);
  VariableUndefine(name); // the result starts undefined
  bool done = BindParameters(function, args) && RunBody();
  if (done && !isCall) {
    const VariableSlot* value = FindSlot(name);
    if (value != nullptr) {
      value->CopyTo(result);
    } else if (!m_pState->stop) { // "end" leaves a body without a result
      ReportError(kErrorNoReturnValue);
      done = false;
    }
  }
  return ExecReturn() && done;
}

// The parameter list stands behind the name in the definition.
bool CBrindle::BindParameters(const CFuncDesc& function, Arguments& args) {
  get_token();
  // A declared sub has no definition: the program's first token, whatever it is, is none.
  if (!IsDelimiter(u'(') || function.m_nKind == CFuncDesc::kExternalSub)
    return Fail(kErrorFunctionDefinition);
  get_token();
  for (int i = 0; m_pState->token.kind == TOKEN_VARIABLE; ++i) {
    if (i >= args.GetSize())
      return Fail(kErrorParameterCount);
    StoreWhole(RefOf(*m_pState->token.token), args[i], false);
    get_token();
    if (IsDelimiter(u',')) {
      get_token();
    } else if (!IsDelimiter(u')')) {
      return Fail(kErrorFunctionDefinition);
    }
  }
  if (!IsDelimiter(u')'))
    return Fail(kErrorFunctionDefinition);
  return true;
}

namespace {

bool EndsBody(COMMAND_TYPE command) {
  return command == COMMAND_ENDFUNCTION || command == COMMAND_ENDSUB || command == COMMAND_RETURN;
}

} // namespace

bool CBrindle::RunBody() {
  FindEOL();
  for (;;) {
    get_token();
    if (RunCompiled()) {
      if (m_pState->stop || EndsBody(m_pState->token.command))
        return true;
      continue;
    }
    switch (StepBody()) {
    case BodyState::GoesOn: break;
    case BodyState::Ended: return true;
    case BodyState::Failed: return false;
    }
  }
}

// One step through a body; its token has been read.
CBrindle::BodyState CBrindle::StepBody(bool isCounted) {
  const TokenState& token = m_pState->token;
  if (EndsBody(token.command))
    return BodyState::Ended;
  if (token.command == COMMAND_END_OF_PROGRAM) {
    ReportError(kErrorEndFunctionMissing);
    return BodyState::Failed;
  }
  switch (token.kind) {
  case TOKEN_VARIABLE:
  case TOKEN_FIELD:
  case TOKEN_FIELD_UNKNOWN:
  case TOKEN_COMMAND:
    if (!isCounted)
      CountStatement();
    Exec_command();
    // A statement may have run into the end of the body, or have ended the program.
    return m_pState->stop || EndsBody(token.command) ? BodyState::Ended : BodyState::GoesOn;
  case TOKEN_DELIMITER:
  case TOKEN_COMMENT:
  case TOKEN_LABEL: return BodyState::GoesOn;
  case TOKEN_NONE: ReportError(kErrorUnexpectedOperator); return BodyState::Failed;
  default:
    ReportError(kErrorUnexpectedOperator);
    FindEOL();
    return BodyState::GoesOn;
  }
}

bool CBrindle::ExecReturn() {
  if (m_pState->m_nScopeLevel == 2)
    ObjectVariablesFree(2);
  if (m_pState->m_nScopeLevel <= m_pState->baseLevel)
    return Fail(kErrorReturnLocation);
  --m_pState->m_nScopeLevel;
  unsigned long position = 0;
  if (PopPosition(position) && position < m_pState->program->Length())
    m_pState->position = static_cast<std::uint32_t>(position);
  return true;
}

bool CBrindle::ExecCall() {
  get_token();
  if (m_pState->token.kind != TOKEN_FUNCTION)
    return Fail(kErrorSyntax);
  const CString name = m_pState->token.Text();
  const int recordedNames = m_pState->m_arrTemporaries.GetSize();
  Arguments args;
  GetParamList(args);
  CBasicVariable dropped;
  const bool done = ExecUserFunction(name, dropped, args, true);
  m_pState->m_arrTemporaries.SetSize(recordedNames);
  ReadClosingParenthesis();
  return done;
}

bool CBrindle::FunctionsFree() {
  m_pState->functions.Clear();
  m_pState->functions.NoteChange();
  if (m_nNumberOfCopies == 1) {
    for (const auto& entry : m_ExtFunctionTable)
      delete static_cast<CFuncDesc*>(entry.second);
    m_ExtFunctionTable.RemoveAll();
    ++m_nHostFunctionChanges;
  }
  return true;
}
