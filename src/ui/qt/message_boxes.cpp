#include "ui/qt/message_boxes.h"

#include "brindle/environment.h"
#include "ui/qt/qt_text.h"

#include <QCursor>
#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMenu>

namespace brindle {

namespace {

constexpr qsizetype kMostLines = 25;
constexpr qsizetype kMostCharacters = 2500;

// "Text files|*.txt;*.log|All files|*.*||" as Qt writes it: a name and its patterns in brackets.
QStringList NameFilters(const CString& filter) {
  const QStringList parts = ToQt(filter).split(QLatin1Char('|'));
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size() && !parts[i].isEmpty(); i += 2) {
    QStringList patterns = parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts);
    for (QString& pattern : patterns) {
      pattern = pattern.trimmed();
      if (pattern == QLatin1String("*.*"))
        pattern = QStringLiteral("*"); // names without a point too
    }
    // A name may bring its patterns in brackets already.
    const QString name = parts[i].section(QLatin1Char('('), 0, 0).trimmed();
    filters << name + QStringLiteral(" (") + patterns.join(QLatin1Char(' ')) + QLatin1Char(')');
  }
  return filters.isEmpty() ? QStringList(QFileDialog::tr("All files") + QStringLiteral(" (*)")) : filters;
}

} // namespace

QMessageBox::StandardButton ShowBox(QWidget* parent, QMessageBox::Icon icon, const CString& title, const CString& text,
                                    QMessageBox::StandardButtons buttons, QMessageBox::StandardButton otherwise,
                                    StopWatch::On endsOn) {
  QString whole = ToQt(text);
  while (whole.endsWith(QLatin1Char('\n')) || whole.endsWith(QLatin1Char('\r')))
    whole.chop(1);
  QString shown = whole.section(QLatin1Char('\n'), 0, kMostLines - 1).left(kMostCharacters);
  const bool isWhole = shown.size() == whole.size();
  if (!isWhole)
    shown += QStringLiteral("\n\u2026");
  QMessageBox box(icon, title.IsEmpty() ? QGuiApplication::applicationDisplayName() : ToQt(title), shown, buttons,
                  parent);
  box.setAttribute(Qt::WA_QuitOnClose, false);
  box.setTextFormat(Qt::PlainText);
  if (!isWhole)
    box.setDetailedText(whole);
  // Escape and the close button dismiss it, also where none of its buttons is Cancel.
  if (box.button(otherwise) != nullptr)
    box.setEscapeButton(otherwise);
  const StopWatch watch([&box] { box.reject(); }, endsOn);
  const int pressed = box.exec();
  return (buttons & pressed) != 0 ? static_cast<QMessageBox::StandardButton>(pressed) : otherwise;
}

std::optional<CString> ShowFileDialog(QWidget* parent, const CUserInterface::FileRequest& request, bool native) {
  QFileDialog dialog(parent);
  dialog.setAttribute(Qt::WA_QuitOnClose, false);
  dialog.setOption(QFileDialog::DontUseNativeDialog, !native);
  dialog.setAcceptMode(request.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(request.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialog.setNameFilters(NameFilters(request.filter));
  QString suffix = ToQt(request.defaultExtension);
  while (suffix.startsWith(QLatin1Char('.')))
    suffix.remove(0, 1);
  dialog.setDefaultSuffix(suffix);
  // Qt would go on where the last dialog has ended.
  dialog.setDirectory(request.initialFolder.IsEmpty() ? QDir::currentPath() : PathToQt(request.initialFolder));
  if (!request.fileName.IsEmpty())
    dialog.selectFile(PathToQt(request.fileName));
  const StopWatch watch([&dialog] {
    for (QDialog* const question : dialog.findChildren<QDialog*>()) // whether to write over a file
      question->reject();
    dialog.reject();
  });
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
    return std::nullopt;
  return CEnvironment::PathFromNative(QFile::encodeName(dialog.selectedFiles().constFirst()).toStdString());
}

int ShowMenu(QWidget* parent, const CStringArray& entries) {
  QMenu menu(parent);
  for (int i = 0; i < entries.GetSize(); ++i) {
    if (entries[i] == u"-")
      menu.addSeparator();
    else
      menu.addAction(ToQt(entries[i]))->setData(i);
  }
  const StopWatch watch([&menu] { menu.close(); });
  const QAction* const chosen = menu.exec(QCursor::pos());
  return chosen == nullptr ? -1 : chosen->data().toInt();
}

} // namespace brindle
