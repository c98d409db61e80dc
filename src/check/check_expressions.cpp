// Expressions and conditions, by the grammar of the evaluator, level by level. Nothing is computed but what kind of
// value there may be.
#include "check/checker.h"

#include "interpreter/arithmetic.h"
#include "interpreter/language.h"
#include "platform/unicode.h"

#include <cmath>

namespace brindle {

namespace {

constexpr int kDeepestExpression = 1000;

// An operator is recognised by the token's first unit alone, as the evaluator does.
char16_t FirstUnit(const Token& token) {
  return token.text.IsEmpty() ? u'\0' : token.text.GetAt(0);
}

bool IsCertainly(ValueKinds kinds, ValueKinds what) {
  return (kinds & ~(what | kManyValues)) == 0;
}

bool IsSign(char16_t unit) {
  return unit == u'+' || unit == u'-';
}

} // namespace

bool ScriptChecker::Expression(Operand& out) {
  out = Operand();
  const Token& first = m_reader.Next();
  if (first.text.IsEmpty() && first.kind != TOKEN_STRING) {
    NoOperand(first);
    return false;
  }
  if (m_depth >= kDeepestExpression)
    return false;
  ++m_depth;
  const bool done = Level2(out);
  --m_depth;
  if (done)
    m_reader.PutBack();
  return done;
}

bool ScriptChecker::Level2(Operand& out) {
  if (!Level3(out))
    return false;
  while (IsSign(FirstUnit(m_reader.Current()))) {
    const Token& sign = m_reader.Current();
    m_reader.Next();
    Operand right;
    if (!Level3(right) || !Apply(sign, out, right))
      return false;
  }
  return true;
}

bool ScriptChecker::Level3(Operand& out) {
  if (!Level4(out))
    return false;
  for (char16_t unit = FirstUnit(m_reader.Current()); unit == u'*' || unit == u'/' || unit == u'%';
       unit = FirstUnit(m_reader.Current())) {
    const Token& sign = m_reader.Current();
    m_reader.Next();
    if (unit == u'/' && m_reader.IsDelimiter(u'/')) {
      Report(ProblemCode::MissingExpression, sign, "\"//\" starts no comment",
             "It is read as two divisions, which is error 0. Write the comment behind #.");
      return false;
    }
    Operand right;
    if (!Level4(right) || !Apply(sign, out, right))
      return false;
  }
  return true;
}

bool ScriptChecker::Level4(Operand& out) {
  const Token& first = m_reader.Current();
  const bool isSigned = m_reader.IsDelimiter(u'-');
  if (!Level5(out))
    return false;
  if (FirstUnit(m_reader.Current()) != u'^')
    return true;
  if (m_depth >= kDeepestExpression)
    return false;
  const Token& sign = m_reader.Current();
  if (isSigned)
    Report(ProblemCode::SignBeforePower, first, "the sign belongs to the base of the power",
           "-2 ^ 2 is (-2) ^ 2, which is 4. Write 0 - a ^ b for the negative power.");
  m_reader.Next();
  ++m_depth;
  Operand right;
  const bool negative = m_reader.IsDelimiter(u'-');
  const bool done = Level4(right);
  --m_depth;
  if (!done)
    return false;
  const bool broken = right.number && *right.number != std::trunc(*right.number);
  if (negative || broken)
    Report(ProblemCode::PowerExponent, sign, "the exponent counts multiplications",
           "A negative exponent and one below 1 leave the base as it is, 2.5 counts as 3. Write 1 / a ^ b, or sqr(a) "
           "for the root.");
  return Apply(sign, out, right);
}

bool ScriptChecker::Level5(Operand& out) {
  const bool isSigned = m_reader.IsDelimiter(u'+') || m_reader.IsDelimiter(u'-');
  const bool isNegative = m_reader.IsDelimiter(u'-');
  if (isSigned)
    m_reader.Next();
  if (!Level6(out))
    return false;
  const std::optional<double> number = out.number;
  if (isNegative) {
    out = Operand{.kinds = static_cast<ValueKinds>(kNumberValue | (out.kinds & kManyValues))};
    if (number)
      out.number = -*number;
  }
  return true;
}

bool ScriptChecker::Level6(Operand& out) {
  if (!m_reader.IsDelimiter(u'('))
    return Primitive(out);
  const Token& open = m_reader.Current();
  if (m_depth >= kDeepestExpression)
    return false;
  m_reader.Next();
  ++m_depth;
  const bool done = Level2(out);
  --m_depth;
  if (!done)
    return false;
  if (!m_reader.IsDelimiter(u')')) {
    const Token& token = m_reader.Current();
    const char16_t unit = FirstUnit(token);
    if (token.kind == TOKEN_DELIMITER && (unit == u'=' || unit == u'<' || unit == u'>' || unit == u'!' || unit == u'~'))
      Report(ProblemCode::ComparisonInExpression, token, "a comparison stands in parentheses",
             "Only a condition compares, and it has no parentheses around it: this is error 1. Write if a = b then.");
    else if (token.kind == TOKEN_VARIABLE && !HintForOperand(token.lowered.View()).empty())
      Report(ProblemCode::LogicalWord, token, Quoted(token) + " is no operator",
             "It is taken for a variable, and that is an error here. " +
                 std::string(HintForOperand(token.lowered.View())));
    else
      Report(ProblemCode::MissingParenthesis, open, "the parenthesis is not closed",
             "Here another \")\" was expected: error 1. Close it behind the expression.");
    return false;
  }
  m_reader.Next();
  out.literal = out.name = out.call = nullptr;
  return true;
}

bool ScriptChecker::Primitive(Operand& out) {
  const Token& token = m_reader.Current();
  switch (token.kind) {
  case TOKEN_VARIABLE: return ReadVariable(out);
  case TOKEN_IDENTIFIER: return ReadDotted(out);
  case TOKEN_NUMBER:
    CheckNumber(token);
    out.kinds = kNumberValue;
    out.literal = &token;
    out.number = token.number;
    m_reader.Next();
    return true;
  case TOKEN_STRING:
    CheckLiteral(token);
    out.kinds = kTextValue;
    out.literal = &token;
    m_reader.Next();
    return true;
  case TOKEN_FUNCTION:
    if (!Call(true, out))
      return false;
    m_reader.Next();
    return true;
  default: NoOperand(token); return false;
  }
}

// Left decides; what it may be beside is given the benefit of the doubt.
bool ScriptChecker::Apply(const Token& sign, Operand& left, const Operand&) {
  const char16_t unit = FirstUnit(sign);
  if ((left.kinds & (kNumberValue | kTextValue)) == 0) {
    if ((left.kinds & kNotSet) != 0)
      Report(ProblemCode::UnsetValue, left.name != nullptr ? *left.name : sign,
             left.name != nullptr ? "the variable " + Quoted(*left.name) + " holds no value yet"
                                  : std::string("the left side holds no value"),
             "dim makes a variable that is not set, whatever type it names, and arithmetic with it is error 18. Assign "
             "0 or \"\" first.");
    else
      Report(ProblemCode::ValueKind, sign, "an object takes part in no arithmetic", "This is error 18.");
    return false;
  }
  if (IsCertainly(left.kinds, kTextValue) && unit != u'+') {
    Report(ProblemCode::TextArithmetic, sign, "a text stands on the left of " + sign.text.ToUtf8(),
           "Texts can only be added: this is error 14. Write val(text) for its number.");
    return false;
  }
  if (unit == u'%')
    Report(ProblemCode::RemainderOperator, sign, "% gives no remainder",
           "a % b is a - (a / b) * b without cutting the quotient, which is 0 or nearly so. Write a - int(a / b) * b.");
  left = Operand{.kinds = static_cast<ValueKinds>(left.kinds & (kNumberValue | kTextValue | kManyValues))};
  return true;
}

bool ScriptChecker::ReadVariable(Operand& out) {
  const Token& name = m_reader.Current();
  const ValueKinds kinds = KindsOf(name);
  const bool hasIndex = m_reader.UnitAt(m_reader.Position()) == u'[';
  if (hasIndex) {
    m_reader.Next();
    Operand index;
    if (!Index(index))
      return false;
  }
  if (kinds == kUndefinedValue) {
    if (!hasIndex) {
      ReportUndefined(name);
      return false;
    }
    Report(ProblemCode::UnsetRead, name, "the array " + Quoted(name) + " was never made",
           "Its element is read as a value that is not set, without an error. Make the array by dim " +
               name.text.ToUtf8() + "[size] first.");
    out.kinds = kNotSet;
  } else {
    out.kinds = static_cast<ValueKinds>(kinds & ~kUndefinedValue);
    if (hasIndex)
      out.kinds = static_cast<ValueKinds>(out.kinds & ~kManyValues);
    else
      out.name = &name;
  }
  m_reader.Next();
  return true;
}

// A record's field, or an object's property.
bool ScriptChecker::ReadDotted(Operand& out) {
  const Token& name = m_reader.Current();
  const bool hasIndex = m_reader.UnitAt(m_reader.Position()) == u'[';
  if (!CallMember(name))
    return false;
  const int dot = name.text.Find(u'.');
  if (hasIndex && IsRecord(name.text.Left(dot))) {
    m_reader.Next();
    Operand index;
    if (!Index(index))
      return false;
  }
  out.kinds = kAnyValue;
  m_reader.Next();
  return true;
}

// Behind "["; the "]" is current afterwards.
bool ScriptChecker::Index(Operand& out) {
  const Token& open = m_reader.Current();
  if (!Expression(out))
    return false;
  m_reader.Next();
  if (m_reader.IsDelimiter(u']') && out.kinds != kNotSet)
    return true;
  Report(ProblemCode::IndexBrackets, open, "the index cannot be read",
         "One expression that has a value stands between [ and ]: anything else is error 1.");
  return false;
}

void ScriptChecker::NoOperand(const Token& token) {
  switch (token.kind) {
  case TOKEN_NONE:
    if (m_reader.UnitAt(token.start) == u'.')
      ReportAt(ProblemCode::LeadingPoint, token.start, token.start + 1, "a number begins with a digit",
               "The point starts nothing: this is an error. Write 0.5 for .5.");
    else
      ReportAt(ProblemCode::UnknownCharacter, token.start, token.start + 1, "the character begins no word of a script",
               "This is an error. Names begin with a letter, numbers with a digit.");
    return;
  case TOKEN_LABEL:
    m_noLabels.insert(token.start);
    Report(
        ProblemCode::MissingExpression, token, Quoted(token) + " is read as a label, not as a value",
        "A word with a colon right behind it is a label, and no operand: error 0. Put a blank in front of the colon.");
    return;
  case TOKEN_COMMAND:
    if (token.command == COMMAND_END_OF_PROGRAM)
      break;
    Report(ProblemCode::WordAsName, token, "\"" + Spelling(token) + "\" is a word of the language and no value",
           "This is error 0. If it was meant as a variable, take another name.");
    return;
  case TOKEN_KEYWORD:
    Report(ProblemCode::WordAsName, token, "\"" + Spelling(token) + "\" is a word of the language and no value",
           "This is error 0. If it was meant as a variable, take another name.");
    return;
  case TOKEN_COMMENT:
    Report(ProblemCode::MissingExpression, token, "# starts a comment where a value was expected",
           "This is error 2. File numbers stand without #: open \"x\" for input as 1, close 1.");
    return;
  default: break;
  }
  const bool lineEnd = token.command == COMMAND_END_OF_LINE || token.command == COMMAND_END_OF_PROGRAM;
  ReportAt(ProblemCode::MissingExpression, token.start, token.end,
           lineEnd ? std::string("the line ends where a value was expected")
                   : Quoted(token) + " stands where a value was expected",
           "This is an error: a number, a text, a variable or a call must stand here.");
}

// Digits, a point with digits, an exponent; anything else in the token is not read.
void ScriptChecker::CheckNumber(const Token& number) {
  const std::u16string_view text = number.text.View();
  std::size_t at = 0;
  const auto digits = [&] {
    const std::size_t first = at;
    while (at < text.size() && IsDecimalDigit(text[at]))
      ++at;
    return at > first;
  };
  static_cast<void>(digits());
  if (at < text.size() && text[at] == u'.') {
    ++at;
    static_cast<void>(digits());
  }
  if (at == text.size())
    return;
  if (text[at] == u'e' || text[at] == u'E') {
    ++at;
    if (at == text.size()) {
      const char16_t next = m_reader.UnitAt(number.end);
      if (IsSign(next) && IsDecimalDigit(m_reader.UnitAt(number.end + 1))) {
        Report(ProblemCode::ExponentSign, number, "the sign of the exponent ends the number",
               "1e-3 is read as 1 - 3, which is -2. Write 0.001, or 1 / 1000.");
        return;
      }
    } else if (digits() && at == text.size()) {
      return;
    }
  }
  Report(ProblemCode::NumberFormat, number, Quoted(number) + " is read only as far as it is a number",
         "What follows is dropped without a word; hexadecimal numbers do not exist. Write digits with one point.");
}

ScriptChecker::Outcome ScriptChecker::Condition(const char* word) {
  Operand left;
  if (!Expression(left))
    return Outcome::Fails;
  const Token& sign = m_reader.Next();
  std::u16string comparison;
  std::uint32_t end = sign.end;
  if (sign.kind == TOKEN_DELIMITER && sign.command != COMMAND_END_OF_LINE) {
    comparison = sign.text.View();
    const Token& second = m_reader.Next();
    if (second.kind == TOKEN_DELIMITER && second.text.GetLength() == 1 &&
        std::u16string_view(u"=<>!~").find(second.text.GetAt(0)) != std::u16string_view::npos) {
      comparison += second.text.View();
      end = second.end;
    } else {
      m_reader.PutBack();
    }
  }
  const LOGICAL_OPERATION operation = ComparisonOf(comparison);
  if (operation == LOGICAL_NONE) {
    if (sign.kind == TOKEN_VARIABLE && !HintForOperand(sign.lowered.View()).empty()) {
      Report(ProblemCode::LogicalWord, sign, Quoted(sign) + " is no operator",
             "It is taken for a variable, and that is an error here. " +
                 std::string(HintForOperand(sign.lowered.View())));
    } else if (comparison == u">=") {
      ReportAt(ProblemCode::ComparisonOperator, sign.start, end, "\">=\" is no comparison",
               "This is error 0. Write => for greater or equal.");
    } else if (comparison == u"=<") {
      ReportAt(ProblemCode::ComparisonOperator, sign.start, end, "\"=<\" is no comparison",
               "This is error 0. Write <= for less or equal.");
    } else if (!comparison.empty() && std::u16string_view(u"=<>!~").find(comparison[0]) != std::u16string_view::npos) {
      ReportAt(ProblemCode::ComparisonOperator, sign.start, end,
               "\"" + CString(comparison).ToUtf8() + "\" is no comparison",
               "This is error 0. There are =, <>, <, >, <=, => and ~~ (about equal, or contains).");
    } else {
      Report(ProblemCode::MissingComparison, sign, std::string("the condition of ") + word + " compares nothing",
             "A condition is exactly one comparison of two expressions, anything else is error 0. Write a <> 0.");
    }
    return Outcome::Fails;
  }
  Operand right;
  if (!Expression(right))
    return Outcome::Fails;
  CheckComparison(sign, left, right);
  if (!left.number || !right.number || operation == LOGICAL_ABOUT_EQUAL)
    return Outcome::Unknown;
  return Compare(operation, *left.number, *right.number) ? Outcome::Always : Outcome::Never;
}

void ScriptChecker::CheckComparison(const Token& sign, const Operand& left, const Operand& right) {
  if (left.kinds == kNotSet) {
    Report(
        ProblemCode::UnsetComparison, left.name != nullptr ? *left.name : sign,
        "the left side of the comparison holds no value",
        "A comparison with a value that is not set never holds. Assign it first; ubound(\"name\") = 0 asks whether a "
        "variable has a value.");
  } else if (IsCertainly(left.kinds, kTextValue) && IsCertainly(right.kinds, kNumberValue)) {
    Report(ProblemCode::TextNumberComparison, sign, "a text is compared with a number",
           "The left side decides: the number becomes a text with six decimals, so \"5\" = 5 does not hold. Write "
           "val(text), or a text in quotes.");
  } else if (IsCertainly(left.kinds, kNumberValue) && right.literal != nullptr && right.literal->kind == TOKEN_STRING &&
             FirstUnit(*right.literal) != u'-' && !IsDecimalDigit(FirstUnit(*right.literal))) {
    Report(ProblemCode::TextNumberComparison, sign, "a number is compared with a text that is none",
           "The left side decides: the text counts as 0. Write str(number) on the left.");
  }
}

} // namespace brindle
