// Maps: named dictionaries from text to whole values.
// Room: data. Used by: the "map" statement and the map functions.
// May touch: values.
// Invariant: entries stand in the order in which their keys were first stored; names and keys are compared as
// written. The table has a free place at least, and each live entry is found from the place that its hash names.
#pragma once

#include "brindle/variable.h"
#include "platform/memory_account.h"

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace brindle {

class ScriptMap {
public:
  // Good until the map changes.
  [[nodiscard]] CBasicVariable* Find(const CString& key) const noexcept {
    const std::size_t place = PlaceOf(key, key.Hash());
    return place == kNowhere ? nullptr : &m_entries[m_places[place].entry]->value;
  }
  void Set(const CString& key, const CBasicVariable& value);
  bool Remove(const CString& key);
  void Clear() noexcept;
  // Calls visit(key, value) for every entry in order.
  template <class Visit> void ForEach(Visit visit) const {
    for (const std::unique_ptr<Entry>& entry : m_entries)
      if (entry != nullptr)
        visit(entry->key, entry->value);
  }

private:
  struct Entry {
    CString key;
    CBasicVariable value;
    [[no_unique_address]] AccountedPiece<sizeof(CString) + sizeof(CBasicVariable)> account = {};
  };
  // A key's hash beside its entry, so that most other keys are told apart without being looked at.
  struct Place {
    std::uint32_t hash = 0;
    std::uint32_t entry = kFree;
  };
  static constexpr std::uint32_t kFree = 0xFFFFFFFF;
  static constexpr std::uint32_t kRemoved = 0xFFFFFFFE;
  static constexpr std::size_t kNowhere = ~std::size_t{0};

  [[nodiscard]] std::size_t PlaceOf(const CString& key, std::uint32_t hash) const noexcept {
    if (m_places.empty())
      return kNowhere;
    const std::size_t mask = m_places.size() - 1;
    for (std::size_t place = hash & mask;; place = (place + 1) & mask) {
      const Place& candidate = m_places[place];
      if (candidate.entry == kFree)
        return kNowhere;
      if (candidate.hash == hash && candidate.entry != kRemoved && m_entries[candidate.entry]->key == key)
        return place;
    }
  }
  void MakeRoom();

  std::vector<Place, AccountedAllocator<Place>> m_places; // as many as a power of two
  std::size_t m_nUsed = 0;                                // places that are not free
  std::size_t m_nLive = 0;
  using Entries = std::vector<std::unique_ptr<Entry>, AccountedAllocator<std::unique_ptr<Entry>>>;
  Entries m_entries; // null once the key was removed
};

using MapTable = std::unordered_map<CString, std::unique_ptr<ScriptMap>>;

} // namespace brindle
