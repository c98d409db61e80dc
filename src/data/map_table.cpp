#include "data/map_table.h"

#include <algorithm>
#include <utility>

namespace brindle {

// Room for one more, in a table at most half full; the entries that were removed go.
void ScriptMap::MakeRoom() {
  if (2 * (m_nUsed + 1) <= m_places.size())
    return;
  constexpr std::size_t kFewest = 16;
  std::size_t size = kFewest;
  while (size < 4 * (m_nLive + 1))
    size *= 2;
  std::vector<Place, AccountedAllocator<Place>> places(size);
  std::erase(m_entries, nullptr);
  for (std::size_t i = 0; i < m_entries.size(); ++i) {
    const std::uint32_t hash = m_entries[i]->key.Hash();
    std::size_t place = hash & (size - 1);
    while (places[place].entry != kFree)
      place = (place + 1) & (size - 1);
    places[place] = {hash, static_cast<std::uint32_t>(i)};
  }
  m_places = std::move(places);
  m_nUsed = m_nLive;
}

void ScriptMap::Set(const CString& key, const CBasicVariable& value) {
  const std::uint32_t hash = key.Hash();
  const std::size_t known = PlaceOf(key, hash);
  if (known != kNowhere) {
    // The old value ends last: the end of an object may come back to this map.
    auto fresh = std::make_unique<Entry>(Entry{key, value});
    const std::unique_ptr<Entry> old = std::exchange(m_entries[m_places[known].entry], std::move(fresh));
    return;
  }
  auto fresh = std::make_unique<Entry>(Entry{key, value});
  MakeRoom();
  m_entries.push_back(std::move(fresh));
  const std::size_t mask = m_places.size() - 1;
  std::size_t place = hash & mask;
  while (m_places[place].entry != kFree)
    place = (place + 1) & mask;
  m_places[place] = {hash, static_cast<std::uint32_t>(m_entries.size() - 1)};
  ++m_nUsed;
  ++m_nLive;
}

bool ScriptMap::Remove(const CString& key) {
  const std::size_t place = PlaceOf(key, key.Hash());
  if (place == kNowhere)
    return false;
  // The value ends last: the end of an object may come back to this map.
  const std::unique_ptr<Entry> removed = std::move(m_entries[m_places[place].entry]);
  m_places[place].entry = kRemoved;
  --m_nLive;
  return true;
}

void ScriptMap::Clear() noexcept {
  m_places.clear();
  m_nUsed = 0;
  m_nLive = 0;
  const Entries removed = std::exchange(m_entries, {});
}

} // namespace brindle
