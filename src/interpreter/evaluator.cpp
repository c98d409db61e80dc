// The expression evaluator. It reads bottom-up: every level takes the operators of one precedence and asks
// the next level for their operands; "primitive" reads a single operand.
//
//   get_exp    one expression; the token behind it is given back
//   level2     a + b   a - b              (to the left)
//   level3     a * b   a / b   a % b      (to the left)
//   level4     a ^ b                      (to the right)
//   level5     -a   +a                    below "^" on purpose: -2^2 is (-2)^2
//   level6     ( expression )
//   primitive  number, text, variable, element, property, call
//
// Each level expects the first token of its part to be current and leaves the first one behind it current.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"

using namespace brindle;

namespace {

// An operator is recognised by the token's first unit alone.
char16_t FirstUnit(const TokenState& token) {
  return token.Text().IsEmpty() ? u'\0' : token.Text().GetAt(0);
}

} // namespace

void CBrindle::get_exp(CBasicVariable& result) {
  CheckNesting();
  get_token();
  if (m_pState->token.Text().IsEmpty() && m_pState->token.kind != TOKEN_STRING) {
    // Deliberate: a missing expression is reported as unbalanced parentheses.
    ReportError(kErrorUnbalancedParens);
    return;
  }
  level2(result);
  putback();
}

// Out of line, so that the levels above, of which every nested expression needs a set, have slim frames.
[[gnu::noinline]] void CBrindle::ApplyOperator(char16_t operation, void (CBrindle::*readOperand)(CBasicVariable&),
                                               CBasicVariable& left) {
  get_token();
  CBasicVariable right;
  (this->*readOperand)(right);
  ComputeOperation(operation, left, right);
}

void CBrindle::level2(CBasicVariable& result) {
  if (m_pState->fast.tape.IsEmpty() || !TakeFromTape(2, result))
    level3(result);
  for (char16_t operation = FirstUnit(m_pState->token); operation == u'+' || operation == u'-';
       operation = FirstUnit(m_pState->token))
    ApplyOperator(operation, &CBrindle::level3, result);
}

void CBrindle::level3(CBasicVariable& result) {
  if (m_pState->fast.tape.IsEmpty() || !TakeFromTape(3, result))
    level4(result);
  for (char16_t operation = FirstUnit(m_pState->token); operation == u'*' || operation == u'/' || operation == u'%';
       operation = FirstUnit(m_pState->token))
    ApplyOperator(operation, &CBrindle::level4, result);
}

void CBrindle::level4(CBasicVariable& result) {
  if (!m_pState->fast.tape.IsEmpty() && TakeFromTape(4, result))
    return;
  level5(result);
  if (FirstUnit(m_pState->token) == u'^') {
    CheckNesting();
    ApplyOperator(u'^', &CBrindle::level4, result);
  }
}

void CBrindle::level5(CBasicVariable& result) {
  if (!m_pState->fast.tape.IsEmpty() && TakeFromTape(5, result))
    return;
  char16_t sign = 0;
  if (IsDelimiter(u'+') || IsDelimiter(u'-')) {
    sign = FirstUnit(m_pState->token);
    get_token();
  }
  level6(result);
  if (sign != 0)
    unary(sign, result);
}

void CBrindle::level6(CBasicVariable& result) {
  if (!m_pState->fast.tape.IsEmpty() && TakeFromTape(6, result))
    return;
  if (!IsDelimiter(u'(')) {
    primitive(result);
    return;
  }
  CheckNesting();
  get_token();
  level2(result);
  if (!IsDelimiter(u')'))
    ReportError(kErrorSyntax);
  get_token();
}

void CBrindle::primitive(CBasicVariable& result) {
  if (!m_pState->fast.tape.IsEmpty() && TakeFromTape(7, result))
    return;
  switch (m_pState->token.kind) {
  case TOKEN_VARIABLE: ReadVariable(result); break;
  case TOKEN_FIELD: ReadRecordField(result); break;
  case TOKEN_FIELD_UNKNOWN:
    ReadProperty(result);
    get_token();
    break;
  case TOKEN_NUMBER:
    result.SetValue(m_pState->token.token->number);
    get_token();
    break;
  case TOKEN_STRING:
    result.SetValue(m_pState->token.Text());
    get_token();
    break;
  case TOKEN_FUNCTION:
    ExecFunction(result);
    get_token();
    break;
  default: ReportError(kErrorNoText); break;
  }
}

void CBrindle::ReadVariable(CBasicVariable& result) {
  const NameRef name = RefOf(*m_pState->token.token);
  int index = 0;
  const bool hasIndex = ReadIndexBehindName(index);
  VariableSlot* slot = m_pState->m_mapVariables.Find(name, m_pState->m_nScopeLevel);
  if (slot == nullptr) {
    // An unknown name is left for the caller, who meets it as the next token; its index is read past.
    if (hasIndex)
      get_token();
    return;
  }
  if (hasIndex) {
    slot->SetCurIndex(index);
    slot->CopyItemTo(result);
  } else {
    slot->CopyTo(result);
  }
  get_token();
}
