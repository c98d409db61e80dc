// The problems found so far, in the order and at the places that users see.
// Room: check. Used by: the rules (adding), CScriptCheck (taking).
// May touch: nothing but itself.
// Invariant: at one place there is one problem of a code; what "include" puts in twice is one place.
#pragma once

#include "check/problem_codes.h"
#include "check/source_map.h"
#include "interpreter/inclusion_map.h"

#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace brindle {

class ProblemList {
public:
  ProblemList(const CString& script, std::u16string_view text, const InclusionMap& inclusions);

  // Of what stands from `start` to `end`.
  void Add(ProblemCode code, std::uint32_t start, std::uint32_t end, std::string message, std::string hint);
  // Whether two positions are the same place of the same file.
  [[nodiscard]] bool IsSamePlace(std::uint32_t a, std::uint32_t b) const;
  [[nodiscard]] SourcePlace PlaceOf(std::uint32_t position) const { return m_map.PlaceOf(position); }
  // Whether a name stands in the file that it names, or in one that this file includes.
  [[nodiscard]] bool Includes(std::uint32_t position, const CString& name) const;
  // "line 5", or "line 5 of FILE" when that is another file than the one of `from`.
  [[nodiscard]] std::string Reference(std::uint32_t position, std::uint32_t from) const;
  [[nodiscard]] std::vector<CProblem> Take();

private:
  [[nodiscard]] const CString& FileOf(const SourcePlace& place) const { return m_files[place.file]; }

  SourceMap m_map;
  const InclusionMap& m_inclusions;
  CString m_script;
  std::vector<CString> m_files;         // by region
  std::vector<std::uint32_t> m_fileIds; // by region: the first region of the same file
  std::map<std::tuple<std::uint32_t, int, int, ProblemCode>, CProblem> m_problems;
};

} // namespace brindle
