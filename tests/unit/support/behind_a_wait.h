// BehindAWait: what stands behind the wait of a test's script, and whether the script ever came to it.
// Room: tests. Used by: unit tests that stop a run while it waits, at the console and in windows.
// May touch: the interpreter that it is given, to which it adds the function "reached".
// Must not: be used by two tests at a time: its count is the test program's.
// Invariant: the count is that of the interpreter added last.
#pragma once

#include "brindle/brindle.h"

class BehindAWait {
public:
  // The rest of the program: reached at once, by a handler of a dialog, or from a dialog within one.
  static constexpr const char* kProgram = "call reached()\nend\n"
                                          "sub closed(v)\ncall reached()\nendsub\n"
                                          "sub another(v)\ndialog \"E\", 0, 0, 100, 50\noninit question\nenddialog\n"
                                          "call reached()\nendsub\n"
                                          "sub question(v)\nx = ask(\"Really?\")\ncall reached()\nendsub\n";

  static void AddTo(CBrindle& interpreter) {
    timesReached = 0;
    interpreter.AddCustomFunction(
        u"reached",
        [](CBrindle*, CBasicVariableArray&, int) {
          ++timesReached;
          return CBasicVariable();
        },
        0, nullptr);
  }
  [[nodiscard]] static int TimesReached() noexcept { return timesReached; }

private:
  inline static int timesReached = 0;
};
