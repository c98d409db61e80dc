// What a server library exports, and a base class that takes the routine out of writing one.
// Room: calls. Used by: server libraries; the class look-up for the names of their entry points.
// May touch: nothing but memory.
// Must not: need anything from the library but the functions of automation.h and the value class.
// Invariant: a library built against it works with every later version of the same major number.
#pragma once

#include "brindle/automation.h"
#include "brindle/text.h"
#include "brindle/variable.h"

#include <cstddef>
#include <exception>
#include <new>
#include <utility>
#include <vector>

/// The two functions that a server library exports.
extern "C" {

/// The identifiers that "createobject" takes, in UTF-8, and a null at the end. Read when the library is registered;
/// the memory stays the library's.
const char* const* BrindleClassIdentifiers();

/// Makes an object of a class, with one reference for the caller. The identifier is given as the script wrote it, so
/// compare it without regard to case. On failure the object stays null, and `*reason` may be set to a text from
/// SysAllocString that the user is shown and the caller frees.
HRESULT BrindleCreateObject(const OLECHAR* identifier, IDispatch** object, BSTR* reason);
}

/// Goes before the definition of each of the two.
#if defined(_WIN32)
#define BRINDLE_COMPONENT_EXPORT extern "C" __declspec(dllexport)
#else
#define BRINDLE_COMPONENT_EXPORT extern "C" __attribute__((visibility("default")))
#endif

#if !defined(_WIN32)

/// An Automation object whose members are numbered by their names. Starts with one reference and deletes itself
/// with the last; one thread uses it at a time. Derive, hand the names to the constructor, and write Call.
class CComponent : public IDispatch {
public:
  CComponent(const CComponent&) = delete;
  CComponent& operator=(const CComponent&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override {
    if (object == nullptr)
      return E_POINTER;
    const bool known = interfaceId == IID_IUnknown || interfaceId == IID_IDispatch;
    *object = known ? static_cast<IDispatch*>(this) : nullptr;
    if (known)
      AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_nReferences; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --m_nReferences;
    if (left == 0)
      delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* members) override {
    if (count != 1)
      return DISP_E_UNKNOWNNAME;
    members[0] = DISPID_UNKNOWN;
    try {
      const CString name(names[0]);
      for (std::size_t i = 0; i < m_names.size(); ++i) {
        if (name.CompareNoCase(m_names[i]) == 0) {
          members[0] = static_cast<DISPID>(i);
          return S_OK;
        }
      }
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    }
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD access, DISPPARAMS* passed, VARIANT* result,
                                   EXCEPINFO* exception, UINT*) override {
    if (member < 0 || static_cast<std::size_t>(member) >= m_names.size())
      return DISP_E_MEMBERNOTFOUND;
    struct Dropped { // a result that nobody asked for
      Dropped() { VariantInit(&value); }
      Dropped(const Dropped&) = delete;
      Dropped& operator=(const Dropped&) = delete;
      ~Dropped() { VariantClear(&value); }
      VARIANT value;
    } dropped;
    try {
      Arguments arguments;
      for (UINT i = passed->cArgs; i > 0; --i) {
        arguments.emplace_back();
        if (const VARIANT& value = passed->rgvarg[i - 1]; !arguments.back().SetValue(value) && value.vt > VT_NULL)
          return DISP_E_TYPEMISMATCH;
      }
      return Call(member, access, arguments, result != nullptr ? *result : dropped.value);
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    } catch (const std::exception& failure) {
      if (exception != nullptr) {
        *exception = EXCEPINFO{};
        exception->scode = E_FAIL;
        exception->bstrDescription = SysAllocString(CString::FromUtf8(failure.what()));
      }
    }
    return DISP_E_EXCEPTION;
  }

protected:
  /// The arguments of a call as the script wrote them, first one first; for a property that is written, its value.
  using Arguments = std::vector<CVarBase>;

  explicit CComponent(std::vector<CString> names) : m_names(std::move(names)) {}
  virtual ~CComponent() = default;

  /// One call of the member with this position among the names. `access` is DISPATCH_METHOD, DISPATCH_PROPERTYGET or
  /// DISPATCH_PROPERTYPUT. Gives S_OK, DISP_E_MEMBERNOTFOUND for an access that the member does not have,
  /// DISP_E_BADPARAMCOUNT...; a std::exception that it throws is shown to the user by its text.
  virtual HRESULT Call(int member, WORD access, const Arguments& arguments, VARIANT& result) = 0;

  [[nodiscard]] const CString& NameOf(int member) const { return m_names[static_cast<std::size_t>(member)]; }
  /// One more name, for an object that learns its members later; its position.
  int AddName(const CString& name) {
    m_names.push_back(name);
    return static_cast<int>(m_names.size()) - 1;
  }

  /// The result of a member. An object gets a reference more.
  static HRESULT Return(VARIANT& result, bool value) {
    result.vt = VT_BOOL;
    result.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
  }
  static HRESULT Return(VARIANT& result, int value) {
    result.vt = VT_I4;
    result.lVal = value;
    return S_OK;
  }
  static HRESULT Return(VARIANT& result, double value) {
    result.vt = VT_R8;
    result.dblVal = value;
    return S_OK;
  }
  static HRESULT Return(VARIANT& result, const CString& value) {
    result.bstrVal = SysAllocStringLen(value.GetString(), static_cast<UINT>(value.GetLength()));
    result.vt = VT_BSTR;
    return result.bstrVal != nullptr ? S_OK : E_OUTOFMEMORY;
  }
  static HRESULT Return(VARIANT& result, IDispatch* value) {
    if (value != nullptr)
      value->AddRef();
    result.pdispVal = value;
    result.vt = VT_DISPATCH;
    return S_OK;
  }

private:
  std::vector<CString> m_names;
  ULONG m_nReferences = 1;
};

#endif
