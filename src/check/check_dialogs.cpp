// Dialogs, property sheets and "alter".
#include "check/checker.h"

#include "ui/dialog_words.h"

#include <limits>

namespace brindle {

namespace {

constexpr int kEveryOperand = std::numeric_limits<int>::max(); // nothing may be missing

} // namespace

// The rest of the line as expressions; how many, or -1 when one fails, which was reported. A name without a value ends
// the list as a value that is not set: behind as many as `enough`, nobody complains.
int ScriptChecker::Operands(int enough) {
  m_operands.clear();
  m_reader.Next();
  m_reader.PutBack();
  if (m_reader.AtStatementEnd())
    return 0;
  int count = 0;
  do {
    const Token& first = m_reader.Peek();
    if (count + 1 >= enough && first.kind == TOKEN_VARIABLE && KindsOf(first) == kUndefinedValue &&
        m_reader.UnitAt(first.end) != u'[') {
      Report(ProblemCode::UnsetRead, first, "the variable " + Quoted(first) + " is read but was never assigned",
             "It counts as empty or 0, without an error, and the rest of the line is not read. Assign it first.");
      m_operands.push_back(Operand{.kinds = kNotSet});
      return count + 1;
    }
    Operand value;
    if (!Expression(value))
      return -1;
    m_operands.push_back(value);
    ++count;
    m_reader.Next();
  } while (m_reader.IsDelimiter(u','));
  m_reader.PutBack();
  return count;
}

void ScriptChecker::LeaveBlock(COMMAND_TYPE end) {
  while (m_reader.Current().command != end && m_reader.Current().command != COMMAND_END_OF_PROGRAM) {
    m_reader.Next();
    m_reader.StepOver();
  }
}

void ScriptChecker::MissingEnd(const Token& word, const char* end) {
  Report(ProblemCode::MissingEndBlock, word, Quoted(word) + " has no " + end,
         "The rest of the script is read as part of the block, without an error. Write " + std::string(end) +
             " behind its last line.");
}

void ScriptChecker::Dialog(const Token& word) {
  const int count = Operands(kDialogParameters);
  if (count < kDialogParameters) {
    if (count >= 0)
      Report(ProblemCode::DialogParameters, word, "dialog has " + std::to_string(count) + " of 5 parameters",
             "This is error 1, and the block is skipped. Write dialog title, x, y, width, height.");
    LeaveBlock(COMMAND_ENDDIALOG);
    return;
  }
  for (m_reader.Next(); m_reader.Current().command != COMMAND_ENDDIALOG; m_reader.Next()) {
    if (m_reader.Current().command == COMMAND_END_OF_PROGRAM) {
      MissingEnd(word, "enddialog");
      return;
    }
    if (!DialogLine()) {
      LeaveBlock(COMMAND_ENDDIALOG);
      return;
    }
  }
}

void ScriptChecker::PropertySheet(const Token& word) {
  const int count = Operands(1);
  if (count < 1) {
    if (count == 0)
      Report(ProblemCode::DialogParameters, word, "propertysheet has no title",
             "This is error 1, and the block is skipped. Write propertysheet title.");
    LeaveBlock(COMMAND_ENDDIALOG);
    return;
  }
  bool inPage = false;
  bool hasPages = false;
  for (m_reader.Next(); m_reader.Current().command != COMMAND_ENDDIALOG; m_reader.Next()) {
    const Token& token = m_reader.Current();
    if (token.command == COMMAND_END_OF_PROGRAM) {
      MissingEnd(word, "enddialog");
      return;
    }
    if (token.command == COMMAND_PAGE && !inPage) {
      inPage = hasPages = true;
      const int titles = Operands(1);
      if (titles >= 1)
        continue;
      if (titles == 0)
        Report(ProblemCode::DialogParameters, token, "page has no title",
               "This is error 1, and the sheet is skipped. Write page title.");
    } else if (token.command == COMMAND_ENDPAGE) {
      inPage = false;
      continue;
    } else if (!inPage) {
      m_reader.StepOver();
      continue;
    } else if (DialogLine()) {
      continue;
    }
    LeaveBlock(COMMAND_ENDDIALOG);
    return;
  }
  if (!hasPages)
    Report(ProblemCode::DialogParameters, word, "the sheet has no pages", "This is error 42, and nothing is shown.");
}

// One token inside a dialog or page.
bool ScriptChecker::DialogLine() {
  m_reader.StepOver();
  const Token& word = m_reader.Current();
  if (word.keyword == KEYWORD_ONINIT || word.keyword == KEYWORD_ONEXIT) {
    const Token& name = m_reader.Next();
    if (!name.text.IsEmpty() && name.kind != TOKEN_DELIMITER) {
      CheckHandler(name);
      return true;
    }
    Report(ProblemCode::WordSyntax, word, "behind " + Quoted(word) + " stands the name of a handler",
           "This is error 1, and the dialog is skipped.");
    return false;
  }
  if (word.keyword != KEYWORD_CONTROL)
    return true;
  const Token& kind = m_reader.Next();
  if (!IsControlKind(kind.keyword)) {
    const bool missing = &Blamed(kind, word) != &kind;
    Report(ProblemCode::ControlKind, missing ? word : kind,
           missing ? std::string("control names no kind") : Quoted(kind) + " is no kind of control",
           "This is error 1 or 41, and the dialog is skipped. Kinds are button, edittext, checkbox, listbox, okbutton, "
           "statictext and others.");
    return false;
  }
  const int count = Operands(kControlParameters);
  if (count > kControlParameters && m_operands[kControlParameters].literal != nullptr)
    CheckHandler(*m_operands[kControlParameters].literal);
  if (count >= kControlParameters)
    return true;
  if (count >= 0)
    Report(ProblemCode::DialogParameters, kind, "the control has " + std::to_string(count) + " of 6 parameters",
           "This is error 1, and the dialog is skipped. Write control kind caption, id, x, y, width, height.");
  return false;
}

// Raised with one argument: as an event, or as a call when no event has that name.
void ScriptChecker::CheckHandler(const Token& name) {
  CString lowered = name.text;
  lowered.MakeLower();
  if (lowered.IsEmpty() || m_outline.events.contains(lowered) || m_hostFunctions.contains(lowered))
    return;
  const auto found = m_outline.procedureOf.find(lowered);
  if (found == m_outline.procedureOf.end()) {
    if (m_reader.FindFunction(lowered) == nullptr)
      Report(ProblemCode::UnknownHandler, name, "there is neither an event nor a procedure " + Quoted(name),
             "Nothing happens when the handler is raised, and nothing is reported. Write the procedure, with one "
             "parameter or none.");
    return;
  }
  const CheckedProcedure& procedure = m_outline.procedures[found->second];
  if (procedure.fault == nullptr && procedure.parameters.size() > 1)
    Report(ProblemCode::ProcedureArguments, name,
           "the handler " + Quoted(name) + " has " + std::to_string(procedure.parameters.size()) +
               " parameters and gets 1 argument",
           "This is error 24 whenever it is raised. The definition is in " +
               m_problems.Reference(procedure.name->start, name.start) + ".");
}

void ScriptChecker::Alter(const Token& word) {
  if (!m_outline.showsDialogs)
    Report(ProblemCode::NoDialog, word, "the script shows no dialog", "Without an open one this is error 43.");
  const Token& target = m_reader.Next();
  if (target.keyword != KEYWORD_WINDOW) {
    if (target.keyword != KEYWORD_CONTROL)
      m_reader.PutBack();
    Operand id;
    if (!Expression(id)) {
      LeaveBlock(COMMAND_ENDALTER);
      return;
    }
  }
  for (m_reader.NextBlockLine(); m_reader.Current().command != COMMAND_ENDALTER; m_reader.NextBlockLine()) {
    const Token& line = m_reader.Current();
    if (line.command == COMMAND_END_OF_PROGRAM) {
      MissingEnd(word, "endalter");
      return;
    }
    const auto operands = AlterationOperands(line.keyword);
    if (!operands) {
      Report(ProblemCode::AlterLine, line, Quoted(line) + " is no alteration",
             "This is error 45, and the rest of the block is skipped. There are title, text, value, selection, clear, "
             "position, font, show, enable and menuitem.");
      LeaveBlock(COMMAND_ENDALTER);
      return;
    }
    const int count = *operands == 0 ? 0 : Operands(kEveryOperand);
    if (count >= *operands) {
      if (line.keyword == KEYWORD_MENUITEM && m_operands[1].literal != nullptr)
        CheckHandler(*m_operands[1].literal);
      continue;
    }
    if (count >= 0)
      Report(ProblemCode::AlterLine, line,
             Quoted(line) + " has " + std::to_string(count) + " of " + std::to_string(*operands) + " operands",
             "This is error 45, and the rest of the block is skipped.");
    LeaveBlock(COMMAND_ENDALTER);
    return;
  }
}

} // namespace brindle
