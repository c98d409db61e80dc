// The boxes of the Qt user interface: messages, questions, files, menus.
// Room: ui. Used by: the Qt user interface.
// May touch: the screen, for as long as a box is shown.
// Must not: read a script's text as markup.
// Invariant: a box that is closed, or ended by the application's end or because its run is to stop, is dismissed.
#pragma once

#include "brindle/user_interface.h"
#include "ui/qt/stop_watch.h"

#include <QMessageBox>

namespace brindle {

// The button that was pressed; `otherwise` when the box was dismissed. A text that is long for a box shows its
// beginning, and the whole on demand.
[[nodiscard]] QMessageBox::StandardButton ShowBox(QWidget* parent, QMessageBox::Icon icon, const CString& title,
                                                  const CString& text, QMessageBox::StandardButtons buttons,
                                                  QMessageBox::StandardButton otherwise,
                                                  StopWatch::On endsOn = StopWatch::On::Stop);

[[nodiscard]] std::optional<CString> ShowFileDialog(QWidget* parent, const CUserInterface::FileRequest& request,
                                                    bool native);

[[nodiscard]] int ShowMenu(QWidget* parent, const CStringArray& entries);

} // namespace brindle
