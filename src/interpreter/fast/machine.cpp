// The machine's loop: one function that holds a handler for every operation, so that the compiler can keep its state
// in registers. Long by nature: the table of operations decides its length. Everything rare stands in
// machine_support.cpp.
#include "interpreter/fast/machine.h"

#include "interpreter/arithmetic.h"
#include "interpreter/fast/operands.h"
#include "interpreter/state.h"

#include <cmath>

#pragma GCC diagnostic ignored "-Wpedantic" // addresses of labels

namespace brindle {

const std::int32_t* FastMachine::Handlers() {
  static const std::int32_t* const handlers = [] {
    const std::int32_t* table = nullptr;
    Execute(nullptr, nullptr, &table);
    return table;
  }();
  return handlers;
}

void FastMachine::Run(const FastEntry& entry) {
  Execute(this, entry.code, nullptr);
  m_isDone = true;
}

// Whether the call can be made here: all its variables can be overwritten without anybody noticing.
[[gnu::always_inline]] inline bool FastMachine::CanEnter(const FastCallee& callee, const VariableSlot* inner,
                                                         const VariableSlot* arguments) {
  RawValues::KindsOf kinds(SlotAt(inner, callee.result));
  for (std::size_t i = 0; i < callee.count; ++i) {
    kinds.Add(SlotAt(inner, callee.slots[i]));
    kinds.Add(arguments[i]);
  }
  return kinds.ArePlain();
}

[[gnu::always_inline]] inline bool FastMachine::IsOutermost() const noexcept {
  return m_fast.frames.size() == m_depth;
}

// clang-format off
#define SLOT(operand) (SlotAt(base, pc->operand))
#define NEXT(count) do { pc += (count); goto *(origin + pc->operation); } while (false)
#define GO_TO(entry) \
  do { \
    pc = static_cast<const FastEntry*>(entry)->code; \
    goto *(origin + pc->operation); \
  } while (false)

// Where a program may go round for ever it looks now and then whether it is to stop.
#define LOOK if (--untilLook == 0) [[unlikely]] goto look;

// The operands of a pair of classes into x and y, or the way out.
#define LOAD_SS if (!Left(SLOT(b), x) || !Right(SLOT(c), y)) [[unlikely]] goto giveUp;
#define LOAD_SN if (!Left(SLOT(b), x)) [[unlikely]] goto giveUp; y = RawValues::Double(SLOT(c));
#define LOAD_SK if (!Left(SLOT(b), x)) [[unlikely]] goto giveUp; y = pc[1].Number();
#define LOAD_NS x = RawValues::Double(SLOT(b)); if (!Right(SLOT(c), y)) [[unlikely]] goto giveUp;
#define LOAD_NN x = RawValues::Double(SLOT(b)); y = RawValues::Double(SLOT(c));
#define LOAD_NK x = RawValues::Double(SLOT(b)); y = pc[1].Number();
#define LOAD_KS x = pc[1].Number(); if (!Right(SLOT(c), y)) [[unlikely]] goto giveUp;
#define LOAD_KN x = pc[1].Number(); y = RawValues::Double(SLOT(c));

#define ARITHMETIC_PAIR(NAME, PAIR, SIGN, CELLS) \
  NAME##N_##PAIR: { double x; double y; LOAD_##PAIR RawValues::Double(SLOT(a)) = x SIGN y; NEXT(CELLS); } \
  NAME##S_##PAIR: { double x; double y; LOAD_##PAIR if (!Store(SLOT(a), x SIGN y)) [[unlikely]] goto giveUp; NEXT(CELLS); }
#define ARITHMETIC(NAME, SIGN) \
  ARITHMETIC_PAIR(NAME, SS, SIGN, 1) ARITHMETIC_PAIR(NAME, SN, SIGN, 1) ARITHMETIC_PAIR(NAME, SK, SIGN, 2) \
  ARITHMETIC_PAIR(NAME, NS, SIGN, 1) ARITHMETIC_PAIR(NAME, NN, SIGN, 1) ARITHMETIC_PAIR(NAME, NK, SIGN, 2) \
  ARITHMETIC_PAIR(NAME, KS, SIGN, 2) ARITHMETIC_PAIR(NAME, KN, SIGN, 2)

// A variable changed by an operand: tested once, as what it is read for it is written for.
#define OWN(NAME, CLASS, LOAD, SIGN, CELLS) \
  NAME##_##CLASS: { \
    VariableSlot& own = SLOT(a); \
    double y; \
    LOAD \
    if (RawValues::Kind(own) == RawValues::kNumber) [[likely]] { \
      RawValues::Double(own) = RawValues::Double(own) SIGN y; \
      NEXT(CELLS); \
    } \
    double x; \
    if (!Left(own, x) || !Store(own, x SIGN y)) [[unlikely]] goto giveUp; \
    NEXT(CELLS); \
  }
#define OWN_ARITHMETIC(NAME, SIGN) \
  OWN(NAME, S, if (!Right(SLOT(c), y)) [[unlikely]] goto giveUp;, SIGN, 1) \
  OWN(NAME, N, y = RawValues::Double(SLOT(c));, SIGN, 1) OWN(NAME, K, y = pc[1].Number();, SIGN, 2)

#define COMPARISON_PAIR(NAME, PAIR, SIGN) \
  NAME##_##PAIR: { double x; double y; LOAD_##PAIR if (x SIGN y) NEXT(2); GO_TO(pc[1].Pointer()); }
#define COMPARISON(NAME, SIGN) \
  COMPARISON_PAIR(NAME, SS, SIGN) COMPARISON_PAIR(NAME, SN, SIGN) COMPARISON_PAIR(NAME, SK, SIGN) \
  COMPARISON_PAIR(NAME, NS, SIGN) COMPARISON_PAIR(NAME, NN, SIGN) COMPARISON_PAIR(NAME, NK, SIGN) \
  COMPARISON_PAIR(NAME, KS, SIGN) COMPARISON_PAIR(NAME, KN, SIGN)
#define WHILE_PAIR(NAME, PAIR, SIGN) \
  NAME##_##PAIR: { \
    if (state.control.top().doPosition != pc->a) [[unlikely]] goto giveUpLoop; \
    double x; double y; LOAD_##PAIR if (x SIGN y) { LOOK GO_TO(pc[1].Pointer()); } NEXT(2); \
  }
#define WHILE(NAME, SIGN) \
  WHILE_PAIR(NAME, SS, SIGN) WHILE_PAIR(NAME, SN, SIGN) WHILE_PAIR(NAME, SK, SIGN) \
  WHILE_PAIR(NAME, NS, SIGN) WHILE_PAIR(NAME, NN, SIGN) WHILE_PAIR(NAME, NK, SIGN) \
  WHILE_PAIR(NAME, KS, SIGN) WHILE_PAIR(NAME, KN, SIGN)

void FastMachine::Execute(FastMachine* machine, const FastCell* pc, const std::int32_t** handlers) {
  if (handlers != nullptr) {
    static const std::int32_t table[] = {
#define BRINDLE_FAST_LABEL(NAME) static_cast<std::int32_t>(static_cast<char*>(&&NAME) - static_cast<char*>(&&Exit)),
        BRINDLE_FAST_OPERATIONS(BRINDLE_FAST_LABEL)
#undef BRINDLE_FAST_LABEL
    };
    *handlers = table;
    return;
  }

  char* const origin = static_cast<char*>(&&Exit);
  InterpreterState& state = machine->m_state;
  VariableStore& store = state.m_mapVariables;
  VariableSlot* base = store.FrameAt(state.m_nScopeLevel);
  std::uint32_t position = 0;
  double x = 0;
  double y = 0;
  Way way = Way::Compiled;
  const FastCell* resume = nullptr;
  // Whether code was run that may have changed what statements mean, or have ended the program.
  bool isForeign = true;
  constexpr std::uint32_t kRoundsBetweenLooks = 256;
  std::uint32_t untilLook = kRoundsBetweenLooks;
  goto*(origin + pc->operation);

Exit:
  position = pc->a;
leave:
  way = machine->Leave(position, resume);
  goto goOn;
giveUpLoop: // the "loop" itself, not the condition that stands at it
  way = machine->GiveUp(pc, resume, true);
  goto goOn;
look: // the operation has changed nothing yet and begins again
  untilLook = kRoundsBetweenLooks;
  if (!machine->m_budget.IsStopping())
    goto*(origin + pc->operation);
giveUp:
  way = machine->GiveUp(pc, resume, false);
goOn:
  isForeign = true;
  if (way == Way::Left)
    return;
  if (way != Way::Compiled)
    goto returned;
  base = store.FrameAt(state.m_nScopeLevel);
  pc = resume;
  goto*(origin + pc->operation);

Goto:
  LOOK
  GO_TO(&pc->Target());
Jump:
  GO_TO(&pc->Target());
Nothing:
  NEXT(1);
Probe:
  if (--state.fast.untilGiveUp == 0) {
    state.fast.untilGiveUp = state.fast.giveUpEvery;
    goto giveUp;
  }
  NEXT(1);

Count:
  if (!machine->m_budget.TakeCounted()) [[unlikely]]
    goto giveUp;
  NEXT(1);

  ARITHMETIC(Add, +)
  ARITHMETIC(Subtract, -)
  ARITHMETIC(Multiply, *)
  ARITHMETIC(Divide, /)
  OWN_ARITHMETIC(AddTo, +)
  OWN_ARITHMETIC(SubtractFrom, -)
Power:
  RawValues::Double(SLOT(a)) = PowerOf(RawValues::Double(SLOT(b)), RawValues::Double(SLOT(c)));
  NEXT(1);
Remainder:
  // Deliberate: the quotient is not truncated, so this is 0 or a rounding residue.
  x = RawValues::Double(SLOT(b));
  y = RawValues::Double(SLOT(c));
  RawValues::Double(SLOT(a)) = x - (x / y) * y;
  NEXT(1);
Negate:
  RawValues::Double(SLOT(a)) = -RawValues::Double(SLOT(b));
  NEXT(1);

LoadLeft:
  if (!Left(SLOT(b), x)) [[unlikely]]
    goto giveUp;
  RawValues::Double(SLOT(a)) = x;
  NEXT(1);
LoadRight:
  if (!Right(SLOT(b), x)) [[unlikely]]
    goto giveUp;
  RawValues::Double(SLOT(a)) = x;
  NEXT(1);
LoadConstant:
  RawValues::Double(SLOT(a)) = pc[1].Number();
  NEXT(2);
LoadGlobal: {
  const VariableSlot& global = *static_cast<const VariableSlot*>(pc[1].Pointer());
  if (pc->b != 0 ? !Left(global, x) : !Right(global, x)) [[unlikely]]
    goto giveUp;
  RawValues::Double(SLOT(a)) = x;
  NEXT(2);
}

StoreNumber:
  if (!Store(SLOT(a), RawValues::Double(SLOT(b)))) [[unlikely]]
    goto giveUp;
  NEXT(1);
StoreInteger:
  if (!RawValues::IsPlain(RawValues::Kind(SLOT(a)))) [[unlikely]]
    goto giveUp;
  RawValues::PutInteger(SLOT(a), static_cast<std::int32_t>(RawValues::Double(SLOT(b))));
  NEXT(1);
StoreConstant:
  if (!Store(SLOT(a), pc[1].Number())) [[unlikely]]
    goto giveUp;
  NEXT(2);
StoreText:
  if (!RawValues::IsPlain(RawValues::Kind(SLOT(a)))) [[unlikely]]
    goto giveUp;
  RawValues::PutText(SLOT(a), *static_cast<const CString*>(pc[1].Pointer()));
  NEXT(2);
Copy:
  if (RawValues::Kind(SLOT(b)) == RawValues::kNumber && RawValues::Kind(SLOT(a)) == RawValues::kNumber) [[likely]] {
    RawValues::Double(SLOT(a)) = RawValues::Double(SLOT(b));
    NEXT(1);
  }
  if (!RawValues::IsPlain(RawValues::Kind(SLOT(a))) || !RawValues::Copy(SLOT(a), SLOT(b))) [[unlikely]]
    goto giveUp;
  NEXT(1);
CopyFromGlobal:
  if (!RawValues::IsPlain(RawValues::Kind(SLOT(a))) ||
      !RawValues::Copy(SLOT(a), *static_cast<const VariableSlot*>(pc[1].Pointer()))) [[unlikely]]
    goto giveUp;
  NEXT(2);
MoveToGlobal: {
  VariableSlot& global = *static_cast<VariableSlot*>(pc[1].Pointer());
  if (!global.IsDefined() || !RawValues::IsPlain(RawValues::Kind(global)) || !RawValues::Copy(global, SLOT(b)))
      [[unlikely]]
    goto giveUp;
  NEXT(2);
}
Move:
  if (RawValues::Kind(SLOT(b)) == RawValues::kBoxed) {
    if (!RawValues::MoveBox(SLOT(a), SLOT(b), state.fast.spareBox)) [[unlikely]]
      goto giveUp;
    NEXT(1);
  }
  if (!RawValues::IsPlain(RawValues::Kind(SLOT(a))) || !RawValues::IsPlain(RawValues::Kind(SLOT(b))) ||
      !SLOT(b).IsDefined()) [[unlikely]]
    goto giveUp;
  RawValues::Move(SLOT(a), SLOT(b));
  NEXT(1);

ItemNumber: {
  double index;
  if (!Left(SLOT(c), index)) [[unlikely]]
    goto giveUp;
  const CVarBase* const item = RawValues::ItemAt(SLOT(b), index);
  double number;
  if (item == nullptr || !ItemNumberOf(*item, number)) [[unlikely]]
    goto giveUp;
  RawValues::Double(SLOT(a)) = number;
  NEXT(1);
}
GlobalItemNumber: {
  double index;
  if (!Left(SLOT(c), index)) [[unlikely]]
    goto giveUp;
  const CVarBase* const item = RawValues::ItemAt(*static_cast<const VariableSlot*>(pc[1].Pointer()), index);
  double number;
  if (item == nullptr || !ItemNumberOf(*item, number)) [[unlikely]]
    goto giveUp;
  RawValues::Double(SLOT(a)) = number;
  NEXT(2);
}
ItemValue: {
  double index;
  if (!Left(SLOT(c), index) || !RawValues::IsPlain(RawValues::Kind(SLOT(a)))) [[unlikely]]
    goto giveUp;
  const CVarBase* const item = RawValues::ItemAt(SLOT(b), index);
  if (item == nullptr || !CopyItem(SLOT(a), *item)) [[unlikely]]
    goto giveUp;
  NEXT(1);
}
GlobalItemValue: {
  double index;
  if (!Left(SLOT(c), index) || !RawValues::IsPlain(RawValues::Kind(SLOT(a)))) [[unlikely]]
    goto giveUp;
  const CVarBase* const item = RawValues::ItemAt(*static_cast<const VariableSlot*>(pc[1].Pointer()), index);
  if (item == nullptr || !CopyItem(SLOT(a), *item)) [[unlikely]]
    goto giveUp;
  NEXT(2);
}
SetItem: {
  double index;
  if (!Left(SLOT(b), index) || !SetItem(SLOT(a), index, SLOT(c))) [[unlikely]]
    goto giveUp;
  NEXT(1);
}
SetItemConstant: {
  double index;
  if (!Left(SLOT(b), index) || !RawValues::SetItem(SLOT(a), index, pc[1].Number())) [[unlikely]]
    goto giveUp;
  NEXT(2);
}
SetGlobalItem: {
  double index;
  if (!Left(SLOT(b), index) || !SetItem(*static_cast<const VariableSlot*>(pc[1].Pointer()), index, SLOT(c)))
      [[unlikely]]
    goto giveUp;
  NEXT(2);
}

  COMPARISON(IfEqual, ==)
  COMPARISON(IfNotEqual, !=)
  COMPARISON(IfLess, <)
  COMPARISON(IfLessEqual, <=)
  COMPARISON(IfGreater, >)
  COMPARISON(IfGreaterEqual, >=)
  WHILE(WhileEqual, ==)
  WHILE(WhileNotEqual, !=)
  WHILE(WhileLess, <)
  WHILE(WhileLessEqual, <=)
  WHILE(WhileGreater, >)
  WHILE(WhileGreaterEqual, >=)
IfAbout: {
  LOAD_NN
  if (std::fabs(x - y) < kAbout)
    NEXT(2);
  GO_TO(pc[1].Pointer());
}
IfText: {
  bool holds = false;
  if (!CompareTexts(*static_cast<const std::vector<FastPart>*>(pc[2].Pointer()), base, pc->a, holds)) [[unlikely]]
    goto giveUp;
  if (holds)
    NEXT(3);
  GO_TO(pc[1].Pointer());
}

IfTextIs: {
  if (RawValues::Kind(SLOT(b)) != RawValues::kText) [[unlikely]]
    goto giveUp;
  const bool isSame = RawValues::Text(SLOT(b)) == *static_cast<const CString*>(pc[2].Pointer());
  if (isSame == (pc->a != 0))
    NEXT(3);
  GO_TO(pc[1].Pointer());
}

For: {
  x = RawValues::Double(SLOT(b));
  y = RawValues::Double(SLOT(c));
  if (!Store(SLOT(a), x)) [[unlikely]]
    goto giveUp;
  if (!(y >= x))
    GO_TO(pc[2].Pointer());
  const Token* const site = static_cast<const Token*>(pc[1].Pointer());
  state.control.push({site->text, y, pc[1].b, true, site});
  NEXT(3);
}
Next: {
  FastLoop& loop = *static_cast<FastLoop*>(pc[1].Pointer());
  // The same "for" has another body when its end expression could not be read to the end.
  const ControlStack::Entry* const top = &state.control.top();
  if (top->site != loop.site || top->position != loop.position) [[unlikely]]
    if (!machine->LinkLoop(loop, true))
      goto giveUp;
  VariableSlot& counter = SlotAt(base, loop.slot);
  if (RawValues::Kind(counter) != RawValues::kNumber) [[unlikely]]
    goto giveUp;
  LOOK
  const double count = RawValues::Double(counter) + 1.0;
  RawValues::Double(counter) = count;
  if (count > top->value) {
    state.control.pop();
    NEXT(2);
  }
  GO_TO(loop.target);
}
PushLoop:
  state.control.push({CString(), 0, pc->a, true, nullptr});
  NEXT(1);
Loop: {
  FastLoop& loop = *static_cast<FastLoop*>(pc[1].Pointer());
  if (state.control.top().position != loop.position) [[unlikely]]
    if (!machine->LinkLoop(loop, false))
      goto giveUp;
  LOOK
  state.control.pop();
  GO_TO(loop.target);
}
LoopAgain:
  if (state.control.top().doPosition != pc->a) [[unlikely]]
    goto giveUp;
  NEXT(1);
PopLoop:
  state.control.pop();
  NEXT(1);

Check:
  if ((!SLOT(a).IsDefined() && pc->c == 0) || !RawValues::IsPlain(RawValues::Kind(SLOT(a))) ||
      (pc->b != 0 && RawValues::Kind(SLOT(a)) != RawValues::kText)) [[unlikely]]
    goto giveUp;
  NEXT(1);
Join:
  if (!JoinParts(*static_cast<const std::vector<FastPart>*>(pc[1].Pointer()), base, SLOT(a))) [[unlikely]]
    goto giveUp;
  NEXT(2);
Function1:
  RawValues::Double(SLOT(a)) = reinterpret_cast<double (*)(double)>(pc[1].Pointer())(RawValues::Double(SLOT(b)));
  NEXT(2);
ToInteger:
  RawValues::Double(SLOT(a)) = ToInt32(RawValues::Double(SLOT(b)));
  NEXT(1);
Extreme:
  LOAD_NN
  // Of equal values the later one is taken, of unordered ones the first.
  if (pc[1].b != 0 ? x <= y : x >= y)
    x = y;
  RawValues::Double(SLOT(a)) = x;
  NEXT(2);
Length:
  if (!ValueOfPart(static_cast<const std::vector<FastPart>*>(pc[1].Pointer())->front(), base, true, x)) [[unlikely]]
    goto giveUp;
  RawValues::Double(SLOT(a)) = x;
  NEXT(2);
ValueOf:
  if (!ValueOfPart(static_cast<const std::vector<FastPart>*>(pc[1].Pointer())->front(), base, false, x)) [[unlikely]]
    goto giveUp;
  RawValues::Double(SLOT(a)) = x;
  NEXT(2);
Part:
  if (!TakePart(pc, base)) [[unlikely]]
    goto giveUp;
  NEXT(2);
Search:
  if (!SearchText(pc, base, x)) [[unlikely]]
    goto giveUp;
  RawValues::Double(SLOT(a)) = x;
  NEXT(2);

Format:
  if (!RawValues::IsPlain(RawValues::Kind(SLOT(a)))) [[unlikely]]
    goto giveUp;
  RawValues::PutText(SLOT(a), FormatNumber(*static_cast<const ValueFormat*>(pc[1].Pointer()),
                                           RawValues::Double(SLOT(b))));
  NEXT(2);

MapGet:
  if (!machine->GetFromMap(*static_cast<FastMapUse*>(pc[1].Pointer()), base, SLOT(a), false)) [[unlikely]]
    goto giveUp;
  NEXT(2);
MapHas:
  if (!machine->GetFromMap(*static_cast<FastMapUse*>(pc[1].Pointer()), base, SLOT(a), true)) [[unlikely]]
    goto giveUp;
  NEXT(2);
MapSet:
  if (!machine->SetInMap(*static_cast<FastMapUse*>(pc[1].Pointer()), base, SLOT(b))) [[unlikely]]
    goto giveUp;
  NEXT(2);

Call: {
  FastCallee& callee = *static_cast<FastCallee*>(pc[1].Pointer());
  VariableSlot* const inner = store.FrameAbove(state.m_nScopeLevel);
  VariableSlot* const arguments = &SLOT(a);
  if (state.m_nScopeLevel > state.fast.deepestLevel || !CanEnter(callee, inner, arguments)) [[unlikely]]
    goto giveUp;
  LOOK
  state.fast.frames.push_back({pc + 2, base, static_cast<std::uint32_t>(store.FrameSize()),
                               state.control.size(), machine->m_code.Generation(),
                               state.stop});
  ++state.m_nScopeLevel;
  state.stop = false; // a call runs in full, also while the statement that ended the program finishes
  RawValues::PutUndefined(SlotAt(inner, callee.result));
  const std::uint32_t* const slots = callee.slots;
  const std::size_t count = callee.count;
  const FastEntry* const body = callee.body;
  for (std::size_t i = 0; i < count; ++i)
    RawValues::Move(SlotAt(inner, slots[i]), arguments[i]);
  base = inner;
  GO_TO(body);
}
Return:
  if (machine->IsOutermost()) {
    position = pc->a;
    goto leave;
  }
  {
    const FastFrame& frame = state.fast.frames.back();
    const VariableSlot& result = SlotAt(base, frame.Callee().result);
    if (frame.frameSize == store.FrameSize() && !isForeign && !(state.m_nScopeLevel == 2 && store.MayHoldObjects()) &&
        !frame.stop && state.control.size() == frame.control &&
        (frame.IsStatement() || RawValues::CopyToPlain(SlotAt(frame.base, frame.Destination()), result))) [[likely]] {
      --state.m_nScopeLevel;
      base = frame.base;
      pc = frame.pc;
      state.fast.frames.pop_back();
      goto *(origin + pc->operation);
    }
  }
  state.position = pc->b;
  way = Way::Returned;
returned: {
  pc = state.fast.frames.back().pc;
  const bool isStatement = state.fast.frames.back().IsStatement();
  const std::uint32_t generation = state.fast.frames.back().generation;
  position = state.fast.frames.back().Closing() + 1;
  machine->FinishCall(way != Way::Failed);
  base = store.FrameAt(state.m_nScopeLevel);
  if (state.stop || machine->IsStale(generation)) [[unlikely]] {
    if (isStatement)
      goto leave;
    goto giveUp;
  }
  // What was found here holds for the calls below as well, until others' code runs again; but not when the code was
  // forgotten since the first of them was made.
  isForeign = machine->IsForgotten();
  goto *(origin + pc->operation);
}
BuiltIn: {
  const std::uint32_t generation = machine->m_code.Generation();
  if (!machine->RunBuiltIn(pc, base)) [[unlikely]]
    goto giveUp;
  isForeign = true;
  base = store.FrameAt(state.m_nScopeLevel);
  if (state.stop || machine->m_budget.IsStopping() || machine->IsStale(generation)) [[unlikely]] {
    position = pc[1].c;
    if (pc[1].b != 0)
      goto leave;
    pc += 2;
    goto giveUp;
  }
  NEXT(2);
}
}

// clang-format on

} // namespace brindle
