// WindowTest: scripts that run in windows, and a user who acts on them step by step.
// Room: tests. Used by: the tests of the Qt window system.
// May touch: a fresh folder, the windows that a script opens.
// Must not: leave a window open behind a test.
// Invariant: what is printed is recorded and not shown, unless a test wants the box.
#pragma once

#include "qt/control_events.h"
#include "qt/recorded_windows.h"
#include "qt/window_driver.h"
#include "support/script_test.h"

#include <memory>
#include <string>

class WindowTest : public testing::Test {
protected:
  WindowTest() {
    m_windows.showMessages = false;
    m_pInterpreter->SetUserInterface(&m_windows);
  }
  ~WindowTest() override {
    EXPECT_EQ(m_driver.StepsLeft(), 0U) << "steps whose window never came";
    EXPECT_EQ(m_driver.Unexpected(), 0) << "windows that nobody expected";
  }

  // What the script printed.
  std::string Run(std::string_view program) {
    EXPECT_TRUE(m_pInterpreter->ExecuteProgram(m_folder.Write("script.bas", program)));
    return m_windows.printed;
  }
  // A dialog of these control lines with the handler "show", which prints its value, ended by Escape behind the steps.
  std::string RunControls(const std::string& controls, const std::string& whenOpened = std::string()) {
    Then([](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
    return Run("dialog \"Test\", 0, 0, 200, 150\n" + controls + "\noninit opened\nenddialog\nend\n" +
               "sub show(v)\n  print v\nendsub\nsub opened(r)\n" + whenOpened + "\nendsub\n");
  }
  void Then(WindowDriver::Step step) { m_driver.Then(std::move(step)); }
  void ThenKey(int id, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    Then([=](QWidget& window) { QTest::keyClick(ControlOf(window, id), key, modifiers); });
  }
  void ThenClick(int id) {
    Then([=](QWidget& window) { ClickControl(*ControlOf(window, id)); });
  }

  TemporaryFolder m_folder;
  RecordedWindows m_windows;
  std::unique_ptr<CBrindle> m_pInterpreter = std::make_unique<CBrindle>();
  WindowDriver m_driver;
};
