#include "check/dialect.h"

#include <algorithm>
#include <array>

namespace brindle {

namespace {

struct Row {
  std::u16string_view word;
  std::string_view hint;
};

constexpr std::array kStatements = {
    Row{u"case", "There is no select: write if ... then ... else if ... endif endif."},
    Row{u"const", "There are no constants: assign a variable, after `global` when procedures read it."},
    Row{u"continue", "There is no continue: put the rest of the loop's body into an if, or goto a label before next."},
    Row{u"elseif", "There is no elseif: write `else`, a new `if` below it, and an `endif` for each of the two."},
    Row{u"exit", "There is no exit: leave a loop by goto to a label behind it, a procedure by return."},
    Row{u"gosub", "There is no gosub: write a sub and `call` it."},
    Row{u"let", "There is no let: write the assignment alone."},
    Row{u"local", "Every variable of a procedure is its own already; `dim` makes arrays."},
    Row{u"on", "There is no on: an error shows a box; write if and goto for jumps."},
    Row{u"option", "There are no options."},
    Row{u"private", "There is no private: what `global` does not name is a procedure's own."},
    Row{u"public", "There is no public: write global."},
    Row{u"redim", "There is no redim: `dim` an array again to change its size."},
    Row{u"repeat", "There is no repeat loop: write do while ... loop."},
    Row{u"resume", "There is no resume: an error's box decides how the run goes on."},
    Row{u"select", "There is no select: write if ... then ... else if ... endif endif."},
    Row{u"set", "There is no set: write the assignment alone."},
    Row{u"static", "There are no static variables: write global."},
    Row{u"step", "There is no step: the loop counts by 1. Multiply inside the loop, or write do while."},
    Row{u"until", "There is no until: write do while with the opposite comparison, and loop alone."},
    Row{u"var", "There is no var: write the assignment alone, or dim for an array."},
    Row{u"wend", "There is no wend: a do while ends with loop."},
    Row{u"while", "There is no while loop: write do while ... loop."},
};

constexpr std::array kOperands = {
    Row{u"and", "There is no and: nest two ifs."},
    Row{u"div", "There is no div: write int(a / b)."},
    Row{u"mod", "There is no mod: write a - int(a / b) * b."},
    Row{u"not", "There is no not: write the opposite comparison, or use else."},
    Row{u"or", "There is no or: write two ifs, or set a variable in the first one and ask for it."},
    Row{u"xor", "There is no xor: nest two ifs."},
};

constexpr std::array kFunctions = {
    Row{u"asc", "There is no asc: look the character up by instr in a text of all that can come."},
    Row{u"chr", "There is no chr: format(code, \"%c\") gives the character of a code."},
    Row{u"cint", "Write int(x), which cuts the fraction off."},
    Row{u"cstr", "Write str(x)."},
    Row{u"date", "Write year(), month() and day()."},
    Row{u"eof", "Write iseof(number)."},
    Row{u"exp", "There is no exp, and ^ takes whole exponents only."},
    Row{u"fix", "Write int(x), which cuts the fraction off."},
    Row{u"lbound", "Indices begin at 0."},
    Row{u"length", "Write len(text), or ubound(\"name\") for an array."},
    Row{u"lower", "Write lcase(text)."},
    Row{u"msgbox", "Write print, or ask(text) for a question."},
    Row{u"now", "Write year(), month(), day(), hour(), minute() and second()."},
    Row{u"rnd", "Write rand(n), a whole number from 0 to n."},
    Row{u"round", "Write int(x + 0.5) for a number that is not negative."},
    Row{u"sgn", "Compare with 0."},
    Row{u"sqrt", "Write sqr(x)."},
    Row{u"substr", "Write mid(text, start, count); positions begin at 0."},
    Row{u"time", "Write hour(), minute() and second()."},
    Row{u"upper", "Write ucase(text)."},
};

template <class Table> std::string_view Find(const Table& table, std::u16string_view word) noexcept {
  const auto row = std::find_if(table.begin(), table.end(), [word](const Row& each) { return each.word == word; });
  return row == table.end() ? std::string_view() : row->hint;
}

} // namespace

std::string_view HintForStatement(std::u16string_view word) noexcept {
  return Find(kStatements, word);
}

std::string_view HintForOperand(std::u16string_view word) noexcept {
  return Find(kOperands, word);
}

std::string_view HintForFunction(std::u16string_view word) noexcept {
  return Find(kFunctions, word);
}

} // namespace brindle
