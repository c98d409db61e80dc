#include "brindle/automation.h"

#if !defined(_WIN32)

#include <cstdlib>

namespace {

// The length in bytes stands before the text, as every reader of a BSTR expects; eight bytes of room keep
// the text itself aligned as the allocator aligns.
constexpr std::size_t kHeader = 8;

char* HeaderOf(BSTR text) {
  return reinterpret_cast<char*>(text) - kHeader;
}

} // namespace

BSTR SysAllocStringLen(const OLECHAR* text, UINT length) {
  const std::size_t bytes = static_cast<std::size_t>(length) * sizeof(OLECHAR);
  if (bytes > UINT32_MAX)
    return nullptr;
  char* memory = static_cast<char*>(std::malloc(kHeader + bytes + sizeof(OLECHAR)));
  if (memory == nullptr)
    return nullptr;
  const auto stored = static_cast<std::uint32_t>(bytes);
  std::memcpy(memory + kHeader - sizeof stored, &stored, sizeof stored);
  auto* units = reinterpret_cast<OLECHAR*>(memory + kHeader);
  if (text != nullptr)
    std::memcpy(units, text, bytes);
  units[length] = 0;
  return units;
}

BSTR SysAllocString(const OLECHAR* text) {
  if (text == nullptr)
    return nullptr;
  UINT length = 0;
  while (text[length] != 0)
    ++length;
  return SysAllocStringLen(text, length);
}

UINT SysStringLen(BSTR text) {
  if (text == nullptr)
    return 0;
  std::uint32_t bytes = 0;
  std::memcpy(&bytes, HeaderOf(text) + kHeader - sizeof bytes, sizeof bytes);
  return static_cast<UINT>(bytes / sizeof(OLECHAR));
}

void SysFreeString(BSTR text) {
  if (text != nullptr)
    std::free(HeaderOf(text));
}

void VariantInit(VARIANTARG* value) {
  std::memset(value, 0, sizeof *value);
}

namespace {

bool IsArray(const VARIANTARG& value) {
  return (value.vt & VT_ARRAY) != 0 && (value.vt & VT_BYREF) == 0;
}

} // namespace

HRESULT VariantClear(VARIANTARG* value) {
  // Empty before anything is let go: an object's end may run code that looks at this very value.
  VARIANT old = *value;
  if (IsArray(old)) {
    const HRESULT destroyed = SafeArrayDestroy(old.parray);
    if (FAILED(destroyed))
      return destroyed;
    VariantInit(value);
    return S_OK;
  }
  VariantInit(value);
  if (old.vt == VT_BSTR)
    SysFreeString(old.bstrVal);
  else if ((old.vt == VT_DISPATCH || old.vt == VT_UNKNOWN) && old.punkVal != nullptr)
    old.punkVal->Release();
  return S_OK;
}

HRESULT VariantCopy(VARIANTARG* target, const VARIANTARG* source) {
  if (target == source)
    return S_OK;
  VARIANT copy = *source;
  if (IsArray(*source)) {
    const HRESULT copied = SafeArrayCopy(source->parray, &copy.parray);
    if (FAILED(copied))
      return copied;
  } else if (source->vt == VT_BSTR && source->bstrVal != nullptr) {
    copy.bstrVal = SysAllocStringLen(source->bstrVal, SysStringLen(source->bstrVal));
    if (copy.bstrVal == nullptr)
      return E_OUTOFMEMORY;
  } else if ((source->vt == VT_DISPATCH || source->vt == VT_UNKNOWN) && source->punkVal != nullptr) {
    source->punkVal->AddRef();
  }
  const HRESULT cleared = VariantClear(target);
  if (FAILED(cleared)) {
    VariantClear(&copy);
    return cleared;
  }
  *target = copy;
  return S_OK;
}

#endif
