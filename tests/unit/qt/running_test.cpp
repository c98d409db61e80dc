// Dialogs that run: inside each other, with timers, and ended by whatever can end them.
#include "qt/window_test.h"

#include <QDialogButtonBox>
#include <QMenuBar>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>

#include <stdexcept>

class Running : public WindowTest {};

namespace {

CBasicVariable Explode(CBrindle*, CBasicVariableArray&, int) {
  throw std::runtime_error("from a host function");
}

} // namespace

TEST_F(Running, nested_dialogs_and_boxes_belong_to_the_window_they_came_from) {
  m_windows.showMessages = true;
  QWidget* outer = nullptr;
  Then([&](QWidget& window) {
    outer = &window;
    ClickControl(*ControlOf(window, 10));
  });
  Then([&](QWidget& window) {
    EXPECT_EQ(window.windowTitle().toStdString(), "Inner");
    EXPECT_EQ(window.parentWidget(), outer);
    ClickControl(*ControlOf(window, 11));
  });
  Then([](QWidget& window) {
    EXPECT_EQ(window.parentWidget()->windowTitle().toStdString(), "Inner");
    WindowDriver::Press(As<QMessageBox>(window), QMessageBox::Ok);
  });
  Then([](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
  Then([&](QWidget& window) {
    EXPECT_EQ(&window, outer);
    QTest::keyClick(&window, Qt::Key_Escape);
  });
  EXPECT_EQ(Run("dialog \"Outer\", 0, 0, 100, 50\ncontrol button \"a\", 10, 0, 0, 50, 14, \"inner\"\nenddialog\nend\n"
                "sub inner(v)\ndialog \"Inner\", 0, 0, 100, 50\n"
                "control button \"b\", 11, 0, 0, 50, 14, \"box\"\nenddialog\nendsub\n"
                "sub box(v)\nprint \"shown\"\nendsub\n"),
            "shown\n");
}

TEST_F(Running, the_timer_ticks_at_every_level) {
  // Each level waits for a tick of its own before the user goes on.
  const std::string program = "event create OnTimer tick\nglobal ticks\nticks = 0\ntimerstart 5\n"
                              "dialog \"Outer\", 0, 0, 100, 50\ncontrol button \"0\", 10, 0, 0, 50, 14, \"inner\"\n"
                              "enddialog\nprint ask(\"Ready?\")\ntimerstop\nend\n"
                              "sub tick(v)\nticks = ticks + 1\nalter 10\ntitle int(ticks)\nendalter\nendsub\n"
                              "sub inner(v)\ntimerstart 5\ndialog \"Inner\", 0, 0, 100, 50\n"
                              "control button \"0\", 10, 0, 0, 50, 14\nenddialog\nendsub\n";
  int before = -1;
  const auto caption = [](QWidget& window) { return ControlOf<QPushButton>(window, 10)->text().toInt(); };
  const auto pause = [&](QWidget& window) {
    before = caption(window);
    EXPECT_GE(before, 0);
  };
  const auto thenTicked = [&](const std::function<void(QWidget&)>& act) {
    m_driver.ThenSlowly([](QWidget&) {});
    Then([&, act](QWidget& window) {
      EXPECT_GT(caption(window), before) << window.windowTitle().toStdString();
      act(window);
    });
  };
  Then(pause);
  thenTicked([](QWidget& window) { ClickControl(*ControlOf(window, 10)); });
  Then(pause);
  thenTicked([](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
  Then([](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
  Then([](QWidget& window) { WindowDriver::Press(As<QMessageBox>(window), QMessageBox::Yes); });
  m_windows.SetErrorPolicy(CQtUserInterface::ErrorPolicy::Continue); // a tick during "ask" finds no dialog
  EXPECT_EQ(Run(program), "1\n");
}

TEST_F(Running, an_error_that_is_cancelled_in_a_handler_ends_every_dialog_and_the_run) {
  ThenClick(10);
  ThenClick(11);
  Then([](QWidget& window) { WindowDriver::Press(As<QMessageBox>(window), QMessageBox::Cancel); });
  EXPECT_EQ(Run("dialog \"Outer\", 0, 0, 100, 50\ncontrol button \"a\", 10, 0, 0, 50, 14, \"inner\"\nenddialog\n"
                "print \"never\"\nend\n"
                "sub inner(v)\ndialog \"Inner\", 0, 0, 100, 50\n"
                "control button \"b\", 11, 0, 0, 50, 14, \"fail\"\nenddialog\nprint \"never\"\nendsub\n"
                "sub fail(v)\nnext\nendsub\n"),
            "");
  EXPECT_EQ(m_windows.errors.size(), 1U);
  EXPECT_EQ(m_windows.GetNumberOfErrors(), 1);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(Running, an_exception_of_a_host_function_passes_the_windows_loop_unharmed) {
  ASSERT_TRUE(m_pInterpreter->AddCustomFunction(CString(u"explode"), &Explode, 0, nullptr));
  ThenClick(10);
  EXPECT_THROW((void)m_pInterpreter->ExecuteProgram(m_folder.Write(
                   "t.bas", "dialog \"T\", 0, 0, 100, 50\ncontrol button \"a\", 10, 0, 0, 50, 14, \"bang\"\nenddialog\n"
                            "end\nsub bang(v)\nx = explode(1)\nendsub\n")),
               std::runtime_error);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(Running, a_sheet_has_a_tab_for_each_page_and_buttons_below) {
  Then([](QWidget& window) {
    EXPECT_EQ(window.windowTitle().toStdString(), "Sheet");
    auto& tabs = *window.findChild<QTabWidget*>();
    ASSERT_EQ(tabs.count(), 2);
    EXPECT_EQ(tabs.tabText(1).toStdString(), "Two");
    EXPECT_EQ(tabs.currentIndex(), 0);
    QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, Qt::NoModifier, tabs.tabBar()->tabRect(1).center());
    EXPECT_TRUE(ControlOf(window, 11)->isVisible());
    ClickControl(*ControlOf(window, 11));
    auto& buttons = *window.findChild<QDialogButtonBox*>();
    EXPECT_TRUE(buttons.button(QDialogButtonBox::Ok)->isDefault());
    QTest::mouseClick(buttons.button(QDialogButtonBox::Ok), Qt::LeftButton);
  });
  EXPECT_EQ(Run("propertysheet \"Sheet\", 0, 0, 150, 100\n"
                "page \"One\"\ncontrol edittext \"\", 10, 0, 0, 50, 12\nonexit first\nendpage\n"
                "page \"Two\"\ncontrol checkbox \"c\", 11, 0, 0, 50, 12, \"show\"\nonexit last\nendpage\n"
                "enddialog\nend\nsub show(v)\nprint v\nendsub\n"
                "sub first(r)\nprint \"first \"; r\nendsub\nsub last(r)\nprint \"last \"; r\nendsub\n"),
            "1\nfirst 1\nlast 1\n");
}

TEST_F(Running, a_parent_that_the_host_destroys_takes_the_dialog_with_it) {
  auto parent = std::make_unique<QWidget>();
  parent->show();
  RecordedWindows windows(parent.get());
  windows.showMessages = false;
  m_pInterpreter->SetUserInterface(&windows);
  Then([&](QWidget& window) {
    EXPECT_EQ(window.parentWidget(), parent.get());
    parent.reset();
  });
  EXPECT_TRUE(m_pInterpreter->ExecuteProgram(
      m_folder.Write("p.bas", "dialog \"T\", 0, 0, 100, 50\ncontrol edittext \"\", 10, 0, 0, 50, 14\nonexit closed\n"
                              "enddialog\nprint \"after\"\nend\n"
                              "sub closed(r)\nprint \"closed \"; r; controlvalue(10)\nendsub\n")));
  EXPECT_EQ(windows.printed, "closed 2\nafter\n");
}

TEST_F(Running, the_end_of_the_application_cancels_what_is_open) {
  // An application that is told to end while a script's dialog is open in its event loop.
  std::string printed;
  QTimer::singleShot(0, &m_driver, [&] {
    printed = Run("dialog \"T\", 0, 0, 100, 50\ncontrol button \"a\", 10, 0, 0, 50, 14\nonexit closed\nenddialog\n"
                  "print ask(\"Really?\")\nend\nsub closed(r)\nprint \"closed \"; r\nendsub\n");
  });
  Then([](QWidget&) { QCoreApplication::quit(); });
  EXPECT_EQ(QCoreApplication::exec(), 0);
  EXPECT_EQ(printed, "closed 2\n0\n");
}

TEST_F(Running, menus_of_controls_and_of_the_window_raise_their_handlers) {
  Then([](QWidget& window) { ChooseMenuEntry(*ControlOf(window, 10), 1); });
  Then([](QWidget& window) { ChooseMenuEntry(*ControlOf(window, 11), 0); });
  Then([](QWidget& window) { ChooseMenuEntry(*window.findChild<QMenuBar*>(), 0); });
  EXPECT_EQ(RunControls("control edittext \"\", 10, 0, 0, 50, 14\ncontrol listbox \"\", 11, 0, 20, 50, 34",
                        "alter 10\nmenuitem \"Copy\", \"show\"\nmenuitem \"Paste\", \"show\"\nendalter\n"
                        "alter 11\nmenuitem \"Sort\", \"show\"\nendalter\n"
                        "alter window\nmenuitem \"About\", \"show\"\nendalter"),
            "Paste\nSort\nAbout\n");
}

TEST_F(Running, handles_are_not_zero_and_differ) {
  EXPECT_EQ(RunControls("control edittext \"\", 10, 0, 0, 50, 14\ncontrol edittext \"\", 11, 0, 0, 50, 14",
                        "a = getwindowhandle()\nb = getwindowhandle(10)\nc = getwindowhandle(11)\n"
                        "if a != 0 then\nprint \"window\"\nendif\nif b != c then\nprint \"controls\"\nendif\n"
                        "print getwindowhandle(99)"),
            "window\ncontrols\n0\n");
}

TEST_F(Running, an_inner_window_that_is_hidden_by_its_script_can_still_be_ended) {
  const std::string program = "event create OnTimer tick\ndialog \"T\", 0, 0, 100, 50\noninit opened\nenddialog\n"
                              "print \"after\"\nend\n"
                              "sub opened(r)\nalter window\nshow 0\nendalter\ntimerstart 5\nendsub\n"
                              "sub tick(v)\ntimerstop\nclosedialog\nendsub\n";
  EXPECT_EQ(Run(program), "after\n");
}
