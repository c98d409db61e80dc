#include "platform/text_blocks.h"

#include "platform/memory_account.h"

#include <array>
#include <cstdlib>
#include <new>
#include <pthread.h>
#include <stdexcept>

// A checker of memory is to see each text come and go.
#if defined(__SANITIZE_ADDRESS__)
#define BRINDLE_KEEPS_BLOCKS 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(memory_sanitizer)
#define BRINDLE_KEEPS_BLOCKS 0
#endif
#endif
#ifndef BRINDLE_KEEPS_BLOCKS
#define BRINDLE_KEEPS_BLOCKS 1
#endif

namespace brindle::detail {

namespace {

// Short texts come in three lengths. With their header they fill what an allocator gives in any case.
constexpr std::array<int, 3> kCapacities = {11, 27, 59};
constexpr int kLongestKept = kCapacities.back();
constexpr unsigned kMostKept = 64; // of each length

constexpr std::size_t ClassOf(int capacity) noexcept {
  return capacity <= kCapacities[0] ? 0 : capacity <= kCapacities[1] ? 1 : 2;
}

constexpr std::size_t BytesOf(int capacity) noexcept {
  return sizeof(TextBlock) + (static_cast<std::size_t>(capacity) + 1) * sizeof(char16_t);
}

struct KeptBlock {
  KeptBlock* next;
};

// What a thread keeps. Without a constructor and a destructor, so that it can be used from the first text of a thread
// to the last.
struct KeptBlocks {
  std::array<KeptBlock*, kCapacities.size()> first;
  std::array<unsigned, kCapacities.size()> room; // for how many more; none until the thread's end is watched
  bool isDecided;
};
[[gnu::tls_model("initial-exec")]] constinit thread_local KeptBlocks kept = {};

bool keepsBlocks = BRINDLE_KEEPS_BLOCKS != 0;

void LetGo(void*) noexcept {
  kept.room.fill(0);
  kept.isDecided = true;
  for (KeptBlock*& first : kept.first)
    while (first != nullptr) {
      KeptBlock* const block = first;
      first = block->next;
      std::free(block);
    }
}

// The first blocks of a thread go to the allocator until it is known that somebody lets go of the others when the
// thread ends. A thread-local object cannot do that: to register its end takes memory, and there may be none.
void Decide() noexcept {
  if (kept.isDecided || !keepsBlocks)
    return;
  kept.isDecided = true;
  static const struct Key {
    pthread_key_t key{};
    bool isMade = pthread_key_create(&key, LetGo) == 0;
  } key;
  if (key.isMade && pthread_setspecific(key.key, &kept) == 0)
    kept.room.fill(kMostKept);
}

TextBlock* Begin(void* memory, int capacity) noexcept {
  auto* block = ::new (memory) TextBlock{{1}, 0, capacity, {0}};
  block->Units()[0] = 0;
  return block;
}

} // namespace

TextBlock* MakeBlock(int capacity) {
  if (capacity <= kLongestKept) {
    const std::size_t length = ClassOf(capacity);
    capacity = kCapacities[length];
    if (KeptBlock* const block = kept.first[length]; block != nullptr) {
      MemoryAccount::AddSmall(BytesOf(capacity));
      kept.first[length] = block->next;
      ++kept.room[length];
      return Begin(block, capacity);
    }
  } else if (capacity > CString::kMaxLength) {
    throw std::length_error("text too long");
  }
  const std::size_t bytes = BytesOf(capacity);
  MemoryAccount::Add(bytes);
  void* const memory = std::malloc(bytes);
  if (memory == nullptr) {
    MemoryAccount::Remove(bytes);
    throw std::bad_alloc();
  }
  return Begin(memory, capacity);
}

void FreeBlock(TextBlock* block) noexcept {
  const int capacity = block->capacity;
  MemoryAccount::Remove(BytesOf(capacity));
  block->~TextBlock();
  if (capacity <= kLongestKept) {
    const std::size_t length = ClassOf(capacity);
    if (kept.room[length] != 0) {
      --kept.room[length];
      kept.first[length] = ::new (block) KeptBlock{kept.first[length]};
      return;
    }
    Decide();
  }
  std::free(block);
}

void KeepNoBlocks() noexcept {
  keepsBlocks = false;
  LetGo(nullptr);
}

} // namespace brindle::detail
