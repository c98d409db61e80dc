#include "brindle/automation.h"

#if !defined(_WIN32)

#include <cstddef>
#include <cstdlib>

namespace {

// As where these arrays come from, the kind of the elements stands before the array.
constexpr std::size_t kHeader = 16;
constexpr USHORT kMostDimensions = 64;
constexpr USHORT kHasKind = 0x0080;
constexpr std::uint64_t kMostBytes = 0x7FFFFFFF;

ULONG SizeOf(VARTYPE kind) {
  switch (kind) {
  case VT_I1:
  case VT_UI1: return 1;
  case VT_I2:
  case VT_UI2:
  case VT_BOOL: return 2;
  case VT_I4:
  case VT_UI4:
  case VT_INT:
  case VT_UINT:
  case VT_R4:
  case VT_ERROR: return 4;
  case VT_I8:
  case VT_UI8:
  case VT_R8:
  case VT_CY:
  case VT_DATE: return 8;
  case VT_BSTR:
  case VT_DISPATCH:
  case VT_UNKNOWN: return sizeof(void*);
  case VT_VARIANT: return sizeof(VARIANT);
  default: return 0;
  }
}

VARTYPE KindOf(const SAFEARRAY* array) {
  VARTYPE kind = VT_EMPTY;
  std::memcpy(&kind, reinterpret_cast<const char*>(array) - kHeader, sizeof kind);
  return kind;
}

ULONG CountOf(const SAFEARRAY* array) {
  ULONG count = 1;
  for (USHORT i = 0; i < array->cDims; ++i)
    count *= array->rgsabound[i].cElements;
  return count;
}

char* ElementAt(const SAFEARRAY* array, std::size_t index) {
  return static_cast<char*>(array->pvData) + index * array->cbElements;
}

// An element that is a text, an object or a value owns something.
void ClearElement(VARTYPE kind, char* element) {
  switch (kind) {
  case VT_BSTR: SysFreeString(*reinterpret_cast<BSTR*>(element)); break;
  case VT_DISPATCH:
  case VT_UNKNOWN:
    if (IUnknown* object = *reinterpret_cast<IUnknown**>(element))
      object->Release();
    break;
  case VT_VARIANT: VariantClear(reinterpret_cast<VARIANT*>(element)); return;
  default: return;
  }
  std::memset(element, 0, sizeof(void*));
}

// `target` holds nothing.
HRESULT CopyElement(VARTYPE kind, ULONG size, char* target, const char* source) {
  switch (kind) {
  case VT_BSTR: {
    BSTR text = *reinterpret_cast<const BSTR*>(source);
    BSTR copy = text == nullptr ? nullptr : SysAllocStringLen(text, SysStringLen(text));
    std::memcpy(target, &copy, sizeof copy);
    return text != nullptr && copy == nullptr ? E_OUTOFMEMORY : S_OK;
  }
  case VT_VARIANT:
    VariantInit(reinterpret_cast<VARIANT*>(target));
    return VariantCopy(reinterpret_cast<VARIANT*>(target), reinterpret_cast<const VARIANT*>(source));
  case VT_DISPATCH:
  case VT_UNKNOWN:
    if (IUnknown* object = *reinterpret_cast<IUnknown* const*>(source))
      object->AddRef();
    break;
  default: break;
  }
  std::memcpy(target, source, size);
  return S_OK;
}

// The element that the indices name; the first dimension runs fastest, and its bounds stand last.
HRESULT FindElement(const SAFEARRAY* array, const LONG* indices, char*& element) {
  std::size_t index = 0;
  std::size_t step = 1;
  for (USHORT i = 0; i < array->cDims; ++i) {
    const SAFEARRAYBOUND& bound = array->rgsabound[array->cDims - 1 - i];
    const std::int64_t offset = std::int64_t{indices[i]} - bound.lLbound;
    if (offset < 0 || offset >= bound.cElements)
      return DISP_E_BADINDEX;
    index += static_cast<std::size_t>(offset) * step;
    step *= bound.cElements;
  }
  element = ElementAt(array, index);
  return S_OK;
}

} // namespace

SAFEARRAY* SafeArrayCreate(VARTYPE kind, UINT dimensions, SAFEARRAYBOUND* bounds) {
  const ULONG size = SizeOf(kind);
  if (size == 0 || dimensions == 0 || dimensions > kMostDimensions || bounds == nullptr)
    return nullptr;
  std::uint64_t bytes = size;
  for (UINT i = 0; i < dimensions; ++i) {
    bytes *= bounds[i].cElements;
    if (bytes > kMostBytes)
      return nullptr;
  }
  char* const memory = static_cast<char*>(
      std::calloc(1, kHeader + sizeof(SAFEARRAY) + (std::size_t{dimensions} - 1) * sizeof(SAFEARRAYBOUND)));
  void* const data = std::calloc(1, bytes == 0 ? 1 : static_cast<std::size_t>(bytes));
  if (memory == nullptr || data == nullptr) {
    std::free(memory);
    std::free(data);
    return nullptr;
  }
  std::memcpy(memory, &kind, sizeof kind);
  auto* array = reinterpret_cast<SAFEARRAY*>(memory + kHeader);
  array->cDims = static_cast<USHORT>(dimensions);
  array->fFeatures = kHasKind;
  array->cbElements = size;
  array->pvData = data;
  for (UINT i = 0; i < dimensions; ++i)
    array->rgsabound[i] = bounds[dimensions - 1 - i];
  return array;
}

SAFEARRAY* SafeArrayCreateVector(VARTYPE kind, LONG lowerBound, ULONG count) {
  SAFEARRAYBOUND bound{count, lowerBound};
  return SafeArrayCreate(kind, 1, &bound);
}

HRESULT SafeArrayDestroy(SAFEARRAY* array) {
  if (array == nullptr)
    return S_OK;
  if (array->cLocks > 0)
    return DISP_E_ARRAYISLOCKED;
  const ULONG count = CountOf(array);
  for (ULONG i = 0; i < count; ++i)
    ClearElement(KindOf(array), ElementAt(array, i));
  std::free(array->pvData);
  std::free(reinterpret_cast<char*>(array) - kHeader);
  return S_OK;
}

HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** copy) {
  if (copy == nullptr)
    return E_INVALIDARG;
  *copy = nullptr;
  if (array == nullptr)
    return S_OK;
  SAFEARRAYBOUND bounds[kMostDimensions];
  for (USHORT i = 0; i < array->cDims; ++i)
    bounds[i] = array->rgsabound[array->cDims - 1 - i];
  SAFEARRAY* const made = SafeArrayCreate(KindOf(array), array->cDims, bounds);
  if (made == nullptr)
    return E_OUTOFMEMORY;
  const ULONG count = CountOf(array);
  for (ULONG i = 0; i < count; ++i) {
    const HRESULT copied = CopyElement(KindOf(array), array->cbElements, ElementAt(made, i), ElementAt(array, i));
    if (FAILED(copied)) {
      SafeArrayDestroy(made);
      return copied;
    }
  }
  *copy = made;
  return S_OK;
}

UINT SafeArrayGetDim(SAFEARRAY* array) {
  return array == nullptr ? 0 : array->cDims;
}

UINT SafeArrayGetElemsize(SAFEARRAY* array) {
  return array == nullptr ? 0 : array->cbElements;
}

HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* kind) {
  if (array == nullptr || kind == nullptr)
    return E_INVALIDARG;
  *kind = KindOf(array);
  return S_OK;
}

HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
  if (array == nullptr || bound == nullptr)
    return E_INVALIDARG;
  if (dimension == 0 || dimension > array->cDims)
    return DISP_E_BADINDEX;
  *bound = array->rgsabound[array->cDims - dimension].lLbound;
  return S_OK;
}

HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
  LONG lower = 0;
  const HRESULT found = SafeArrayGetLBound(array, dimension, &lower);
  if (FAILED(found) || bound == nullptr)
    return FAILED(found) ? found : E_INVALIDARG;
  *bound = static_cast<LONG>(std::int64_t{lower} + array->rgsabound[array->cDims - dimension].cElements - 1);
  return S_OK;
}

HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data) {
  if (array == nullptr || data == nullptr)
    return E_INVALIDARG;
  ++array->cLocks;
  *data = array->pvData;
  return S_OK;
}

HRESULT SafeArrayUnaccessData(SAFEARRAY* array) {
  if (array == nullptr)
    return E_INVALIDARG;
  if (array->cLocks == 0)
    return E_UNEXPECTED;
  --array->cLocks;
  return S_OK;
}

HRESULT SafeArrayGetElement(SAFEARRAY* array, LONG* indices, void* value) {
  if (array == nullptr || indices == nullptr || value == nullptr)
    return E_INVALIDARG;
  char* element = nullptr;
  const HRESULT found = FindElement(array, indices, element);
  return FAILED(found) ? found : CopyElement(KindOf(array), array->cbElements, static_cast<char*>(value), element);
}

HRESULT SafeArrayPutElement(SAFEARRAY* array, LONG* indices, void* value) {
  if (array == nullptr || indices == nullptr)
    return E_INVALIDARG;
  char* element = nullptr;
  const HRESULT found = FindElement(array, indices, element);
  if (FAILED(found))
    return found;
  const VARTYPE kind = KindOf(array);
  const bool isPointer = kind == VT_BSTR || kind == VT_DISPATCH || kind == VT_UNKNOWN;
  if (value == nullptr && !isPointer)
    return E_INVALIDARG;
  // The copy is made before the old element goes: it may be the same.
  alignas(VARIANT) char copy[sizeof(VARIANT)] = {};
  const HRESULT copied =
      CopyElement(kind, array->cbElements, copy,
                  isPointer ? reinterpret_cast<const char*>(&value) : static_cast<const char*>(value));
  if (FAILED(copied))
    return copied;
  ClearElement(kind, element);
  std::memcpy(element, copy, array->cbElements);
  return S_OK;
}

#endif
