#include "qt/control_events.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QCompleter>
#include <QContextMenuEvent>
#include <QDateTimeEdit>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QSlider>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

namespace {

// The items of a tree in the order in which they were added: Qt gives them back level by level.
QTreeWidgetItem* NodeOf(QTreeWidget& tree, int index) {
  for (QTreeWidgetItemIterator item(&tree); *item != nullptr; ++item)
    if ((*item)->data(0, Qt::UserRole).toInt() == index)
      return *item;
  return nullptr;
}

} // namespace

QWidget* ControlOf(QWidget& window, int id) {
  return window.findChild<QWidget*>(QStringLiteral("control_%1").arg(id));
}

void ClickControl(QWidget& control) {
  // On the left, where a check box has its mark.
  QTest::mouseClick(&control, Qt::LeftButton, Qt::NoModifier, QPoint(8, control.height() / 2));
}

void TypeText(QWidget& control, const QString& text) {
  control.setFocus();
  QTest::keySequence(&control, QKeySequence::SelectAll);
  if (text.isEmpty()) {
    QTest::keyClick(&control, Qt::Key_Delete);
    return;
  }
  QInputMethodEvent event;
  event.setCommitString(text);
  QApplication::sendEvent(&control, &event);
  // Names that a file dialog proposes would take the next key.
  if (const auto* const edit = qobject_cast<QLineEdit*>(&control); edit != nullptr && edit->completer() != nullptr)
    edit->completer()->popup()->hide();
}

void SelectItem(QWidget& control, int index) {
  if (auto* const list = qobject_cast<QListWidget*>(&control)) {
    list->scrollToItem(list->item(index));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(list->item(index)).center());
  } else if (auto* const combo = qobject_cast<QComboBox*>(&control)) {
    // The list that drops down is walked through by keys, and chosen from by one.
    combo->setFocus();
    QTest::keyClick(combo, Qt::Key_F4);
    QTest::keyClick(combo->view(), Qt::Key_Home);
    for (int i = 0; i < index; ++i)
      QTest::keyClick(combo->view(), Qt::Key_Down);
    QTest::keyClick(combo->view(), Qt::Key_Return);
  } else if (auto* const tabs = qobject_cast<QTabWidget*>(&control)) {
    QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, Qt::NoModifier, tabs->tabBar()->tabRect(index).center());
  } else if (auto* const tree = qobject_cast<QTreeWidget*>(&control)) {
    if (QTreeWidgetItem* const node = NodeOf(*tree, index)) {
      tree->scrollToItem(node); // opens the levels above
      QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, tree->visualItemRect(node).center());
    }
  }
}

void SetValue(QWidget& control, const QString& value) {
  if (auto* const slider = qobject_cast<QSlider*>(&control)) {
    slider->setValue(value.toInt());
  } else if (auto* const edit = qobject_cast<QDateTimeEdit*>(&control)) {
    QDateTime date = QDateTime::fromString(value, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    date.setTimeSpec(edit->timeSpec());
    edit->setDateTime(date);
  }
}

void ChooseMenuEntry(QWidget& control, int entry) {
  if (auto* const bar = qobject_cast<QMenuBar*>(&control)) {
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->actionGeometry(bar->actions().at(entry)).center());
    return;
  }
  // The menu runs a loop of its own, inside the event that opens it.
  QTimer::singleShot(0, &control, [entry] { ChooseFromMenu(entry); });
  auto* const area = qobject_cast<QAbstractScrollArea*>(&control);
  QWidget& clicked = area != nullptr ? *area->viewport() : control;
  const QPoint place = clicked.rect().center();
  QContextMenuEvent event(QContextMenuEvent::Mouse, place, clicked.mapToGlobal(place));
  QApplication::sendEvent(&clicked, &event);
}

void ChooseFromMenu(int entry) {
  auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  if (menu == nullptr || entry < 0 || entry >= menu->actions().size()) {
    if (menu != nullptr)
      QTest::keyClick(menu, Qt::Key_Escape);
    return;
  }
  QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(menu->actions().at(entry)).center());
}
