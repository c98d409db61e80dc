#include "check/script_reader.h"

#include "interpreter/state.h"

#include <memory>
#include <string>

namespace brindle {

ScriptReader::ScriptReader() {
  m_interpreter.m_pState->errorListener = this;
}

bool ScriptReader::Load(const CString& file) {
  if (!m_interpreter.LoadProgram(file))
    return false;
  PutTogether();
  return true;
}

void ScriptReader::SetText(const CString& file, std::u16string_view text) {
  m_interpreter.SetProgram(file, std::u16string(text));
  PutTogether();
}

void ScriptReader::PutTogether() {
  m_interpreter.LoadLibraries();
  m_interpreter.m_pState->keepTokens = true;
}

void ScriptReader::OnError(int number) {
  m_errors.push_back({number, m_interpreter.m_pState->token.token->start});
}

const InclusionMap& ScriptReader::Inclusions() const noexcept {
  return m_interpreter.m_pState->program->Files();
}

std::u16string_view ScriptReader::Text() const noexcept {
  return m_interpreter.m_pState->program->Text();
}

SourceLines::Place ScriptReader::PlaceOf(std::uint32_t position) const {
  return m_interpreter.m_pState->program->PlaceOf(position);
}

const Token& ScriptReader::Next() {
  m_interpreter.get_token();
  return Current();
}

void ScriptReader::PutBack() {
  m_interpreter.putback();
}

const Token& ScriptReader::Current() const noexcept {
  return *m_interpreter.m_pState->token.token;
}

std::uint32_t ScriptReader::Position() const noexcept {
  return m_interpreter.m_pState->position;
}

void ScriptReader::SetPosition(std::uint32_t position) {
  m_interpreter.m_pState->position = position;
}

void ScriptReader::Resume(std::uint32_t position, BASIC_TOKEN_TYPE previous) {
  m_interpreter.m_pState->position = position;
  m_interpreter.m_pState->token.kind = previous;
}

BASIC_TOKEN_TYPE ScriptReader::PreviousKind() const noexcept {
  return m_interpreter.m_pState->token.previousKind;
}

char16_t ScriptReader::UnitAt(std::uint32_t position) const noexcept {
  return m_interpreter.m_pState->program->At(position);
}

std::uint32_t ScriptReader::PastBlanks(std::uint32_t position) const noexcept {
  return SkipBlanks(Text(), position);
}

const Token& ScriptReader::Peek() {
  return m_interpreter.m_pState->program->TokenAt(PastBlanks(Position()), m_interpreter.m_pState->words);
}

bool ScriptReader::IsDelimiter(char16_t unit) const noexcept {
  return m_interpreter.IsDelimiter(unit);
}

bool ScriptReader::AtStatementEnd() const noexcept {
  return m_interpreter.AtStatementEnd();
}

void ScriptReader::FindEndOfLine() {
  m_interpreter.FindEOL();
}

void ScriptReader::NextBlockLine() {
  m_interpreter.NextBlockLine();
}

void ScriptReader::StepOver() {
  m_interpreter.StepOver();
}

void ScriptReader::FindLastPair(COMMAND_TYPE open, COMMAND_TYPE close, COMMAND_TYPE middle) {
  m_interpreter.FindLastPair(open, close, middle);
  // A skip keeps no tokens; its last one is read again, so that it stays.
  SetPosition(Current().start);
  Next();
}

WordCodes ScriptReader::MeaningOf(const CString& lowered) const {
  return m_interpreter.m_pState->words.Find(lowered);
}

const CFuncDesc* ScriptReader::FindFunction(const CString& lowered) const {
  return m_interpreter.FindFunction(lowered);
}

const FunctionSignature& ScriptReader::SignatureOf(FUNCTION_TYPE code) const noexcept {
  return m_interpreter.m_pState->functions.SignatureOf(code);
}

bool ScriptReader::AddFunction(const CFuncDesc& function) {
  auto copy = std::make_unique<CFuncDesc>(function);
  if (!m_interpreter.m_pState->functions.Add(copy.get()))
    return false;
  static_cast<void>(copy.release());
  return true;
}

bool ScriptReader::ReadDeclare(CFuncDesc& function) {
  return m_interpreter.ReadDeclare(function);
}

bool ScriptReader::IsFieldType(KEYWORD_TYPE keyword) {
  return CBrindle::KeywordToType(keyword) != TD_NONE;
}

} // namespace brindle
