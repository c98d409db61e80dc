#include "brindle/text.h"

#include "platform/memory_account.h"
#include "support/text_printing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

namespace {

// The memory of a short text goes to the next one of about that length, on whatever thread it ended.
TEST(TextBlocks, texts_made_and_ended_on_many_threads_stay_what_they_are) {
  constexpr int kThreads = 4;
  constexpr int kRounds = 200;
  const auto textOf = [](int number) {
    return std::u16string(static_cast<std::size_t>(number % 70), static_cast<char16_t>(u'a' + number % 26));
  };
  std::vector<std::vector<CString>> texts(kThreads);
  for (int round = 0; round < 3; ++round) {
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
      threads.emplace_back([&texts, &textOf, i] {
        std::vector<CString>& mine = texts[static_cast<std::size_t>(i)];
        mine.clear(); // another thread made these
        for (int number = 0; number < kRounds; ++number) {
          mine.emplace_back(textOf(number));
          if (number % 3 == 1)
            mine.erase(mine.begin() + number / 7);
          CString shared = mine.back();
          shared.Append(u"!");
        }
      });
    for (std::thread& thread : threads)
      thread.join();
    std::rotate(texts.begin(), texts.begin() + 1, texts.end());
  }
  std::vector<CString> expected;
  for (int number = 0; number < kRounds; ++number) {
    expected.emplace_back(textOf(number));
    if (number % 3 == 1)
      expected.erase(expected.begin() + number / 7);
  }
  for (const std::vector<CString>& made : texts)
    EXPECT_EQ(made, expected);
}

// Blocks that a thread keeps for the next texts are nobody's data.
TEST(TextBlocks, texts_that_ended_count_for_nobodys_memory) {
  for (const std::size_t length : {1U, 11U, 12U, 27U, 28U, 59U, 60U, 5000U}) {
    const std::u16string units(length, u'x');
    const std::int64_t before = brindle::MemoryAccount::Balance();
    for (int round = 0; round < 3; ++round) {
      std::vector<CString> texts;
      for (int i = 0; i < 100; ++i)
        texts.emplace_back(units);
      const auto least = static_cast<std::int64_t>(100 * length * sizeof(char16_t));
      EXPECT_GE(brindle::MemoryAccount::Balance(), before + least) << length;
      texts.clear();
      EXPECT_EQ(brindle::MemoryAccount::Balance(), before) << length;
    }
  }
}

} // namespace
