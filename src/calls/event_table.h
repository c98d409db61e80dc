// The events of one interpreter and the procedures attached to each.
// Room: calls. Used by: EventAdd, EventRemove, EventFind, EventThrow.
// May touch: nothing.
// Invariant: names are in lower case; a handler stands at most once in an event's list, in order of attachment.
#pragma once

#include "brindle/collections.h"

#include <memory>
#include <unordered_map>

namespace brindle {

class EventTable {
public:
  [[nodiscard]] CStringArray* Find(const CString& lowered) const {
    const auto event = m_events.find(lowered);
    return event == m_events.end() ? nullptr : event->second.get();
  }
  [[nodiscard]] CStringArray& Make(const CString& lowered) {
    std::unique_ptr<CStringArray>& handlers = m_events[lowered];
    if (handlers == nullptr)
      handlers = std::make_unique<CStringArray>();
    return *handlers;
  }
  void Clear() noexcept { m_events.clear(); }

private:
  std::unordered_map<CString, std::unique_ptr<CStringArray>> m_events;
};

} // namespace brindle
