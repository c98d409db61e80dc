// The reading position in the program text.
#include "brindle/interpreter.h"
#include "interpreter/state.h"

using namespace brindle;

char16_t CBrindle::CurChar() const noexcept {
  return m_pState->program == nullptr ? u'\0' : m_pState->program->At(m_pState->position);
}

void CBrindle::NextChar() noexcept {
  if (!IsEndOfProgram())
    ++m_pState->position;
}

bool CBrindle::IsEndOfProgram() const noexcept {
  return m_pState->program == nullptr || m_pState->position >= m_pState->program->Length();
}

bool CBrindle::Rewind(unsigned long position) {
  if (m_pState->program == nullptr || position >= m_pState->program->Length())
    return false;
  m_pState->position = static_cast<std::uint32_t>(position);
  return true;
}

bool CBrindle::Rewind() {
  m_pState->position = 0;
  m_pState->scratch = Token();
  m_pState->token.token = &m_pState->scratch;
  m_pState->token.kind = TOKEN_NONE;
  m_pState->token.command = COMMAND_NONE;
  return true;
}

void CBrindle::PushPosition(unsigned long position) {
  m_pState->positions.push_back({m_pState->program, static_cast<std::uint32_t>(position)});
}

bool CBrindle::PopPosition(unsigned long& position) {
  if (m_pState->positions.empty())
    return false;
  // The position belongs to the text it was taken in.
  m_pState->program = m_pState->positions.back().program;
  position = m_pState->positions.back().position;
  m_pState->positions.pop_back();
  return true;
}

bool CBrindle::FindEOL() {
  while (!IsEndOfProgram() && !IsLineEnd(CurChar()))
    NextChar();
  return true;
}

bool CBrindle::GoPastEOL() {
  FindEOL();
  do
    get_token();
  while (m_pState->token.command == COMMAND_END_OF_LINE);
  return true;
}

// What never counts where the text is read without being run: the rest of a "rem" line, and a character that
// starts no token.
void CBrindle::StepOver() {
  if (m_pState->token.command == COMMAND_REM)
    FindEOL();
  else if (m_pState->token.kind == TOKEN_NONE)
    NextChar();
}

bool CBrindle::IsDelimiter(char16_t unit) const noexcept {
  return m_pState->token.kind == TOKEN_DELIMITER && m_pState->token.IsText(unit);
}

bool CBrindle::AtStatementEnd() const noexcept {
  const TokenState& token = m_pState->token;
  return token.kind == TOKEN_COMMENT || token.kind == TOKEN_COMMAND || token.command == COMMAND_END_OF_LINE ||
         token.command == COMMAND_END_OF_PROGRAM || IsDelimiter(u':');
}
