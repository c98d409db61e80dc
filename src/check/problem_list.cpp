#include "check/problem_list.h"

#include "interpreter/script_loader.h"
#include "platform/path.h"

#include <algorithm>
#include <utility>

namespace brindle {

ProblemList::ProblemList(const CString& script, std::u16string_view text, const InclusionMap& inclusions)
    : m_map(text, inclusions), m_inclusions(inclusions), m_script(script) {
  const auto& regions = inclusions.Regions();
  for (std::size_t i = 0; i < regions.size(); ++i) {
    m_files.push_back(i == 0 ? script : CString::FromUtf8(regions[i].file));
    const auto first = std::find_if(regions.begin(), regions.end(),
                                    [&](const InclusionMap::Region& region) { return region.file == regions[i].file; });
    m_fileIds.push_back(static_cast<std::uint32_t>(first - regions.begin()));
  }
  if (m_files.empty()) {
    m_files.push_back(script);
    m_fileIds.push_back(0);
  }
}

void ProblemList::Add(ProblemCode code, std::uint32_t start, std::uint32_t end, std::string message, std::string hint) {
  const SourcePlace place = m_map.PlaceOf(start);
  const std::uint32_t last = std::clamp(end, start, std::max(start, m_map.LineEnd(start)));
  CProblem problem;
  problem.severity = KindOf(code).severity;
  problem.code = KindOf(code).name;
  problem.file = FileOf(place);
  problem.line = place.line;
  problem.column = place.column;
  problem.endColumn = place.column + static_cast<int>(last - start);
  problem.message = std::move(message);
  problem.hint = std::move(hint);
  m_problems.try_emplace({m_fileIds[place.file], place.line, place.column, code}, std::move(problem));
}

bool ProblemList::IsSamePlace(std::uint32_t a, std::uint32_t b) const {
  const SourcePlace first = m_map.PlaceOf(a);
  const SourcePlace second = m_map.PlaceOf(b);
  return m_fileIds[first.file] == m_fileIds[second.file] && first.line == second.line && first.column == second.column;
}

bool ProblemList::Includes(std::uint32_t position, const CString& name) const {
  return m_inclusions.IsInside(position, ResolvePath(BesideScript(m_script, name).View()));
}

std::string ProblemList::Reference(std::uint32_t position, std::uint32_t from) const {
  const SourcePlace place = m_map.PlaceOf(position);
  std::string text = "line " + std::to_string(place.line);
  if (m_fileIds[place.file] != m_fileIds[m_map.PlaceOf(from).file])
    text += " of " + FileOf(place).ToUtf8();
  return text;
}

std::vector<CProblem> ProblemList::Take() {
  std::vector<CProblem> problems;
  problems.reserve(m_problems.size());
  for (auto& [place, problem] : m_problems)
    problems.push_back(std::move(problem));
  m_problems.clear();
  return problems;
}

} // namespace brindle
