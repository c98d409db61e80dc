// The problems found so far, in the order and at the places that users see.
// Room: check. Used by: the rules (adding), CScriptCheck (taking).
// May touch: the reader's text and the map of its lines.
// Invariant: at one place there is one problem of a code; what "include" puts in twice is one place.
#pragma once

#include "check/problem_codes.h"
#include "check/script_reader.h"

#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace brindle {

class ProblemList {
public:
  ProblemList(const CString& script, const ScriptReader& reader);

  // Of what stands from `start` to `end`.
  void Add(ProblemCode code, std::uint32_t start, std::uint32_t end, std::string message, std::string hint);
  // Whether two positions are the same place of the same file.
  [[nodiscard]] bool IsSamePlace(std::uint32_t a, std::uint32_t b) const;
  [[nodiscard]] bool IsInScript(std::uint32_t position) const { return PlaceOf(position).file == 0; }
  // Whether a name stands in the file that it names, or in one that this file includes.
  [[nodiscard]] bool Includes(std::uint32_t position, const CString& name) const;
  // "line 5", or "line 5 of FILE" when that is another file than the one of `from`.
  [[nodiscard]] std::string Reference(std::uint32_t position, std::uint32_t from) const;
  [[nodiscard]] std::vector<CProblem> Take();

private:
  struct Place {
    std::size_t file = 0; // the first region of its file
    int line = 1;
    int column = 1;  // in UTF-16 units
    int lineEnd = 1; // the column behind the line
  };
  [[nodiscard]] Place PlaceOf(std::uint32_t position) const;
  [[nodiscard]] const CString& FileOf(const Place& place) const;

  const ScriptReader& m_reader;
  CString m_script;
  std::map<std::tuple<std::size_t, int, int, ProblemCode>, CProblem> m_problems;
};

} // namespace brindle
