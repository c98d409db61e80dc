// get_token and putback: the pure scan of the text, and what a word means at this moment.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"
#include "platform/collections.h"

using namespace brindle;

BASIC_TOKEN_TYPE CBrindle::get_token() {
  TokenState& state = m_pState->token;
  state.previousKind = state.kind;

  const std::uint32_t start = SkipBlanks(m_pState->program->Text(), m_pState->position);
  if (m_pState->keepTokens) {
    state.token = &m_pState->program->TokenAt(start, m_pState->words);
  } else {
    m_pState->scratch = ScanToken(m_pState->program->Text(), start, m_pState->words);
    state.token = &m_pState->scratch;
  }
  state.kind = state.token->kind;
  state.command = state.token->command;
  state.keyword = state.token->keyword;
  m_pState->position = state.token->end;

  if (state.kind == TOKEN_FUNCTION) {
    state.function = ResolveFunction(state.token->lowered);
  } else if (state.kind == TOKEN_IDENTIFIER) {
    state.kind = IsRecordField(state.token->text) ? TOKEN_FIELD : TOKEN_FIELD_UNKNOWN;
  }
  return state.kind;
}

void CBrindle::putback() {
  m_pState->position = m_pState->token.token->start;
}

bool CBrindle::AddFunction(CFuncDesc* function) {
  if (m_pState->functions.Add(function))
    return true;
  return Fail(kErrorDuplicateFunction);
}

CFuncDesc* CBrindle::FindFunction(const CString& lowered) const {
  if (!m_ExtFunctionTable.IsEmpty())
    if (auto* function = m_ExtFunctionTable.Find<CFuncDesc>(lowered))
      return function;
  return m_pState->functions.Find(lowered);
}

FUNCTION_TYPE CBrindle::ResolveFunction(const CString& lowered) {
  m_pState->token.descriptor = nullptr;
  if (lowered.Find(u'.') >= 0) {
    return FUNCTION_AUTOMATION;
  }
  CFuncDesc* function = FindFunction(lowered);
  if (function == nullptr)
    return FUNCTION_NONE;
  m_pState->token.descriptor = function;
  return function->m_nCode;
}

FUNCTION_TYPE CBrindle::LookupFunction(const CString& name, CFuncDesc& out, bool copy) {
  CString lowered = name;
  const FUNCTION_TYPE type = ResolveFunction(lowered.MakeLower());
  if (copy && m_pState->token.descriptor != nullptr)
    out = *m_pState->token.descriptor;
  return type;
}

FUNCTION_TYPE CBrindle::LookupFunction(const CString& name) {
  CFuncDesc scratch;
  return LookupFunction(name, scratch, false);
}
