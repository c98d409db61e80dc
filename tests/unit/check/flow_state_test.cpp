// What is known where ways meet.
#include "check/flow_state.h"

#include <gtest/gtest.h>

#include <vector>

namespace brindle {
namespace {

struct JoinRow {
  const char* name;
  FlowState state;
  FlowState other;
  FlowState joined;
  bool changed;
};

TEST(FlowState, joining_adds_kinds_and_keeps_the_loops_that_both_have_on_top) {
  const OpenLoop a{true, 10};
  const OpenLoop b{false, 20};
  const OpenLoop c{true, 30};
  const JoinRow rows[] = {
      {"the same", {{1, 2}, {a}, true}, {{1, 2}, {a}, true}, {{1, 2}, {a}, true}, false},
      {"another kind", {{1, 2}, {}, true}, {{1, 4}, {}, true}, {{1, 6}, {}, true}, true},
      {"a kind that is known", {{1, 6}, {}, true}, {{1, 4}, {}, true}, {{1, 6}, {}, true}, false},
      {"one loop more below", {{}, {a, b}, true}, {{}, {b}, true}, {{}, {b}, false}, true},
      {"another loop on top", {{}, {a, b}, true}, {{}, {a, c}, true}, {{}, {}, false}, true},
      {"nothing known of the other", {{}, {b}, true}, {{}, {b}, false}, {{}, {b}, false}, true},
      {"nothing known already", {{}, {b}, false}, {{}, {a, b}, true}, {{}, {b}, false}, false},
  };
  for (const JoinRow& row : rows) {
    FlowState state = row.state;
    EXPECT_EQ(row.changed, state.Join(row.other)) << row.name;
    EXPECT_EQ(row.joined.variables, state.variables) << row.name;
    EXPECT_EQ(row.joined.loops, state.loops) << row.name;
    EXPECT_EQ(row.joined.loopsKnown, state.loopsKnown) << row.name;
    EXPECT_FALSE(state.Join(row.other)) << row.name << ", once more";
  }
}

} // namespace
} // namespace brindle
