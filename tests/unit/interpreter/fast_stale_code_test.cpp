// Compiled statements whose names come to mean something else while they run.
#include "support/fast_route_test.h"

namespace {

class FastStaleCode : public FastRouteTest {
protected:
  // The same on every route, and what is expected.
  void Expect(std::string_view program, const std::vector<std::string>& expected) {
    EXPECT_EQ(ShownBy(program, Route::Parser), expected);
    EXPECT_EQ(ShownBy(program, Route::Automatic), expected);
    for (unsigned every = 0; every <= 25; ++every)
      EXPECT_EQ(ShownBy(program, Route::Eager, every), expected) << every;
  }
};

TEST_F(FastStaleCode, a_global_that_appears_late_hides_the_local_from_then_on) {
  Expect("x = 1\n"
         "for r = 1 to 4\n"
         "  x = x + 1\n"
         "  if r = 2 then\n"
         "    global y\n"
         "    call make()\n"
         "  endif\n"
         "next\n"
         "print x; \" \"; x__#1\n"
         "end\n"
         "sub make()\n"
         "  global x\n"
         "  x = 100\n"
         "endsub\n",
         {"102.000000 3.000000\n"});
}

TEST_F(FastStaleCode, what_other_interpreters_load_leaves_compiled_statements_alone) {
  const CString other = m_folder.Write("other.bas", "x = 1\n");
  const auto chunksAfter = [&](int rounds) {
    Begin(Route::Automatic, 0);
    Run("n = 0\nfor i = 1 to " + std::to_string(rounds) + "\n  run \"" + other.ToUtf8() +
        "\"\n  n = n + i\nnext\nprint n\n");
    return State().program->Fast().m_chunks.size();
  };
  const std::size_t few = chunksAfter(20);
  EXPECT_EQ(m_ui.messages.back(), "210.000000\n");
  EXPECT_EQ(chunksAfter(200), few) << "compiled once";
  EXPECT_EQ(m_ui.messages.back(), "20100.000000\n");
}

TEST_F(FastStaleCode, a_global_made_two_calls_down_is_seen_by_every_caller) {
  Expect("x = 1\n"
         "for r = 1 to 3\n"
         "  a = outer(r) + x\n"
         "  b = x\n"
         "  print a; \" \"; b\n"
         "next\n"
         "end\n"
         "function outer(r)\n"
         "  x = 5\n"
         "  outer = inner(r) + tiny(x)\n"
         "endfunction\n"
         "function inner(r)\n"
         "  inner = 0\n"
         "  if r = 2 then\n"
         "    global x\n"
         "    x = 1000\n"
         "    inner = tiny(1)\n"
         "  endif\n"
         "endfunction\n"
         "function tiny(n)\n"
         "  tiny = n\n"
         "endfunction\n",
         {"6.000000 1.000000\n", "2001.000000 1000.000000\n", "10.000000 5.000000\n"});
}

TEST_F(FastStaleCode, a_host_function_registered_late_replaces_the_procedure_of_its_name) {
  Expect("for r = 1 to 4\n"
         "  x = f(1) + choose(r) + f(1)\n"
         "  print x\n"
         "next\n"
         "end\n"
         "function f(n)\n"
         "  f = n\n"
         "endfunction\n"
         "function choose(r)\n"
         "  choose = 0\n"
         "  if r = 3 then\n"
         "    choose = register(\"f\")\n"
         "    choose = choose + 0\n"
         "  endif\n"
         "endfunction\n",
         {"2.000000\n", "2.000000\n", "101.000000\n", "200.000000\n"});
}

TEST_F(FastStaleCode, a_variable_that_becomes_an_array_or_is_collected_is_met_as_such) {
  Expect("for r = 1 to 4\n"
         "  x = r\n"
         "  x = x + 1\n"
         "  print x; \" \"; f(r)\n"
         "  if r = 2 then\n"
         "    dim x[3]\n"
         "    x[1] = 7\n"
         "    print garbagecollection()\n"
         "  endif\n"
         "next\n"
         "end\n"
         "function f(n)\n"
         "  f = n\n"
         "  k = n + 1\n"
         "  f = f + k\n"
         "endfunction\n",
         {"2.000000 3.000000\n", "3.000000 5.000000\n", "3\n", "4.000000 7.000000\n", "5.000000 9.000000\n"});
}

} // namespace
