// One row for each kind of problem: long because it is a table.
#include "check/problem_codes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace brindle {

namespace {

constexpr auto kError = CProblemSeverity::Error;
constexpr auto kWarning = CProblemSeverity::Warning;

// ORDER PROBLEM; sorted by name
constexpr std::array kKinds = {
    ProblemKind{ProblemCode::AlterLine, "alter-line", kError, "a line of alter that is no alteration"},
    ProblemKind{ProblemCode::AppendNewFile, "append-new-file", kWarning, "append to a file that nothing creates"},
    ProblemKind{ProblemCode::ArrayParentheses, "array-parentheses", kError, "an index in parentheses"},
    ProblemKind{ProblemCode::AssignmentOperator, "assignment-operator", kError, "an assignment by += or the like"},
    ProblemKind{ProblemCode::BareCall, "bare-call", kError, "a function called as a statement"},
    ProblemKind{ProblemCode::BuiltInArguments, "built-in-arguments", kError,
                "a number of arguments that a built-in function refuses"},
    ProblemKind{ProblemCode::BuiltInSurplus, "built-in-surplus", kWarning,
                "arguments that a built-in function ignores, or silently misses"},
    ProblemKind{ProblemCode::ByteOrderMark, "byte-order-mark", kError, "a byte-order mark in front of the script"},
    ProblemKind{ProblemCode::CallParentheses, "call-parentheses", kError, "call without parentheses"},
    ProblemKind{ProblemCode::CommentMark, "comment-mark", kWarning, "an apostrophe or slashes for a comment"},
    ProblemKind{ProblemCode::ComparisonInExpression, "comparison-in-expression", kError,
                "a comparison outside of a condition"},
    ProblemKind{ProblemCode::ComparisonOperator, "comparison-operator", kError, "a comparison that does not exist"},
    ProblemKind{ProblemCode::ConstantCase, "constant-case", kError, "true, false or nothing in other letters"},
    ProblemKind{ProblemCode::ControlKind, "control-kind", kError, "a kind of control that does not exist"},
    ProblemKind{ProblemCode::CrossedLoops, "crossed-loops", kWarning, "loops that cross each other"},
    ProblemKind{ProblemCode::DeclarationValue, "declaration-value", kError, "a value in a declaration"},
    ProblemKind{ProblemCode::DialogParameters, "dialog-parameters", kError, "too few parameters of a dialog's line"},
    ProblemKind{ProblemCode::DoubledQuote, "doubled-quote", kError, "a doubled quote inside a literal"},
    ProblemKind{ProblemCode::DuplicateDeclare, "duplicate-declare", kError, "a name that is declared twice"},
    ProblemKind{ProblemCode::DuplicateLabel, "duplicate-label", kError, "a label that stands twice"},
    ProblemKind{ProblemCode::DuplicateProcedure, "duplicate-procedure", kError, "a procedure that is defined twice"},
    ProblemKind{ProblemCode::ElseIf, "else-if", kWarning, "elseif, or else if without an endif of its own"},
    ProblemKind{ProblemCode::EndIf, "end-if", kWarning, "end if, end sub or end function in two words"},
    ProblemKind{ProblemCode::ExitStatement, "exit-statement", kError, "a statement that only other dialects have"},
    ProblemKind{ProblemCode::ExponentSign, "exponent-sign", kWarning, "a signed exponent in a number"},
    ProblemKind{ProblemCode::FieldCase, "field-case", kError, "a record's field with capital letters"},
    ProblemKind{ProblemCode::FormatOrder, "format-order", kWarning, "format with its arguments exchanged"},
    ProblemKind{ProblemCode::GlobalCase, "global-case", kWarning, "a global in other letters"},
    ProblemKind{ProblemCode::HashMark, "hash-mark", kWarning, "a file number behind #"},
    ProblemKind{ProblemCode::IncludeCycle, "include-cycle", kError, "a file that includes itself"},
    ProblemKind{ProblemCode::IncludeSyntax, "include-syntax", kError, "include or library without a quoted name"},
    ProblemKind{ProblemCode::IncludedTwice, "included-twice", kError, "a definition that include puts in twice"},
    ProblemKind{ProblemCode::IndexBounds, "index-bounds", kError, "an index outside of its array"},
    ProblemKind{ProblemCode::IndexBrackets, "index-brackets", kError, "an index that cannot be read"},
    ProblemKind{ProblemCode::LabelWord, "label-word", kWarning, "a word that a colon makes a label"},
    ProblemKind{ProblemCode::LateGlobal, "late-global", kWarning, "global behind the first assignment"},
    ProblemKind{ProblemCode::LeadingPoint, "leading-point", kError, "a number that begins with its point"},
    ProblemKind{ProblemCode::LiteralOverLines, "literal-over-lines", kWarning, "a literal that goes on over lines"},
    ProblemKind{ProblemCode::LogicalWord, "logical-word", kError, "and, or, not in a condition"},
    ProblemKind{ProblemCode::LoopVariable, "loop-variable", kError, "next with a variable"},
    ProblemKind{ProblemCode::LoopWithoutDo, "loop-without-do", kWarning, "loop without a do"},
    ProblemKind{ProblemCode::MapWord, "map-word", kError, "map with another word than create or clear"},
    ProblemKind{ProblemCode::MisplacedReturn, "misplaced-return", kError, "return in the main program"},
    ProblemKind{ProblemCode::MissingComparison, "missing-comparison", kError, "a condition without a comparison"},
    ProblemKind{ProblemCode::MissingEndBlock, "missing-end-block", kWarning, "a block without its end word"},
    ProblemKind{ProblemCode::MissingEndFunction, "missing-endfunction", kError, "a procedure without its end"},
    ProblemKind{ProblemCode::MissingEndIf, "missing-endif", kWarning, "an if without its endif"},
    ProblemKind{ProblemCode::MissingEqual, "missing-equal", kError, "a statement that is no assignment"},
    ProblemKind{ProblemCode::MissingExpression, "missing-expression", kError, "an expression that is not there"},
    ProblemKind{ProblemCode::MissingFile, "missing-file", kError, "an included file that cannot be read"},
    ProblemKind{ProblemCode::MissingLoop, "missing-loop", kWarning, "a do without its loop"},
    ProblemKind{ProblemCode::MissingNext, "missing-next", kWarning, "a for without its next"},
    ProblemKind{ProblemCode::MissingParenthesis, "missing-parenthesis", kError, "a parenthesis that is not closed"},
    ProblemKind{ProblemCode::MissingThen, "missing-then", kError, "an if without then"},
    ProblemKind{ProblemCode::MissingTo, "missing-to", kError, "a for without to"},
    ProblemKind{ProblemCode::MissingWhile, "missing-while", kError, "a do without while"},
    ProblemKind{ProblemCode::NextWithoutFor, "next-without-for", kError, "next without a for"},
    ProblemKind{ProblemCode::NoDialog, "no-dialog", kError, "a control where the script shows no dialog"},
    ProblemKind{ProblemCode::NoMainProgram, "no-main-program", kWarning, "a script of procedures alone"},
    ProblemKind{ProblemCode::NoResult, "no-result", kError, "the result of a procedure that gives none"},
    ProblemKind{ProblemCode::NotAStatement, "not-a-statement", kError, "what no statement begins with"},
    ProblemKind{ProblemCode::NumberFormat, "number-format", kWarning, "a number that is not read to its end"},
    ProblemKind{ProblemCode::OpenNumber, "open-number", kError, "open without a file number"},
    ProblemKind{ProblemCode::ParameterGlobal, "parameter-global", kWarning, "a parameter with a global's name"},
    ProblemKind{ProblemCode::PowerExponent, "power-exponent", kWarning, "a negative or broken exponent"},
    ProblemKind{ProblemCode::PrintLiteral, "print-literal", kError, "an operator behind a literal in print"},
    ProblemKind{ProblemCode::ProcedureArguments, "procedure-arguments", kError, "too few arguments of a procedure"},
    ProblemKind{ProblemCode::ProcedureDefinition, "procedure-definition", kError, "a parameter list that is none"},
    ProblemKind{ProblemCode::ProcedureInFlow, "procedure-in-flow", kError, "a definition that the flow runs into"},
    ProblemKind{ProblemCode::ProcedureNamedBuiltIn, "procedure-named-built-in", kError,
                "a procedure with the name of a built-in function"},
    ProblemKind{ProblemCode::ProcedureSurplus, "procedure-surplus", kWarning, "arguments that a procedure ignores"},
    ProblemKind{ProblemCode::RecordCopy, "record-copy", kError, "a record used as a whole"},
    ProblemKind{ProblemCode::RemainderOperator, "remainder-operator", kWarning, "the operator %"},
    ProblemKind{ProblemCode::ReturnValue, "return-value", kWarning, "return with a value"},
    ProblemKind{ProblemCode::SignBeforePower, "sign-before-power", kWarning, "a sign in front of a power"},
    ProblemKind{ProblemCode::StepClause, "step-clause", kError, "for with a step"},
    ProblemKind{ProblemCode::StrayText, "stray-text", kWarning, "signs that are stepped over"},
    ProblemKind{ProblemCode::TextArithmetic, "text-arithmetic", kError, "a text where only numbers count"},
    ProblemKind{ProblemCode::TextNumberComparison, "text-number-comparison", kWarning, "a text compared with a number"},
    ProblemKind{ProblemCode::TypeSuffix, "type-suffix", kError, "a name with $ or another sign of its type"},
    ProblemKind{ProblemCode::UboundInclusive, "ubound-inclusive", kWarning, "a loop from 0 to ubound"},
    ProblemKind{ProblemCode::UboundName, "ubound-name", kWarning, "ubound of an array instead of its name"},
    ProblemKind{ProblemCode::UndefinedArray, "undefined-array", kError, "an element of an array that has no dim"},
    ProblemKind{ProblemCode::UndefinedVariable, "undefined-variable", kError, "a variable that was never assigned"},
    ProblemKind{ProblemCode::UnknownCharacter, "unknown-character", kError, "a character that begins no word"},
    ProblemKind{ProblemCode::UnknownFunction, "unknown-function", kError, "a function that does not exist"},
    ProblemKind{ProblemCode::UnknownHandler, "unknown-handler", kWarning, "a handler that does not exist"},
    ProblemKind{ProblemCode::UnknownLabel, "unknown-label", kError, "goto to a label that does not exist"},
    ProblemKind{ProblemCode::UnknownType, "unknown-type", kError, "a type that does not exist"},
    ProblemKind{ProblemCode::UnreachableCode, "unreachable-code", kWarning, "statements that nothing leads to"},
    ProblemKind{ProblemCode::UnreadableFile, "unreadable-file", kError, "a script that cannot be read"},
    ProblemKind{ProblemCode::UnsetComparison, "unset-comparison", kWarning, "a comparison with a value not set"},
    ProblemKind{ProblemCode::UnsetRead, "unset-read", kWarning,
                "a variable that was never assigned, read without an error"},
    ProblemKind{ProblemCode::UnsetValue, "unset-value", kError, "arithmetic with a value that is not set"},
    ProblemKind{ProblemCode::UnusedLabel, "unused-label", kWarning, "a label that nothing jumps to"},
    ProblemKind{ProblemCode::ValueKind, "value-kind", kError, "a value of the wrong kind"},
    ProblemKind{ProblemCode::WordAsName, "word-as-name", kError, "a word of the language used as a name"},
    ProblemKind{ProblemCode::WordSyntax, "word-syntax", kError, "a statement whose words are not in order"},
};

constexpr bool IsInOrder() {
  for (std::size_t i = 0; i < kKinds.size(); ++i)
    if (i > 0 && std::string_view(kKinds[i - 1].name) >= std::string_view(kKinds[i].name))
      return false;
  return kKinds.size() == static_cast<std::size_t>(ProblemCode::Count);
}
static_assert(IsInOrder());

} // namespace

std::span<const ProblemKind> AllProblemKinds() noexcept {
  return kKinds;
}

const ProblemKind& KindOf(ProblemCode code) noexcept {
  return *std::find_if(kKinds.begin(), kKinds.end(), [code](const ProblemKind& kind) { return kind.code == code; });
}

} // namespace brindle
