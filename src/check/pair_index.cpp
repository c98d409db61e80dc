#include "check/pair_index.h"

#include <algorithm>

namespace brindle {

namespace {

struct Words {
  COMMAND_TYPE open;
  COMMAND_TYPE close;
  COMMAND_TYPE middle;
};

// In the order of PairIndex::Block.
constexpr std::array kBlocks = {Words{COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE},
                                Words{COMMAND_FOR, COMMAND_NEXT, COMMAND_NONE},
                                Words{COMMAND_DO, COMMAND_LOOP, COMMAND_NONE}};

// The first of them at or behind a position; 0xFFFFFFFF when there is none.
std::uint32_t FirstFrom(const std::vector<std::uint32_t>& starts, std::uint32_t position) {
  const auto found = std::lower_bound(starts.begin(), starts.end(), position);
  return found == starts.end() ? UINT32_MAX : *found;
}

} // namespace

// Reads as a skip reads, from the beginning of the text to its end.
PairIndex::PairIndex(ScriptReader& reader) : m_reader(reader) {
  bool insideOpen = false;
  m_reader.Resume(0, TOKEN_DELIMITER);
  while (m_reader.Position() < m_reader.Text().size()) {
    const Token& token = m_reader.Next();
    m_places.push_back({token.start, insideOpen});
    m_reader.StepOver();
    const bool isLoopWord = !(insideOpen && token.command == COMMAND_FOR);
    Note(token, isLoopWord);
    if (token.command == COMMAND_OPEN)
      insideOpen = true;
    else if ((token.command != COMMAND_NONE && isLoopWord) || m_reader.IsDelimiter(u':'))
      insideOpen = false;
  }
}

void PairIndex::Note(const Token& token, bool isLoopWord) {
  if (token.command == COMMAND_END_OF_PROGRAM || token.command == COMMAND_ENDSUB)
    m_everyoneEnds.push_back(token.start);
  for (std::size_t i = 0; i < kBlocks.size(); ++i) {
    const Words& words = kBlocks[i];
    Depths& depths = m_depths[i];
    const bool opens = token.command == words.open && isLoopWord;
    const bool closes = token.command == words.close;
    if (closes || (words.middle != COMMAND_NONE && token.command == words.middle))
      depths.ends[depths.last].push_back(token.start);
    if (opens || closes) {
      depths.changes.push_back({token.start, depths.last});
      depths.last += opens ? 1 : -1;
    }
  }
}

bool PairIndex::IsKnown(std::uint32_t start) const {
  const auto place = std::lower_bound(m_places.begin(), m_places.end(), start,
                                      [](const Place& place, std::uint32_t wanted) { return place.start < wanted; });
  return place != m_places.end() && place->start == start && !place->insideOpen;
}

void PairIndex::Skip(Block block) {
  const Words& words = kBlocks[static_cast<std::size_t>(block)];
  const std::uint32_t from = m_reader.PastBlanks(m_reader.Position());
  if (!IsKnown(from)) {
    ++m_nRereadings;
    m_reader.FindLastPair(words.open, words.close, words.middle);
    return;
  }
  const Depths& depths = m_depths[static_cast<std::size_t>(block)];
  const auto change =
      std::lower_bound(depths.changes.begin(), depths.changes.end(), from,
                       [](const Depths::Change& change, std::uint32_t position) { return change.start < position; });
  const auto ends = depths.ends.find(change == depths.changes.end() ? depths.last : change->before);
  std::uint32_t end = FirstFrom(m_everyoneEnds, from);
  if (ends != depths.ends.end())
    end = std::min(end, FirstFrom(ends->second, from));
  end = std::min(end, static_cast<std::uint32_t>(m_reader.Text().size()));
  // Twice, as the reader does it behind a skip: the word is then also what was read before.
  for (int time = 0; time < 2; ++time) {
    m_reader.SetPosition(end);
    m_reader.Next();
  }
}

} // namespace brindle
