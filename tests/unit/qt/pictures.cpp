// Makes the pictures of the documentation: runs a script in windows that nobody sees, with the commands of its dialogs
// on standard input, and keeps what the screen would show. The command "picture NAME" writes FOLDER/NAME.png.
//
//     qt_pictures SCRIPT FOLDER < COMMANDS
#include "qt/player.h"
#include "qt/recorded_windows.h"
#include "qt/window_driver.h"

#include "brindle/interpreter.h"

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QStyleFactory>

#include <cstdio>
#include <iostream>
#include <string>

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
  QGuiApplication::setQuitOnLastWindowClosed(false);
  if (argc != 3) {
    std::fputs("qt_pictures SCRIPT FOLDER < COMMANDS\n", stderr);
    return 2;
  }
  const QDir folder(QString::fromLocal8Bit(argv[2]));
  std::deque<QString> commands;
  for (std::string line; std::getline(std::cin, line);)
    commands.push_back(QString::fromStdString(line));

  // The commands between two pictures have a player of their own.
  bool written = true;
  WindowDriver driver;
  driver.Otherwise([&](QWidget& window) {
    if (!commands.empty() && commands.front().startsWith(QLatin1String("picture "))) {
      const QString name = commands.front().mid(8) + QStringLiteral(".png");
      commands.pop_front();
      written = window.grab().save(folder.filePath(name)) && written;
      return;
    }
    std::deque<QString> next;
    const bool asks = qobject_cast<QMessageBox*>(&window) == nullptr || commands.empty();
    if (asks && !commands.empty()) {
      next.push_back(commands.front());
      commands.pop_front();
    }
    Player(next).Act(window);
  });
  RecordedWindows windows;
  CBrindle interpreter;
  interpreter.SetUserInterface(&windows);
  const bool loaded = interpreter.ExecuteProgram(CString::FromUtf8(argv[1]));
  std::fputs(windows.printed.c_str(), stdout);
  for (const std::string& error : windows.errors)
    std::fprintf(stderr, "%s\n", error.c_str());
  return loaded && written && windows.errors.empty() ? 0 : 1;
}
