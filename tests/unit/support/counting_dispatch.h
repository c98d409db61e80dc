// CountingDispatch: an Automation object, without members of its own, that knows how many references it has.
// Room: tests. Used by: unit tests of reference counts.
// May touch: memory only.
// Must not: delete itself; the test owns it and looks at it afterwards.
// Invariant: starts with the one reference of the test that made it.
#pragma once

#include "brindle/automation.h"

#include <functional>
#include <utility>

class CountingDispatch : public IDispatch {
public:
  CountingDispatch() = default;
  explicit CountingDispatch(std::function<void()> onRelease) : m_onRelease(std::move(onRelease)) {}

  [[nodiscard]] long References() const noexcept { return m_references; }
  // Those beyond the test's own.
  [[nodiscard]] long Held() const noexcept { return m_references - 1; }
  // How often a reference was taken and given back so far.
  [[nodiscard]] int Taken() const noexcept { return m_taken; }
  [[nodiscard]] int Released() const noexcept { return m_released; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override {
    if (interfaceId != IID_IUnknown && interfaceId != IID_IDispatch) {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    AddRef();
    *object = this;
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    ++m_taken;
    return static_cast<ULONG>(++m_references);
  }
  ULONG STDMETHODCALLTYPE Release() override {
    ++m_released;
    const auto left = static_cast<ULONG>(--m_references);
    if (m_onRelease)
      m_onRelease();
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return DISP_E_MEMBERNOTFOUND;
  }

private:
  std::function<void()> m_onRelease;
  long m_references = 1;
  int m_taken = 0;
  int m_released = 0;
};
