// What a host allows a script: budgets that end a run, and a stop that is asked for from outside.
#include "interpreter/script_abort.h"
#include "support/fast_route_test.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <thread>

#include <sys/time.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* kEndless = "n = 0\ndo while 1 = 1\nn = n + 1\nloop\n";
constexpr const char* kMixed = "n = 0\nagain:\nn = n + 1\nif n > 2 then\nx = twice(n)\nelse\nx = 0\nendif\n"
                               "for i = 1 to 3\nrem no statement\nx = twice(i) + twice(x)\nnext\n"
                               "k = 0\ndo while k < twice(1)\nk = k + 1\ncall note(k)\nloop\ngoto again\n"
                               "function twice(a)\n# no statement\ntwice = a * 2\nendfunction\n"
                               "sub note(a)\nif a = 1 then last = a else last = 0 endif\nendsub\n";

class LimitsTest : public FastRouteTest {
protected:
  void Limit(const CExecutionLimits& limits) { ASSERT_TRUE(Interpreter().SetLimits(limits)); }
  [[nodiscard]] static CExecutionLimits Statements(std::uint64_t count) {
    CExecutionLimits limits;
    limits.statements = count;
    return limits;
  }
  [[nodiscard]] std::string LastError() { return Interpreter().GetLastError().ToUtf8(); }
  [[nodiscard]] bool EndedBy(const std::string& text) { return LastError().starts_with(text + "\n"); }
};

TEST_F(LimitsTest, nothing_is_limited_at_first) {
  EXPECT_TRUE(Run("for i = 1 to 100000\nnext\nprint \"done\"\n"));
  EXPECT_EQ(m_ui.Output(), "done\n");
  EXPECT_EQ(LastError(), "");
}

TEST_F(LimitsTest, exactly_so_many_statements_are_run) {
  Limit(Statements(3));
  Run("a = 1\nrem no statement\n\nhere:\nb = 2 # none\nc = 3\n");
  EXPECT_EQ(LastError(), "");
  Run("a = 1\nb = 2\nc = 3\nd = 4\n");
  EXPECT_EQ(LastError(), "Limit of statements reached\n\nd = 4");
  EXPECT_EQ(TextOf(u"d"), "(none)");
  EXPECT_EQ(m_ui.notices.size(), 1U);
  EXPECT_TRUE(m_ui.errors.empty()) << "nobody is asked";
}

TEST_F(LimitsTest, statements_strike_at_the_same_place_on_every_route) {
  for (const std::uint64_t count :
       {1, 2, 3, 4, 7, 20, 21, 22, 23, 24, 25, 26, 63, 64, 65, 128, 129, 1000, 1003, 5001}) {
    std::string parser;
    for (const auto& [route, every] :
         {std::pair(Route::Parser, 0U), std::pair(Route::Automatic, 0U), std::pair(Route::Eager, 0U),
          std::pair(Route::Eager, 1U), std::pair(Route::Eager, 2U), std::pair(Route::Eager, 5U)}) {
      Begin(route, every);
      Limit(Statements(count));
      Run(kMixed);
      const std::string left = LastError() + " n=" + TextOf(u"n") + " i=" + TextOf(u"i") + " k=" + TextOf(u"k") +
                               " x=" + TextOf(u"x") + " at " + std::to_string(State().position);
      if (parser.empty())
        parser = left;
      EXPECT_EQ(left, parser) << count << " statements, route " << static_cast<int>(route) << ":" << every;
    }
    EXPECT_TRUE(parser.starts_with("Limit of statements reached\n")) << parser;
  }
}

TEST_F(LimitsTest, every_run_has_its_statements_anew_and_variables_stay) {
  Limit(Statements(100));
  for (int i = 0; i < 3; ++i) {
    Run(kEndless);
    EXPECT_TRUE(EndedBy("Limit of statements reached"));
    EXPECT_EQ(State().m_nScopeLevel, 1);
    EXPECT_EQ(State().runDepth, 0);
  }
  Run("print \"fine\"\n");
  EXPECT_EQ(m_ui.Output(), "fine\n");
  Limit({});
  m_ui.Forget();
  Run("for i = 1 to 1000\nnext\nprint i\n");
  EXPECT_EQ(m_ui.Output(), "1001.000000\n");
}

TEST_F(LimitsTest, procedures_of_an_earlier_text_are_counted_once_limits_are_set) {
  Run("for i = 1 to 5\nx = slow(10)\nnext\nend\nfunction slow(n)\nfor k = 1 to n\nslow = k\nnext\nendfunction\n");
  Limit(Statements(50));
  Run("x = slow(1000)\n");
  EXPECT_TRUE(EndedBy("Limit of statements reached")) << LastError();
  Limit({});
  Run("x = slow(1000)\nprint x\n");
  EXPECT_EQ(m_ui.Output(), "1000.000000\n");
}

TEST_F(LimitsTest, events_and_timers_have_budgets_of_their_own) {
  Limit(Statements(40));
  Run("event create busy work\nevent create ontimer work\nstayresident\ntimerstart 10\nend\n"
      "sub work(v)\nn = 0\ndo while n < v\nn = n + 1\nloop\nprint n\nendsub\n");
  ASSERT_EQ(LastError(), "");
  CBasicVariable few(5);
  CBasicVariable many(1000);
  EXPECT_TRUE(Interpreter().EventThrow(u"busy", &few));
  EXPECT_TRUE(Interpreter().EventThrow(u"busy", &many));
  EXPECT_TRUE(EndedBy("Limit of statements reached"));
  EXPECT_TRUE(Interpreter().EventThrow(u"busy", &few));
  ASSERT_EQ(m_ui.timers.size(), 1U);
  m_ui.timers.begin()->second();
  EXPECT_EQ(m_ui.Output(), "5.000000\n5.000000\n0.000000\n");
}

TEST_F(LimitsTest, a_script_that_is_run_spends_the_same_budget_and_ends_with_it) {
  m_folder.Write("child.bas", kEndless);
  const std::string child = m_folder.Path("child.bas").string();
  Limit(Statements(1000));
  Run("print \"before\"\nrun \"" + child + "\"\nprint \"behind\"\n");
  EXPECT_EQ(m_ui.Output(), "before\n");
  EXPECT_TRUE(EndedBy("Limit of statements reached"));
  EXPECT_EQ(m_ui.notices.size(), 1U) << "one box, although two scripts end";
}

CBasicVariable RunAgain(CBrindle* interpreter, CBasicVariableArray& arguments, int) {
  return {interpreter->ExecuteProgram(arguments[0].GetStringValue())};
}

TEST_F(LimitsTest, a_run_that_a_callback_makes_ends_and_so_does_the_one_around_it) {
  m_folder.Write("inner.bas", kEndless);
  Interpreter().AddCustomFunction(u"runagain", &RunAgain, 0, nullptr);
  Limit(Statements(500));
  Run("x = runagain(\"" + m_folder.Path("inner.bas").string() + "\")\nprint \"behind\"\n");
  EXPECT_EQ(m_ui.Output(), "");
  EXPECT_EQ(m_ui.notices.size(), 1U);
}

TEST_F(LimitsTest, limits_cannot_be_changed_inside_a_run) {
  Interpreter().AddCustomFunction(
      u"loosen",
      [](CBrindle* interpreter, CBasicVariableArray&, int) { return CBasicVariable(interpreter->SetLimits({})); }, 0,
      nullptr);
  Limit(Statements(100));
  Run("print loosen()\n" + std::string(kEndless));
  EXPECT_EQ(m_ui.Output(), "False\n");
  EXPECT_TRUE(EndedBy("Limit of statements reached"));
}

TEST_F(LimitsTest, time_ends_a_run_on_every_route) {
  for (const Route route : {Route::Parser, Route::Automatic, Route::Eager}) {
    Begin(route, 0);
    CExecutionLimits limits;
    limits.milliseconds = 50;
    Limit(limits);
    const auto start = Clock::now();
    Run(kEndless);
    EXPECT_TRUE(EndedBy("Limit of time reached"));
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(50));
  }
}

TEST_F(LimitsTest, memory_ends_what_grows) {
  const char* const programs[] = {
      "x = \"abcdefgh\"\ndo while 1 = 1\nx = x + x\nloop\n",
      "x = \"\"\ndo while 1 = 1\nx = x + \"abcdefgh\"\nloop\n",
      "map create \"m\"\ni = 0\ndo while 1 = 1\ni = i + 1\ncall mapset(\"m\", str(i), i)\nloop\n",
      "x = repeat(\"x\", 8000000)\n",
      "x = g(repeat(\"x\", 400000), repeat(\"y\", 400000))\nend\nfunction g(a, b)\ng = 1\nendfunction\n",
      "type t\na[16000] as double\nb[16000] as double\nc[16000] as double\nd[16000] as double\ne[16000] as double\n"
      "f[16000] as double\ng[16000] as double\nh[16000] as double\nendtype\ndim r as t\n",
      "call down(0)\nend\nsub down(n)\ncall down(n + 1)\nendsub\n",
      "dim a[10000]\nfor i = 0 to 9999\na[i] = repeat(\"x\", 500)\nnext\n",
  };
  for (const char* program : programs) {
    SCOPED_TRACE(program);
    Begin(Route::Automatic, 0);
    CExecutionLimits limits;
    limits.bytes = 1'000'000;
    Limit(limits);
    Run(program);
    EXPECT_TRUE(EndedBy("Limit of memory reached")) << LastError();
  }
}

TEST_F(LimitsTest, memory_that_is_given_back_does_not_count) {
  CExecutionLimits limits;
  limits.bytes = 1'000'000;
  Limit(limits);
  Run("for i = 1 to 1000\nx = repeat(\"x\", 100000)\nnext\nprint len(x)\n");
  EXPECT_EQ(LastError(), "");
  EXPECT_EQ(m_ui.Output(), "100000\n");
}

TEST_F(LimitsTest, memory_that_stays_counts_in_later_runs) {
  CExecutionLimits limits;
  limits.bytes = 1'000'000;
  Limit(limits);
  Run("a = repeat(\"x\", 300000)\n");
  EXPECT_EQ(LastError(), "");
  Run("b = repeat(\"x\", 300000)\n");
  EXPECT_TRUE(EndedBy("Limit of memory reached"));
}

TEST_F(LimitsTest, calls_nest_so_deep_and_no_deeper) {
  const std::string program =
      "call down(1)\nprint \"back\"\nend\nsub down(n)\nif n < %d then\ncall down(n + 1)\nendif\nendsub\n";
  for (const Route route : {Route::Parser, Route::Automatic, Route::Eager}) {
    for (const int depth : {9, 10, 11}) {
      Begin(route, 0);
      CExecutionLimits limits;
      limits.callDepth = 10;
      Limit(limits);
      std::string text = program;
      Run(text.replace(text.find("%d"), 2, std::to_string(depth)));
      EXPECT_EQ(m_ui.Output(), depth <= 10 ? "back\n" : "");
      EXPECT_EQ(EndedBy("Limit of nested calls reached"), depth > 10) << depth;
    }
  }
}

TEST_F(LimitsTest, scripts_that_run_each_other_nest_as_well) {
  CExecutionLimits limits;
  limits.callDepth = 5;
  Limit(limits);
  const std::string self = m_folder.Path("script.bas").string();
  Run("print \"in\"\nrun \"" + self + "\"\ncall one()\nend\nsub one()\nendsub\n");
  EXPECT_TRUE(EndedBy("Limit of nested calls reached"));
  EXPECT_LE(m_ui.messages.size(), 6U);
}

TEST_F(LimitsTest, another_thread_stops_an_endless_program_on_every_route) {
  const char* const programs[] = {kEndless, "here:\ngoto here\n", "for i = 1 to 1e300\nnext\n",
                                  "for i = 1 to 1e300\nx = f(i)\nnext\nend\nfunction f(n)\nf = n\nendfunction\n",
                                  "do while 1 = 1\nprint \"\";\nloop\n"};
  for (const char* program : programs) {
    for (const Route route : {Route::Parser, Route::Automatic, Route::Eager}) {
      SCOPED_TRACE(program);
      Begin(route, 0);
      std::thread other([this] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        Interpreter().RequestStop();
      });
      Run(program);
      other.join();
      EXPECT_TRUE(EndedBy("Stopped by the host")) << LastError();
      EXPECT_TRUE(m_ui.notices.empty() && m_ui.errors.empty());
    }
  }
}

std::atomic<CBrindle*> toStop = nullptr;

TEST_F(LimitsTest, a_signal_handler_stops_an_endless_program) {
  toStop = &Interpreter();
  struct sigaction action {};
  struct sigaction before {};
  action.sa_handler = [](int) { toStop.load()->RequestStop(); };
  sigaction(SIGALRM, &action, &before);
  itimerval soon{};
  soon.it_value.tv_usec = 20'000;
  setitimer(ITIMER_REAL, &soon, nullptr);
  Run(kEndless);
  sigaction(SIGALRM, &before, nullptr);
  EXPECT_TRUE(EndedBy("Stopped by the host"));
}

TEST_F(LimitsTest, a_stop_meets_one_run_and_the_next_one_is_free) {
  Interpreter().RequestStop();
  Run("print \"never\"\n");
  EXPECT_TRUE(EndedBy("Stopped by the host"));
  Run("print \"again\"\n");
  EXPECT_EQ(m_ui.Output(), "again\n");
  Interpreter().RequestStop();
  Limit({});
  Run("print \"dropped\"\n");
  EXPECT_EQ(m_ui.Output(), "again\ndropped\n") << "setting limits drops a stop";
}

TEST_F(LimitsTest, a_long_program_that_is_only_read_can_be_stopped) {
  std::u16string text;
  for (int i = 0; i < 2000; ++i)
    text += u"x = y\n";
  BrindleTestAccess::State(Interpreter()).program = std::make_shared<brindle::ProgramText>(text);
  Interpreter().RequestStop();
  EXPECT_THROW(BrindleTestAccess::LoadLibraries(Interpreter()), brindle::ScriptAbort);
  EXPECT_THROW(BrindleTestAccess::LabelsScan(Interpreter()), brindle::ScriptAbort);
  BrindleTestAccess::Rewind(Interpreter());
  EXPECT_THROW(BrindleTestAccess::FindLastPair(Interpreter(), COMMAND_IF, COMMAND_ENDIF, COMMAND_ELSE),
               brindle::ScriptAbort);
}

TEST_F(LimitsTest, a_stop_inside_a_host_function_is_met_behind_it) {
  Interpreter().AddCustomFunction(
      u"halt",
      [](CBrindle* interpreter, CBasicVariableArray&, int) {
        interpreter->RequestStop();
        return CBasicVariable(interpreter->IsStopRequested());
      },
      0, nullptr);
  Run("x = halt()\nprint \"never\"\n");
  EXPECT_EQ(m_ui.Output(), "");
  EXPECT_EQ(TextOf(u"x"), "True");
  EXPECT_TRUE(EndedBy("Stopped by the host"));
  EXPECT_FALSE(Interpreter().IsStopRequested());
}

TEST_F(LimitsTest, handlers_of_onstop_and_change_events_do_not_survive_a_budget) {
  Limit(Statements(50));
  Run("event create onstop last\nevent create changed note\nn = 0\nwatch create n changed\n"
      "do while 1 = 1\nn = n + 1\nloop\nend\nsub last(v)\nprint \"stop\"\nendsub\nsub note(v)\nm = v\nendsub\n");
  EXPECT_EQ(m_ui.Output(), "");
  EXPECT_TRUE(EndedBy("Limit of statements reached"));
}

TEST_F(LimitsTest, what_is_forbidden_is_an_error_that_can_be_continued) {
  CExecutionLimits limits;
  limits.noPrograms = limits.noLibraries = limits.noAutomation = limits.noSerialPorts = true;
  Limit(limits);
  Run("runexe \"/bin/true\"\ndeclare function f lib \"x\" (byval a as integer) as integer\n"
      "x = createobject(\"Brindle.FileSystem\")\ny = comportopen(1)\nprint \"end\"\n");
  EXPECT_EQ(m_ui.ErrorNumbers(), (Numbers{65, 65, 65, 65}));
  EXPECT_EQ(m_ui.Output(), "end\n");
}

} // namespace
