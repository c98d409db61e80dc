// Boxes and dialogs in windows whose run is told to stop, or runs out of time, while nobody answers.
#include "qt/window_test.h"
#include "support/behind_a_wait.h"

#include <QLineEdit>

#include <atomic>
#include <csignal>
#include <thread>

namespace {

// Each waits for a user who does nothing, in one window or in several on top of each other.
constexpr std::pair<const char*, int> kWaits[] = {
    {"print \"shown\"\n", 1},
    {"x = ask(\"Go on?\")\n", 1},
    {"x = popupmenu(\"one\", \"-\", \"two\")\n", 1},
    {"x = fileopendlg(\"\", \"\", \"\", \"\")\n", 1},
    {"x = filesaveasdlg(\"a.txt\", \"\", \"\", \"\")\n", 1},
    {"next\n", 1},
    {"dialog \"D\", 0, 0, 100, 50\ncontrol okbutton \"OK\", 1, 1, 1, 20, 10\nonexit closed\nenddialog\n", 1},
    {"propertysheet \"S\"\npage \"P\"\ncontrol edittext \"\", 10, 1, 1, 20, 10\nendpage\nenddialog\n", 1},
    {"dialog \"D\", 0, 0, 100, 50\noninit another\nenddialog\n", 3},
    {"event create ontimer question\ntimerstart 20\ndialog \"D\", 0, 0, 100, 50\nenddialog\n", 2},
};

std::atomic<CBrindle*> toStop = nullptr;

int Depth() {
  int shown = 0;
  for (const QWidget* const window : QApplication::topLevelWidgets())
    shown += window->isVisible() ? 1 : 0;
  return shown;
}

class Stopping : public WindowTest {
protected:
  Stopping() {
    m_windows.showMessages = true;
    BehindAWait::AddTo(*m_pInterpreter);
    m_driver.Otherwise([](QWidget&) {}); // a user who does not answer
  }

  void RunAndEnd(const std::string& program, const std::string& text) {
    SCOPED_TRACE(program);
    EXPECT_TRUE(m_pInterpreter->ExecuteProgram(m_folder.Write("script.bas", program + BehindAWait::kProgram)));
    EXPECT_EQ(m_pInterpreter->GetLastError().ToUtf8().substr(0, text.size() + 1), text + "\n");
    EXPECT_EQ(BehindAWait::TimesReached(), 0) << "nothing runs behind the wait";
    EXPECT_EQ(Depth(), 0);
  }
  // As soon as so many windows are shown; the other thread may be left behind by a test that has failed.
  void WhenShown(int windows, std::function<void()> act) {
    m_driver.Then([this, windows, act = std::move(act)](QWidget&) {
      if (Depth() < windows)
        WhenShown(windows, act);
      else
        act();
    });
  }
  void LimitTime(std::uint32_t milliseconds) {
    CExecutionLimits limits;
    limits.milliseconds = milliseconds;
    ASSERT_TRUE(m_pInterpreter->SetLimits(limits));
  }
};

TEST_F(Stopping, another_thread_ends_whatever_is_shown) {
  for (const auto& [program, windows] : kWaits) {
    std::thread other;
    WhenShown(windows, [&] { other = std::thread([this] { m_pInterpreter->RequestStop(); }); });
    RunAndEnd(program, "Stopped by the host");
    ASSERT_TRUE(other.joinable()) << program;
    other.join();
    EXPECT_EQ(m_windows.errors.size(), std::string_view(program) == "next\n" ? 1U : 0U) << "nobody is told";
    m_windows.errors.clear();
  }
}

TEST_F(Stopping, a_signal_handler_ends_a_box) {
  toStop = m_pInterpreter.get();
  struct sigaction action {};
  struct sigaction before {};
  action.sa_handler = [](int) { toStop.load()->RequestStop(); };
  sigaction(SIGUSR1, &action, &before);
  for (const auto& [program, windows] : kWaits) {
    WhenShown(windows, [] { raise(SIGUSR1); });
    RunAndEnd(program, "Stopped by the host");
  }
  sigaction(SIGUSR1, &before, nullptr);
}

TEST_F(Stopping, the_time_limit_ends_whatever_is_shown_and_says_so) {
  LimitTime(150);
  for (const auto& [program, windows] : kWaits) {
    // The notice is a window of its own, behind the end of all others.
    m_driver.Otherwise([](QWidget& window) {
      auto* const box = qobject_cast<QMessageBox*>(&window);
      if (box != nullptr && box->text().startsWith(QStringLiteral("Limit of time reached")))
        WindowDriver::Press(*box, QMessageBox::Ok);
    });
    RunAndEnd(program, "Limit of time reached");
    ASSERT_FALSE(m_windows.errors.empty()) << program;
    EXPECT_TRUE(m_windows.errors.back().starts_with("Limit of time reached\n")) << m_windows.errors.back();
    m_windows.errors.clear();
  }
}

TEST_F(Stopping, a_notice_of_the_limit_waits_for_its_reader_or_a_request) {
  LimitTime(1);
  int looks = 0;
  std::thread other;
  m_driver.Otherwise([&](QWidget&) {
    if (++looks == 20)
      other = std::thread([this] { m_pInterpreter->RequestStop(); });
  });
  RunAndEnd("do while 1 = 1\nloop\n", "Limit of time reached");
  EXPECT_GE(looks, 20);
  other.join();
}

TEST_F(Stopping, a_question_inside_a_file_dialog_ends_with_it) {
  m_folder.Write("old.txt", "x");
  m_driver.Then([this](QWidget& window) {
    auto* const edit = window.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    edit->setText(QString::fromStdString(m_folder.Path("old.txt").string()));
    QTest::keyClick(edit, Qt::Key_Return);
  });
  WhenShown(2, [this] { m_pInterpreter->RequestStop(); });
  RunAndEnd("x = filesaveasdlg(\"\", \"\", \"\", \"\")\n", "Stopped by the host");
}

TEST_F(Stopping, a_stop_that_was_asked_for_before_opens_no_window) {
  for (const auto& [program, windows] : kWaits) {
    m_driver.Otherwise([](QWidget& window) { ADD_FAILURE() << "a window: " << window.metaObject()->className(); });
    m_pInterpreter->RequestStop();
    RunAndEnd(program, "Stopped by the host");
  }
}

TEST_F(Stopping, a_stop_that_was_answered_does_not_end_the_next_box) {
  WhenShown(1, [this] { m_pInterpreter->RequestStop(); });
  RunAndEnd("x = ask(\"One?\")\n", "Stopped by the host");
  int looks = 0;
  m_driver.Otherwise([&looks](QWidget& window) {
    if (++looks == 10)
      WindowDriver::Press(As<QMessageBox>(window), QMessageBox::Yes);
  });
  EXPECT_TRUE(
      m_pInterpreter->ExecuteProgram(m_folder.Write("next.bas", "if ask(\"Two?\") = 1 then\ncall reached()\nendif\n")));
  EXPECT_EQ(BehindAWait::TimesReached(), 1);
  EXPECT_EQ(looks, 10);
}

TEST_F(Stopping, a_box_outside_a_run_is_the_hosts_own) {
  int looks = 0;
  m_pInterpreter->RequestStop();
  m_driver.Otherwise([&looks](QWidget& window) {
    if (++looks == 5)
      WindowDriver::Press(As<QMessageBox>(window), QMessageBox::Yes);
  });
  EXPECT_TRUE(m_windows.AskYesNo(u"Of the host?", CString()));
}

} // namespace
