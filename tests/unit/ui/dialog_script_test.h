// DialogScriptTest: an interpreter whose dialogs a test plays.
// Room: tests. Used by: unit tests of dialogs and control access.
// May touch: what ScriptTest touches.
// Invariant: every test starts without dialogs to play.
#pragma once

#include "support/dialog_user_interface.h"
#include "support/script_test.h"
#include "support/text_printing.h"

#include <string>
#include <utility>
#include <vector>

class DialogScriptTest : public ScriptTest {
protected:
  DialogScriptTest() { Interpreter().SetUserInterface(&m_dialogs); }
  ~DialogScriptTest() override { m_pInterpreter.reset(); } // before the interface that it borrows

  // Plays the next dialog.
  void Then(DialogUserInterface::Play play) { m_dialogs.plays.push_back(std::move(play)); }
  [[nodiscard]] std::string Output() const { return m_dialogs.Output(); }
  [[nodiscard]] Numbers Errors() const { return m_dialogs.ErrorNumbers(); }
  [[nodiscard]] std::size_t OpenDialogs() { return State().openDialogs.size(); }

  DialogUserInterface m_dialogs;
};
