// What one interpreter holds: the small state classes of every room, put together in one place.
// Room: interpreter (composition). Used by: the members of CBrindle, in whatever room they are implemented.
// May touch: headers of the rooms that own the parts.
// Must not: hold rules of its own; those live in the parts.
// Invariant: parts are destroyed in reverse order; the destructor of CBrindle empties them in its own order.
#pragma once

#include "brindle/interpreter.h"
#include "calls/event_table.h"
#include "data/map_table.h"
#include "data/random_source.h"
#include "data/raw_values.h"
#include "data/record_type.h"
#include "data/variable_store.h"
#include "interpreter/call_record.h"
#include "interpreter/control_stack.h"
#include "interpreter/error_listener.h"
#include "interpreter/execution_budget.h"
#include "interpreter/fast/machine.h"
#include "interpreter/function_table.h"
#include "interpreter/program_text.h"
#include "io/com_port_table.h"
#include "io/dbf_table.h"
#include "io/file_table.h"

#include <memory>
#include <unordered_map>
#include <vector>

namespace brindle {

// What the token reader found last.
struct TokenState {
  const Token* token = nullptr; // never null once an interpreter is built
  BASIC_TOKEN_TYPE kind = TOKEN_NONE;
  BASIC_TOKEN_TYPE previousKind = TOKEN_NONE;
  COMMAND_TYPE command = COMMAND_NONE;
  KEYWORD_TYPE keyword = KEYWORD_NONE;
  FUNCTION_TYPE function = FUNCTION_NONE;
  CFuncDesc* descriptor = nullptr; // of a function token whose name is known

  [[nodiscard]] const CString& Text() const noexcept { return token->text; }
  [[nodiscard]] bool IsText(char16_t unit) const noexcept {
    return token->text.GetLength() == 1 && token->text.GetAt(0) == unit;
  }
};

// A place to return to: procedures of an earlier run live in that run's text.
struct ReturnPosition {
  std::shared_ptr<ProgramText> program;
  std::uint32_t position = 0;
};

class ScriptDialog;

struct InterpreterState {
  // Program text and reading position.
  CString fileName;
  std::shared_ptr<ProgramText> program;
  std::uint32_t position = 0;
  bool keepTokens = false; // while a program runs; loading and label scan read each token once
  TokenState token;
  Token scratch; // the current token while none are kept
  std::vector<ReturnPosition> positions;
  FastState fast;

  // The run.
  std::shared_ptr<ExecutionBudget> budget = std::make_shared<ExecutionBudget>();
  int levelsBelow = 0; // of the scripts that run this one by "run"
  bool stop = false;
  bool resident = false;
  int runDepth = 0;
  int baseLevel = 1; // the scope level of the program that runs; one that a callback runs has its caller's
  CString lastError;
  CString unrecoverableText; // made with the interpreter: errors 50 and 17 are told when there is no memory left
  CString loadingSourceText;
  CErrorPlace errorPlace;

  // The calls in progress, as far as the executing parser made them.
  const CallRecord* calls = nullptr;
  CCallFrame::Kind callKind = CCallFrame::Kind::Procedure; // of the procedure that is entered next
  bool atStatement = false;                                // while the position is that of a statement that runs
  const CBrindle* starter = nullptr;                       // the interpreter whose "run" this one serves
  CUserInterface* userInterface = nullptr;
  ErrorListener* errorListener = nullptr; // hears of errors in the user's place

  // Language tables.
  WordTable words;
  FunctionTable functions;

  // Control flow.
  ControlStack control;

  // Variables: the scope level is 1 in the main program and one more in every procedure call.
  VariableStore m_mapVariables;
  int m_nScopeLevel = 1;
  CStringArray m_arrTemporaries; // one name per argument of the calls in progress, empty unless a variable
  RandomSource random;

  // Record types, records, maps.
  std::unordered_map<CString, CTypeStructure> m_mapTypes;
  std::unordered_map<CString, CTypeStructure> m_mapStructVariables;
  MapTable m_mapMaps;
  std::uint64_t mapChanges = 0; // of the table, not of what the maps hold

  // Events and files.
  EventTable events;
  unsigned timer = 0; // 0 when none runs
  CUserInterface* timerOwner = nullptr;

  bool ticking = false;                   // while a handler of the timer runs
  std::vector<ScriptDialog*> openDialogs; // the last opened last
  FileTable files;
  FileFormatTable tables;
  ComPortTable comPorts;
};

} // namespace brindle
