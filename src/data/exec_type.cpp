// "type" ... "endtype", and the fields of records.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/limits.h"
#include "interpreter/state.h"
#include "platform/number_text.h"

using namespace brindle;

TYPE_DEFINITION CBrindle::KeywordToType(KEYWORD_TYPE keyword) {
  switch (keyword) {
  case KEYWORD_CHAR:
  case KEYWORD_CHAR_ALIAS: return TD_CHAR;
  case KEYWORD_WORD: return TD_WORD;
  case KEYWORD_INTEGER: return TD_INTEGER;
  case KEYWORD_FLOAT: return TD_FLOAT;
  case KEYWORD_DOUBLE: return TD_DOUBLE;
  case KEYWORD_STRING: return TD_STRING;
  default: return TD_NONE; // Deliberate: "unicode" is refused as well
  }
}

bool CBrindle::LookupUserDefinedType(const CString& name, CTypeStructure*& type) {
  const auto found = m_pState->m_mapTypes.find(name);
  if (found == m_pState->m_mapTypes.end())
    return false;
  type = &found->second;
  return true;
}

bool CBrindle::TypesFree() {
  m_pState->m_mapTypes.clear();
  m_pState->m_mapStructVariables.clear();
  return true;
}

// Leaves the first token of the next line that holds anything current.
void CBrindle::NextBlockLine() {
  FindEOL();
  do {
    get_token();
    StepOver();
  } while (m_pState->token.command == COMMAND_END_OF_LINE || m_pState->token.command == COMMAND_REM ||
           m_pState->token.kind == TOKEN_COMMENT || m_pState->token.kind == TOKEN_NONE);
}

// A block that fails is left behind its end word. A negative number says that the error has been reported.
bool CBrindle::LeaveBlock(int error, COMMAND_TYPE end) {
  if (error >= 0)
    ReportError(error);
  while (m_pState->token.command != end && m_pState->token.command != COMMAND_END_OF_PROGRAM) {
    get_token();
    StepOver();
  }
  return false;
}

bool CBrindle::ExecType() {
  get_token();
  if (m_pState->token.Text().IsEmpty() || m_pState->token.command == COMMAND_END_OF_LINE)
    return LeaveBlock(kErrorSyntax, COMMAND_ENDTYPE);
  const CString name = m_pState->token.Text();
  CTypeStructure type;
  for (NextBlockLine(); m_pState->token.command != COMMAND_ENDTYPE && m_pState->token.command != COMMAND_END_OF_PROGRAM;
       NextBlockLine()) {
    if (const int error = ReadField(type))
      return LeaveBlock(error, COMMAND_ENDTYPE);
  }
  m_pState->m_mapTypes[name] = std::move(type);
  return true;
}

// name [size] as type; the name is the current token. 0, or the number of the error.
int CBrindle::ReadField(CTypeStructure& type) {
  const CString name = m_pState->token.Text();
  if (name.IsEmpty())
    return kErrorInvalidFieldName;
  int count = 1;
  get_token();
  if (m_pState->token.kind == TOKEN_DELIMITER) {
    if (!IsDelimiter(u'['))
      return kErrorSyntax;
    CBasicVariable size;
    get_exp(size);
    get_token();
    if (size.GetType() == BVT_NONE || !IsDelimiter(u']'))
      return kErrorSyntax;
    count = ToInt32(size.GetNumberValue());
    if (count < 1 || count > kLargestArray)
      return kErrorArraySize;
    get_token();
  }
  if (m_pState->token.keyword != KEYWORD_AS)
    return kErrorSyntax;
  get_token();
  const TYPE_DEFINITION fieldType = KeywordToType(m_pState->token.keyword);
  if (fieldType == TD_NONE)
    return kErrorSyntax;
  return type.AddField(name, fieldType, count) ? 0 : static_cast<int>(kErrorUnrecoverable);
}

// Records are stored under the name as "dim" spelt it, but asked for by the scoped key first.
CTypeStructure* CBrindle::FindRecord(const CString& name) {
  auto& records = m_pState->m_mapStructVariables;
  if (records.empty())
    return nullptr;
  auto record = records.find(VariableStore::ScopedKey(name, m_pState->m_nScopeLevel));
  if (record == records.end())
    record = records.find(name);
  return record == records.end() ? nullptr : &record->second;
}

bool CBrindle::FindStructVariable(const CString& var, const CString& field, CBasicVariable& out, bool bReport) {
  const CTypeStructure* record = FindRecord(var);
  if (record == nullptr) {
    if (bReport)
      return Fail(kErrorUndefinedVariable);
  }
  CString lowered = field;
  return record->ReadField(lowered.MakeLower(), 0, out);
}

bool CBrindle::SetStructVariable(const CString& var, const CString& field, CBasicVariable& value) {
  CTypeStructure* record = FindRecord(var);
  if (record == nullptr)
    return Fail(kErrorUndefinedVariable);
  CString lowered = field;
  return record->WriteField(lowered.MakeLower(), 0, value);
}

bool CBrindle::IsRecordField(const CString& name) {
  const int dot = name.Find(u'.');
  const CTypeStructure* record = FindRecord(name.Left(dot));
  CString field = name.Mid(dot + 1);
  return record != nullptr && record->FindField(field.MakeLower()) != nullptr;
}

// A field token: record.field, perhaps with the index of an element behind it.
void CBrindle::ReadRecordField(CBasicVariable& result) {
  const CString name = m_pState->token.Text();
  const int dot = name.Find(u'.');
  const CString record = name.Left(dot);
  const CString field = name.Mid(dot + 1);
  int index = 0;
  const bool hasIndex = ReadIndexBehindName(index);
  const CTypeStructure* structure = FindRecord(record);
  CString lowered = field;
  const bool elementRead = hasIndex && structure != nullptr && structure->ReadField(lowered.MakeLower(), index, result);
  // An element that is not there reads as the first one.
  if (!elementRead)
    FindStructVariable(record, field, result, true);
  get_token();
}

bool CBrindle::StoreRecordField(const CString& name, CBasicVariable& value, int index) {
  const int dot = name.Find(u'.');
  const CString record = name.Left(dot);
  CString field = name.Mid(dot + 1);
  if (index == 0)
    return SetStructVariable(record, field, value);
  CTypeStructure* structure = FindRecord(record);
  if (structure == nullptr)
    return Fail(kErrorUndefinedVariable);
  if (structure->WriteField(field.MakeLower(), index, value))
    return true;
  return Fail(kErrorIndexBounds);
}
