// The operations of compiled statements, as one table: the machine has a handler for each.
// Room: interpreter. Used by: the compiler and the machine of the fast route.
// May touch: nothing; a table.
// Invariant: an operation is one cell; those that need a pointer or a number have data cells behind it.
//
// Operands: S is a slot of the frame whose value is tested, N a temporary that always holds a number, K a number in
// the data cell. The left operand decides what an operation does, so it must be a number (or text) itself; the right
// one is converted. Arithmetic ends in a temporary (...N) or in a variable (...S), which AddTo and SubtractFrom also
// have as their left operand. Branches carry the entry to go to in their data cell; those named If jump when the
// condition is false, those named While when it is true.
#pragma once

#include <cstdint>

// clang-format off
#define BRINDLE_FAST_PAIRS(X, NAME) \
  X(NAME##_SS) X(NAME##_SN) X(NAME##_SK) X(NAME##_NS) X(NAME##_NN) X(NAME##_NK) X(NAME##_KS) X(NAME##_KN)
#define BRINDLE_FAST_ARITHMETIC(X, NAME) BRINDLE_FAST_PAIRS(X, NAME##N) BRINDLE_FAST_PAIRS(X, NAME##S)

#define BRINDLE_FAST_OPERATIONS(X) \
  X(Exit) X(Jump) X(Goto) X(Nothing) X(Probe) X(Count) X(Return) \
  BRINDLE_FAST_ARITHMETIC(X, Add) BRINDLE_FAST_ARITHMETIC(X, Subtract) \
  BRINDLE_FAST_ARITHMETIC(X, Multiply) BRINDLE_FAST_ARITHMETIC(X, Divide) \
  X(AddTo_S) X(AddTo_N) X(AddTo_K) X(SubtractFrom_S) X(SubtractFrom_N) X(SubtractFrom_K) \
  X(Power) X(Remainder) X(Negate) X(LoadLeft) X(LoadRight) X(LoadConstant) X(LoadGlobal) \
  X(StoreNumber) X(StoreInteger) X(StoreConstant) X(StoreText) X(Copy) X(CopyFromGlobal) X(MoveToGlobal) X(Move) \
  X(ItemNumber) X(GlobalItemNumber) X(ItemValue) X(GlobalItemValue) \
  X(SetItem) X(SetItemConstant) X(SetGlobalItem) \
  BRINDLE_FAST_PAIRS(X, IfEqual) BRINDLE_FAST_PAIRS(X, IfNotEqual) BRINDLE_FAST_PAIRS(X, IfLess) \
  BRINDLE_FAST_PAIRS(X, IfLessEqual) BRINDLE_FAST_PAIRS(X, IfGreater) BRINDLE_FAST_PAIRS(X, IfGreaterEqual) \
  BRINDLE_FAST_PAIRS(X, WhileEqual) BRINDLE_FAST_PAIRS(X, WhileNotEqual) BRINDLE_FAST_PAIRS(X, WhileLess) \
  BRINDLE_FAST_PAIRS(X, WhileLessEqual) BRINDLE_FAST_PAIRS(X, WhileGreater) BRINDLE_FAST_PAIRS(X, WhileGreaterEqual) \
  X(IfAbout) X(IfText) X(IfTextIs) X(For) X(Next) X(PushLoop) X(Loop) X(LoopAgain) X(PopLoop) \
  X(Check) X(Join) X(Function1) X(ToInteger) X(Extreme) X(Length) X(Part) X(Search) X(Format) X(ValueOf) \
  X(MapGet) X(MapHas) X(MapSet) X(Call) X(BuiltIn)
// clang-format on

namespace brindle {

enum class FastOperation : std::uint32_t {
#define BRINDLE_FAST_NAME(NAME) NAME,
  BRINDLE_FAST_OPERATIONS(BRINDLE_FAST_NAME)
#undef BRINDLE_FAST_NAME
};

} // namespace brindle
