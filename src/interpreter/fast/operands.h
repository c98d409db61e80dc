// The operands of compiled statements: numbers read from variables and items, and written to them.
// Room: interpreter. Used by: the machine's loop.
// May touch: slots and items.
// Must not: change anything when it refuses.
// Invariant: what is usual is a test and a move in the caller; all else is a call out of its way.
//
// Everything here belongs to the file that includes it: the compiler then knows which registers a call leaves alone.
#pragma once

#include "interpreter/state.h"

namespace brindle {

[[gnu::noinline, gnu::cold]] static inline bool SlowLeft(const VariableSlot& slot, double& number) noexcept {
  return RawValues::LeftNumber(slot, number);
}

[[gnu::noinline, gnu::cold]] static inline bool SlowRight(const VariableSlot& slot, double& number) noexcept {
  return RawValues::RightNumber(slot, number);
}

[[gnu::noinline, gnu::cold]] static inline bool SlowItem(const CVarBase& item, double& number) noexcept {
  return RawValues::LeftNumber(item, number);
}

[[gnu::noinline, gnu::cold]] static inline bool SlowStore(VariableSlot& slot, double number) noexcept {
  if (!RawValues::IsPlain(RawValues::Kind(slot)))
    return false;
  RawValues::PutNumber(slot, number);
  return true;
}

[[gnu::noinline]] static inline bool SlowCopyItem(VariableSlot& to, const CVarBase& item) noexcept {
  return RawValues::CopyItem(to, item);
}

// Into a plain slot.
[[gnu::always_inline]] static inline bool CopyItem(VariableSlot& to, const CVarBase& item) noexcept {
  if (RawValues::Kind(item) == RawValues::kNumber && RawValues::Kind(to) != RawValues::kText) [[likely]] {
    RawValues::PutNumber(to, RawValues::Double(item));
    return true;
  }
  return SlowCopyItem(to, item);
}

[[gnu::noinline]] static inline bool SlowSetItem(const VariableSlot& array, double index,
                                                 const VariableSlot& value) noexcept {
  return RawValues::SetItem(array, index, value);
}

[[gnu::always_inline]] static inline bool SetItem(const VariableSlot& array, double index,
                                                  const VariableSlot& value) noexcept {
  if (RawValues::Kind(value) == RawValues::kNumber) [[likely]]
    return RawValues::SetItem(array, index, RawValues::Double(value));
  return SlowSetItem(array, index, value);
}

// The test that stands before the fast part of a handler. The slow way gets the address of a number of its own, so
// that the handler's can stay in a register.
template <auto SlowWay, class Value>
[[gnu::always_inline]] static inline bool ReadNumber(const Value& value, double& number) noexcept {
  if (RawValues::Kind(value) == RawValues::kNumber) [[likely]] {
    number = RawValues::Double(value);
    return true;
  }
  if (RawValues::KindAgain(value) == RawValues::kInteger) {
    number = RawValues::Integer(value);
    return true;
  }
  double slow = 0;
  const bool isNumber = SlowWay(value, slow);
  number = slow;
  return isNumber;
}

[[gnu::always_inline]] static inline bool Left(const VariableSlot& slot, double& number) noexcept {
  return ReadNumber<SlowLeft>(slot, number);
}

[[gnu::always_inline]] static inline bool Right(const VariableSlot& slot, double& number) noexcept {
  return ReadNumber<SlowRight>(slot, number);
}

[[gnu::always_inline]] static inline bool ItemNumberOf(const CVarBase& item, double& number) noexcept {
  return ReadNumber<SlowItem>(item, number);
}

[[gnu::always_inline]] static inline bool Store(VariableSlot& slot, double number) noexcept {
  if (RawValues::Kind(slot) == RawValues::kNumber) [[likely]] {
    RawValues::Double(slot) = number;
    return true;
  }
  if (RawValues::KindAgain(slot) == RawValues::kUndefined) {
    RawValues::PutNumber(slot, number);
    return true;
  }
  return SlowStore(slot, number);
}

} // namespace brindle
