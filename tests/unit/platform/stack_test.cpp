#include "platform/stack.h"

#include <gtest/gtest.h>

#include <pthread.h>

#include <cstddef>

namespace brindle {
namespace {

constexpr std::size_t FrameSize = 4096;

// A frame whose address is known elsewhere cannot be optimised away.
volatile char* volatile deepestFrame = nullptr;

// Uses at least FrameSize bytes a level and gives what remains at the deepest one.
[[gnu::noinline]] std::size_t RemainingAtDepth(int depth) {
  volatile char frame[FrameSize];
  frame[0] = static_cast<char>(depth);
  deepestFrame = frame;
  const std::size_t remaining = depth == 0 ? RemainingStack() : RemainingAtDepth(depth - 1);
  frame[FrameSize - 1] = frame[0];
  return remaining;
}

[[gnu::noinline]] int DepthUntil(std::size_t reserve) {
  volatile char frame[FrameSize];
  frame[0] = 0;
  deepestFrame = frame;
  const int depth = RemainingStack() < reserve ? 0 : 1 + DepthUntil(reserve);
  frame[FrameSize - 1] = frame[0];
  return depth;
}

TEST(Stack, main_thread_has_at_most_64_mebibytes) {
  const std::size_t remaining = RemainingStack();
  EXPECT_GT(remaining, 64U * 1024);
  EXPECT_LE(remaining, std::size_t{64} << 20);
}

TEST(Stack, deeper_frames_leave_less) {
  const std::size_t here = RemainingStack();
  const std::size_t deeper = RemainingAtDepth(10);
  EXPECT_LT(deeper + 10 * FrameSize, here);
  EXPECT_EQ(RemainingStack(), here);
}

struct Measured {
  std::size_t atStart = 0;
  int depth = 0;
};

void* MeasureThread(void* argument) {
  auto* measured = static_cast<Measured*>(argument);
  measured->atStart = RemainingStack();
  measured->depth = DepthUntil(128U * 1024);
  return nullptr;
}

TEST(Stack, recursion_in_a_thread_ends_before_its_stack_does) {
  for (const std::size_t size : {std::size_t{512} << 10, std::size_t{2} << 20}) {
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, size), 0);
    Measured measured;
    pthread_t thread{};
    ASSERT_EQ(pthread_create(&thread, &attributes, MeasureThread, &measured), 0);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
    pthread_attr_destroy(&attributes);

    // The thread library may hand out a larger stack that an earlier thread has left.
    EXPECT_GT(measured.atStart, size / 2);
    EXPECT_GT(measured.depth, 10);
    EXPECT_LT(static_cast<std::size_t>(measured.depth), measured.atStart / FrameSize);
  }
}

TEST(Stack, recursion_on_the_main_thread_ends_before_its_stack_does) {
  EXPECT_GT(DepthUntil(256U * 1024), 50);
}

} // namespace
} // namespace brindle
