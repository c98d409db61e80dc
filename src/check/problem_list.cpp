#include "check/problem_list.h"

#include "interpreter/script_loader.h"
#include "platform/path.h"

#include <algorithm>
#include <utility>

namespace brindle {

ProblemList::ProblemList(const CString& script, const ScriptReader& reader) : m_reader(reader), m_script(script) {}

ProblemList::Place ProblemList::PlaceOf(std::uint32_t position) const {
  const SourceLines::Place found = m_reader.PlaceOf(position);
  Place place;
  place.line = std::max(found.line, 1);
  if (found.line > 0) {
    const auto start = static_cast<std::uint32_t>(found.text.data() - m_reader.Text().data());
    place.lineEnd = static_cast<int>(found.text.size()) + 1;
    place.column = std::clamp(static_cast<int>(position - start) + 1, 1, place.lineEnd);
  }
  if (found.region != nullptr) {
    const auto& regions = m_reader.Inclusions().Regions();
    const auto first = std::find_if(regions.begin(), regions.end(), [&](const InclusionMap::Region& region) {
      return region.file == found.region->file;
    });
    place.file = static_cast<std::size_t>(first - regions.begin());
  }
  return place;
}

const CString& ProblemList::FileOf(const Place& place) const {
  return place.file == 0 ? m_script : m_reader.Inclusions().Regions()[place.file].name;
}

void ProblemList::Add(ProblemCode code, std::uint32_t start, std::uint32_t end, std::string message, std::string hint) {
  const Place place = PlaceOf(start);
  CProblem problem;
  problem.severity = KindOf(code).severity;
  problem.code = KindOf(code).name;
  problem.file = FileOf(place);
  problem.line = place.line;
  problem.column = place.column;
  problem.endColumn = std::clamp(place.column + static_cast<int>(end - start), place.column, place.lineEnd);
  problem.message = std::move(message);
  problem.hint = std::move(hint);
  m_problems.try_emplace({place.file, place.line, place.column, code}, std::move(problem));
}

bool ProblemList::IsSamePlace(std::uint32_t a, std::uint32_t b) const {
  const Place first = PlaceOf(a);
  const Place second = PlaceOf(b);
  return first.file == second.file && first.line == second.line && first.column == second.column;
}

bool ProblemList::Includes(std::uint32_t position, const CString& name) const {
  return m_reader.Inclusions().IsInside(position, ResolvePath(BesideScript(m_script, name).View()));
}

std::string ProblemList::Reference(std::uint32_t position, std::uint32_t from) const {
  const Place place = PlaceOf(position);
  std::string text = "line " + std::to_string(place.line);
  if (place.file != PlaceOf(from).file)
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
