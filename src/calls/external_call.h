// The call of a routine in a library, as far as it goes: type codes, argument words, and what comes back.
// Room: calls. Used by: "declare", ExecExternalFunction, unit tests.
// May touch: the arguments of the call, while it lasts.
// Must not: load libraries, report errors.
// Invariant: a word is 32 bits wide, whatever the width of a pointer; where it stands for one, it is the index of an
// address in the call's own table.
#pragma once

#include "brindle/interpreter.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace brindle {

// The type codes of parameters and results: one bit for the size, and one for "by reference".
inline constexpr std::uint32_t kTypeChar = 0x0001;
inline constexpr std::uint32_t kTypeWord = 0x0002; // no type name produces it
inline constexpr std::uint32_t kTypeInteger = 0x0004;
inline constexpr std::uint32_t kTypeFloat = 0x0008;
inline constexpr std::uint32_t kTypeDouble = 0x0010; // no type name produces it
inline constexpr std::uint32_t kTypeUnicode = 0x0020;
inline constexpr std::uint32_t kTypeString = 0x0040;
inline constexpr std::uint32_t kByReference = 0x1000;

inline constexpr const char16_t* kLibraryEnding = u".dll";
inline constexpr int kMostParameters = 32;
// Units that a text parameter's buffer has room for, at least.
inline constexpr int kTextBufferLength = 256;

// What the invocation routine is given.
struct ExternalCall {
  void* routine = nullptr;
  // The arguments, first one first: 8- and 32-bit integers sign-extended, 16-bit ones zero-extended, a float as its
  // bits, a double in two words, the low one first. A number by reference is the index, in `addresses`, of its storage
  // of 4 bytes (8 for a double); a text is the index of its UTF-16 buffer.
  std::span<const std::uint32_t> words;
  // A routine whose result is a text adds its address and gives the index.
  std::vector<void*>& addresses;
};

// Stores the routine's result word, of which all 64 bits count only for a double.
using InvocationRoutine = void (*)(std::uint64_t& result, const ExternalCall& call);

// Deliberate: stores 0 and does not enter the routine.
void InvokeRoutine(std::uint64_t& result, const ExternalCall& call);

// What calls go through from now on; null is InvokeRoutine again. Gives what they went through before.
InvocationRoutine SetInvocationRoutine(InvocationRoutine routine) noexcept;

// The words of one call, and the storage that they refer to.
class ExternalFrame {
public:
  // Prepares one argument; at most kMostParameters. A text argument's buffer stays in use until ReadBack.
  void Add(std::uint32_t type, CBasicVariable& argument);
  // Calls through the invocation routine.
  [[nodiscard]] std::uint64_t Invoke(void* routine);
  // What the routine left for argument `index`, if it could leave anything, becomes its value.
  void ReadBack(int index, std::uint32_t type, CBasicVariable& argument) const;
  // The result by its type code; untouched for a code that has no result.
  void ReadResult(std::uint32_t type, std::uint64_t word, CBasicVariable& result) const;

private:
  using Storage = std::array<std::byte, 8>;

  alignas(8) std::array<Storage, kMostParameters> m_storage{};
  std::vector<std::uint32_t> m_words;
  std::vector<void*> m_addresses;
  std::size_t m_count = 0;
};

// Whether the routine can change the argument.
[[nodiscard]] constexpr bool IsWrittenBack(std::uint32_t type) noexcept {
  return (type & (kByReference | kTypeUnicode | kTypeString)) != 0;
}

} // namespace brindle
