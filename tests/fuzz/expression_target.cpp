// Expressions: any text as a value, a condition and an argument, by the executing parser and by compiled statements.
#include "fuzz_support.h"

#include "../differential/comparison.h"
#include "platform/code_page.h"
#include "support/test_access.h"

#include <algorithm>
#include <array>

using namespace brindle;

namespace {

constexpr std::size_t kLongest = 240;
constexpr double kLargestNumber = 5000; // lengths of texts: megabytes would only take time
constexpr std::u16string_view kProcedure = u"evaluate";

// What runs the expression three times, so that it is compiled on the way by the usual route as well. No loop: the
// text might change what ends it.
constexpr std::string_view kBefore = R"(global g
g = 7
map create "m"
type place
x as double
name as string
endtype
call evaluate()
call evaluate()
call evaluate()
end
function f(p)
f = p * 2
endfunction
function wrap(p)
wrap = "<" + p + ">"
endfunction
sub evaluate()
a = 3
b = -2.5
t = "text"
n = "12abc"
e = ""
o = hostobject()
dim list[4]
list[0] = 1
list[1] = "two"
dim r as place
r.x = 1.5
call mapset("m", "k", 5)
value = )";

std::string ProgramOf(std::string_view expression) {
  std::string program(kBefore);
  program += expression;
  program += "\nmet = 0\nif ";
  program += expression;
  program += " then\nmet = 1\nendif\nresult = wrap(";
  program += expression;
  program += ")\nlist[2] = ";
  program += expression;
  return program + "\nendsub\n";
}

// What depends on the clock, on chance, or on more than the interpreter.
bool IsAllowed(FUNCTION_TYPE function) {
  constexpr std::array kOthers = {
      FUNCTION_SIN,        FUNCTION_COS,          FUNCTION_TAN,        FUNCTION_ASIN,   FUNCTION_ACOS,
      FUNCTION_ATAN,       FUNCTION_LOG,          FUNCTION_LOG2,       FUNCTION_LOG10,  FUNCTION_SQR,
      FUNCTION_ABS,        FUNCTION_RAD2DMS,      FUNCTION_DMS2RAD,    FUNCTION_ISNAN,  FUNCTION_LOWORD,
      FUNCTION_HIWORD,     FUNCTION_SWAP,         FUNCTION_INT,        FUNCTION_MAX,    FUNCTION_MIN,
      FUNCTION_UBOUND,     FUNCTION_MAPSET,       FUNCTION_MAPGET,     FUNCTION_MAPHAS, FUNCTION_MAPREMOVE,
      FUNCTION_MAPGETKEYS, FUNCTION_MAPGETVALUES, FUNCTION_LEFT,       FUNCTION_RIGHT,  FUNCTION_MID,
      FUNCTION_INSTR,      FUNCTION_REPLACE,      FUNCTION_LCASE,      FUNCTION_UCASE,  FUNCTION_LEN,
      FUNCTION_REPEAT,     FUNCTION_FORMAT,       FUNCTION_VAL,        FUNCTION_STR,    FUNCTION_GETPATH,
      FUNCTION_GETNAME,    FUNCTION_POINTOFFSET,  FUNCTION_GETVARSTATS};
  return std::find(kOthers.begin(), kOthers.end(), function) != kOthers.end();
}

// Commands and labels could make a program that never ends; those are for the fuzzer of scripts.
bool IsTokenAllowed(const Token& token, FunctionTable& functions) {
  if (token.lowered.Find(CString(kProcedure)) >= 0 || token.text.Find(CString(kProcedure)) >= 0)
    return false; // it would call itself without end
  switch (token.kind) {
  case TOKEN_LABEL: return false;
  case TOKEN_COMMAND: return token.command == COMMAND_THEN || token.command == COMMAND_TO;
  case TOKEN_NUMBER: return token.number <= kLargestNumber;
  case TOKEN_FUNCTION: {
    const CFuncDesc* function = functions.Find(token.lowered);
    return function == nullptr || IsAllowed(function->m_nCode);
  }
  default: return true;
  }
}

bool IsTextAllowed(std::u16string_view text) {
  static CBrindle interpreter; // for its tables
  InterpreterState& state = BrindleTestAccess::State(interpreter);
  for (std::uint32_t position = 0; position < text.size();) {
    const Token token = ScanToken(text, SkipBlanks(text, position), state.words);
    if (!IsTokenAllowed(token, state.functions))
      return false;
    position = std::max(token.end, position + 1);
  }
  return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view expression(reinterpret_cast<const char*>(data), std::min(size, kLongest));
  const std::u16string text = CodePage::Utf8().Decode(expression);
  // Behind a quote that an earlier copy has left open the text reads the other way round.
  if (!IsTextAllowed(text) || !IsTextAllowed(u'"' + text))
    return -1;

  unsigned sum = 1;
  for (std::size_t i = 0; i < expression.size(); ++i)
    sum = sum * 31 + data[i];
  Trial trial;
  trial.program = ProgramOf(expression);
  // One route an input: more inputs show more than more routes.
  if (sum % 3 == 0)
    trial.routes = {{CEnvironment::Route::Automatic, 0}};
  else
    trial.routes = {{CEnvironment::Route::Eager, sum % 3 == 1 ? 0 : 1 + sum / 3 % 30}};
  trial.user.patience = 60;
  std::string report;
  const Verdict verdict = CompareRuns(trial, fuzz::ScratchFolder(), &report, [](const RouteChoice&) {});
  if (verdict == Verdict::Different)
    std::fprintf(stderr, "---- program\n%s%s", trial.program.c_str(), report.c_str());
  fuzz::Require(verdict == Verdict::Equal || verdict == Verdict::TooDeep,
                "compiled statements do what the parser does");
  return 0;
}
