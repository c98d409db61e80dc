// Expressions of random programs.
#include "program_generator.h"

namespace {

constexpr const char* kNames[] = {"a", "b", "c", "n", "i", "j", "k", "s", "t", "u", "v", "w"};
constexpr const char* kRareNames[] = {"A",       "N",     "S",    "T",       "x__#1", "a__#1",
                                      "a__#2",   "s__#2", "nope", "nothing", "True",  "False",
                                      "Nothing", "f1",    "f2",   "p",       "Late",  "late"};
constexpr const char* kArrays[] = {"p", "q", "r"};

} // namespace

std::string ProgramGenerator::Name() {
  return m_random.Percent(12) ? m_random.Of(kRareNames) : m_random.Of(kNames);
}

std::string ProgramGenerator::ArrayName() {
  return m_random.Percent(10) ? Name() : m_random.Of(kArrays);
}

std::string ProgramGenerator::NumberText() {
  constexpr const char* kOdd[] = {"0",     "0.5",        "2147483647", "2147483648", "4294967296", "1e300",
                                  "1e-13", "9999999999", "1.9999",     "1e9",        "100000",     "0.1"};
  if (m_random.Percent(15))
    return m_random.Of(kOdd);
  return std::to_string(m_random.Below(6)) + (m_random.Percent(15) ? ".25" : "");
}

std::string ProgramGenerator::Literal() {
  constexpr const char* kTexts[] = {"\"\"",    "\"x\"",  "\"abc\"", "\"12\"",   "\"1.5e2x\"", "\" 7\"",
                                    "\"-3\"",  "\"+\"",  "\"%d\"",  "\"%.2f\"", "\"ä€\"",     "\"a,b;c\"",
                                    "\"key\"", "\"m1\"", "\"*\"",   "\"p\"",    "\"n\""};
  return m_random.Of(kTexts);
}

std::string ProgramGenerator::Index(int depth) {
  switch (m_random.Below(12)) {
  case 0: return "-" + NumberText();
  case 1: return "0.75";
  case 2: return Literal();
  case 3: return "99";
  case 4: return "0/0";
  case 5:
  case 6: return m_random.Percent(50) ? "i" : "j";
  case 7: return Any(depth - 1);
  case 8: return "-0.5";
  default: return std::to_string(m_random.Below(4));
  }
}

std::string ProgramGenerator::Element(int depth) {
  return ArrayName() + "[" + Index(depth) + "]";
}

std::string ProgramGenerator::Arguments(int depth, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    text += i > 0 ? ", " : "";
    text += m_random.Percent(15) ? ArrayName() : m_random.Percent(40) ? Any(depth - 1) : Numeric(depth - 1);
  }
  return text;
}

std::string ProgramGenerator::ScriptCall(int depth) {
  const int procedure = m_random.Below(m_procedures + 1);
  if (procedure == m_procedures && m_random.Percent(80))
    return "f1(" + Arguments(depth, 1) + ")";
  const std::string spelling = m_random.Percent(10) ? "F" : "f";
  // One parameter more than the number's remainder by three.
  const int count = m_random.Percent(88) ? procedure % 3 : m_random.Below(4);
  return spelling + std::to_string(procedure) + "(" + Arguments(depth, count) + ")";
}

std::string ProgramGenerator::BuiltInCall(int depth, bool text) {
  struct BuiltIn {
    const char* name;
    int arguments;
  };
  constexpr BuiltIn kTexts[] = {{"left", 2},   {"right", 2},    {"mid", 3},    {"replace", 3},
                                {"lcase", 1},  {"ucase", 1},    {"str", 1},    {"repeat", 2},
                                {"format", 2}, {"hosttext", 1}, {"mapget", 2}, {"mapgetkeys", 1}};
  constexpr BuiltIn kNumbers[] = {{"len", 1},          {"val", 1},         {"instr", 2},
                                  {"int", 1},          {"abs", 1},         {"max", 2},
                                  {"min", 2},          {"sqr", 1},         {"sin", 1},
                                  {"log2", 1},         {"ubound", 1},      {"isnan", 1},
                                  {"loword", 1},       {"swap", 1},        {"maphas", 2},
                                  {"hostadd", 2},      {"hostset", 2},     {"garbagecollection", 0},
                                  {"rand", 1},         {"getvarstats", 0}, {"mapset", 3},
                                  {"mapgetvalues", 1}, {"hostobject", 0},  {"latehost", 1},
                                  {"hostlate", 0},     {"pointoffset", 7}, {"hostcall", 1},
                                  {"mapremove", 2}};
  constexpr std::size_t kCommonNumbers = 9;
  constexpr std::size_t kCommonTexts = 3;
  const BuiltIn call =
      text ? kTexts[m_random.Below(static_cast<int>(m_random.Percent(50) ? kCommonTexts : std::size(kTexts)))]
           : kNumbers[m_random.Below(static_cast<int>(m_random.Percent(60) ? kCommonNumbers : std::size(kNumbers)))];
  const std::string name = call.name;
  const int count = m_random.Percent(94) ? call.arguments : m_random.Below(4);
  std::string out = name + "(";
  for (int i = 0; i < count; ++i) {
    out += i > 0 ? ", " : "";
    const bool isName =
        i == 0 && (name.starts_with("map") || name == "ubound" || name == "hostset" || name == "hostcall");
    if (isName)
      out += name.starts_with("map") ? "\"m1\""
             : name == "hostcall"    ? "\"f" + std::to_string(m_random.Below(4)) + "\""
                                     : "\"" + Name() + "\"";
    else if (name == "rand")
      out += "0";
    else if (name == "format" && i == 1)
      out += m_random.Percent(90) ? Literal() : Any(depth - 1);
    else if ((text || name == "len" || name == "val" || name == "instr") && i == 0)
      out += Text(depth - 1);
    else if (name == "replace" || name == "instr")
      out += m_random.Percent(70) ? Text(depth - 1) : Element(depth - 1);
    else if (name == "left" || name == "right" || name == "mid")
      out += m_random.Percent(60) ? std::to_string(m_random.Below(4)) : Numeric(depth - 1);
    else
      out += Numeric(depth - 1);
  }
  return out + ")";
}

std::string ProgramGenerator::Numeric(int depth) {
  if (m_random.Percent(m_wildness))
    return Any(depth);
  if (depth <= 0)
    return m_random.Percent(60) ? Name() : NumberText();
  switch (m_random.Below(13)) {
  case 0:
  case 1: return NumberText();
  case 2:
  case 3: return Name();
  case 4: return Element(depth);
  case 5: return (m_random.Percent(80) ? "-" : "+") + Numeric(depth - 1);
  case 6: return "(" + Numeric(depth - 1) + ")";
  case 7: return ScriptCall(depth);
  case 8: return BuiltInCall(depth, false);
  default: {
    constexpr const char* kOperators[] = {"+", "-", "*", "/", " + ", " - ", " * ", " % ", "^"};
    std::string operation = m_random.Of(kOperators);
    if (operation == "^")
      return Numeric(depth - 1) + "^" + std::to_string(m_random.Below(4));
    return Numeric(depth - 1) + operation + Numeric(depth - 1);
  }
  }
}

std::string ProgramGenerator::Text(int depth) {
  if (m_random.Percent(m_wildness))
    return Any(depth);
  if (depth <= 0)
    return m_random.Percent(50) ? Literal() : m_random.Percent(50) ? "s" : "t";
  switch (m_random.Below(9)) {
  case 0:
  case 1: return Literal();
  case 2:
  case 3: return m_random.Percent(50) ? "s" : "t";
  case 4: return BuiltInCall(depth, true);
  case 5: return "(" + Text(depth - 1) + ")";
  case 6: return ScriptCall(depth);
  default: return Text(depth - 1) + " + " + (m_random.Percent(60) ? Text(depth - 1) : Numeric(depth - 1));
  }
}

std::string ProgramGenerator::Any(int depth) {
  switch (m_random.Below(7)) {
  case 0: return Literal();
  case 1: return NumberText();
  case 2: return ArrayName();
  case 3: return depth > 0 ? Text(depth - 1) : Name();
  case 4: return depth > 0 ? Element(depth - 1) : Name();
  default: return depth > 0 ? Numeric(depth - 1) : Name();
  }
}

std::string ProgramGenerator::Condition() {
  constexpr const char* kComparisons[] = {" = ", " < ", " > ", "<>", " <= ", " => ", " ~~ ", "!=", " == ", " < "};
  const std::string comparison = m_random.Percent(97) ? m_random.Of(kComparisons) : " >= ";
  if (m_random.Percent(25))
    return Text(2) + comparison + Text(1);
  return Numeric(2) + comparison + Numeric(2);
}
