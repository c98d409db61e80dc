// A server library that does everything wrong that a library can do without ending the process.
#include <brindle/component.h>

#include <new>
#include <stdexcept>

namespace {

// ORDER MEMBER
enum Member { kThrow, kThrowMemory, kThrowNumber, kFailWithResult, kEnd };

class Faulty final : public CComponent {
public:
  Faulty() : CComponent({u"Throw", u"ThrowMemory", u"ThrowNumber", u"FailWithResult", u"End"}) {}

  // Past the base class, which would catch it.
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID locale, WORD access, DISPPARAMS* passed,
                                   VARIANT* result, EXCEPINFO* exception, UINT* bad) override {
    switch (member) {
    case kThrow: throw std::runtime_error("thrown across the border");
    case kThrowMemory: throw std::bad_alloc();
    case kThrowNumber: throw 5;
    default: return CComponent::Invoke(member, reserved, locale, access, passed, result, exception, bad);
    }
  }

private:
  HRESULT Call(int member, WORD, const Arguments&, VARIANT& result) override {
    if (member == kFailWithResult) {
      Return(result, CString(u"nobody takes this"));
      return E_FAIL;
    }
    throw std::logic_error("");
  }
};

} // namespace

BRINDLE_COMPONENT_EXPORT const char* const* BrindleClassIdentifiers() {
  static constexpr const char* kIdentifiers[] = {"Test.Faulty",  "Test.Refused", " Test.Throwing ", "",
                                                 "Test.Nothing", nullptr};
  return kIdentifiers;
}

BRINDLE_COMPONENT_EXPORT HRESULT BrindleCreateObject(const OLECHAR* identifier, IDispatch** object, BSTR* reason) {
  const CString name(identifier);
  if (name.CompareNoCase(u"Test.Throwing") == 0) {
    *reason = SysAllocString(CString(u"left behind"));
    throw std::runtime_error("no object today");
  }
  if (name.CompareNoCase(u"Test.Refused") == 0) {
    *reason = SysAllocString(CString(u"The licence has run out"));
    return E_ACCESSDENIED;
  }
  if (name.CompareNoCase(u"Test.Nothing") == 0)
    return S_OK;
  *object = new Faulty;
  return S_OK;
}
