// Finding, creating, writing and removing script variables.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"

using namespace brindle;

namespace {

bool HoldsObject(const CBasicVariable& value) {
  if (!value.IsArray())
    return value.GetType() == BVT_OBJECT;
  CBasicVariable probe(value);
  for (int i = 0; i < probe.GetNumItems(); ++i) {
    probe.SetCurIndex(i);
    if (probe.GetType() == BVT_OBJECT)
      return true;
  }
  return false;
}

} // namespace

void CBrindle::AddScopeLevelExtension(CString& name) const {
  name = VariableStore::ScopedKey(name, m_pState->m_nScopeLevel);
}

NameRef CBrindle::RefOf(const Token& token) {
  if (token.variable < 0)
    token.variable = m_pState->m_mapVariables.NumberOf(token.lowered);
  return {token.text, token.variable};
}

VariableSlot* CBrindle::FindSlot(const CString& name) {
  const auto known = m_pState->m_mapVariables.KnownRef(name);
  return known ? m_pState->m_mapVariables.Find(*known, m_pState->m_nScopeLevel) : nullptr;
}

CBasicVariable* CBrindle::FindVariable(CString& name) {
  VariableSlot* slot = FindSlot(name);
  if (slot == nullptr)
    return nullptr;
  name = GetVariableName(name);
  m_pState->m_mapVariables.NoteObjects(); // whoever gets the pointer may store one
  return slot->Box();
}

CString CBrindle::GetVariableName(const CString& name) {
  const auto known = m_pState->m_mapVariables.KnownRef(name);
  return known ? m_pState->m_mapVariables.KeyOf(*known, m_pState->m_nScopeLevel)
               : VariableStore::ScopedKey(name, m_pState->m_nScopeLevel);
}

bool CBrindle::SetVariable(const CString& name, const CBasicVariable& value, int index) {
  SetVariableDirect(name, value, index, false);
  return true; // Deliberate: a failure has been reported
}

bool CBrindle::SetVariable(const CString& name, double value, int index) {
  return SetVariable(name, CBasicVariable(value), index);
}

bool CBrindle::SetVariable(const CString& name, const CString& value, int index) {
  return SetVariable(name, CBasicVariable(value), index);
}

bool CBrindle::SetVariableDirect(const CString& name, const CBasicVariable& value, int index, bool bGlobal) {
  return StoreItem(m_pState->m_mapVariables.Ref(name), value, index, bGlobal);
}

bool CBrindle::StoreItem(const NameRef& name, const CBasicVariable& value, int index, bool bGlobal) {
  VariableStore& store = m_pState->m_mapVariables;
  if (HoldsObject(value))
    store.NoteObjects();
  VariableSlot* slot = store.Find(name, m_pState->m_nScopeLevel);
  if (slot != nullptr) {
    if (index < 0 || index >= slot->GetNumItems()) {
      ReportError(kErrorIndexBounds);
      return false;
    }
    slot->SetCurIndex(index);
    slot->SetItem(value);
    return true;
  }
  if (index >= 1) {
    ReportError(kErrorUndefinedArray);
    return false;
  }
  store.Make(name, m_pState->m_nScopeLevel, bGlobal).SetWhole(value);
  return true;
}

bool CBrindle::SetVariableSize(const CString& name, int size, bool bGlobal) {
  VariableStore& store = m_pState->m_mapVariables;
  const NameRef ref = store.Ref(name);
  VariableSlot* slot = store.Find(ref, m_pState->m_nScopeLevel);
  if (slot != nullptr) {
    if (size > 0)
      slot->Box()->Redim(size);
    return true;
  }
  CBasicVariable created;
  created.SetArraySize(size);
  store.Make(ref, m_pState->m_nScopeLevel, bGlobal).SetWhole(created);
  return true;
}

bool CBrindle::CopyVariable(const CString& name, const CBasicVariable& value, bool bGlobal) {
  return StoreWhole(m_pState->m_mapVariables.Ref(name), value, bGlobal);
}

bool CBrindle::StoreWhole(const NameRef& name, const CBasicVariable& value, bool bGlobal) {
  VariableStore& store = m_pState->m_mapVariables;
  if (HoldsObject(value))
    store.NoteObjects();
  VariableSlot* slot = store.Find(name, m_pState->m_nScopeLevel);
  if (slot == nullptr)
    slot = &store.Make(name, m_pState->m_nScopeLevel, bGlobal);
  slot->SetWhole(value);
  return true;
}

int CBrindle::GetVariableSize(const CString& name) {
  const VariableSlot* slot = FindSlot(name);
  if (slot == nullptr)
    return 0;
  const int count = slot->GetNumItems();
  return count == 1 && !slot->CurrentItem().IsSet() ? 0 : count;
}

bool CBrindle::VariableUndefine(const CString& name) {
  const auto known = m_pState->m_mapVariables.KnownRef(name);
  return known && m_pState->m_mapVariables.Undefine(*known, m_pState->m_nScopeLevel);
}

bool CBrindle::VariablesFree() {
  m_pState->m_mapVariables.Clear();
  return true;
}

void CBrindle::ObjectVariablesFree(int level) {
  // Boxed first, so that a handler of a change event cannot move what is still to be visited.
  std::vector<CBasicVariable*> variables;
  for (VariableSlot* slot : m_pState->m_mapVariables.SlotsWithObjects(level))
    variables.push_back(slot->Box());
  for (CBasicVariable* variable : variables) {
    const int current = variable->GetCurIndex();
    for (int i = 0; i < variable->GetNumItems(); ++i) {
      variable->SetCurIndex(i);
      if (variable->GetType() == BVT_OBJECT)
        variable->SetValue(static_cast<IDispatch*>(nullptr));
    }
    variable->SetCurIndex(current);
  }
}

bool CBrindle::ExecGetVarStats(CBasicVariable& result, Arguments&, FUNCTION_TYPE) {
  constexpr int kPredefined = 3; // Nothing, True, False
  result.AddItem(m_pState->m_mapVariables.Count() - kPredefined);
  result.AddItem(m_pState->m_arrTemporaries.GetSize());
  return true;
}

bool CBrindle::ExecGarbageCollection(CBasicVariable& result, Arguments&, FUNCTION_TYPE) {
  // Only the level right above the current one: what procedures called from here have left behind.
  result.SetValue(m_pState->m_mapVariables.RemoveLevel(m_pState->m_nScopeLevel + 1));
  return true;
}
