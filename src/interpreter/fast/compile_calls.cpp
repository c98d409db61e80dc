// Calls: script procedures as frames of the machine, built-in functions through their handlers, and some of those as
// operations of their own.
#include "interpreter/fast/compiler.h"

#include "interpreter/state.h"
#include "platform/number_text.h"

#include <algorithm>
#include <cmath>

namespace brindle {

namespace {

using Function1 = double (*)(double);

double Log2(double x) {
  return std::log(x) / std::log(2.0);
}

// The functions of one number that give a number.
Function1 FunctionOfNumber(FUNCTION_TYPE code) {
  switch (code) {
  case FUNCTION_SIN: return static_cast<Function1>(std::sin);
  case FUNCTION_COS: return static_cast<Function1>(std::cos);
  case FUNCTION_TAN: return static_cast<Function1>(std::tan);
  case FUNCTION_ASIN: return static_cast<Function1>(std::asin);
  case FUNCTION_ACOS: return static_cast<Function1>(std::acos);
  case FUNCTION_ATAN: return static_cast<Function1>(std::atan);
  case FUNCTION_SQR: return static_cast<Function1>(std::sqrt);
  case FUNCTION_LOG: return static_cast<Function1>(std::log);
  case FUNCTION_LOG10: return static_cast<Function1>(std::log10);
  case FUNCTION_LOG2: return Log2;
  case FUNCTION_ABS: return static_cast<Function1>(std::fabs);
  default: return nullptr;
  }
}

} // namespace

CFuncDesc* FastCompiler::FunctionOf(const FastNode& node) const {
  if (node.token->lowered.Find(u'.') >= 0)
    return nullptr;
  return m_interpreter.FindFunction(node.token->lowered);
}

bool FastCompiler::IsIntrinsic(const FastNode& node) {
  const CFuncDesc* function = FunctionOf(node);
  if (function == nullptr || function->m_nKind != CFuncDesc::kBuiltIn)
    return false;
  const std::size_t count = node.arguments.size();
  switch (function->m_nCode) {
  case FUNCTION_INT: return count == 1;
  case FUNCTION_MAX:
  case FUNCTION_MIN: return count == 2;
  case FUNCTION_LEN:
  case FUNCTION_VAL: return count == 1 && node.arguments[0]->kind != FastNode::Number;
  case FUNCTION_LEFT:
  case FUNCTION_RIGHT:
  case FUNCTION_INSTR: return count == 2;
  case FUNCTION_MID: return count == 3;
  case FUNCTION_FORMAT: return count == 2 && FormatOf(node).has_value();
  case FUNCTION_MAPGET:
  case FUNCTION_MAPHAS: return count == 2 && node.arguments[0]->kind == FastNode::Text;
  default: return count == 1 && FunctionOfNumber(function->m_nCode) != nullptr;
  }
}

bool FastCompiler::Intrinsic(FastNode& node, FUNCTION_TYPE code, Operand& out, bool& isKnown) {
  isKnown = IsIntrinsic(node);
  if (!isKnown)
    return true;
  if (code == FUNCTION_MAPGET || code == FUNCTION_MAPHAS)
    return MapFunction(node, code, out, false);
  if (code == FUNCTION_FORMAT)
    return FormatNumber(node, out);
  const Function1 function = FunctionOfNumber(code);
  const bool isExtreme = code == FUNCTION_MAX || code == FUNCTION_MIN;
  if (function == nullptr && code != FUNCTION_INT && !isExtreme)
    return TextIntrinsic(node, code, out, isKnown);

  const std::size_t live = CountLive();
  const std::uint32_t recordedNames = m_recordedNames;
  Operand operands[2];
  for (std::size_t i = 0; i < node.arguments.size(); ++i, ++m_recordedNames)
    if (!NumberOperand(*node.arguments[i], false, operands[i]) ||
        !InNumberTemporary(*node.arguments[i], false, operands[i]))
      return false;
  m_recordedNames = recordedNames;
  std::size_t cell = 0;
  if (isExtreme) {
    cell = Emit(FastOperation::Extreme, 0, operands[0].slot, operands[1].slot);
    EmitData(nullptr, code == FUNCTION_MAX ? 1U : 0U, 0U);
  } else if (function != nullptr) {
    cell = Emit(FastOperation::Function1, 0, operands[0].slot);
    EmitData(reinterpret_cast<const void*>(function));
  } else {
    cell = Emit(FastOperation::ToInteger, 0, operands[0].slot);
  }
  PopTo(live);
  if (!NewNumber(out))
    return false;
  out.isInteger = code == FUNCTION_INT;
  m_chunk->cells[cell].a = out.slot;
  Push(out, node);
  return true;
}

// The text functions that need no handler: the text first, as a part, then numbers in temporaries.
bool FastCompiler::TextIntrinsic(FastNode& node, FUNCTION_TYPE code, Operand& out, bool& isKnown) {
  isKnown = true;
  const std::size_t live = CountLive();
  const std::size_t deferred = CountDeferred();
  std::vector<FastPart> parts;
  PartUse use = PartUse::InPlace;
  for (const FastNode* argument : node.arguments)
    use = std::max(use, PartUseFor(*argument));
  const std::uint32_t recordedNames = m_recordedNames;
  if (!TextPart(*node.arguments[0], parts, use))
    return false;
  ++m_recordedNames;
  if (code == FUNCTION_INSTR && !TextPart(*node.arguments[1], parts, use))
    return false;
  Operand first;
  Operand count;
  const bool hasNumbers = code == FUNCTION_LEFT || code == FUNCTION_RIGHT || code == FUNCTION_MID;
  if (hasNumbers &&
      (!NumberOperand(*node.arguments[1], false, first) || !InNumberTemporary(*node.arguments[1], false, first)))
    return false;
  ++m_recordedNames;
  if (code == FUNCTION_MID &&
      (!NumberOperand(*node.arguments[2], false, count) || !InNumberTemporary(*node.arguments[2], false, count)))
    return false;

  m_recordedNames = recordedNames;

  m_code.m_parts.push_back(std::move(parts));
  const void* const data = &m_code.m_parts.back();
  std::size_t cell = 0;
  bool isText = hasNumbers;
  switch (code) {
  case FUNCTION_LEN: cell = Emit(FastOperation::Length); break;
  case FUNCTION_VAL: cell = Emit(FastOperation::ValueOf); break;
  case FUNCTION_INSTR: cell = Emit(FastOperation::Search); break;
  default: cell = Emit(FastOperation::Part, 0, first.slot, count.slot); break;
  }
  EmitData(data, static_cast<std::uint32_t>(code), 0U);
  PopTo(live);
  m_deferred.resize(deferred);
  if (isText ? !NewValue(out) : !NewNumber(out))
    return false;
  out.isInteger = code == FUNCTION_LEN || code == FUNCTION_INSTR;
  m_chunk->cells[cell].a = out.slot;
  Push(out, node);
  return true;
}

// The constant text of a "format" that prints a number, which cannot become too long.
std::optional<ValueFormat> FastCompiler::FormatOf(const FastNode& node) {
  constexpr int kLongest = 10000;
  const ValueKind kind = KindOf(*node.arguments[0]);
  if (node.arguments[1]->kind != FastNode::Text || kind == ValueKind::Text || kind == ValueKind::Other)
    return std::nullopt;
  ValueFormat format = ReadFormat(node.arguments[1]->token->text.View());
  const bool isShort = MinimumOutput(format.directive) <= kLongest && format.before.GetLength() <= kLongest &&
                       format.behind.GetLength() <= kLongest;
  if (!format.hasValue || !PrintsNumber(format.directive) || !isShort)
    return std::nullopt;
  return format;
}

bool FastCompiler::FormatNumber(FastNode& node, Operand& out) {
  FastNode& argument = *node.arguments[0];
  const std::size_t live = CountLive();
  Operand number;
  if (!NumberOperand(argument, true, number) || !InNumberTemporary(argument, true, number))
    return false;
  m_code.m_formats.push_back(*FormatOf(node));
  const std::size_t cell = Emit(FastOperation::Format, 0, number.slot);
  EmitData(&m_code.m_formats.back());
  PopTo(live);
  if (!NewValue(out))
    return false;
  m_chunk->cells[cell].a = out.slot;
  Push(out, node);
  return true;
}

// A map whose name is written out.
bool FastCompiler::MapFunction(FastNode& node, FUNCTION_TYPE code, Operand& out, bool isStatement) {
  const std::size_t live = CountLive();
  const std::size_t deferred = CountDeferred();
  const std::uint32_t recordedNames = m_recordedNames;
  FastMapUse use;
  use.name = node.arguments[0]->token->text;
  ++m_recordedNames;
  Operand value;
  const bool isSet = code == FUNCTION_MAPSET;
  const PartUse keyUse = isSet ? PartUseFor(*node.arguments[2]) : PartUse::InPlace;
  if (!TextPart(*node.arguments[1], use.key, keyUse))
    return false;
  ++m_recordedNames;
  if (isSet && !ValueInTemporary(*node.arguments[2], value))
    return false;
  m_recordedNames = recordedNames;
  m_code.m_mapUses.push_back(std::move(use));
  const FastOperation operation = isSet                     ? FastOperation::MapSet
                                  : code == FUNCTION_MAPGET ? FastOperation::MapGet
                                                            : FastOperation::MapHas;
  const std::size_t cell = Emit(operation, 0, value.slot);
  EmitData(&m_code.m_mapUses.back());
  PopTo(live);
  m_deferred.resize(deferred);
  if (isStatement)
    return true;
  if (!NewValue(out))
    return false;
  m_chunk->cells[cell].a = out.slot;
  Push(out, node);
  return true;
}

bool FastCompiler::ArgumentsInTemporaries(FastNode& node, std::uint32_t& first) {
  first = NextValue();
  for (FastNode* argument : node.arguments) {
    Operand operand;
    if (!ValueInTemporary(*argument, operand))
      return false;
    ++m_recordedNames;
  }
  return true;
}

FastCallee* FastCompiler::CalleeOf(CFuncDesc& function, std::size_t arguments) {
  if (function.m_pProgram.get() != &m_text)
    return nullptr;
  FastCallee callee;
  callee.function = &function;
  VariableStore& store = m_state.m_mapVariables;
  const NameRef result = store.Ref(function.m_strName);
  if (store.FindGlobal(result) != nullptr || store.IsAlias(result.number))
    return nullptr;
  callee.result = static_cast<std::uint32_t>(store.LocalPlace(result.number)) * kSlotSize;

  FastParser parser(m_text, m_state.words);
  parser.Start(function.m_nPosition);
  if (!FastParser::IsDelimiter(parser.Take(), u'('))
    return nullptr;
  while (!FastParser::IsDelimiter(parser.Peek(), u')')) {
    const Token& name = parser.Take();
    std::uint32_t slot = 0;
    if (name.kind != TOKEN_VARIABLE || !LocalSlot(name, slot))
      return nullptr;
    callee.parameters.push_back(slot);
    if (FastParser::IsDelimiter(parser.Peek(), u','))
      parser.Take();
    else if (!FastParser::IsDelimiter(parser.Peek(), u')'))
      return nullptr;
  }
  if (callee.parameters.size() > arguments)
    return nullptr;
  // The body begins on the next line.
  std::uint32_t position = parser.Take().end;
  while (position < m_text.Length() && !IsLineEnd(m_text.At(position)))
    ++position;
  callee.body = EntryFrom(position);
  m_code.m_callees.push_back(std::move(callee));
  FastCallee& kept = m_code.m_callees.back();
  kept.slots = kept.parameters.data();
  kept.count = kept.parameters.size();
  return &kept;
}

// A call gives its value in a temporary that is live, unless it is a statement.
bool FastCompiler::Call(FastNode& node, Operand& out, bool isStatement) {
  CFuncDesc* const function = FunctionOf(node);
  if (function == nullptr)
    return false;
  const FUNCTION_TYPE code = function->m_nCode;
  if (function->m_nKind == CFuncDesc::kBuiltIn && !isStatement) {
    bool isKnown = false;
    if (!Intrinsic(node, code, out, isKnown))
      return false;
    if (isKnown)
      return true;
  }

  if (isStatement && code == FUNCTION_MAPSET && function->m_nKind == CFuncDesc::kBuiltIn &&
      node.arguments.size() == 3 && node.arguments[0]->kind == FastNode::Text)
    return MapFunction(node, code, out, true);

  const std::size_t live = CountLive();
  const std::uint32_t recordedNames = m_recordedNames;
  std::uint32_t first = 0;
  std::size_t cell = 0;
  if (code == FUNCTION_SCRIPT) {
    FastCallee* const callee = CalleeOf(*function, node.arguments.size());
    if (callee == nullptr || !ArgumentsInTemporaries(node, first))
      return false;
    // The first cell of a statement may be overwritten, but calls in progress look at theirs.
    if (m_chunk->cells.size() == m_firstCell)
      Emit(FastOperation::Nothing);
    cell = Emit(FastOperation::Call, first, 0, isStatement ? 1 : 0);
    EmitData(callee, m_recordedNames, node.closing->start);
  } else {
    // Host functions and externals look at more than their arguments.
    if (function->m_pHandler == nullptr || function->m_nKind != CFuncDesc::kBuiltIn || code == FUNCTION_HOST ||
        code == FUNCTION_GETVARSTATS || !ArgumentsInTemporaries(node, first))
      return false;
    m_code.m_builtIns.push_back({function->m_pHandler, code, node.closing});
    cell = Emit(FastOperation::BuiltIn, first, 0, static_cast<std::uint32_t>(node.arguments.size()));
    EmitData(&m_code.m_builtIns.back(), isStatement ? 1 : 0, node.end);
  }
  m_recordedNames = recordedNames;
  PopTo(live);
  if (isStatement)
    return true;
  if (!NewValue(out))
    return false;
  m_chunk->cells[cell].b = out.slot;
  Push(out, node);
  return true;
}

} // namespace brindle
