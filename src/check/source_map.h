// Where every position of a composed program text was written: file, line and column.
// Room: check. Used by: the list of problems.
// May touch: the text and the map of its inclusions, while it is built.
// Invariant: a line end is "\n", "\r" or both together, also where an included text stands between the two.
#pragma once

#include "interpreter/inclusion_map.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace brindle {

struct SourcePlace {
  std::uint32_t file = 0; // its region in the inclusion map; 0 is the script itself
  int line = 1;
  int column = 1;
};

class SourceMap {
public:
  SourceMap(std::u16string_view text, const InclusionMap& inclusions);

  [[nodiscard]] SourcePlace PlaceOf(std::uint32_t position) const;
  // Where the line of a position ends.
  [[nodiscard]] std::uint32_t LineEnd(std::uint32_t position) const;

private:
  struct Line {
    std::uint32_t start;
    std::uint32_t region;
    int number;
  };
  [[nodiscard]] std::vector<Line>::const_iterator LineOf(std::uint32_t position) const;

  std::u16string_view m_text;
  std::vector<Line> m_lines;
};

} // namespace brindle
