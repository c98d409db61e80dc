// "dim" and "global", and the reading of an index in brackets.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/limits.h"
#include "interpreter/state.h"
#include "platform/number_text.h"

using namespace brindle;

namespace {

// The words that "as" takes; the type itself is not attached to anything.
bool IsFieldType(KEYWORD_TYPE keyword) {
  switch (keyword) {
  case KEYWORD_CHAR:
  case KEYWORD_CHAR_ALIAS:
  case KEYWORD_WORD:
  case KEYWORD_INTEGER:
  case KEYWORD_FLOAT:
  case KEYWORD_DOUBLE:
  case KEYWORD_STRING: return true;
  default: return false;
  }
}

} // namespace

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
  if (m_pState->token.kind != TOKEN_VARIABLE) {
    ReportError(kErrorSyntax);
    return false;
  }
  const CString name = m_pState->token.Text();
  int size = 1;
  get_token();
  if (IsDelimiter(u'[')) {
    if (!GetIndex(size))
      return false;
    if (size < 1 || size > kLargestArray) {
      ReportError(kErrorArraySize);
      return false;
    }
    get_token();
  }

  if (m_pState->token.keyword == KEYWORD_AS) {
    get_token();
    // A word that is no keyword names a record type, and there is none.
    if (m_pState->token.kind != TOKEN_KEYWORD || !IsFieldType(m_pState->token.keyword)) {
      ReportError(kErrorSyntax);
      return false;
    }
    // Deliberate: an array declared anew with a type but without a size keeps its size.
    if (size == 1)
      SetVariableDirect(name, CBasicVariable(), 0, bGlobal);
    else
      SetVariableSize(name, size, bGlobal);
    get_token();
    if (!IsDelimiter(u',') && !AtStatementEnd()) {
      ReportError(kErrorSyntax);
      return false;
    }
    return true;
  }

  if (!IsDelimiter(u',') && !AtStatementEnd()) {
    ReportError(kErrorSyntax);
    return false;
  }
  return SetVariableSize(name, size, bGlobal);
}
