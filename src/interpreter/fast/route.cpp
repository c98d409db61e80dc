// Where the executing parser and the compiled statements meet.
#include "brindle/interpreter.h"
#include "interpreter/fast/compiler.h"
#include "interpreter/state.h"

using namespace brindle;

// The compiled form of the statement whose first token is current; null when the executing parser runs it.
FastEntry* CBrindle::CompiledEntry() {
  FastState& fast = m_pState->fast;
  const TokenState& token = m_pState->token;
  if (fast.mode == FastMode::Never || token.token == &m_pState->scratch ||
      (token.kind != TOKEN_VARIABLE && token.kind != TOKEN_COMMAND))
    return nullptr;
  FastCode& code = m_pState->program->Fast();
  if (code.layout != m_pState->m_mapVariables.Layout() || code.functions != FastMachine::FunctionChanges(*m_pState)) {
    code.Forget();
    code.layout = m_pState->m_mapVariables.Layout();
    code.functions = FastMachine::FunctionChanges(*m_pState);
  }
  FastEntry& entry = code.EntryOf(*token.token);
  if (entry.refused)
    return nullptr;
  if (entry.runs < fast.Threshold()) {
    ++entry.runs;
    return nullptr;
  }
  const bool endsBody =
      token.command == COMMAND_RETURN || token.command == COMMAND_ENDFUNCTION || token.command == COMMAND_ENDSUB;
  if (!entry.IsCompiled())
    FastCompiler(*this).Compile(*token.token);
  // The end of a body is compiled for what leads to it; met on its own it is the executing parser's.
  return entry.IsCompiled() && !endsBody ? &entry : nullptr;
}

// Whether the statement whose first token is current has been run, and perhaps many behind it.
bool CBrindle::RunCompiled() {
  const FastEntry* const entry = CompiledEntry();
  if (entry == nullptr)
    return false;
  FastMachine(*this).Run(*entry);
  return true;
}

// The value of the expression of that level which begins at the current token, if a compiled statement computed it
// before it gave up. The token behind it is current then.
bool CBrindle::TakeFromTape(int level, CBasicVariable& result) {
  FastTapeEntry* const known = m_pState->fast.tape.Take(m_pState->token.token->start, level);
  if (known == nullptr)
    return false;
  result.Set(known->value);
  m_pState->position = known->end;
  get_token();
  return true;
}
