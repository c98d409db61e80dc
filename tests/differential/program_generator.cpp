// Statements of random programs.
#include "program_generator.h"

namespace {

constexpr int kMostSteps = 160; // of all loop bodies and procedures together
constexpr int kDeepestBlock = 3;

} // namespace

std::string ProgramGenerator::Separator() {
  switch (m_random.Below(14)) {
  case 0: return " : ";
  case 1: return "   ";
  case 2: return " # remark next endif\n";
  case 3: return "\n\n";
  case 4: return "\nrem a remark: for if do\n";
  case 5: return "\r\n";
  default: return "\n";
  }
}

void ProgramGenerator::Line(const std::string& text) {
  m_text += std::string(static_cast<std::size_t>(m_nesting) * 2, ' ') + text + Separator();
}

// Counts a step; the program ends by itself at the last one.
std::string ProgramGenerator::Guard() {
  return "wd = wd + 1\nif wd > " + std::to_string(kMostSteps) + " then end endif\n";
}

void ProgramGenerator::Statements(int count) {
  for (int i = 0; i < count; ++i)
    Statement();
}

void ProgramGenerator::Block(int statements) {
  ++m_nesting;
  Statements(statements);
  --m_nesting;
}

void ProgramGenerator::Assignment() {
  std::string target;
  if (m_random.Percent(20))
    target = Element(1);
  else if (m_random.Percent(8))
    target = ArrayName();
  else
    target = Name();
  const bool isTextual = target == "s" || target == "t" || target == "S" || target == "T";
  std::string value;
  if (m_random.Percent(12))
    value = Any(3);
  else if (isTextual ? m_random.Percent(85) : m_random.Percent(10))
    value = Text(3);
  else
    value = Numeric(3);
  // The shapes that programs are full of.
  if (m_random.Percent(4))
    value = m_random.Of({"mapget", "maphas"}) + "(\"m1\", " + Text(1) + ")";
  else if (m_random.Percent(6))
    value = "int(" + Numeric(2) + ")";
  else if (m_random.Percent(4))
    value = "f" + std::to_string(m_random.Below(3)) + "()";
  else if (m_random.Percent(4))
    value = Text(1) + " + sqr(" + Numeric(1) + ") + len(" + Text(1) + ")";
  if (m_random.Percent(20))
    value = isTextual ? target + " + " + Text(1) : target + " + " + Numeric(1);
  Line(target + " = " + value);
}

void ProgramGenerator::If() {
  Line("if " + Condition() + " then");
  Block(1 + m_random.Below(2));
  if (m_random.Percent(50)) {
    Line("else");
    Block(1 + m_random.Below(2));
  }
  if (m_random.Percent(98))
    Line("endif");
}

void ProgramGenerator::For() {
  constexpr const char* kCounters[] = {"i", "j", "k", "n", "a", "i", "j", "I"};
  const std::string counter = m_random.Percent(97) ? m_random.Of(kCounters) : Name();
  std::string end = std::to_string(m_random.Below(4));
  if (m_random.Percent(30))
    end = m_random.Percent(30) ? counter + " + 2" : Numeric(2);
  const std::string start = m_random.Percent(80) ? std::to_string(m_random.Below(3)) : Numeric(2);
  Line("for " + counter + " = " + start + " to " + end);
  m_text += Guard();
  Block(1 + m_random.Below(3));
  if (m_random.Percent(97))
    Line(m_random.Percent(96) ? "next" : "next " + counter);
}

void ProgramGenerator::Do() {
  const std::string counter = "c";
  Line(counter + " = 0");
  if (m_random.Percent(80))
    Line("do while " + counter + " < " + std::to_string(m_random.Below(4)));
  else
    Line("do while " + Condition());
  m_text += Guard();
  m_text += counter + " = " + counter + " + 1\n";
  Block(1 + m_random.Below(2));
  if (m_random.Percent(97))
    Line("loop");
}

void ProgramGenerator::GotoLoop() {
  const std::string label = "back" + std::to_string(++m_loops);
  const std::string counter = "z" + std::to_string(m_loops);
  Line(counter + " = 0");
  m_text += label + ":\n" + Guard();
  m_text += counter + " = " + counter + " + 1\n";
  Block(1 + m_random.Below(3));
  m_text += "if " + counter + " < 3 then goto " + label + " endif\n";
}

// Out of whatever it stands in: a label behind the next few statements, or one anywhere.
void ProgramGenerator::Jump() {
  if (!m_labels.empty() && m_random.Percent(15)) {
    Line("if " + Condition() + " then goto " +
         m_labels[static_cast<std::size_t>(m_random.Below(static_cast<int>(m_labels.size())))] + " endif");
    return;
  }
  const std::string label = "on" + std::to_string(++m_loops);
  Line("if " + Condition() + " then goto " + label + " endif");
  Statements(1 + m_random.Below(2));
  m_text += label + ":\n";
  m_labels.push_back(label);
}

void ProgramGenerator::CallStatement() {
  switch (m_random.Below(8)) {
  case 0: Line("call " + BuiltInCall(2, m_random.Percent(50))); break;
  case 1: Line("call mapset(\"m1\", " + Text(1) + ", " + Any(2) + ")"); break;
  case 2: Line("throw changed(" + Arguments(2, m_random.Below(3)) + ")"); break;
  default: Line("call " + ScriptCall(2)); break;
  }
}

void ProgramGenerator::Print() {
  std::string text = "print " + Any(2);
  const int count = m_random.Below(3);
  for (int i = 0; i < count; ++i)
    text += (m_random.Percent(70) ? "; " : ", ") + Any(2);
  Line(text + (m_random.Percent(20) ? ";" : ""));
}

void ProgramGenerator::Rare() {
  switch (m_random.Below(20)) {
  case 0: Line("next"); break;
  case 1: Line("loop"); break;
  case 2: Line(m_random.Percent(50) ? "else" : "endif"); break;
  case 3: Line(m_random.Percent(50) ? "return" : m_random.Percent(50) ? "endfunction" : "endsub"); break;
  case 4: Line("global " + Name()); break;
  case 5: Line("global " + ArrayName() + "[3]"); break;
  case 6: Line("dim " + ArrayName() + "[" + (m_random.Percent(80) ? "5" : Index(1)) + "]"); break;
  case 7: Line("dim " + Name() + (m_random.Percent(50) ? " as integer" : "")); break;
  case 8: Line("watch create " + Name() + " changed"); break;
  case 9: Line("watch remove " + Name()); break;
  case 10: Line("event create changed f" + std::to_string(m_random.Below(4))); break;
  case 11: Line("event remove changed f" + std::to_string(m_random.Below(4))); break;
  case 12: Line("map create \"m1\""); break;
  case 13: Line(m_random.Percent(60) ? "gosub " + std::string("anywhere") : "goto nowhere"); break;
  case 14: Line("if wd > 40 then end endif"); break;
  case 15: Line("a = garbagecollection()"); break;
  case 16: Line("q = getvarstats()"); break;
  case 17: Line("global wd"); break;
  case 18: Line(m_random.Percent(30) ? "call hostthrow()" : "watch create i changed"); break;
  default: Line("v = hostobject()"); break;
  }
}

void ProgramGenerator::Statement() {
  const int kind = m_random.Below(100);
  const bool deep = m_nesting >= kDeepestBlock;
  if (kind < 45 || (deep && kind < 75))
    Assignment();
  else if (kind < 54)
    If();
  else if (kind < 62)
    For();
  else if (kind < 66)
    Do();
  else if (kind < 69)
    GotoLoop();
  else if (kind < 74)
    Jump();
  else if (kind < 82)
    CallStatement();
  else if (kind < 93)
    Print();
  else
    Rare();
}

void ProgramGenerator::Procedure(int number) {
  constexpr const char* kParameters[] = {"n", "a", "s", "t", "b", "u", "p"};
  const bool isFunction = m_random.Percent(85);
  const std::string name = (m_random.Percent(10) ? "F" : "f") + std::to_string(number);
  std::string text = std::string(isFunction ? "function " : "sub ") + name + "(";
  for (int i = 0; i < number % 3; ++i)
    text += (i > 0 ? ", " : "") + m_random.Of(kParameters);
  m_text += text + (m_random.Percent(15) ? ") # a remark\n" : ")\n") + Guard();
  m_inProcedure = true;
  if (m_random.Percent(20))
    m_text += "dim p[3]\np[1] = " + Numeric(1) + "\n";
  Statements(1 + m_random.Below(4));
  if (m_random.Percent(30))
    m_text += "if " + std::string(m_random.Percent(50) ? "n" : "wd") + " > 1 then " + name + " = " + ScriptCall(1) +
              (m_random.Percent(50) ? " + 1" : "") + " endif\n";
  if (m_random.Percent(20))
    m_text += "if " + Condition() + " then " + name + " = " + Any(1) + " return endif\n";
  if (m_random.Percent(85))
    m_text += name + " = " + (m_random.Percent(70) ? Numeric(2) : Any(2)) + "\n";
  m_inProcedure = false;
  if (m_random.Percent(98))
    m_text += isFunction ? "endfunction\n" : "endsub\n";
}

std::string ProgramGenerator::Generate() {
  constexpr int kWildness[] = {0, 2, 6, 15};
  m_wildness = kWildness[m_random.Below(4)];
  m_procedures = 1 + m_random.Below(5);
  m_text = "global wd\nwd = 0\n";
  if (m_random.Percent(80))
    m_text += "a = 1 : b = 2 : c = 3 : n = 2 : k = 0\ns = \"text\"\nt = \"7\"\nu = 0.5\nv = 4\nw = 1\ni = 1\nj = 0\n";
  if (m_random.Percent(60))
    m_text += "dim p[5]\n";
  if (m_random.Percent(50))
    m_text += m_random.Percent(50) ? "global q[4]\n" : "dim q[3]\n";
  for (int globals = m_random.Percent(35) ? 1 + m_random.Below(3) : 0; globals > 0; --globals)
    m_text += "global " + Name() + "\n";
  if (m_random.Percent(30))
    m_text += "map create \"m1\"\n";
  if (m_random.Percent(15))
    m_text += "event create changed f" + std::to_string(m_random.Below(3)) + "\nwatch create " + Name() + " changed\n";
  const bool repeated = m_random.Percent(80);
  if (repeated)
    m_text += "for round = 1 to 3\n" + Guard();
  Statements(3 + m_random.Below(8));
  m_text += "anywhere:\n";
  if (repeated)
    m_text += "next\n";
  m_text += "print \"done\"; a; b; s\n";
  if (m_random.Percent(90))
    m_text += "end\n";
  for (int i = 0; i < m_procedures; ++i)
    Procedure(i);
  return m_text;
}
