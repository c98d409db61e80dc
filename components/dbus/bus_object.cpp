#include "bus_object.h"

#include "conversion.h"

namespace brindle {

namespace {

constexpr const char* kProperties = "org.freedesktop.DBus.Properties";

// Asks an object whether it is one of these; only this plug-in knows the question.
constexpr IID kBusObject = {0x7c9f1d2e, 0x51a4, 0x4b0e, {0x9d, 0x36, 0x0c, 0x8e, 0x5a, 0x71, 0xe2, 0x4f}};

[[noreturn]] void RefuseAddress(const std::string& identifier, const char* reason) {
  throw std::runtime_error("D-Bus: \"" + identifier + "\" " + reason);
}

} // namespace

BusAddress ParseBusAddress(const std::string& identifier) {
  BusAddress address;
  const std::size_t busStart = identifier.find(':') + 1;
  const std::size_t busEnd = identifier.find(':', busStart);
  if (busEnd == std::string::npos)
    RefuseAddress(identifier, "names no service");
  const CString bus = CString::FromUtf8(identifier.substr(busStart, busEnd - busStart));
  address.system = bus.CompareNoCase(u"system") == 0;
  if (!address.system && !bus.IsEmpty() && bus.CompareNoCase(u"session") != 0)
    RefuseAddress(identifier, "names neither the session nor the system bus");
  // A service that has only its number starts with ":".
  const std::size_t serviceEnd = identifier.find(":/", busEnd + 1);
  if (serviceEnd == std::string::npos)
    RefuseAddress(identifier, "names no object path");
  address.service = identifier.substr(busEnd + 1, serviceEnd - busEnd - 1);
  const std::size_t pathEnd = std::min(identifier.find(':', serviceEnd + 1), identifier.size());
  address.path = identifier.substr(serviceEnd + 1, pathEnd - serviceEnd - 1);
  if (pathEnd < identifier.size())
    address.interface = identifier.substr(pathEnd + 1);
  if (sd_bus_service_name_is_valid(address.service.c_str()) <= 0)
    RefuseAddress(identifier, "names no valid service");
  if (sd_bus_object_path_is_valid(address.path.c_str()) <= 0)
    RefuseAddress(identifier, "names no valid object path");
  if (pathEnd < identifier.size() && sd_bus_interface_name_is_valid(address.interface.c_str()) <= 0)
    RefuseAddress(identifier, "names no valid interface");
  return address;
}

Bus& BusObject::Connection() {
  if (m_pBus == nullptr || !m_pBus->IsOpen())
    m_pBus = Bus::Connect(m_address.system);
  return *m_pBus;
}

void BusObject::Introspect() {
  if (m_bIntrospected)
    return;
  Bus& bus = Connection();
  const BusMessage reply =
      bus.Call(bus.NewCall(m_address.service, m_address.path, "org.freedesktop.DBus.Introspectable", "Introspect"));
  const char* xml = nullptr;
  Checked(sd_bus_message_read(reply.get(), "s", &xml), "the object does not describe itself");
  m_members = ReadIntrospection(xml, m_address.interface);
  if (m_members.empty())
    throw std::runtime_error("D-Bus: " + m_address.service + " has no " +
                             (m_address.interface.empty() ? "members" : "interface " + m_address.interface) + " at " +
                             m_address.path);
  m_bIntrospected = true;
}

HRESULT BusObject::QueryInterface(REFIID interfaceId, void** object) {
  if (interfaceId != kBusObject || object == nullptr)
    return CComponent::QueryInterface(interfaceId, object);
  AddRef();
  *object = this;
  return S_OK;
}

std::string PathOfObject(IDispatch* object) {
  void* found = nullptr;
  if (object == nullptr || FAILED(object->QueryInterface(kBusObject, &found)))
    return {};
  auto* const busObject = static_cast<BusObject*>(found);
  const std::string path = busObject->Path();
  busObject->Release();
  return path;
}

HRESULT BusObject::GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale, DISPID* members) {
  const HRESULT known = CComponent::GetIDsOfNames(reserved, names, count, locale, members);
  if (SUCCEEDED(known) || count != 1)
    return known;
  try {
    Introspect();
  } catch (const std::exception&) {
    // Nobody can say which names there are: the member is called, and that call says what is wrong.
    members[0] = AddName(CString(names[0]));
    return S_OK;
  }
  const CString name(names[0]);
  if (Find(name, false) == nullptr && Find(name, true) == nullptr)
    return known;
  members[0] = AddName(name);
  return S_OK;
}

// As written first: names on the bus may differ by case alone.
const BusMember* BusObject::Find(const CString& name, bool isProperty) const {
  const std::string exact = name.ToUtf8();
  for (const BusMember& member : m_members)
    if (member.isProperty == isProperty && member.name == exact)
      return &member;
  for (const BusMember& member : m_members)
    if (member.isProperty == isProperty && CString::FromUtf8(member.name).CompareNoCase(name) == 0)
      return &member;
  return nullptr;
}

HRESULT BusObject::Call(int member, WORD access, const Arguments& arguments, VARIANT& result) {
  Introspect();
  const CString& name = NameOf(member);
  const bool isProperty = (access & DISPATCH_METHOD) == 0;
  const BusMember* const found = Find(name, isProperty);
  if (found == nullptr)
    throw std::runtime_error("D-Bus: " + m_address.service + " has no " + (isProperty ? "property " : "method ") +
                             name.ToUtf8() + " at " + m_address.path);
  if (!isProperty)
    result = CallMethod(*found, arguments);
  else if ((access & DISPATCH_PROPERTYPUT) == 0)
    result = GetProperty(*found);
  else if (arguments.size() == 1)
    SetProperty(*found, arguments[0]);
  else
    return DISP_E_BADPARAMCOUNT;
  return S_OK;
}

VARIANT BusObject::CallMethod(const BusMember& method, const Arguments& arguments) {
  // Refused before anything happens at the other end.
  if (arguments.size() != method.in.size())
    throw std::runtime_error("D-Bus: " + method.name + " takes " + std::to_string(method.in.size()) +
                             " arguments, not " + std::to_string(arguments.size()));
  if (!CanRead(method.out))
    throw std::runtime_error("D-Bus: " + method.name + " gives a result of the type \"" + method.out +
                             "\", which scripts cannot take");
  Bus& bus = Connection();
  const BusMessage message = bus.NewCall(m_address.service, m_address.path, method.interface, method.name);
  for (std::size_t i = 0; i < arguments.size(); ++i)
    AppendArgument(message.get(), method.in[i], arguments[i],
                   "argument " + std::to_string(i + 1) + " of " + method.name);
  const BusMessage reply = bus.Call(message);
  return ReadResult(reply.get(), [this](const std::string& path) { return ObjectAt(path); });
}

VARIANT BusObject::GetProperty(const BusMember& property) {
  Bus& bus = Connection();
  const BusMessage message = bus.NewCall(m_address.service, m_address.path, kProperties, "Get");
  Checked(sd_bus_message_append(message.get(), "ss", property.interface.c_str(), property.name.c_str()),
          "the property cannot be asked for");
  const BusMessage reply = bus.Call(message);
  return ReadResult(reply.get(), [this](const std::string& path) { return ObjectAt(path); });
}

void BusObject::SetProperty(const BusMember& property, const CVarBase& value) {
  Bus& bus = Connection();
  const BusMessage message = bus.NewCall(m_address.service, m_address.path, kProperties, "Set");
  Checked(sd_bus_message_append(message.get(), "ss", property.interface.c_str(), property.name.c_str()),
          "the property cannot be set");
  Checked(sd_bus_message_open_container(message.get(), SD_BUS_TYPE_VARIANT, property.out.c_str()),
          "the property cannot be set");
  AppendArgument(message.get(), property.out, value, "the value of " + property.name);
  Checked(sd_bus_message_close_container(message.get()), "the property cannot be set");
  (void)bus.Call(message);
}

IDispatch* BusObject::ObjectAt(const std::string& path) const {
  return new BusObject(BusAddress{m_address.system, m_address.service, path, std::string()});
}

} // namespace brindle
