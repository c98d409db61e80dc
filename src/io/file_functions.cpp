// The file family of the built-in functions.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/limits.h"
#include "interpreter/state.h"
#include "platform/memory_account.h"
#include "platform/number_text.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <vector>

using namespace brindle;

namespace {

static_assert(std::endian::native == std::endian::little, "elements are stored little-endian");

constexpr std::size_t kFirstPortion = 64 * 1024;

using Bytes = std::vector<char, AccountedAllocator<char>>;

bool IsElementSize(int size) {
  return size == 1 || size == 2 || size == 4 || size == 8;
}

template <class T> T ElementAt(const Bytes& bytes, int index) {
  T element;
  std::memcpy(&element, bytes.data() + static_cast<std::size_t>(index) * sizeof(T), sizeof(T));
  return element;
}

template <class T> void AppendElement(Bytes& bytes, T element) {
  const std::size_t at = bytes.size();
  bytes.resize(at + sizeof(T));
  std::memcpy(bytes.data() + at, &element, sizeof(T));
}

void SetElement(CBasicVariable& result, int index, const Bytes& bytes, int size) {
  switch (size) {
  case 1: result.SetValue(static_cast<int>(ElementAt<std::uint8_t>(bytes, index)), index); break;
  case 2: result.SetValue(static_cast<int>(ElementAt<std::uint16_t>(bytes, index)), index); break;
  case 4: result.SetValue(static_cast<int>(ElementAt<std::int32_t>(bytes, index)), index); break;
  default: result.SetValue(ElementAt<double>(bytes, index), index); break;
  }
}

void AppendNumber(Bytes& bytes, double number, int size) {
  const std::int32_t integer = ToInt32(number);
  switch (size) {
  case 1: AppendElement(bytes, static_cast<std::uint8_t>(integer)); break;
  case 2: AppendElement(bytes, static_cast<std::uint16_t>(integer)); break;
  case 4: AppendElement(bytes, integer); break;
  default: AppendElement(bytes, number); break;
  }
}

// A file's size or position as a number: an integer as long as it is one.
void SetOffset(CBasicVariable& result, std::uint64_t offset) {
  if (offset <= INT32_MAX)
    result.SetValue(static_cast<int>(offset));
  else
    result.SetValue(static_cast<double>(offset));
}

// The members below return 0 or the number of the error to report.

int ReadElements(FileHolder& file, CBasicVariable& result, const CBasicVariableArray& args) {
  const int size = ToInt32(args[2].GetNumberValue());
  if (!IsElementSize(size))
    return kErrorParameter;
  const int count = ToInt32(args[1].GetNumberValue());
  if (count < 0 || count > kLongestText)
    return kErrorUnrecoverable;
  // In portions, so that memory grows with what the file holds, not with what the script asks for.
  const std::size_t wanted = static_cast<std::size_t>(count) * static_cast<std::size_t>(size);
  Bytes bytes;
  while (bytes.size() < wanted) {
    const std::size_t held = bytes.size();
    const std::size_t portion = std::min(wanted - held, std::max(held, kFirstPortion));
    bytes.resize(held + portion);
    if (file.Read(bytes.data() + held, portion) < portion)
      return kErrorShortRead;
  }
  result.SetArraySize(count);
  for (int i = 0; i < count; ++i)
    SetElement(result, i, bytes, size);
  return 0;
}

int WriteElements(FileHolder& file, CBasicVariable& result, CBasicVariable& values, int size) {
  if (!IsElementSize(size))
    return kErrorParameter;
  const int count = values.GetNumItems();
  Bytes bytes;
  bytes.reserve(static_cast<std::size_t>(count) * static_cast<std::size_t>(size));
  for (int i = 0; i < count; ++i) {
    values.SetCurIndex(i);
    AppendNumber(bytes, values.GetNumberValue(), size);
  }
  file.Write(bytes.data(), bytes.size());
  result.SetValue(count);
  return 0;
}

int ReadTextLine(FileHolder& file, CBasicVariable& result) {
  if (!file.text)
    return kErrorNotTextMode;
  CString line;
  if (file.text->ReadLine(line) == TextFile::LineResult::TooLong)
    return kErrorUnrecoverable;
  result.SetValue(line.TrimRight(CString(u"\r\n")));
  return 0;
}

int ReadNumberList(FileHolder& file, CBasicVariable& result, const CString& delimiters) {
  if (!file.text)
    return kErrorNotTextMode;
  CString line;
  switch (file.text->ReadLine(line)) {
  case TextFile::LineResult::TooLong: return kErrorUnrecoverable;
  case TextFile::LineResult::EndOfFile: return 0;
  case TextFile::LineResult::Line: break;
  }
  const std::u16string_view text = line.View();
  std::size_t from = 0;
  for (;;) {
    const std::size_t to = std::min(text.find_first_of(delimiters.View(), from), text.size());
    result.AddItem(ParseDouble(text.substr(from, to - from)));
    if (to == text.size())
      return 0;
    from = to + 1;
  }
}

int WriteTextLines(FileHolder& file, CBasicVariable& result, CBasicVariableArray& args) {
  if (!file.text)
    return kErrorNotTextMode;
  if (args.GetSize() > 2) {
    const CString encoding = args[2].GetStringValue();
    if (encoding.CompareNoCase(CString(u"ASCII")) == 0)
      TextFile::SetWriteEncoding(WriteEncoding::Ansi);
    else if (encoding.CompareNoCase(CString(u"UTF16")) == 0)
      TextFile::SetWriteEncoding(WriteEncoding::Utf16);
  }
  CBasicVariable& values = args[1];
  for (int i = 0; i < values.GetNumItems(); ++i) {
    values.SetCurIndex(i);
    file.text->Write(values.GetStringValue());
  }
  result.SetValue(values.GetNumItems());
  return 0;
}

} // namespace

bool CBrindle::ExecFileOperation(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type) {
  if (args.IsEmpty())
    return Fail(kErrorParameterCount);
  FileHolder* file = m_pState->files.Find(ToUint32(args[0].GetNumberValue()));
  if (file == nullptr)
    return Fail(kErrorFileHandle);
  if (!CheckArguments(args, type))
    return false;
  int error = 0;
  try {
    switch (type) {
    case FUNCTION_READ: error = ReadElements(*file, result, args); break;
    case FUNCTION_WRITE: error = WriteElements(*file, result, args[1], ToInt32(args[2].GetNumberValue())); break;
    case FUNCTION_READLINE: error = ReadTextLine(*file, result); break;
    case FUNCTION_READLIST: error = ReadNumberList(*file, result, args[1].GetStringValue()); break;
    case FUNCTION_WRITELINE: error = WriteTextLines(*file, result, args); break;
    case FUNCTION_SEEK: {
      const std::uint32_t position = ToUint32(args[1].GetNumberValue());
      if (position >= file->GetLength())
        return false; // nothing moves, nothing is reported
      file->Seek(position);
      SetOffset(result, file->GetPosition());
      break;
    }
    case FUNCTION_FILESIZE: SetOffset(result, file->GetLength()); break;
    case FUNCTION_ISEOF: result.SetValue(file->IsAtEnd()); break;
    case FUNCTION_GETFILEPOS: SetOffset(result, file->GetPosition()); break;
    default: return false;
    }
  } catch (const CFileException&) {
    error = kErrorFileInputOutput;
  }
  if (error == 0)
    return true;
  return Fail(error);
}
