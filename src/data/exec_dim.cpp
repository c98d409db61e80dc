// "dim" and "global", and the reading of an index in brackets.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/limits.h"
#include "interpreter/state.h"
#include "platform/number_text.h"

using namespace brindle;

// Called behind the "["; the "]" is the current token afterwards, also when the index was bad.
bool CBrindle::GetIndex(int& index) {
  CBasicVariable value;
  get_exp(value);
  get_token();
  if (value.GetType() != BVT_NONE && IsDelimiter(u']')) {
    index = ToInt32(value.GetNumberValue());
    return true;
  }
  ReportError(kErrorSyntax);
  while (!IsDelimiter(u']')) {
    if (m_pState->token.kind == TOKEN_NONE || m_pState->token.kind == TOKEN_COMMENT ||
        m_pState->token.command == COMMAND_END_OF_LINE || m_pState->token.command == COMMAND_END_OF_PROGRAM) {
      putback();
      break;
    }
    get_token();
  }
  return false;
}

// "[" directly behind a name that has just been read: false when there is none. An index that failed was
// reported and becomes -1, which reads the element that was current.
bool CBrindle::ReadIndexBehindName(int& index) {
  if (CurChar() != u'[')
    return false;
  get_token();
  if (!GetIndex(index))
    index = -1;
  return true;
}

bool CBrindle::ExecDim(bool bGlobal) {
  get_token();
  if (AtStatementEnd()) {
    putback();
    return true;
  }
  putback();
  do {
    if (!ReadDeclaration(bGlobal))
      return false;
  } while (IsDelimiter(u','));
  putback();
  return true;
}

// name [size] as type; the token behind it is current afterwards.
bool CBrindle::ReadDeclaration(bool bGlobal) {
  get_token();
  if (m_pState->token.kind != TOKEN_VARIABLE)
    return Fail(kErrorSyntax);
  const CString name = m_pState->token.Text();
  int size = 1;
  get_token();
  if (IsDelimiter(u'[')) {
    if (!GetIndex(size))
      return false;
    if (size < 1 || size > kLargestArray)
      return Fail(kErrorArraySize);
    get_token();
  }

  if (m_pState->token.keyword == KEYWORD_AS) {
    get_token();
    const bool isRecord = m_pState->token.kind != TOKEN_KEYWORD;
    CTypeStructure* type = nullptr;
    if (isRecord ? !LookupUserDefinedType(m_pState->token.Text(), type)
                 : KeywordToType(m_pState->token.keyword) == TD_NONE) {
      return Fail(kErrorSyntax);
    }
    // The word of a plain type is checked but attached to nothing. Deliberate: an array declared anew with a
    // type but without a size keeps its size.
    if (isRecord)
      m_pState->m_mapStructVariables[name].MakeRecordOf(*type);
    else if (size == 1)
      SetVariableDirect(name, CBasicVariable(), 0, bGlobal);
    else
      SetVariableSize(name, size, bGlobal);
    get_token();
    if (!IsDelimiter(u',') && !AtStatementEnd())
      return Fail(kErrorSyntax);
    return true;
  }

  if (!IsDelimiter(u',') && !AtStatementEnd())
    return Fail(kErrorSyntax);
  return SetVariableSize(name, size, bGlobal);
}
