#include "interpreter/source_lines.h"

#include "interpreter/scanner.h"

#include <algorithm>

namespace brindle {

namespace {

bool IsInnerUnitOfPair(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

} // namespace

SourceLines::SourceLines(std::u16string_view text, const InclusionMap& files) : m_text(text) {
  FindBreaks();
  FindSegments(files);
}

void SourceLines::FindBreaks() {
  for (std::size_t i = 0; i < m_text.size(); ++i)
    if (m_text[i] == u'\n' || (m_text[i] == u'\r' && (i + 1 == m_text.size() || m_text[i + 1] != u'\n')))
      m_breaks.push_back(static_cast<std::uint32_t>(i));
}

void SourceLines::FindSegments(const InclusionMap& files) {
  std::vector<const InclusionMap::Region*> regions;
  for (const InclusionMap::Region& region : files.Regions())
    regions.push_back(&region);
  std::stable_sort(regions.begin(), regions.end(), [](const auto* a, const auto* b) {
    return a->start != b->start ? a->start < b->start : a->end > b->end;
  });

  // The files around the current place, the innermost last, each with the line that it has come to.
  struct Open {
    const InclusionMap::Region* region;
    int line;
  };
  std::vector<Open> open = {{nullptr, 1}};
  std::uint32_t place = 0;
  const auto goTo = [&](std::uint32_t position) {
    open.back().line += BreaksBetween(place, position);
    place = position;
  };
  const auto begin = [&] { m_segments.push_back({place, open.back().region, open.back().line}); };
  const auto leaveUpTo = [&](std::uint32_t position) {
    while (open.size() > 1 && open.back().region->end <= position) {
      goTo(open.back().region->end);
      open.pop_back();
      begin();
    }
  };
  begin();
  for (const InclusionMap::Region* region : regions) {
    leaveUpTo(region->start);
    goTo(region->start);
    open.push_back({region, 1 - static_cast<int>(region->lead)});
    begin();
  }
  leaveUpTo(static_cast<std::uint32_t>(m_text.size()));
}

int SourceLines::BreaksBetween(std::uint32_t from, std::uint32_t to) const {
  return static_cast<int>(std::lower_bound(m_breaks.begin(), m_breaks.end(), to) -
                          std::lower_bound(m_breaks.begin(), m_breaks.end(), from));
}

SourceLines::Place SourceLines::At(std::uint32_t position) const {
  const auto size = static_cast<std::uint32_t>(m_text.size());
  if (size == 0)
    return {};
  if (position >= size)
    for (position = size; position > 0 && IsLineEnd(m_text[position - 1]);)
      --position;

  const auto segment = std::prev(std::upper_bound(m_segments.begin(), m_segments.end(), position,
                                                  [](std::uint32_t at, const Segment& s) { return at < s.start; }));
  const auto lineEnd = std::lower_bound(m_breaks.begin(), m_breaks.end(), position);
  const std::uint32_t start = lineEnd == m_breaks.begin() ? 0 : *std::prev(lineEnd) + 1;
  std::uint32_t end = lineEnd == m_breaks.end() ? size : *lineEnd;
  if (end > start && m_text[end - 1] == u'\r')
    --end;
  Place place;
  place.region = segment->region;
  place.line = std::max(1, segment->line + BreaksBetween(segment->start, position));
  place.text = m_text.substr(start, end - start);
  const std::u16string_view before = m_text.substr(start, position - start);
  place.column =
      1 + static_cast<int>(before.size() -
                           static_cast<std::size_t>(std::count_if(before.begin(), before.end(), IsInnerUnitOfPair)));
  return place;
}

} // namespace brindle
