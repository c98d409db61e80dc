#include "qt/player.h"

#include "qt/control_events.h"
#include "qt/window_driver.h"

#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenuBar>
#include <QTabBar>
#include <QTabWidget>

namespace {

bool IsOneOf(const QString& line, const char* first, const char* second) {
  return line.compare(QLatin1String(first), Qt::CaseInsensitive) == 0 ||
         line.compare(QLatin1String(second), Qt::CaseInsensitive) == 0;
}

// The page of a property sheet that the control is on.
void BringToFront(QWidget& control) {
  for (QWidget* child = control.parentWidget(); child != nullptr; child = child->parentWidget())
    if (auto* const tabs = qobject_cast<QTabWidget*>(child))
      for (int i = 0; i < tabs->count(); ++i)
        if (tabs->widget(i)->isAncestorOf(&control))
          QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, Qt::NoModifier, tabs->tabBar()->tabRect(i).center());
}

} // namespace

void Player::Act(QWidget& window) {
  if (qobject_cast<QMenu*>(&window) != nullptr)
    ChooseFromMenu(Next().value_or(QStringLiteral("-1")).toInt());
  else if (auto* const box = qobject_cast<QMessageBox*>(&window))
    Answer(*box);
  else if (auto* const files = qobject_cast<QFileDialog*>(&window))
    ChooseFile(*files);
  else
    Command(window);
}

std::optional<QString> Player::Next() {
  if (m_input.empty())
    return std::nullopt;
  QString line = std::move(m_input.front());
  m_input.pop_front();
  return line;
}

void Player::Answer(QMessageBox& box) {
  const bool isQuestion = box.button(QMessageBox::Yes) != nullptr;
  if (!isQuestion && box.button(QMessageBox::Cancel) == nullptr) {
    WindowDriver::Press(box, QMessageBox::Ok); // a message asks for nothing
    return;
  }
  const auto line = Next();
  if (isQuestion)
    WindowDriver::Press(box, line && IsOneOf(*line, "y", "yes") ? QMessageBox::Yes : QMessageBox::No);
  else
    WindowDriver::Press(box, !line || IsOneOf(*line, "c", "cancel") ? QMessageBox::Cancel : QMessageBox::Ok);
}

void Player::ChooseFile(QFileDialog& dialog) {
  const auto path = Next();
  if (!path || path->isEmpty()) {
    QTest::keyClick(&dialog, Qt::Key_Escape);
    return;
  }
  // The console takes any path; a window has only files to choose that are there.
  QFile file(dialog.directory().filePath(*path));
  if (dialog.fileMode() == QFileDialog::ExistingFile && !file.exists())
    (void)file.open(QIODevice::WriteOnly);
  auto* const name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  TypeText(*name, *path);
  QTest::keyClick(name, Qt::Key_Return);
}

void Player::Command(QWidget& window) {
  const auto line = Next();
  if (!line) {
    window.close(); // nobody is there any more
    return;
  }
  const QString command = line->section(QLatin1Char(' '), 0, 0).toLower();
  const QString id = line->section(QLatin1Char(' '), 1, 1);
  const QString value = line->section(QLatin1Char(' '), 2);
  if (command.isEmpty() || command == QLatin1String("show"))
    return;
  if (command == QLatin1String("cancel") ||
      (command == QLatin1String("click") && id == QLatin1String("2") && ControlOf(window, 2) == nullptr)) {
    QTest::keyClick(&window, Qt::Key_Escape);
    return;
  }
  const bool isOk = command == QLatin1String("ok");
  QWidget* const control = id == QLatin1String("window") ? window.findChild<QMenuBar*>()
                           : isOk                        ? ControlOf(window, 1)
                                                         : ControlOf(window, id.toInt());
  if (control == nullptr && (isOk || id == QLatin1String("1"))) {
    window.setFocus(); // Enter would mean a button that has the focus
    QTest::keyClick(&window, Qt::Key_Return);
    return;
  }
  if (control == nullptr) {
    m_refused.push_back(line->toStdString());
    return;
  }
  BringToFront(*control);
  if (isOk || command == QLatin1String("click"))
    ClickControl(*control);
  else if (command == QLatin1String("type"))
    TypeText(*control, value);
  else if (command == QLatin1String("select"))
    SelectItem(*control, value.toInt());
  else if (command == QLatin1String("set"))
    SetValue(*control, value);
  else if (command == QLatin1String("menu"))
    ChooseMenuEntry(*control, value.toInt());
  else
    m_refused.push_back(line->toStdString());
}
