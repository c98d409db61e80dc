// The memory of texts: blocks, short ones of which are kept for the next text.
// Room: platform. Used by: CString.
// May touch: the allocator, what the thread has used of its memory.
// Must not: fail for a short text where the allocator would not.
// Invariant: a block that is kept belongs to the thread that gave it back, and counts for nobody's memory. No thread
// keeps more than a few kilobytes, and none when it ends.
#pragma once

#include "brindle/text.h"

namespace brindle::detail {

// An empty text with room for so many units or more; throws std::bad_alloc, and std::length_error beyond
// CString::kMaxLength.
[[nodiscard]] TextBlock* MakeBlock(int capacity);

// For tests that count what the allocator has given: from now on no thread keeps any, and this one lets go of its own.
void KeepNoBlocks() noexcept;

} // namespace brindle::detail
