// Argument lists: in parentheses behind a function's name, or bare behind a statement's word.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"

#include <utility>

using namespace brindle;

// One expression. Beside its value the name of a plain variable is recorded, so that a call can write back.
void CBrindle::ReadArgument(Arguments& args) {
  get_token();
  const bool isName = m_pState->token.kind == TOKEN_VARIABLE;
  const CString name = m_pState->token.Text();
  const std::uint32_t end = m_pState->token.token->end;
  putback();
  CBasicVariable value;
  get_exp(value);
  args.Add(std::move(value));
  const bool isWholeArgument = isName && m_pState->position == SkipBlanks(m_pState->program->Text(), end);
  m_pState->m_arrTemporaries.Add(isWholeArgument ? name : CString());
}

// The ")" is left for the caller. A list that ends on anything else is reported and counts as empty, but what
// was read of it stays in `args`: the call goes on, and its caller misses the ")" as well.
int CBrindle::GetParamList(Arguments& args) {
  args.RemoveAll();
  get_token();
  if (!IsDelimiter(u'(')) {
    ReportError(kErrorFunctionCall);
    return 0;
  }
  get_token();
  putback();
  if (IsDelimiter(u')'))
    return 0;
  do {
    ReadArgument(args);
    get_token();
  } while (IsDelimiter(u','));
  if (!IsDelimiter(u')')) {
    ReportError(kErrorFunctionCall);
    return 0;
  }
  putback();
  return args.GetSize();
}

// The first token behind the group is current afterwards.
int CBrindle::GetParamGroup(Arguments& args) {
  args.RemoveAll();
  do {
    ReadArgument(args);
    get_token();
  } while (IsDelimiter(u','));
  return args.GetSize();
}

// The ")" that an argument list has left, if it is there.
void CBrindle::ReadClosingParenthesis() {
  get_token();
  if (!IsDelimiter(u')'))
    putback();
}
