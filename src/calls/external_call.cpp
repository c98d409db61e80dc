#include "calls/external_call.h"

#include "platform/number_text.h"

#include <bit>
#include <cassert>
#include <cstring>
#include <utility>

namespace brindle {

namespace {

InvocationRoutine invocation = &InvokeRoutine;

constexpr bool IsText(std::uint32_t type) noexcept {
  return (type & (kTypeUnicode | kTypeString)) != 0;
}

// The bits that a routine would find for a number: 32 of them, or 64 for a double.
std::uint64_t BitsOf(std::uint32_t size, double number) noexcept {
  switch (size) {
  case kTypeChar: return static_cast<std::uint32_t>(std::int32_t{static_cast<std::int8_t>(ToInt32(number))});
  case kTypeWord: return static_cast<std::uint16_t>(ToInt32(number));
  case kTypeInteger: return static_cast<std::uint32_t>(ToInt32(number));
  case kTypeFloat: return std::bit_cast<std::uint32_t>(ToFloat(number));
  case kTypeDouble: return std::bit_cast<std::uint64_t>(number);
  default: return 0;
  }
}

// The number behind the bits, with the width that the code declares.
void SetFromBits(CBasicVariable& value, std::uint32_t size, std::uint64_t bits) {
  const auto word = static_cast<std::uint32_t>(bits);
  switch (size) {
  case kTypeChar: value.SetValue(int{static_cast<std::int8_t>(word)}); break;
  case kTypeWord: value.SetValue(int{static_cast<std::uint16_t>(word)}); break;
  case kTypeInteger: value.SetValue(static_cast<int>(word)); break;
  case kTypeFloat: value.SetValue(double{std::bit_cast<float>(word)}); break;
  case kTypeDouble: value.SetValue(std::bit_cast<double>(bits)); break;
  default: break;
  }
}

} // namespace

void InvokeRoutine(std::uint64_t& result, const ExternalCall&) {
  result = 0;
}

InvocationRoutine SetInvocationRoutine(InvocationRoutine routine) noexcept {
  return std::exchange(invocation, routine != nullptr ? routine : &InvokeRoutine);
}

void ExternalFrame::Add(std::uint32_t type, CBasicVariable& argument) {
  assert(m_count < kMostParameters);
  Storage& storage = m_storage[m_count++];
  void* address = storage.data();
  if (IsText(type)) {
    address = argument.GetStringBuffer(kTextBufferLength);
  } else {
    const std::uint64_t bits = BitsOf(type & ~kByReference, argument.GetNumberValue());
    if ((type & kByReference) == 0) {
      m_words.push_back(static_cast<std::uint32_t>(bits));
      if (type == kTypeDouble)
        m_words.push_back(static_cast<std::uint32_t>(bits >> 32));
      return;
    }
    if ((type & kTypeDouble) != 0) {
      std::memcpy(storage.data(), &bits, sizeof bits);
    } else {
      const auto word = static_cast<std::uint32_t>(bits);
      std::memcpy(storage.data(), &word, sizeof word);
    }
  }
  m_words.push_back(static_cast<std::uint32_t>(m_addresses.size()));
  m_addresses.push_back(address);
}

std::uint64_t ExternalFrame::Invoke(void* routine) {
  std::uint64_t result = 0;
  invocation(result, ExternalCall{routine, m_words, m_addresses});
  return result;
}

void ExternalFrame::ReadBack(int index, std::uint32_t type, CBasicVariable& argument) const {
  if (IsText(type)) {
    argument.ReleaseStringBuffer();
  } else if ((type & kByReference) != 0) {
    const Storage& storage = m_storage[static_cast<std::size_t>(index)];
    std::uint64_t bits = 0;
    if ((type & kTypeDouble) != 0) {
      std::memcpy(&bits, storage.data(), sizeof bits);
    } else {
      std::uint32_t word = 0;
      std::memcpy(&word, storage.data(), sizeof word);
      bits = word;
    }
    SetFromBits(argument, type & ~kByReference, bits);
  }
}

void ExternalFrame::ReadResult(std::uint32_t type, std::uint64_t word, CBasicVariable& result) const {
  // Deliberate: a declared text result carries the bit of a reference as well and is none of these.
  if (type == kTypeUnicode || type == kTypeString) {
    const auto index = static_cast<std::uint32_t>(word);
    if (index < m_addresses.size())
      result.SetValue(static_cast<const unsigned short*>(m_addresses[index]));
    return;
  }
  SetFromBits(result, type, word);
}

} // namespace brindle
