#include "platform/stack.h"

#include <gtest/gtest.h>

#include <pthread.h>
#include <ucontext.h>

#include <cstddef>
#include <memory>

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

// What a coroutine of the host sees, on a stack of its own.
std::size_t seen = 0;

void Look() {
  seen = RemainingStack();
}

void LookOn(void* stack, std::size_t size) {
  ucontext_t here{};
  ucontext_t there{};
  ASSERT_EQ(getcontext(&there), 0);
  there.uc_stack.ss_sp = stack;
  there.uc_stack.ss_size = size;
  there.uc_link = &here;
  makecontext(&there, &Look, 0);
  seen = 0;
  ASSERT_EQ(swapcontext(&here, &there), 0);
}

constexpr std::size_t CoroutineStack = std::size_t{256} << 10;

void* LookOnAnother(void* stack) {
  static_cast<void>(RemainingStack());
  LookOn(stack, CoroutineStack);
  return nullptr;
}

TEST(Stack, on_a_stack_of_the_hosts_own_the_remainder_is_a_guess) {
  // Far below the thread's own stack, and above it.
  const auto below = std::make_unique<char[]>(CoroutineStack);
  static_cast<void>(RemainingStack());
  LookOn(below.get(), CoroutineStack);
  const std::size_t guess = seen;
  EXPECT_GT(guess, 64U * 1024);
  alignas(16) char above[CoroutineStack];
  pthread_t thread{};
  ASSERT_EQ(pthread_create(&thread, nullptr, &LookOnAnother, above), 0);
  ASSERT_EQ(pthread_join(thread, nullptr), 0);
  EXPECT_EQ(seen, guess);
}

} // namespace
} // namespace brindle
