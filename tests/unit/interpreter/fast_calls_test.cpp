// Calls in compiled statements: made once however often their statement gives up, deep, and left as the executing
// parser leaves them when a run is aborted.
#include "support/fast_route_test.h"

namespace {

class FastCalls : public FastRouteTest {};

TEST_F(FastCalls, a_statement_that_gives_up_at_any_operation_makes_its_calls_once) {
  constexpr std::string_view kProgram = "count = 0\n"
                                        "dim a[6]\n"
                                        "for r = 1 to 2\n"
                                        "  x = f(1) + f(2) * (f(3) - f(f(4))) ^ 2 + r\n"
                                        "  s = \"a\" + g(\"b\") + g(g(\"c\")) + mid(g(\"xyz\"), f(1), f(2))\n"
                                        "  a[f(5)] = f(6) + max(f(7), f(8))\n"
                                        "  if f(9) + f(10) > f(11) then\n"
                                        "    call f(f(12))\n"
                                        "  endif\n"
                                        "  do while f(13) = r\n"
                                        "  loop\n"
                                        "next\n"
                                        "print count; \" \"; x; \" \"; s; \" \"; a[5]\n"
                                        "end\n"
                                        "function f(n)\n"
                                        "  count__#1 = count__#1 + 1\n"
                                        "  f = n\n"
                                        "endfunction\n"
                                        "function g(t)\n"
                                        "  count__#1 = count__#1 + 1\n"
                                        "  g = t + \"-\"\n"
                                        "endfunction\n";
  const std::vector<std::string> expected = ShownBy(kProgram, Route::Parser);
  ASSERT_EQ(expected.size(), 1U);
  EXPECT_TRUE(expected[0].starts_with("42.000000 ")) << expected[0];
  EXPECT_EQ(ShownBy(kProgram, Route::Automatic), expected);
  for (unsigned every = 1; every <= 120; ++every)
    EXPECT_EQ(ShownBy(kProgram, Route::Eager, every), expected) << every;
}

TEST_F(FastCalls, twenty_thousand_calls_lie_inside_each_other) {
  for (const Route route : {Route::Automatic, Route::Eager})
    EXPECT_EQ(ShownBy("print down(20000)\n"
                      "end\n"
                      "function down(n)\n"
                      "  down = n\n"
                      "  if n > 0 then\n"
                      "    down = down(n - 1) + 1\n"
                      "  endif\n"
                      "endfunction\n",
                      route),
              std::vector<std::string>{"20000.000000\n"});
}

TEST_F(FastCalls, calls_without_end_are_reported_and_end_the_run) {
  for (const Route route : {Route::Automatic, Route::Eager}) {
    const std::vector<std::string> shown = ShownBy("print \"before\"\n"
                                                   "print down(1)\n"
                                                   "print \"not reached\"\n"
                                                   "end\n"
                                                   "function down(n)\n"
                                                   "  down = down(n + 1)\n"
                                                   "endfunction\n",
                                                   route);
    ASSERT_EQ(shown.size(), 2U);
    EXPECT_TRUE(shown[1].starts_with("Brindle unrecoverable error")) << shown[1];
  }
}

// What an abort inside nested calls leaves behind, on every route.
TEST_F(FastCalls, an_abort_leaves_what_the_executing_parser_leaves) {
  constexpr std::string_view kProgram = "for i = 1 to 3\n"
                                        "  for j = 1 to 2\n"
                                        "    x = outer(i) + 1\n"
                                        "  next\n"
                                        "next\n"
                                        "end\n"
                                        "function outer(n)\n"
                                        "  for k = 1 to 3\n"
                                        "    outer = inner(n + k)\n"
                                        "  next\n"
                                        "endfunction\n"
                                        "function inner(n)\n"
                                        "  for l = 1 to 2\n"
                                        "    inner = n\n"
                                        "    if n > 4 then\n"
                                        "      inner = inner[\"x\" +\n"
                                        "    endif\n"
                                        "  next\n"
                                        "endfunction\n";
  const std::string expected = LeftBy(kProgram, Route::Parser);
  EXPECT_NE(expected.find("level 1"), std::string::npos);
  EXPECT_NE(expected.find("loop j"), std::string::npos);
  EXPECT_EQ(expected.find("loop k"), std::string::npos);
  EXPECT_EQ(LeftBy(kProgram, Route::Automatic), expected);
  for (unsigned every = 0; every <= 30; ++every)
    EXPECT_EQ(LeftBy(kProgram, Route::Eager, every), expected) << every;
}

TEST_F(FastCalls, an_abort_drops_the_loops_that_a_called_procedure_began_after_taking_its_callers) {
  constexpr std::string_view kProgram = "for i = 1 to 3\n"
                                        "  x = outer()\n"
                                        "next\n"
                                        "function outer()\n"
                                        "  next\n" // takes the main program's loop
                                        "  outer = inner()\n"
                                        "endfunction\n"
                                        "function inner()\n"
                                        "  for k = 1 to 3\n"
                                        "    inner = inner[\"x\" +\n"
                                        "  next\n"
                                        "endfunction\n";
  const std::string expected = LeftBy(kProgram, Route::Parser, 0, 2);
  EXPECT_EQ(LeftBy(kProgram, Route::Automatic, 0, 2), expected);
  for (unsigned every = 0; every <= 20; ++every)
    EXPECT_EQ(LeftBy(kProgram, Route::Eager, every, 2), expected) << every;
}

TEST_F(FastCalls, an_exception_of_a_host_function_passes_and_leaves_the_level_of_the_caller) {
  constexpr std::string_view kProgram = "for i = 1 to 3\n"
                                        "  x = outer(i)\n"
                                        "next\n"
                                        "end\n"
                                        "function outer(n)\n"
                                        "  outer = inner(n) + 1\n"
                                        "endfunction\n"
                                        "function inner(n)\n"
                                        "  inner = n\n"
                                        "  if n = 2 then\n"
                                        "    inner = fail(n)\n"
                                        "  endif\n"
                                        "endfunction\n";
  const std::string expected = LeftBy(kProgram, Route::Parser);
  EXPECT_NE(expected.find("thrown"), std::string::npos);
  EXPECT_EQ(LeftBy(kProgram, Route::Automatic), expected);
  for (unsigned every = 0; every <= 20; ++every)
    EXPECT_EQ(LeftBy(kProgram, Route::Eager, every), expected) << every;
}

TEST_F(FastCalls, an_object_that_a_call_gave_is_let_go_by_the_statement_that_used_it) {
  constexpr std::string_view kProgram = "for i = 1 to 3\n"
                                        "  x = -give()\n"
                                        "  print held()\n"
                                        "next\n"
                                        "end\n"
                                        "function give()\n"
                                        "  give = object()\n"
                                        "endfunction\n";
  const std::vector<std::string> expected(3, "0\n");
  EXPECT_EQ(ShownBy(kProgram, Route::Parser), expected);
  EXPECT_EQ(ShownBy(kProgram, Route::Automatic), expected);
  for (unsigned every = 0; every <= 10; ++every)
    EXPECT_EQ(ShownBy(kProgram, Route::Eager, every), expected) << every;
}

TEST_F(FastCalls, an_object_that_a_call_gave_does_not_outlive_an_abort_of_its_statement) {
  constexpr std::string_view kProgram = "for i = 1 to 3\n"
                                        "  x = both(give(), trouble(i))\n"
                                        "next\n"
                                        "end\n"
                                        "function both(a, b)\n"
                                        "  both = 1\n"
                                        "endfunction\n"
                                        "function give()\n"
                                        "  give = object()\n"
                                        "endfunction\n"
                                        "function trouble(n)\n"
                                        "  trouble = n\n"
                                        "  if n = 3 then\n"
                                        "    trouble = fail()\n"
                                        "  endif\n"
                                        "endfunction\n";
  for (const Route route : {Route::Parser, Route::Automatic, Route::Eager}) {
    EXPECT_NE(LeftBy(kProgram, route).find("thrown"), std::string::npos);
    EXPECT_EQ(ObjectsHeld(), 0) << static_cast<int>(route);
  }
}

TEST_F(FastCalls, objects_that_a_procedure_leaves_in_its_variables_are_released_when_the_main_program_goes_on) {
  constexpr std::string_view kProgram = "for i = 1 to 3\n"
                                        "  call keep(i)\n"
                                        "  x = held()\n"
                                        "  print x\n"
                                        "next\n"
                                        "end\n"
                                        "sub keep(n)\n"
                                        "  if n > 0 then\n"
                                        "    o = object()\n"
                                        "    p = o\n"
                                        "  endif\n"
                                        "  call deeper(o)\n"
                                        "  print held()\n"
                                        "endsub\n"
                                        "sub deeper(q)\n"
                                        "  r = q\n"
                                        "endsub\n";
  const std::vector<std::string> expected = ShownBy(kProgram, Route::Parser);
  EXPECT_EQ(expected, (std::vector<std::string>{"4\n", "0\n", "4\n", "0\n", "4\n", "0\n"}));
  EXPECT_EQ(ShownBy(kProgram, Route::Automatic), expected);
  for (unsigned every = 0; every <= 20; ++every)
    EXPECT_EQ(ShownBy(kProgram, Route::Eager, every), expected) << every;
}

} // namespace
