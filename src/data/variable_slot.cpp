#include "data/variable_slot.h"

#include <memory>

namespace brindle {

void VariableSlot::Undefine() noexcept {
  if (IsBoxed()) {
    const std::unique_ptr<CBasicVariable> contents(Contents());
    m_kind = kSlotUndefined; // first: the end of an object may run code that looks this variable up
    return;
  }
  Clear();
  m_kind = kSlotUndefined;
}

void VariableSlot::DefineEmpty() noexcept {
  Undefine();
  m_kind = VT_EMPTY;
}

bool VariableSlot::HoldsObject() const noexcept {
  // A box can be written through its pointer, so it may hold one at any time.
  return IsBoxed() || m_kind == VT_DISPATCH;
}

void VariableSlot::CopyTo(CBasicVariable& out) const {
  if (IsBoxed())
    out.Set(*Contents());
  else
    out.Set(static_cast<const CVarBase&>(*this));
}

void VariableSlot::CopyItemTo(CBasicVariable& out) const {
  out.Set(CurrentItem());
}

void VariableSlot::SetWhole(const CBasicVariable& value) {
  if (IsBoxed()) {
    Contents()->Set(value);
  } else if (value.HasMoreThanOneItem()) {
    auto contents = std::make_unique<CBasicVariable>(value);
    Undefine();
    m_pBox = contents.release();
    m_kind = kSlotBoxed;
  } else {
    if (m_kind == kSlotUndefined)
      m_kind = VT_EMPTY;
    CopyValue(value.GetItem());
  }
}

void VariableSlot::SetItem(const CBasicVariable& value) {
  if (IsBoxed())
    Contents()->SetValue(value);
  else
    CopyValue(value.GetItem());
}

void VariableSlot::SetNumber(double value) {
  if (IsBoxed())
    Contents()->SetValue(value);
  else
    CVarBase::SetValue(value);
}

CBasicVariable* VariableSlot::Box() {
  if (!IsBoxed()) {
    auto contents = std::make_unique<CBasicVariable>();
    CopyTo(*contents);
    Clear();
    m_pBox = contents.release();
    m_kind = kSlotBoxed;
  }
  return Contents();
}

} // namespace brindle
