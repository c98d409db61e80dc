// BusObject: an object on the bus as an Automation object. Its members are those that it introspects to.
// Room: components. Used by: the entry point of the plug-in.
// May touch: the bus.
// Must not: ask the bus before somebody uses it: an array of paths is an array of objects.
// Invariant: member identifiers stay what they are as long as the object lives.
#pragma once

#include "bus.h"
#include "introspection.h"

#include <brindle/component.h>

#include <memory>
#include <string>
#include <vector>

namespace brindle {

// Where an object stands: "dbus:[session|system]:SERVICE:/OBJECT/PATH[:INTERFACE]".
struct BusAddress {
  bool system = false;
  std::string service;
  std::string path;
  std::string interface; // empty: all
};

// Throws std::runtime_error with what is wrong with the text.
[[nodiscard]] BusAddress ParseBusAddress(const std::string& identifier);

class BusObject final : public CComponent {
public:
  explicit BusObject(BusAddress address) : CComponent({}), m_address(std::move(address)) {}

  // Asks the object what it is; throws when nobody answers or the interface is none of its own.
  void Introspect();
  [[nodiscard]] const std::string& Path() const noexcept { return m_address.path; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* members) override;

private:
  HRESULT Call(int member, WORD access, const Arguments& arguments, VARIANT& result) override;
  [[nodiscard]] const BusMember* Find(const CString& name, bool isProperty) const;
  [[nodiscard]] VARIANT CallMethod(const BusMember& method, const Arguments& arguments);
  [[nodiscard]] VARIANT GetProperty(const BusMember& property);
  void SetProperty(const BusMember& property, const CVarBase& value);
  [[nodiscard]] IDispatch* ObjectAt(const std::string& path) const;
  [[nodiscard]] Bus& Connection();

  BusAddress m_address;
  std::shared_ptr<Bus> m_pBus;
  bool m_bIntrospected = false;
  std::vector<BusMember> m_members;
};

} // namespace brindle
