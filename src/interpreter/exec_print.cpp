// "print": items joined by ";" or moved to the next tab stop by ",", shown in a message box.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/limits.h"
#include "interpreter/state.h"
#include "interpreter/user_interface_call.h"

using namespace brindle;

namespace {

constexpr int kTabWidth = 8;

} // namespace

bool CBrindle::ExecPrint() {
  CString text;
  bool lineEnd = true;
  for (;;) {
    get_token();
    if (AtStatementEnd()) {
      putback();
      break;
    }
    CString item;
    if (m_pState->token.kind == TOKEN_STRING) {
      item = m_pState->token.Text();
    } else {
      const std::uint32_t start = m_pState->token.token->start;
      const std::uint32_t end = m_pState->token.token->end;
      const bool isName = m_pState->token.kind == TOKEN_VARIABLE;
      putback();
      CBasicVariable value;
      get_exp(value);
      item = value.GetStringValue();
      // A name that nobody has assigned shows nothing; the evaluator leaves it, so it is read past here.
      if (isName && m_pState->position == start)
        m_pState->position = end;
    }
    if (static_cast<std::int64_t>(text.GetLength()) + item.GetLength() > kLongestText)
      return Fail(kErrorUnrecoverable);
    text += item;
    lineEnd = true;

    get_token();
    if (IsDelimiter(u',')) {
      text += CString(u' ', kTabWidth - text.GetLength() % kTabWidth);
    } else if (!IsDelimiter(u';')) {
      putback();
      break;
    }
    lineEnd = false;
  }
  if (lineEnd)
    text += u'\n';
  CallUserInterface([&] { GetUserInterface().ShowMessage(text); });
  return true;
}
