// What stands where a statement should begin: left over from an expression, or brought along from elsewhere.
#include "check/checker.h"

namespace brindle {

// Whether a token is a literal that begins where another one ends: a doubled quote.
bool ScriptChecker::FollowsLiteral(const Token& token) const {
  return token.kind == TOKEN_STRING && token.start > 0 && m_reader.UnitAt(token.start - 1) == u'"';
}

// Whether what follows on the line is certain to be an error when delimiters have been stepped over.
bool ScriptChecker::FailsFrom(std::uint32_t position) {
  const std::uint32_t before = m_reader.Position();
  m_reader.SetPosition(position);
  const Token* token = &m_reader.Next();
  while (token->kind == TOKEN_DELIMITER && token->command != COMMAND_END_OF_LINE &&
         token->command != COMMAND_END_OF_PROGRAM && token->text != u":")
    token = &m_reader.Next();
  bool fails = false;
  switch (token->kind) {
  case TOKEN_NUMBER:
  case TOKEN_STRING:
  case TOKEN_FUNCTION:
  case TOKEN_KEYWORD:
  case TOKEN_NONE: fails = true; break;
  case TOKEN_VARIABLE:
  case TOKEN_IDENTIFIER: {
    m_reader.Next();
    fails = !m_reader.IsDelimiter(u'=') && m_reader.UnitAt(token->end) != u'[';
    break;
  }
  default: break;
  }
  m_reader.SetPosition(before);
  return fails;
}

// A delimiter between statements is stepped over; what follows it is run as a statement.
void ScriptChecker::StrayDelimiter(const Token& sign) {
  const char16_t unit = sign.text.GetLength() == 1 ? sign.text.GetAt(0) : u'\0';
  const bool fails = FailsFrom(sign.end);
  const bool behindPrint = m_statement != nullptr && m_statement->command == COMMAND_PRINT && m_lastPrintLiteral;
  const bool isOperator = std::u16string_view(u"+-*/%^&").find(unit) != std::u16string_view::npos;
  const bool isComparison = std::u16string_view(u"=<>!~").find(unit) != std::u16string_view::npos;
  if (unit == u'\'') {
    Report(ProblemCode::CommentMark, sign, "an apostrophe starts no comment",
           "It is stepped over, and what follows is run. Write # or rem.");
  } else if (fails && behindPrint && isOperator) {
    Report(ProblemCode::PrintLiteral, sign, "an operator stands behind a literal in print",
           "A literal is an item by itself, and what follows begins a statement, which is an error. Write ; between "
           "items, "
           "or put the sum into parentheses.");
  } else if (fails && isComparison && m_statement != nullptr) {
    Report(ProblemCode::ComparisonInExpression, sign, "a comparison stands in an expression",
           "The expression ends there, and what follows begins a statement, which is an error. Only a condition "
           "compares.");
  } else if (fails && unit == u'&') {
    Report(ProblemCode::NotAStatement, sign, "& joins no texts",
           "The expression ends there, and what follows begins a statement, which is an error. Write +.");
  } else if (fails) {
    Report(ProblemCode::NotAStatement, sign, "no statement begins with " + Quoted(sign),
           "The sign is stepped over, and what follows is run as a statement, which is an error.");
  } else if (unit == u'$') {
    Report(ProblemCode::StrayText, sign, "names have no sign of their type",
           "It is stepped over without an error. Leave it out.");
  } else {
    Report(ProblemCode::StrayText, sign, "no statement begins with " + Quoted(sign),
           "The sign is stepped over without an error, and what follows is run as a statement. Leave it out.");
  }
  Recover();
}

// A token that no statement begins with: error 18, and in the main program the end of the run.
void ScriptChecker::NotAStatement(const Token& token) {
  const std::string ends = InProcedure() ? "This is error 18, and the rest of the line is skipped."
                                         : "This is error 18, and the run ends here.";
  switch (token.kind) {
  case TOKEN_NONE:
    if (m_reader.UnitAt(token.start) == u'\uFEFF')
      ReportAt(ProblemCode::ByteOrderMark, token.start, token.start + 1, "the script begins with a byte-order mark",
               "It begins no statement: error 18, and nothing is run. Save the file without it.");
    else if (m_reader.UnitAt(token.start) == u'.')
      ReportAt(ProblemCode::LeadingPoint, token.start, token.start + 1, "a number begins with a digit",
               ends + " Write 0.5 for .5.");
    else
      ReportAt(ProblemCode::UnknownCharacter, token.start, token.start + 1, "the character begins no word of a script",
               ends + " Names begin with a letter.");
    break;
  case TOKEN_FUNCTION: {
    const std::string spelt = token.text.ToUtf8();
    const int number = m_outline.NumberOf(token.lowered);
    if (m_reader.FindFunction(token.lowered) == nullptr && !m_hostFunctions.contains(token.lowered) && number >= 0 &&
        KindsOf(token) != kUndefinedValue)
      Report(ProblemCode::ArrayParentheses, token,
             Quoted(token) + " is a variable, and its index stands in parentheses",
             ends + " Write " + spelt + "[...] = value.");
    else
      Report(ProblemCode::BareCall, token, Quoted(token) + " is called as a statement",
             ends + " Write call " + spelt + "(...), or assign its result.");
    break;
  }
  case TOKEN_STRING:
    if (FollowsLiteral(token))
      Report(ProblemCode::DoubledQuote, token, "a doubled quote ends the literal",
             ends + " A literal ends at its next quote. Write \"a\" + format(34, \"%c\") + \"b\" for a quote inside.");
    else
      Report(ProblemCode::NotAStatement, token, "a literal stands where a statement should begin",
             ends + " In print, items stand with ; or , between them.");
    break;
  case TOKEN_KEYWORD: {
    m_reader.SetPosition(token.end);
    const Token& next = m_reader.Peek();
    if (next.kind == TOKEN_DELIMITER && (next.text == u"=" || next.text == u"["))
      Report(ProblemCode::WordAsName, token,
             "\"" + Spelling(token) + "\" is a word of the language and cannot be a variable",
             ends + " Take another name.");
    else if (token.keyword == KEYWORD_WHILE)
      Report(ProblemCode::NotAStatement, token, "while stands only behind do", ends + " Write do while ... loop.");
    else if (token.keyword == KEYWORD_INPUT)
      Report(ProblemCode::NotAStatement, token, "there is no input statement",
             ends + " Write readline(number) for a file, or show a dialog.");
    else
      Report(ProblemCode::NotAStatement, token, "no statement begins with " + Quoted(token), ends);
    break;
  }
  default: Report(ProblemCode::NotAStatement, token, "no statement begins with " + Quoted(token), ends); break;
  }
  Recover();
}

} // namespace brindle
