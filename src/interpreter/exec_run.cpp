// "run" another script, "runexe" a program, and scripts that name themselves tools.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/limits.h"
#include "interpreter/state.h"
#include "platform/process.h"

using namespace brindle;

namespace {

// How many scripts run each other at the moment.
int runningScripts = 0;

} // namespace

bool CBrindle::ExecRun(bool script) {
  get_token();
  putback();
  if (AtStatementEnd())
    return false;
  const int recordedNames = m_pState->m_arrTemporaries.GetSize();
  Arguments args;
  GetParamGroup(args);
  putback();
  m_pState->m_arrTemporaries.SetSize(recordedNames);
  const CString file = args[0].GetStringValue();

  if (!script) {
    // Deliberate: the parameter text carries its quotes with it.
    const CString parameters = args.GetSize() > 1 ? u"\"" + args[1].GetStringValue() + u"\"" : CString();
    if (m_pState->budget->Limits().noPrograms)
      return Fail(kErrorNotAllowed);
    CString path = file;
    if (!PathForOthers(path))
      return false;
    StartFile(path.View(), parameters.View());
    return true;
  }

  struct Running {
    Running() { ++runningScripts; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() { --runningScripts; }
  };
  const Running running;
  if (runningScripts > kDeepestRun)
    AbortWith(kErrorUnrecoverable);
  CheckNesting();
  CheckCallDepth();
  CBrindle child;
  child.SetUserInterface(m_pState->userInterface);
  child.m_pState->starter = this;
  child.m_pState->budget = m_pState->budget;
  child.m_pState->levelsBelow = m_pState->levelsBelow + m_pState->m_nScopeLevel;
  return child.RunFile(file, true);
}

bool CBrindle::IsExtensionScript(const CString& path, CString& caption) {
  CString line;
  try {
    TextFile file;
    if (!file.Open(path, CFile::modeRead | CFile::shareDenyNone) || file.ReadLine(line) != TextFile::LineResult::Line)
      return false;
  } catch (const CFileException&) {
    return false;
  }
  CString upper = line;
  const int mark = upper.MakeUpper().Find(CString(u"TOOLMENU"));
  const int equal = mark < 0 ? -1 : upper.Find(u'=', mark);
  if (equal < 0 || equal + 1 >= line.GetLength())
    return false;
  caption = line.Mid(equal + 1);
  return true;
}
