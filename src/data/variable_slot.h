// VariableSlot: one variable in the store. A plain scalar lives in place; an array, a watched variable or
// one that somebody holds a pointer to lives in a box.
// Room: data. Used by: VariableStore and the members of CBrindle that read and write variables.
// May touch: the value classes.
// Must not: throw change events for a scalar in place: nothing can watch it.
// Invariant: undefined, a scalar without text buffer, or a box that this slot owns.
#pragma once

#include "brindle/variable.h"

namespace brindle {

class VariableSlot : private CVarBase {
public:
  VariableSlot() noexcept { m_kind = kSlotUndefined; }
  VariableSlot(VariableSlot&& other) noexcept {
    Take(other);
    other.m_kind = kSlotUndefined;
  }
  VariableSlot& operator=(VariableSlot&&) = delete;
  // Into a slot that is undefined.
  void MoveFrom(VariableSlot& other) noexcept {
    Take(other);
    other.m_kind = kSlotUndefined;
  }
  ~VariableSlot() { Undefine(); }

  [[nodiscard]] bool IsDefined() const noexcept { return m_kind != kSlotUndefined; }
  void Undefine() noexcept;
  // A scalar that is not set.
  void DefineEmpty() noexcept;

  [[nodiscard]] int GetNumItems() const noexcept { return IsBoxed() ? Contents()->GetNumItems() : 1; }
  [[nodiscard]] const CVarBase& CurrentItem() const noexcept { return IsBoxed() ? Contents()->GetItem() : *this; }
  void SetCurIndex(int index) noexcept {
    if (IsBoxed())
      Contents()->SetCurIndex(index);
  }
  [[nodiscard]] bool Increment() { return IsBoxed() ? Contents()->Increment() : CVarBase::Increment(); }
  [[nodiscard]] bool HoldsObject() const noexcept;
  [[nodiscard]] bool CurrentIsObject() const noexcept { return CurrentItem().GetType() == BVT_OBJECT; }
  // A null object into the current item.
  void ReleaseObject();
  [[nodiscard]] int GetCurIndex() const noexcept { return IsBoxed() ? Contents()->GetCurIndex() : 0; }
  void Redim(int size);

  // The whole variable / its current item, as a value of its own.
  void CopyTo(CBasicVariable& out) const;
  void CopyItemTo(CBasicVariable& out) const;
  // A whole value; an undefined slot becomes defined by it.
  void SetWhole(const CBasicVariable& value);
  // The value's current item into this variable's current item.
  void SetItem(const CBasicVariable& value);
  void SetNumber(double value);

  // The variable as an object of its own; its address is good until the variable is undefined.
  [[nodiscard]] CBasicVariable* Box();

private:
  friend struct RawValues;

  [[nodiscard]] bool IsBoxed() const noexcept { return m_kind == kSlotBoxed; }
  [[nodiscard]] CBasicVariable* Contents() const noexcept { return static_cast<CBasicVariable*>(m_pBox); }
};

} // namespace brindle
