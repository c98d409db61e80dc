// CallRecord: a call that the executing parser makes, as an error place tells of it. Calls of the compiled route are
// frames of its machine; a record says which of these are older than itself.
// Room: interpreter. Used by: the scopes of procedures and programs, which hold one each; error places.
// May touch: nothing.
// Invariant: records form a list from the innermost call outward, and each ends before the one around it does.
#pragma once

#include "brindle/error_place.h"

#include <cstdint>

class CFuncDesc;

namespace brindle {

class ProgramText;

struct CallRecord {
  const CallRecord* outer = nullptr;
  CCallFrame::Kind kind = CCallFrame::Kind::Procedure;
  const CFuncDesc* function = nullptr;  // null for a program
  const ProgramText* program = nullptr; // the caller's; null when none has run
  std::uint32_t position = 0;           // where the caller stood
  bool hasPlace = false;                // whether the caller was at a statement
  std::size_t frames = 0;               // of the machine, made before this call
};

} // namespace brindle
