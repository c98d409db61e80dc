// Reporting errors to the user and to the host.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/limits.h"
#include "interpreter/script_abort.h"
#include "interpreter/state.h"
#include "interpreter/user_interface_call.h"
#include "platform/stack.h"
#include "values/messages.h"

using namespace brindle;

CString CBrindle::GetCurrentLine() {
  if (m_pState->program == nullptr)
    return CString();
  const std::u16string_view text = m_pState->program->Text();
  std::size_t start = m_pState->position;
  const auto unitAt = [text](std::size_t position) { return position < text.size() ? text[position] : u'\0'; };
  while (start > 0 && IsLineEnd(unitAt(start)))
    --start;
  while (start > 0 && !IsLineEnd(unitAt(start)))
    --start;
  // Deliberate: the search begins two units on, and the text begins with the line break before the line.
  const std::size_t end = text.find(u'\n', start + 2);
  if (end == std::u16string_view::npos || end - start <= 1)
    return CString();
  return CString(text.substr(start, end - start));
}

// The run ends without asking; the box comes once, however many scripts and runs the abort passes. Whoever asked for
// a stop needs none.
void CBrindle::AbortByBudget(std::optional<int> number) {
  ExecutionBudget& budget = *m_pState->budget;
  const int verdict = budget.Verdict(number);
  m_pState->lastError = LoadMessage(verdict).value_or(CString()) + u"\n" + GetCurrentLine();
  if (budget.TakeReport() && verdict != kErrorStopped) {
    const CString text = m_pState->lastError;
    CallUserInterface([&] { GetUserInterface().ShowNotice(text); });
  }
  throw ScriptAbort{this};
}

// Before a procedure or a script is entered.
void CBrindle::CheckCallDepth() {
  const int deepest = m_pState->budget->Limits().callDepth;
  if (deepest > 0 && m_pState->levelsBelow + m_pState->m_nScopeLevel > deepest)
    AbortByBudget(kErrorCallLimit);
}

// Before a statement whose first token is current. Those that compiled code passes over for nothing cost nothing here.
void CBrindle::CountStatement() {
  const COMMAND_TYPE command = m_pState->token.command;
  if (command != COMMAND_REM && command != COMMAND_ENDIF && !m_pState->budget->Take()) [[unlikely]]
    AbortByBudget(std::nullopt);
}

void CBrindle::ReportError(int number) {
  // What a wait that was ended early has led to is no error of the script.
  if (m_pState->runDepth > 0 && m_pState->budget->ShouldStop())
    AbortByBudget(std::nullopt);
  CUserInterface& userInterface = GetUserInterface();
  const std::optional<CString> message = LoadMessage(number);
  if (!message)
    CallUserInterface([&] { userInterface.ShowNotice(CString(u"Error loading resource string.")); });
  m_pState->lastError = message.value_or(CString()) + u"\n" + GetCurrentLine();
  // A copy: a timer's handler that fails while the box is up has an error of its own.
  const CString text = m_pState->lastError;
  const auto answer = CallUserInterface([&] { return userInterface.ShowError(text); });
  // Outside a run there is nothing to abort: a host may report an error of its own.
  if (answer == CUserInterface::ErrorAnswer::Cancel && m_pState->runDepth > 0)
    throw ScriptAbort{this};
}

bool CBrindle::Fail(int number) {
  ReportError(number);
  return false;
}

void CBrindle::AbortWith(int number) {
  ReportError(number);
  throw ScriptAbort{this};
}

void CBrindle::CheckNesting() {
  if (RemainingStack() < kStackReserve)
    AbortWith(kErrorUnrecoverable);
}
