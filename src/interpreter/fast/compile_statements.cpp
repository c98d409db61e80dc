// Statements: only the well-formed ones, as the executing parser reads them. A statement that is refused is run by
// that parser each time.
#include "interpreter/fast/compiler.h"

#include "interpreter/fast/machine.h"
#include "interpreter/state.h"
#include "platform/number_text.h"
#include "platform/unicode.h"

#include <algorithm>

namespace brindle {

namespace {

constexpr std::size_t kMostCells = 60000;  // of one piece
constexpr std::uint32_t kMostCompiles = 5; // of one statement, whose variables change their kinds

} // namespace

// Delimiters, labels and comments cost nothing: what is run next is the first token that means something.
const Token& FastCompiler::Significant(std::uint32_t position) {
  for (;;) {
    const Token& token = m_text.TokenAt(SkipBlanks(m_text.Text(), position), m_state.words);
    const bool isPassed = (token.kind == TOKEN_DELIMITER && token.command != COMMAND_END_OF_PROGRAM) ||
                          token.kind == TOKEN_LABEL || token.kind == TOKEN_COMMENT;
    position = token.end;
    if (token.command == COMMAND_REM || token.command == COMMAND_ENDIF) {
      while (token.command == COMMAND_REM && !IsLineEnd(m_text.At(position)))
        ++position;
    } else if (!isPassed) {
      return token;
    }
  }
}

FastEntry* FastCompiler::EntryFrom(std::uint32_t position) {
  return &m_code.EntryOf(Significant(position));
}

void FastCompiler::BeginStatement(FastEntry& entry, const Token& first) {
  if (entry.statement == nullptr) {
    m_code.m_statements.push_back({});
    entry.statement = &m_code.m_statements.back();
    entry.statement->entry = &entry;
  }
  m_statement = entry.statement;
  m_statement->bails = 0;
  ++m_statement->compiles;
  m_live.clear();
  m_deferred.clear();
  m_numbers = m_values = m_recordedNames = 0;
  m_fallsThrough = true;
  if (m_isCounting && first.command != COMMAND_RETURN && first.command != COMMAND_ENDFUNCTION &&
      first.command != COMMAND_ENDSUB)
    Emit(FastOperation::Count);
  m_firstCell = m_chunk->cells.size();
}

void FastCompiler::DropStatement(std::size_t firstCell) {
  m_chunk->cells.resize(firstCell);
  m_chunk->operands.resize(firstCell);
  m_chunk->statements.resize(firstCell);
  m_live.clear();
  m_deferred.clear();
  m_numbers = m_values = 0;
}

void FastCompiler::Compile(const Token& first) {
  m_code.m_chunks.emplace_back();
  m_chunk = &m_code.m_chunks.back();
  std::vector<std::pair<FastEntry*, std::size_t>> compiled;

  const Token* token = &first;
  for (;;) {
    FastEntry& entry = m_code.EntryOf(*token);
    const bool isCandidate = token->kind == TOKEN_VARIABLE || token->kind == TOKEN_COMMAND;
    m_live.clear();
    m_deferred.clear();
    m_statement = nullptr;
    const bool isTooMany = entry.statement != nullptr && entry.statement->compiles >= kMostCompiles;
    if (isTooMany)
      entry.refused = true;
    if (entry.IsCompiled() || entry.refused || !isCandidate || entry.runs < m_state.fast.Threshold() ||
        m_chunk->cells.size() > kMostCells) {
      EmitJump(entry);
      break;
    }
    const std::size_t firstCell = m_chunk->cells.size();
    BeginStatement(entry, *token);
    if (!Statement(*token) || m_parser.IsRefused()) {
      DropStatement(firstCell);
      entry.refused = true;
      m_statement = nullptr;
      EmitJump(entry);
      break;
    }
    compiled.emplace_back(&entry, firstCell);
    entry.refused = true; // until its address is known
    const Token& next = Significant(m_next);
    FastEntry& following = m_code.EntryOf(next);
    if (!m_fallsThrough && (following.IsCompiled() || following.runs < m_state.fast.Threshold()))
      break;
    token = &next;
  }
  for (const auto& [entry, cell] : compiled) {
    entry->refused = false;
    entry->code = &m_chunk->cells[cell];
    entry->statement->first = &m_chunk->cells[cell];
  }
}

bool FastCompiler::Statement(const Token& first) {
  m_parser.Start(first.end);
  m_next = first.end;
  if (first.kind == TOKEN_VARIABLE)
    return Assignment(first);
  switch (first.command) {
  case COMMAND_IF: return If();
  case COMMAND_ELSE: return Else();
  case COMMAND_FOR: return For();
  case COMMAND_LOOP:
    if (Loop(first))
      return true;
    DropStatement(m_firstCell);
    m_next = first.end;
    m_code.m_loops.emplace_back();
    Emit(FastOperation::Loop);
    EmitData(&m_code.m_loops.back());
    return true;
  case COMMAND_NEXT:
    m_code.m_loops.emplace_back();
    Emit(FastOperation::Next);
    EmitData(&m_code.m_loops.back());
    return true;
  case COMMAND_DO: return Do(first);
  case COMMAND_GOTO: return Goto();
  case COMMAND_CALL: return CallStatement();
  case COMMAND_RETURN:
  case COMMAND_ENDFUNCTION:
  case COMMAND_ENDSUB:
    // Only a body ends here; in the flow of the main program the executing parser says what it means.
    Emit(FastOperation::Return, first.start, first.end);
    m_fallsThrough = false;
    return true;
  default: return false;
  }
}

bool FastCompiler::Assignment(const Token& name) {
  if (!IsLetter(name.text.GetAt(0)))
    return false;
  FastNode* const place = m_parser.Place(name);
  if (place == nullptr || !FastParser::IsDelimiter(m_parser.Take(), u'='))
    return false;
  FastNode* const value = m_parser.Expression();
  if (value == nullptr)
    return false;
  m_next = m_parser.Position();
  if (place->kind == FastNode::Element)
    return AssignElement(*place, *value);

  std::uint32_t slot = 0;
  VariableSlot* global = nullptr;
  if (!ResolveName(name, slot, global))
    return false;
  if (global == nullptr)
    return ValueTo(*value, slot);
  const std::size_t live = CountLive();
  Operand source;
  // A value that is only read is stored as what it is then, also from within parentheses.
  const FastNode* inner = value;
  while (inner->kind == FastNode::Group)
    inner = inner->left;
  if (KindOf(*value) != ValueKind::Number || inner->kind == FastNode::Variable || inner->kind == FastNode::Element) {
    if (!ValueInTemporary(*value, source))
      return false;
  } else if (!NumberOperand(*value, false, source)) {
    return false;
  }
  if (source.kind == Operand::K && !InNumberTemporary(*value, false, source))
    return false;
  if (source.isInteger) {
    Operand integer;
    if (!NewValue(integer))
      return false;
    Emit(FastOperation::StoreInteger, integer.slot, source.slot);
    PopTo(live); // one value for one piece of text
    Push(integer, *value);
    source = integer;
  }
  Emit(FastOperation::MoveToGlobal, 0, source.slot);
  EmitData(global);
  return true;
}

// The index is read before the value, but tested when the value is there.
bool FastCompiler::AssignElement(FastNode& place, FastNode& value) {
  std::uint32_t array = 0;
  VariableSlot* global = nullptr;
  Operand index;
  if (!ResolveName(*place.token, array, global) || !IndexOperand(*place.left, &value, index))
    return false;
  Defer(index);
  if (value.kind == FastNode::Number && global == nullptr) {
    Emit(FastOperation::SetItemConstant, array, index.slot);
    EmitData(nullptr, value.token->number);
    return true;
  }
  Operand source;
  std::uint32_t slot = 0;
  VariableSlot* globalSource = nullptr;
  if (value.kind == FastNode::Variable && ResolveName(*value.token, slot, globalSource) && globalSource == nullptr) {
    source = Operand{Operand::S, slot};
  } else if (value.kind == FastNode::Number || value.kind == FastNode::Minus ||
             (value.kind == FastNode::Arithmetic && KindOf(value) == ValueKind::Number)) {
    if (!NumberOperand(value, false, source) || !InNumberTemporary(value, false, source))
      return false;
  } else if (!ValueInTemporary(value, source)) {
    return false;
  }
  if (global == nullptr) {
    Emit(FastOperation::SetItem, array, index.slot, source.slot);
  } else {
    Emit(FastOperation::SetGlobalItem, 0, index.slot, source.slot);
    EmitData(global);
  }
  return true;
}

bool FastCompiler::ReadCondition(FastNode*& left, LOGICAL_OPERATION& operation, FastNode*& right) {
  left = m_parser.Expression();
  if (left == nullptr)
    return false;
  // The interpreter's own reader of the operator: it depends on the reading position alone.
  const TokenState token = m_state.token;
  const std::uint32_t position = m_state.position;
  m_state.position = m_parser.Position();
  operation = m_interpreter.GetLogOperation();
  m_parser.MoveTo(m_state.position);
  m_state.position = position;
  m_state.token = token;
  if (operation == LOGICAL_NONE)
    return false;
  right = m_parser.Expression();
  return right != nullptr;
}

bool FastCompiler::EmitCondition(FastNode& left, LOGICAL_OPERATION operation, FastNode& right, FastEntry& entry,
                                 bool whenTrue) {
  const std::size_t live = CountLive();
  const std::size_t deferred = CountDeferred();
  const ValueKind kind = KindOf(left);
  if (kind == ValueKind::Other)
    return false;
  if (kind == ValueKind::Text) {
    if (whenTrue)
      return false;
    const bool isEquality = operation == LOGICAL_EQUAL || operation == LOGICAL_NOT_EQUAL;
    std::uint32_t slot = 0;
    const bool isLocal = left.kind == FastNode::Variable && LocalSlot(*left.token, slot);
    if (isEquality && right.kind == FastNode::Text && (isLocal || left.kind == FastNode::Element)) {
      Operand item;
      if (!isLocal && !ValueInTemporary(left, item))
        return false;
      Emit(FastOperation::IfTextIs, operation == LOGICAL_EQUAL ? 1 : 0, isLocal ? slot : item.slot);
      EmitData(&entry);
      EmitData(&right.token->text);
      PopTo(live);
      return true;
    }
    std::vector<FastPart> parts;
    const PartUse use = PartUseFor(right);
    if (!TextPart(left, parts, use) || !TextPart(right, parts, use))
      return false;
    m_code.m_parts.push_back(std::move(parts));
    Emit(FastOperation::IfText, static_cast<std::uint32_t>(operation));
    EmitData(&entry);
    EmitData(&m_code.m_parts.back());
    PopTo(live);
    m_deferred.resize(deferred);
    return true;
  }

  Operand x;
  Operand y;
  if (!NumberOperand(left, true, x))
    return false;
  if ((operation == LOGICAL_ABOUT_EQUAL || MayDiverge(x, right)) && !InNumberTemporary(left, true, x))
    return false;
  Defer(x);
  if (!NumberOperand(right, false, y))
    return false;
  if (x.kind == Operand::K && y.kind == Operand::K && !InNumberTemporary(left, true, x))
    return false;
  FastOperation first = FastOperation::IfAbout;
  switch (operation) {
  case LOGICAL_EQUAL: first = whenTrue ? FastOperation::WhileEqual_SS : FastOperation::IfEqual_SS; break;
  case LOGICAL_NOT_EQUAL: first = whenTrue ? FastOperation::WhileNotEqual_SS : FastOperation::IfNotEqual_SS; break;
  case LOGICAL_LESS: first = whenTrue ? FastOperation::WhileLess_SS : FastOperation::IfLess_SS; break;
  case LOGICAL_LESS_EQUAL: first = whenTrue ? FastOperation::WhileLessEqual_SS : FastOperation::IfLessEqual_SS; break;
  case LOGICAL_GREATER: first = whenTrue ? FastOperation::WhileGreater_SS : FastOperation::IfGreater_SS; break;
  case LOGICAL_GREATER_EQUAL:
    first = whenTrue ? FastOperation::WhileGreaterEqual_SS : FastOperation::IfGreaterEqual_SS;
    break;
  default: break;
  }
  if (first == FastOperation::IfAbout) {
    if (whenTrue || !InNumberTemporary(right, false, y))
      return false;
    Emit(first, 0, x.slot, y.slot);
  } else {
    const auto pair = static_cast<std::uint32_t>(x.kind * 3 + y.kind);
    Emit(static_cast<FastOperation>(static_cast<std::uint32_t>(first) + pair), 0, x.slot, y.slot);
  }
  EmitData(&entry, x.kind == Operand::K ? x.number : y.number);
  PopTo(live);
  m_deferred.resize(deferred);
  return true;
}

// Where a forward skip from behind the parser's position goes on; null when it does not end on a word that it should.
FastEntry* FastCompiler::EntryBehindSkip(COMMAND_TYPE open, COMMAND_TYPE close, COMMAND_TYPE middle) {
  const TokenState token = m_state.token;
  const std::uint32_t position = m_state.position;
  m_state.position = m_parser.Position();
  m_interpreter.FindLastPair(open, close, middle);
  const COMMAND_TYPE last = m_state.token.command;
  m_skippedTo = m_state.token.token->start;
  const std::uint32_t behind = m_state.position;
  m_state.position = position;
  m_state.token = token;
  return last == close || (middle != COMMAND_NONE && last == middle) ? EntryFrom(behind) : nullptr;
}

bool FastCompiler::If() {
  FastNode* left = nullptr;
  FastNode* right = nullptr;
  LOGICAL_OPERATION operation = LOGICAL_NONE;
  if (!ReadCondition(left, operation, right) || m_parser.Take().command != COMMAND_THEN)
    return false;
  m_next = m_parser.Position();
  FastEntry* const otherwise = EntryBehindSkip(COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE);
  return otherwise != nullptr && EmitCondition(*left, operation, *right, *otherwise);
}

// Reached only behind the branch that ran.
bool FastCompiler::Else() {
  m_next = m_parser.Position();
  const TokenState token = m_state.token;
  const std::uint32_t position = m_state.position;
  m_state.position = m_parser.Position();
  m_interpreter.FindLastPair(COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE);
  const bool isEnd = m_state.token.command == COMMAND_ENDIF;
  const std::uint32_t behind = m_state.position;
  m_state.position = position;
  m_state.token = token;
  if (!isEnd)
    return false;
  EmitJump(*EntryFrom(behind));
  m_fallsThrough = false;
  return true;
}

bool FastCompiler::For() {
  const Token& name = m_parser.Take();
  std::uint32_t slot = 0;
  if (name.kind != TOKEN_VARIABLE || !LocalSlot(name, slot) || !FastParser::IsDelimiter(m_parser.Take(), u'='))
    return false;
  FastNode* const start = m_parser.Expression();
  if (start == nullptr || m_parser.Take().command != COMMAND_TO)
    return false;
  FastNode* const end = m_parser.Expression();
  if (end == nullptr)
    return false;
  // The variable is assigned before the end value is read: no value of that may depend on it.
  if (HasEffects(*end))
    return false;
  const std::uint32_t body = m_parser.Peek().start;
  m_next = m_parser.Position();
  FastEntry* const behind = EntryBehindSkip(COMMAND_FOR, COMMAND_NEXT, COMMAND_NONE);
  Operand first;
  Operand last;
  if (behind == nullptr || Reads(*end, slot) || !NumberOperand(*start, false, first) ||
      !InNumberTemporary(*start, false, first))
    return false;
  const std::size_t endCells = m_chunk->cells.size();
  const std::int32_t started = m_live.back();
  if (HasItems(*end))
    Emit(FastOperation::Check, slot, 0, 1); // whose handlers could end the run
  if (!NumberOperand(*end, false, last) || !InNumberTemporary(*end, false, last))
    return false;
  Emit(FastOperation::For, slot, first.slot, last.slot);
  // The handlers of a variable that is watched run between the two: the end value is computed anew behind them.
  std::fill(m_chunk->operands.begin() + static_cast<std::ptrdiff_t>(endCells), m_chunk->operands.end(), started);
  EmitData(&name, body, 0U);
  EmitData(behind);
  return true;
}

bool FastCompiler::Reads(const FastNode& node, std::uint32_t slot) {
  if (node.kind == FastNode::Variable || node.kind == FastNode::Element) {
    std::uint32_t read = 0;
    VariableSlot* global = nullptr;
    if (!ResolveName(*node.token, read, global) || (global == nullptr && read == slot))
      return true;
  }
  for (const FastNode* argument : node.arguments)
    if (Reads(*argument, slot))
      return true;
  return (node.left != nullptr && Reads(*node.left, slot)) || (node.right != nullptr && Reads(*node.right, slot));
}

bool FastCompiler::Do(const Token& word) {
  const Token& keyword = m_parser.Take();
  FastNode* left = nullptr;
  FastNode* right = nullptr;
  LOGICAL_OPERATION operation = LOGICAL_NONE;
  if (keyword.kind != TOKEN_KEYWORD || keyword.keyword != KEYWORD_WHILE || !ReadCondition(left, operation, right))
    return false;
  m_next = m_parser.Position();
  FastEntry* const behind = EntryBehindSkip(COMMAND_DO, COMMAND_LOOP, COMMAND_NONE);
  if (behind == nullptr || !EmitCondition(*left, operation, *right, *behind))
    return false;
  m_code.m_doOfLoop[m_skippedTo] = word.start;
  Emit(FastOperation::PushLoop, word.start);
  return true;
}

// The condition stands here once more, so that the loop need not leave the control stack and come back to it: between
// the two nothing can look at it.
bool FastCompiler::Loop(const Token& word) {
  const auto known = m_code.m_doOfLoop.find(word.start);
  if (known == m_code.m_doOfLoop.end())
    return false;
  const Token& begin = m_text.TokenAt(known->second, m_state.words);
  m_parser.Start(begin.end);
  m_parser.Take(); // "while"
  FastNode* left = nullptr;
  FastNode* right = nullptr;
  LOGICAL_OPERATION operation = LOGICAL_NONE;
  if (!ReadCondition(left, operation, right) || HasEffects(*left) || HasEffects(*right))
    return false;
  FastStatement* const loop = m_statement;
  m_code.m_statements.push_back({});
  FastStatement* const condition = &m_code.m_statements.back();
  condition->entry = &m_code.EntryOf(begin);
  condition->loop = loop;
  FastEntry& body = *EntryFrom(m_parser.Position());
  const auto emit = [&] {
    m_statement = condition;
    const bool isEmitted = EmitCondition(*left, operation, *right, body, true);
    m_statement = loop;
    return isEmitted && !m_parser.IsRefused();
  };
  // The comparison looks whether the loop is on top of the control stack, unless something is computed before it.
  constexpr std::size_t kComparison = 2;
  const std::size_t first = m_chunk->cells.size();
  if (!m_isCounting && !emit())
    return false;
  if (m_chunk->cells.size() != first + kComparison) {
    DropStatement(first);
    Emit(FastOperation::LoopAgain, begin.start);
    if (m_isCounting) {
      m_statement = condition; // the "do" is a statement of its own
      Emit(FastOperation::Count);
    }
    if (!emit())
      return false;
  }
  m_chunk->cells[m_chunk->cells.size() - kComparison].a = begin.start;
  Emit(FastOperation::PopLoop);
  m_next = word.end;
  return true;
}

bool FastCompiler::Goto() {
  const auto position = m_text.FindLabel(m_parser.Take().text);
  if (!position || *position >= m_text.Length())
    return false;
  m_next = m_parser.Position();
  FastEntry& target = *EntryFrom(*position);
  m_chunk->cells[Emit(FastOperation::Goto)].SetTarget(target);
  m_fallsThrough = false;
  return true;
}

bool FastCompiler::CallStatement() {
  const Token& name = m_parser.Take();
  if (name.kind != TOKEN_FUNCTION)
    return false;
  FastNode* const call = m_parser.New(FastNode::Call, name);
  if (!m_parser.Arguments(*call))
    return false;
  m_next = m_parser.Position();
  Operand none;
  return Call(*call, none, true);
}

} // namespace brindle
