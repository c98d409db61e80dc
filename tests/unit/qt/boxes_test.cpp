// Message boxes, questions, file dialogs, menus, sounds and timers of the Qt user interface, without a script.
#include "qt/control_events.h"
#include "qt/recorded_windows.h"
#include "qt/window_driver.h"
#include "support/script_test.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>

#include <csignal>

using Policy = CQtUserInterface::ErrorPolicy;
using Answer = CUserInterface::ErrorAnswer;

class Boxes : public testing::Test {
protected:
  ~Boxes() override {
    EXPECT_EQ(m_driver.StepsLeft(), 0U);
    EXPECT_EQ(m_driver.Unexpected(), 0);
  }
  void ThenPress(QMessageBox::StandardButton button) {
    m_driver.Then([button](QWidget& box) { WindowDriver::Press(As<QMessageBox>(box), button); });
  }
  void ThenEscape() {
    m_driver.Then([](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
  }
  // Types a name into a file dialog and confirms it.
  void ThenName(const QString& name) {
    m_driver.Then([name](QWidget& window) {
      auto* const edit = window.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
      QApplication::setActiveWindow(&window); // a box has been in between
      TypeText(*edit, name);
      QTest::keyClick(edit, Qt::Key_Return);
    });
  }

  CQtUserInterface m_windows;
  WindowDriver m_driver;
};

TEST_F(Boxes, a_message_is_plain_text_without_its_last_line_end) {
  m_driver.Then([](QWidget& window) {
    auto& box = As<QMessageBox>(window);
    EXPECT_EQ(box.text().toStdString(), "<b>not bold</b> & so on");
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_TRUE(box.detailedText().isEmpty());
    QTest::keyClick(&box, Qt::Key_Return);
  });
  m_windows.ShowMessage(u"<b>not bold</b> & so on\n");
  EXPECT_EQ(m_windows.GetNumberOfErrors(), 0);
}

TEST_F(Boxes, a_long_message_shows_its_beginning_and_the_whole_on_demand) {
  std::string text;
  for (int line = 1; line <= 400; ++line)
    text += "line " + std::to_string(line) + "\n";
  m_driver.Then([&text](QWidget& window) {
    auto& box = As<QMessageBox>(window);
    EXPECT_LT(box.text().size(), 400);
    EXPECT_TRUE(box.text().startsWith(QStringLiteral("line 1\n")));
    EXPECT_EQ(box.detailedText().toStdString() + "\n", text);
    QTest::keyClick(&box, Qt::Key_Escape);
  });
  m_windows.ShowMessage(CString::FromUtf8(text));
}

TEST_F(Boxes, an_error_is_answered_by_its_buttons) {
  ThenPress(QMessageBox::Ok);
  EXPECT_EQ(m_windows.ShowError(u"first"), Answer::Ok);
  ThenPress(QMessageBox::Cancel);
  EXPECT_EQ(m_windows.ShowError(u"second"), Answer::Cancel);
  ThenEscape();
  EXPECT_EQ(m_windows.ShowError(u"third"), Answer::Cancel);
  m_driver.Then([](QWidget& window) { window.close(); });
  EXPECT_EQ(m_windows.ShowError(u"fourth"), Answer::Cancel);
  EXPECT_EQ(m_windows.GetNumberOfErrors(), 4);
}

TEST_F(Boxes, a_policy_answers_without_a_box_and_writes_the_text) {
  for (const Policy policy : {Policy::Continue, Policy::Abort}) {
    m_windows.SetErrorPolicy(policy);
    testing::internal::CaptureStderr();
    const Answer answer = m_windows.ShowError(u"message\nline");
    m_windows.ShowNotice(u"notice");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "message\nline\nnotice\n");
    EXPECT_EQ(answer, policy == Policy::Continue ? Answer::Ok : Answer::Cancel);
  }
  EXPECT_EQ(m_windows.GetNumberOfErrors(), 4);
}

TEST_F(Boxes, a_question_is_yes_only_when_yes_is_pressed) {
  ThenPress(QMessageBox::Yes);
  EXPECT_TRUE(m_windows.AskYesNo(u"Go on?", u"Title"));
  ThenPress(QMessageBox::No);
  EXPECT_FALSE(m_windows.AskYesNo(u"Go on?", CString()));
  ThenEscape();
  EXPECT_FALSE(m_windows.AskYesNo(u"Go on?", CString()));
}

TEST_F(Boxes, a_file_to_open_must_be_there) {
  const TemporaryFolder folder;
  folder.Write("Here.txt", "x");
  CUserInterface::FileRequest request;
  request.initialFolder = CString::FromUtf8(folder.Path("").string());
  request.filter = u"Text|*.txt;*.log|All files (*.*)|*.*||";
  ThenName(QStringLiteral("missing.txt"));
  ThenPress(QMessageBox::Ok); // it says that there is none
  m_driver.Then([](QWidget& window) {
    const QStringList filters = As<QFileDialog>(window).nameFilters();
    EXPECT_EQ(filters.join(QLatin1Char(',')).toStdString(), "Text (*.txt *.log),All files (*)");
    EXPECT_EQ(As<QFileDialog>(window).fileMode(), QFileDialog::ExistingFile);
  });
  ThenName(QStringLiteral("Here.txt"));
  const auto path = m_windows.ChooseFile(request);
  ASSERT_TRUE(path);
  EXPECT_EQ(path->ToUtf8(), folder.Path("Here.txt").string());
}

TEST_F(Boxes, a_file_to_save_gets_the_extension_and_is_not_written_over_unasked) {
  const TemporaryFolder folder;
  folder.Write("old.txt", "x");
  CUserInterface::FileRequest request;
  request.save = true;
  request.fileName = u"offered";
  request.defaultExtension = u"txt";
  request.initialFolder = CString::FromUtf8(folder.Path("").string());
  m_driver.Then([](QWidget& window) {
    auto* const edit = window.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    EXPECT_TRUE(edit->text().startsWith(QStringLiteral("offered"))) << edit->text().toStdString();
  });
  ThenName(QStringLiteral("old"));
  ThenPress(QMessageBox::No); // it asks first
  ThenName(QStringLiteral("new"));
  const auto path = m_windows.ChooseFile(request);
  ASSERT_TRUE(path);
  EXPECT_EQ(path->ToUtf8(), folder.Path("new.txt").string());
  EXPECT_FALSE(std::filesystem::exists(folder.Path("new.txt")));
}

TEST_F(Boxes, a_file_dialog_that_is_dismissed_gives_nothing) {
  ThenEscape();
  EXPECT_FALSE(m_windows.ChooseFile({}));
}

TEST_F(Boxes, a_menu_counts_its_separators) {
  CStringArray entries;
  for (const char16_t* entry : {u"one", u"-", u"&three"})
    entries.Add(entry);
  m_driver.Then([](QWidget& menu) {
    EXPECT_TRUE(As<QMenu>(menu).actions().at(1)->isSeparator());
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Return);
  });
  EXPECT_EQ(m_windows.ShowPopupMenu(entries), 2);
  ThenEscape();
  EXPECT_EQ(m_windows.ShowPopupMenu(entries), -1);
}

TEST_F(Boxes, a_sound_is_never_waited_for) {
  const TemporaryFolder folder;
  folder.Write("noise.wav", "no sound at all");
  QElapsedTimer clock;
  clock.start();
  m_windows.PlaySoundFile(u"/no/such/file.wav");
  m_windows.PlaySoundFile(CString::FromUtf8(folder.Path("noise.wav").string()));
  m_windows.PlaySoundFile(CString());
  EXPECT_LT(clock.elapsed(), 3000);
}

TEST_F(Boxes, timers_tick_until_they_are_stopped_by_their_own_tick_too) {
  int ticks = 0;
  int others = 0;
  unsigned own = 0;
  own = m_windows.StartTimer(2, [&] {
    if (++ticks == 3)
      m_windows.StopTimer(own);
  });
  const unsigned other = m_windows.StartTimer(0, [&] { ++others; });
  EXPECT_NE(own, 0U);
  EXPECT_NE(own, other);
  EXPECT_TRUE(QTest::qWaitFor([&] { return ticks >= 3 && others > 3; }, 10000));
  QTest::qWait(20);
  EXPECT_EQ(ticks, 3);
  m_windows.StopTimer(other);
  m_windows.StopTimer(4711);
  const int until = others;
  QTest::qWait(20);
  EXPECT_EQ(others, until);
}

TEST_F(Boxes, serving_lasts_until_no_timer_runs_and_throws_what_a_timer_threw) {
  m_windows.ServeUntilClosed(); // nothing to serve
  int ticks = 0;
  unsigned timer = m_windows.StartTimer(2, [&] {
    if (++ticks == 3)
      m_windows.StopTimer(timer);
  });
  m_windows.ServeUntilClosed();
  EXPECT_EQ(ticks, 3);
  timer = m_windows.StartTimer(2, [] { throw std::runtime_error("of a tick"); });
  EXPECT_THROW(m_windows.ServeUntilClosed(), std::runtime_error);
  m_windows.StopTimer(timer);
}

TEST_F(Boxes, serving_lasts_while_a_window_is_open) {
  QWidget window;
  window.show();
  QTimer::singleShot(30, &window, [&window] { window.close(); });
  QElapsedTimer clock;
  clock.start();
  m_windows.ServeUntilClosed();
  EXPECT_GE(clock.elapsed(), 25);
}

TEST_F(Boxes, a_template_that_cannot_be_read_gives_no_window) {
  class Silent : public CDialogEvents {
    void OnOpened() override {}
    void OnCommand(int, int) override {}
    void OnNotify(int) override {}
    void OnMenu(int, int) override {}
  } events;
  CDialogDescription description;
  description.templates.emplace_back(7);
  EXPECT_EQ(m_windows.CreateDialogWindow(description, events), nullptr);
}
