#include "check/source_map.h"

#include <algorithm>
#include <cstddef>

namespace brindle {

namespace {

struct Reading {
  int line = 1;
  bool behindReturn = false; // a "\n" that comes next belongs to the "\r"
};

} // namespace

SourceMap::SourceMap(std::u16string_view text, const InclusionMap& inclusions) : m_text(text) {
  const auto& regions = inclusions.Regions();
  std::vector<Reading> readings(regions.size());
  for (std::size_t i = 0; i < regions.size(); ++i)
    readings[i].line = 1 - static_cast<int>(regions[i].lead);

  // Regions nest, so those that hold the position are a stack; it only changes where one begins or ends.
  std::vector<std::uint32_t> order(regions.size());
  for (std::size_t i = 0; i < order.size(); ++i)
    order[i] = static_cast<std::uint32_t>(i);
  std::stable_sort(order.begin(), order.end(),
                   [&](std::uint32_t a, std::uint32_t b) { return regions[a].start < regions[b].start; });
  std::vector<std::uint32_t> open;
  std::size_t next = 0;
  bool newLine = true;
  for (std::uint32_t at = 0; at < text.size(); ++at) {
    while (!open.empty() && regions[open.back()].end <= at) {
      open.pop_back();
      newLine = true;
    }
    for (; next < order.size() && regions[order[next]].start <= at; ++next) {
      open.push_back(order[next]);
      newLine = true;
    }
    const std::uint32_t region = open.empty() ? 0 : open.back();
    Reading none;
    Reading& reading = readings.empty() ? none : readings[region];
    const char16_t unit = text[at];
    if (newLine)
      m_lines.push_back({at, region, reading.line});
    newLine = false;
    if (unit == u'\n' && reading.behindReturn) {
      reading.behindReturn = false;
      newLine = true;
      continue;
    }
    reading.behindReturn = unit == u'\r';
    if (unit == u'\n' || unit == u'\r') {
      ++reading.line;
      newLine = true;
    }
  }
  if (m_lines.empty())
    m_lines.push_back({0, 0, 1});
}

std::vector<SourceMap::Line>::const_iterator SourceMap::LineOf(std::uint32_t position) const {
  const auto behind = std::upper_bound(m_lines.begin(), m_lines.end(), position,
                                       [](std::uint32_t at, const Line& line) { return at < line.start; });
  return behind == m_lines.begin() ? behind : behind - 1;
}

SourcePlace SourceMap::PlaceOf(std::uint32_t position) const {
  const auto line = LineOf(position);
  return {line->region, std::max(line->number, 1), static_cast<int>(position - line->start) + 1};
}

std::uint32_t SourceMap::LineEnd(std::uint32_t position) const {
  auto end = position;
  while (end < m_text.size() && m_text[end] != u'\n' && m_text[end] != u'\r')
    ++end;
  return end;
}

} // namespace brindle
