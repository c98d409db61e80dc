// The dBase family of the built-in functions.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"
#include "platform/number_text.h"

#include <cstdint>
#include <memory>
#include <vector>

using namespace brindle;

namespace {

constexpr int kNoHandle = -1;

void SetCount(CBasicVariable& result, unsigned long count) {
  if (count <= INT32_MAX)
    result.SetValue(static_cast<int>(count));
  else
    result.SetValue(static_cast<double>(count));
}

std::uint32_t RecordNumber(const CBasicVariable& argument) {
  return ToUint32(argument.GetNumberValue());
}

// name, type word, length and, optionally, decimals: the items of one argument of "dbfcreate".
CDbfFieldDescriptorEx FieldOf(CBasicVariable& description) {
  const auto item = [&description](int index) -> const CBasicVariable& {
    description.SetCurIndex(index);
    return description;
  };
  const CString name = item(0).GetStringValue();
  const DBF_FIELD_TYPE type = CDbf::StringToDBFFieldType(item(1).GetStringValue());
  const auto length = static_cast<std::uint32_t>(ToInt32(item(2).GetNumberValue()));
  const std::uint32_t decimals = description.GetNumItems() > 3 ? ToUint32(item(3).GetNumberValue()) : 0;
  return {name, type, length, decimals};
}

int OpenTable(FileFormatTable& tables, const CString& name) {
  auto object = std::make_unique<CDbfFormatObj>();
  return object->Open(name, DBF_READ) ? tables.Add(std::move(object)) : kNoHandle;
}

int CreateTable(FileFormatTable& tables, const CString& name, std::vector<CDbfFieldDescriptorEx>& fields) {
  CArray<CDbfFieldDescriptorEx*, CDbfFieldDescriptorEx*> pointers;
  for (CDbfFieldDescriptorEx& field : fields)
    pointers.Add(&field);
  auto object = std::make_unique<CDbfFormatObj>();
  const bool created = object->Table().Create(name, pointers, static_cast<unsigned long>(pointers.GetSize()));
  return created ? tables.Add(std::move(object)) : kNoHandle;
}

// The values of one record among the arguments, from `first` on; those beyond the table's fields are left out.
void ValuesOf(const CBasicVariableArray& args, int first, int count, CStringArray& values) {
  values.SetSize(count);
  for (int i = 0; i < count; ++i)
    values[i] = args[first + i].GetStringValue();
}

} // namespace

void CBrindle::FileFormatCloseAll() {
  m_pState->tables.CloseAll();
}

bool CBrindle::ExecDBFOperation(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type) {
  if (!CheckArguments(args, type))
    return false;
  FileFormatTable& tables = m_pState->tables;
  const FileRoot::Scope files(m_pState->budget->Root()); // a table opens its file anew to be written to

  // The two that make a handle.
  if (type == FUNCTION_DBFOPEN) {
    result.SetValue(OpenTable(tables, args[0].GetStringValue()));
    return !files.HasRefused() || Fail(kErrorNotAllowed);
  }
  if (type == FUNCTION_DBFCREATE) {
    result.SetValue(kNoHandle);
    std::vector<CDbfFieldDescriptorEx> fields;
    for (int i = 1; i < args.GetSize(); ++i) {
      constexpr int fewestItems = 3;
      if (args[i].GetNumItems() < fewestItems) {
        ReportError(kErrorParameterCount);
        return false;
      }
      fields.push_back(FieldOf(args[i]));
    }
    if (!fields.empty())
      result.SetValue(CreateTable(tables, args[0].GetStringValue(), fields));
    return !files.HasRefused() || Fail(kErrorNotAllowed);
  }

  // Neutral results come first: they stand whatever happens below.
  const int handle = ToInt32(args[0].GetNumberValue());
  switch (type) {
  case FUNCTION_DBFCLOSE:
    if (handle < 0)
      result.SetValue(kNoHandle);
    else
      result.SetValue(tables.Close(handle));
    return true;
  case FUNCTION_DBFWRITE:
  case FUNCTION_DBFAPPEND:
  case FUNCTION_DBFNUMRECORDS:
  case FUNCTION_DBFNUMFIELDS: result.SetValue(0); break;
  default: break;
  }
  if (handle < 0) {
    ReportError(kErrorDbfHandle);
    return false;
  }
  CDbf* table = tables.FindTable(handle);
  if (table == nullptr)
    return true; // a handle that is not in use is no error

  switch (type) {
  case FUNCTION_DBFREAD: {
    // Deliberate: past the last record the values of the one read before come again
    table->ReadRecord();
    for (int field = 0; field < table->GetNumFields(); ++field)
      result.AddItem(table->GetFieldValue(field));
    return true;
  }
  case FUNCTION_DBFWRITE:
  case FUNCTION_DBFAPPEND: {
    const int firstValue = type == FUNCTION_DBFWRITE ? 2 : 1;
    const int count = table->GetNumFields();
    if (args.GetSize() < firstValue + count) {
      ReportError(kErrorParameterCount);
      return true; // Deliberate: reported, but not a failure
    }
    CStringArray& values = tables.Scratch();
    ValuesOf(args, firstValue, count, values);
    result.SetValue(type == FUNCTION_DBFWRITE ? table->WriteRecord(RecordNumber(args[1]), values, true)
                                              : table->AppendRecord(std::move(values), true));
    return true;
  }
  case FUNCTION_DBFSEEK: result.SetValue(table->SeekToRecord(RecordNumber(args[1]))); return true;
  case FUNCTION_DBFDELETE: result.SetValue(table->MarkRecordAsDeleted(RecordNumber(args[1]))); return true;
  case FUNCTION_DBFNUMRECORDS: SetCount(result, table->GetNumRecords()); return true;
  case FUNCTION_DBFNUMFIELDS: result.SetValue(table->GetNumFields()); return true;
  case FUNCTION_DBFFIELDNAMES: {
    CStringArray names;
    table->GetAttributes(names);
    for (const CString& name : names)
      result.AddItem(name);
    return true;
  }
  default: return false;
  }
}
