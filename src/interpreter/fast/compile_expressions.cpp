// Expressions. An operand is read where it stands, unless something between its place in the text and its use could
// change it: then it is taken into a temporary.
#include "interpreter/fast/compiler.h"

#include "interpreter/state.h"
#include "platform/number_text.h"

namespace brindle {

namespace {

// The operation for a pair of operand classes, in the order of the table.
FastOperation PairOf(FastOperation first, int left, int right) {
  // S = 0, N = 1, K = 2: SS SN SK NS NN NK KS KN
  return static_cast<FastOperation>(static_cast<std::uint32_t>(first) + static_cast<std::uint32_t>(left * 3 + right));
}

FastOperation ArithmeticOf(char16_t operation) {
  switch (operation) {
  case u'+': return FastOperation::AddN_SS;
  case u'-': return FastOperation::SubtractN_SS;
  case u'*': return FastOperation::MultiplyN_SS;
  default: return FastOperation::DivideN_SS;
  }
}

// A variable plus or minus an operand of that class, into itself.
FastOperation OwnOf(char16_t operation, int right) {
  const FastOperation first = operation == u'+' ? FastOperation::AddTo_S : FastOperation::SubtractFrom_S;
  return static_cast<FastOperation>(static_cast<std::uint32_t>(first) + static_cast<std::uint32_t>(right));
}

constexpr std::uint32_t kPairs = 8;

} // namespace

FastCompiler::ValueKind FastCompiler::KindOf(const FastNode& node) {
  const auto ofItem = [](const CVarBase& item) {
    switch (item.GetType()) {
    case BVT_NUMBER: return ValueKind::Number;
    case BVT_STRING: return ValueKind::Text;
    case BVT_OBJECT: return ValueKind::Other;
    default: return ValueKind::Unknown;
    }
  };
  switch (node.kind) {
  case FastNode::Number:
  case FastNode::Minus: return ValueKind::Number;
  case FastNode::Text: return ValueKind::Text;
  case FastNode::Group: return KindOf(*node.left);
  case FastNode::Arithmetic:
    if (KindOf(*node.left) != ValueKind::Text)
      return ValueKind::Number;
    return node.operation == u'+' ? ValueKind::Text : ValueKind::Other;
  case FastNode::Variable:
  case FastNode::Element: {
    const VariableSlot* slot = m_state.m_mapVariables.Find(m_interpreter.RefOf(*node.token), m_state.m_nScopeLevel);
    if (slot == nullptr)
      return ValueKind::Unknown;
    if (node.kind == FastNode::Variable && slot->GetNumItems() > 1)
      return ValueKind::Other;
    return ofItem(slot->CurrentItem());
  }
  case FastNode::Call: {
    const CFuncDesc* function = FunctionOf(node);
    if (function == nullptr)
      return ValueKind::Unknown;
    switch (function->m_nCode) {
    case FUNCTION_LEFT:
    case FUNCTION_RIGHT:
    case FUNCTION_MID:
    case FUNCTION_LCASE:
    case FUNCTION_UCASE:
    case FUNCTION_REPLACE:
    case FUNCTION_REPEAT:
    case FUNCTION_FORMAT:
    case FUNCTION_STR:
    case FUNCTION_READLINE: return ValueKind::Text;
    case FUNCTION_SCRIPT: {
      // What the variable of that name holds at the callee's level is what the last call there gave.
      const auto ref = m_state.m_mapVariables.Ref(function->m_strName);
      const VariableSlot* slot = m_state.m_mapVariables.Find(ref, m_state.m_nScopeLevel + 1);
      return slot == nullptr ? ValueKind::Unknown : ofItem(slot->CurrentItem());
    }
    default: return ValueKind::Unknown;
    }
  }
  }
  return ValueKind::Unknown;
}

// Whether evaluating it may run code that changes variables: a script's, or that of a handler while a box is up.
bool FastCompiler::HasEffects(const FastNode& node) {
  switch (node.kind) {
  case FastNode::Number:
  case FastNode::Text:
  case FastNode::Variable: return false;
  case FastNode::Minus:
  case FastNode::Group:
  case FastNode::Element: return HasEffects(*node.left);
  case FastNode::Arithmetic: return HasEffects(*node.left) || HasEffects(*node.right);
  case FastNode::Call:
    if (!IsIntrinsic(node))
      return true;
    for (const FastNode* argument : node.arguments)
      if (HasEffects(*argument))
        return true;
    return false;
  }
  return true;
}

// Whether it reads an array's item, which moves the array's current index.
bool FastCompiler::HasItems(const FastNode& node) {
  if (node.kind == FastNode::Element)
    return true;
  for (const FastNode* argument : node.arguments)
    if (HasItems(*argument))
      return true;
  return (node.left != nullptr && HasItems(*node.left)) || (node.right != nullptr && HasItems(*node.right));
}

// Whether the first thing that evaluating it does is to test that variable as a left operand.
bool FastCompiler::TestsFirst(const FastNode& node, std::uint32_t slot) {
  std::uint32_t first = 0;
  switch (node.kind) {
  case FastNode::Variable: return LocalSlot(*node.token, first) && first == slot;
  case FastNode::Arithmetic: return node.left->kind != FastNode::Element && TestsFirst(*node.left, slot);
  case FastNode::Element: return !HasItems(*node.left) && TestsFirst(*node.left, slot);
  case FastNode::Group: return TestsFirst(*node.left, slot);
  default: return false;
  }
}

// Whether an operand that is read only behind the evaluation of what follows it would show: then a call could have
// changed it, or the failure of the operand, on which the executing parser reads no further, comes when an array's
// current index has moved already.
bool FastCompiler::MayDiverge(const Operand& operand, const FastNode& later) {
  return operand.kind == Operand::S && !operand.isLive &&
         (HasEffects(later) || (HasItems(later) && !TestsFirst(later, operand.slot)));
}

// An operand that is not in a temporary yet goes there: a variable, a constant, a value that a call gave.
bool FastCompiler::InNumberTemporary(FastNode& node, bool isLeft, Operand& operand) {
  if (operand.kind == Operand::N)
    return true;
  const std::size_t live = CountLive() - (operand.isLive ? 1 : 0);
  const Operand source = operand;
  const std::size_t cell = source.kind == Operand::K
                               ? Emit(FastOperation::LoadConstant)
                               : Emit(isLeft ? FastOperation::LoadLeft : FastOperation::LoadRight, 0, source.slot);
  if (source.kind == Operand::K)
    EmitData(nullptr, source.number);
  PopTo(live);
  if (!NewNumber(operand))
    return false;
  m_chunk->cells[cell].a = operand.slot;
  Push(operand, node);
  return true;
}

bool FastCompiler::NumberOperand(FastNode& node, bool isLeft, Operand& out) {
  if (isLeft && (KindOf(node) == ValueKind::Text || KindOf(node) == ValueKind::Other))
    return false;
  switch (node.kind) {
  case FastNode::Number: out = Operand{Operand::K, 0, node.token->number}; return true;
  case FastNode::Text: out = Operand{Operand::K, 0, ParseDouble(node.token->text.View())}; return true;
  case FastNode::Variable: {
    std::uint32_t slot = 0;
    VariableSlot* global = nullptr;
    if (!ResolveName(*node.token, slot, global))
      return false;
    if (global == nullptr) {
      out = Operand{Operand::S, slot};
      return true;
    }
    if (!NewNumber(out))
      return false;
    Emit(FastOperation::LoadGlobal, out.slot, isLeft ? 1 : 0);
    EmitData(global);
    Push(out, node);
    return true;
  }
  case FastNode::Element:
    if (!ItemTo(node, nullptr, out))
      return false;
    Push(out, node);
    return true;
  case FastNode::Arithmetic:
    if (KindOf(node) == ValueKind::Text)
      return ValueInTemporary(node, out);
    if (!Arithmetic(node, nullptr, out))
      return false;
    Push(out, node);
    return true;
  case FastNode::Minus: {
    if (node.operation != u'-')
      return false;
    const std::size_t live = CountLive();
    Operand operand;
    if (!NumberOperand(*node.left, false, operand) || !InNumberTemporary(*node.left, false, operand))
      return false;
    const std::size_t cell = Emit(FastOperation::Negate, 0, operand.slot);
    PopTo(live);
    if (!NewNumber(out))
      return false;
    m_chunk->cells[cell].a = out.slot;
    Push(out, node);
    return true;
  }
  case FastNode::Group:
    if (!NumberOperand(*node.left, isLeft, out))
      return false;
    if (out.isLive)
      Relabel(node);
    return true;
  case FastNode::Call: return Call(node, out, false);
  }
  return false;
}

// Ends in `variable` when there is one, else in a new temporary, which is not yet live.
bool FastCompiler::Arithmetic(FastNode& node, const std::uint32_t* variable, Operand& out) {
  const std::size_t live = CountLive();
  const bool inTemporaries = node.operation == u'^' || node.operation == u'%';
  Operand left;
  if (!NumberOperand(*node.left, true, left))
    return false;
  if (inTemporaries || MayDiverge(left, *node.right))
    if (!InNumberTemporary(*node.left, true, left))
      return false;
  const std::size_t deferred = CountDeferred();
  Defer(left);
  Operand right;
  if (!NumberOperand(*node.right, false, right))
    return false;
  if (inTemporaries && !InNumberTemporary(*node.right, false, right))
    return false;
  if (left.kind == Operand::K && right.kind == Operand::K && !InNumberTemporary(*node.left, true, left))
    return false;

  std::size_t cell = 0;
  if (inTemporaries) {
    cell = Emit(node.operation == u'^' ? FastOperation::Power : FastOperation::Remainder, 0, left.slot, right.slot);
  } else {
    auto operation = PairOf(ArithmeticOf(node.operation), left.kind, right.kind);
    const bool isOwn = variable != nullptr && left.kind == Operand::S && left.slot == *variable;
    if (isOwn && (node.operation == u'+' || node.operation == u'-'))
      operation = OwnOf(node.operation, right.kind);
    else if (variable != nullptr)
      operation = static_cast<FastOperation>(static_cast<std::uint32_t>(operation) + kPairs);
    cell = Emit(operation, variable != nullptr ? *variable : 0, left.slot, right.slot);
    if (left.kind == Operand::K || right.kind == Operand::K)
      EmitData(nullptr, left.kind == Operand::K ? left.number : right.number);
  }
  PopTo(live);
  m_deferred.resize(deferred);
  if (variable != nullptr && !inTemporaries)
    return true;
  if (!NewNumber(out))
    return false;
  m_chunk->cells[cell].a = out.slot;
  if (variable != nullptr) {
    Push(out, node);
    Emit(FastOperation::StoreNumber, *variable, out.slot);
    PopTo(live);
  }
  return true;
}

// `later` is evaluated before the index is used.
bool FastCompiler::IndexOperand(FastNode& index, const FastNode* later, Operand& out) {
  if (!NumberOperand(index, true, out))
    return false;
  if (out.kind == Operand::K || (later != nullptr && MayDiverge(out, *later)))
    return InNumberTemporary(index, true, out);
  return true;
}

// An array's item: whatever it is into `slot`, or as a number into a new temporary that is not yet live.
bool FastCompiler::ItemTo(FastNode& node, const std::uint32_t* slot, Operand& out) {
  const std::size_t live = CountLive();
  std::uint32_t array = 0;
  VariableSlot* global = nullptr;
  if (!ResolveName(*node.token, array, global))
    return false;
  Operand index;
  if (!IndexOperand(*node.left, nullptr, index))
    return false;
  std::size_t cell = 0;
  if (global == nullptr) {
    cell = Emit(slot != nullptr ? FastOperation::ItemValue : FastOperation::ItemNumber, 0, array, index.slot);
  } else {
    cell = Emit(slot != nullptr ? FastOperation::GlobalItemValue : FastOperation::GlobalItemNumber, 0, 0, index.slot);
    EmitData(global);
  }
  PopTo(live);
  if (slot != nullptr) {
    m_chunk->cells[cell].a = *slot;
    return true;
  }
  if (!NewNumber(out))
    return false;
  m_chunk->cells[cell].a = out.slot;
  return true;
}

// Whatever it is into a slot that may be overwritten: a variable, as the last thing that a statement does, or a free
// temporary.
bool FastCompiler::ValueTo(FastNode& node, std::uint32_t slot) {
  Operand out;
  const std::size_t live = CountLive();
  switch (node.kind) {
  case FastNode::Number:
    Emit(FastOperation::StoreConstant, slot);
    EmitData(nullptr, node.token->number);
    return true;
  case FastNode::Text:
    Emit(FastOperation::StoreText, slot);
    EmitData(&node.token->text);
    return true;
  case FastNode::Variable: {
    std::uint32_t source = 0;
    VariableSlot* global = nullptr;
    if (!ResolveName(*node.token, source, global))
      return false;
    if (global == nullptr) {
      Emit(FastOperation::Copy, slot, source);
    } else {
      Emit(FastOperation::CopyFromGlobal, slot);
      EmitData(global);
    }
    return true;
  }
  case FastNode::Element: return ItemTo(node, &slot, out);
  case FastNode::Group: return ValueTo(*node.left, slot);
  case FastNode::Arithmetic:
    switch (KindOf(node)) {
    case ValueKind::Text: return JoinTo(node, slot);
    case ValueKind::Other: return false;
    default: return Arithmetic(node, &slot, out);
    }
  case FastNode::Minus:
  case FastNode::Call:
    if (!NumberOperand(node, false, out))
      return false;
    if (out.kind == Operand::N)
      Emit(out.isInteger ? FastOperation::StoreInteger : FastOperation::StoreNumber, slot, out.slot);
    else if (out.slot != slot)
      Emit(FastOperation::Move, slot, out.slot);
    PopTo(live);
    return true;
  }
  return false;
}

// The value of any kind in a temporary of its own, live.
bool FastCompiler::ValueInTemporary(FastNode& node, Operand& out) {
  const std::uint32_t slot = NextValue();
  if (slot >= VariableStore::kTemporaries * kSlotSize || !ValueTo(node, slot) || !NewValue(out))
    return false;
  Push(out, node);
  return true;
}

FastCompiler::PartUse FastCompiler::PartUseFor(const FastNode& node) {
  if (HasEffects(node))
    return PartUse::Kept;
  return HasItems(node) ? PartUse::Tested : PartUse::InPlace;
}

bool FastCompiler::TextParts(FastNode& node, std::vector<FastPart>& parts, PartUse use) {
  if (node.kind != FastNode::Arithmetic || KindOf(node) != ValueKind::Text) {
    const bool isFirst = parts.empty();
    if (!TextPart(node, parts, isFirst && use == PartUse::Tested ? PartUse::InPlace : use))
      return false;
    // The first "+" fails before what stands behind its right operand is read.
    if (isFirst && use != PartUse::InPlace && parts.front().kind != FastPart::Constant) {
      if (parts.front().kind != FastPart::Slot)
        return false;
      Emit(FastOperation::Check, parts.front().slot, 1);
    }
    return true;
  }
  return TextParts(*node.left, parts, use) && TextPart(*node.right, parts, use);
}

bool FastCompiler::TextPart(FastNode& node, std::vector<FastPart>& parts, PartUse use) {
  FastPart part;
  Operand operand;
  switch (node.kind) {
  case FastNode::Text:
    part.kind = FastPart::Constant;
    part.text = node.token->text;
    break;
  case FastNode::Number:
    part.kind = FastPart::Constant;
    part.text = FormatFixed(node.token->number);
    break;
  case FastNode::Variable: {
    VariableSlot* global = nullptr;
    if (!ResolveName(*node.token, part.slot, global))
      return false;
    if (global == nullptr && use != PartUse::Kept) {
      if (use != PartUse::InPlace)
        Emit(FastOperation::Check, part.slot);
      Defer(Operand{Operand::S, part.slot});
      break;
    }
    if (!ValueInTemporary(node, operand))
      return false;
    part.slot = operand.slot;
    break;
  }
  case FastNode::Call:
    if (!Call(node, operand, false))
      return false;
    part.slot = operand.slot;
    if (operand.kind == Operand::N)
      part.kind = operand.isInteger ? FastPart::Integer : FastPart::Number;
    break;
  default:
    if (KindOf(node) == ValueKind::Other || !ValueInTemporary(node, operand))
      return false;
    part.slot = operand.slot;
    break;
  }
  parts.push_back(std::move(part));
  return true;
}

bool FastCompiler::JoinTo(FastNode& node, std::uint32_t slot) {
  const std::size_t live = CountLive();
  const std::size_t deferred = CountDeferred();
  std::vector<FastPart> parts;
  if (!TextParts(node, parts, PartUseFor(node)))
    return false;
  m_code.m_parts.push_back(std::move(parts));
  Emit(FastOperation::Join, slot);
  EmitData(&m_code.m_parts.back());
  PopTo(live);
  m_deferred.resize(deferred);
  return true;
}

} // namespace brindle
