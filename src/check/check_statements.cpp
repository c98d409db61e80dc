// Assignments, print, files, maps, events: the statements that go on behind themselves.
#include "check/checker.h"

namespace brindle {

namespace {

bool IsName(const Token& token) {
  return token.kind == TOKEN_VARIABLE || token.kind == TOKEN_STRING;
}

} // namespace

// The target is the current token.
void ScriptChecker::Assignment() {
  const Token& target = m_reader.Current();
  const bool isVariable = target.kind == TOKEN_VARIABLE;
  const bool hasIndex = m_reader.UnitAt(m_reader.Position()) == u'[';
  Operand index;
  if (hasIndex) {
    m_reader.Next();
    if (!Index(index)) {
      Recover();
      return;
    }
  }
  m_reader.Next();
  if (!m_reader.IsDelimiter(u'=')) {
    MissingEqual(target, hasIndex);
    if (isVariable)
      SetKinds(target, kAnyValue, false);
    Recover();
    return;
  }
  if (isVariable)
    CheckGlobalCase(target);

  const ValueKinds known = isVariable ? KindsOf(target) : kAnyValue;
  if (isVariable && hasIndex && known == kUndefinedValue) {
    if (index.number && *index.number >= 1)
      Report(ProblemCode::UndefinedArray, target, "the array " + Quoted(target) + " was never made",
             "An assignment makes element 0 only, any other is error 35. Write dim " + target.text.ToUtf8() +
                 "[size] first.");
  }
  if (isVariable && hasIndex && index.number && (known & kUndefinedValue) == 0 &&
      (*index.number <= -1 || (*index.number >= 1 && (known & kManyValues) == 0)))
    Report(ProblemCode::IndexBounds, target, "the index is outside of " + Quoted(target),
           "This is error 36: indices go from 0 to one less than the size. Write dim " + target.text.ToUtf8() +
               "[size] for a larger array.");
  Operand value;
  const bool done = Expression(value);
  if (!done) {
    if (isVariable)
      SetKinds(target, kAnyValue, false);
    Recover();
    return;
  }
  if (!isVariable) {
    if (!CallMember(target))
      Recover();
    return;
  }
  if (IsRecord(target.text) && known == kUndefinedValue)
    Report(ProblemCode::UnsetRead, target, Quoted(target) + " is a record; this makes a variable beside it",
           "A record is not assigned as a whole. Assign its fields.");
  SetKinds(target, value.kinds, hasIndex);
}

// A statement that begins with a name and is no assignment; the token behind the name is current.
void ScriptChecker::MissingEqual(const Token& target, bool behindIndex) {
  const Token& next = m_reader.Current();
  const std::string spelt = target.text.ToUtf8();
  const char16_t unit = next.kind == TOKEN_DELIMITER && next.text.GetLength() == 1 ? next.text.GetAt(0) : u'\0';
  const char16_t after = m_reader.UnitAt(next.end);
  if (behindIndex) {
    Report(ProblemCode::MissingEqual, target, "no = stands behind " + Quoted(target),
           "A statement that begins with a name is an assignment: error 3. Write " + spelt + "[...] = value.");
    return;
  }
  if (const std::string_view hint = HintForStatement(target.lowered.View()); !hint.empty()) {
    const ProblemCode code = target.lowered == u"elseif" ? ProblemCode::ElseIf
                             : target.lowered == u"step" ? ProblemCode::StepClause
                                                         : ProblemCode::ExitStatement;
    Report(code, target, Quoted(target) + " is no word of the language",
           "It is taken for a variable, and the missing = is error 3. " + std::string(hint));
    return;
  }
  if (const std::string_view hint = HintForOperand(target.lowered.View()); !hint.empty()) {
    Report(ProblemCode::LogicalWord, target, Quoted(target) + " is no operator",
           "It is taken for a variable, and the missing = is error 3. " + std::string(hint));
    return;
  }
  if ((unit == u'+' || unit == u'-' || unit == u'*' || unit == u'/' || unit == u'&') &&
      (after == u'=' || after == unit)) {
    Report(ProblemCode::AssignmentOperator, next,
           "there is no " + CString(unit, 1).ToUtf8() + CString(after, 1).ToUtf8(),
           "The missing = behind the name is error 3. Write " + spelt + " = " + spelt + " " +
               CString(unit, 1).ToUtf8() + (after == u'=' ? " ..." : " 1."));
    return;
  }
  if (unit == u'$' || unit == u'%' || unit == u'!' || unit == u'@') {
    Report(ProblemCode::TypeSuffix, target, Quoted(target) + " is followed by " + CString(unit, 1).ToUtf8(),
           "Names have no sign of their type: the missing = is error 3. Write " + spelt + " alone.");
    return;
  }
  if (unit == u'(') {
    Report(ProblemCode::MissingEqual, target, "a blank stands between " + Quoted(target) + " and (",
           "A call has no blank there, an index stands in brackets; as it is, error 3. Write call " + spelt +
               "(...) or " + spelt + "[...] = value.");
    return;
  }
  if (unit == u'[') {
    Report(ProblemCode::MissingEqual, target, "a blank stands between " + Quoted(target) + " and [",
           "An index stands right behind its name: error 3. Write " + spelt + "[...] = value.");
    return;
  }
  std::string hint = "A statement that begins with a name is an assignment: error 3. ";
  if (m_outline.procedureOf.contains(target.lowered) || m_hostFunctions.contains(target.lowered) ||
      m_reader.FindFunction(target.lowered) != nullptr)
    hint += "A procedure is called by call " + spelt + "(...).";
  else
    hint += "If it is a comment, it begins with # or rem.";
  Report(ProblemCode::MissingEqual, target, "no = stands behind " + Quoted(target), std::move(hint));
}

void ScriptChecker::Print() {
  m_lastPrintLiteral = false;
  const Token& first = m_reader.Peek();
  if (first.kind == TOKEN_COMMENT && m_reader.UnitAt(first.start + 1) >= u'0' &&
      m_reader.UnitAt(first.start + 1) <= u'9')
    ReportAt(ProblemCode::HashMark, first.start, first.start + 2, "# starts a comment",
             "print shows an empty line here. To write to a file, write n = writeline(number, text).");
  for (;;) {
    m_reader.Next();
    const bool atEnd = m_reader.AtStatementEnd();
    m_reader.PutBack();
    if (atEnd)
      return;
    if (!PrintItem(m_lastPrintLiteral)) {
      Recover();
      return;
    }
    m_reader.Next();
    if (!m_reader.IsDelimiter(u',') && !m_reader.IsDelimiter(u';')) {
      m_reader.PutBack();
      return;
    }
  }
}

// A literal is an item by itself; a name that nobody has assigned shows nothing.
bool ScriptChecker::PrintItem(bool& literal) {
  const Token& item = m_reader.Next();
  literal = item.kind == TOKEN_STRING;
  if (literal) {
    CheckLiteral(item);
    return true;
  }
  if (item.kind == TOKEN_VARIABLE && KindsOf(item) == kUndefinedValue && m_reader.UnitAt(item.end) != u'[') {
    const Token& next = m_reader.Peek();
    const bool ends = next.kind == TOKEN_COMMENT || next.kind == TOKEN_COMMAND || next.command == COMMAND_END_OF_LINE ||
                      next.command == COMMAND_END_OF_PROGRAM ||
                      (next.kind == TOKEN_DELIMITER && (next.text == u":" || next.text == u";" || next.text == u","));
    if (ends) {
      Report(ProblemCode::UnsetRead, item, "the variable " + Quoted(item) + " is printed but was never assigned",
             "It shows as the empty text, without an error. Assign it first, or look for a slip in its name.");
      return true;
    }
  }
  m_reader.PutBack();
  Operand value;
  return Expression(value);
}

void ScriptChecker::OpenFile() {
  Operand path;
  if (!Expression(path)) {
    Recover();
    return;
  }
  if ((path.kinds & kTextValue) == 0) {
    Report(ProblemCode::ValueKind, *m_statement, "the path of open is no text", "This is error 31.");
    Recover();
    return;
  }
  bool hasNumber = false;
  for (;;) {
    const Token& token = m_reader.Next();
    if (token.command == COMMAND_FOR) {
      const Token& mode = m_reader.Next();
      if (mode.kind != TOKEN_KEYWORD) {
        Report(ProblemCode::WordSyntax, mode, "behind for stands input, output or append", "Anything else is error 1.");
        Recover();
        return;
      }
      const bool created =
          m_outline.asksForFiles || path.literal == nullptr || m_outline.createdPaths.contains(path.literal->text);
      if (mode.keyword == KEYWORD_APPEND && !created)
        Report(ProblemCode::AppendNewFile, mode, "nothing in the script creates this file",
               "append opens only a file that is there, otherwise error 47. Open a new file for output.");
    } else if (m_reader.AtStatementEnd()) {
      m_reader.PutBack();
      break;
    } else if (token.keyword == KEYWORD_AS) {
      hasNumber = true;
      Operand number;
      if (!Expression(number)) {
        Recover();
        return;
      }
      if (number.number && (*number.number < 1 || *number.number >= 257)) {
        Report(ProblemCode::OpenNumber, token, "a file's number is from 1 to 256", "Any other is error 46.");
        Recover();
        return;
      }
    } else if (token.kind == TOKEN_NONE) {
      m_reader.SetPosition(token.start + 1);
    }
  }
  if (!hasNumber)
    Report(ProblemCode::OpenNumber, *m_statement, "open gives the file no number",
           "This is error 46. Write open path for input as 1, with a number from 1 to 256.");
}

void ScriptChecker::OneExpression(ValueKinds allowed, const char* word) {
  Operand value;
  if (!Expression(value)) {
    Recover();
    return;
  }
  if ((value.kinds & allowed) == 0)
    Report(ProblemCode::ValueKind, *m_statement, std::string(word) + " takes a number", "Anything else is error 31.");
}

// Expressions with commas between them.
void ScriptChecker::ExpressionList(const char* word, int fewest) {
  m_reader.Next();
  m_reader.PutBack();
  if (m_reader.AtStatementEnd()) {
    if (fewest == 0)
      Report(ProblemCode::StrayText, *m_statement, std::string(word) + " names no file", "It does nothing.");
    return;
  }
  do {
    Operand value;
    if (!Expression(value)) {
      Recover();
      return;
    }
    m_reader.Next();
  } while (m_reader.IsDelimiter(u','));
  m_reader.PutBack();
}

void ScriptChecker::MapStatement() {
  const Token& word = m_reader.Next();
  if (word.keyword != KEYWORD_CREATE && word.keyword != KEYWORD_CLEAR) {
    Report(
        ProblemCode::MapWord, Blamed(word, *m_statement), "behind map stands create or clear",
        "Anything else is error 1 or 29. Write map create \"name\"; values go in by x = mapset(\"name\", key, value).");
    Recover();
    return;
  }
  Operand name;
  if (!Expression(name))
    Recover();
}

void ScriptChecker::EventStatement() {
  const Token& word = m_reader.Next();
  if (word.keyword != KEYWORD_CREATE && word.keyword != KEYWORD_REMOVE) {
    Report(ProblemCode::WordSyntax, Blamed(word, *m_statement), "behind event stands create or remove",
           "Anything else is an error. Write event create name handler.");
    Recover();
    return;
  }
  const Token& event = m_reader.Next();
  if (!IsName(event)) {
    Report(ProblemCode::WordSyntax, Blamed(event, *m_statement), "the name of the event is missing",
           "This is error 1. Write event create name handler.");
    Recover();
    return;
  }
  const Token& handler = m_reader.Next();
  if (!IsName(handler)) {
    Report(ProblemCode::WordSyntax, Blamed(handler, *m_statement), "the name of the handler is missing",
           "This is error 1; names stand without parentheses and commas. Write event create name handler.");
    Recover();
    return;
  }
  CString lowered = handler.text;
  lowered.MakeLower();
  if (m_reader.FindFunction(lowered) == nullptr && !m_hostFunctions.contains(lowered) && lowered.Find(u'.') < 0) {
    Report(ProblemCode::UnknownFunction, handler, "there is no procedure " + Quoted(handler),
           "A handler has to be known: error 21.");
    Recover();
  }
}

void ScriptChecker::WatchStatement() {
  const Token& word = m_reader.Next();
  const bool create = word.keyword == KEYWORD_CREATE;
  if (!create && word.keyword != KEYWORD_REMOVE) {
    Report(ProblemCode::WordSyntax, Blamed(word, *m_statement), "behind watch stands create or remove",
           "Anything else is an error. Write watch create variable event.");
    Recover();
    return;
  }
  const Token& name = m_reader.Next();
  const bool isName = name.kind == TOKEN_VARIABLE;
  const Token* event = &name;
  if (isName && create)
    event = &m_reader.Next();
  if (!isName || !IsName(*event)) {
    Report(ProblemCode::WordSyntax, Blamed(*event, *m_statement),
           isName ? "the event is missing" : "the variable is missing",
           "This is error 1. Write watch create variable event, or watch remove variable.");
    Recover();
    return;
  }
  if (KindsOf(name) == kUndefinedValue) {
    Report(ProblemCode::UndefinedVariable, name, "the variable " + Quoted(name) + " was never assigned",
           "Only a variable that is there can be watched: error 37. Assign it first.");
    Recover();
  }
}

} // namespace brindle
