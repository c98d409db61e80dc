// Places, sizes, fonts and captions: what a dialog looks like.
#include "qt/window_test.h"
#include "ui/qt/dialog_units.h"

#include <QComboBox>
#include <QFontMetricsF>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTextDocumentFragment>

#include <cmath>

using brindle::DialogUnits;

class Layout : public WindowTest {};

TEST_F(Layout, a_dialog_unit_is_a_quarter_of_the_average_width_and_an_eighth_of_the_height) {
  for (const int size : {8, 9, 14, 30}) {
    const QFont font(QStringLiteral("DejaVu Sans"), size);
    const QFontMetricsF metrics(font);
    const double width =
        metrics.horizontalAdvance(QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz")) / 52;
    const DialogUnits units(font);
    EXPECT_EQ(units.Horizontal(400), std::lround(100 * width)) << size;
    EXPECT_EQ(units.Vertical(80), std::lround(10 * metrics.height())) << size;
    EXPECT_EQ(units.Horizontal(0), 0);
    EXPECT_LT(units.Horizontal(-5), 0);
  }
}

TEST_F(Layout, edges_that_meet_in_units_meet_in_pixels) {
  const DialogUnits units(QFont(QStringLiteral("DejaVu Sans"), 9));
  for (int at = 0; at < 200; at += 7) {
    const auto x = static_cast<std::int16_t>(at);
    const QRect left = units.ToPixels({x, x, 7, 7});
    const QRect right = units.ToPixels({static_cast<std::int16_t>(x + 7), static_cast<std::int16_t>(x + 7), 7, 7});
    EXPECT_EQ(left.x() + left.width(), right.x()) << at;
    EXPECT_EQ(left.y() + left.height(), right.y()) << at;
  }
}

TEST_F(Layout, controls_stand_where_the_template_says_in_the_dialogs_font) {
  const DialogUnits units(QFont(QStringLiteral("DejaVu Serif"), 14));
  Then([&units](QWidget& window) {
    EXPECT_EQ(window.font().family().toStdString(), "DejaVu Serif");
    EXPECT_EQ(window.font().pointSize(), 14);
    EXPECT_EQ(ControlOf(window, 10)->geometry(), units.ToPixels({20, 30, 50, 14}));
    EXPECT_EQ(ControlOf(window, 10)->font().pointSize(), 14);
    EXPECT_EQ(window.size(), units.ToPixels({0, 0, 160, 90}).size());
    QTest::keyClick(&window, Qt::Key_Escape);
  });
  Run("dialog \"Test\", 0, 0, 160, 90, 14, \"DejaVu Serif\"\ncontrol button \"b\", 10, 20, 30, 50, 14\nenddialog\n");
}

TEST_F(Layout, alterations_move_resize_hide_and_disable) {
  const DialogUnits units(QApplication::font());
  Then([&units](QWidget& window) {
    EXPECT_EQ(ControlOf(window, 10)->geometry(), units.ToPixels({5, 6, 70, 18}));
    EXPECT_EQ(ControlOf(window, 10)->font().pointSize(), 20);
    EXPECT_EQ(ControlOf(window, 10)->font().family().toStdString(), "DejaVu Serif");
    EXPECT_TRUE(ControlOf(window, 11)->isHidden());
    EXPECT_FALSE(ControlOf(window, 12)->isEnabled());
    EXPECT_EQ(window.windowTitle().toStdString(), "Another");
    EXPECT_EQ(window.size(), units.ToPixels({0, 0, 100, 80}).size());
    EXPECT_EQ(ControlOf<QPushButton>(window, 12)->text().toStdString(), "New");
  });
  RunControls("control edittext \"\", 10, 20, 30, 50, 14\ncontrol button \"b\", 11, 0, 0, 20, 14\n"
              "control button \"c\", 12, 0, 0, 40, 14",
              "alter 10\nposition 5, 6, 70, 18\nfont 20, \"DejaVu Serif\"\nendalter\n"
              "alter 11\nshow 0\nendalter\nalter 12\nenable 0\ntitle \"New\"\nendalter\n"
              "alter window\ntitle \"Another\"\nposition 0, 0, 100, 80\nendalter");
}

TEST_F(Layout, a_menu_bar_takes_no_room_from_the_controls) {
  const DialogUnits units(QApplication::font());
  Then([&units](QWidget& window) {
    const int bar = window.findChild<QMenuBar*>()->height();
    EXPECT_GT(bar, 5);
    EXPECT_EQ(window.height(), units.Vertical(150) + bar);
    EXPECT_EQ(ControlOf(window, 10)->mapTo(&window, QPoint(0, 0)).y(), bar);
  });
  RunControls("control button \"b\", 10, 0, 0, 40, 14", "alter window\nmenuitem \"About\", \"show\"\nendalter");
}

TEST_F(Layout, a_long_caption_is_cut_and_told_whole) {
  const QString caption = QStringLiteral("A caption that no button of this width could ever show");
  Then([&caption](QWidget& window) {
    for (const int id : {10, 12}) {
      const auto& button = *ControlOf<QAbstractButton>(window, id);
      EXPECT_LT(button.fontMetrics().horizontalAdvance(button.text()), button.width()) << id;
      EXPECT_TRUE(button.text().endsWith(QChar(0x2026))) << id;
      EXPECT_EQ(button.toolTip(), caption) << id;
    }
    EXPECT_EQ(ControlOf<QPushButton>(window, 11)->text().toStdString(), "Short");
    EXPECT_TRUE(ControlOf(window, 11)->toolTip().isEmpty());
    EXPECT_TRUE(ControlOf<QLabel>(window, 13)->text().endsWith(QChar(0x2026)));
    EXPECT_EQ(ControlOf<QLabel>(window, 14)->text(), caption); // several lines
    EXPECT_TRUE(ControlOf<QLabel>(window, 14)->wordWrap());
  });
  const std::string text = "\"" + caption.toStdString() + "\"";
  EXPECT_EQ(RunControls("control button " + text + ", 10, 0, 0, 60, 14\ncontrol button \"Short\", 11, 0, 20, 60, 14\n" +
                            "control checkbox " + text + ", 12, 0, 40, 60, 14\ncontrol statictext " + text +
                            ", 13, 0, 60, 60, 9\ncontrol statictext " + text + ", 14, 0, 70, 60, 60",
                        "print controlvalue(10)"),
            caption.toStdString() + "\n");
}

TEST_F(Layout, a_caption_in_a_right_to_left_script_is_read_so) {
  Then([](QWidget& window) {
    for (const int id : {10, 11, 12, 13}) {
      EXPECT_EQ(ControlOf(window, id)->layoutDirection(), Qt::RightToLeft) << id;
      EXPECT_EQ(ControlOf(window, id)->geometry().left(), 0) << id; // and stands where it stood
    }
    EXPECT_EQ(ControlOf(window, 14)->layoutDirection(), Qt::LeftToRight);
  });
  EXPECT_EQ(RunControls("control statictext \"שלום\", 10, 0, 0, 60, 10\ncontrol checkbox \"مرحبا\", 11, 0, 15, 60, 10\n"
                        "control button \"שלום\", 12, 0, 30, 60, 12\ncontrol groupbox \"مرحبا\", 13, 0, 50, 60, 30\n"
                        "control statictext \"left\", 14, 0, 90, 60, 10",
                        "print controlvalue(10)"),
            "שלום\n");
}

TEST_F(Layout, a_signs_text_without_a_control_behind_it_loses_its_mark) {
  Then([](QWidget& window) { EXPECT_EQ(ControlOf<QLabel>(window, 10)->text().toStdString(), "Salt & pepper"); });
  RunControls("control statictext \"&Salt && pepper\", 10, 0, 0, 90, 10");
}

TEST_F(Layout, a_combo_box_is_one_line_high_whatever_its_list_takes) {
  Then([](QWidget& window) {
    auto& combo = *ControlOf<QComboBox>(window, 10);
    EXPECT_EQ(combo.height(), combo.sizeHint().height());
    EXPECT_GE(combo.maxVisibleItems(), 3);
  });
  RunControls("control combobox \"\", 10, 0, 0, 60, 80");
}

TEST_F(Layout, styles_of_the_table_are_honoured) {
  Then([](QWidget& window) {
    EXPECT_TRUE(ControlOf<QLineEdit>(window, 10)->hasFrame());
    EXPECT_EQ(ControlOf<QPlainTextEdit>(window, 11)->lineWrapMode(), QPlainTextEdit::NoWrap);
    EXPECT_EQ(ControlOf<QPlainTextEdit>(window, 11)->verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    EXPECT_EQ(ControlOf<QListWidget>(window, 12)->horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    EXPECT_EQ(ControlOf<QListWidget>(window, 12)->selectionMode(), QAbstractItemView::SingleSelection);
    EXPECT_EQ(ControlOf<QListWidget>(window, 13)->selectionMode(), QAbstractItemView::MultiSelection);
    EXPECT_TRUE(ControlOf<QPushButton>(window, 1)->isDefault());
    EXPECT_FALSE(ControlOf<QPushButton>(window, 14)->isDefault());
    EXPECT_EQ(ControlOf(window, 15)->focusPolicy(), Qt::NoFocus);
  });
  RunControls("control edittext \"\", 10, 0, 0, 60, 12\ncontrol editmultiline \"\", 11, 0, 0, 60, 12\n"
              "control listbox \"\", 12, 0, 0, 60, 12\ncontrol multilistbox \"\", 13, 0, 0, 60, 12\n"
              "control okbutton \"OK\", 1, 0, 0, 60, 12\ncontrol button \"b\", 14, 0, 0, 60, 12\n"
              "control groupbox \"g\", 15, 0, 0, 60, 12");
}

TEST_F(Layout, a_pictures_caption_is_its_path) {
  QPixmap picture(40, 20);
  picture.fill(Qt::red);
  ASSERT_TRUE(picture.save(QString::fromStdString(m_folder.Path("Red.png").string())));
  const std::string path = m_folder.Path("red.PNG").string(); // paths are looked up without regard to case
  Then([](QWidget& window) {
    EXPECT_EQ(ControlOf<QLabel>(window, 10)->pixmap().size(), QSize(40, 20));
    const QPixmap scaled = ControlOf<QLabel>(window, 11)->pixmap();
    EXPECT_LE(scaled.width(), ControlOf(window, 11)->width());
    EXPECT_NEAR(scaled.width(), 2 * scaled.height(), 1);
    EXPECT_TRUE(ControlOf<QLabel>(window, 12)->pixmap().isNull());
    EXPECT_EQ(ControlOf<QLabel>(window, 13)->pixmap().size(), QSize(40, 20));
  });
  RunControls("control bitmap \"" + path + "\", 10, 0, 0, 60, 60\ncontrol bitmap \"" + path +
                  "\", 11, 0, 70, 10, 10\ncontrol bitmap \"nowhere.png\", 12, 20, 70, 10, 10\n"
                  "control bitmap \"\", 13, 60, 0, 60, 60",
              "alter 13\ntitle \"" + path + "\"\nendalter");
}

TEST_F(Layout, a_picture_comes_from_below_the_root) {
  QPixmap picture(40, 20);
  picture.fill(Qt::red);
  std::filesystem::create_directory(m_folder.Path("root"));
  for (const char* name : {"outside.png", "root/inside.png"})
    ASSERT_TRUE(picture.save(QString::fromStdString(m_folder.Path(name).string())));
  std::filesystem::create_symlink("../outside.png", m_folder.Path("root/link.png"));
  std::filesystem::create_symlink(m_folder.Path("outside.png"), m_folder.Path("root/absolute.png"));
  const std::string outside = m_folder.Path("outside.png").string();
  // A drawing below the root, and a text, that name the picture outside.
  m_folder.Write("root/drawing.svg",
                 "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
                 "width=\"40\" height=\"20\"><image xlink:href=\"" +
                     outside + "\" width=\"40\" height=\"20\"/></svg>");
  const std::string markup = "<img src='" + outside + "'>";
  CExecutionLimits limits;
  limits.root = CString::FromUtf8(m_folder.Path("root").string());
  ASSERT_TRUE(m_pInterpreter->SetLimits(limits));
  m_windows.SetErrorPolicy(CQtUserInterface::ErrorPolicy::Continue);
  Then([&](QWidget& window) {
    EXPECT_EQ(ControlOf<QLabel>(window, 10)->pixmap().size(), QSize(40, 20));
    for (const int id : {11, 12, 13, 14, 15})
      EXPECT_TRUE(ControlOf<QLabel>(window, id)->pixmap().isNull()) << id;
    for (const int id : {16, 17}) {
      const QString shown = ControlOf(window, id)->toolTip();
      EXPECT_EQ(QTextDocumentFragment::fromHtml(shown).toPlainText().toStdString(), markup) << id;
    }
  });
  RunControls("control bitmap \"inside.png\", 10, 0, 0, 60, 60\ncontrol bitmap \"" + outside +
                  "\", 11, 0, 70, 10, 10\ncontrol bitmap \"drawing.svg\", 12, 20, 70, 10, 10\n"
                  "control bitmap \"\", 13, 60, 0, 60, 60\ncontrol bitmap \"\", 14, 60, 0, 60, 60\n"
                  "control bitmap \"\", 15, 60, 0, 60, 60\ncontrol statictext \"" +
                  markup + "\", 16, 0, 0, 9, 9\ncontrol button \"" + markup + "\", 17, 0, 0, 9, 9",
              "alter 13\ntitle \"..\\outside.png\"\nendalter\nalter 14\ntitle \"link.png\"\nendalter\n"
              "alter 15\ntitle \"absolute.png\"\nendalter\nalter 11\ntitle \"" +
                  outside + "\"\nendalter");
  EXPECT_EQ(m_windows.errors.size(), 3U);
  for (const std::string& error : m_windows.errors)
    EXPECT_TRUE(error.starts_with("Not allowed\n")) << error;
}

TEST_F(Layout, a_dialog_larger_than_the_screen_can_be_scrolled) {
  Then([](QWidget& window) {
    const QSize screen = window.screen()->availableSize();
    EXPECT_LE(window.width(), screen.width());
    EXPECT_LE(window.height(), screen.height());
    auto* const area = window.findChild<QScrollArea*>();
    EXPECT_GT(area->widget()->height(), area->height());
    EXPECT_TRUE(ControlOf(window, 11)->visibleRegion().isEmpty());
    QTest::keyClick(ControlOf(window, 10), Qt::Key_Tab); // the view follows the focus
    EXPECT_FALSE(ControlOf(window, 11)->visibleRegion().isEmpty());
    QTest::keyClick(&window, Qt::Key_Escape);
  });
  Run("dialog \"Large\", 0, 0, 3000, 3000\ncontrol button \"a\", 10, 0, 0, 50, 14\n"
      "control button \"b\", 11, 2900, 2900, 50, 14\nenddialog\n");
}
