// Events: attaching handlers, throwing, and the change events of variables.
#include "brindle/interpreter.h"
#include "interpreter/state.h"

#include <functional>
#include <unordered_set>

using namespace brindle;

namespace {

CString Lowered(CString name) {
  return name.MakeLower();
}

int IndexOf(const CStringArray& handlers, const CString& lowered) {
  for (int i = 0; i < handlers.GetSize(); ++i)
    if (handlers[i] == lowered)
      return i;
  return -1;
}

} // namespace

CStringArray* CBrindle::EventFind(const CString& event) {
  return m_pState->events.Find(Lowered(event));
}

bool CBrindle::EventAdd(const CString& event, const CString& handler) {
  CStringArray& handlers = m_pState->events.Make(Lowered(event));
  const CString lowered = Lowered(handler);
  if (IndexOf(handlers, lowered) < 0)
    handlers.Add(lowered);
  return true;
}

bool CBrindle::EventRemove(const CString& event, const CString& handler) {
  CStringArray* handlers = EventFind(event);
  if (handlers == nullptr)
    return false;
  const int index = IndexOf(*handlers, Lowered(handler));
  if (index >= 0)
    handlers->RemoveAt(index);
  return true;
}

bool CBrindle::EventRemove(const CString& event) {
  CStringArray* handlers = EventFind(event);
  if (handlers == nullptr)
    return false;
  handlers->RemoveAll(); // the list stays: a throw in progress may be walking it
  return true;
}

bool CBrindle::EventsFree() {
  m_pState->events.Clear();
  return true;
}

// The list is live: what a handler attaches is called as well, what it removes is not, and the others keep their
// turn. Each is called once, so that one which attaches itself anew does not go round for ever.
void CBrindle::CallHandlers(CStringArray& handlers, Arguments& args) {
  const int recordedNames = m_pState->m_arrTemporaries.GetSize();
  std::unordered_set<CString> called;
  for (int i = 0; i < handlers.GetSize();) {
    const CString handler = handlers[i];
    if (!called.insert(handler).second) {
      ++i;
      continue;
    }
    CBasicVariable dropped;
    m_pState->callKind = CCallFrame::Kind::Handler;
    ExecUserFunction(handler, dropped, args, true);
    m_pState->callKind = CCallFrame::Kind::Procedure; // a handler may be no procedure
    m_pState->m_arrTemporaries.SetSize(recordedNames);
    i = 0; // the list may be another one now
  }
}

// The names of the arguments that are variables have been recorded.
bool CBrindle::RaiseEvent(const CString& event, Arguments& arguments) {
  CStringArray* handlers = EventFind(event);
  if (handlers != nullptr)
    CallHandlers(*handlers, arguments);
  return handlers != nullptr;
}

// Calls the body inside a run; one of its own when nothing runs.
template <class Body> void CBrindle::RunInside(Body body) {
  if (m_pState->runDepth > 0)
    body();
  else
    RunAlone(std::ref(body)); // a reference, for which no memory is needed
}

bool CBrindle::EventThrow(const CString& event, Arguments& arguments) {
  // None of these is a variable of the script: what a declared function writes back has nowhere to go.
  struct NoNames {
    NoNames(CStringArray& recorded, int count) : names(recorded), before(recorded.GetSize()) {
      names.SetSize(before + count);
    }
    NoNames(const NoNames&) = delete;
    NoNames& operator=(const NoNames&) = delete;
    ~NoNames() { names.SetSize(before); }
    CStringArray& names;
    int before;
  };
  bool known = false;
  RunInside([&] {
    CStringArray* handlers = EventFind(event);
    known = handlers != nullptr;
    if (!known)
      return;
    const NoNames scope(m_pState->m_arrTemporaries, arguments.GetSize());
    CallHandlers(*handlers, arguments);
  });
  return known;
}

bool CBrindle::EventThrow(const CString& event, CBasicVariable* value) {
  bool known = false;
  if (value != nullptr)
    RunInside([&] {
      known = EventFind(event) != nullptr;
      if (!known)
        return;
      Arguments arguments;
      arguments.Add(*value);
      EventThrow(event, arguments);
    });
  return known;
}

// Here, not beside the value classes: they know no interpreter.
void CBasicVariable::ThrowChange() {
  // The variable may end while its handlers run, so nothing of it is touched afterwards.
  CBrindle* interpreter = m_pExtra->pEventInterpreter;
  const CString event = m_pExtra->strEventName;
  interpreter->EventThrow(event, this);
}
