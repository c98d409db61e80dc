// The tape: values that the executing parser takes instead of computing them again.
#include "interpreter/fast/tape.h"

#include "support/fast_route_test.h"

namespace {

using brindle::FastTape;
using brindle::FastTapeEntry;

std::vector<FastTapeEntry> Entries() {
  std::vector<FastTapeEntry> entries;
  entries.push_back({4, 6, 7, CBasicVariable(1.0)});
  entries.push_back({9, 20, 3, CBasicVariable(2.0)});
  return entries;
}

class FastTapes : public FastRouteTest {};

TEST_F(FastTapes, values_are_taken_in_order_and_once) {
  FastTape tape;
  EXPECT_TRUE(tape.IsEmpty());
  tape.Record(Entries());
  EXPECT_FALSE(tape.IsEmpty());
  EXPECT_EQ(tape.Take(9, 3), nullptr); // not yet
  const FastTapeEntry* first = tape.Take(4, 7);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->value.GetNumberValue(), 1.0);
  EXPECT_EQ(first->end, 6U);
  EXPECT_EQ(tape.Take(4, 7), nullptr);
  ASSERT_NE(tape.Take(9, 3), nullptr);
  EXPECT_TRUE(tape.IsEmpty());
}

TEST_F(FastTapes, a_value_belongs_to_its_place_and_its_level) {
  FastTape tape;
  tape.Record(Entries());
  for (int level = 2; level < 7; ++level)
    EXPECT_EQ(tape.Take(4, level), nullptr);
  EXPECT_EQ(tape.Take(5, 7), nullptr);
  EXPECT_NE(tape.Take(4, 7), nullptr);
}

TEST_F(FastTapes, clearing_drops_what_was_not_taken) {
  FastTape tape;
  tape.Record(Entries());
  tape.Clear();
  EXPECT_TRUE(tape.IsEmpty());
  EXPECT_EQ(tape.Take(4, 7), nullptr);
}

// Every shape of expression gives up behind each of its operations, and the parser goes on behind what is known.
TEST_F(FastTapes, expressions_of_every_level_are_resumed) {
  constexpr std::string_view kProgram = "dim a[4]\n"
                                        "a[0] = 0 : a[1] = 1 : a[2] = 3 : a[3] = 2\n"
                                        "s = \"text\"\n"
                                        "for r = 1 to 2\n"
                                        "  x = 1 + r * 2 ^ (r + 1) - -r / (4 - r) + a[r * 2 - a[2] + 3 - r]\n"
                                        "  y = int(x) + len(s) * (x + (x - (1 + (r + 2)))) - max(x, min(r, 2))\n"
                                        "  t = s + (x + 1) + mid(s, r, r + 1) + int(y) + str(r) + (s + (s + r))\n"
                                        "  z = val(left(t, 2 + r)) + instr(t, right(s, r)) ^ (1 + 1)\n"
                                        "  for k = r * 2 - 1 to r + a[2] - (1 + 1)\n"
                                        "    a[k - r] = a[k - r] + (k + 1) * (k + 2)\n"
                                        "  next\n"
                                        "  if (x + 1) * 2 ~~ (2 + x * 2) then\n"
                                        "    z = z + 1000\n"
                                        "  endif\n"
                                        "  u = f(r + 1, s + (r + 1), f(1, s, (x + 1) * 2))\n"
                                        "  print x; y; t; z; u; a[0]; a[1]; a[2]; a[3]\n"
                                        "next\n"
                                        "end\n"
                                        "function f(n, t, m)\n"
                                        "  f = (n + 1) * 2 + len(t) + m\n"
                                        "endfunction\n";
  const std::vector<std::string> expected = ShownBy(kProgram, Route::Parser);
  ASSERT_EQ(expected.size(), 2U);
  EXPECT_EQ(ShownBy(kProgram, Route::Automatic), expected);
  for (unsigned every = 0; every <= 150; ++every)
    EXPECT_EQ(ShownBy(kProgram, Route::Eager, every), expected) << every;
}

// What stands behind a failure is not read, so that no array's current index moves.
TEST_F(FastTapes, an_abort_leaves_what_follows_unread) {
  constexpr std::string_view kPrograms[] = {
      // by the handler of a loop variable, between start and end value
      "event create changed stumble\ndim p[3]\np[2] = 2\np[0] = \"first\"\nn = 0\nwatch create n changed\n"
      "for n = 0 to p[2]\nnext\nend\nsub stumble(v)\nx = missing(v)\nendsub\n",
      // by an index, before the value is read
      "dim p[3]\np[2] = 2\np[0] = \"first\"\np[nope] = p[2]\n",
      // by an operand
      "dim p[3]\np[2] = 2\np[0] = \"first\"\nx = nope + p[2]\n",
      // by a first part that is no text any more
      "dim p[3]\np[2] = 2\ns = \"t\"\nfor r = 1 to 2\np[0] = \"first\"\nx = s + 1 + p[2]\n"
      "p[0] = \"first\"\ns = Nothing\nnext\n"};
  for (const std::string_view program : kPrograms)
    for (const Route route : {Route::Parser, Route::Automatic, Route::Eager}) {
      EXPECT_NE(LeftBy(program, route).find("error"), std::string::npos) << program;
      EXPECT_EQ(TextOf(u"p"), "first") << program << static_cast<int>(route);
    }
}

} // namespace
