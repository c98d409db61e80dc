// What a built-in function asks for and gives: the one place that knows counts of arguments and kinds of results.
// Room: interpreter. Used by: the function table, the built-ins' handlers, the check of scripts.
// May touch: nothing; a description.
// Invariant: fewest <= most; a count outside is reported as `check` and `silence` say, by the handlers and by nobody
// else.
#pragma once

#include <cstdint>

namespace brindle {

// What a value may be, as a set.
using ValueKinds = std::uint8_t;
inline constexpr ValueKinds kNotSet = 1;
inline constexpr ValueKinds kNumberValue = 2; // booleans as well
inline constexpr ValueKinds kTextValue = 4;
inline constexpr ValueKinds kObjectValue = 8;
inline constexpr ValueKinds kManyValues = 16; // it may hold more than one item
inline constexpr ValueKinds kAnyValue = kNotSet | kNumberValue | kTextValue | kObjectValue | kManyValues;

enum class ArgumentCheck : std::uint8_t {
  Exact, // too few and too many are errors
  Least, // too few are an error, surplus ones are ignored
  None   // nothing is an error
};

// Where too few arguments end the call without a word.
enum class ArgumentSilence : std::uint8_t { Never, WithoutAny, Always };

struct FunctionSignature {
  static constexpr int kNoLimit = 255;

  std::uint8_t fewest = 0;
  std::uint8_t most = kNoLimit; // that mean something
  ArgumentCheck check = ArgumentCheck::None;
  ArgumentSilence silence = ArgumentSilence::Never;
  ValueKinds result = kAnyValue;

  [[nodiscard]] constexpr bool Accepts(int count) const noexcept {
    return count >= fewest && (count <= most || check != ArgumentCheck::Exact);
  }
  // Whether a call with so many arguments is error 24.
  [[nodiscard]] constexpr bool Reports(int count) const noexcept {
    if (Accepts(count) || check == ArgumentCheck::None || silence == ArgumentSilence::Always)
      return false;
    return count > 0 || silence != ArgumentSilence::WithoutAny;
  }
};

} // namespace brindle
