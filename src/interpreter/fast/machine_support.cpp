// What the machine does rarely, or what takes longer than an operation's dispatch: handing over to the executing
// parser and back, calls, and operations on text.
#include "interpreter/arithmetic.h"
#include "interpreter/error_numbers.h"
#include "interpreter/fast/compiler.h"
#include "interpreter/fast/machine.h"
#include "interpreter/limits.h"
#include "interpreter/state.h"

#include <algorithm>
#include <cassert>
#include <cstring>

namespace brindle {

namespace {

static_assert(sizeof(VariableSlot) == kSlotSize);

// A statement that gives up more often than this is compiled anew, for the values that it meets now.
constexpr std::uint32_t kMostBails = 2;

} // namespace

FastMachine::FastMachine(CBrindle& interpreter)
    : m_interpreter(interpreter), m_state(*interpreter.m_pState), m_fast(m_state.fast), m_code(m_state.program->Fast()),
      m_budget(*m_state.budget), m_depth(m_fast.frames.size()), m_level(m_state.m_nScopeLevel) {}

// The values of statements in progress that somebody could miss: objects.
void FastMachine::ReleaseTemporaries() noexcept {
  const int deepest = m_level + static_cast<int>(m_fast.frames.size() - m_depth);
  for (int level = m_level; level <= deepest; ++level) {
    VariableSlot* const frame = m_state.m_mapVariables.FrameAt(level);
    for (int place = VariableStore::kNumberTemporaries; place < VariableStore::kTemporaries; ++place)
      if (!RawValues::IsPlain(RawValues::Kind(frame[place])))
        frame[place].Undefine();
  }
}

// Frames are left here only when an exception ends the calls in progress.
FastMachine::~FastMachine() {
  m_fast.tape.Clear();
  if (!m_isDone)
    ReleaseTemporaries();
  if (m_fast.frames.size() <= m_depth)
    return;
  m_state.m_nScopeLevel = m_level;
  m_state.position = m_fast.frames[m_depth].Closing(); // where the caller stood
  // A procedure may have taken entries of its callers: each call drops what was pushed since it was made.
  for (std::size_t i = m_depth; i < m_fast.frames.size(); ++i) {
    m_state.stop = m_state.stop || m_fast.frames[i].stop;
    m_state.control.shrink(m_fast.frames[i].control);
  }
  m_fast.frames.resize(m_depth);
}

std::uint64_t FastMachine::FunctionChanges(const InterpreterState& state) noexcept {
  return state.functions.Changes() + CBrindle::m_nHostFunctionChanges;
}

bool FastMachine::IsStale(std::uint32_t generation) const noexcept {
  return m_code.Generation() != generation || m_code.layout != m_state.m_mapVariables.Layout() ||
         m_code.functions != FunctionChanges(m_state);
}

// The executing parser goes on at that position: in its own loop, or here when the procedure was entered here.
FastMachine::Way FastMachine::Leave(std::uint32_t position, const FastCell*& resume) {
  m_state.position = position;
  m_state.token.command = COMMAND_NONE;
  if (m_fast.frames.size() == m_depth)
    return Way::Left;
  return m_state.stop ? Way::Returned : StepOn(resume);
}

FastMachine::Way FastMachine::StepOn(const FastCell*& resume) {
  for (;;) {
    m_interpreter.get_token();
    if (const FastEntry* entry = m_interpreter.CompiledEntry()) {
      resume = entry->code;
      return Way::Compiled;
    }
    switch (m_interpreter.StepBody()) {
    case CBrindle::BodyState::GoesOn: break;
    case CBrindle::BodyState::Ended: return Way::Returned;
    case CBrindle::BodyState::Failed: return Way::Failed;
    }
  }
}

// The statement is run by the executing parser, which takes what was computed already from the tape.
FastMachine::Way FastMachine::GiveUp(const FastCell* pc, const FastCell*& resume, bool isLoop) {
  // The statement was counted when it began, unless that is where it gives up.
  const bool isCounted =
      m_budget.IsCounting() && !m_budget.IsStopping() && pc->operation != FastCompiler::HandlerOf(FastOperation::Count);
  const FastChunk& chunk = *m_code.ChunkOf(pc);
  const auto index = static_cast<std::size_t>(pc - chunk.cells.data());
  FastStatement& statement = isLoop ? *chunk.statements[index]->loop : *chunk.statements[index];
  VariableSlot* const base = m_state.m_mapVariables.FrameAt(m_state.m_nScopeLevel);
  std::vector<FastTapeEntry> values;
  for (std::int32_t i = chunk.operands[index]; i >= 0; i = m_code.m_operands[static_cast<std::size_t>(i)].below) {
    const FastOperand& operand = m_code.m_operands[static_cast<std::size_t>(i)];
    FastTapeEntry entry{operand.start, operand.end, operand.level, {}};
    if (!operand.isNumber)
      RawValues::MoveOut(SlotAt(base, operand.slot), entry.value);
    else if (operand.isInteger)
      entry.value.SetValue(static_cast<int>(RawValues::Double(SlotAt(base, operand.slot))));
    else
      entry.value.SetValue(RawValues::Double(SlotAt(base, operand.slot)));
    values.push_back(std::move(entry));
  }
  std::reverse(values.begin(), values.end());
  m_fast.tape.Record(std::move(values));

  if (statement.loop != nullptr)
    m_state.control.pop();
  FastStatement& counted = statement.loop != nullptr ? *statement.loop : statement;
  if (m_fast.mode != FastMode::Eager && ++counted.bails > kMostBails && counted.entry->code == counted.first) {
    counted.entry->Forget();
    counted.first->operation = FastCompiler::HandlerOf(FastOperation::Jump);
    counted.first->SetTarget(*counted.entry);
  }

  m_state.position = statement.entry->position;
  m_interpreter.get_token();
  if (m_fast.frames.size() == m_depth) {
    if (!isCounted)
      m_interpreter.CountStatement();
    m_interpreter.Exec_command();
    assert(m_fast.tape.IsEmpty());
    return Way::Left;
  }
  const auto body = m_interpreter.StepBody(isCounted);
  assert(m_fast.tape.IsEmpty());
  switch (body) {
  case CBrindle::BodyState::Ended: return Way::Returned;
  case CBrindle::BodyState::Failed: return Way::Failed;
  default: return StepOn(resume);
  }
}

// Makes the word that ends at the position the current token, as it is where the executing parser reports: compiled
// statements read none.
void FastMachine::ReadLastWord() {
  const std::uint32_t end = m_state.position;
  if (m_state.token.token->end == end)
    return;
  while (m_state.position > 0 && !IsDelimiterUnit(m_state.program->At(m_state.position - 1)))
    --m_state.position;
  m_interpreter.get_token();
  m_state.position = end;
}

void FastMachine::FinishCall(bool isComplete) {
  const FastFrame frame = m_fast.frames.back();
  VariableStore& store = m_state.m_mapVariables;
  VariableSlot& target = SlotAt(store.FrameAt(m_state.m_nScopeLevel - 1), frame.Destination());
  bool hasResult = false;
  if (!frame.IsStatement()) {
    const VariableSlot& result = SlotAt(store.FrameAt(m_state.m_nScopeLevel), frame.Callee().result);
    hasResult = isComplete && result.IsDefined();
    if (hasResult) {
      if (!RawValues::IsPlain(RawValues::Kind(target)))
        target.Undefine();
      if (!RawValues::Copy(target, result)) {
        CBasicVariable value;
        result.CopyTo(value);
        target.SetWhole(value);
      }
    } else if (isComplete && !m_state.stop) { // "end" leaves a body without a result
      ReadLastWord();
      m_interpreter.ReportError(kErrorNoReturnValue);
    }
  }
  if (m_state.m_nScopeLevel == 2 && store.MayHoldObjects())
    m_interpreter.ObjectVariablesFree(2);
  --m_state.m_nScopeLevel;
  m_state.control.shrink(frame.control);
  m_state.stop = m_state.stop || frame.stop;
  m_fast.frames.pop_back();
  if (!frame.IsStatement() && !hasResult)
    SlotAt(store.FrameAt(m_state.m_nScopeLevel), frame.Destination()).DefineEmpty();
}

bool FastMachine::RunBuiltIn(const FastCell* pc, VariableSlot* base) {
  const FastBuiltIn& function = *static_cast<const FastBuiltIn*>(pc[1].Pointer());
  // The array of the call before is taken, so that most calls allocate none; a call inside this one makes its own.
  CBasicVariableArray arguments = std::move(m_fast.arguments);
  arguments.SetSize(static_cast<int>(pc->c));
  VariableSlot* value = &SlotAt(base, pc->a);
  for (CBasicVariable& argument : arguments)
    RawValues::MoveOut(*value++, argument);
  // The handler may report: it stands where the executing parser would, before the ")".
  m_state.position = function.closing->start;
  m_state.token.token = function.closing;
  m_state.token.kind = TOKEN_DELIMITER;
  m_state.token.command = COMMAND_NONE;
  m_state.token.keyword = KEYWORD_NONE;
  CBasicVariable result;
  (m_interpreter.*function.handler)(result, arguments, function.code);
  if (pc[1].b == 0) {
    VariableSlot& target = SlotAt(m_state.m_mapVariables.FrameAt(m_state.m_nScopeLevel), pc->b);
    if (!RawValues::IsPlain(RawValues::Kind(target)))
      target.Undefine();
    if (!RawValues::MoveItemFrom(target, result))
      RawValues::MoveBoxFrom(target, std::move(result), m_fast.spareBox);
  }
  for (CBasicVariable& argument : arguments)
    if (!RawValues::Clear(argument))
      return true; // it ends with the array
  m_fast.arguments = std::move(arguments);
  return true;
}

// A "next" or "loop" takes whatever is on top; which loop that is is learnt when it is met.
bool FastMachine::LinkLoop(FastLoop& loop, bool isNext) {
  if (m_state.control.empty())
    return false;
  const CStackData& top = m_state.control.top();
  if (top.position >= m_state.program->Length() || (isNext && top.site == nullptr))
    return false;
  FastCompiler compiler(m_interpreter);
  if (isNext && !compiler.LocalSlot(*top.site, loop.slot))
    return false;
  loop.site = top.site;
  loop.position = top.position;
  loop.target = compiler.EntryFrom(top.position);
  return true;
}

bool FastMachine::PartText(const FastPart& part, VariableSlot* base, CString& scratch, std::u16string_view& view) {
  if (part.kind == FastPart::Constant) {
    view = part.text.View();
    return true;
  }
  VariableSlot& slot = SlotAt(base, part.slot);
  if (part.kind == FastPart::Number) {
    scratch = FormatFixed(RawValues::Double(slot));
  } else if (part.kind == FastPart::Integer) {
    scratch = FormatInteger(static_cast<std::int32_t>(RawValues::Double(slot)));
  } else if (RawValues::Kind(slot) == RawValues::kText) {
    view = RawValues::Text(slot).View();
    return true;
  } else {
    if (!slot.IsDefined() || !RawValues::IsPlain(RawValues::Kind(slot)))
      return false;
    scratch = RawValues::Item(slot).GetStringValue();
  }
  view = scratch.View();
  return true;
}

namespace {

// Whether a part is text as it stands; the left operand has to be.
bool IsText(const FastPart& part, const VariableSlot* base) {
  return part.kind == FastPart::Constant ||
         (part.kind == FastPart::Slot && RawValues::Kind(SlotAt(base, part.slot)) == RawValues::kText);
}

} // namespace

bool FastMachine::JoinParts(const std::vector<FastPart>& parts, VariableSlot* base, VariableSlot& target) {
  constexpr std::size_t kFew = 8;
  struct Units { // without a first value: to clear eight views takes longer than to join two texts
    const char16_t* first;
    std::size_t count;
  };
  CString fewScratches[kFew];
  Units fewUnits[kFew];
  std::vector<CString> manyScratches(parts.size() > kFew ? parts.size() : 0);
  std::vector<Units> manyUnits(manyScratches.size());
  CString* const scratches = parts.size() > kFew ? manyScratches.data() : fewScratches;
  Units* const units = parts.size() > kFew ? manyUnits.data() : fewUnits;

  if (!IsText(parts.front(), base) || !RawValues::IsPlain(RawValues::Kind(target)))
    return false;
  std::size_t total = 0;
  bool inPlace = parts.front().kind == FastPart::Slot && &SlotAt(base, parts.front().slot) == &target;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    std::u16string_view view;
    if (!PartText(parts[i], base, scratches[i], view))
      return false;
    units[i] = {view.data(), view.size()};
    total += view.size();
    if (i > 0 && parts[i].kind == FastPart::Slot && &SlotAt(base, parts[i].slot) == &target)
      inPlace = false;
  }
  if (total > static_cast<std::size_t>(kLongestText))
    return false;
  if (inPlace) {
    for (std::size_t i = 1; i < parts.size(); ++i)
      RawValues::Text(target).Append({units[i].first, units[i].count});
    return true;
  }
  CString joined;
  if (total > 0) {
    unsigned short* place = joined.GetBuffer(static_cast<int>(total));
    for (std::size_t i = 0; i < parts.size(); place += units[i++].count)
      if (units[i].count > 0)
        std::memcpy(place, units[i].first, units[i].count * sizeof *place);
    joined.ReleaseBuffer(static_cast<int>(total));
  }
  RawValues::PutText(target, std::move(joined));
  return true;
}

bool FastMachine::CompareTexts(const std::vector<FastPart>& parts, VariableSlot* base, std::uint32_t operation,
                               bool& result) {
  CString scratches[2];
  std::u16string_view views[2];
  if (!IsText(parts[0], base) || !PartText(parts[0], base, scratches[0], views[0]) ||
      !PartText(parts[1], base, scratches[1], views[1]))
    return false;
  result = operation == LOGICAL_ABOUT_EQUAL ? CString(views[0]).Find(CString(views[1])) >= 0
                                            : Compare(static_cast<LOGICAL_OPERATION>(operation), views[0], views[1]);
  return true;
}

bool FastMachine::TakePart(const FastCell* pc, VariableSlot* base) {
  const FastPart& part = static_cast<const std::vector<FastPart>*>(pc[1].Pointer())->front();
  VariableSlot& target = SlotAt(base, pc->a);
  CString text;
  std::u16string_view view;
  if (!RawValues::IsPlain(RawValues::Kind(target)) || !PartText(part, base, text, view))
    return false;
  // A share of the whole text is cheaper than a copy, should that be what is taken.
  if (part.kind == FastPart::Slot && RawValues::Kind(SlotAt(base, part.slot)) == RawValues::kText)
    text = RawValues::Text(SlotAt(base, part.slot));
  else if (part.kind == FastPart::Constant)
    text = part.text;
  const std::int32_t first = ToInt32(RawValues::Double(SlotAt(base, pc->b)));
  switch (pc[1].b) {
  case FUNCTION_LEFT: RawValues::PutText(target, text.Left(first)); break;
  case FUNCTION_RIGHT: RawValues::PutText(target, text.Right(first)); break;
  default: RawValues::PutText(target, text.Mid(first, ToInt32(RawValues::Double(SlotAt(base, pc->c))))); break;
  }
  return true;
}

bool FastMachine::SearchText(const FastCell* pc, VariableSlot* base, double& result) {
  const auto& parts = *static_cast<const std::vector<FastPart>*>(pc[1].Pointer());
  CString scratches[2];
  std::u16string_view views[2];
  if (!PartText(parts[0], base, scratches[0], views[0]) || !PartText(parts[1], base, scratches[1], views[1]))
    return false;
  const std::size_t found = views[0].find(views[1]);
  result = found == std::u16string_view::npos ? -1 : static_cast<double>(found);
  return true;
}

// The length of a text, or the number that a value stands for.
bool FastMachine::ValueOfPart(const FastPart& part, VariableSlot* base, bool isLength, double& result) {
  if (isLength) {
    if (!IsText(part, base))
      return false; // Deliberate: what is no text has no length, and that is no integer
    result =
        part.kind == FastPart::Constant ? part.text.GetLength() : RawValues::Text(SlotAt(base, part.slot)).GetLength();
    return true;
  }
  switch (part.kind) {
  case FastPart::Constant: result = ParseDouble(part.text.View()); return true;
  case FastPart::Slot: return RawValues::RightNumber(SlotAt(base, part.slot), result);
  default: result = RawValues::Double(SlotAt(base, part.slot)); return true;
  }
}

ScriptMap* FastMachine::MapOf(FastMapUse& use) {
  if (use.map == nullptr || use.changes != m_state.mapChanges) {
    use.map = m_interpreter.MapLookup(use.name);
    use.changes = m_state.mapChanges;
  }
  return use.map;
}

// Null for what is no plain scalar.
const CString* FastMachine::KeyOf(const FastPart& part, VariableSlot* base, CString& scratch) {
  if (part.kind == FastPart::Constant)
    return &part.text;
  if (part.kind == FastPart::Slot && RawValues::Kind(SlotAt(base, part.slot)) == RawValues::kText)
    return &RawValues::Text(SlotAt(base, part.slot));
  std::u16string_view view;
  return PartText(part, base, scratch, view) ? &scratch : nullptr;
}

bool FastMachine::GetFromMap(FastMapUse& use, VariableSlot* base, VariableSlot& target, bool isQuestion) {
  CString scratch;
  const CString* const key = KeyOf(use.key.front(), base, scratch);
  if (key == nullptr || !RawValues::IsPlain(RawValues::Kind(target)))
    return false;
  const ScriptMap* const map = MapOf(use);
  const CBasicVariable* const value = map == nullptr ? nullptr : map->Find(*key);
  if (isQuestion) {
    RawValues::PutTruth(target, value != nullptr);
    return true;
  }
  if (value == nullptr) {
    RawValues::PutNumber(target, 0.0);
    return true;
  }
  return !value->HasMoreThanOneItem() && RawValues::CopyItem(target, value->GetItem());
}

bool FastMachine::SetInMap(FastMapUse& use, VariableSlot* base, VariableSlot& value) {
  CString scratch;
  const CString* const key = KeyOf(use.key.front(), base, scratch);
  if (key == nullptr || !value.IsDefined() || !RawValues::IsPlain(RawValues::Kind(value)))
    return false;
  ScriptMap* const map = MapOf(use);
  if (map == nullptr)
    return true;
  CBasicVariable* const known = map->Find(*key);
  if (known != nullptr && known->HoldsObject())
    return false;
  CBasicVariable fresh;
  RawValues::MoveOut(value, fresh);
  if (known != nullptr && !known->HasMoreThanOneItem())
    known->SetValue(fresh);
  else
    map->Set(*key, fresh);
  return true;
}

} // namespace brindle
