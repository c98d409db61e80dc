// PairIndex: where a branch or loop that does not run is skipped to, for every place of a script at once.
// Room: check. Used by: the rules for branches and loops.
// May touch: the reader's position.
// Must not: tell anything that a skip would not find: where the two may differ it skips.
// Invariant: the script is read once, however many blocks stand inside each other.
#pragma once

#include "check/script_reader.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace brindle {

class PairIndex {
public:
  enum class Block { If, For, Do };

  explicit PairIndex(ScriptReader& reader);

  // As a branch or loop does from the reader's position; the word that the skip stops on is current.
  void Skip(Block block);
  // Skips that had to read the text again: where the way has come to a place that the whole text does not lead to.
  [[nodiscard]] std::size_t Rereadings() const noexcept { return m_nRereadings; }

private:
  struct Place {
    std::uint32_t start = 0; // of a token
    bool insideOpen = false; // behind "open" on its line: its "for" starts no loop
  };
  // How deep inside blocks of one kind the text is, and where that changes.
  struct Depths {
    struct Change {
      std::uint32_t start = 0;
      int before = 0;
    };
    std::vector<Change> changes;
    int last = 0;                                             // behind all of them
    std::unordered_map<int, std::vector<std::uint32_t>> ends; // words that end a block or branch, by their depth
  };
  void Note(const Token& token, bool isLoopWord);
  [[nodiscard]] bool IsKnown(std::uint32_t start) const;

  ScriptReader& m_reader;
  std::vector<Place> m_places;
  std::array<Depths, 3> m_depths;            // by Block
  std::vector<std::uint32_t> m_everyoneEnds; // where each skip ends, how deep it may be
  std::size_t m_nRereadings = 0;
};

} // namespace brindle
