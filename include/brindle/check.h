// CScriptCheck: reads a script without running it and says what is wrong with it.
// Room: check. Used by: hosts, the runner's "check" command, editors.
// May touch: the script and the files that it names by "library" and "include".
// Must not: run anything of the script, or show anything.
// Invariant: an error is certain when its statement is reached; what only may go wrong is a warning.
#pragma once

#include "brindle/export.h"
#include "brindle/text.h"

#include <string>
#include <vector>

/// How bad a problem is.
enum class CProblemSeverity {
  Error,  ///< fails for certain when it is reached (or when the script is loaded)
  Warning ///< runs, but hardly as it was meant
};

/// One thing that is wrong with a script.
struct CProblem {
  CProblemSeverity severity = CProblemSeverity::Error;
  std::string code;    ///< stable name of the kind of problem, such as "missing-then"
  CString file;        ///< the script as it was named, or the path of the included file
  int line = 1;        ///< from 1, in that file
  int column = 1;      ///< from 1, in UTF-16 units
  int endColumn = 1;   ///< behind the last unit concerned; on the same line
  std::string message; ///< what is wrong, UTF-8, one line
  std::string hint;    ///< what happens and what to write instead, UTF-8, one line
};

/// A kind of problem.
struct CProblemCode {
  std::string code;
  CProblemSeverity severity = CProblemSeverity::Error;
  std::string summary; ///< one line
};

/// Checks scripts, one after the other. Nothing is kept from one check to the next but the names given to
/// AddHostFunction. What other interpreters of the process have registered is known as well. Objects are used by one
/// thread at a time, the one that interpreters run on.
class BRINDLE_API CScriptCheck {
public:
  /// A function that the host will register before it runs the script.
  void AddHostFunction(const CString& name);

  /// Checks a file; false when it cannot be read, which is the one problem then.
  bool CheckFile(const CString& file);
  /// Checks a text that would be in `file`, as an editor holds it. Files named by "library" and "include" are read.
  void CheckText(const CString& file, const CString& text);

  /// Of the last check, by file (the script first), line and column.
  [[nodiscard]] const std::vector<CProblem>& GetProblems() const noexcept { return m_problems; }
  [[nodiscard]] int GetNumberOfErrors() const noexcept;

  /// Every code there is, by name.
  [[nodiscard]] static std::vector<CProblemCode> GetCodes();

private:
  std::vector<CString> m_hostFunctions;
  std::vector<CProblem> m_problems;
};
