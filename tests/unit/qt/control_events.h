// A user's actions on the controls of an open dialog, by keyboard and mouse.
// Room: tests. Used by: the tests of the Qt window system.
// May touch: the widgets of the window that it is given.
// Must not: change a widget other than by events; sliders and dates, which would take many, are set in one step.
// Invariant: a control is found by its identifier, which a dialog's window keeps as the object name of its widget.
#pragma once

#include <QString>
#include <QWidget>

#include <string>

// Null when the window has no such control.
[[nodiscard]] QWidget* ControlOf(QWidget& window, int id);
template <class Widget> [[nodiscard]] Widget* ControlOf(QWidget& window, int id) {
  return qobject_cast<Widget*>(ControlOf(window, id));
}

void ClickControl(QWidget& control);
// Replaces the whole text, at once as an input method does.
void TypeText(QWidget& control, const QString& text);
void SelectItem(QWidget& control, int index);
void SetValue(QWidget& control, const QString& value);
// An entry of a control's menu, or of a menu bar.
void ChooseMenuEntry(QWidget& control, int entry);
// An entry of the menu that is open; none there is Escape.
void ChooseFromMenu(int entry);
