// SourceLines: from a position of a program text to the file, line and column that a person would look at.
// Room: interpreter. Used by: ProgramText, for error places.
// May touch: nothing but itself.
// Must not: be made before it is asked for: it walks through the whole text.
// Invariant: it belongs to one text and its inclusions as they were when it was made.
#pragma once

#include "interpreter/inclusion_map.h"

#include <string_view>

namespace brindle {

class SourceLines {
public:
  struct Place {
    const InclusionMap::Region* region = nullptr; // null for what no file is known to have brought
    int line = 0;                                 // 0 in a text without lines
    int column = 0;
    std::u16string_view text; // of the line
  };

  // Both outlive it.
  SourceLines(std::u16string_view text, const InclusionMap& files);

  // At the end of the text it is the end of the last line that is not empty.
  [[nodiscard]] Place At(std::uint32_t position) const;

private:
  // A part of the text that one file brought, up to the next segment.
  struct Segment {
    std::uint32_t start;
    const InclusionMap::Region* region;
    int line; // at the start
  };

  void FindBreaks();
  void FindSegments(const InclusionMap& files);
  [[nodiscard]] int BreaksBetween(std::uint32_t from, std::uint32_t to) const;

  std::u16string_view m_text;
  std::vector<std::uint32_t> m_breaks; // positions of the characters that end lines
  std::vector<Segment> m_segments;     // by start; of equal ones the last holds
};

} // namespace brindle
