// RawValues: the representation of values, for compiled statements.
// Room: data. Used by: the fast route of the interpreter only.
// May touch: the insides of CVarBase, CBasicVariable and VariableSlot.
// Must not: change a value that somebody watches, or end an object: both run code of others.
// Invariant: what a member cannot do exactly as the value's own members would, it refuses.
#pragma once

#include "brindle/variable.h"
#include "data/variable_slot.h"
#include "platform/number_text.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace brindle {

struct RawValues {
  enum : std::uint16_t {
    kNumber = VT_R8,
    kInteger = VT_I4,
    kTruth = VT_BOOL,
    kText = VT_BSTR,
    kEmpty = VT_EMPTY,
    kObject = CVarBase::kObject,
    kUndefined = CVarBase::kSlotUndefined,
    kBoxed = CVarBase::kSlotBoxed
  };

  [[nodiscard]] static std::uint16_t Kind(const VariableSlot& slot) noexcept { return slot.m_kind; }
  // The kind, read once more: the first reading is then a single comparison in memory.
  [[nodiscard]] static std::uint16_t KindAgain(const CVarBase& item) noexcept {
    return *const_cast<const volatile std::uint16_t*>(&item.m_kind);
  }
  [[nodiscard]] static std::uint16_t KindAgain(const VariableSlot& slot) noexcept {
    return KindAgain(static_cast<const CVarBase&>(slot));
  }
  [[nodiscard]] static double& Double(VariableSlot& slot) noexcept { return slot.m_double; }
  [[nodiscard]] static double Double(const VariableSlot& slot) noexcept { return slot.m_double; }
  [[nodiscard]] static double Double(const CVarBase& item) noexcept { return item.m_double; }
  [[nodiscard]] static const CString& Text(const VariableSlot& slot) noexcept { return slot.m_text; }
  [[nodiscard]] static CString& Text(VariableSlot& slot) noexcept { return slot.m_text; }
  [[nodiscard]] static std::int32_t Integer(const VariableSlot& slot) noexcept { return slot.m_integer; }
  [[nodiscard]] static std::int32_t Integer(const CVarBase& item) noexcept { return item.m_integer; }
  [[nodiscard]] static CBasicVariable& Box(const VariableSlot& slot) noexcept { return *slot.Contents(); }

  // Whether a slot can be overwritten without anybody noticing.
  [[nodiscard]] static bool IsPlain(std::uint16_t kind) noexcept { return kind < kObject; }
  // The same question for several slots at once.
  class KindsOf {
  public:
    explicit KindsOf(const VariableSlot& slot) noexcept : m_kinds(slot.m_kind) {}
    void Add(const VariableSlot& slot) noexcept { m_kinds |= slot.m_kind; }
    [[nodiscard]] bool ArePlain() const noexcept { return m_kinds < kLeastOther; }

  private:
    // The plain kinds have no bit of this, the others all.
    static constexpr unsigned kLeastOther = 0x8000;
    static_assert(kObject >= kLeastOther && kText < kLeastOther);
    unsigned m_kinds;
  };
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
  static void PutTruth(VariableSlot& slot, bool truth) noexcept {
    DropText(slot);
    slot.m_kind = kTruth;
    slot.m_integer = truth ? 0xFFFF : 0;
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
  // Copies a defined value into a plain slot, when both are such.
  [[nodiscard]] static bool CopyToPlain(VariableSlot& to, const VariableSlot& from) noexcept {
    if (from.m_kind == kNumber && to.m_kind != kText && IsPlain(to.m_kind)) [[likely]] {
      to.m_kind = kNumber;
      to.m_double = from.m_double;
      return true;
    }
    return IsPlain(to.m_kind) && from.m_kind != kUndefined && CopyItem(to, from);
  }
  // Moves a plain value on and leaves its place undefined.
  static void Move(VariableSlot& to, VariableSlot& from) noexcept {
    DropText(to);
    if (from.m_kind == kNumber) [[likely]] {
      to.m_kind = kNumber;
      to.m_double = from.m_double;
      from.m_kind = kUndefined;
      return;
    }
    if (from.m_kind == kText) {
      to.m_kind = kText;
      ::new (&to.m_text) CString(std::move(from.m_text));
      from.m_kind = kUndefined; // a text that was moved from holds nothing
      return;
    }
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
    // Whoever takes an object's number has to let go of the object as well.
    if (slot.m_kind == kUndefined || slot.m_kind == kBoxed || slot.m_kind == kObject)
      return false;
    number = slot.GetDoubleValue();
    return true;
  }

  // Towards zero; what does not fit, and not-a-number, gives a negative number.
  [[nodiscard]] static std::int32_t TruncateIndex(double index) noexcept {
#if defined(__SSE2__)
    return _mm_cvttsd_si32(_mm_set_sd(index));
#else
    return index > -1 && index < 2147483647.0 ? static_cast<std::int32_t>(index) : -1;
#endif
  }

  // An array's item, which becomes the current one; null outside the array, and for a scalar.
  [[nodiscard]] static CVarBase* ItemAt(const VariableSlot& slot, double index) noexcept {
    if (slot.m_kind != kBoxed) [[unlikely]]
      return nullptr;
    CBasicVariable::ItemList& items = static_cast<CBasicVariable*>(slot.m_pBox)->m_items;
    const std::int32_t at = TruncateIndex(index);
    if (static_cast<std::uint32_t>(at) >= items.m_nDirect) [[unlikely]] // a negative index is a large one here
      return ItemOfWatched(items, at);
    items.m_nCurrent = at;
    CVarBase* const item = items.m_pHeap + at;
    if (item == nullptr)
      __builtin_unreachable(); // so that the caller's test for null is the one above
    return item;
  }
  // The same where the items may be read in place, but not written.
  [[nodiscard, gnu::noinline]] static CVarBase* ItemOfWatched(CBasicVariable::ItemList& items,
                                                              std::int32_t at) noexcept {
    if (at < 0 || at >= items.m_nCount || items.m_nCapacity == 1)
      return nullptr;
    items.m_nCurrent = at;
    return items.m_pHeap + at;
  }
  // Writes an array's item, which becomes the current one. False, and unchanged, when the index is outside, when
  // somebody watches the variable, and for values that are no plain scalars.
  [[nodiscard]] static bool SetItem(const VariableSlot& array, double index, double number) noexcept {
    if (array.m_kind != kBoxed) [[unlikely]]
      return false;
    CBasicVariable::ItemList& items = static_cast<CBasicVariable*>(array.m_pBox)->m_items;
    const std::int32_t at = TruncateIndex(index);
    if (static_cast<std::uint32_t>(at) >= items.m_nDirect) [[unlikely]]
      return false;
    items.m_nCurrent = at;
    CVarBase* const item = items.m_pHeap + at;
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
    CVarBase& item = array.Contents()->m_items.At(array.Contents()->m_items.m_nCurrent);
    item.m_kind = value.m_kind;
    if (value.m_kind == kText)
      ::new (&item.m_text) CString(value.m_text);
    else
      item.m_integer = value.m_integer;
    return true;
  }
  [[nodiscard]] static std::uint16_t Kind(const CVarBase& item) noexcept {
    return item.m_kind;
  }
  [[nodiscard]] static const CVarBase& Item(const VariableSlot& slot) noexcept {
    return slot;
  }
  // A slot's scalar as a value of its own, whatever it is.
  static void MoveOut(VariableSlot& slot, CBasicVariable& out) {
    if (IsPlain(slot.m_kind) && out.m_items.m_nCapacity == 1 && out.m_items.m_first.m_kind == kEmpty) {
      CVarBase& item = out.m_items.m_first;
      if (slot.m_kind == kText) {
        ::new (&item.m_text) CString(std::move(slot.m_text));
        item.m_kind = kText;
      } else if (slot.m_kind != kUndefined) {
        item.Take(slot);
      }
      slot.m_kind = kUndefined;
      return;
    }
    if (slot.m_kind != kUndefined)
      slot.CopyTo(out);
    slot.Undefine();
  }
  // A value of any kind into a plain slot, in a box of its own unless it is a scalar: in `spare`, if there is one.
  static void MoveBoxFrom(VariableSlot& to, CBasicVariable&& from, std::unique_ptr<CBasicVariable>& spare) {
    if (!from.HasMoreThanOneItem()) {
      to.SetWhole(from);
      return;
    }
    std::unique_ptr<CBasicVariable> box = std::move(spare);
    if (box != nullptr && from.m_pExtra == nullptr) {
      box->m_items = std::move(from.m_items);
      box->m_userData = from.m_userData;
    } else {
      box = std::make_unique<CBasicVariable>(std::move(from));
    }
    DropText(to);
    to.m_pBox = box.release();
    to.m_kind = kBoxed;
  }
  // The whole variable out of a temporary's box into a variable that nobody watches; false, and unchanged, for any
  // other and for one that holds objects, whose ends run code of their own.
  [[nodiscard]] static bool MoveBox(VariableSlot& to, VariableSlot& from,
                                    std::unique_ptr<CBasicVariable>& spare) noexcept {
    CBasicVariable& source = *from.Contents();
    if (source.m_pExtra != nullptr || source.HoldsObject())
      return false;
    if (to.m_kind == kBoxed) {
      CBasicVariable& target = *to.Contents();
      if (target.m_pExtra != nullptr || target.HoldsObject())
        return false;
      // In place: somebody may hold the variable's address.
      target.m_items = std::move(source.m_items);
      target.m_userData = source.m_userData;
      spare.reset(&source);
      from.m_kind = kUndefined;
      return true;
    }
    if (!IsPlain(to.m_kind))
      return false;
    DropText(to);
    to.m_pBox = from.m_pBox;
    to.m_kind = kBoxed;
    from.m_kind = kUndefined;
    return true;
  }
  // Makes an argument not set again; false when that is not done at once.
  [[nodiscard]] static bool Clear(CBasicVariable& variable) noexcept {
    if (variable.m_items.m_nCapacity != 1 || variable.m_pExtra != nullptr || variable.m_userData != 0 ||
        !IsPlain(variable.m_items.m_first.m_kind))
      return false;
    if (variable.m_items.m_first.m_kind == kText)
      variable.m_items.m_first.m_text.~CString();
    variable.m_items.m_first.m_kind = kEmpty;
    variable.m_items.m_nCurrent = 0;
    return true;
  }
  // A plain scalar out of a value into a plain slot; false when it is more than that.
  [[nodiscard]] static bool MoveItemFrom(VariableSlot& to, CBasicVariable& from) noexcept {
    if (from.m_items.m_nCapacity != 1 || from.m_pExtra != nullptr || from.m_userData != 0 || !IsPlain(to.m_kind) ||
        !IsPlain(from.m_items.m_first.m_kind))
      return false;
    DropText(to);
    to.m_kind = kUndefined;
    to.Take(from.m_items.m_first);
    return true;
  }
};

} // namespace brindle
