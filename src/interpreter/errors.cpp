// Reporting errors to the user and to the host.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/limits.h"
#include "interpreter/script_abort.h"
#include "interpreter/state.h"
#include "interpreter/user_interface_call.h"
#include "platform/path.h"
#include "platform/stack.h"
#include "values/messages.h"

#include <new>
#include <stdexcept>

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

// Message, line feed, failing line. The errors that tell of want of memory have a text laid by, which stands alone.
CString CBrindle::ErrorText(int number) {
  try {
    const std::optional<CString> message = LoadMessage(number);
    if (!message)
      CallUserInterface([&] { GetUserInterface().ShowNotice(CString(u"Error loading resource string.")); });
    return message.value_or(CString()) + u"\n" + GetCurrentLine();
  } catch (const std::bad_alloc&) {
    if (number == kErrorUnrecoverable)
      return m_pState->unrecoverableText;
    if (number == kErrorLoadingSource)
      return m_pState->loadingSourceText;
    throw;
  }
}

// The run ends without asking; the box comes once, however many scripts and runs the abort passes. Whoever asked for
// a stop needs none.
void CBrindle::AbortByBudget(std::optional<int> number) {
  ExecutionBudget& budget = *m_pState->budget;
  const int verdict = budget.Verdict(number);
  m_pState->lastError = LoadMessage(verdict).value_or(CString()) + u"\n" + GetCurrentLine();
  m_pState->errorPlace = PlaceOfError(verdict);
  if (budget.TakeReport() && verdict != kErrorStopped) {
    const CString text = m_pState->lastError;
    CallUserInterface([&] { GetUserInterface().ShowNotice(text); });
  }
  throw ScriptAbort{this};
}

// A path of the script for those who open it by name; empty when there is no such file below the root. False, and
// reported, when it leads out of the root.
bool CBrindle::PathForOthers(CString& path) {
  const FileRoot* const root = m_pState->budget->Root();
  if (root == nullptr)
    return true;
  const FileRoot::Scope files(root);
  path = CString(PathFromNative(root->PathOf(path.View()).value_or(std::string())));
  return !files.HasRefused() || Fail(kErrorNotAllowed);
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
  if (m_pState->errorListener != nullptr) {
    m_pState->errorListener->OnError(number);
    return;
  }
  // What a wait that was ended early has led to is no error of the script.
  if (m_pState->runDepth > 0 && m_pState->budget->ShouldStop())
    AbortByBudget(std::nullopt);
  CUserInterface& userInterface = GetUserInterface();
  m_pState->lastError = ErrorText(number);
  const CErrorPlace place = PlaceOfError(number);
  // Copies: a timer's handler that fails while the box is up has an error of its own.
  const CString text = m_pState->lastError;
  try {
    m_pState->errorPlace = place;
  } catch (const std::bad_alloc&) {
    m_pState->errorPlace = CErrorPlace();
  }
  const auto answer = CallUserInterface([&] { return userInterface.ShowErrorAt(text, place); });
  // Outside a run there is nothing to abort: a host may report an error of its own.
  if (answer == CUserInterface::ErrorAnswer::Cancel && m_pState->runDepth > 0) {
    if (m_pState->budget->ShouldStop()) // the box was ended, and not answered
      AbortByBudget(std::nullopt);
    throw ScriptAbort{this};
  }
}

void CBrindle::ReportOrGiveUp(int number) {
  try {
    ReportError(number);
  } catch (const std::bad_alloc&) {
    // Like a box that is answered by Cancel: what ends on this error has ended, and the host finds it as the last one.
  } catch (const std::length_error&) {
    // Likewise.
  }
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
