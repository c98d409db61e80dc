// The kinds of problems: their stable names, severities and summaries.
// Room: check. Used by: every rule, CScriptCheck::GetCodes.
// May touch: nothing; a table.
// Invariant: a name, once released, is neither changed nor given to another kind of problem.
#pragma once

#include "brindle/check.h"

#include <span>

namespace brindle {

// ORDER PROBLEM; by name
enum class ProblemCode {
  AlterLine,
  AppendNewFile,
  ArrayParentheses,
  AssignmentOperator,
  BareCall,
  BuiltInArguments,
  BuiltInSurplus,
  ByteOrderMark,
  CallParentheses,
  CommentMark,
  ComparisonInExpression,
  ComparisonOperator,
  ConstantCase,
  ControlKind,
  CrossedLoops,
  DeclarationValue,
  DialogParameters,
  DoubledQuote,
  DuplicateDeclare,
  DuplicateLabel,
  DuplicateProcedure,
  ElseIf,
  EndIf,
  ExitStatement,
  ExponentSign,
  FieldCase,
  FormatOrder,
  GlobalCase,
  HashMark,
  IncludeCycle,
  IncludedTwice,
  IncludeSyntax,
  IndexBounds,
  IndexBrackets,
  LabelWord,
  LateGlobal,
  LeadingPoint,
  LiteralOverLines,
  LogicalWord,
  LoopVariable,
  LoopWithoutDo,
  MapWord,
  MisplacedReturn,
  MissingComparison,
  MissingEndBlock,
  MissingEndFunction,
  MissingEndIf,
  MissingEqual,
  MissingExpression,
  MissingFile,
  MissingLoop,
  MissingNext,
  MissingParenthesis,
  MissingThen,
  MissingTo,
  MissingWhile,
  NextWithoutFor,
  NoDialog,
  NoMainProgram,
  NoResult,
  NotAStatement,
  NumberFormat,
  OpenNumber,
  ParameterGlobal,
  PowerExponent,
  PrintLiteral,
  ProcedureArguments,
  ProcedureDefinition,
  ProcedureInFlow,
  ProcedureNamedBuiltIn,
  ProcedureSurplus,
  RecordCopy,
  RemainderOperator,
  ReturnValue,
  SignBeforePower,
  StepClause,
  StrayText,
  TextArithmetic,
  TextNumberComparison,
  TypeSuffix,
  UboundInclusive,
  UboundName,
  UndefinedArray,
  UndefinedVariable,
  UnknownCharacter,
  UnknownFunction,
  UnknownHandler,
  UnknownLabel,
  UnknownType,
  UnreachableCode,
  UnreadableFile,
  UnsetComparison,
  UnsetRead,
  UnsetValue,
  UnusedLabel,
  ValueKind,
  WordAsName,
  WordSyntax,
  Count
};

struct ProblemKind {
  ProblemCode code;
  const char* name;
  CProblemSeverity severity;
  const char* summary;
};

[[nodiscard]] std::span<const ProblemKind> AllProblemKinds() noexcept;
[[nodiscard]] const ProblemKind& KindOf(ProblemCode code) noexcept;

} // namespace brindle
