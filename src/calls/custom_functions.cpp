// Functions that the host registered: one table for the process.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/func_desc.h"
#include "platform/collections.h"

#include <memory>

CMapStringToPtr CBrindle::m_ExtFunctionTable;

bool CBrindle::AddCustomFunction(const CString& name, BrindleCallback callback, int value, void*) {
  if (name.IsEmpty() || callback == nullptr)
    return false;
  if (m_ExtFunctionTable.Find<CFuncDesc>(name) != nullptr)
    return true; // the first registration of a name stays
  auto function = std::make_unique<CFuncDesc>();
  // Deliberate: the name is not lower-cased, although every look-up is.
  function->m_strName = name;
  function->m_strEntryName = name;
  function->m_nCode = FUNCTION_HOST;
  function->m_nKind = CFuncDesc::kBuiltIn;
  function->m_pCallback = callback;
  function->m_nValue = value;
  m_ExtFunctionTable.SetAt(name, function.get());
  ++m_nHostFunctionChanges;
  function.release();
  return true;
}

bool CBrindle::ExecCustomFunction(CFuncDesc& function, CBasicVariable& result, Arguments& args) {
  if (function.m_pCallback == nullptr) {
    ReportError(brindle::kErrorUndefinedFunction);
    return false;
  }
  result.Set(function.m_pCallback(this, args, function.m_nValue));
  return true;
}
