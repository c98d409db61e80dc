// The live interpreters of the process.
#include "brindle/interpreter.h"
#include "platform/collections.h"

#include <exception>
#include <vector>

int CBrindle::m_nNumberOfCopies = 0;
std::atomic<std::uint64_t> CBrindle::m_nHostFunctionChanges = 0;
CPtrList CBrindle::m_List;
CCriticalSection CBrindle::m_Door;

// The lock objects mark what the registry's guard covers. None takes it: a handler may come back here from
// within a broadcast, and everything runs on one thread.

void CBrindle::AddToNotifyList() {
  const CSingleLock guard(m_Door, false);
  m_List.AddTail(this);
}

void CBrindle::RemoveFromNotifyList() {
  const CSingleLock guard(m_Door, false);
  m_List.RemoveLast(this);
}

bool CBrindle::IsValidInterpreter(const CBrindle* interpreter) {
  const CSingleLock guard(m_Door, false);
  return interpreter != nullptr && m_List.Contains(interpreter);
}

namespace {

// A handler may create and destroy interpreters: go by who was there, and ask whether it still is. One whose
// run is aborted by its handler keeps the event from nobody.
template <class Throw> void ForEachLive(const CPtrList& list, Throw throwAt) {
  const std::vector<void*> members(list.begin(), list.end());
  std::exception_ptr first;
  for (void* member : members) {
    auto* interpreter = static_cast<CBrindle*>(member);
    if (!CBrindle::IsValidInterpreter(interpreter))
      continue;
    try {
      throwAt(*interpreter);
    } catch (...) {
      if (first == nullptr)
        first = std::current_exception();
    }
  }
  if (first != nullptr)
    std::rethrow_exception(first);
}

} // namespace

void CBrindle::SendEvent(const CString& event, CBasicVariableArray& arguments) {
  const CSingleLock guard(m_Door, false);
  ForEachLive(m_List, [&](CBrindle& interpreter) { interpreter.EventThrow(event, arguments); });
}

void CBrindle::SendEvent(const CString& event, CBasicVariable* value) {
  const CSingleLock guard(m_Door, false);
  ForEachLive(m_List, [&](CBrindle& interpreter) { interpreter.EventThrow(event, value); });
}
