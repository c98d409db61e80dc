// RecordedWindows: the Qt user interface, with a list of all that it was asked to show.
// Room: tests. Used by: the tests of the Qt window system.
// May touch: memory.
// Must not: show anything in another way than the user interface does.
// Invariant: the texts are those of the interpreter, unshortened.
#pragma once

#include "brindle/qt_user_interface.h"

#include <string>
#include <vector>

class RecordedWindows : public CQtUserInterface {
public:
  using CQtUserInterface::CQtUserInterface;

  std::string printed;
  std::vector<std::string> errors; // the boxes and notices
  bool showMessages = true;        // else "print" is recorded only

  void ShowMessage(const CString& text) override {
    printed += text.ToUtf8();
    if (showMessages)
      CQtUserInterface::ShowMessage(text);
  }
  void ShowNotice(const CString& text) override {
    errors.push_back(text.ToUtf8());
    CQtUserInterface::ShowNotice(text);
  }
  [[nodiscard]] ErrorAnswer ShowError(const CString& text) override {
    errors.push_back(text.ToUtf8());
    return CQtUserInterface::ShowError(text);
  }
};
