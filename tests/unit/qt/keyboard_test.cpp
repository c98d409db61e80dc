// The ways of the keyboard through a dialog: tab order, focus, Enter, Escape, mnemonics, and closing the window.
#include "qt/window_test.h"

#include <QLineEdit>

class Keyboard : public WindowTest {
protected:
  // The identifier of the control that has the focus.
  static int Focused(QWidget& window) {
    const QWidget* widget = window.focusWidget();
    while (widget != nullptr && !widget->objectName().startsWith(QStringLiteral("control_")))
      widget = widget->parentWidget();
    return widget == nullptr ? 0 : widget->objectName().mid(8).toInt();
  }
  void ThenTab(int expected, Qt::Key key = Qt::Key_Tab) {
    Then([=](QWidget& window) {
      QTest::keyClick(window.focusWidget(), key);
      EXPECT_EQ(Focused(window), expected);
    });
  }
};

TEST_F(Keyboard, tab_follows_the_template_and_passes_what_is_no_tab_stop) {
  Then([](QWidget& window) { EXPECT_EQ(Focused(window), 12); }); // the first that can take it
  for (const int id : {10, 15, 13, 14, 12})
    ThenTab(id);
  ThenTab(14, Qt::Key_Backtab);
  RunControls("control statictext \"a\", 11, 0, 0, 20, 10\n"
              "control edittext \"\", 12, 100, 100, 40, 12\n"
              "control button \"b\", 10, 0, 0, 40, 12\n"
              "control combobox \"\", 15, 50, 50, 40, 40\n"
              "control listbox \"\", 13, 0, 20, 40, 40\n"
              "control groupbox \"\", 16, 0, 0, 150, 150\n"
              "control editmultiline \"\", 14, 50, 20, 40, 12");
}

TEST_F(Keyboard, setfocus_moves_the_focus_and_shows_the_page) {
  Then([](QWidget& window) {
    EXPECT_EQ(Focused(window), 21);
    EXPECT_TRUE(ControlOf(window, 21)->isVisible());
    EXPECT_FALSE(ControlOf(window, 20)->isVisible());
    QTest::keyClick(&window, Qt::Key_Escape);
  });
  Run("propertysheet \"Sheet\"\n"
      "page \"One\"\ncontrol edittext \"\", 20, 0, 0, 50, 12\noninit opened\nendpage\n"
      "page \"Two\"\ncontrol edittext \"\", 21, 0, 0, 50, 12\nendpage\nenddialog\nend\n"
      "sub opened(r)\nsetfocus 21\nendsub\n");
}

TEST_F(Keyboard, enter_means_the_button_with_the_focus_then_the_default_then_ok) {
  const std::string tail = "enddialog\nend\n"
                           "sub closed(r)\nprint \"closed \"; r\nendsub\n"
                           "sub show(v)\nprint \"clicked\"\nendsub\n";
  const std::string head = "dialog \"Test\", 0, 0, 200, 100\nonexit closed\n";
  const std::string edit = "control edittext \"\", 10, 0, 0, 50, 12\n";
  const std::string plain = "control button \"b\", 11, 0, 20, 50, 12, \"show\"\n";
  const std::string ok = "control okbutton \"OK\", 1, 0, 40, 50, 12, \"show\"\n";
  ThenKey(11, Qt::Key_Return); // the button has the focus
  Then([](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
  EXPECT_EQ(Run(head + plain + edit + ok + tail), "clicked\nclosed 2\n");
  m_windows.printed.clear();
  ThenKey(10, Qt::Key_Return); // the default button, with its handler
  EXPECT_EQ(Run(head + edit + plain + ok + tail), "clicked\nclosed 1\n");
  m_windows.printed.clear();
  ThenKey(10, Qt::Key_Enter); // none: the OK action alone
  EXPECT_EQ(Run(head + edit + plain + tail), "closed 1\n");
}

TEST_F(Keyboard, escape_and_the_close_button_cancel) {
  const std::string program = "dialog \"Test\", 0, 0, 200, 100\nonexit closed\n"
                              "control cancelbutton \"No\", 2, 0, 0, 50, 12, \"show\"\nenddialog\nend\n"
                              "sub closed(r)\nprint \"closed \"; r\nendsub\nsub show(v)\nprint \"cancelled\"\nendsub\n";
  Then([](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
  EXPECT_EQ(Run(program), "cancelled\nclosed 2\n");
  m_windows.printed.clear();
  Then([](QWidget& window) { window.close(); });
  EXPECT_EQ(Run(program), "cancelled\nclosed 2\n");
}

TEST_F(Keyboard, a_cancel_button_that_is_disabled_keeps_the_dialog_open) {
  Then([](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
  Then([](QWidget& window) { window.close(); });
  ThenClick(10);
  EXPECT_EQ(Run("dialog \"Test\", 0, 0, 200, 100\noninit opened\nonexit closed\n"
                "control cancelbutton \"No\", 2, 0, 0, 50, 12\n"
                "control button \"Leave\", 10, 0, 20, 50, 12, \"leave\"\nenddialog\nend\n"
                "sub opened(r)\nalter 2\nenable 0\nendalter\nendsub\n"
                "sub leave(v)\nclosedialog\nendsub\nsub closed(r)\nprint \"closed \"; r\nendsub\n"),
            "closed 1\n");
}

TEST_F(Keyboard, the_mnemonic_of_a_text_leads_to_the_control_behind_it) {
  Then([](QWidget& window) {
    EXPECT_EQ(Focused(window), 10);
    QTest::keyClick(&window, Qt::Key_N, Qt::AltModifier);
    EXPECT_EQ(Focused(window), 12);
  });
  RunControls("control button \"b\", 10, 0, 0, 50, 12\n"
              "control statictext \"&Name:\", 11, 0, 20, 50, 10\n"
              "control edittext \"\", 12, 60, 20, 50, 12");
}
