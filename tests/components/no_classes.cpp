// A server library without a class.
#include <brindle/component.h>

BRINDLE_COMPONENT_EXPORT const char* const* BrindleClassIdentifiers() {
  return nullptr;
}

BRINDLE_COMPONENT_EXPORT HRESULT BrindleCreateObject(const OLECHAR*, IDispatch**, BSTR*) {
  return CLASS_E_CLASSNOTAVAILABLE;
}
