#include "check/outline.h"

#include <string_view>
#include <utility>

namespace brindle {

namespace {

constexpr std::u16string_view kLevelMark = u"__#";

class OutlineScan {
public:
  OutlineScan(ScriptReader& reader, Outline& outline) : m_reader(reader), m_outline(outline) {}

  void Run();

private:
  void Name(const CString& lowered) {
    if (const int mark = lowered.Find(CString(kLevelMark)); mark > 0)
      m_outline.levelNames.insert(lowered.Left(mark));
    m_outline.numbers.try_emplace(lowered, static_cast<int>(m_outline.numbers.size()));
  }
  void NoteMainProgram(const Token& token, BASIC_TOKEN_TYPE previous);
  void Head(const Token& word);
  void Declarations(bool global);
  void Type();
  void Open();
  void Event();
  void AddDeclared();

  ScriptReader& m_reader;
  Outline& m_outline;
  bool m_insideProcedure = false;
};

// Reads what the label scan of a run reads, and notes more of it.
void OutlineScan::Run() {
  m_reader.Resume(0, TOKEN_DELIMITER);
  while (m_reader.Position() < m_reader.Text().size()) {
    const Token& token = m_reader.Next();
    const BASIC_TOKEN_TYPE previous = m_reader.PreviousKind();
    m_reader.StepOver();
    NoteMainProgram(token, previous);
    switch (token.kind) {
    case TOKEN_LABEL: m_outline.labels[token.text].push_back(&token); break;
    case TOKEN_VARIABLE: Name(token.lowered); break;
    case TOKEN_IDENTIFIER: Name(token.lowered.Left(token.lowered.Find(u'.'))); break;
    case TOKEN_FUNCTION:
      if (token.lowered.Find(u'.') > 0)
        Name(token.lowered.Left(token.lowered.Find(u'.')));
      if (token.lowered == u"findfiles")
        m_outline.asksForFiles = true;
      break;
    default: break;
    }
    const std::uint32_t behind = m_reader.Position();
    switch (token.command) {
    case COMMAND_FUNCTION:
    case COMMAND_SUB:
      if (previous == TOKEN_DELIMITER)
        Head(token);
      continue;
    case COMMAND_DO: m_outline.doWords.insert(token.start); continue;
    case COMMAND_GOTO: m_outline.jumps.insert(m_reader.Peek().text); break;
    case COMMAND_DECLARE: m_outline.declares.push_back(&token); break;
    case COMMAND_DIM: Declarations(false); break;
    case COMMAND_GLOBAL: Declarations(true); break;
    case COMMAND_TYPE_WORD: Type(); break;
    case COMMAND_OPEN: Open(); break;
    case COMMAND_EVENT: Event(); break;
    default: continue;
    }
    m_reader.Resume(behind, TOKEN_COMMAND);
  }
  AddDeclared();
}

void OutlineScan::NoteMainProgram(const Token& token, BASIC_TOKEN_TYPE previous) {
  const bool head = (token.command == COMMAND_FUNCTION || token.command == COMMAND_SUB) && previous == TOKEN_DELIMITER;
  const bool end = token.command == COMMAND_ENDFUNCTION || token.command == COMMAND_ENDSUB;
  if (head)
    m_insideProcedure = true;
  else if (end)
    m_insideProcedure = false;
  else if (!m_insideProcedure && token.kind != TOKEN_DELIMITER && token.kind != TOKEN_COMMENT &&
           token.kind != TOKEN_LABEL && token.command != COMMAND_REM && token.command != COMMAND_LIBRARY)
    m_outline.hasMainProgram = m_outline.hasMainProgram || token.kind != TOKEN_STRING;
  m_outline.showsDialogs =
      m_outline.showsDialogs || token.command == COMMAND_DIALOG || token.command == COMMAND_PROPERTYSHEET;
}

// The parameter list is read as a call reads it.
void OutlineScan::Head(const Token& word) {
  CheckedProcedure procedure;
  procedure.name = &m_reader.Next();
  procedure.isFunction = word.command == COMMAND_FUNCTION;
  const std::uint32_t behind = m_reader.Position();
  Name(procedure.name->lowered);

  m_reader.Next();
  if (m_reader.IsDelimiter(u'(')) {
    for (const Token* token = &m_reader.Next(); token->kind == TOKEN_VARIABLE;) {
      Name(token->lowered);
      procedure.parameters.push_back(token);
      m_reader.Next();
      if (!m_reader.IsDelimiter(u','))
        break;
      token = &m_reader.Next();
    }
  }
  if (!m_reader.IsDelimiter(u')'))
    procedure.fault = &m_reader.Current();
  m_reader.SetPosition(procedure.fault != nullptr ? procedure.fault->start : m_reader.Position());
  m_reader.FindEndOfLine();
  procedure.body = m_reader.Position();
  m_reader.Resume(behind, procedure.name->kind);

  const CString& name = procedure.name->lowered;
  CFuncDesc description(name, behind);
  if (m_reader.AddFunction(description)) {
    procedure.isDefined = true;
    m_outline.procedureOf[name] = m_outline.procedures.size();
  } else {
    const auto first = m_outline.procedureOf.find(name);
    m_outline.duplicates.push_back(
        {procedure.name, first == m_outline.procedureOf.end() ? nullptr : m_outline.procedures[first->second].name});
  }
  m_outline.procedures.push_back(std::move(procedure));
}

// Names that "global" makes, and records; whatever is wrong with the statement is another's concern.
void OutlineScan::Declarations(bool global) {
  bool expectsName = true;
  const Token* name = nullptr;
  for (const Token* token = &m_reader.Next(); !m_reader.AtStatementEnd(); token = &m_reader.Next()) {
    if (token->kind == TOKEN_NONE || token->end <= token->start)
      return;
    if (m_reader.IsDelimiter(u',')) {
      expectsName = true;
    } else if (expectsName) {
      expectsName = false;
      name = token->kind == TOKEN_VARIABLE ? token : nullptr;
      if (global && name != nullptr) {
        m_outline.globals.insert(name->text);
        m_outline.globalsByLowered.emplace(name->lowered, name->text);
      }
    } else if (token->keyword == KEYWORD_AS && name != nullptr) {
      const Token& type = m_reader.Next();
      if (type.kind == TOKEN_KEYWORD || m_reader.AtStatementEnd()) {
        m_reader.PutBack();
        continue;
      }
      m_outline.records[name->text].insert(type.text);
      if (const int mark = name->lowered.Find(CString(kLevelMark)); mark > 0)
        m_outline.scopedRecords[name->lowered.Left(mark)].insert(type.text);
    }
  }
}

void OutlineScan::Type() {
  const CString name = m_reader.Next().text;
  auto& fields = m_outline.types[name];
  for (m_reader.NextBlockLine();
       m_reader.Current().command != COMMAND_ENDTYPE && m_reader.Current().command != COMMAND_END_OF_PROGRAM;
       m_reader.NextBlockLine())
    fields.insert(m_reader.Current().text);
}

void OutlineScan::Event() {
  if (m_reader.Next().keyword != KEYWORD_CREATE)
    return;
  CString name = m_reader.Next().text;
  m_outline.events.insert(name.MakeLower());
}

void OutlineScan::Open() {
  const Token& path = m_reader.Next();
  if (path.kind != TOKEN_STRING)
    return;
  for (const Token* token = &m_reader.Next();
       token->command != COMMAND_END_OF_LINE && token->command != COMMAND_END_OF_PROGRAM && token->end > token->start;
       token = &m_reader.Next()) {
    if (token->keyword == KEYWORD_OUTPUT)
      m_outline.createdPaths.insert(path.text);
  }
}

// Declared names are known wherever they stand; the first of a name counts.
void OutlineScan::AddDeclared() {
  for (const Token* declare : m_outline.declares) {
    m_reader.Resume(declare->end, TOKEN_COMMAND);
    CFuncDesc function;
    function.m_nCode = FUNCTION_EXTERNAL;
    if (m_reader.ReadDeclare(function))
      static_cast<void>(m_reader.AddFunction(function));
  }
}

} // namespace

Outline::Outline(ScriptReader& reader) {
  for (const char16_t* constant : {u"True", u"False", u"Nothing"})
    globals.insert(CString(constant));
  OutlineScan(reader, *this).Run();
  for (const CString& global : globals)
    numbers.try_emplace(GlobalKey(global), static_cast<int>(numbers.size()));
}

const std::set<CString>* Outline::RecordOf(const CString& name) const {
  const auto record = records.find(name);
  if (record != records.end())
    return &record->second;
  CString lowered = name;
  const auto scoped = scopedRecords.find(lowered.MakeLower());
  return scoped == scopedRecords.end() ? nullptr : &scoped->second;
}

} // namespace brindle
