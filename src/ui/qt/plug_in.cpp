// What the runner loads.
#include "brindle/qt_user_interface.h"
#include "brindle/version.h"
#include "ui/qt/display.h"
#include "ui/window_plug_in.h"

#include <QString>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string_view>

namespace {

// Qt's way to say that no window can be shown is to abort: leave with a usage error instead.
void LeaveOnFatalMessage(QtMsgType type, const QMessageLogContext&, const QString& message) {
  std::fprintf(stderr, "brindle: %s\n", message.toUtf8().constData());
  if (type == QtFatalMsg)
    std::_Exit(2);
}

} // namespace

extern "C" BRINDLE_QT_API CWindowUserInterface* BrindleCreateWindowSystem(const char* libraryVersion,
                                                                          std::string& reason) {
  try {
    if (std::string_view(libraryVersion) != BRINDLE_VERSION) {
      reason = std::string("libbrindle-qt is of version " BRINDLE_VERSION ", the library of ") + libraryVersion;
      return nullptr;
    }
    if (!brindle::CanReachDisplay(reason))
      return nullptr;
    const QtMessageHandler previous = qInstallMessageHandler(LeaveOnFatalMessage);
    auto* const userInterface = new CQtUserInterface;
    qInstallMessageHandler(previous);
    return userInterface;
  } catch (const std::exception& failure) {
    reason = failure.what();
    return nullptr;
  }
}
