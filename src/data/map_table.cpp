#include "data/map_table.h"

#include <algorithm>
#include <utility>

namespace brindle {

void ScriptMap::Set(const CString& key, const CBasicVariable& value) {
  const auto [place, added] = m_places.try_emplace(key, m_entries.size());
  if (!added) {
    m_entries[place->second].value->Set(value);
    return;
  }
  try {
    m_entries.push_back({key, std::make_unique<CBasicVariable>(value)});
  } catch (...) {
    m_places.erase(key);
    throw;
  }
}

bool ScriptMap::Remove(const CString& key) {
  const auto place = m_places.find(key);
  if (place == m_places.end())
    return false;
  // The value ends last: the end of an object may come back to this map.
  const std::unique_ptr<CBasicVariable> removed = std::move(m_entries[place->second].value);
  m_places.erase(place);
  // Removed entries keep the others in place; once they are the majority they go.
  if (m_entries.size() > 16 && m_entries.size() > 2 * m_places.size())
    DropRemoved();
  return true;
}

void ScriptMap::Clear() noexcept {
  m_places.clear();
  const std::vector<Entry> removed = std::exchange(m_entries, {});
}

void ScriptMap::DropRemoved() {
  std::erase_if(m_entries, [](const Entry& entry) { return entry.value == nullptr; });
  for (std::size_t i = 0; i < m_entries.size(); ++i)
    m_places[m_entries[i].key] = i;
}

} // namespace brindle
