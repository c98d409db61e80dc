// RawValues: the representation of values, for compiled statements.
// Room: data. Used by: the fast route of the interpreter only.
// May touch: the insides of CVarBase, CBasicVariable and VariableSlot.
// Must not: change a value that somebody watches, or end an object: both run code of others.
// Invariant: what a member cannot do exactly as the value's own members would, it refuses.
#pragma once

#include "brindle/variable.h"
#include "data/variable_slot.h"
#include "platform/number_text.h"

namespace brindle {

struct RawValues {
  enum : std::uint16_t {
    kNumber = VT_R8,
    kInteger = VT_I4,
    kTruth = VT_BOOL,
    kText = VT_BSTR,
    kEmpty = VT_EMPTY,
    kObject = VT_DISPATCH,
    kUndefined = CVarBase::kSlotUndefined,
    kBoxed = CVarBase::kSlotBoxed
  };

  [[nodiscard]] static std::uint16_t Kind(const VariableSlot& slot) noexcept { return slot.m_kind; }
  [[nodiscard]] static double& Double(VariableSlot& slot) noexcept { return slot.m_double; }
  [[nodiscard]] static const CString& Text(const VariableSlot& slot) noexcept { return slot.m_text; }
  [[nodiscard]] static CString& Text(VariableSlot& slot) noexcept { return slot.m_text; }
  [[nodiscard]] static std::int32_t Integer(const VariableSlot& slot) noexcept { return slot.m_integer; }
  [[nodiscard]] static CBasicVariable& Box(const VariableSlot& slot) noexcept { return *slot.Contents(); }

  // Whether a slot can be overwritten without anybody noticing.
  [[nodiscard]] static bool IsPlain(std::uint16_t kind) noexcept {
    return kind == kNumber || kind == kInteger || kind == kEmpty || kind == kUndefined || kind == kTruth ||
           kind == kText;
  }
  static void DropText(VariableSlot& slot) noexcept {
    if (slot.m_kind == kText)
      slot.m_text.~CString();
  }
  // The slot is plain.
  static void PutNumber(VariableSlot& slot, double number) noexcept {
    DropText(slot);
    slot.m_kind = kNumber;
    slot.m_double = number;
  }
  static void PutInteger(VariableSlot& slot, std::int32_t number) noexcept {
    DropText(slot);
    slot.m_kind = kInteger;
    slot.m_integer = number;
  }
  static void PutText(VariableSlot& slot, CString&& text) noexcept {
    if (slot.m_kind == kText) {
      slot.m_text = std::move(text);
      return;
    }
    slot.m_kind = kText;
    ::new (&slot.m_text) CString(std::move(text));
  }
  static void PutText(VariableSlot& slot, const CString& text) noexcept {
    if (slot.m_kind == kText) {
      slot.m_text = text;
      return;
    }
    slot.m_kind = kText;
    ::new (&slot.m_text) CString(text);
  }
  static void PutUndefined(VariableSlot& slot) noexcept {
    DropText(slot);
    slot.m_kind = kUndefined;
  }
  static void PutEmpty(VariableSlot& slot) noexcept {
    DropText(slot);
    slot.m_kind = kEmpty;
  }
  // Copies a scalar that is neither object nor box into a plain slot; false when it is another.
  [[nodiscard]] static bool Copy(VariableSlot& to, const VariableSlot& from) noexcept { return CopyItem(to, from); }
  [[nodiscard]] static bool CopyItem(VariableSlot& to, const CVarBase& from) noexcept {
    switch (from.m_kind) {
    case kNumber: PutNumber(to, from.m_double); return true;
    case kInteger: PutInteger(to, from.m_integer); return true;
    case kText: PutText(to, CString(from.m_text)); return true; // a copy first: it may be the same slot's
    case kEmpty: PutEmpty(to); return true;
    case kTruth:
      DropText(to);
      to.m_kind = kTruth;
      to.m_integer = from.m_integer;
      return true;
    default: return false;
    }
  }
  // Moves a plain value on and leaves its place undefined.
  static void Move(VariableSlot& to, VariableSlot& from) noexcept {
    DropText(to);
    to.Take(from);
    from.m_kind = kUndefined;
  }

  // What the value of a numeric operand is: the left one decides the operation and has to be a number.
  [[nodiscard]] static bool LeftNumber(const CVarBase& item, double& number) noexcept {
    if (item.m_kind == kInteger)
      number = item.m_integer;
    else if (item.m_kind == kNumber)
      number = item.m_double;
    else if (item.m_kind == kTruth)
      number = item.m_integer != 0 ? 1.0 : 0.0;
    else
      return false;
    return true;
  }
  [[nodiscard]] static bool LeftNumber(const VariableSlot& slot, double& number) noexcept {
    return LeftNumber(static_cast<const CVarBase&>(slot), number);
  }
  [[nodiscard]] static bool RightNumber(const VariableSlot& slot, double& number) noexcept {
    if (slot.m_kind == kUndefined || slot.m_kind == kBoxed)
      return false;
    number = slot.GetDoubleValue();
    return true;
  }

  // An array's item, which becomes the current one; null outside the array, and for a scalar.
  [[nodiscard]] static CVarBase* ItemAt(const VariableSlot& slot, double index) noexcept {
    if (slot.m_kind != kBoxed)
      return nullptr;
    CBasicVariable& variable = *slot.Contents();
    const std::int32_t at = index >= 0 && index < 2e9 ? static_cast<std::int32_t>(index) : -1;
    if (at < 0 || at >= variable.m_items.Count()) {
      // Towards zero: what lies between -1 and 0 is item 0.
      if (!(index > -1 && index < 0))
        return nullptr;
      variable.m_nCurIndex = 0;
      return &variable.m_items.At(0);
    }
    variable.m_nCurIndex = at;
    return &variable.m_items.At(at);
  }
  // Writes an array's item, which becomes the current one. False, and unchanged, when the index is outside, when
  // somebody watches the variable, and for values that are no plain scalars.
  [[nodiscard]] static bool SetItem(const VariableSlot& array, double index, double number) noexcept {
    CVarBase* const item =
        array.m_kind == kBoxed && array.Contents()->m_pExtra == nullptr ? ItemAt(array, index) : nullptr;
    if (item == nullptr)
      return false;
    if (item->m_kind != kNumber) {
      if (!IsPlain(item->m_kind))
        return false;
      if (item->m_kind == kText)
        item->m_text.~CString();
      item->m_kind = kNumber;
    }
    item->m_double = number;
    return true;
  }
  [[nodiscard]] static bool SetItem(const VariableSlot& array, double index, const VariableSlot& value) noexcept {
    if (value.m_kind == kNumber)
      return SetItem(array, index, value.m_double);
    if (value.m_kind == kUndefined || !IsPlain(value.m_kind) || !SetItem(array, index, 0.0))
      return false;
    CVarBase& item = array.Contents()->m_items.At(array.Contents()->m_nCurIndex);
    item.m_kind = value.m_kind;
    if (value.m_kind == kText)
      ::new (&item.m_text) CString(value.m_text);
    else
      item.m_integer = value.m_integer;
    return true;
  }
  [[nodiscard]] static std::uint16_t Kind(const CVarBase& item) noexcept { return item.m_kind; }
  [[nodiscard]] static const CVarBase& Item(const VariableSlot& slot) noexcept { return slot; }
  // A slot's scalar as a value of its own, whatever it is.
  static void MoveOut(VariableSlot& slot, CBasicVariable& out) {
    if (slot.m_kind != kUndefined)
      slot.CopyTo(out);
    slot.Undefine();
  }
};

} // namespace brindle
