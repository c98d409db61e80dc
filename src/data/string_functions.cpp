// The string family of the built-in functions.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/limits.h"
#include "interpreter/state.h"
#include "platform/number_text.h"

using namespace brindle;

bool CBrindle::CheckCount(const Arguments& args, int count) {
  if (args.GetSize() == count)
    return true;
  return Fail(kErrorParameterCount);
}

bool CBrindle::CheckLeast(const Arguments& args, int count) {
  if (args.GetSize() >= count)
    return true;
  return Fail(kErrorParameterCount);
}

namespace {

int IntegerOf(const CBasicVariable& argument) {
  return ToInt32(argument.GetNumberValue());
}

// Length of `text` with every `oldText` replaced by `newText`, which may be more than can be stored.
std::int64_t ReplacedLength(const CString& text, const CString& oldText, const CString& newText) {
  std::int64_t count = 0;
  for (int found = text.Find(oldText); found >= 0; found = text.Find(oldText, found + oldText.GetLength()))
    ++count;
  return text.GetLength() + count * (newText.GetLength() - oldText.GetLength());
}

CString Repeated(const CString& text, int count) {
  CString out;
  const int length = text.GetLength() * count;
  unsigned short* units = out.GetBuffer(length);
  for (int i = 0; i < length; ++i)
    units[i] = text.GetAt(i % text.GetLength());
  out.ReleaseBuffer(length);
  return out;
}

} // namespace

bool CBrindle::ExecStringOperation(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type) {
  switch (type) {
  case FUNCTION_LEN:
    if (!CheckLeast(args, 1))
      return false;
    if (args[0].GetType() == BVT_STRING)
      result.SetValue(args[0].GetStringValue().GetLength());
    else
      result.SetValue(0.0); // Deliberate: what is no text has no length
    return true;

  case FUNCTION_LEFT:
    if (!CheckCount(args, 2))
      return false;
    result.SetValue(args[0].GetStringValue().Left(IntegerOf(args[1])));
    return true;

  case FUNCTION_RIGHT:
    if (!CheckCount(args, 2))
      return false;
    result.SetValue(args[0].GetStringValue().Right(IntegerOf(args[1])));
    return true;

  case FUNCTION_MID:
    if (!CheckCount(args, 3))
      return false;
    result.SetValue(args[0].GetStringValue().Mid(IntegerOf(args[1]), IntegerOf(args[2])));
    return true;

  case FUNCTION_INSTR:
    if (!CheckCount(args, 2))
      return false;
    result.SetValue(args[0].GetStringValue().Find(args[1].GetStringValue()));
    return true;

  case FUNCTION_LCASE:
  case FUNCTION_UCASE: {
    if (!CheckLeast(args, 1))
      return false;
    CString text = args[0].GetStringValue();
    result.SetValue(type == FUNCTION_LCASE ? text.MakeLower() : text.MakeUpper());
    return true;
  }

  case FUNCTION_REPLACE: {
    if (!CheckCount(args, 3))
      return false;
    CString text = args[0].GetStringValue();
    const CString oldText = args[1].GetStringValue();
    const CString newText = args[2].GetStringValue();
    if (!oldText.IsEmpty() && ReplacedLength(text, oldText, newText) > kLongestText)
      return Fail(kErrorUnrecoverable);
    text.Replace(oldText, newText);
    result.SetValue(text);
    return true;
  }

  case FUNCTION_VAL:
    if (!CheckLeast(args, 1))
      return false;
    result.SetValue(args[0].GetNumberValue());
    return true;

  case FUNCTION_STR:
    if (!CheckLeast(args, 1))
      return false;
    result.SetValue(args[0].GetStringValue());
    return true;

  case FUNCTION_REPEAT: {
    if (!CheckLeast(args, 2))
      return false;
    const CString text = args[0].GetStringValue();
    const int count = IntegerOf(args[1]);
    if (count <= 0 || text.IsEmpty()) {
      result.SetValue(CString());
      return true;
    }
    if (static_cast<std::int64_t>(text.GetLength()) * count > kLongestText)
      return Fail(kErrorUnrecoverable);
    result.SetValue(Repeated(text, count));
    return true;
  }

  case FUNCTION_FORMAT:
    if (!CheckCount(args, 2))
      return false;
    return ExecFormat(result, args[0], args[1].GetStringValue());

  case FUNCTION_GETPATH: {
    if (!CheckLeast(args, 1))
      return false;
    const CString path = args[0].GetStringValue();
    const int last = path.ReverseFind(u'\\');
    if (last >= 1)
      result.SetValue(path.Left(last + 1));
    return true;
  }

  case FUNCTION_GETNAME: {
    if (!CheckLeast(args, 1))
      return false;
    const CString path = args[0].GetStringValue();
    const int last = path.ReverseFind(u'\\');
    if (last >= 0 && last + 1 < path.GetLength())
      result.SetValue(path.Mid(last + 1));
    return true;
  }

  default: return false;
  }
}
