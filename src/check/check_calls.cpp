// Calls: of built-in functions, procedures, declared routines and members of objects.
#include "check/checker.h"

#include <algorithm>

namespace brindle {

namespace {

constexpr int kMostExternalParameters = 32;

std::string Counted(int count) {
  return count == 1 ? "1 argument" : std::to_string(count) + " arguments";
}

std::string CountedParameters(const CheckedProcedure& procedure) {
  const std::size_t count = procedure.parameters.size();
  return count == 1 ? "1 parameter" : std::to_string(count) + " parameters";
}

// "1 argument", "2 to 3 arguments"
std::string Range(const FunctionSignature& signature) {
  if (signature.most == FunctionSignature::kNoLimit)
    return "at least " + Counted(signature.fewest);
  if (signature.fewest == signature.most)
    return Counted(signature.fewest);
  return std::to_string(signature.fewest) + " to " + Counted(signature.most);
}

} // namespace

// The list behind a name; its ")" is current afterwards.
bool ScriptChecker::Arguments(std::vector<Operand>& arguments) {
  const Token& open = m_reader.Next();
  m_reader.Next();
  if (m_reader.IsDelimiter(u')'))
    return true;
  m_reader.PutBack();
  do {
    Operand argument;
    if (!Expression(argument))
      return false;
    arguments.push_back(argument);
    m_reader.Next();
  } while (m_reader.IsDelimiter(u','));
  if (m_reader.IsDelimiter(u')'))
    return true;
  const Token& token = m_reader.Current();
  const std::u16string_view text = token.text.View();
  if (FollowsLiteral(token))
    Report(
        ProblemCode::DoubledQuote, token, "a doubled quote ends the literal",
        "A literal ends at its next quote and there is no way to write one inside. Write format(34, \"%c\") for it.");
  else if (token.kind == TOKEN_DELIMITER && text.size() == 1 &&
           std::u16string_view(u"=<>!~").find(text[0]) != std::u16string_view::npos)
    Report(ProblemCode::ComparisonInExpression, token, "a comparison stands among arguments",
           "Only a condition compares: this is error 22. Compare in an if, and pass what comes of it.");
  else
    Report(ProblemCode::MissingParenthesis, open, "the argument list is not closed",
           "Between arguments stands a comma, behind the last one \")\": anything else is error 22.");
  return false;
}

// The name is the current token; the ")" is afterwards.
bool ScriptChecker::Call(bool wantsResult, Operand& out) {
  const Token& name = m_reader.Current();
  out = Operand();
  if (name.lowered.Find(u'.') >= 0) {
    std::vector<Operand> arguments;
    return CallMember(name) && Arguments(arguments);
  }
  if (m_hostFunctions.contains(name.lowered)) {
    std::vector<Operand> arguments;
    return Arguments(arguments);
  }
  const CFuncDesc* const function = m_reader.FindFunction(name.lowered);
  if (function == nullptr) {
    ReportUnknownFunction(name);
    return false;
  }
  std::vector<Operand> arguments;
  if (!Arguments(arguments))
    return false;
  const int count = static_cast<int>(arguments.size());
  switch (function->m_nCode) {
  case FUNCTION_HOST: return true;
  case FUNCTION_SCRIPT: return CallProcedure(name, arguments, wantsResult);
  case FUNCTION_EXTERNAL: {
    // What the routine gets the address of it may change.
    for (const Operand& argument : arguments)
      if (argument.name != nullptr)
        SetKinds(*argument.name, kAnyValue, false);
    if (function->m_nKind == CFuncDesc::kExternalSub) {
      Report(ProblemCode::ProcedureDefinition, name, "a declared sub is run as a procedure of the script",
             "It has no definition there, which is error 23. Declare it as a function.");
      return false;
    }
    const int declared = function->m_parameterTypes.GetSize();
    if (count == declared && declared <= kMostExternalParameters)
      return true;
    Report(ProblemCode::ProcedureArguments, name,
           Quoted(name) + " is called with " + Counted(count) + ", declared with " + std::to_string(declared),
           "A declared function takes exactly what its declaration lists, at most 32: otherwise error 24.");
    return false;
  }
  default: return CallBuiltIn(name, *function, arguments, out);
  }
}

bool ScriptChecker::CallBuiltIn(const Token& name, const CFuncDesc& function, const std::vector<Operand>& arguments,
                                Operand& out) {
  const FunctionSignature& signature = m_reader.SignatureOf(function.m_nCode);
  const int count = static_cast<int>(arguments.size());
  if (signature.Reports(count)) {
    std::string hint = "This is error 24.";
    if (function.m_nCode == FUNCTION_MID)
      hint += " Write mid(text, start, count); right(text, n) gives an end.";
    Report(ProblemCode::BuiltInArguments, name,
           Quoted(name) + " takes " + Range(signature) + ", not " + std::to_string(count), std::move(hint));
    return false;
  }
  if (count < signature.fewest)
    Report(ProblemCode::BuiltInSurplus, name, Quoted(name) + " needs " + Range(signature),
           "With fewer it does nothing, and says nothing: the result is 0 or not set. Give all of them.");
  else if (count > signature.most)
    Report(ProblemCode::BuiltInSurplus, name,
           Quoted(name) + " looks at " + Counted(signature.most) + ", not at " + std::to_string(count),
           "What is given beyond them is computed and dropped. Leave it out.");

  const bool firstIsText =
      !arguments.empty() && arguments[0].literal != nullptr && arguments[0].literal->kind == TOKEN_STRING;
  if (function.m_nCode == FUNCTION_UBOUND && !arguments.empty() && arguments[0].name != nullptr &&
      ((arguments[0].kinds & kTextValue) == 0 || (arguments[0].kinds & kManyValues) != 0) &&
      !IsGlobal(arguments[0].name->text) && arguments[0].kinds != kAnyValue)
    Report(ProblemCode::UboundName, *arguments[0].name, "ubound asks for the name of the array",
           "It takes the value of the first element for a name, and gives 0. Write ubound(\"" +
               arguments[0].name->text.ToUtf8() + "\").");
  if (function.m_nCode == FUNCTION_FORMAT && count == 2 && firstIsText && arguments[0].literal->text.Find(u'%') >= 0 &&
      (arguments[1].literal == nullptr || arguments[1].literal->text.Find(u'%') < 0))
    Report(ProblemCode::FormatOrder, name, "the value comes first, then the format",
           "The second argument is read as the format. Write format(value, \"%d\").");

  if (!CheckArgumentValues(name, function.m_nCode, arguments))
    return false;
  out.kinds = signature.result;
  out.call = &name;
  if (firstIsText)
    out.calledWith = arguments[0].literal->text;
  return true;
}

// What no value of an argument can make right.
bool ScriptChecker::CheckArgumentValues(const Token& name, FUNCTION_TYPE code, const std::vector<Operand>& arguments) {
  switch (code) {
  case FUNCTION_CONTROLVALUE:
    if (!m_outline.showsDialogs) {
      Report(ProblemCode::NoDialog, name, "the script shows no dialog", "Without an open one this is error 43.");
      return false;
    }
    if (arguments.size() > 1 && arguments[1].literal != nullptr &&
        arguments[1].literal->text.CompareNoCase(CString(u"text")) != 0 &&
        arguments[1].literal->text.CompareNoCase(CString(u"selection")) != 0) {
      Report(ProblemCode::ValueKind, *arguments[1].literal, "the second argument is \"text\" or \"selection\"",
             "Anything else is error 45.");
      return false;
    }
    return true;
  case FUNCTION_READ:
  case FUNCTION_WRITE:
    if (const auto size = arguments[2].number; size && *size != 1 && *size != 2 && *size != 4 && *size != 8) {
      Report(ProblemCode::ValueKind, name, "an element has 1, 2, 4 or 8 bytes", "Any other size is error 45.");
      return false;
    }
    return true;
  case FUNCTION_DBFREAD:
  case FUNCTION_DBFWRITE:
  case FUNCTION_DBFAPPEND:
  case FUNCTION_DBFSEEK:
  case FUNCTION_DBFDELETE:
  case FUNCTION_DBFNUMRECORDS:
  case FUNCTION_DBFNUMFIELDS:
  case FUNCTION_DBFFIELDNAMES:
    if (const auto handle = arguments[0].number; handle && *handle <= -1) {
      Report(ProblemCode::ValueKind, name, "a handle is not negative", "This is error 57.");
      return false;
    }
    return true;
  default: return true;
  }
}

bool ScriptChecker::CallProcedure(const Token& name, const std::vector<Operand>& arguments, bool wantsResult) {
  const auto found = m_outline.procedureOf.find(name.lowered);
  if (found == m_outline.procedureOf.end())
    return true; // of an earlier run
  const CheckedProcedure& procedure = m_outline.procedures[found->second];
  if (procedure.fault != nullptr) {
    Report(ProblemCode::ProcedureDefinition, name, Quoted(name) + " is called, but its definition cannot be read",
           "The call is error 23: see " + m_problems.Reference(procedure.name->start, name.start) + ".");
    return false;
  }
  if (arguments.size() < procedure.parameters.size()) {
    Report(ProblemCode::ProcedureArguments, name,
           Quoted(name) + " has " + CountedParameters(procedure) + " and is called with " +
               Counted(static_cast<int>(arguments.size())),
           "This is error 24: every parameter needs its argument. The definition is in " +
               m_problems.Reference(procedure.name->start, name.start) + ".");
    return false;
  }
  if (arguments.size() > procedure.parameters.size())
    Report(ProblemCode::ProcedureSurplus, name,
           Quoted(name) + " has " + CountedParameters(procedure) + " and is called with " +
               Counted(static_cast<int>(arguments.size())),
           "Arguments without a parameter are computed and dropped. Leave them out.");
  if (wantsResult && procedure.result == kUndefinedValue) {
    Report(ProblemCode::NoResult, name, Quoted(name) + " gives no result",
           "A procedure's result is what it assigns to its own name; without that, error 19. Write " +
               procedure.name->text.ToUtf8() + " = value in it, or use `call`.");
    return false;
  }
  return true;
}

// A dotted name: what stands in front of the point has to be a record, or hold an object.
bool ScriptChecker::CallMember(const Token& name) {
  const int dot = name.text.Find(u'.');
  const CString owner = name.text.Left(dot);
  CString member = name.lowered.Mid(dot + 1);
  const bool isCall = name.kind == TOKEN_FUNCTION;
  if (const auto* record = m_outline.RecordOf(owner); record != nullptr && !isCall) {
    bool isKnown = false;
    bool hasCapitals = false;
    for (const CString& type : *record) {
      const auto fields = m_outline.types.find(type);
      if (fields == m_outline.types.end())
        return true; // reported where it is declared
      isKnown = isKnown || fields->second.contains(member);
      for (const CString& field : fields->second)
        hasCapitals = hasCapitals || (field != member && field.CompareNoCase(member) == 0);
    }
    if (isKnown)
      return true;
    if (hasCapitals)
      Report(
          ProblemCode::FieldCase, name, "the field of " + Quoted(name) + " has capital letters in its type",
          "Fields are looked up in lower case, so that one cannot be reached: error 37. Write it in lower case in the "
          "type.");
    else
      Report(ProblemCode::UndefinedVariable, name, "the record has no field of " + Quoted(name),
             "It is taken for a property of an object, which is error 37. See the lines of its type.");
    return false;
  }
  Token ownerToken;
  ownerToken.kind = TOKEN_VARIABLE;
  ownerToken.text = owner;
  ownerToken.lowered = name.lowered.Left(dot);
  const ValueKinds kinds = KindsOf(ownerToken);
  if (kinds == kUndefinedValue) {
    for (const auto& [record, types] : m_outline.records)
      if (record.CompareNoCase(owner) == 0) {
        Report(ProblemCode::UndefinedVariable, name, "the record is called \"" + record.ToUtf8() + "\"",
               "Upper and lower case count in the names of records: error 37. Write it as its dim does.");
        return false;
      }
    Report(ProblemCode::UndefinedVariable, name, "the variable \"" + owner.ToUtf8() + "\" was never assigned",
           "In front of the point stands a record or a variable that holds an object: otherwise error 37.");
    return false;
  }
  if ((kinds & (kObjectValue | kUndefinedValue)) == 0) {
    Report(ProblemCode::ValueKind, name, "the variable \"" + owner.ToUtf8() + "\" holds no object",
           "Only what createobject gave has properties and methods: otherwise error 31.");
    return false;
  }
  return true;
}

void ScriptChecker::ReportUnknownFunction(const Token& name) {
  const std::string spelt = name.text.ToUtf8();
  const int number = m_outline.NumberOf(name.lowered);
  if (number >= 0 && KindsOf(name) != kUndefinedValue) {
    Report(ProblemCode::ArrayParentheses, name, Quoted(name) + " is a variable, not a function",
           "An index stands in brackets right behind the name: write " + spelt + "[...].");
    return;
  }
  std::string hint = "This is error 21. ";
  if (const std::string_view dialect = HintForFunction(name.lowered.View()); !dialect.empty())
    hint += dialect;
  else if (name.text.Find(u'$') >= 0)
    hint += "Names have no sign of their type.";
  else
    hint += "Define it, name its file by `library`, or say --function=" + spelt + " when the host registers it.";
  Report(ProblemCode::UnknownFunction, name, "there is no function " + Quoted(name), std::move(hint));
}

void ScriptChecker::CallStatement() {
  const Token& name = m_reader.Next();
  if (name.kind != TOKEN_FUNCTION) {
    Report(ProblemCode::CallParentheses, Blamed(name, *m_statement), "behind call stands a name with parentheses",
           "Without them, also when a blank stands in front of them, this is error 1. Write call name() or call "
           "name(a, b).");
    Recover();
    return;
  }
  Operand result;
  if (!Call(false, result))
    Recover();
}

void ScriptChecker::ThrowStatement() {
  const Token& name = m_reader.Next();
  if (name.kind != TOKEN_FUNCTION) {
    Report(ProblemCode::CallParentheses, Blamed(name, *m_statement), "behind throw stands an event with parentheses",
           "Without them this is error 1. Write throw event() or throw event(a, b).");
    Recover();
    return;
  }
  std::vector<Operand> arguments;
  if (!Arguments(arguments))
    Recover();
}

} // namespace brindle
