// Cells, live operands and names.
#include "interpreter/fast/compiler.h"

#include "interpreter/fast/machine.h"
#include "interpreter/state.h"

namespace brindle {

FastCompiler::FastCompiler(CBrindle& interpreter)
    : m_interpreter(interpreter), m_state(*interpreter.m_pState), m_text(*m_state.program), m_code(m_text.Fast()),
      m_parser(m_text, m_state.words), m_isCounting(m_state.budget->IsCounting()) {}

std::int32_t FastCompiler::HandlerOf(FastOperation operation) {
  return FastMachine::Handlers()[static_cast<std::size_t>(operation)];
}

namespace {

// These neither give up nor have a statement's values to lose.
bool MayGiveUp(FastOperation operation) {
  switch (operation) {
  case FastOperation::Exit:
  case FastOperation::Jump:
  case FastOperation::Nothing:
  case FastOperation::Count:
  case FastOperation::Return:
  case FastOperation::PopLoop:
  case FastOperation::PushLoop: return false;
  default: return true;
  }
}

} // namespace

std::size_t FastCompiler::Emit(FastOperation operation, std::uint32_t a, std::uint32_t b, std::uint32_t c) {
  const std::size_t usable = m_deferred.empty() ? m_live.size() : m_deferred.front();
  const auto append = [this, usable](const FastCell& cell) {
    m_chunk->cells.push_back(cell);
    m_chunk->operands.push_back(usable == 0 ? -1 : m_live[usable - 1]);
    m_chunk->statements.push_back(m_statement);
  };
  if (m_state.fast.mode == FastMode::Eager && MayGiveUp(operation))
    append({HandlerOf(FastOperation::Probe), 0, 0, 0});
  append({HandlerOf(operation), a, b, c});
  return m_chunk->cells.size() - 1;
}

void FastCompiler::EmitData(const void* pointer, double number) {
  FastCell cell;
  cell.SetPointer(pointer);
  cell.SetNumber(number);
  m_chunk->cells.push_back(cell);
  m_chunk->operands.push_back(-1);
  m_chunk->statements.push_back(nullptr);
}

void FastCompiler::EmitData(const void* pointer, std::uint32_t b, std::uint32_t c) {
  EmitData(pointer);
  m_chunk->cells.back().b = b;
  m_chunk->cells.back().c = c;
}

void FastCompiler::EmitJump(FastEntry& entry) {
  m_chunk->cells[Emit(FastOperation::Jump)].SetTarget(entry);
}

bool FastCompiler::NewNumber(Operand& out) {
  if (m_numbers >= VariableStore::kNumberTemporaries)
    return false;
  out = Operand{Operand::N, m_numbers++ * kSlotSize};
  return true;
}

std::uint32_t FastCompiler::NextValue() const noexcept {
  return (VariableStore::kNumberTemporaries + m_values) * kSlotSize;
}

bool FastCompiler::NewValue(Operand& out) {
  constexpr std::uint32_t kValues = VariableStore::kTemporaries - VariableStore::kNumberTemporaries;
  if (m_values >= kValues)
    return false;
  out = Operand{Operand::S, NextValue()};
  ++m_values;
  return true;
}

void FastCompiler::Push(Operand& operand, const FastNode& node) {
  FastOperand live;
  live.below = m_live.empty() ? -1 : m_live.back();
  live.slot = operand.slot;
  live.isNumber = operand.kind == Operand::N;
  live.isInteger = operand.isInteger;
  live.level = static_cast<std::uint8_t>(node.Level());
  live.start = node.start;
  live.end = node.end;
  m_live.push_back(static_cast<std::int32_t>(m_code.m_operands.size()));
  m_code.m_operands.push_back(live);
  operand.isLive = true;
}

// Temporaries are given back with the operands that they hold.
void FastCompiler::PopTo(std::size_t count) {
  while (m_live.size() > count) {
    const FastOperand& live = m_code.m_operands[static_cast<std::size_t>(m_live.back())];
    if (live.isNumber)
      --m_numbers;
    else
      --m_values;
    m_live.pop_back();
  }
}

// The newest operand becomes the value of the words that `node` stands for: those in parentheses, say.
void FastCompiler::Relabel(const FastNode& node) {
  FastOperand live = m_code.m_operands[static_cast<std::size_t>(m_live.back())];
  live.level = static_cast<std::uint8_t>(node.Level());
  live.start = node.start;
  live.end = node.end;
  m_live.back() = static_cast<std::int32_t>(m_code.m_operands.size());
  m_code.m_operands.push_back(live);
}

bool FastCompiler::ResolveName(const Token& name, std::uint32_t& slot, VariableSlot*& global) {
  const NameRef ref = m_interpreter.RefOf(name);
  VariableStore& store = m_state.m_mapVariables;
  global = store.FindGlobal(ref);
  if (global != nullptr)
    return global->IsDefined();
  if (store.IsAlias(ref.number))
    return false;
  slot = static_cast<std::uint32_t>(store.LocalPlace(ref.number)) * kSlotSize;
  return true;
}

bool FastCompiler::LocalSlot(const Token& name, std::uint32_t& slot) {
  VariableSlot* global = nullptr;
  return ResolveName(name, slot, global) && global == nullptr;
}

} // namespace brindle
