// Calls into objects: a reference held meanwhile, and exceptions kept from passing into the interpreter.
// Room: calls. Used by: the Automation bridge, the class look-up.
// May touch: object reference counts.
// Must not: stop an abort of a script that the object had called.
// Invariant: whatever a member does, its caller gets a result code.
#pragma once

#include "brindle/automation.h"
#include "brindle/text.h"
#include "interpreter/script_abort.h"

#include <exception>
#include <new>
#include <utility>

namespace brindle {

// One reference. An object that its variable loses in the middle of a call lives until the call is back.
class ObjectReference {
public:
  ObjectReference() noexcept = default;
  explicit ObjectReference(IDispatch* object) : m_pObject(object) {
    if (m_pObject != nullptr)
      m_pObject->AddRef();
  }
  // Takes a reference over.
  static ObjectReference Adopt(IDispatch* object) noexcept {
    ObjectReference reference;
    reference.m_pObject = object;
    return reference;
  }
  ObjectReference(ObjectReference&& other) noexcept : m_pObject(std::exchange(other.m_pObject, nullptr)) {}
  ObjectReference& operator=(ObjectReference&& other) noexcept {
    std::swap(m_pObject, other.m_pObject);
    return *this;
  }
  ObjectReference(const ObjectReference&) = delete;
  ObjectReference& operator=(const ObjectReference&) = delete;
  ~ObjectReference() {
    try {
      if (m_pObject != nullptr)
        m_pObject->Release();
    } catch (...) {
      // An end has no caller to throw to.
    }
  }

  [[nodiscard]] IDispatch* Get() const noexcept { return m_pObject; }

private:
  IDispatch* m_pObject = nullptr;
};

// The result code of `call`. An exception becomes one, and `thrown` says what it was.
template <class Call> HRESULT CallObject(Call call, CString& thrown) {
  try {
    return call();
  } catch (const ScriptAbort&) {
    throw;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (const std::exception& exception) {
    thrown = CString(u"The object failed: ") + CString(exception.what());
  } catch (...) {
    thrown = CString(u"The object failed with an exception of an unknown kind");
  }
  return E_UNEXPECTED;
}

} // namespace brindle
