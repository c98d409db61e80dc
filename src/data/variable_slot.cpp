#include "data/variable_slot.h"

#include <memory>

namespace brindle {

// The end of an object may run code that looks this variable up, or moves it: it is gone before its value is.
void VariableSlot::Undefine() noexcept {
  const std::unique_ptr<CBasicVariable> contents(IsBoxed() ? Contents() : nullptr);
  CVarBase old;
  if (!IsBoxed() && IsDefined())
    old.operator=(std::move(static_cast<CVarBase&>(*this)));
  m_kind = kSlotUndefined;
}

void VariableSlot::DefineEmpty() noexcept {
  Undefine();
  m_kind = VT_EMPTY;
}

bool VariableSlot::HoldsObject() const noexcept {
  return IsBoxed() ? Contents()->HoldsObject() : m_kind == kObject;
}

void VariableSlot::ReleaseObject() {
  if (IsBoxed())
    Contents()->SetValue(static_cast<IDispatch*>(nullptr));
  else
    CVarBase::SetValue(static_cast<IDispatch*>(nullptr));
}

void VariableSlot::Redim(int size) {
  if (size != 1 || IsBoxed()) // a scalar in place has its one item
    Box()->Redim(size);
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
