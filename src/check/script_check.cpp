#include "brindle/check.h"

#include "check/checker.h"

#include <algorithm>

using namespace brindle;

namespace {

std::vector<CProblem> ProblemsOf(ScriptReader& reader, const CString& file, const std::vector<CString>& hostFunctions) {
  ProblemList problems(file, reader);
  ScriptChecker(reader, problems, hostFunctions).Run();
  return problems.Take();
}

} // namespace

void CScriptCheck::AddHostFunction(const CString& name) {
  m_hostFunctions.push_back(name);
}

bool CScriptCheck::CheckFile(const CString& file) {
  ScriptReader reader;
  if (reader.Load(file)) {
    m_problems = ProblemsOf(reader, file, m_hostFunctions);
    return true;
  }
  CProblem problem;
  const ProblemKind& kind = KindOf(ProblemCode::UnreadableFile);
  problem.severity = kind.severity;
  problem.code = kind.name;
  problem.file = file;
  problem.message = "the script cannot be read";
  problem.hint = "There is no such file, it may not be read, or it is longer than 64 million characters: error 17.";
  m_problems.assign(1, std::move(problem));
  return false;
}

void CScriptCheck::CheckText(const CString& file, const CString& text) {
  ScriptReader reader;
  reader.SetText(file, text.View());
  m_problems = ProblemsOf(reader, file, m_hostFunctions);
}

int CScriptCheck::GetNumberOfErrors() const noexcept {
  return static_cast<int>(std::count_if(m_problems.begin(), m_problems.end(), [](const CProblem& problem) {
    return problem.severity == CProblemSeverity::Error;
  }));
}

std::vector<CProblemCode> CScriptCheck::GetCodes() {
  std::vector<CProblemCode> codes;
  for (const ProblemKind& kind : AllProblemKinds())
    codes.push_back({kind.name, kind.severity, kind.summary});
  return codes;
}
