// Maps: named dictionaries from text to whole values.
// Room: data. Used by: the "map" statement and the map functions.
// May touch: values.
// Invariant: entries stand in the order in which their keys were first stored; names and keys are compared as
// written.
#pragma once

#include "brindle/variable.h"

#include <memory>
#include <unordered_map>
#include <vector>

namespace brindle {

class ScriptMap {
public:
  struct Entry {
    CString key;
    std::unique_ptr<CBasicVariable> value; // null once the key was removed
  };

  [[nodiscard]] CBasicVariable* Find(const CString& key) const {
    const auto place = m_places.find(key);
    return place == m_places.end() ? nullptr : m_entries[place->second].value.get();
  }
  void Set(const CString& key, const CBasicVariable& value);
  bool Remove(const CString& key);
  void Clear() noexcept;
  // Calls visit(key, value) for every entry in order.
  template <class Visit> void ForEach(Visit visit) const {
    for (const Entry& entry : m_entries)
      if (entry.value != nullptr)
        visit(entry.key, *entry.value);
  }

private:
  void DropRemoved();

  std::unordered_map<CString, std::size_t> m_places;
  std::vector<Entry> m_entries;
};

using MapTable = std::unordered_map<CString, std::unique_ptr<ScriptMap>>;

} // namespace brindle
