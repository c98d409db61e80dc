// Finding, creating, writing and removing script variables.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"

using namespace brindle;

void CBrindle::AddScopeLevelExtension(CString& name) const {
  name = VariableStore::ScopedKey(name, m_pState->m_nScopeLevel);
}

NameRef CBrindle::RefOf(const Token& token) {
  if (token.variable < 0)
    token.variable = m_pState->m_mapVariables.NumberOf(token.lowered);
  return {token.text, token.variable};
}

VariableSlot* CBrindle::FindSlot(const CString& name) {
  auto known = m_pState->m_mapVariables.KnownRef(name);
  // A name that carries a level may be a variable's key without ever having been read as a name.
  if (!known && name.Find(CString(u"__#")) > 0)
    known = m_pState->m_mapVariables.Ref(name);
  return known ? m_pState->m_mapVariables.Find(*known, m_pState->m_nScopeLevel) : nullptr;
}

CBasicVariable* CBrindle::FindVariable(CString& name) {
  VariableSlot* slot = FindSlot(name);
  if (slot == nullptr)
    return nullptr;
  name = GetVariableName(name);
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
  if (value.HoldsObject())
    store.NoteObjects();
  VariableSlot* slot = store.Find(name, m_pState->m_nScopeLevel);
  if (slot != nullptr) {
    if (index < 0 || index >= slot->GetNumItems())
      return Fail(kErrorIndexBounds);
    slot->SetCurIndex(index);
    slot->SetItem(value);
    return true;
  }
  if (index >= 1)
    return Fail(kErrorUndefinedArray);
  store.Make(name, m_pState->m_nScopeLevel, bGlobal).SetWhole(value);
  return true;
}

bool CBrindle::SetVariableSize(const CString& name, int size, bool bGlobal) {
  VariableStore& store = m_pState->m_mapVariables;
  const NameRef ref = store.Ref(name);
  VariableSlot* slot = store.Find(ref, m_pState->m_nScopeLevel);
  if (slot != nullptr) {
    if (size > 0)
      slot->Redim(size);
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
  if (value.HoldsObject())
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
  // Handlers of change events, and the objects' own ends, may remove variables: each step looks anew.
  VariableStore& store = m_pState->m_mapVariables;
  if (!store.MayHoldObjects())
    return;
  bool found = false;
  for (VariableStore::Place place; store.FindObject(level, place); ++place.inner) {
    found = true;
    VariableSlot* slot = store.At(place);
    const int current = slot == nullptr ? 0 : slot->GetCurIndex();
    for (int i = 0; slot != nullptr && i < slot->GetNumItems(); ++i) {
      slot->SetCurIndex(i);
      if (slot->CurrentIsObject())
        slot->ReleaseObject();
      slot = store.At(place);
    }
    if (slot != nullptr)
      slot->SetCurIndex(current);
  }
  constexpr int shallowest = 2; // no search ever begins above a procedure of the main program
  if (!found && level <= shallowest)
    store.NoteNoObjects();
}

bool CBrindle::ExecGetVarStats(CBasicVariable& result, Arguments&, FUNCTION_TYPE) {
  constexpr int kPredefined = 3; // Nothing, True, False
  result.AddItem(m_pState->m_mapVariables.Count() - kPredefined);
  result.AddItem(m_pState->m_arrTemporaries.GetSize() + static_cast<int>(m_pState->fast.RecordedNames()));
  return true;
}

bool CBrindle::ExecGarbageCollection(CBasicVariable& result, Arguments&, FUNCTION_TYPE) {
  // Only the level right above the current one: what procedures called from here have left behind.
  result.SetValue(m_pState->m_mapVariables.RemoveLevel(m_pState->m_nScopeLevel + 1));
  return true;
}
