// Running a script: load, scan, run, and the boundary at which an abort ends.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/limits.h"
#include "interpreter/script_abort.h"
#include "interpreter/script_loader.h"
#include "interpreter/state.h"
#include "platform/path.h"

#include <algorithm>
#include <functional>
#include <new>
#include <optional>
#include <stdexcept>
#include <utility>

using namespace brindle;

// What a run changes and the caller gets back: a callback may run another script inside a running one. The
// text and the position of a run that stands alone stay, for the handlers of a resident interpreter.
struct CBrindle::RunScope {
  explicit RunScope(CBrindle& owner)
      : m_owner(owner), m_state(*owner.m_pState), m_entry(*m_state.budget), m_nested(m_state.runDepth > 0),
        m_program(m_state.program), m_position(m_state.position), m_token(m_state.token), m_scratch(m_state.scratch),
        m_fileName(m_state.fileName), m_keepTokens(m_state.keepTokens), m_stop(m_state.stop),
        m_level(m_state.m_nScopeLevel), m_base(m_state.baseLevel), m_names(m_state.m_arrTemporaries.GetSize()),
        m_atStatement(m_state.atStatement),
        m_record{m_state.calls,       CCallFrame::Kind::Program, nullptr, m_state.program.get(), m_state.position,
                 m_state.atStatement, m_state.fast.frames.size()} {
    if (m_nested)
      m_state.calls = &m_record;
    m_state.atStatement = false;
    m_state.callKind = CCallFrame::Kind::Procedure; // an abort may have left it for a call that was not made
    ++m_state.runDepth;
    const int calls = m_state.budget->Limits().callDepth;
    m_state.fast.deepestLevel =
        calls > 0 ? std::min(FastState::kDeepestLevel, calls - m_state.levelsBelow) : FastState::kDeepestLevel;
    m_state.baseLevel = m_level;
    // The other program's loops and returns are none of this one's.
    m_positions.swap(m_state.positions);
    if (m_nested)
      m_control.swap(m_state.control);
  }
  RunScope(const RunScope&) = delete;
  RunScope& operator=(const RunScope&) = delete;
  ~RunScope() {
    --m_state.runDepth;
    m_state.calls = m_record.outer;
    m_state.atStatement = m_atStatement;
    m_state.m_nScopeLevel = m_level;
    m_state.baseLevel = m_base;
    m_state.m_arrTemporaries.SetSize(m_names);
    m_positions.swap(m_state.positions);
    if (!m_nested)
      return;
    m_control.swap(m_state.control);
    m_state.program = m_program;
    m_state.position = m_position;
    m_state.token = m_token;
    m_state.scratch = m_scratch;
    m_state.fileName = m_fileName;
    m_state.keepTokens = m_keepTokens;
    m_state.stop = m_stop;
  }

  // Objects that the run left in the procedures it was thrown out of.
  void ReleaseObjects() {
    if (m_level == 1)
      m_owner.ObjectVariablesFree(2);
  }

private:
  CBrindle& m_owner;
  InterpreterState& m_state;
  ExecutionBudget::Entry m_entry;
  bool m_nested;
  std::shared_ptr<ProgramText> m_program;
  std::uint32_t m_position;
  TokenState m_token;
  Token m_scratch;
  CString m_fileName;
  bool m_keepTokens;
  bool m_stop;
  int m_level;
  int m_base;
  int m_names;
  bool m_atStatement;
  CallRecord m_record;
  std::vector<ReturnPosition> m_positions;
  ControlStack m_control;
};

// Runs `body` up to this interpreter's abort, which ends here, and turns want of memory into an error; then `release`
// lets go of what the body was thrown out of. What belongs to others, another interpreter's abort or a host's
// exception, passes.
template <class Body, class Release> void CBrindle::RunToAbort(Body body, Release release) {
  const auto runsToItsEnd = [this](auto& part) {
    try {
      try {
        part();
        return true;
      } catch (const MemoryLimitReached&) {
        AbortByBudget(kErrorMemoryLimit);
      } catch (const std::bad_alloc&) {
        ReportOrGiveUp(kErrorUnrecoverable);
      } catch (const std::length_error&) {
        ReportOrGiveUp(kErrorUnrecoverable);
      }
    } catch (const ScriptAbort& abort) {
      if (abort.owner != this)
        throw;
    }
    return false;
  };
  if (!runsToItsEnd(body))
    // The handlers of a change event may be thrown out as well: then nothing is left to stop.
    runsToItsEnd(release);
}

namespace {

// How the scripts know the host's script. One from outside of their root stands in it, as far as they can tell.
CString ScriptNameOf(const FileRoot& root, const CString& name) {
  if (const auto inside = root.NameOf(ResolvePath(name.View())))
    return CString(*inside);
  return CString(name.View().substr(DirectoryPart(name.View()).size()));
}

} // namespace

// `load` makes the text the program. What the host gives is its own; a path that a script gives is held to the root.
template <class Load> bool CBrindle::LoadAndRun(const CString& name, bool isScripts, Load load) {
  const FileRoot* const root = m_pState->budget->Root();
  bool isRefused = false;
  RunScope scope(*this);
  bool loaded = false;
  RunToAbort(
      [&] {
        CheckNesting();
        try {
          const FileRoot::Scope files(isScripts ? root : nullptr);
          loaded = load();
          isRefused = files.HasRefused();
        } catch (const std::bad_alloc&) {
          // as for a file that cannot be read
        }
        if (loaded && root != nullptr && !isScripts)
          m_pState->fileName = ScriptNameOf(*root, name);
        if (!loaded)
          ReportOrGiveUp(isRefused ? kErrorNotAllowed : kErrorLoadingSource);
      },
      [] {});
  if (loaded)
    RunToAbort([&] { RunProgram(m_pState->fileName); }, [&] { scope.ReleaseObjects(); });
  return loaded;
}

bool CBrindle::ExecuteProgram(const CString& fileName) {
  return RunFile(fileName, false);
}

bool CBrindle::RunFile(const CString& fileName, bool isScripts) {
  const CString name = fileName; // the caller's text may be a script variable
  return LoadAndRun(name, isScripts, [&] { return LoadProgram(name); });
}

bool CBrindle::ExecuteText(const CString& text, const CString& name) {
  const CString runText = text;
  const CString runName = name;
  return LoadAndRun(runName, false, [&] {
    std::optional<std::u16string> program;
    if (runText.View().size() < static_cast<std::size_t>(kLongestText))
      program = runText.View();
    return TakeText(runName, std::move(program));
  });
}

// Handlers of an event that comes while nothing runs: the boundary of an abort and of want of memory is here.
void CBrindle::RunAlone(const std::function<void()>& body) {
  RunScope scope(*this);
  RunToAbort(body, [&] { scope.ReleaseObjects(); });
}

bool CBrindle::LoadProgram(const CString& fileName) {
  return TakeText(fileName, LoadScriptFile(fileName));
}

// False without a text; the error then belongs to no text of an earlier run.
bool CBrindle::TakeText(const CString& fileName, std::optional<std::u16string> text) {
  m_pState->program = std::make_shared<ProgramText>(std::u16string(), fileName);
  m_pState->keepTokens = false;
  Rewind();
  m_pState->token.kind = TOKEN_DELIMITER;
  if (!text)
    return false;
  SetProgram(fileName, std::move(*text));
  return true;
}

void CBrindle::SetProgram(const CString& fileName, std::u16string text) {
  text.push_back(u'\n');
  m_pState->program = std::make_shared<ProgramText>(std::move(text), fileName);
  m_pState->fileName = fileName;
  Decrypt();
}

void CBrindle::RunProgram(CString fileName) {
  LoadLibraries();
  LabelsScan();
  m_pState->keepTokens = true;
  m_pState->stop = false;

  Arguments arguments;
  arguments.Add(CBasicVariable(fileName));
  EventThrow(CString(u"OnStart"), arguments);
  m_pState->atStatement = true;
  RunLoop();
  m_pState->atStatement = false;
  EventThrow(CString(u"OnStop"), arguments);
}

void CBrindle::RunLoop() {
  const TokenState& token = m_pState->token;
  while (!m_pState->stop) {
    get_token();
    switch (token.kind) {
    case TOKEN_VARIABLE:
    case TOKEN_FIELD:
    case TOKEN_FIELD_UNKNOWN:
    case TOKEN_COMMAND:
      if (!RunCompiled()) {
        CountStatement();
        Exec_command();
      }
      break;
    case TOKEN_DELIMITER:
    case TOKEN_COMMENT:
    case TOKEN_LABEL: break;
    default: ReportError(kErrorUnexpectedOperator); return;
    }
    if (token.command == COMMAND_END_OF_PROGRAM)
      return;
  }
}
