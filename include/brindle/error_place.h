// CErrorPlace: where in the scripts an error was reported, and which calls led there.
// Room: platform. Used by: interpreter, user interfaces, hosts.
// May touch: nothing; data.
// Must not: point into an interpreter: it outlives the run that it tells of.
// Invariant: a line of 0 means that no line can be named.
#pragma once

#include "brindle/text.h"

#include <cstddef>
#include <vector>

/// One call in progress: what was called, and where the call stands.
struct CCallFrame {
  enum class Kind {
    Procedure, ///< a function or sub of the script
    Handler,   ///< one that an event called
    Program    ///< a whole script: by "run", or by a host that runs one while another runs
  };
  Kind kind = Kind::Procedure;
  CString name; ///< as its definition writes it; of a program its file
  CString file; ///< of the call, as it was given or as "include" and "library" name it
  int line = 0; ///< of the call; 0 when no line made it: a timer's tick, an event that the host throws
};

/// Where an error was reported. The word at the column is the one that could not be used, or the last one read
/// before it; the error text quotes the line at which reading would go on, which may be the next one.
struct CErrorPlace {
  /// Calls kept of a deeper nesting; those left out are the outer ones.
  static constexpr std::size_t kMostCalls = 200;

  int number = 0; ///< of the error; 0 when none was reported yet, or by "x =" without a value
  CString file;
  int line = 0;                  ///< of that file, counted from 1
  int column = 0;                ///< in characters, counted from 1
  CString sourceLine;            ///< without its end; empty for an enciphered script
  std::vector<CCallFrame> calls; ///< the innermost first; empty in the main program
  std::size_t callsLeftOut = 0;
};
