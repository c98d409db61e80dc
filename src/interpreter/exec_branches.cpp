// Branches: if/else/endif, goto, and the forward skip that they share with the loops.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"
#include "interpreter/word_count.h"

using namespace brindle;

bool CBrindle::ExecIf() {
  const bool condition = ExecLogicalStatement();
  get_token();
  if (m_pState->token.command != COMMAND_THEN)
    return Fail(kErrorExpectedThen);
  if (condition)
    return true;
  FindLastPair(COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE);
  if (m_pState->token.command != COMMAND_ELSE && m_pState->token.command != COMMAND_ENDIF)
    return Fail(kErrorElseOrEndIfMissing);
  return true;
}

// Reached only behind the branch that ran.
bool CBrindle::ExecElse() {
  FindLastPair(COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE);
  if (m_pState->token.command != COMMAND_ENDIF)
    return Fail(kErrorElseOrEndIfMissing);
  return true;
}

bool CBrindle::ExecGoto() {
  get_token();
  unsigned long position = 0;
  if (!LabelGet(m_pState->token.Text(), position) || position >= m_pState->program->Length()) {
    return Fail(kErrorDuplicateLabel); // Deliberate: an undefined label is called a duplicate
  }
  m_pState->position = static_cast<std::uint32_t>(position);
  return true;
}

bool CBrindle::ExecGosub() {
  get_token();
  unsigned long position = 0;
  if (!LabelGet(m_pState->token.Text(), position)) {
    return Fail(kErrorDuplicateLabel); // Deliberate: as for "goto"
  }
  PushPosition(m_pState->position);
  m_pState->position = static_cast<std::uint32_t>(position);
  return true;
}

// Skips to the word that closes what `open` opened, or to `middle` on the way at the same depth; stops at the
// end of the program and at "endsub" as well. The word it stopped on is the current token. Always true.
bool CBrindle::FindLastPair(COMMAND_TYPE open, COMMAND_TYPE close, COMMAND_TYPE middle) {
  TokenState& token = m_pState->token;
  const std::uint32_t from = m_pState->position;
  if (const SkipTarget* known = m_pState->program->FindSkip(from, open, middle)) {
    token.kind = known->previousKind;
    m_pState->position = known->lastToken;
    get_token();
    return true;
  }

  const bool keepTokens = m_pState->keepTokens;
  m_pState->keepTokens = false; // what is skipped is read once; only the end of the skip is kept
  WordCount words;
  int depth = 1;
  bool insideOpen = false; // behind "open" on its line: its "for" starts no loop
  do {
    get_token();
    StepOver();
    if (!words.Take(*m_pState->budget)) {
      m_pState->keepTokens = keepTokens;
      AbortByBudget(std::nullopt);
    }
    const bool loopWord = !(insideOpen && token.command == COMMAND_FOR);
    if (token.command == open && loopWord)
      ++depth;
    else if (token.command == close)
      --depth;
    if (token.command == COMMAND_OPEN)
      insideOpen = true;
    else if ((token.command != COMMAND_NONE && loopWord) || IsDelimiter(u':'))
      insideOpen = false;
  } while (!(middle != COMMAND_NONE && depth == 1 && token.command == middle) &&
           token.command != COMMAND_END_OF_PROGRAM && token.command != COMMAND_ENDSUB && depth > 0);
  m_pState->keepTokens = keepTokens;

  m_pState->program->KeepSkip(from, open, middle, {token.token->start, token.previousKind});
  return true;
}
