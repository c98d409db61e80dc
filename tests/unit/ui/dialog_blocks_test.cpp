// The blocks of dialogs and alterations as text: what is skipped, what is refused, and where the run goes on.
#include "ui/dialog_script_test.h"

namespace {

using Strings = std::vector<std::string>;

class DialogBlocks : public DialogScriptTest {};

constexpr const char* kEnd = "enddialog\nprint \"on\"\nend\n";

TEST_F(DialogBlocks, faults_in_a_dialog_are_reported_and_the_block_is_left) {
  struct Row {
    const char* name;
    const char* lines;
    int error;
  };
  const Row rows[] = {
      {"no parameter", "dialog\n", 1},
      {"one parameter", "dialog \"t\"\n", 1},
      {"four parameters", "dialog \"t\", 1, 2, 3\n", 1},
      {"no kind", "dialog \"t\", 1, 2, 3, 4\ncontrol\n", 1},
      {"kind is a name", "dialog \"t\", 1, 2, 3, 4\ncontrol knob \"c\", 10, 1, 2, 3, 4\n", 1},
      {"kind is a text", "dialog \"t\", 1, 2, 3, 4\ncontrol \"button\" \"c\", 10, 1, 2, 3, 4\n", 1},
      {"kind is a number", "dialog \"t\", 1, 2, 3, 4\ncontrol 17 \"c\", 10, 1, 2, 3, 4\n", 1},
      {"kind is window", "dialog \"t\", 1, 2, 3, 4\ncontrol window \"c\", 10, 1, 2, 3, 4\n", 41},
      {"kind is font", "dialog \"t\", 1, 2, 3, 4\ncontrol font \"c\", 10, 1, 2, 3, 4\n", 41},
      {"kind is control", "dialog \"t\", 1, 2, 3, 4\ncontrol control \"c\", 10, 1, 2, 3, 4\n", 41},
      {"kind without parameters", "dialog \"t\", 1, 2, 3, 4\ncontrol button\n", 1},
      {"wrong kind without parameters", "dialog \"t\", 1, 2, 3, 4\ncontrol title\n", 41},
      {"five parameters", "dialog \"t\", 1, 2, 3, 4\ncontrol button \"c\", 10, 1, 2, 3\n", 1},
      {"oninit alone", "dialog \"t\", 1, 2, 3, 4\noninit\n", 1},
      {"onexit alone", "dialog \"t\", 1, 2, 3, 4\nonexit\n", 1},
      {"oninit with a comment", "dialog \"t\", 1, 2, 3, 4\noninit # nothing\n", 1},
      {"oninit with an empty text", "dialog \"t\", 1, 2, 3, 4\noninit \"\"\n", 1},
      {"sheet without a title", "propertysheet\npage \"p\"\nendpage\n", 1},
      {"sheet without pages", "propertysheet \"s\"\n", 42},
      {"page without a title", "propertysheet \"s\"\npage\nendpage\n", 1},
      {"wrong control of a page", "propertysheet \"s\"\npage \"p\"\ncontrol window \"c\", 1, 1, 1, 1, 1\nendpage\n",
       41},
      {"few parameters on a page", "propertysheet \"s\"\npage \"p\"\ncontrol button \"c\", 1\nendpage\n", 1},
      {"oninit of a page", "propertysheet \"s\"\npage \"p\"\noninit\nendpage\n", 1},
  };
  for (const Row& row : rows) {
    m_dialogs.Forget();
    // What follows the fault in the block is never run, nor taken for another one.
    Run(std::string(row.lines) + "control button \"later\", 11, 1, 2, 3, 4\n# enddialog\nrem enddialog\n" + kEnd);
    EXPECT_EQ(Errors(), Numbers{row.error}) << row.name;
    EXPECT_EQ(Output(), "on\n") << row.name;
    EXPECT_TRUE(m_dialogs.descriptions.empty()) << row.name;
    m_dialogs.descriptions.clear();
  }
}

TEST_F(DialogBlocks, cancelled_fault_ends_the_run) {
  m_dialogs.CancelErrors();
  Run(std::string("dialog \"t\", 1\n") + kEnd);
  EXPECT_EQ(Errors(), Numbers{1});
  EXPECT_EQ(Output(), "");
}

TEST_F(DialogBlocks, comments_and_other_words_in_a_block_are_skipped) {
  Run(std::string("dialog \"t\", 1, 2, 3, 4 # enddialog\n"
                  "# control window\n"
                  "rem control window \"c\", 1, 1, 1, 1, 1\n"
                  "rem enddialog\n"
                  "\n"
                  "_ . unheard 12 \"control\" \"enddialog\" title button\n"
                  "control button \"c\", 10, 1, 2, 3, 4 # , \"handler\"\n"
                  "print \"never\"\n"
                  "control edittext \"e\", 11, 1, 2, 3, 4, \"handler\" : control statictext \"s\", 12, 1, 1, 1, 1\n") +
      kEnd);
  EXPECT_EQ(Errors(), Numbers());
  EXPECT_EQ(Output(), "on\n");
  ASSERT_EQ(m_dialogs.descriptions.size(), 1U);
  const auto read = brindle::ReadDialogTemplate(m_dialogs.descriptions[0].templates.at(0));
  ASSERT_TRUE(read.has_value());
  ASSERT_EQ(read->items.size(), 3U);
  EXPECT_EQ(read->items[0].caption, CString(u"c"));
  EXPECT_EQ(read->items[1].caption, CString(u"e"));
  EXPECT_EQ(read->items[2].caption, CString(u"s"));
}

TEST_F(DialogBlocks, words_ignore_case) {
  Run("DIALOG \"t\", 1, 2, 3, 4\nControl OkButton \"c\", 10, 1, 2, 3, 4\nEndDialog\nprint \"on\"\n");
  EXPECT_EQ(Errors(), Numbers());
  EXPECT_EQ(m_dialogs.descriptions.size(), 1U);
}

TEST_F(DialogBlocks, end_of_the_program_ends_a_block_as_well) {
  Run("print \"on\"\ndialog \"t\", 1, 2, 3, 4\ncontrol button \"c\", 10, 1, 2, 3, 4");
  EXPECT_EQ(m_dialogs.descriptions.size(), 1U);
  Run("print \"on\"\npropertysheet \"t\"\npage \"p\"\ncontrol button \"c\", 10, 1, 2, 3, 4", "sheet.bas");
  EXPECT_EQ(m_dialogs.descriptions.size(), 2U);
  EXPECT_EQ(Errors(), Numbers());
}

TEST_F(DialogBlocks, page_without_its_end_ends_with_the_sheet) {
  Run(std::string("propertysheet \"t\"\npage \"p\"\ncontrol button \"c\", 10, 1, 2, 3, 4\n") + kEnd);
  EXPECT_EQ(Errors(), Numbers());
  EXPECT_EQ(Output(), "on\n");
  ASSERT_EQ(m_dialogs.descriptions.size(), 1U);
  EXPECT_EQ(m_dialogs.descriptions[0].templates.size(), 1U);
}

TEST_F(DialogBlocks, parameters_may_be_expressions_and_calls) {
  Run("w = 10\ndialog \"a\" + \"b\", width(1), w + 1, (w + 2) * 2, 0 - w\n"
      "control button \"c\" + w, w * 2, width(2), 0, 0, 0, \"hand\" + \"ler\"\nenddialog\nend\n"
      "function width(n)\nwidth = n * 100\nendfunction\n");
  EXPECT_EQ(Errors(), Numbers());
  ASSERT_EQ(m_dialogs.descriptions.size(), 1U);
  const auto read = brindle::ReadDialogTemplate(m_dialogs.descriptions[0].templates.at(0));
  ASSERT_TRUE(read.has_value());
  EXPECT_EQ(read->header.title, CString(u"ab"));
  EXPECT_EQ(read->header.rectangle.y, 11);
  EXPECT_EQ(read->header.rectangle.width, 24);
  EXPECT_EQ(read->header.rectangle.height, -10);
  ASSERT_EQ(read->items.size(), 1U);
  EXPECT_EQ(read->items[0].id, 20);
}

class Alterations : public DialogScriptTest {
protected:
  // Runs the lines as a handler of a dialog that has one control of the kind, id 10.
  void Alter(const std::string& kind, const std::string& lines) {
    m_dialogs.Forget();
    m_dialogs.calls.clear();
    Run("dialog \"D\", 0, 0, 1, 1\ncontrol " + kind +
        " \"caption\", 10, 0, 0, 1, 1\noninit change\nenddialog\nend\n"
        "sub change(v)\n" +
        lines + "\nendsub\n");
  }
};

TEST_F(Alterations, lines_reach_the_window) {
  Alter("button", "alter 10\n"
                  "title \"new\" # comment\n"
                  "# nothing here\n"
                  "rem nor here\n"
                  "\n"
                  "position 1, 2.9, 0 - 3, 4\n"
                  "font 9.9, \"Sans\"\n"
                  "show 0\nshow 1\nenable 0\nenable 5\n"
                  "menuitem \"entry\", \"handler\"\n"
                  "endalter\n"
                  "alter control 5 + 5\ntitle \"again\"\nendalter\n"
                  "alter window\n"
                  "title \"window\"\nposition 5, 6, 7, 8\nfont 8, \"Mono\"\nshow 1\nenable 0\nmenuitem \"m\", \"h\"\n"
                  "endalter\nprint \"on\"");
  EXPECT_EQ(Errors(), Numbers());
  EXPECT_EQ(Output(), "on\n");
  EXPECT_EQ(m_dialogs.calls,
            (Strings{"opened D", "text 10 new", "move 10 1 2 -3 4", "font 10 9 Sans", "hide 10", "show 10",
                     "disable 10", "enable 10", "menu 10 entry", "text 10 again", "text -1 window", "move -1 5 6 7 8",
                     "font -1 8 Mono", "show -1", "disable -1", "menu -1 m", "closed D 2"}));
}

TEST_F(Alterations, each_line_fits_its_kinds_and_no_other) {
  struct Row {
    const char* line;
    std::vector<std::string> kinds;
  };
  const Strings edits = {"edittext", "editmultiline", "editnumber"};
  const Row rows[] = {
      {"text \"b\"", {"edittext", "editmultiline", "editnumber", "statictext", "listbox", "multilistbox", "combobox"}},
      {"value 1",
       {"edittext", "editmultiline", "editnumber", "checkbox", "radiogroup", "sliderhorz", "slidervert", "listbox",
        "multilistbox", "combobox", "tabcontrol", "treeview"}},
      {"value \"2024-02-29 00:00:00\"",
       {"edittext", "editmultiline", "editnumber", "checkbox", "radiogroup", "sliderhorz", "slidervert", "listbox",
        "multilistbox", "combobox", "tabcontrol", "treeview", "datetime"}},
      {"selection 0", {"listbox", "multilistbox", "combobox", "tabcontrol"}},
      {"clear",
       {"edittext", "editmultiline", "editnumber", "listbox", "multilistbox", "combobox", "tabcontrol", "treeview"}},
      {"print \"x\"", {}},
      {"unheard 1", {}},
      {"control 1", {}},
      {"button \"x\"", {}},
  };
  const Strings kinds = {"button",     "edittext",     "checkbox",   "listbox",      "okbutton",
                         "statictext", "bitmap",       "groupbox",   "multilistbox", "datetime",
                         "combobox",   "cancelbutton", "editnumber", "radiogroup",   "editmultiline",
                         "treeview",   "sliderhorz",   "slidervert", "tabcontrol"};
  const auto alter = [&](const std::string& kind, const std::string& line) {
    const std::string id = kind == "okbutton" ? "1" : kind == "cancelbutton" ? "2" : "10";
    // Lists get an item "b", so that there is one to be selected.
    const bool isList = kind == "listbox" || kind == "multilistbox" || kind == "combobox" || kind == "tabcontrol";
    Alter(kind, (isList ? "alter " + id + "\nvalue \"b\"\nendalter\n" : std::string()) + "alter " + id + "\n" + line +
                    "\nendalter\nprint \"on\"");
  };
  for (const Row& row : rows) {
    for (const std::string& kind : kinds) {
      const bool fits = std::find(row.kinds.begin(), row.kinds.end(), kind) != row.kinds.end();
      alter(kind, row.line);
      EXPECT_EQ(Errors(), fits ? Numbers() : Numbers{45}) << row.line << " of " << kind;
      EXPECT_EQ(Output(), "on\n");
    }
  }
  for (const char* line : {"text \"b\"", "value 1", "selection 0", "clear"}) {
    Alter("button", std::string("alter window\n") + line + "\nendalter\nprint \"on\"");
    EXPECT_EQ(Errors(), Numbers{45}) << line;
  }
}

TEST_F(Alterations, bad_operands_report_45) {
  struct Row {
    const char* kind;
    const char* line;
  };
  const Row rows[] = {
      {"edittext", "title"},
      {"edittext", "text"},
      {"edittext", "text # comment"},
      {"edittext", "value"},
      {"edittext", "show"},
      {"edittext", "enable"},
      {"edittext", "position 1, 2, 3"},
      {"edittext", "font 9"},
      {"edittext", "menuitem \"a\""},
      {"datetime", "value \"yesterday\""},
      {"datetime", "value \"2023-02-29 00:00:00\""},
      {"datetime", "value 5"},
      {"listbox", "selection 0"},
      {"listbox", "selection 0 - 2"},
      {"listbox", "text \"not there\""},
      {"combobox", "text \"not there\""},
      {"tabcontrol", "selection 0"},
  };
  for (const Row& row : rows) {
    Alter(row.kind, std::string("alter 10\n") + row.line + "\ntitle \"never\"\nendalter\nprint \"on\"");
    EXPECT_EQ(Errors(), Numbers{45}) << row.line;
    EXPECT_EQ(Output(), "on\n") << row.line;
    EXPECT_EQ(m_dialogs.calls, (Strings{"opened D", "closed D 2"})) << row.line;
  }
}

TEST_F(Alterations, operand_that_is_not_set_reports_45) {
  for (const char* line : {"title u", "value u", "show u", "position 1, 2, 3, u", "font 9, u", "menuitem \"a\", u"}) {
    Alter("edittext", std::string("dim u\nalter 10\n") + line + "\nendalter\nprint \"on\"");
    EXPECT_EQ(Errors().back(), 45) << line;
    EXPECT_EQ(Output(), "on\n") << line;
    EXPECT_EQ(m_dialogs.calls, (Strings{"opened D", "closed D 2"})) << line;
  }
}

TEST_F(Alterations, unknown_id_reports_44) {
  for (const char* id : {"11", "0 - 1", "0", "control 11", "65546", "\"\"", "\"x\""}) {
    Alter("edittext", std::string("alter ") + id + "\ntitle \"never\"\nendalter\nprint \"on\"");
    EXPECT_EQ(Errors(), Numbers{44}) << id;
    EXPECT_EQ(Output(), "on\n") << id;
  }
}

TEST_F(Alterations, without_a_dialog_43_is_reported) {
  for (const char* target : {"10", "control 10", "window"}) {
    m_dialogs.Forget();
    Run(std::string("alter ") + target + "\ntitle \"x\"\n# endalter\nrem endalter\nendalter\nprint \"on\"\n");
    EXPECT_EQ(Errors(), Numbers{43}) << target;
    EXPECT_EQ(Output(), "on\n") << target;
  }
}

TEST_F(Alterations, selection_takes_every_index_of_its_value) {
  std::vector<int> selected = {-1};
  Then([&](PlayedDialog& dialog) { selected = dialog.GetSelection(10); });
  Alter("multilistbox", "dim many[2]\nmany[0] = 2\nmany[1] = 0\n"
                        "alter 10\nvalue \"a\"\nvalue \"b\"\nvalue \"c\"\nselection many\nendalter");
  EXPECT_EQ(Errors(), Numbers());
  EXPECT_EQ(selected, (std::vector<int>{2, 0}));
  Then([&](PlayedDialog& dialog) { selected = dialog.GetSelection(10); });
  Alter("multilistbox", "alter 10\nvalue \"a\"\nselection 0\nselection 0 - 1\nendalter");
  EXPECT_EQ(selected, std::vector<int>());
  Alter("listbox", "dim many[2]\nmany[0] = 1\nmany[1] = 0\n"
                   "alter 10\nvalue \"a\"\nvalue \"b\"\nselection many\nendalter");
  EXPECT_EQ(Errors(), Numbers{45});
}

TEST_F(Alterations, value_adds_every_item_of_an_array) {
  std::vector<CString> items;
  Then([&](PlayedDialog& dialog) { items = dialog.At(10).items; });
  Alter("listbox",
        "dim many[3]\nmany[0] = \"a\"\nmany[1] = 2\nmany[2] = \"c\"\nalter 10\nvalue many\nvalue \"d\"\nendalter");
  EXPECT_EQ(items, (std::vector<CString>{CString(u"a"), CString(u"2.000000"), CString(u"c"), CString(u"d")}));
}

} // namespace
