// The string family of the built-in functions.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/limits.h"
#include "interpreter/state.h"
#include "platform/number_text.h"

using namespace brindle;

// Too few, or too many for a function that minds. What its row in the function table says.
bool CBrindle::CheckArguments(const Arguments& args, FUNCTION_TYPE type) {
  const FunctionSignature& signature = m_pState->functions.SignatureOf(type);
  if (signature.Accepts(args.GetSize()))
    return true;
  if (signature.Reports(args.GetSize()))
    ReportError(kErrorParameterCount);
  return false;
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
  if (!CheckArguments(args, type))
    return false;
  switch (type) {
  case FUNCTION_LEN:
    if (args[0].GetType() == BVT_STRING)
      result.SetValue(args[0].GetStringValue().GetLength());
    else
      result.SetValue(0.0); // Deliberate: what is no text has no length
    return true;

  case FUNCTION_LEFT: result.SetValue(args[0].GetStringValue().Left(IntegerOf(args[1]))); return true;

  case FUNCTION_RIGHT: result.SetValue(args[0].GetStringValue().Right(IntegerOf(args[1]))); return true;

  case FUNCTION_MID: result.SetValue(args[0].GetStringValue().Mid(IntegerOf(args[1]), IntegerOf(args[2]))); return true;

  case FUNCTION_INSTR: result.SetValue(args[0].GetStringValue().Find(args[1].GetStringValue())); return true;

  case FUNCTION_LCASE:
  case FUNCTION_UCASE: {
    CString text = args[0].GetStringValue();
    result.SetValue(type == FUNCTION_LCASE ? text.MakeLower() : text.MakeUpper());
    return true;
  }

  case FUNCTION_REPLACE: {
    CString text = args[0].GetStringValue();
    const CString oldText = args[1].GetStringValue();
    const CString newText = args[2].GetStringValue();
    if (!oldText.IsEmpty() && ReplacedLength(text, oldText, newText) > kLongestText)
      return Fail(kErrorUnrecoverable);
    text.Replace(oldText, newText);
    result.SetValue(text);
    return true;
  }

  case FUNCTION_VAL: result.SetValue(args[0].GetNumberValue()); return true;

  case FUNCTION_STR: result.SetValue(args[0].GetStringValue()); return true;

  case FUNCTION_REPEAT: {
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

  case FUNCTION_FORMAT: return ExecFormat(result, args[0], args[1].GetStringValue());

  case FUNCTION_GETPATH: {
    const CString path = args[0].GetStringValue();
    const int last = path.ReverseFind(u'\\');
    if (last >= 1)
      result.SetValue(path.Left(last + 1));
    return true;
  }

  case FUNCTION_GETNAME: {
    const CString path = args[0].GetStringValue();
    const int last = path.ReverseFind(u'\\');
    if (last >= 0 && last + 1 < path.GetLength())
      result.SetValue(path.Mid(last + 1));
    return true;
  }

  default: return false;
  }
}
