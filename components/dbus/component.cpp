// The plug-in for objects on D-Bus: "createobject" comes here with every identifier that starts with "dbus:".
#include "bus_object.h"

#include <exception>

BRINDLE_COMPONENT_EXPORT const char* const* BrindleClassIdentifiers() {
  static constexpr const char* kNone[] = {nullptr}; // it is found by its name, not registered
  return kNone;
}

BRINDLE_COMPONENT_EXPORT HRESULT BrindleCreateObject(const OLECHAR* identifier, IDispatch** object, BSTR* reason) {
  brindle::BusObject* made = nullptr;
  try {
    made = new brindle::BusObject(brindle::ParseBusAddress(CString(identifier).ToUtf8()));
    made->Introspect(); // a service that is not there fails here, not at the first call
    *object = made;
    return S_OK;
  } catch (const std::exception& failure) {
    if (made != nullptr)
      made->Release();
    *reason = SysAllocString(CString::FromUtf8(failure.what()));
    return CO_E_CLASSSTRING;
  }
}
