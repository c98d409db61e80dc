// The Automation types under COM's own names and layout, for systems that have no COM headers.
// Room: platform. Used by: values, calls, and hosts that pass objects in.
// May touch: nothing but memory.
// Must not: stand beside the system's own declarations; where <oaidl.h> exists, that is used.
// Invariant: a class written against COM's IDispatch compiles against this header unchanged.
#pragma once

#include "brindle/export.h"

#if defined(_WIN32)
#include <oaidl.h>
#include <oleauto.h>
#else

#include <cstdint>
#include <cstring>

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using INT = std::int32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using FLOAT = float;
using DOUBLE = double;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using CHAR = char;
using PVOID = void*;
using HRESULT = std::int32_t;
using SCODE = std::int32_t;
using LCID = std::uint32_t;
using DISPID = std::int32_t;
using VARTYPE = std::uint16_t;
using VARIANT_BOOL = std::int16_t;
using DATE = double;

/// One UTF-16 unit. A BSTR points at its first unit; its length in bytes stands in the four bytes before.
using OLECHAR = unsigned short;
using LPOLESTR = OLECHAR*;
using LPCOLESTR = const OLECHAR*;
using BSTR = OLECHAR*;

struct GUID {
  std::uint32_t Data1;
  std::uint16_t Data2;
  std::uint16_t Data3;
  std::uint8_t Data4[8];
  friend bool operator==(const GUID& a, const GUID& b) noexcept { return std::memcmp(&a, &b, sizeof a) == 0; }
  friend bool operator!=(const GUID& a, const GUID& b) noexcept { return !(a == b); }
};
using IID = GUID;
using CLSID = GUID;
using REFGUID = const GUID&;
using REFIID = const IID&;
using REFCLSID = const CLSID&;

inline constexpr GUID IID_NULL = {0, 0, 0, {0, 0, 0, 0, 0, 0, 0, 0}};
inline constexpr IID IID_IUnknown = {0x00000000, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_IDispatch = {0x00020400, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

#define STDMETHODCALLTYPE
#define STDMETHODIMP HRESULT STDMETHODCALLTYPE
#define STDMETHODIMP_(type) type STDMETHODCALLTYPE
#define STDMETHOD(method) virtual HRESULT STDMETHODCALLTYPE method
#define STDMETHOD_(type, method) virtual type STDMETHODCALLTYPE method

namespace brindle::detail {
constexpr HRESULT Result(std::uint32_t code) noexcept {
  return static_cast<HRESULT>(code);
}
} // namespace brindle::detail

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = brindle::detail::Result(0x80004001U);
inline constexpr HRESULT E_NOINTERFACE = brindle::detail::Result(0x80004002U);
inline constexpr HRESULT E_POINTER = brindle::detail::Result(0x80004003U);
inline constexpr HRESULT E_ABORT = brindle::detail::Result(0x80004004U);
inline constexpr HRESULT E_FAIL = brindle::detail::Result(0x80004005U);
inline constexpr HRESULT E_UNEXPECTED = brindle::detail::Result(0x8000FFFFU);
inline constexpr HRESULT E_ACCESSDENIED = brindle::detail::Result(0x80070005U);
inline constexpr HRESULT E_OUTOFMEMORY = brindle::detail::Result(0x8007000EU);
inline constexpr HRESULT E_INVALIDARG = brindle::detail::Result(0x80070057U);
inline constexpr HRESULT CLASS_E_NOAGGREGATION = brindle::detail::Result(0x80040110U);
inline constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = brindle::detail::Result(0x80040111U);
inline constexpr HRESULT REGDB_E_CLASSNOTREG = brindle::detail::Result(0x80040154U);
inline constexpr HRESULT CO_E_CLASSSTRING = brindle::detail::Result(0x800401F3U);
inline constexpr HRESULT CO_E_DLLNOTFOUND = brindle::detail::Result(0x800401F8U);
inline constexpr HRESULT DISP_E_UNKNOWNINTERFACE = brindle::detail::Result(0x80020001U);
inline constexpr HRESULT DISP_E_MEMBERNOTFOUND = brindle::detail::Result(0x80020003U);
inline constexpr HRESULT DISP_E_PARAMNOTFOUND = brindle::detail::Result(0x80020004U);
inline constexpr HRESULT DISP_E_TYPEMISMATCH = brindle::detail::Result(0x80020005U);
inline constexpr HRESULT DISP_E_UNKNOWNNAME = brindle::detail::Result(0x80020006U);
inline constexpr HRESULT DISP_E_NONAMEDARGS = brindle::detail::Result(0x80020007U);
inline constexpr HRESULT DISP_E_BADVARTYPE = brindle::detail::Result(0x80020008U);
inline constexpr HRESULT DISP_E_EXCEPTION = brindle::detail::Result(0x80020009U);
inline constexpr HRESULT DISP_E_OVERFLOW = brindle::detail::Result(0x8002000AU);
inline constexpr HRESULT DISP_E_BADINDEX = brindle::detail::Result(0x8002000BU);
inline constexpr HRESULT DISP_E_UNKNOWNLCID = brindle::detail::Result(0x8002000CU);
inline constexpr HRESULT DISP_E_ARRAYISLOCKED = brindle::detail::Result(0x8002000DU);
inline constexpr HRESULT DISP_E_BADPARAMCOUNT = brindle::detail::Result(0x8002000EU);
inline constexpr HRESULT DISP_E_PARAMNOTOPTIONAL = brindle::detail::Result(0x8002000FU);
inline constexpr HRESULT DISP_E_BADCALLEE = brindle::detail::Result(0x80020010U);
inline constexpr HRESULT DISP_E_NOTACOLLECTION = brindle::detail::Result(0x80020011U);
inline constexpr HRESULT DISP_E_DIVBYZERO = brindle::detail::Result(0x80020012U);

constexpr bool SUCCEEDED(HRESULT result) noexcept {
  return result >= 0;
}
constexpr bool FAILED(HRESULT result) noexcept {
  return result < 0;
}

enum VARENUM : VARTYPE {
  VT_EMPTY = 0,
  VT_NULL = 1,
  VT_I2 = 2,
  VT_I4 = 3,
  VT_R4 = 4,
  VT_R8 = 5,
  VT_CY = 6,
  VT_DATE = 7,
  VT_BSTR = 8,
  VT_DISPATCH = 9,
  VT_ERROR = 10,
  VT_BOOL = 11,
  VT_VARIANT = 12,
  VT_UNKNOWN = 13,
  VT_DECIMAL = 14,
  VT_I1 = 16,
  VT_UI1 = 17,
  VT_UI2 = 18,
  VT_UI4 = 19,
  VT_I8 = 20,
  VT_UI8 = 21,
  VT_INT = 22,
  VT_UINT = 23,
  VT_VOID = 24,
  VT_HRESULT = 25,
  VT_PTR = 26,
  VT_SAFEARRAY = 27,
  VT_USERDEFINED = 29,
  VT_LPSTR = 30,
  VT_LPWSTR = 31,
  VT_RECORD = 36,
  VT_ARRAY = 0x2000,
  VT_BYREF = 0x4000,
  VT_TYPEMASK = 0x0FFF
};

inline constexpr VARIANT_BOOL VARIANT_TRUE = -1;
inline constexpr VARIANT_BOOL VARIANT_FALSE = 0;

inline constexpr WORD DISPATCH_METHOD = 1;
inline constexpr WORD DISPATCH_PROPERTYGET = 2;
inline constexpr WORD DISPATCH_PROPERTYPUT = 4;
inline constexpr WORD DISPATCH_PROPERTYPUTREF = 8;
inline constexpr DISPID DISPID_VALUE = 0;
inline constexpr DISPID DISPID_UNKNOWN = -1;
inline constexpr DISPID DISPID_PROPERTYPUT = -3;
inline constexpr LCID LOCALE_SYSTEM_DEFAULT = 2048;

struct IUnknown {
  virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) = 0;
  virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
  virtual ULONG STDMETHODCALLTYPE Release() = 0;

protected:
  ~IUnknown() = default;
};

struct ITypeInfo;
struct IRecordInfo;
struct IDispatch;

struct SAFEARRAYBOUND {
  ULONG cElements;
  LONG lLbound;
};

/// An array of values of one kind. The bounds of the last dimension come first.
struct SAFEARRAY {
  USHORT cDims;
  USHORT fFeatures;
  ULONG cbElements;
  ULONG cLocks;
  PVOID pvData;
  SAFEARRAYBOUND rgsabound[1];
};

union CY {
  std::int64_t int64;
};

struct tagBRECORD {
  PVOID pvRecord;
  IRecordInfo* pRecInfo;
};

/// One tagged value. Only `vt` says which member of the union holds.
struct tagVARIANT {
  VARTYPE vt;
  WORD wReserved1;
  WORD wReserved2;
  WORD wReserved3;
  union {
    LONGLONG llVal;
    LONG lVal;
    BYTE bVal;
    SHORT iVal;
    FLOAT fltVal;
    DOUBLE dblVal;
    VARIANT_BOOL boolVal;
    SCODE scode;
    CY cyVal;
    DATE date;
    BSTR bstrVal;
    IUnknown* punkVal;
    IDispatch* pdispVal;
    SAFEARRAY* parray;
    BYTE* pbVal;
    SHORT* piVal;
    LONG* plVal;
    FLOAT* pfltVal;
    DOUBLE* pdblVal;
    VARIANT_BOOL* pboolVal;
    BSTR* pbstrVal;
    IUnknown** ppunkVal;
    IDispatch** ppdispVal;
    tagVARIANT* pvarVal;
    PVOID byref;
    CHAR cVal;
    USHORT uiVal;
    ULONG ulVal;
    ULONGLONG ullVal;
    INT intVal;
    UINT uintVal;
    tagBRECORD brecVal;
  };
};
using VARIANT = tagVARIANT;
using VARIANTARG = tagVARIANT;

/// The arguments of a call, last one first; named arguments stand at the front.
struct DISPPARAMS {
  VARIANTARG* rgvarg;
  DISPID* rgdispidNamedArgs;
  UINT cArgs;
  UINT cNamedArgs;
};

/// What a failing member says of its failure. The texts belong to the receiver, who frees them.
struct EXCEPINFO {
  WORD wCode;
  WORD wReserved;
  BSTR bstrSource;
  BSTR bstrDescription;
  BSTR bstrHelpFile;
  DWORD dwHelpContext;
  PVOID pvReserved;
  HRESULT(STDMETHODCALLTYPE* pfnDeferredFillIn)(EXCEPINFO*);
  SCODE scode;
};

struct IDispatch : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                                  DISPID* ids) = 0;
  virtual HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags,
                                           DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                                           UINT* badArgument) = 0;

protected:
  ~IDispatch() = default;
};

/// A copy of a zero-terminated text / of `length` units (null: uninitialised, zero-terminated); null when
/// `text` is null or memory runs out. The caller frees it with SysFreeString.
extern "C" BRINDLE_API BSTR SysAllocString(const OLECHAR* text);
extern "C" BRINDLE_API BSTR SysAllocStringLen(const OLECHAR* text, UINT length);
/// Length in units; 0 for null.
extern "C" BRINDLE_API UINT SysStringLen(BSTR text);
extern "C" BRINDLE_API void SysFreeString(BSTR text);
extern "C" BRINDLE_API void VariantInit(VARIANTARG* value);
/// Frees what the value owns (a text, a reference, an array) and makes it empty.
extern "C" BRINDLE_API HRESULT VariantClear(VARIANTARG* value);
/// Clears `target` and makes it a copy of `source`: texts and arrays are duplicated, references added.
extern "C" BRINDLE_API HRESULT VariantCopy(VARIANTARG* target, const VARIANTARG* source);

/// A zeroed array; null for a kind that arrays cannot hold, for no dimension, and when memory runs out. Whoever holds
/// it frees it with SafeArrayDestroy, or puts it into a value that VariantClear clears.
extern "C" BRINDLE_API SAFEARRAY* SafeArrayCreate(VARTYPE kind, UINT dimensions, SAFEARRAYBOUND* bounds);
extern "C" BRINDLE_API SAFEARRAY* SafeArrayCreateVector(VARTYPE kind, LONG lowerBound, ULONG count);
/// Frees the array with what its elements own. Null is fine; DISP_E_ARRAYISLOCKED while somebody accesses it.
extern "C" BRINDLE_API HRESULT SafeArrayDestroy(SAFEARRAY* array);
extern "C" BRINDLE_API HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** copy);
extern "C" BRINDLE_API UINT SafeArrayGetDim(SAFEARRAY* array);
extern "C" BRINDLE_API UINT SafeArrayGetElemsize(SAFEARRAY* array);
extern "C" BRINDLE_API HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* kind);
/// Dimensions count from 1.
extern "C" BRINDLE_API HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound);
extern "C" BRINDLE_API HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound);
/// The elements, one behind the other, until SafeArrayUnaccessData.
extern "C" BRINDLE_API HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data);
extern "C" BRINDLE_API HRESULT SafeArrayUnaccessData(SAFEARRAY* array);
/// Copy one element out / in: `value` points at a value of the array's kind (a text or a pointer itself when putting).
/// `indices` has one index a dimension, the first dimension's first.
extern "C" BRINDLE_API HRESULT SafeArrayGetElement(SAFEARRAY* array, LONG* indices, void* value);
extern "C" BRINDLE_API HRESULT SafeArrayPutElement(SAFEARRAY* array, LONG* indices, void* value);

#endif
