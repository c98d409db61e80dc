// What concerns the script as a whole: putting it together, definitions, labels, what nothing leads to.
#include "check/checker.h"

#include "interpreter/error_numbers.h"

namespace brindle {

void ScriptChecker::CheckLoading() {
  for (const ScriptReader::LoadError& error : m_reader.LoadErrors()) {
    m_reader.SetPosition(error.position);
    const Token& token = m_reader.Peek();
    if (error.number == kErrorLoadingSource) {
      Report(ProblemCode::MissingFile, token, "the program grows too large here",
             "Files that include each other many times over have no end: error 17.");
    } else if (token.kind != TOKEN_STRING) {
      Report(ProblemCode::IncludeSyntax, token, "the name of the file stands in quotes",
             "This is error 1, and later include and library lines are not looked at. Write include \"file.bas\".");
    } else if (m_problems.Includes(token.start, token.text)) {
      Report(ProblemCode::IncludeCycle, token, "the file includes itself",
             "This is error 1, and the line is stepped over. Put what both need into a third file.");
    } else {
      Report(ProblemCode::MissingFile, token, "the file " + Quoted(token) + " cannot be read",
             "This is error 1, and what it defines is missing. Names are looked up beside the script.");
    }
  }
}

void ScriptChecker::CheckDefinitions() {
  for (const DuplicateDefinition& duplicate : m_outline.duplicates) {
    const Token& name = *duplicate.name;
    if (duplicate.first == nullptr)
      Report(ProblemCode::ProcedureNamedBuiltIn, name, Quoted(name) + " is a built-in function",
             "This is error 27 when the script is loaded, and the built-in function stays. Take another name.");
    else if (m_problems.IsSamePlace(name.start, duplicate.first->start))
      Report(ProblemCode::IncludedTwice, name, "the procedure " + Quoted(name) + " is put in twice",
             "include puts a file in at its line and at the end of the program: error 27. Name a file of procedures by "
             "library.");
    else
      Report(ProblemCode::DuplicateProcedure, name,
             Quoted(name) + " is defined in " + m_problems.Reference(duplicate.first->start, name.start) + " already",
             "This is error 27 when the script is loaded, and the first definition stays; upper and lower case are the "
             "same.");
  }
  for (const CheckedProcedure& procedure : m_outline.procedures) {
    if (procedure.fault != nullptr) {
      const Token& fault = *procedure.fault;
      const bool isWord = fault.kind == TOKEN_KEYWORD || fault.kind == TOKEN_COMMAND;
      Report(ProblemCode::ProcedureDefinition, fault.command == COMMAND_END_OF_LINE ? *procedure.name : fault,
             isWord ? "\"" + Spelling(fault) + "\" is a word of the language and no parameter"
                    : "the parameter list of " + Quoted(*procedure.name) + " cannot be read",
             "Every call is error 23. Write name(a, b), with names alone, and () when there are none.");
    }
    for (const Token* parameter : procedure.parameters)
      if (m_outline.globals.contains(parameter->text))
        Report(ProblemCode::ParameterGlobal, *parameter, Quoted(*parameter) + " is a global as well",
               "A call assigns its argument to the global. Give the parameter another name.");
    if (procedure.isDefined && procedure.isFunction && procedure.result == kUndefinedValue)
      Report(ProblemCode::ReturnValue, *procedure.name, "the function " + Quoted(*procedure.name) + " gives no result",
             "A result is what it assigns to its own name: used in an expression, this is error 19. Write " +
                 procedure.name->text.ToUtf8() + " = value, or make it a sub.");
  }
  std::set<CString> declared;
  for (const Token* word : m_outline.declares) {
    m_reader.Resume(word->end, TOKEN_COMMAND);
    CFuncDesc function;
    if (!m_reader.ReadDeclare(function))
      continue;
    if (m_reader.Current().kind == TOKEN_LABEL)
      m_noLabels.insert(m_reader.Current().start);
    const CFuncDesc* known = m_reader.FindFunction(function.m_strName);
    if (known != nullptr && known->m_nCode != FUNCTION_EXTERNAL)
      Report(ProblemCode::DuplicateDeclare, *word, "\"" + function.m_strName.ToUtf8() + "\" is a function already",
             "This is error 27, and the other function stays. Give it a name by alias \"name\".");
    else if (!declared.insert(function.m_strName).second)
      Report(ProblemCode::DuplicateDeclare, *word, "\"" + function.m_strName.ToUtf8() + "\" is declared already",
             "This is error 27, also when one line is run twice. Declare each name once, outside of loops.");
  }
}

void ScriptChecker::CheckLabels() {
  for (const auto& [name, places] : m_outline.labels) {
    const Token& first = *places.front();
    for (std::size_t i = 1; i < places.size(); ++i) {
      const Token& label = *places[i];
      if (m_problems.IsSamePlace(first.start, label.start)) {
        Report(ProblemCode::IncludedTwice, label, "the label " + Quoted(label) + " is put in twice",
               "include puts a file in at its line and at the end of the program: error 6, and what follows is not "
               "found. Keep labels out of included files.");
        break;
      }
      Report(ProblemCode::DuplicateLabel, label,
             "the label " + Quoted(label) + " stands in " + m_problems.Reference(first.start, label.start) + " already",
             "This is error 6 when the script is loaded, and labels and procedures behind it are not found.");
    }
    if (m_outline.jumps.contains(name))
      continue;
    CString lowered = name;
    lowered.MakeLower();
    for (const Token* label : places) {
      if (m_noLabels.contains(label->start))
        continue; // a type with a colon behind it
      const WordCodes codes = m_reader.MeaningOf(lowered);
      if (codes.command != COMMAND_NONE || codes.keyword != KEYWORD_NONE)
        Report(
            ProblemCode::LabelWord, *label, "\"" + name.ToUtf8() + ":\" is a label and not the word",
            "A word with a colon right behind it is a label, and is stepped over. Put a blank in front of the colon, "
            "or begin a line.");
      else
        Report(ProblemCode::UnusedLabel, *label, "nothing jumps to the label " + Quoted(*label),
               "A name with a colon right behind it is a label. If it was meant otherwise, put a blank between.");
    }
  }
}

// Statements behind one that the way never goes on from.
void ScriptChecker::CheckReach() {
  m_reader.Resume(0, TOKEN_DELIMITER);
  bool leaves = false; // the statement before was "end", "stop", "goto" or "return"
  while (m_reader.Position() < m_reader.Text().size()) {
    const Token& token = m_reader.Next();
    m_reader.StepOver();
    const bool reached = m_reached.contains(token.start);
    if (token.kind == TOKEN_LABEL)
      leaves = false;
    const bool begins = token.kind == TOKEN_VARIABLE || token.kind == TOKEN_IDENTIFIER || token.kind == TOKEN_COMMAND;
    const bool closes =
        token.command == COMMAND_ELSE || token.command == COMMAND_ENDIF || token.command == COMMAND_NEXT ||
        token.command == COMMAND_LOOP || token.command == COMMAND_FUNCTION || token.command == COMMAND_SUB ||
        token.command == COMMAND_ENDFUNCTION || token.command == COMMAND_ENDSUB || token.command == COMMAND_REM ||
        token.command == COMMAND_LIBRARY || token.command == COMMAND_INCLUDE || token.command == COMMAND_TYPE_WORD;
    if (leaves && begins && !closes && !reached) {
      if (m_problems.IsInScript(token.start))
        Report(ProblemCode::UnreachableCode, token, "nothing leads here",
               "The statement before goes elsewhere or ends the run, and no label stands between.");
      leaves = false;
    } else if (begins) {
      leaves = false;
    }
    if (token.command != COMMAND_END && token.command != COMMAND_GOTO && token.command != COMMAND_RETURN)
      continue;
    leaves = reached;
    if (token.command == COMMAND_GOTO)
      m_reader.Next();
    else
      m_reader.FindEndOfLine();
  }
}

// A literal that goes on over a line end has most often lost its quote.
void ScriptChecker::CheckLiteral(const Token& literal) {
  const std::u16string_view text = literal.text.View();
  if (text.find_first_of(u"\r\n") == std::u16string_view::npos)
    return;
  const bool closed = literal.end - literal.start == text.size() + 2;
  // Meant to be long, it is followed by what may follow any operand.
  const char16_t next = m_reader.UnitAt(literal.end);
  if (closed && (IsDelimiterUnit(next) || next == u'#'))
    return;
  Report(ProblemCode::LiteralOverLines, literal,
         closed ? "the literal goes on over the end of its line" : "the literal has no closing quote",
         closed ? "It holds the line end, and all up to the next quote. If that is not meant, a quote is missing."
                : "It goes on to the end of the script, and what stands there is not run.");
}

} // namespace brindle
