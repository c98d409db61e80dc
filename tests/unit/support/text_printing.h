// How test failures show texts.
// Room: tests. Used by: unit tests that compare CString objects.
// May touch: memory only.
// Must not: be left out of one file of a test program that prints texts: all of them must print alike.
// Invariant: units outside printable ASCII are shown as \uXXXX.
#pragma once

#include "brindle/text.h"

#include <cstdio>
#include <ostream>

inline void PrintTo(const CString& text, std::ostream* out) {
  *out << "u\"";
  for (const char16_t unit : text.View()) {
    if (unit >= 0x20 && unit < 0x7F) {
      *out << static_cast<char>(unit);
    } else {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04X", static_cast<unsigned>(unit));
      *out << escape;
    }
  }
  *out << '"';
}
