// ScriptedObject: an Automation object written against COM's own interfaces, whose members a test writes as lambdas.
// Room: tests. Used by: unit tests of the Automation bridge.
// May touch: memory only.
// Must not: delete itself; the test owns it and counts its references.
// Invariant: remembers how every member was reached, arguments in the order in which they came.
#pragma once

#include "brindle/text.h"
#include "brindle/variable.h"
#include "support/counting_dispatch.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

struct SeenCall {
  std::string member;
  WORD flags = 0;
  LCID locale = 0;
  std::vector<std::pair<VARTYPE, std::string>> arguments; // kind and text, as they lie in the block
  std::vector<DISPID> named;
  bool hasResult = false;
};

class ScriptedObject : public CountingDispatch {
public:
  using Member = std::function<HRESULT(DISPPARAMS& arguments, VARIANT* result, EXCEPINFO* exception)>;

  void Add(const std::string& name, Member member) { m_members.emplace_back(name, std::move(member)); }

  std::vector<SeenCall> calls;
  int lookups = 0;
  std::function<void()> onLookup;

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override {
    ++lookups;
    if (onLookup)
      onLookup();
    if (reserved != IID_NULL || count != 1 || locale != LOCALE_SYSTEM_DEFAULT)
      return E_INVALIDARG;
    for (std::size_t i = 0; i < m_members.size(); ++i) {
      if (CString(names[0]).CompareNoCase(CString::FromUtf8(m_members[i].first)) == 0) {
        ids[0] = static_cast<DISPID>(100 + i);
        return S_OK;
      }
    }
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* arguments,
                                   VARIANT* result, EXCEPINFO* exception, UINT*) override {
    auto& [name, act] = m_members.at(static_cast<std::size_t>(member - 100));
    SeenCall seen{name, flags, locale, {}, {}, result != nullptr};
    if (reserved != IID_NULL)
      return E_INVALIDARG;
    for (UINT i = 0; i < arguments->cArgs; ++i) {
      const VARIANT& value = arguments->rgvarg[i];
      CVarBase item;
      const bool known = item.SetValue(value);
      seen.arguments.emplace_back(value.vt, value.vt == VT_DISPATCH ? "object"
                                            : known                 ? item.GetStringValue().ToUtf8()
                                                                    : "?");
    }
    seen.named.assign(arguments->rgdispidNamedArgs, arguments->rgdispidNamedArgs + arguments->cNamedArgs);
    calls.push_back(std::move(seen));
    const Member member_ = act;
    return member_ ? member_(*arguments, result, exception) : S_OK;
  }

private:
  std::vector<std::pair<std::string, Member>> m_members;
};
