#include "data/random_source.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace brindle {
namespace {

std::vector<int> First(std::uint32_t seed, int count) {
  RandomSource random;
  random.Seed(seed);
  std::vector<int> numbers;
  for (int i = 0; i < count; ++i)
    numbers.push_back(random.Next());
  return numbers;
}

TEST(RandomSource, numbers_lie_in_0_to_32767_and_reach_both_ends) {
  const std::vector<int> numbers = First(1, 1000000);
  EXPECT_EQ(*std::min_element(numbers.begin(), numbers.end()), 0);
  EXPECT_EQ(*std::max_element(numbers.begin(), numbers.end()), 32767);
}

TEST(RandomSource, numbers_are_spread_evenly) {
  std::array<int, 16> counts{};
  for (const int number : First(2, 160000))
    ++counts[static_cast<std::size_t>(number / 2048)];
  for (const int count : counts)
    EXPECT_NEAR(count, 10000, 600);
}

TEST(RandomSource, same_seed_gives_the_same_numbers) {
  EXPECT_EQ(First(3, 100), First(3, 100));
  EXPECT_NE(First(3, 100), First(4, 100));
}

} // namespace
} // namespace brindle
