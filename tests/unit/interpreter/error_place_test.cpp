// Where errors are reported: file, line, column and the calls, whichever route ran the statements.
#include "brindle/environment.h"
#include "support/script_test.h"

namespace {

class PlaceRecorder : public RecordingUserInterface {
public:
  std::vector<CErrorPlace> places;

  [[nodiscard]] ErrorAnswer ShowErrorAt(const CString& text, const CErrorPlace& place) override {
    places.push_back(place);
    return ShowError(text);
  }
};

std::string BaseName(const CString& file) {
  const std::string path = file.ToUtf8();
  return path.substr(path.find_last_of("/\\") + 1);
}

// "37 script.bas:3:5, f script.bas:9, handler g": number, place, then the calls from the innermost outward.
std::string Told(const CErrorPlace& place) {
  std::string text = std::to_string(place.number) + " " + BaseName(place.file) + ":" + std::to_string(place.line) +
                     ":" + std::to_string(place.column);
  for (const CCallFrame& call : place.calls) {
    using Kind = CCallFrame::Kind;
    text += call.kind == Kind::Program   ? ", program " + BaseName(call.name)
            : call.kind == Kind::Handler ? ", handler " + call.name.ToUtf8()
                                         : ", " + call.name.ToUtf8();
    if (call.line > 0)
      text += " " + BaseName(call.file) + ":" + std::to_string(call.line);
  }
  return text;
}

class ErrorPlaceTest : public ScriptTest {
protected:
  ~ErrorPlaceTest() override { CEnvironment::SetRoute(CEnvironment::Route::Automatic); }

  struct File {
    std::string_view name;
    std::string_view text;
  };

  // The places of all errors of the first file, a line each; the boxes are answered by OK.
  std::string PlacesOf(const std::vector<File>& files) {
    for (const File& file : files)
      m_folder.Write(file.name, file.text);
    m_recorder = PlaceRecorder();
    m_pInterpreter = std::make_unique<CBrindle>();
    m_pInterpreter->SetUserInterface(&m_recorder);
    m_pInterpreter->ExecuteProgram(CString::FromUtf8(m_folder.Path(files[0].name).string()));
    return Text();
  }
  [[nodiscard]] std::string Text() const {
    std::string text;
    for (const CErrorPlace& place : m_recorder.places)
      text += (text.empty() ? "" : "\n") + Told(place);
    return text;
  }
  // The same on every route.
  void ExpectPlaces(const std::vector<File>& files, const std::string& expected) {
    using Route = CEnvironment::Route;
    const std::pair<Route, unsigned> routes[] = {{Route::Parser, 0U}, {Route::Automatic, 0U}, {Route::Eager, 0U},
                                                 {Route::Eager, 1U},  {Route::Eager, 2U},     {Route::Eager, 3U}};
    for (const auto& [route, giveUpEvery] : routes) {
      CEnvironment::SetRoute(route, giveUpEvery);
      EXPECT_EQ(PlacesOf(files), expected) << "route " << static_cast<int>(route) << ":" << giveUpEvery;
    }
  }

  PlaceRecorder m_recorder;
};

TEST_F(ErrorPlaceTest, the_place_is_the_word_that_could_not_be_used) {
  struct Row {
    const char* name;
    std::string_view text;
    std::string expected;
  };
  const Row rows[] = {
      {"first line", "next", "55 script.bas:1:1"},
      {"behind blanks and a tab", "a = 1\n \tnext\n", "55 script.bas:2:3"},
      {"an operand that is missing", "a = 1\nb = a + b\n", "3 script.bas:2:10"},
      {"a line that ends too early keeps its own line", "if 1 = 1\nprint 2\nendif\n", "9 script.bas:1:9"},
      {"CR LF", "a = 1\r\n\r\n\r\n next\r\n", "55 script.bas:4:2"},
      {"carriage returns alone", "a = 1\rb = 2\rnext\r", "55 script.bas:3:1"},
      {"characters beyond the basic plane count once", "a = \"\xF0\x9F\x8C\xB2\" : next", "55 script.bas:1:11"},
      {"the end of the text is the end of its last line", "if 1 = 2 then\na = 1\n\n", "56 script.bas:2:6"},
      {"a duplicate label, before anything runs", "a:\nb = 1\na:\n", "6 script.bas:3:1"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    ExpectPlaces({{"script.bas", row.text}}, row.expected);
  }
}

TEST_F(ErrorPlaceTest, calls_are_listed_from_the_innermost_outward) {
  const std::string text = "for i = 1 to 3\n"
                           "  x = Outer(i)\n"
                           "next\n"
                           "end\n"
                           "function Outer(a)\n"
                           "  b = a + 1\n"
                           "  Outer = b + inner(b)\n"
                           "endfunction\n"
                           "function inner(n)\n"
                           "  inner = n\n"
                           "  if n = 4 then\n"
                           "    x = left(n)\n"
                           "  endif\n"
                           "endfunction\n";
  ExpectPlaces({{"script.bas", text}}, "24 script.bas:12:15, inner script.bas:7, Outer script.bas:2");
}

TEST_F(ErrorPlaceTest, a_missing_result_is_reported_at_the_end_of_the_body) {
  const std::string text = "for i = 1 to 3\n"
                           "  x = f(i)\n"
                           "next\n"
                           "end\n"
                           "function f(n)\n"
                           "  if n < 3 then\n"
                           "    f = n\n"
                           "  endif\n"
                           "  endfunction\n";
  ExpectPlaces({{"script.bas", text}}, "19 script.bas:9:3, f script.bas:2");
}

TEST_F(ErrorPlaceTest, recursion_and_calls_through_call) {
  const std::string text = "call down(3)\n"
                           "end\n"
                           "sub down(n)\n"
                           "  if n = 0 then\n"
                           "    x = left(\"a\")\n"
                           "  else\n"
                           "    call down(n - 1)\n"
                           "  endif\n"
                           "endsub\n";
  ExpectPlaces({{"script.bas", text}}, "24 script.bas:5:17, down script.bas:7, down script.bas:7, down script.bas:7, "
                                       "down script.bas:1");
}

TEST_F(ErrorPlaceTest, faults_of_the_call_itself_stand_at_the_definition) {
  const std::string text = "x = f(1)\nend\nfunction f(a, b)\n  f = 1\nendfunction\n";
  ExpectPlaces({{"script.bas", text}}, "24 script.bas:3:15, f script.bas:1");
}

TEST_F(ErrorPlaceTest, included_and_library_files_have_lines_of_their_own) {
  const std::vector<File> files = {
      {"script.bas", "a = 1\ninclude \"one.bas\"\nb = 2\nnext\nx = deep(1)\nlibrary \"lib.bas\"\nnext\nend\n"},
      {"one.bas", "c = 1\ninclude \"two.bas\"\n  next\n"},
      {"two.bas", "\nd = 1\n    next\n"},
      {"lib.bas", "end\nfunction deep(n)\n  deep = n\n   next\nendfunction\n"},
  };
  ExpectPlaces(files, "55 two.bas:3:5\n55 one.bas:3:3\n55 script.bas:4:1\n55 lib.bas:4:4, deep script.bas:5\n"
                      "55 script.bas:7:1");
}

TEST_F(ErrorPlaceTest, included_files_with_cr_lf) {
  const std::vector<File> files = {{"script.bas", "a = 1\r\ninclude \"one.bas\"\r\nnext\r\n"},
                                   {"one.bas", "c = 1\r\nnext\r\n"}};
  ExpectPlaces(files, "55 one.bas:2:1\n55 script.bas:3:1\n55 one.bas:2:1");
}

TEST_F(ErrorPlaceTest, a_file_that_cannot_be_included_is_the_fault_of_its_line) {
  ExpectPlaces({{"script.bas", "a = 1\n  include \"nowhere.bas\"\n"}}, "1 script.bas:2:11\n1 script.bas:2:11");
}

TEST_F(ErrorPlaceTest, a_script_that_cannot_be_loaded_has_no_line) {
  m_pInterpreter->ExecuteProgram(u"nowhere.bas");
  EXPECT_EQ(Told(m_pInterpreter->GetErrorPlace()), "17 nowhere.bas:0:0");
}

TEST_F(ErrorPlaceTest, handlers_are_called_where_the_event_was_thrown) {
  const std::string text = "event create ping OnPing\n"
                           "event create changed OnChange\n"
                           "watched = 1\n"
                           "watch create watched changed\n"
                           "for i = 1 to 2\n"
                           "  throw ping(i)\n"
                           "  call work(i)\n"
                           "next\n"
                           "end\n"
                           "sub OnPing(n)\n"
                           "  if n = 2 then\n"
                           "    y = left(n)\n"
                           "  endif\n"
                           "endsub\n"
                           "sub work(n)\n"
                           "  watched__#1 = n\n"
                           "endsub\n"
                           "sub OnChange(n)\n"
                           "  y = left(\"a\")\n"
                           "endsub\n";
  ExpectPlaces({{"script.bas", text}}, "24 script.bas:19:15, handler OnChange script.bas:16, work script.bas:7\n"
                                       "24 script.bas:12:15, handler OnPing script.bas:6\n"
                                       "24 script.bas:19:15, handler OnChange script.bas:16, work script.bas:7");
}

TEST_F(ErrorPlaceTest, handlers_that_nothing_in_the_script_called_stand_nowhere) {
  const std::string text = "event create OnStop Finish\nevent create tick OnTick\nend\n"
                           "sub Finish(name)\n  next\nendsub\n"
                           "sub OnTick(n)\n  call work()\nendsub\nsub work()\n  next\nendsub\n";
  CEnvironment::SetRoute(CEnvironment::Route::Automatic);
  EXPECT_EQ(PlacesOf({{"script.bas", text}}), "55 script.bas:5:3, handler Finish");
  m_recorder.places.clear();
  CBasicVariable value(1);
  EXPECT_TRUE(m_pInterpreter->EventThrow(u"tick", &value));
  EXPECT_EQ(Text(), "55 script.bas:11:3, work script.bas:8, handler OnTick");
}

TEST_F(ErrorPlaceTest, scripts_that_run_scripts_are_part_of_the_chain) {
  const std::string outer =
      "x = 1\ncall start(1)\nend\nsub start(n)\n  run \"" + m_folder.Path("inner.bas").string() + "\"\nendsub\n";
  const std::vector<File> files = {
      {"outer.bas", outer},
      {"inner.bas", "call work(1)\nend\nsub work(n)\n  next\nendsub\n"},
  };
  ExpectPlaces(files, "55 inner.bas:4:3, work inner.bas:1, program inner.bas outer.bas:5, start outer.bas:2");
}

TEST_F(ErrorPlaceTest, a_host_that_runs_a_script_inside_another_is_part_of_the_chain) {
  static std::string path;
  path = m_folder.Path("inner.bas").string();
  m_pInterpreter->AddCustomFunction(
      u"startinner",
      [](CBrindle* interpreter, CBasicVariableArray&, int) {
        interpreter->ExecuteProgram(CString::FromUtf8(path));
        return CBasicVariable(1);
      },
      0, nullptr);
  const std::unique_ptr<CBrindle> keeper = std::move(m_pInterpreter); // the function ends with the last interpreter
  ExpectPlaces({{"outer.bas", "x = 1\ny = startinner()\nnext\n"}, {"inner.bas", "a = 1\n next\n"}},
               "55 inner.bas:2:2, program inner.bas outer.bas:2\n55 outer.bas:3:1");
}

TEST_F(ErrorPlaceTest, of_deep_recursion_the_innermost_calls_are_kept) {
  const std::string text = "x = down(1000)\nend\nfunction down(n)\n  down = n\n  if n = 0 then\n    next\n"
                           "  else\n    down = down(n - 1)\n  endif\nendfunction\n";
  for (const auto route : {CEnvironment::Route::Parser, CEnvironment::Route::Automatic}) {
    CEnvironment::SetRoute(route);
    PlacesOf({{"script.bas", text}});
    ASSERT_EQ(m_recorder.places.size(), 1U);
    EXPECT_EQ(m_recorder.places[0].calls.size(), CErrorPlace::kMostCalls);
    EXPECT_EQ(m_recorder.places[0].callsLeftOut, 1001 - CErrorPlace::kMostCalls);
  }
}

TEST_F(ErrorPlaceTest, the_line_is_quoted_unless_the_script_is_enciphered) {
  Run("a = 1\n\tnext # here\r\n");
  EXPECT_EQ(m_pInterpreter->GetErrorPlace().sourceLine.ToUtf8(), "\tnext # here");
  std::string reason;
  const auto script = CEnvironment::EncipherScript("a = 1\ninclude \"plain.bas\"\nnext\n", reason);
  ASSERT_TRUE(script);
  m_folder.Write("plain.bas", "b = 1\n  loop\n");
  m_ui.onError = [this] {
    const CErrorPlace& place = m_pInterpreter->GetErrorPlace();
    m_ui.messages.push_back(Told(place) + " " + place.sourceLine.ToUtf8());
  };
  Run(*script);
  EXPECT_EQ(m_ui.messages, (std::vector<std::string>{"55 script.bas:3:1 "}));
}

TEST_F(ErrorPlaceTest, without_an_error_there_is_no_place) {
  EXPECT_EQ(Told(m_pInterpreter->GetErrorPlace()), "0 :0:0");
}

TEST_F(ErrorPlaceTest, an_error_of_the_host_has_the_place_of_the_call) {
  m_pInterpreter->AddCustomFunction(
      u"complain",
      [](CBrindle* interpreter, CBasicVariableArray&, int) {
        interpreter->ReportError(45);
        return CBasicVariable(1);
      },
      0, nullptr);
  Run("a = 1\nb = complain()\n");
  EXPECT_EQ(Told(m_pInterpreter->GetErrorPlace()), "45 script.bas:2:14");
}

TEST_F(ErrorPlaceTest, texts_run_one_after_the_other_share_variables_and_procedures) {
  EXPECT_TRUE(m_pInterpreter->ExecuteText(u"x = 20", u"first"));
  EXPECT_TRUE(m_pInterpreter->ExecuteText(u"end : function twice(n)\ntwice = n * 2\nif n = 3 then\nnext\nendif\n"
                                          u"endfunction",
                                          u"second"));
  EXPECT_TRUE(m_pInterpreter->ExecuteText(u"print int(twice(x) + 2)", u"third"));
  EXPECT_EQ(m_ui.Output(), "42\n");
  EXPECT_EQ(m_ui.errors.size(), 0U);
  EXPECT_TRUE(m_pInterpreter->ExecuteText(u"x = 1\nx = twice(3)", u"fourth"));
  EXPECT_EQ(Told(m_pInterpreter->GetErrorPlace()), "55 second:4:1, twice fourth:2");
}

TEST_F(ErrorPlaceTest, a_text_names_itself_to_its_handlers_and_finds_files_beside_its_name) {
  m_folder.Write("part.bas", "print \"part\"\n");
  EXPECT_TRUE(
      m_pInterpreter->ExecuteText(u"include \"part.bas\"\nend", CString::FromUtf8(m_folder.Path("me").string())));
  EXPECT_EQ(m_ui.Output(), "part\n");
  EXPECT_TRUE(m_pInterpreter->ExecuteText(u"event create OnStart hello\nend\nsub hello(name)\nprint name\nendsub",
                                          u"defining"));
  m_ui.Forget();
  EXPECT_TRUE(m_pInterpreter->ExecuteText(u"", u"empty"));
  EXPECT_EQ(m_ui.Output(), "empty\n");
}

TEST_F(ErrorPlaceTest, a_text_that_is_too_long_is_not_run) {
  std::u16string text(64 * 1024 * 1024, u'#');
  EXPECT_FALSE(m_pInterpreter->ExecuteText(CString(text), u"long"));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{17});
}

} // namespace
