// Variables: what they may be, which are global, and what to say about one that nobody has assigned.
#include "check/checker.h"

namespace brindle {

namespace {

constexpr const char* kTakenForVariable = "It is taken for a variable, and that is an error here. ";

// A name with a level's mark means that level's variable, from anywhere.
bool NamesLevel(const CString& name) {
  return name.Find(CString(u"__#")) >= 0;
}

} // namespace

bool ScriptChecker::IsGlobal(const CString& name) const {
  return m_outline.globals.contains(name) || NamesLevel(name);
}

ValueKinds ScriptChecker::KindsOf(const Token& name) const {
  if (name.text == u"True" || name.text == u"False")
    return kNumberValue;
  if (name.text == u"Nothing")
    return kNotSet | kObjectValue;
  if (IsGlobal(name.text))
    return kAnyValue;
  const int number = m_outline.NumberOf(name.lowered);
  if (m_outline.levelNames.contains(name.lowered))
    return kAnyValue;
  return number < 0 ? kAnyValue : m_state.variables[static_cast<std::size_t>(number)];
}

// What has become of a name that some "global" names: nothing yet, a variable like others, or a global.
ValueKinds* ScriptChecker::GlobalMark(const Token& name) {
  const int number = m_outline.NumberOf(Outline::GlobalKey(name.text));
  return number < 0 ? nullptr : &m_state.variables[static_cast<std::size_t>(number)];
}

// Weak: the variable keeps what it may have been.
void ScriptChecker::SetKinds(const Token& name, ValueKinds kinds, bool weak) {
  if (IsGlobal(name.text)) {
    if (ValueKinds* mark = GlobalMark(name); mark != nullptr && *mark == kUndefinedValue)
      *mark = kMadeBeforeGlobal;
    return;
  }
  const int number = m_outline.NumberOf(name.lowered);
  if (number < 0)
    return;
  ValueKinds& known = m_state.variables[static_cast<std::size_t>(number)];
  known = weak ? static_cast<ValueKinds>((known & ~kUndefinedValue) | kinds) : kinds;
  if (InProcedure())
    Procedure().assigned.insert(number);
}

void ScriptChecker::CheckGlobalCase(const Token& name) {
  if (IsGlobal(name.text))
    return;
  const auto global = m_outline.globalsByLowered.find(name.lowered);
  if (global == m_outline.globalsByLowered.end())
    return;
  if (InProcedure())
    for (const Token* parameter : Procedure().parameters)
      if (parameter->lowered == name.lowered)
        return;
  Report(ProblemCode::GlobalCase, name,
         Quoted(name) + " is another variable than the global \"" + global->second.ToUtf8() + "\"",
         "Upper and lower case count in globals: this makes a variable of its own. Write " + global->second.ToUtf8() +
             ".");
}

void ScriptChecker::ReportUndefined(const Token& name) {
  const CString& lowered = name.lowered;
  const std::string spelt = name.text.ToUtf8();
  for (const char16_t* constant : {u"True", u"False", u"Nothing"}) {
    if (CString(constant).CompareNoCase(name.text) != 0)
      continue;
    Report(ProblemCode::ConstantCase, name, Quoted(name) + " is no constant",
           "Upper and lower case count: this is a variable that was never assigned, and an error here. Write " +
               CString(constant).ToUtf8() + ".");
    return;
  }
  if (IsRecord(name.text)) {
    Report(ProblemCode::RecordCopy, name, Quoted(name) + " is a record, which has no value as a whole",
           "It is read as a variable that was never assigned, which is an error. Copy field by field.");
    return;
  }
  if (m_reader.UnitAt(name.end) == u'$') {
    Report(ProblemCode::TypeSuffix, name, Quoted(name) + " is followed by $",
           "Names have no sign of their type, variables hold any value. Write " + spelt + " alone.");
    return;
  }
  std::string message = "the variable " + Quoted(name) + " is read but was never assigned";
  std::string hint = "The statement fails: a name without a value ends an expression. Assign the variable first.";
  if (const std::string_view dialect = HintForOperand(lowered.View()); !dialect.empty()) {
    Report(ProblemCode::LogicalWord, name, Quoted(name) + " is no operator", kTakenForVariable + std::string(dialect));
    return;
  }
  if (const auto global = m_outline.globalsByLowered.find(lowered); global != m_outline.globalsByLowered.end())
    hint = "Upper and lower case count in globals: this is another variable. Write " + global->second.ToUtf8() + ".";
  else if (m_outline.procedureOf.contains(lowered) || m_reader.FindFunction(lowered) != nullptr)
    hint = "It is taken for a variable. A call needs its parentheses right behind the name: " + spelt + "(...).";
  else if (name.text.Find(u'\\') >= 0)
    hint = "\"\\\" belongs to the name. Write int(a / b) for a whole quotient.";
  else if (InProcedure())
    hint = "A procedure sees its parameters, what it assigns itself and what `global` names. Pass the value, or write "
           "`global " +
           spelt + "` in the main program, in front of its first assignment.";
  Report(ProblemCode::UndefinedVariable, name, std::move(message), std::move(hint));
}

} // namespace brindle
