// CExecutionLimits: what a host allows a script that it does not trust.
// Room: platform. Used by: CBrindle::SetLimits, hosts.
// May touch: nothing; a set of values.
// Invariant: a value that was never set limits nothing.
#pragma once

#include "brindle/text.h"

#include <cstdint>

/// Limits of one interpreter and of every script that it runs by "run". All are off at first.
/// The first four are budgets: reaching one ends the run, the event or the tick of the timer in progress, as Cancel at
/// an error box does, and its text stands in GetLastError. Each outermost call of ExecuteProgram, each event that a
/// host throws while nothing runs and each tick of the timer then has all of its statements and its time anew.
/// The others forbid: what a script tries all the same is its error 65, behind which it may go on.
struct CExecutionLimits {
  /// Statements that may be run; 0: any number. Empty lines, comments, labels, "endif" and the words that end a
  /// procedure are none; a "do" is one each time its condition is tested. (error 60)
  std::uint64_t statements = 0;
  /// Milliseconds by the monotonic clock, in which the script's waiting for input counts; 0: any time. (error 61)
  std::uint32_t milliseconds = 0;
  /// Bytes of the script's texts, arrays, maps, records and variables, all runs of the interpreter together; 0: any
  /// number. Single pieces of 4 KiB and more are refused before they are made, smaller ones are added up and looked at
  /// every 64 statements. (error 62)
  std::uint64_t bytes = 0;
  /// Procedure calls inside each other, a script started by "run" being one more; 0: as many as the stack allows.
  /// (error 63)
  int callDepth = 0;

  /// A folder, named as for ExecuteProgram, that no path of a script leads out of; empty: none. For the script it is
  /// "\", and relative paths begin at the current folder when that lies below it, else at the root. A symbolic link
  /// is followed as long as it is relative and stays below the root. The path that a host gives to ExecuteProgram is
  /// the host's own and not held to it.
  CString root;
  bool noPrograms = false;    ///< forbids "runexe"
  bool noLibraries = false;   ///< forbids "declare"
  bool noAutomation = false;  ///< forbids "createobject"; objects that the host hands over work
  bool noSerialPorts = false; ///< forbids "comportopen"
};
