// Objects in scripts: "createobject", and what becomes of a dotted name: method call, property read, property write.
#include "brindle/automation_classes.h"
#include "brindle/interpreter.h"
#include "calls/object_call.h"
#include "calls/ole_variant.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"
#include "interpreter/user_interface_call.h"
#include "platform/automation_text.h"

#include <vector>

using namespace brindle;

namespace {

CString PartBehindDot(const CString& dottedName) {
  return dottedName.Mid(dottedName.Find(u'.') + 1);
}

// The fields that a server filled in belong to the caller, whatever the call's result.
void FreeTexts(EXCEPINFO& info) {
  for (BSTR* text : {&info.bstrSource, &info.bstrDescription, &info.bstrHelpFile})
    SysFreeString(std::exchange(*text, nullptr));
}

} // namespace

bool CBrindle::ExecCreateObject(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type) {
  if (!CheckArguments(args, type))
    return false;
  if (m_pState->budget->Limits().noAutomation) {
    result.SetValue(static_cast<IDispatch*>(nullptr));
    return Fail(kErrorNotAllowed);
  }
  const CString identifier = args[0].GetStringValue();
  CString reason;
  IDispatch* created = nullptr;
  const HRESULT code =
      CallObject([&] { return CAutomationClasses::CreateObject(identifier, &created, reason); }, reason);
  const ObjectReference object = ObjectReference::Adopt(created);
  const bool done = SUCCEEDED(code) && object.Get() != nullptr;
  result.SetValue(done ? object.Get() : nullptr);
  if (!done) {
    const CString message = ResultText(FAILED(code) ? code : E_NOINTERFACE);
    ReportAutomation(reason.IsEmpty() ? message + u" (" + identifier + u")" : reason);
  }
  return true;
}

// The object that the name in front of the dot holds.
bool CBrindle::FindObject(const CString& dottedName, ObjectReference& object) {
  const VariableSlot* slot = FindSlot(dottedName.Left(dottedName.Find(u'.')));
  if (slot == nullptr)
    return Fail(kErrorUndefinedVariable);
  if (slot->CurrentItem().GetType() != BVT_OBJECT)
    return Fail(kErrorArgumentType);
  object = ObjectReference(slot->CurrentItem().GetObjectValue());
  return true;
}

bool CBrindle::GetDispID(IDispatch* object, const CString& name, DISPID& member) {
  if (object == nullptr)
    return false;
  COleVariant text = ToVariant(CVarBase(name));
  CString thrown;
  const HRESULT code = CallObject(
      [&] { return object->GetIDsOfNames(IID_NULL, &text.bstrVal, 1, LOCALE_SYSTEM_DEFAULT, &member); }, thrown);
  if (code == E_OUTOFMEMORY) // no answer, so the member may exist
    thrown = ResultText(code);
  if (!thrown.IsEmpty())
    ReportAutomation(thrown);
  return SUCCEEDED(code);
}

// One call of a member; false when it failed, which has then been reported.
bool CBrindle::InvokeMember(IDispatch* object, DISPID member, WORD flags, DISPPARAMS& arguments,
                            CBasicVariable* result) {
  COleVariant returned;
  EXCEPINFO info{};
  UINT badArgument = 0;
  CString thrown;
  const HRESULT code = CallObject(
      [&] {
        return object->Invoke(member, IID_NULL, LOCALE_SYSTEM_DEFAULT, flags, &arguments,
                              result != nullptr ? &returned : nullptr, &info, &badArgument);
      },
      thrown);
  if (!thrown.IsEmpty()) {
    FreeTexts(info);
    ReportAutomation(thrown);
    return false;
  }
  if (!HandleAutomationError(code, info))
    return false;
  if (result == nullptr)
    return true;
  const HRESULT taken = CallObject(
      [&] {
        result->Set(VariantToBasicVar(returned));
        return S_OK;
      },
      thrown);
  if (FAILED(taken))
    ReportAutomation(thrown.IsEmpty() ? ResultText(taken) : thrown);
  return SUCCEEDED(taken);
}

bool CBrindle::ExecAutomationMethod(const CString& name, CBasicVariable& result, Arguments& args, bool) {
  CheckNesting(); // an object may call the script that calls it
  ObjectReference object;
  if (!FindObject(name, object))
    return false;
  DISPID member = DISPID_UNKNOWN;
  if (!GetDispID(object.Get(), PartBehindDot(name), member))
    return Fail(kErrorUnknownField);

  // The last argument comes first.
  const auto count = static_cast<std::size_t>(args.GetSize());
  std::vector<COleVariant> values(count);
  for (std::size_t i = 0; i < count; ++i)
    values[count - 1 - i] = BasicVarToVariant(args[static_cast<int>(i)]);
  static_assert(sizeof(COleVariant) == sizeof(VARIANTARG)); // so that they are an array of these as well
  DISPPARAMS arguments{values.data(), nullptr, static_cast<UINT>(count), 0};
  CBasicVariable value;
  const bool done = InvokeMember(object.Get(), member, DISPATCH_METHOD, arguments, &value);
  values.clear();
  if (!done)
    return false;
  result.Set(value);
  return true;
}

// Not set, without an error, for a name that the object does not know.
CBasicVariable CBrindle::GetObjectProperty(IDispatch* object, const CString& name) {
  CBasicVariable value;
  DISPID member = DISPID_UNKNOWN;
  if (GetDispID(object, name, member)) {
    DISPPARAMS arguments{nullptr, nullptr, 0, 0};
    InvokeMember(object, member, DISPATCH_PROPERTYGET, arguments, &value);
  }
  return value;
}

void CBrindle::ReadProperty(CBasicVariable& result) {
  const CString name = m_pState->token.Text();
  ObjectReference object;
  if (FindObject(name, object))
    result = GetObjectProperty(object.Get(), PartBehindDot(name));
}

bool CBrindle::SetObjectProperty(const CString& name, CBasicVariable& value) {
  ObjectReference object;
  if (!FindObject(name, object))
    return false;
  DISPID member = DISPID_UNKNOWN;
  if (!GetDispID(object.Get(), PartBehindDot(name), member))
    return Fail(kErrorUnknownField);
  COleVariant passed = BasicVarToVariant(value);
  DISPID named = DISPID_PROPERTYPUT;
  DISPPARAMS arguments{&passed, &named, 1, 1};
  return InvokeMember(object.Get(), member, DISPATCH_PROPERTYPUT, arguments, nullptr);
}

COleVariant CBrindle::BasicVarToVariant(CBasicVariable& value) {
  return ToVariant(value.GetItem());
}

CBasicVariable CBrindle::VariantToBasicVar(COleVariant& variant) {
  return FromVariant(variant);
}

bool CBrindle::HandleAutomationError(long code, EXCEPINFO& info) {
  const auto result = static_cast<HRESULT>(code);
  CString text;
  if (result == DISP_E_EXCEPTION) {
    CString thrown;
    if (info.pfnDeferredFillIn != nullptr)
      CallObject([&] { return info.pfnDeferredFillIn(&info); }, thrown);
    text = CString(info.bstrDescription, static_cast<int>(SysStringLen(info.bstrDescription)));
    if (text.IsEmpty())
      text = ResultText(info.scode != S_OK ? info.scode : result);
  } else {
    text = ResultText(result);
  }
  FreeTexts(info);
  if (result == S_OK)
    return true;
  ReportAutomation(text);
  return false;
}

// A box of its own, in one line: it is no error of the language, and the run goes on.
void CBrindle::ReportAutomation(const CString& text) {
  // What a call that was given up has led to is no failure of the object.
  if (m_pState->runDepth > 0 && m_pState->budget->ShouldStop())
    AbortByBudget(std::nullopt);
  CString line = text;
  line.Replace(u'\r', u' ');
  line.Replace(u'\n', u' ');
  line.Trim();
  CUserInterface& userInterface = GetUserInterface();
  CallUserInterface([&] { userInterface.ShowNotice(line); });
}
