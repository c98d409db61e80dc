// Dotted names: the object variable in front of the dot, and what becomes of the member behind it.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"

using namespace brindle;

bool CBrindle::FindObject(const CString& dottedName, IDispatch*& object) {
  const VariableSlot* slot = FindSlot(dottedName.Left(dottedName.Find(u'.')));
  if (slot == nullptr)
    return Fail(kErrorUndefinedVariable);
  if (slot->CurrentItem().GetType() != BVT_OBJECT)
    return Fail(kErrorArgumentType);
  object = slot->CurrentItem().GetObjectValue();
  return true;
}

// No member of an object can be reached yet: every name is an unknown one.

bool CBrindle::ExecAutomationMethod(const CString& name, CBasicVariable&, Arguments&, bool) {
  IDispatch* object = nullptr;
  return FindObject(name, object) && Fail(kErrorUnknownField);
}

bool CBrindle::SetObjectProperty(const CString& name, CBasicVariable&) {
  IDispatch* object = nullptr;
  return FindObject(name, object) && Fail(kErrorUnknownField);
}
