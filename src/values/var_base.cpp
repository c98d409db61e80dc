#include "brindle/variable.h"

#include "platform/number_text.h"
#include "values/messages.h"

#include <bit>
#include <cstdint>
#include <new>

// A scalar that somebody asked a text buffer of: rare enough to live outside the item.
struct CVarBase::Buffered {
  CVarBase value;
  CString buffer;
};

namespace {

std::int32_t LowWordOf(const IDispatch* object) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(object)));
}

// Never null, so that the two texts need no check where they are used.
CString TextOfTruth(bool truth) {
  return *brindle::LoadMessage(truth ? brindle::kMessageTrue : brindle::kMessageFalse);
}

} // namespace

// An object's end may run code that reaches this very item, or that throws. So whoever overwrites a value first
// moves the old one into a local that dies last, and nothing is touched behind it.

void CVarBase::Clear() noexcept {
  const std::uint16_t kind = std::exchange(m_kind, std::uint16_t{VT_EMPTY});
  switch (kind) {
  case VT_BSTR: m_text.~CString(); break;
  case kObject:
    try {
      if (m_pObject != nullptr)
        m_pObject->Release();
    } catch (...) {
      // An end has no caller to throw to.
    }
    break;
  case kBuffered: delete m_pBuffered; break;
  default: break;
  }
}

void CVarBase::Take(CVarBase& other) noexcept {
  if (other.m_kind == VT_BSTR) {
    ::new (&m_text) CString(std::move(other.m_text));
    other.m_text.~CString();
  } else if (other.m_kind == VT_R8) {
    m_double = other.m_double;
  } else if (other.m_kind == VT_I4 || other.m_kind == VT_BOOL) {
    m_integer = other.m_integer;
  } else if (other.m_kind != VT_EMPTY) {
    m_pBox = other.m_pBox; // one pointer, whatever it points at
  }
  m_kind = std::exchange(other.m_kind, VT_EMPTY);
}

const CVarBase& CVarBase::Value() const noexcept {
  return m_kind == kBuffered ? m_pBuffered->value : *this;
}

void CVarBase::CopyValue(const CVarBase& other) {
  const CVarBase& source = other.Value();
  CVarBase fresh;
  switch (source.m_kind) {
  case VT_I4:
  case VT_BOOL: fresh.m_integer = source.m_integer; break;
  case VT_R8: fresh.m_double = source.m_double; break;
  case VT_BSTR: ::new (&fresh.m_text) CString(source.m_text); break;
  case kObject:
    fresh.m_pObject = source.m_pObject;
    if (fresh.m_pObject != nullptr)
      fresh.m_pObject->AddRef();
    break;
  default: break;
  }
  fresh.m_kind = source.m_kind;
  const CVarBase old(std::move(*this));
  Take(fresh);
}

CVarBase::Buffered& CVarBase::MakeBuffered() {
  if (m_kind != kBuffered) {
    auto buffered = std::make_unique<Buffered>();
    buffered->value.Take(*this);
    m_pBuffered = buffered.release();
    m_kind = kBuffered;
  }
  return *m_pBuffered;
}

void CVarBase::SetValue(const CString& text) {
  if (m_kind == VT_BSTR)
    m_text = text;
  else
    Replace(CVarBase(text));
}

void CVarBase::SetValue(const double& number) {
  Replace(CVarBase(number));
}

void CVarBase::SetValue(long number) {
  Replace(CVarBase(number));
}

void CVarBase::SetValue(bool truth) {
  Replace(CVarBase(truth));
}

void CVarBase::SetValue(IDispatch* const object) {
  CVarBase fresh;
  fresh.m_pObject = object;
  fresh.m_kind = kObject;
  if (object != nullptr)
    object->AddRef();
  Replace(std::move(fresh));
}

void CVarBase::Replace(CVarBase&& fresh) noexcept {
  CVarBase& target = m_kind == kBuffered ? m_pBuffered->value : *this;
  const CVarBase old(std::move(target));
  target.Take(fresh);
}

void CVarBase::SetValue(const CVarBase& other) {
  if (this == &other)
    return;
  if (other.m_kind == kBuffered) {
    const CString buffer = other.m_pBuffered->buffer;
    Buffered& own = MakeBuffered();
    own.value.CopyValue(other);
    own.buffer = buffer;
  } else if (m_kind == kBuffered) {
    m_pBuffered->value.CopyValue(other);
    m_pBuffered->buffer.Empty();
  } else {
    CopyValue(other);
  }
}

bool CVarBase::SetValue(const tagVARIANT& value) {
  if ((value.vt & (VT_ARRAY | VT_BYREF)) != 0)
    return false;
  switch (value.vt & VT_TYPEMASK) {
  case VT_I2: SetValue(static_cast<long>(value.iVal)); return true;
  case VT_I4:
  case VT_UI4:
  case VT_INT:
  case VT_UINT: SetValue(static_cast<long>(value.lVal)); return true;
  case VT_UI2: SetValue(static_cast<long>(value.uiVal)); return true;
  case VT_R4: SetValue(static_cast<double>(value.fltVal)); return true;
  case VT_R8: SetValue(value.dblVal); return true;
  case VT_BSTR: SetValue(CString(value.bstrVal, static_cast<int>(SysStringLen(value.bstrVal)))); return true;
  case VT_DISPATCH: SetValue(value.pdispVal); return true;
  case VT_BOOL: SetValue(value.boolVal != 0); return true;
  default: return false;
  }
}

BASICVARTYPE CVarBase::GetType() const noexcept {
  switch (Value().m_kind) {
  case VT_I4:
  case VT_R8:
  case VT_BOOL: return BVT_NUMBER;
  case VT_BSTR: return BVT_STRING;
  case kObject: return BVT_OBJECT;
  default: return BVT_NONE;
  }
}

CString CVarBase::GetStringValue() const {
  const CVarBase& value = Value();
  switch (value.m_kind) {
  case VT_I4: return brindle::FormatInteger(value.m_integer);
  case VT_R8: return brindle::FormatFixed(value.m_double);
  case VT_BSTR: return value.m_text;
  case VT_BOOL: return TextOfTruth(value.m_integer != 0);
  case kObject: return brindle::FormatInteger(LowWordOf(value.m_pObject));
  default: return CString();
  }
}

double CVarBase::GetDoubleValue() const noexcept {
  const CVarBase& value = Value();
  switch (value.m_kind) {
  case VT_R8: return value.m_double;
  case VT_I4: return value.m_integer;
  case VT_BSTR: return brindle::ParseDouble(value.m_text.View());
  case VT_BOOL: return value.m_integer != 0 ? 1.0 : 0.0;
  case kObject: return LowWordOf(value.m_pObject);
  default: return 0.0;
  }
}

long CVarBase::GetLongValue() const noexcept {
  const CVarBase& value = Value();
  switch (value.m_kind) {
  case VT_I4: return value.m_integer;
  case VT_R8: return brindle::ToInt32(value.m_double);
  case VT_BSTR: return brindle::ParseInteger(value.m_text.View());
  case VT_BOOL: return value.m_integer != 0 ? 1 : 0;
  case kObject: return LowWordOf(value.m_pObject);
  default: return 0;
  }
}

IDispatch* CVarBase::GetObjectValue() const noexcept {
  const CVarBase& value = Value();
  return value.m_kind == kObject ? value.m_pObject : nullptr;
}

bool CVarBase::Increment() noexcept {
  if (m_kind == VT_R8) {
    m_double += 1.0;
    return true;
  }
  if (m_kind == VT_I4) {
    m_integer = std::bit_cast<std::int32_t>(std::bit_cast<std::uint32_t>(m_integer) + 1U);
    return true;
  }
  return m_kind == kBuffered && m_pBuffered->value.Increment();
}

unsigned short* CVarBase::GetStringBuffer(int minLength) {
  const CString text = GetStringValue();
  Buffered& buffered = MakeBuffered();
  buffered.buffer = text;
  unsigned short* units = buffered.buffer.GetBuffer(minLength);
  units[text.GetLength()] = 0;
  return units;
}

void CVarBase::ReleaseStringBuffer() {
  if (m_kind != kBuffered) {
    SetValue(CString());
    return;
  }
  m_pBuffered->buffer.ReleaseBuffer();
  m_pBuffered->value.SetValue(m_pBuffered->buffer);
}
