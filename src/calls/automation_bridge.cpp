// Dotted names: the object variable in front of the dot, and what becomes of the member behind it.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"

using namespace brindle;

bool CBrindle::FindObject(const CString& dottedName, IDispatch*& object) {
  const VariableSlot* slot = FindSlot(dottedName.Left(dottedName.Find(u'.')));
  if (slot == nullptr) {
    ReportError(kErrorUndefinedVariable);
    return false;
  }
  if (slot->CurrentItem().GetType() != BVT_OBJECT) {
    ReportError(kErrorArgumentType);
    return false;
  }
  object = slot->CurrentItem().GetObjectValue();
  return true;
}

bool CBrindle::ExecAutomationMethod(const CString& name, CBasicVariable&, Arguments&, bool) {
  IDispatch* object = nullptr;
  if (FindObject(name, object))
    ReportError(kErrorUnknownField); // no member of an object can be reached yet
  return false;
}

bool CBrindle::SetObjectProperty(const CString& name, CBasicVariable&) {
  IDispatch* object = nullptr;
  if (FindObject(name, object))
    ReportError(kErrorUnknownField);
  return false;
}
