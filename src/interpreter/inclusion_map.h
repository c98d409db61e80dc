// Which file every part of a program text came from: "include" and "library" put it together.
// Room: interpreter. Used by: LoadLibraries, which fills it; error places; the check of scripts.
// May touch: nothing.
// Invariant: regions nest; the innermost region that holds a position is the file its line was written in.
#pragma once

#include "brindle/text.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace brindle {

class InclusionMap {
public:
  struct Region {
    std::uint32_t start;
    std::uint32_t end;
    std::uint32_t lead; // line ends at the start that are not the file's
    std::string file;   // the resolved path
    CString name;       // as the scripts call it
  };

  // A file's text that was appended behind, or inserted at, `start`. Regions around it grow, later ones move.
  void Add(std::uint32_t start, std::uint32_t length, std::uint32_t lead, std::string file, const CString& name) {
    for (Region& region : m_regions) {
      if (region.start >= start)
        region.start += length;
      if (region.end > start)
        region.end += length;
    }
    m_regions.push_back({start, start + length, lead, std::move(file), name});
  }
  // Whether the line at `position` stands in that file, directly or in what the file includes.
  [[nodiscard]] bool IsInside(std::uint32_t position, const std::string& file) const {
    for (const Region& region : m_regions)
      if (position >= region.start && position < region.end && region.file == file)
        return true;
    return false;
  }

  // The program's own file comes first; of two regions that hold a position the later one is inside.
  [[nodiscard]] const std::vector<Region>& Regions() const noexcept { return m_regions; }

private:
  std::vector<Region> m_regions;
};

} // namespace brindle
