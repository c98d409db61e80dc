// Assignment: variable, element or property "=" expression.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"
#include "platform/unicode.h"

using namespace brindle;

bool CBrindle::assignment() {
  const int recordedNames = m_pState->m_arrTemporaries.GetSize();
  get_token();
  const BASIC_TOKEN_TYPE targetKind = m_pState->token.kind;
  const CString target = m_pState->token.Text();
  if (target.IsEmpty() || !IsLetter(target.GetAt(0)))
    return Fail(kErrorExpectedEqual);
  const NameRef name = targetKind == TOKEN_VARIABLE ? RefOf(*m_pState->token.token) : NameRef();

  int index = 0;
  const bool hasIndex = CurChar() == u'[';
  bool indexRead = true;
  if (hasIndex) {
    get_token();
    indexRead = GetIndex(index);
  }

  // Deliberate: what is missing here is the "=", but the message is that of a missing expression.
  get_token();
  if (!IsDelimiter(u'='))
    return Fail(kErrorNoExpression);
  CBasicVariable value;
  get_exp(value);
  // An index that failed was reported; its assignment is read to the end but stores nothing.
  if (!indexRead)
    return false;

  if (targetKind == TOKEN_FIELD) {
    StoreRecordField(target, value, index);
  } else if (targetKind == TOKEN_FIELD_UNKNOWN) {
    SetObjectProperty(target, value);
  } else if (targetKind == TOKEN_VARIABLE) {
    const VariableSlot* slot = m_pState->m_mapVariables.Find(name, m_pState->m_nScopeLevel);
    const bool wholeTarget = slot != nullptr && slot->GetNumItems() > 1 && !hasIndex;
    if (wholeTarget || value.GetNumItems() > 1)
      StoreWhole(name, value, false);
    else
      StoreItem(name, value, index, false);
  }
  m_pState->m_arrTemporaries.SetSize(recordedNames);
  return true;
}
