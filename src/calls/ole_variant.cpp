#include "calls/ole_variant.h"

#include "platform/automation_text.h"

#include <cmath>
#include <cstring>
#include <new>

namespace brindle {

namespace {

// What a reference points at, as a value that borrows it.
VARIANT Dereferenced(const VARIANT& reference) {
  const auto kind = static_cast<VARTYPE>(reference.vt & ~VT_BYREF);
  VARIANT value;
  VariantInit(&value);
  if (reference.byref == nullptr)
    return value;
  if (kind == VT_VARIANT) {
    value = *reference.pvarVal;
    if ((value.vt & VT_BYREF) != 0)
      VariantInit(&value); // a reference to a reference is none
    return value;
  }
  value.vt = kind;
  if ((kind & VT_ARRAY) != 0) {
    std::memcpy(&value.parray, reference.byref, sizeof(void*));
    return value;
  }
  switch (kind) {
  case VT_I1:
  case VT_UI1: std::memcpy(&value.bVal, reference.byref, 1); break;
  case VT_I2:
  case VT_UI2:
  case VT_BOOL: std::memcpy(&value.iVal, reference.byref, 2); break;
  case VT_I4:
  case VT_UI4:
  case VT_INT:
  case VT_UINT:
  case VT_R4:
  case VT_ERROR: std::memcpy(&value.lVal, reference.byref, 4); break;
  case VT_I8:
  case VT_UI8:
  case VT_R8:
  case VT_CY:
  case VT_DATE: std::memcpy(&value.llVal, reference.byref, 8); break;
  case VT_BSTR:
  case VT_DISPATCH:
  case VT_UNKNOWN: std::memcpy(&value.byref, reference.byref, sizeof(void*)); break;
  case VT_DECIMAL:
    std::memcpy(&value, reference.byref, 16);
    value.vt = VT_DECIMAL;
    break;
  default: VariantInit(&value); break;
  }
  return value;
}

CVarBase ScalarOf(const VARIANT& value) {
  CVarBase item;
  if (value.vt != VT_EMPTY && value.vt != VT_NULL && !item.SetValue(value))
    item.SetValue(VariantText(value));
  return item;
}

// Every element as an item, in the order they lie in memory; an array inside an array adds its own.
void AppendItems(SAFEARRAY* array, CBasicVariable& items, int& count) {
  VARTYPE kind = VT_EMPTY;
  void* data = nullptr;
  if (FAILED(SafeArrayGetVartype(array, &kind)) || FAILED(SafeArrayAccessData(array, &data)))
    return;
  struct Access {
    SAFEARRAY* array;
    ~Access() { SafeArrayUnaccessData(array); }
  };
  const Access access{array};
  std::size_t elements = 1;
  for (UINT dimension = 1; dimension <= SafeArrayGetDim(array); ++dimension) {
    LONG lower = 0;
    LONG upper = -1;
    if (FAILED(SafeArrayGetLBound(array, dimension, &lower)) || FAILED(SafeArrayGetUBound(array, dimension, &upper)))
      return;
    elements *= static_cast<std::size_t>(std::int64_t{upper} - lower + 1);
  }
  auto* element = static_cast<char*>(data);
  for (std::size_t i = 0; i < elements; ++i, element += SafeArrayGetElemsize(array)) {
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = static_cast<VARTYPE>(kind | VT_BYREF);
    reference.byref = element;
    const VARIANT value = Dereferenced(reference);
    if ((value.vt & VT_ARRAY) != 0) {
      AppendItems(value.parray, items, count);
      continue;
    }
    items.SetArraySize(++count);
    items.SetCurIndex(count - 1);
    CBasicVariable item;
    item.Set(ScalarOf(value));
    items.SetValue(item);
  }
}

} // namespace

COleVariant ToVariant(const CVarBase& item) {
  COleVariant variant;
  switch (item.GetType()) {
  case BVT_OBJECT:
    variant.pdispVal = item.GetObjectValue();
    variant.vt = VT_DISPATCH;
    if (variant.pdispVal != nullptr)
      variant.pdispVal->AddRef();
    return variant;
  case BVT_NUMBER: {
    const double number = item.GetDoubleValue();
    if (std::isfinite(number) && number != std::trunc(number))
      break;
    variant.vt = VT_I4;
    variant.lVal = static_cast<LONG>(item.GetLongValue());
    return variant;
  }
  default: break;
  }
  const CString text = item.GetStringValue();
  variant.bstrVal = SysAllocStringLen(text.GetString(), static_cast<UINT>(text.GetLength()));
  if (variant.bstrVal == nullptr)
    throw std::bad_alloc();
  variant.vt = VT_BSTR;
  return variant;
}

CBasicVariable FromVariant(const VARIANT& variant) {
  const VARIANT value = (variant.vt & VT_BYREF) != 0 ? Dereferenced(variant) : variant;
  CBasicVariable result;
  if ((value.vt & VT_ARRAY) == 0) {
    result.Set(ScalarOf(value));
    return result;
  }
  int count = 0;
  if (value.parray != nullptr)
    AppendItems(value.parray, result, count);
  result.SetCurIndex(0);
  return result;
}

} // namespace brindle
