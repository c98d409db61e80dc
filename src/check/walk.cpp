// The walk: which statement comes next, and what is known when it is reached.
#include "check/checker.h"

namespace brindle {

namespace {

// More statements than any script of this size needs until nothing changes any more.
constexpr std::uint64_t kMostSteps = 20'000'000;

} // namespace

ScriptChecker::ScriptChecker(ScriptReader& reader, ProblemList& problems, const std::vector<CString>& hostFunctions)
    : m_reader(reader), m_problems(problems), m_outline(reader), m_pairs(reader) {
  for (CString name : hostFunctions)
    m_hostFunctions.insert(name.MakeLower());
}

void ScriptChecker::Run() {
  m_contexts.emplace_back();
  for (std::size_t i = 0; i < m_outline.procedures.size(); ++i) {
    const CheckedProcedure& procedure = m_outline.procedures[i];
    if (!procedure.isDefined || procedure.fault != nullptr)
      continue;
    m_contexts.emplace_back();
    m_contexts.back().procedure = i;
    m_contexts.back().entry = procedure.body;
  }
  m_returns.insert(m_outline.doWords.begin(), m_outline.doWords.end());
  for (const auto& [name, places] : m_outline.labels)
    m_returns.insert(m_reader.PastBlanks(places.front()->end));
  // What one procedure assigns another may find: the second round knows it.
  for (int round = 0; round < 2; ++round)
    for (Context& context : m_contexts)
      Explore(context);
  m_reporting = true;
  CheckLoading();
  CheckDefinitions();
  if (m_steps < kMostSteps) {
    for (Context& context : m_contexts)
      ReportOn(context);
    CheckReach();
  }
  CheckLabels();
}

FlowState ScriptChecker::EntryState(const Context& context) const {
  FlowState state;
  state.variables.assign(m_outline.numbers.size(), kUndefinedValue);
  if (context.procedure == kMain)
    return state;
  state.loopsKnown = false; // the caller's loops are below
  const CheckedProcedure& own = m_outline.procedures[context.procedure];
  for (const CheckedProcedure& other : m_outline.procedures)
    if (&other != &own)
      for (const int number : other.assigned)
        state.variables[static_cast<std::size_t>(number)] = kAnyValue | kUndefinedValue;
  state.variables[static_cast<std::size_t>(m_outline.NumberOf(own.name->lowered))] = kUndefinedValue;
  for (const Token* parameter : own.parameters)
    state.variables[static_cast<std::size_t>(m_outline.NumberOf(parameter->lowered))] = kAnyValue;
  return state;
}

void ScriptChecker::Explore(Context& context) {
  m_context = &context;
  do {
    m_again = false;
    context.states.clear();
    context.walked.clear();
    m_toWalk.clear();
    if (InProcedure())
      Procedure().result = 0;
    GoTo(context.entry, EntryState(context));
    while (!m_toWalk.empty() && !m_again && m_steps < kMostSteps) {
      const std::uint32_t position = *m_toWalk.begin();
      m_toWalk.erase(m_toWalk.begin());
      m_state = context.states.at(position);
      WalkFrom(position);
    }
  } while (m_again && m_steps < kMostSteps);
}

void ScriptChecker::ReportOn(Context& context) {
  m_context = &context;
  for (const auto& [position, state] : context.states) {
    m_state = state;
    WalkFrom(position);
  }
}

bool ScriptChecker::IsMeeting(std::uint32_t position) const {
  return m_returns.contains(position) || m_context->meetings.contains(position);
}

// A way that leads to a position with that state.
void ScriptChecker::GoTo(std::uint32_t position, const FlowState& state) {
  if (m_reporting)
    return;
  position = m_reader.PastBlanks(position);
  if (!IsMeeting(position)) {
    m_context->meetings.insert(position);
    m_again = m_again || m_context->walked.contains(position);
  }
  const auto [known, isNew] = m_context->states.try_emplace(position, state);
  if (isNew || known->second.Join(state))
    m_toWalk.insert(position);
}

void ScriptChecker::WalkFrom(std::uint32_t position) {
  m_statement = nullptr;
  m_reader.SetPosition(position);
  for (bool first = true; m_reporting || m_steps < kMostSteps; first = false) {
    const std::uint32_t here = m_reader.PastBlanks(m_reader.Position());
    if (!first && IsMeeting(here)) {
      GoTo(here, m_state);
      return;
    }
    m_context->walked.insert(here);
    if (m_reporting)
      m_reached.insert(here);
    ++m_steps;
    if (!Statement())
      return;
  }
}

// False when the way does not go on behind it.
bool ScriptChecker::Statement() {
  const Token& token = m_reader.Next();
  switch (token.kind) {
  case TOKEN_VARIABLE:
  case TOKEN_IDENTIFIER:
    m_statement = &token;
    Assignment();
    return true;
  case TOKEN_COMMAND: m_statement = &token; return Command(token);
  case TOKEN_COMMENT:
  case TOKEN_LABEL: return true;
  case TOKEN_DELIMITER:
    if (token.command == COMMAND_END_OF_PROGRAM) {
      EndOfText();
      return false;
    }
    if (token.command != COMMAND_END_OF_LINE && !m_reader.IsDelimiter(u':'))
      StrayDelimiter(token);
    else
      m_statement = nullptr;
    return true;
  default: NotAStatement(token); return true;
  }
}

bool ScriptChecker::Command(const Token& word) {
  // A word of the language that stands where a name was meant.
  const Token& behind = m_reader.Peek();
  if (behind.kind == TOKEN_DELIMITER && behind.text == u"=" && word.command != COMMAND_REM) {
    Report(
        ProblemCode::WordAsName, word, "\"" + Spelling(word) + "\" is a word of the language and cannot be a variable",
        "The statement \"" + Spelling(word) + "\" is run instead, and fails or stops the script. Take another name.");
    Recover();
    return true;
  }
  // ORDER COMMAND
  switch (word.command) {
  case COMMAND_PRINT: Print(); break;
  case COMMAND_IF: return If(word);
  case COMMAND_DO: return Do(word);
  case COMMAND_LOOP: return Loop(word);
  case COMMAND_FOR: return For(word);
  case COMMAND_NEXT: return Next(word);
  case COMMAND_GOTO: return Goto();
  case COMMAND_END: End(word); return false;
  case COMMAND_RETURN: Return(word); return !InProcedure();
  case COMMAND_ELSE: return Else(word);
  case COMMAND_ENDFUNCTION:
  case COMMAND_ENDSUB:
    if (!InProcedure())
      break;
    EndOfProcedure();
    return false;
  case COMMAND_DIM: Declarations(false); break;
  case COMMAND_GLOBAL: Declarations(true); break;
  case COMMAND_FUNCTION:
  case COMMAND_SUB:
    if (InProcedure()) {
      Report(ProblemCode::MissingEndFunction, *Procedure().name,
             "the procedure " + Quoted(*Procedure().name) + " has no endfunction or endsub",
             "Its body runs into the next definition, which is error 28. Write endfunction or endsub behind its last "
             "statement.");
    } else if (!m_outline.hasMainProgram) {
      Report(ProblemCode::NoMainProgram, word, "the script has procedures and no main program",
             "As a library that is right; run by itself, it is error 28.");
    } else {
      Report(ProblemCode::ProcedureInFlow, word, "the main program runs into the definition of a procedure",
             "This is error 28, and the run ends. Write `end` behind the last statement of the main program.");
    }
    return false;
  case COMMAND_INCLUDE:
  case COMMAND_LIBRARY:
  case COMMAND_REM:
  case COMMAND_ENCRYPT: m_reader.FindEndOfLine(); break;
  case COMMAND_CALL: CallStatement(); break;
  case COMMAND_RUN: ExpressionList("run", 0); break;
  case COMMAND_RUNEXE: ExpressionList("runexe", 0); break;
  case COMMAND_OPEN: OpenFile(); break;
  case COMMAND_CLOSE: OneExpression(kNumberValue, "close"); break;
  case COMMAND_PLAYSOUND: OneExpression(kAnyValue, "playsound"); break;
  case COMMAND_TIMERSTART: OneExpression(kAnyValue, "timerstart"); break;
  case COMMAND_SETFOCUS: OneExpression(kAnyValue, "setfocus"); break;
  case COMMAND_MAP: MapStatement(); break;
  case COMMAND_TYPE_WORD: TypeBlock(word); break;
  case COMMAND_EVENT: EventStatement(); break;
  case COMMAND_THROW: ThrowStatement(); break;
  case COMMAND_WATCH: WatchStatement(); break;
  case COMMAND_DIALOG: Dialog(word); break;
  case COMMAND_CLOSEDIALOG:
    if (!m_outline.showsDialogs)
      Report(ProblemCode::NoDialog, word, "the script shows no dialog", "Without an open one this is error 43.");
    break;
  case COMMAND_PROPERTYSHEET: PropertySheet(word); break;
  case COMMAND_ALTER: Alter(word); break;
  case COMMAND_DECLARE: DeclareStatement(word); break;
  default: break; // words without operands, and those that are stepped over on their own
  }
  return true;
}

void ScriptChecker::EndOfProcedure() {
  CheckedProcedure& procedure = Procedure();
  const int number = m_outline.NumberOf(procedure.name->lowered);
  procedure.result = static_cast<ValueKinds>(
      procedure.result |
      (IsGlobal(procedure.name->lowered) ? kAnyValue : m_state.variables[static_cast<std::size_t>(number)]));
}

void ScriptChecker::EndOfText() {
  if (InProcedure())
    Report(ProblemCode::MissingEndFunction, *Procedure().name,
           "the procedure " + Quoted(*Procedure().name) + " has no endfunction or endsub",
           "Its body runs to the end of the script, which is error 20. Write endfunction or endsub behind its last "
           "statement.");
}

// What is left of a line that fails is not looked at: it would only repeat the fault. Behind a label that was met
// instead of a value the line goes on, and behind the line's end nothing is left of it.
void ScriptChecker::Recover() {
  const Token& last = m_reader.Current();
  const bool goesOn = last.kind == TOKEN_LABEL || last.command == COMMAND_END_OF_LINE;
  if (goesOn && m_reader.Position() == last.end)
    return;
  m_reader.FindEndOfLine();
}

// Where to show a fault: at the token, or where a line ends too early at what it began with.
const Token& ScriptChecker::Blamed(const Token& token, const Token& otherwise) {
  const bool isEnd =
      token.kind == TOKEN_COMMENT || token.command == COMMAND_END_OF_LINE || token.command == COMMAND_END_OF_PROGRAM;
  return isEnd ? otherwise : token;
}

// A message is one line, but a literal may hold several.
std::string ScriptChecker::Quoted(const Token& token) {
  const std::string text = token.text.ToUtf8();
  const std::size_t line = text.find_first_of("\r\n");
  return "\"" + (line == std::string::npos ? text : text.substr(0, line) + "...") + "\"";
}

std::string ScriptChecker::Spelling(const Token& token) const {
  return CString(m_reader.Text().substr(token.start, token.end - token.start)).ToUtf8();
}

} // namespace brindle
