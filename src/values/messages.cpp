#include "values/messages.h"

#include <array>
#include <string_view>

namespace brindle {

namespace {

// Index = number. Spelling and grammar are fixed: hosts and users match on these texts.
constexpr std::array<std::u16string_view, 66> kMessages = {
    u"",
    u"Syntax error",
    u"Unbalanced parens",
    u"No expression present",
    u"Expected: =",
    u"Not a variable",
    u"Lable table full", // Deliberate: the text has always been spelt so
    u"Duplicate label",
    u"Undefined label",
    u"Expected: THEN",
    u"Expected: TO",
    u"Too many nested FOR loops",
    u"NEXT without FOR",
    u"Too many nested GOSUBs",
    u"Incorrect location of the RETURN statement",
    u"Illegal arithmetic operator",
    u"Source file is empty",
    u"Not enough memory to load source file",
    u"Unexpected operator",
    u"Return value of the function is not defined",
    u"ENDFUNCTION statement is missing",
    u"Undefined function name",
    u"Incorrect function call",
    u"Incorrect function definition",
    u"Incorrect number of function parameters",
    u"Incorrect external library name",
    u"Incorrect external function name",
    u"Duplicate function definition",
    u"Function declaration found in main program code",
    u"Invalid keyword ", // Deliberate: with the trailing blank
    u"Attempting to use variable that is not initialized",
    u"Invalid argument type",
    u"Incorrect array size",
    u"Invalid field name",
    u"Field name does not exists in data structure",
    u"Undefined array variable",
    u"Array index is out of bounds",
    u"Undefined variable",
    u"Incorrect assignment operator. Can't assign array to a varaible.", // Deliberate: spelt so
    u"Incorrect assignment operator. Can't assign variable to an array.",
    u"Unsupported keyword",
    u"Unsupported dialog control name.",
    u"Dialog creating error",
    u"No active dialogs open",
    u"Incorrect control ID",
    u"Incorrect parameter",
    u"File number is out of valid range",
    u"File does not exist",
    u"OK",
    u"Invalid file handle",
    u"Brindle unrecoverable error",
    u"File I/O Error. Actual number of bytes is different than requested.",
    u"File is not open in text mode.\nCan't perform operation.",
    u"Run-time file I/O error.",
    u"\"While\" keyword is missing.",
    u"Illegal NEXT statement.",
    u"ELSE or ENDIF statement is missing",
    u"Invalid dBase file handle",
    u"True",
    u"False",
    u"Limit of statements reached",
    u"Limit of time reached",
    u"Limit of memory reached",
    u"Limit of nested calls reached",
    u"Stopped by the host",
    u"Not allowed",
};

} // namespace

std::optional<CString> LoadMessage(int number) {
  if (number < 1 || number >= static_cast<int>(kMessages.size()))
    return std::nullopt;
  return CString(kMessages[static_cast<std::size_t>(number)]);
}

} // namespace brindle
