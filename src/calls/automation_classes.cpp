#include "brindle/automation_classes.h"

#include "brindle/component.h"
#include "calls/registration_file.h"
#include "platform/data_folders.h"
#include "platform/path.h"
#include "platform/shared_library.h"

#include <algorithm>
#include <unordered_map>

using namespace brindle;

namespace {

constexpr const char* kCreate = "BrindleCreateObject";
constexpr const char* kIdentifiers = "BrindleClassIdentifiers";
constexpr std::u16string_view kBusPrefix = u"dbus:";
constexpr const char* kBusPlugIn = "libbrindle-dbus.so";

CString Lowered(CString text) {
  return text.MakeLower();
}

// Keys are in lower case.
std::unordered_map<CString, CAutomationClasses::Factory>& HostClasses() {
  static std::unordered_map<CString, CAutomationClasses::Factory> classes;
  return classes;
}

CString TextOf(const std::string& native) {
  return CString(PathFromNative(native));
}

HRESULT CreateFrom(const SharedLibrary& library, const CString& identifier, IDispatch** object, CString& reason) {
  auto* const create = library.FindFunction<decltype(BrindleCreateObject)>(kCreate);
  if (create == nullptr)
    return CLASS_E_CLASSNOTAVAILABLE;
  BSTR text = nullptr;
  struct Text {
    BSTR& text;
    ~Text() { SysFreeString(text); }
  };
  const Text owner{text}; // also when the library throws
  const HRESULT code = create(identifier.GetString(), object, &text);
  reason = CString(text, static_cast<int>(SysStringLen(text)));
  return code;
}

} // namespace

bool CAutomationClasses::Add(const CString& identifier, Factory factory) {
  if (identifier.IsEmpty() || !factory)
    return false;
  HostClasses()[Lowered(identifier)] = std::move(factory);
  return true;
}

bool CAutomationClasses::Remove(const CString& identifier) {
  return HostClasses().erase(Lowered(identifier)) > 0;
}

HRESULT CAutomationClasses::CreateObject(const CString& identifier, IDispatch** object, CString& reason) {
  *object = nullptr;
  reason.Empty();
  // The host's own classes.
  if (const auto own = HostClasses().find(Lowered(identifier)); own != HostClasses().end()) {
    const Factory factory = own->second; // it may remove itself
    return factory(object);
  }
  // Server libraries.
  std::string failure;
  if (const auto registration = FindRegistration(identifier)) {
    const SharedLibrary library = SharedLibrary::Open(registration->library, failure);
    if (library.IsOpen())
      return CreateFrom(library, identifier, object, reason);
    reason = CString(u"The server library cannot be loaded: ") + TextOf(failure);
    return CO_E_DLLNOTFOUND;
  }
  // The bus.
  if (Lowered(identifier).View().starts_with(kBusPrefix)) {
    const SharedLibrary library = SharedLibrary::OpenPlugIn(kBusPlugIn, failure);
    if (library.IsOpen())
      return CreateFrom(library, identifier, object, reason);
    reason = CString(u"D-Bus is not available: ") + TextOf(failure);
    return CO_E_DLLNOTFOUND;
  }
  return CO_E_CLASSSTRING;
}

std::vector<CString> CAutomationClasses::RegisteredClasses() {
  std::vector<CString> classes;
  for (const Registration& registration : brindle::AllRegistrations())
    classes.insert(classes.end(), registration.classes.begin(), registration.classes.end());
  return classes;
}

bool CAutomationClasses::RegisterLibrary(const std::string& path, std::string& reason) {
  Registration registration;
  registration.library = AbsolutePath(path);
  if (registration.library.find_first_of("\n\r") != std::string::npos) {
    reason = "a path with a line break cannot be registered";
    return false;
  }
  const SharedLibrary library = SharedLibrary::Open(registration.library, reason);
  if (!library.IsOpen())
    return false;
  auto* const identifiers = library.FindFunction<decltype(BrindleClassIdentifiers)>(kIdentifiers);
  if (identifiers == nullptr || library.FindSymbol(kCreate) == nullptr) {
    reason = path + ": no server library, it exports no " + (identifiers == nullptr ? kIdentifiers : kCreate);
    return false;
  }
  for (const char* const* name = identifiers(); name != nullptr && *name != nullptr; ++name) {
    const CString identifier = CString::FromUtf8(*name).Trim();
    if (!identifier.IsEmpty() && identifier.FindOneOf(CString(u"\n\r")) < 0)
      registration.classes.push_back(identifier);
  }
  if (registration.classes.empty()) {
    reason = path + ": it has no classes";
    return false;
  }
  const RegistrationPlace place = PlaceOf(registration.library);
  if (place.path.empty()) {
    reason = "no data folder: neither XDG_DATA_HOME nor HOME is set";
    return false;
  }
  return WriteDataFile(place.path, FormatRegistration(registration), reason);
}

bool CAutomationClasses::UnregisterLibrary(const std::string& path, std::string& reason) {
  const RegistrationPlace place = PlaceOf(AbsolutePath(path));
  if (!place.exists) {
    reason = path + ": not registered by this user";
    return false;
  }
  return RemoveDataFile(place.path, reason);
}
