// The numbers that errors are reported with, by name. The texts stand in values/messages.cpp.
// Room: interpreter. Used by: everything that reports an error.
// May touch: nothing; a table.
// Invariant: some faults report a neighbour's number on purpose; the name tells the number's text, and the
// place that reports it says so.
#pragma once

namespace brindle {

enum ErrorNumber : int {
  kErrorNoText = 0, // Deliberate: there is no text for it; the user sees only the line
  kErrorSyntax = 1,
  kErrorUnbalancedParens = 2,
  kErrorNoExpression = 3,
  kErrorExpectedEqual = 4,
  kErrorLabelTableFull = 6,
  kErrorDuplicateLabel = 7,
  kErrorExpectedThen = 9,
  kErrorExpectedTo = 10,
  kErrorReturnLocation = 14,
  kErrorLoadingSource = 17,
  kErrorUnexpectedOperator = 18,
  kErrorNoReturnValue = 19,
  kErrorEndFunctionMissing = 20,
  kErrorUndefinedFunction = 21,
  kErrorFunctionCall = 22,
  kErrorFunctionDefinition = 23,
  kErrorParameterCount = 24,
  kErrorLibraryName = 25,
  kErrorRoutineName = 26,
  kErrorDuplicateFunction = 27,
  kErrorFunctionInMain = 28,
  kErrorInvalidKeyword = 29,
  kErrorArgumentType = 31,
  kErrorArraySize = 32,
  kErrorInvalidFieldName = 33,
  kErrorUnknownField = 34,
  kErrorUndefinedArray = 35,
  kErrorIndexBounds = 36,
  kErrorUndefinedVariable = 37,
  kErrorUnsupportedKeyword = 40,
  kErrorDialogControl = 41,
  kErrorDialogCreating = 42,
  kErrorNoDialog = 43,
  kErrorControlId = 44,
  kErrorParameter = 45,
  kErrorFileNumber = 46,
  kErrorFileNotFound = 47,
  kErrorFileHandle = 49,
  kErrorUnrecoverable = 50,
  kErrorShortRead = 51,
  kErrorNotTextMode = 52,
  kErrorFileInputOutput = 53,
  kErrorWhileMissing = 54,
  kErrorIllegalNext = 55,
  kErrorElseOrEndIfMissing = 56,
  kErrorDbfHandle = 57,
  // The first five end the run: nobody is asked.
  kErrorStatementLimit = 60,
  kErrorTimeLimit = 61,
  kErrorMemoryLimit = 62,
  kErrorCallLimit = 63,
  kErrorStopped = 64,
  kErrorNotAllowed = 65
};

} // namespace brindle
