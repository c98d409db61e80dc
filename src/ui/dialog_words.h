// What the lines of a dialog block and of an "alter" block are made of.
// Room: ui. Used by: the dialog statements, "alter", the check of scripts.
// May touch: nothing; tables.
// Invariant: a word that is not named here is refused where it stands.
#pragma once

#include "interpreter/language.h"

#include <optional>

namespace brindle {

inline constexpr int kDialogParameters = 5;
inline constexpr int kFontParameters = 7;
inline constexpr int kControlParameters = 6;

// Whether "control" takes it as a kind.
[[nodiscard]] bool IsControlKind(KEYWORD_TYPE keyword) noexcept;

// How many operands a line of "alter" that begins with this word has; nothing for a word that begins none.
[[nodiscard]] constexpr std::optional<int> AlterationOperands(KEYWORD_TYPE keyword) noexcept {
  switch (keyword) {
  case KEYWORD_CLEAR: return 0;
  case KEYWORD_TITLE:
  case KEYWORD_TEXT:
  case KEYWORD_VALUE:
  case KEYWORD_SELECTION:
  case KEYWORD_SHOW:
  case KEYWORD_ENABLE: return 1;
  case KEYWORD_FONT:
  case KEYWORD_MENUITEM: return 2;
  case KEYWORD_POSITION: return 4;
  default: return std::nullopt;
  }
}

} // namespace brindle
