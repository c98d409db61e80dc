// However deep an abort strikes, the interpreter stands where it stood before.
#include "support/script_test.h"

namespace {

class AbortsTest : public ScriptTest {
protected:
  AbortsTest() { m_ui.CancelErrors(); }

  void ExpectAtRest() {
    EXPECT_EQ(State().m_nScopeLevel, 1);
    EXPECT_EQ(State().runDepth, 0);
    EXPECT_TRUE(State().positions.empty());
    EXPECT_TRUE(State().m_arrTemporaries.IsEmpty());
  }
};

TEST_F(AbortsTest, every_depth_is_left) {
  for (const int depth : {0, 1, 2, 3, 10, 100, 1000}) {
    SCOPED_TRACE(depth);
    m_ui.Forget();
    EXPECT_TRUE(Run("call down(" + std::to_string(depth) +
                    ", 1, 2)\nend\nsub down(n, a, b)\nfor i = 1 to 3\ndo while 1 = 1\nif n => 1 then\n"
                    "x = len(left(\"abc\", max(1, under(n - 1, a, b))))\nendif\nx = 1 + then\nloop\nnext\nendsub\n"
                    "function under(n, a, b)\nfor k = 1 to 2\ncall down(n, k, x)\nnext\nunder = 1\nendfunction\n"));
    EXPECT_EQ(m_ui.errors.size(), 1U);
    ExpectAtRest();
    EXPECT_TRUE(State().control.empty()) << "loops of procedures end with them";
  }
}

TEST_F(AbortsTest, every_place_of_a_call_is_left) {
  const char* const statements[] = {
      "x = f(1, g(2, h))",         // an argument that is not there
      "call f(1, f(2, next(",      // a list that never ends
      "x = left(\"a\", nope(1))",  // an undefined function in a built-in's argument
      "x = f(1)",                  // too few arguments
      "x = noresult(a, b)",        // no return value
      "call endless(1)",           // no end of the body
      "call malformed(1)",         // no parameter list
      "print f(1, 2); f(3",        // a print list
      "dim a[f(1, fail(2))]",      // a size
      "a[fail(0)] = 1",            // an index
      "if f(1, fail(2)) = 1 then", // a condition
      "for i = 1 to fail(3)",      // an end value
      "open str(fail(1)) as fail(2)",
      "x = ((((fail(1)))))",
      "x = 1 + 2 * fail(1) ^ 2",
  };
  const std::string procedures = "\nend\nfunction f(a, b)\nf = a\nendfunction\nfunction g(a, b)\ng = b\nendfunction\n"
                                 "function fail(a)\nnext\nendfunction\nfunction noresult(a, b)\nendfunction\n"
                                 "sub malformed\nendsub\nsub endless(a)\n";
  for (const char* statement : statements) {
    SCOPED_TRACE(statement);
    m_ui.Forget();
    EXPECT_TRUE(Run("a = 1\nb = 2\n" + std::string(statement) + procedures));
    EXPECT_EQ(m_ui.errors.size(), 1U);
    ExpectAtRest();
  }
}

// A loop of the main program is no scope: it stays, as after "end".
TEST_F(AbortsTest, loops_of_the_main_program_stay_on_the_control_stack) {
  Run("for i = 1 to 3\ncall fail()\nnext\nend\nsub fail()\nfor k = 1 to 3\nx = nope()\nnext\nendsub\n");
  ASSERT_EQ(State().control.size(), 1U);
  EXPECT_EQ(State().control[0].name.ToUtf8(), "i");
}

TEST_F(AbortsTest, after_an_abort_variables_are_those_of_the_main_program) {
  Run("x = \"main\"\ncall deep(3)\nend\nsub deep(n)\nx = \"deep\"\nif n = 0 then next\nendif\ncall deep(n - "
      "1)\nendsub\n");
  EXPECT_EQ(TextOf(u"x"), "main");
}

TEST_F(AbortsTest, an_abort_in_an_event_outside_a_run_ends_at_the_throw) {
  Run("end\nsub faulty(a)\ncall deeper(a)\nprint \"no\"\nendsub\nsub deeper(a)\nx = f(a, next(\nendsub\nsub fine(a)\n"
      "print \"fine\"\nendsub\n");
  Access::EventAdd(Interpreter(), u"ping", u"faulty");
  Access::EventAdd(Interpreter(), u"ping", u"fine");
  CBasicVariable value(5);
  EXPECT_TRUE(Interpreter().EventThrow(u"ping", &value));
  EXPECT_EQ(m_ui.errors.size(), 1U);
  EXPECT_EQ(m_ui.Output(), "") << "the abort ends the whole throw";
  ExpectAtRest();
  EXPECT_TRUE(State().control.empty());

  Access::EventRemove(Interpreter(), u"ping", u"faulty");
  EXPECT_TRUE(Interpreter().EventThrow(u"ping", &value));
  EXPECT_EQ(m_ui.Output(), "fine\n");
}

TEST_F(AbortsTest, an_abort_in_an_event_inside_a_run_ends_the_run) {
  Run("end\nsub faulty(a)\nnext\nendsub\n");
  Access::EventAdd(Interpreter(), u"OnStart", u"faulty");
  EXPECT_TRUE(Run("print \"no\"\n"));
  EXPECT_EQ(m_ui.Output(), "");
  ExpectAtRest();
}

TEST_F(AbortsTest, an_undefined_handler_outside_a_run_aborts_nothing_else) {
  Access::EventAdd(Interpreter(), u"ping", u"nobody");
  CBasicVariable value(5);
  EXPECT_TRUE(Interpreter().EventThrow(u"ping", &value));
  EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{21});
  EXPECT_EQ(m_ui.errors[0], "Undefined function name\n");
  ExpectAtRest();
}

TEST_F(AbortsTest, calls_that_fail_and_go_on_leave_their_scope_too) {
  m_ui.defaultErrorAnswer = CUserInterface::ErrorAnswer::Ok;
  Run("for i = 1 to 200\nx = noresult(1)\ncall few()\ncall malformed(1)\nnext\nprint \"done \"; int(i)\nend\n"
      "function noresult(a)\nfor k = 1 to 5\nendfunction\nsub few(a)\nendsub\nsub malformed\nendsub\n");
  EXPECT_EQ(m_ui.errors.size(), 600U);
  EXPECT_EQ(m_ui.Output(), "done 201\n");
  ExpectAtRest();
  EXPECT_TRUE(State().control.empty());
}

TEST_F(AbortsTest, nesting_without_end_aborts_with_50) {
  const char* const programs[] = {
      "call f()\nend\nsub f()\ncall f()\nendsub\n",
      "x = f(1)\nend\nfunction f(n)\nf = f(n) + 1\nendfunction\n",
      "call f(1)\nend\nsub f(n)\nif n = 1 then\nfor i = 1 to 2\nx = len(str(g(n)))\nnext\nendif\nendsub\n"
      "function g(n)\ncall f(n)\nendfunction\n",
  };
  for (const char* program : programs) {
    for (const auto answer : {CUserInterface::ErrorAnswer::Ok, CUserInterface::ErrorAnswer::Cancel}) {
      m_ui.Forget();
      m_ui.defaultErrorAnswer = answer;
      EXPECT_TRUE(Run(program));
      EXPECT_EQ(m_ui.ErrorNumbers(), Numbers{50}) << "whatever the answer, the run is aborted";
      ExpectAtRest();
      EXPECT_TRUE(State().control.empty());
    }
  }
}

TEST_F(AbortsTest, two_thousand_nested_calls_work) {
  Run("print int(sum(2000))\nend\nfunction sum(n)\nif n = 0 then\nsum = 0\nelse\nsum = n + sum(n - 1)\nendif\n"
      "endfunction\n");
  EXPECT_TRUE(m_ui.errors.empty());
  EXPECT_EQ(m_ui.Output(), "2001000\n");
}

} // namespace
