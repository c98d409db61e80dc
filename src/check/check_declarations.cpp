// "dim", "global", "type" and "declare".
#include "check/checker.h"

#include "interpreter/limits.h"

namespace brindle {

void ScriptChecker::Declarations(bool global) {
  m_reader.Next();
  const bool empty = m_reader.AtStatementEnd();
  m_reader.PutBack();
  if (empty)
    return;
  do {
    if (!Declaration(global)) {
      Recover();
      return;
    }
  } while (m_reader.IsDelimiter(u','));
  m_reader.PutBack();
}

// name [size] as type; the token behind it is current afterwards.
bool ScriptChecker::Declaration(bool global) {
  const Token& name = m_reader.Next();
  if (name.kind != TOKEN_VARIABLE) {
    if (name.kind == TOKEN_FUNCTION)
      Report(ProblemCode::ArrayParentheses, name, "the size of an array stands in brackets",
             "Parentheses here are error 1. Write dim " + name.text.ToUtf8() + "[size].");
    else if (name.kind == TOKEN_KEYWORD || name.kind == TOKEN_COMMAND)
      Report(ProblemCode::WordAsName, name, "\"" + Spelling(name) + "\" is a word of the language",
             "It cannot be a variable: error 1. Take another name.");
    else
      Report(ProblemCode::WordSyntax, Blamed(name, *m_statement), "a declaration begins with a name",
             "Anything else is error 1. Write dim a, b[10].");
    return false;
  }
  const ValueKinds known = KindsOf(name);
  bool hasSize = false;
  m_reader.Next();
  if (m_reader.IsDelimiter(u'[')) {
    hasSize = true;
    if (!Size())
      return false;
  }
  if (ValueKinds* mark = GlobalMark(name); global && mark != nullptr && !InProcedure()) {
    if (*mark == kMadeBeforeGlobal)
      Report(ProblemCode::LateGlobal, name, Quoted(name) + " has a value already, and stays what it is",
             "global makes no global of a variable that is there: procedures do not see it. Write it in front of the "
             "first assignment.");
    *mark = kMadeGlobal;
  }
  if (m_reader.Current().keyword == KEYWORD_AS) {
    if (!DeclaredType(name, hasSize, global))
      return false;
  } else if (!global) {
    if (!hasSize && known != kUndefinedValue)
      SetKinds(name, static_cast<ValueKinds>((known & ~(kUndefinedValue | kManyValues)) | kNotSet), false);
    else
      SetKinds(name, static_cast<ValueKinds>((known & ~kUndefinedValue) | kNotSet | (hasSize ? kManyValues : 0)),
               false);
  }
  if (m_reader.IsDelimiter(u',') || m_reader.AtStatementEnd())
    return true;
  const Token& token = m_reader.Current();
  const std::string word = m_statement->lowered.ToUtf8();
  if (m_reader.IsDelimiter(u'='))
    Report(ProblemCode::DeclarationValue, token, word + " takes no value",
           "This is error 1. Write the assignment as a statement of its own: " + name.text.ToUtf8() + " = ...");
  else if (token.kind == TOKEN_DELIMITER && (token.text == u"$" || token.text == u"%"))
    Report(ProblemCode::TypeSuffix, token, "names have no sign of their type", "This is error 1. Leave it out.");
  else
    Report(ProblemCode::WordSyntax, token, "the declaration goes on with what does not belong there",
           "Between declarations stands a comma, and nothing behind the type: error 1.");
  return false;
}

// Behind "["; the token behind the "]" is current afterwards.
bool ScriptChecker::Size() {
  const Token& open = m_reader.Current();
  Operand size;
  if (!Index(size))
    return false;
  if (size.number && (*size.number < 1 || *size.number >= kLargestArray + 1)) {
    Report(ProblemCode::IndexBounds, open, "an array has 1 to 16000 elements", "Any other size is error 32.");
    return false;
  }
  m_reader.Next();
  return true;
}

// "as" is the current token; what stands behind the type is afterwards.
bool ScriptChecker::DeclaredType(const Token& name, bool hasSize, bool global) {
  const Token& type = m_reader.Next();
  if (type.kind == TOKEN_KEYWORD) {
    if (!ScriptReader::IsFieldType(type.keyword)) {
      Report(
          ProblemCode::UnknownType, type, Quoted(type) + " is no type here",
          "This is error 1. There are char, integer, float, double and string, and the names of types of the script.");
      return false;
    }
    const ValueKinds known = KindsOf(name);
    const auto kept = static_cast<ValueKinds>(known & ~kUndefinedValue);
    if (!global)
      SetKinds(name,
               hasSize || (kept & kManyValues) != 0
                   ? static_cast<ValueKinds>(kept | kNotSet | (hasSize ? kManyValues : 0))
                   : kNotSet,
               false);
  } else if (!m_outline.types.contains(type.text)) {
    std::string hint = "This is error 1. There are char, integer, float, double and string, and the names of types of "
                       "the script; a plain variable needs none.";
    for (const auto& [other, fields] : m_outline.types)
      if (other.CompareNoCase(type.text) == 0)
        hint = "Upper and lower case count in the names of types: error 1. Write " + other.ToUtf8() + ".";
    const bool missing = &Blamed(type, name) != &type;
    Report(ProblemCode::UnknownType, missing ? name : type,
           missing ? "the type of " + Quoted(name) + " is missing" : "there is no type " + Quoted(type),
           std::move(hint));
    return false;
  }
  m_reader.Next();
  return true;
}

void ScriptChecker::TypeBlock(const Token& word) {
  const Token& name = m_reader.Next();
  if (name.text.IsEmpty() || name.command == COMMAND_END_OF_LINE) {
    Report(ProblemCode::WordSyntax, word, "the type has no name", "This is error 1, and the block is skipped.");
    LeaveBlock(COMMAND_ENDTYPE);
    return;
  }
  for (m_reader.NextBlockLine(); m_reader.Current().command != COMMAND_ENDTYPE; m_reader.NextBlockLine()) {
    if (m_reader.Current().command == COMMAND_END_OF_PROGRAM) {
      MissingEnd(word, "endtype");
      return;
    }
    if (!Field()) {
      LeaveBlock(COMMAND_ENDTYPE);
      return;
    }
  }
}

// The field's name is the current token.
bool ScriptChecker::Field() {
  const Token& name = m_reader.Current();
  if (name.text.IsEmpty()) {
    Report(ProblemCode::WordSyntax, name, "a field begins with its name", "This is error 33.");
    return false;
  }
  m_reader.Next();
  if (m_reader.Current().kind == TOKEN_DELIMITER) {
    if (!m_reader.IsDelimiter(u'[')) {
      Report(ProblemCode::WordSyntax, name, "behind the field " + Quoted(name) + " stands as",
             "Anything else is error 1, and the type is not made. Write name as integer, or name[10] as char.");
      return false;
    }
    if (!Size())
      return false;
  }
  if (m_reader.Current().keyword != KEYWORD_AS) {
    Report(ProblemCode::WordSyntax, name, "behind the field " + Quoted(name) + " stands as",
           "Anything else is error 1, and the type is not made. Write name as integer, or name[10] as char.");
    return false;
  }
  const Token& type = m_reader.Next();
  if (ScriptReader::IsFieldType(type.keyword))
    return true;
  Report(ProblemCode::UnknownType, Blamed(type, name), "the field " + Quoted(name) + " has no type of a field",
         "This is error 1, and the type is not made. There are char, integer, float, double and string.");
  return false;
}

void ScriptChecker::DeclareStatement(const Token& word) {
  CFuncDesc function;
  if (!m_reader.ReadDeclare(function)) {
    const Token& token = m_reader.Current();
    Report(
        ProblemCode::WordSyntax, Blamed(token, word), "the declaration cannot be read from here on",
        "This is error 1. Write declare function name lib \"library\" (byval a as integer, b as string) as integer.");
    m_reader.PutBack();
    Recover();
  }
}

} // namespace brindle
