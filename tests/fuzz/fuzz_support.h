// What the fuzzers share: the entry that a fuzzing engine calls, checks, input cut into pieces, a folder in memory.
// Room: tests. Used by: the fuzzers, and the replay of what they found.
// May touch: one folder of its own in memory.
// Must not: know what is fuzzed.
// Invariant: a run depends on its input alone, however often it is repeated in one process.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

// Calls what is fuzzed with one input. Always 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

// Ends the process when something that always holds does not: the engine then keeps the input.
inline void Require(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
  }
}

// An input read from its front; what is behind its end reads as zeros and empty texts.
class Input {
public:
  Input(const std::uint8_t* data, std::size_t size) : m_bytes(reinterpret_cast<const char*>(data), size) {}

  [[nodiscard]] std::uint64_t Number(std::size_t bytes);
  [[nodiscard]] std::uint8_t Byte() { return static_cast<std::uint8_t>(Number(1)); }
  [[nodiscard]] std::string_view Bytes(std::size_t count);
  [[nodiscard]] std::string_view Rest() { return Bytes(m_bytes.size()); }

private:
  std::string_view m_bytes;
};

// A folder of the process that is empty at its start and goes with it.
[[nodiscard]] const std::string& ScratchFolder();
// Puts a file into that folder.
void WriteScratch(const std::string& name, std::string_view bytes);
// Empties that folder.
void ClearScratch();

} // namespace fuzz
