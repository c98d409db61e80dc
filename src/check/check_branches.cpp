// Branches, loops and jumps: where the way goes on.
#include "check/checker.h"

namespace brindle {

bool ScriptChecker::If(const Token& word) {
  const Outcome outcome = Condition("if");
  bool hasThen = false;
  if (outcome != Outcome::Fails) {
    const Token& next = m_reader.Next();
    hasThen = next.command == COMMAND_THEN;
    if (!hasThen) {
      const std::string_view dialect = next.kind == TOKEN_VARIABLE ? HintForOperand(next.lowered.View()) : "";
      if (!dialect.empty())
        Report(ProblemCode::LogicalWord, next, Quoted(next) + " is no operator",
               "A condition is one comparison, and what follows is error 9. " + std::string(dialect));
      else if (next.kind == TOKEN_LABEL && next.lowered == u"then") {
        m_noLabels.insert(next.start);
        Report(ProblemCode::MissingThen, next, "\"then:\" is read as a label",
               "A word with a colon right behind it is a label: error 9. Write then without the colon.");
      } else if (next.kind == TOKEN_DELIMITER && next.command != COMMAND_END_OF_LINE && next.text.GetLength() == 1 &&
                 std::u16string_view(u"=<>!~").find(next.text.GetAt(0)) != std::u16string_view::npos)
        Report(ProblemCode::MissingThen, next, "a condition has one comparison",
               "Behind the second expression stands then: error 9. Nest two ifs.");
      else
        Report(ProblemCode::MissingThen, Blamed(next, word), "then is missing behind the condition",
               "This is error 9. Write if a = b then ... endif.");
    }
  }
  if (!hasThen) {
    // The branches are looked at as if the line were whole.
    const Token* token = &m_reader.Current();
    while (token->command != COMMAND_THEN && token->command != COMMAND_END_OF_LINE &&
           token->command != COMMAND_END_OF_PROGRAM && token->end > token->start)
      token = &m_reader.Next();
    if (token->command != COMMAND_THEN) {
      m_reader.PutBack();
      Recover();
    }
  }
  const std::uint32_t then = m_reader.Position();

  m_pairs.Skip(PairIndex::Block::If);
  const COMMAND_TYPE stop = m_reader.Current().command;
  if (stop == COMMAND_ELSE || stop == COMMAND_ENDIF) {
    if (outcome != Outcome::Always)
      GoTo(m_reader.Position(), m_state);
  } else if (outcome != Outcome::Always && outcome != Outcome::Fails) {
    m_reader.SetPosition(then);
    const Token& behind = m_reader.Peek();
    const bool oneLine = behind.command != COMMAND_END_OF_LINE && behind.kind != TOKEN_COMMENT;
    Report(ProblemCode::MissingEndIf, word, "this if has no endif",
           oneLine ? "There is no if of one line: a condition that does not hold skips to the end of the script, which "
                     "is error 56. Write endif, on the same line if you like."
                   : "A condition that does not hold skips to the end of the script, which is error 56. Write endif "
                     "behind the last statement; else if needs two.");
  }
  m_reader.SetPosition(then);
  return outcome != Outcome::Never;
}

// Reached behind a branch that ran: skips the other one.
bool ScriptChecker::Else(const Token& word) {
  const Token& next = m_reader.Peek();
  const bool elseIf = next.command == COMMAND_IF;
  m_pairs.Skip(PairIndex::Block::If);
  if (m_reader.Current().command == COMMAND_ENDIF) {
    GoTo(m_reader.Position(), m_state);
    return false;
  }
  if (m_reader.Current().command == COMMAND_ELSE) {
    Report(ProblemCode::MissingEndIf, word, "a second else follows this one",
           "The branch that ran skips to it, which is error 56. An if has one else.");
    return false;
  }
  if (elseIf)
    Report(
        ProblemCode::ElseIf, word, "else if without an endif of its own",
        "The if behind else is an if of its own and needs a second endif; behind the first branch this is error 56.");
  else
    Report(ProblemCode::MissingEndIf, word, "this else has no endif",
           "Behind the branch that ran this is error 56. Write endif behind the last statement.");
  return false;
}

// Which loops are open behind one that fails is anybody's guess.
bool ScriptChecker::LoopFails() {
  m_state.loops.clear();
  m_state.loopsKnown = false;
  Recover();
  return true;
}

bool ScriptChecker::For(const Token& word) {
  const Token& variable = m_reader.Next();
  if (variable.kind != TOKEN_VARIABLE) {
    if (variable.kind == TOKEN_KEYWORD || variable.kind == TOKEN_COMMAND)
      Report(ProblemCode::WordAsName, variable, "\"" + Spelling(variable) + "\" is a word of the language",
             "It cannot count a loop: error 4. Take another name.");
    else
      Report(ProblemCode::WordSyntax, word, "behind for stands a variable", "This is error 4. Write for i = 1 to 10.");
    return LoopFails();
  }
  m_reader.Next();
  if (!m_reader.IsDelimiter(u'=')) {
    Report(ProblemCode::WordSyntax, variable, "behind the variable of for stands =",
           "This is error 4. Write for i = 1 to 10; there is no for each, loop from 0 to ubound(\"name\") - 1.");
    return LoopFails();
  }
  Operand start;
  if (!Expression(start)) {
    return LoopFails();
  }
  CheckGlobalCase(variable);
  SetKinds(variable, kNumberValue, false);
  const Token& to = m_reader.Next();
  if (to.command != COMMAND_TO) {
    Report(ProblemCode::MissingTo, Blamed(to, word), "to is missing",
           "This is error 10, and the body runs once. Write for i = 1 to 10.");
    return LoopFails();
  }
  Operand end;
  const Token& limit = m_reader.Peek();
  if (limit.kind == TOKEN_VARIABLE && KindsOf(limit) == kUndefinedValue && start.number && *start.number > 0) {
    Report(ProblemCode::UnsetRead, limit, "the variable " + Quoted(limit) + " is read but was never assigned",
           "As the end of a loop it counts as 0, and the loop is skipped without an error. Assign it first.");
    m_pairs.Skip(PairIndex::Block::For);
    return true;
  }
  if (!Expression(end)) {
    return LoopFails();
  }
  if (start.number && *start.number == 0 && end.call != nullptr && end.call->lowered == u"ubound")
    Report(ProblemCode::UboundInclusive, *end.call, "the loop goes one element too far",
           "ubound is the number of elements, and the last index is one less: the last round reads another element, or "
           "writes outside (error 36). Write to ubound(...) - 1.");

  const std::uint32_t body = m_reader.Position();
  m_pairs.Skip(PairIndex::Block::For);
  const bool never = start.number && end.number && *end.number < *start.number;
  const bool always = start.number && end.number && !never;
  if (m_reader.Current().command == COMMAND_NEXT) {
    if (!always)
      GoTo(m_reader.Position(), m_state);
  } else {
    Report(ProblemCode::MissingNext, word, "this for has no next",
           "The body runs once, or the rest of the script is skipped, without an error. Write next behind the body.");
  }
  if (never)
    return false;
  FlowState inside = m_state;
  inside.loops.push_back({true, m_reader.PastBlanks(body)});
  GoTo(body, inside);
  m_state = inside;
  m_reader.SetPosition(body);
  return true;
}

bool ScriptChecker::Next(const Token& word) {
  if (const Token& behind = m_reader.Peek(); behind.kind == TOKEN_VARIABLE) {
    m_reader.Next();
    const Token& then = m_reader.Peek();
    m_reader.PutBack();
    if (then.kind != TOKEN_DELIMITER || (then.text != u"=" && then.text != u"[")) {
      Report(
          ProblemCode::LoopVariable, behind, "next takes no variable",
          "next ends the innermost for; the name begins a statement of its own, which is error 3. Write next alone.");
      m_reader.SetPosition(behind.end);
    }
  }
  if (!m_state.loops.empty()) {
    const OpenLoop loop = m_state.loops.back();
    m_state.loops.pop_back();
    if (!loop.isFor) {
      Report(ProblemCode::NextWithoutFor, word, "the innermost loop here is a do",
             "next ends whatever loop was begun last, and a do is error 55. Close the do by loop first.");
      return true;
    }
    FlowState again = m_state;
    again.loops.push_back(loop);
    GoTo(loop.target, again);
    return true;
  }
  if (m_state.loopsKnown) {
    Report(ProblemCode::NextWithoutFor, word, "next without a for", "No loop is open here: error 55.");
    return true;
  }
  // It is not known which loop this ends: it may be any.
  for (const auto& meeting : std::vector<std::uint32_t>(m_context->meetings.begin(), m_context->meetings.end()))
    if (meeting < word.start && m_context->states.contains(meeting) && !m_context->states.at(meeting).loops.empty() &&
        m_context->states.at(meeting).loops.back().target == meeting)
      GoTo(meeting, m_state);
  return true;
}

bool ScriptChecker::Do(const Token& word) {
  const Token& next = m_reader.Next();
  if (next.keyword != KEYWORD_WHILE) {
    Report(ProblemCode::MissingWhile, Blamed(next, word), "behind do stands while",
           next.lowered == u"until"
               ? "There is no until: error 54. Write do while with the opposite comparison."
               : "This is error 54, and nothing is repeated; the condition stands at the top. Write do while a < b ... "
                 "loop.");
    return LoopFails();
  }
  const Outcome outcome = Condition("do while");
  if (outcome == Outcome::Fails)
    Recover();
  const std::uint32_t body = m_reader.Position();
  m_pairs.Skip(PairIndex::Block::Do);
  if (m_reader.Current().command == COMMAND_LOOP) {
    if (outcome != Outcome::Always)
      GoTo(m_reader.Position(), m_state);
  } else {
    Report(ProblemCode::MissingLoop, word, "this do has no loop",
           "The body runs once, or the rest of the script is skipped, without an error. Write loop behind the body.");
  }
  m_reader.SetPosition(body);
  m_state.loops.push_back({false, word.start}); // "loop" comes back to the word
  return outcome != Outcome::Never;
}

bool ScriptChecker::Loop(const Token& word) {
  const Token& behind = m_reader.Peek();
  if (behind.keyword == KEYWORD_WHILE || (behind.kind == TOKEN_VARIABLE && behind.lowered == u"until")) {
    Report(ProblemCode::MissingWhile, behind, "the condition of a loop stands at its top",
           "What stands behind loop is no part of it. Write do while a < b ... loop.");
    Recover();
  }
  if (m_state.loops.empty()) {
    if (m_state.loopsKnown)
      Report(ProblemCode::LoopWithoutDo, word, "loop without a do", "No loop is open here: it does nothing.");
    else // any do may be the one
      for (const std::uint32_t start : m_outline.doWords)
        if (start < word.start && m_context->states.contains(start))
          GoTo(start, m_state);
    return true;
  }
  const OpenLoop loop = m_state.loops.back();
  m_state.loops.pop_back();
  if (loop.isFor) {
    Report(ProblemCode::CrossedLoops, word, "the innermost loop here is a for",
           "loop goes back into its body once, without counting, and the for is over. Close the for by next first.");
    return true;
  }
  GoTo(loop.target, m_state);
  return false;
}

bool ScriptChecker::Goto() {
  const Token& name = m_reader.Next();
  const auto label = m_outline.labels.find(name.text);
  if (label != m_outline.labels.end()) {
    GoTo(label->second.front()->end, m_state);
    return false;
  }
  std::string hint =
      "This is error 7, and the script goes on behind it. A label is a name with a colon right behind it.";
  for (const auto& [other, places] : m_outline.labels)
    if (other.CompareNoCase(name.text) == 0)
      hint = "Upper and lower case count in labels, and this is error 7. Write " + other.ToUtf8() + ".";
  const bool missing = &Blamed(name, *m_statement) != &name;
  Report(ProblemCode::UnknownLabel, missing ? *m_statement : name,
         missing ? std::string("goto names no label") : "there is no label " + Quoted(name), std::move(hint));
  if (name.command == COMMAND_END_OF_LINE)
    m_reader.PutBack();
  return true;
}

void ScriptChecker::End(const Token& word) {
  const Token& next = m_reader.Peek();
  const bool isTwoWords = next.command == COMMAND_IF || next.command == COMMAND_SUB ||
                          next.command == COMMAND_FUNCTION || next.command == COMMAND_TYPE_WORD ||
                          next.command == COMMAND_DIALOG ||
                          (next.kind == TOKEN_VARIABLE && (next.lowered == u"select" || next.lowered == u"while"));
  if (isTwoWords && word.lowered == u"end")
    Report(ProblemCode::EndIf, word, "\"end\" ends the whole script here",
           "The run stops without a word, and the block stays open. Write end" + next.lowered.ToUtf8() +
               " in one word.");
}

void ScriptChecker::Return(const Token& word) {
  const Token& behind = m_reader.Peek();
  const bool alone = behind.kind == TOKEN_COMMENT || behind.kind == TOKEN_COMMAND ||
                     behind.command == COMMAND_END_OF_LINE || behind.command == COMMAND_END_OF_PROGRAM ||
                     (behind.kind == TOKEN_DELIMITER && behind.text == u":");
  if (!InProcedure()) {
    Report(ProblemCode::MisplacedReturn, word, "return stands in the main program",
           "This is error 14, and the script goes on. Write end, or goto a label.");
    return;
  }
  if (!alone)
    Report(ProblemCode::ReturnValue, behind, "return gives no value",
           "What stands behind it is never read. Write " + Procedure().name->text.ToUtf8() +
               " = value, and return on its own.");
  EndOfProcedure();
}

} // namespace brindle
