// Every kind of control, by the events of a keyboard and a mouse.
#include "qt/window_test.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSlider>
#include <QTabBar>
#include <QTabWidget>
#include <QTreeWidget>

class Controls : public WindowTest {};

TEST_F(Controls, of_every_kind_are_native_widgets) {
  struct Row {
    const char* keyword;
    const char* widget;
  };
  const Row rows[] = {
      {"button", "QPushButton"},     {"edittext", "QLineEdit"},           {"checkbox", "QCheckBox"},
      {"listbox", "QListWidget"},    {"okbutton", "QPushButton"},         {"statictext", "QLabel"},
      {"bitmap", "QLabel"},          {"groupbox", "QGroupBox"},           {"multilistbox", "QListWidget"},
      {"datetime", "QDateTimeEdit"}, {"editmultiline", "QPlainTextEdit"}, {"cancelbutton", "QPushButton"},
      {"combobox", "QComboBox"},     {"editnumber", "QLineEdit"},         {"radiogroup", "QRadioButton"},
      {"treeview", "QTreeWidget"},   {"sliderhorz", "QSlider"},           {"slidervert", "QSlider"},
      {"tabcontrol", "QTabWidget"},
  };
  std::string controls;
  int id = 100;
  for (const Row& row : rows)
    controls += std::string("control ") + row.keyword + " \"\", " + std::to_string(id++) + ", 0, 0, 50, 12\n";
  Then([&](QWidget& window) {
    int at = 100;
    for (const Row& row : rows) {
      const std::string keyword = row.keyword;
      const int place = at++;
      QWidget* const control = ControlOf(window, keyword == "okbutton" ? 1 : keyword == "cancelbutton" ? 2 : place);
      ASSERT_NE(control, nullptr) << keyword;
      EXPECT_TRUE(control->inherits(row.widget)) << keyword << ": " << control->metaObject()->className();
      EXPECT_TRUE(control->isVisible()) << keyword;
    }
  });
  RunControls(controls);
}

TEST_F(Controls, a_button_is_clicked_by_mouse_space_and_mnemonic) {
  ThenClick(10);
  ThenKey(10, Qt::Key_Space);
  m_driver.ThenSlowly([](QWidget& window) { QTest::keyClick(ControlOf(window, 11), Qt::Key_G, Qt::AltModifier); });
  EXPECT_EQ(RunControls("control button \"&Go\", 10, 5, 5, 40, 14, \"show\"\n"
                        "control edittext \"\", 11, 5, 25, 40, 14"),
            "0\n0\n0\n");
}

TEST_F(Controls, a_check_box_changes_state_before_it_tells) {
  ThenClick(10);
  ThenKey(10, Qt::Key_Space);
  EXPECT_EQ(RunControls("control checkbox \"On\", 10, 5, 5, 60, 12, \"show\""), "1\n0\n");
}

TEST_F(Controls, arrow_keys_go_round_the_radio_buttons_of_a_group) {
  ThenClick(10);
  ThenKey(10, Qt::Key_Down);
  ThenKey(11, Qt::Key_Down); // round to the first
  ThenKey(10, Qt::Key_Up);
  ThenClick(12); // another group
  EXPECT_EQ(Run("dialog \"Test\", 0, 0, 200, 100\n"
                "control groupbox \"A\", 20, 0, 0, 90, 50\n"
                "control radiogroup \"a\", 10, 5, 10, 60, 12, \"tell\"\n"
                "control radiogroup \"b\", 11, 5, 25, 60, 12, \"tell\"\n"
                "control groupbox \"B\", 21, 100, 0, 90, 50\n"
                "control radiogroup \"c\", 12, 105, 10, 60, 12, \"leave\"\n"
                "enddialog\nend\n"
                "sub tell(v)\nprint controlvalue(10); controlvalue(11); controlvalue(12)\nendsub\n"
                "sub leave(v)\nprint controlvalue(10); controlvalue(11); controlvalue(12)\nclosedialog\nendsub\n"),
            "100\n010\n100\n010\n011\n");
}

TEST_F(Controls, a_script_that_checks_a_radio_button_unchecks_its_group) {
  ThenClick(12);
  EXPECT_EQ(RunControls("control radiogroup \"a\", 10, 5, 10, 60, 12\n"
                        "control radiogroup \"b\", 11, 5, 25, 60, 12\n"
                        "control button \"c\", 12, 5, 40, 60, 12, \"show\"",
                        "alter 10\nvalue 1\nendalter\nalter 11\nvalue 1\nendalter\n"
                        "print controlvalue(10); controlvalue(11)\n"
                        "alter 11\nvalue 0\nendalter\nprint controlvalue(10); controlvalue(11)"),
            "01\n00\n0\n");
}

TEST_F(Controls, an_edit_tells_every_change_of_its_text) {
  Then([](QWidget& window) { QTest::keyClicks(ControlOf(window, 10), QStringLiteral("ab")); });
  ThenKey(10, Qt::Key_Backspace);
  EXPECT_EQ(RunControls("control edittext \"x\", 10, 5, 5, 60, 12, \"show\"", "alter 10\ntext \"\"\nendalter"),
            "a\nab\na\n");
}

TEST_F(Controls, a_number_field_takes_digits_only) {
  Then([](QWidget& window) { QTest::keyClicks(ControlOf(window, 10), QStringLiteral("1a-2.")); });
  Then([](QWidget& window) { TypeText(*ControlOf(window, 10), QStringLiteral("seven")); });
  EXPECT_EQ(RunControls("control editnumber \"\", 10, 5, 5, 60, 12, \"show\""), "1\n12\n");
}

TEST_F(Controls, enter_makes_a_line_in_a_multi_line_edit) {
  Then([](QWidget& window) {
    QTest::keyClicks(ControlOf(window, 10), QStringLiteral("a"));
    QTest::keyClick(ControlOf(window, 10), Qt::Key_Return);
    QTest::keyClicks(ControlOf(window, 10), QStringLiteral("b"));
  });
  ThenClick(11);
  EXPECT_EQ(RunControls("control editmultiline \"\", 10, 5, 5, 60, 40\n"
                        "control button \"Read\", 11, 5, 50, 60, 12, \"readit\"\n",
                        "endsub\nsub readit(v)\nprint len(controlvalue(10)); controlvalue(10)"),
            "3a\nb\n");
}

TEST_F(Controls, a_multi_line_edit_keeps_what_a_script_has_put_in) {
  Then([](QWidget& window) { EXPECT_EQ(ControlOf<QPlainTextEdit>(window, 10)->toPlainText().toStdString(), "a\nb"); });
  EXPECT_EQ(RunControls("control editmultiline \"\", 10, 5, 5, 60, 40",
                        "alter 10\ntext \"a\" + format(13, \"%c\") + format(10, \"%c\") + \"b\"\nendalter\n"
                        "print len(controlvalue(10))"),
            "4\n");
}

TEST_F(Controls, a_list_follows_the_arrow_keys) {
  ThenKey(10, Qt::Key_Down);
  ThenKey(10, Qt::Key_Down);
  ThenKey(10, Qt::Key_Up);
  EXPECT_EQ(RunControls("control listbox \"\", 10, 5, 5, 60, 60, \"show\"",
                        "alter 10\nvalue \"one\"\nvalue \"two\"\nvalue \"three\"\nselection 0\nendalter"),
            "two\nthree\ntwo\n");
}

TEST_F(Controls, a_multiple_list_toggles_each_item) {
  for (const int index : {2, 0, 2})
    Then([index](QWidget& window) { SelectItem(*ControlOf(window, 10), index); });
  EXPECT_EQ(RunControls("control multilistbox \"\", 10, 5, 5, 60, 60, \"tell\"",
                        "alter 10\nvalue \"one\"\nvalue \"two\"\nvalue \"three\"\nendalter\nendsub\n"
                        "sub tell(v)\nx = controlvalue(10, \"selection\")\nprint v; ubound(\"x\")"),
            "three1\none2\nthree1\n");
}

TEST_F(Controls, a_combo_box_tells_what_is_chosen_by_keys_and_from_its_list) {
  ThenKey(10, Qt::Key_Down);
  Then([](QWidget& window) { SelectItem(*ControlOf(window, 10), 2); });
  Then([](QWidget& window) { SelectItem(*ControlOf(window, 10), 2); }); // no change
  EXPECT_EQ(RunControls("control combobox \"\", 10, 5, 5, 60, 60, \"show\"",
                        "alter 10\nvalue \"one\"\nvalue \"two\"\nvalue \"three\"\nendalter\n"
                        "print controlvalue(10, \"selection\")"),
            "-1\none\nthree\n");
}

TEST_F(Controls, a_tree_opens_and_gives_the_path) {
  Then([](QWidget& window) { SelectItem(*ControlOf(window, 10), 0); });
  ThenKey(10, Qt::Key_Right);
  ThenKey(10, Qt::Key_Down);
  EXPECT_EQ(RunControls("control treeview \"\", 10, 5, 5, 90, 90, \"show\"",
                        "alter 10\nvalue \"world\\asia\"\nvalue \"moon\"\nendalter"),
            "world\nworld\\asia\n");
}

TEST_F(Controls, a_slider_moves_by_keys_and_down_is_more_for_an_upright_one) {
  ThenKey(10, Qt::Key_Right);
  ThenKey(10, Qt::Key_PageUp);
  ThenKey(11, Qt::Key_Down);
  ThenKey(11, Qt::Key_End);
  EXPECT_EQ(RunControls("control sliderhorz \"\", 10, 5, 5, 90, 20, \"show\"\n"
                        "control slidervert \"\", 11, 100, 5, 20, 90, \"show\""),
            "1\n11\n1\n100\n");
}

TEST_F(Controls, sliders_have_their_ticks_above_and_on_the_left) {
  Then([](QWidget& window) {
    const auto& level = *ControlOf<QSlider>(window, 10);
    const auto& upright = *ControlOf<QSlider>(window, 11);
    EXPECT_EQ(level.orientation(), Qt::Horizontal);
    EXPECT_EQ(level.tickPosition(), QSlider::TicksAbove);
    EXPECT_EQ(upright.orientation(), Qt::Vertical);
    EXPECT_EQ(upright.tickPosition(), QSlider::TicksLeft);
    EXPECT_TRUE(upright.invertedAppearance()); // 0 at the top
  });
  RunControls("control sliderhorz \"\", 10, 5, 5, 90, 20\ncontrol slidervert \"\", 11, 100, 5, 20, 90");
}

TEST_F(Controls, a_date_picker_keeps_the_time_of_its_day) {
  ThenKey(10, Qt::Key_Up);
  Then([](QWidget& window) {
    auto& picker = *ControlOf<QDateTimeEdit>(window, 10);
    EXPECT_TRUE(picker.calendarPopup());
    EXPECT_NE(picker.displayFormat().indexOf(QStringLiteral("yyyy")), -1);
    picker.setDate(QDate(2024, 2, 29));
  });
  const std::string printed = RunControls("control datetime \"\", 10, 5, 5, 90, 14, \"show\"",
                                          "alter 10\nvalue \"2023-03-26 02:30:15\"\nendalter");
  EXPECT_TRUE(printed.ends_with(" 02:30:15\n2024-02-29 02:30:15\n")) << printed; // an hour that summer time skips
}

TEST_F(Controls, a_date_out_of_the_calendars_reach_is_kept) {
  ThenKey(11, Qt::Key_Space);
  EXPECT_EQ(RunControls("control datetime \"\", 10, 5, 5, 90, 14, \"show\"\ncontrol button \"\", 11, 5, 30, 20, 14",
                        "alter 10\nvalue \"0001-02-03 04:05:06\"\nendalter\nprint controlvalue(10)"),
            "0001-02-03 04:05:06\n");
}

TEST_F(Controls, a_tab_control_without_a_choice_takes_the_tab_in_front) {
  Then([](QWidget& window) { SelectItem(*ControlOf(window, 10), 0); });
  Then([](QWidget& window) { SelectItem(*ControlOf(window, 10), 1); });
  EXPECT_EQ(RunControls("control tabcontrol \"\", 10, 5, 5, 150, 90, \"show\"",
                        "alter 10\nvalue \"one\"\nvalue \"two\"\nselection -1\nendalter\nprint controlvalue(10)"),
            "-1\n0\n1\n");
}

TEST_F(Controls, changes_by_the_script_raise_nothing) {
  EXPECT_EQ(RunControls("control edittext \"\", 10, 5, 5, 60, 12, \"show\"\n"
                        "control editmultiline \"\", 11, 5, 5, 60, 12, \"show\"\n"
                        "control checkbox \"\", 12, 5, 5, 60, 12, \"show\"\n"
                        "control listbox \"\", 13, 5, 5, 60, 12, \"show\"\n"
                        "control combobox \"\", 14, 5, 5, 60, 12, \"show\"\n"
                        "control sliderhorz \"\", 15, 5, 5, 60, 12, \"show\"\n"
                        "control datetime \"\", 16, 5, 5, 60, 12, \"show\"\n"
                        "control tabcontrol \"\", 17, 5, 5, 60, 12, \"show\"\n"
                        "control multilistbox \"\", 18, 5, 5, 60, 12, \"show\"\n"
                        "control treeview \"\", 19, 5, 5, 60, 12, \"show\"\n"
                        "control radiogroup \"\", 20, 5, 5, 60, 12, \"show\"",
                        "alter 10\ntext \"a\"\nvalue \"b\"\nclear\nendalter\n"
                        "alter 11\ntext \"a\"\nclear\nendalter\n"
                        "alter 12\nvalue 1\nendalter\n"
                        "alter 13\nvalue \"a\"\nvalue \"b\"\nselection 1\ntext \"a\"\nclear\nendalter\n"
                        "alter 14\nvalue \"a\"\nvalue \"b\"\nselection 1\ntext \"a\"\nclear\nendalter\n"
                        "alter 15\nvalue 40\nendalter\n"
                        "alter 16\nvalue \"2020-01-01 00:00:00\"\nendalter\n"
                        "alter 17\nvalue \"a\"\nvalue \"b\"\nselection 1\nclear\nendalter\n"
                        "alter 18\nvalue \"a\"\nvalue \"b\"\nselection 1\nclear\nendalter\n"
                        "alter 19\nvalue \"a\\b\"\nclear\nendalter\n"
                        "alter 20\nvalue 1\nendalter\n"),
            "");
  EXPECT_TRUE(m_windows.errors.empty());
}
