#include "data/map_table.h"

#include <algorithm>

namespace brindle {

void ScriptMap::Set(const CString& key, const CBasicVariable& value) {
  const auto place = m_places.find(key);
  if (place != m_places.end()) {
    m_entries[place->second].value->Set(value);
    return;
  }
  m_entries.push_back({key, std::make_unique<CBasicVariable>(value)});
  m_places.emplace(key, m_entries.size() - 1);
}

bool ScriptMap::Remove(const CString& key) {
  const auto place = m_places.find(key);
  if (place == m_places.end())
    return false;
  m_entries[place->second].value.reset();
  m_places.erase(place);
  // Removed entries keep the others in place; once they are the majority they go.
  if (m_entries.size() > 16 && m_entries.size() > 2 * m_places.size())
    DropRemoved();
  return true;
}

void ScriptMap::DropRemoved() {
  std::erase_if(m_entries, [](const Entry& entry) { return entry.value == nullptr; });
  for (std::size_t i = 0; i < m_entries.size(); ++i)
    m_places[m_entries[i].key] = i;
}

} // namespace brindle
