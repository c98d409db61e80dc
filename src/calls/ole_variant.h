// COleVariant: a VARIANT that frees what it owns, and the language's values as VARIANTs and back.
// Room: calls. Used by: the Automation bridge.
// May touch: memory, object reference counts.
// Must not: report errors; an object's exception passes.
// Invariant: owns one reference, text or array at most, and lets it go exactly once.
#pragma once

#include "brindle/variable.h"

#include <utility>

class COleVariant : public tagVARIANT {
public:
  COleVariant() noexcept { VariantInit(this); }
  COleVariant(COleVariant&& other) noexcept : tagVARIANT(other) { VariantInit(&other); }
  COleVariant& operator=(COleVariant&& other) noexcept {
    std::swap(static_cast<tagVARIANT&>(*this), static_cast<tagVARIANT&>(other));
    return *this;
  }
  COleVariant(const COleVariant&) = delete;
  COleVariant& operator=(const COleVariant&) = delete;
  ~COleVariant() { Clear(); }

  void Clear() noexcept {
    try {
      // An array that its server left locked cannot be freed: the server still uses it.
      VariantClear(this);
    } catch (...) {
      // An object's end has no caller to throw to.
    }
    VariantInit(this);
  }
};

namespace brindle {

// An object with the same reference and one more, a whole number as a 32-bit integer (saturated), a fraction and
// everything else as its text. std::bad_alloc when there is no room for the text.
[[nodiscard]] COleVariant ToVariant(const CVarBase& item);

// The value class's own mapping; nothing and null are not set, an array becomes items, other kinds their text.
[[nodiscard]] CBasicVariable FromVariant(const VARIANT& variant);

} // namespace brindle
