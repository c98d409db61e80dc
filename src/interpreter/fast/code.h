// FastCode: the compiled statements of one program text.
// Room: interpreter. Used by: the compiler, which fills it, and the machine, which runs it.
// May touch: nothing but itself.
// Must not: know a variable's address within a frame: frames move; a global's address stays.
// Invariant: cells never move and are never freed while the text lives: a call in progress comes back to them. A
// statement that is not to be run any more is overwritten with a jump to its entry, never removed.
#pragma once

#include "interpreter/fast/operations.h"
#include "interpreter/func_desc.h"
#include "interpreter/scanner.h"
#include "values/value_format.h"

#include <cstring>
#include <deque>
#include <memory>
#include <unordered_map>
#include <vector>

namespace brindle {

struct FastEntry;

// An operation with its operands, or the data of the operation before it: a pointer and a number.
struct FastCell {
  std::int32_t operation = 0; // the distance of its handler, set by the machine's table
  std::uint32_t a = 0;
  std::uint32_t b = 0;
  std::uint32_t c = 0;

  [[nodiscard]] void* Pointer() const noexcept {
    void* pointer;
    std::memcpy(&pointer, &operation, sizeof pointer);
    return pointer;
  }
  void SetPointer(const void* pointer) noexcept { std::memcpy(&operation, &pointer, sizeof pointer); }
  [[nodiscard]] double Number() const noexcept {
    double number;
    std::memcpy(&number, &b, sizeof number);
    return number;
  }
  void SetNumber(double number) noexcept { std::memcpy(&b, &number, sizeof number); }
  // Where a jump goes: in the place of b and c, so that one cell is enough.
  [[nodiscard]] const FastEntry& Target() const noexcept {
    const FastEntry* target;
    std::memcpy(&target, &b, sizeof target);
    return *target;
  }
  void SetTarget(const FastEntry& entry) noexcept {
    const FastEntry* const target = &entry;
    std::memcpy(&b, &target, sizeof target);
  }
};
static_assert(sizeof(FastCell) == 16 && sizeof(void*) <= 8);

class VariableSlot;

// Slots are named by their distance from the begin of their frame in bytes: nothing is left to be multiplied while a
// program runs.
inline constexpr std::uint32_t kSlotSize = 16; // as the machine asserts

[[nodiscard]] inline VariableSlot& SlotAt(VariableSlot* frame, std::uint32_t slot) noexcept {
  return *reinterpret_cast<VariableSlot*>(reinterpret_cast<char*>(frame) + slot);
}
[[nodiscard]] inline const VariableSlot& SlotAt(const VariableSlot* frame, std::uint32_t slot) noexcept {
  return *reinterpret_cast<const VariableSlot*>(reinterpret_cast<const char*>(frame) + slot);
}

class ScriptMap;
struct FastStatement;

// Where a statement begins: what is known of it, and its cells once it is compiled. Until then its code is a cell that
// hands over to the executing parser, so that whoever jumps here need not ask.
struct FastEntry {
  explicit FastEntry(std::uint32_t start) noexcept : position(start) { leave.a = start; }
  FastEntry(const FastEntry&) = delete;
  FastEntry& operator=(const FastEntry&) = delete;

  [[nodiscard]] bool IsCompiled() const noexcept { return code != &leave; }
  void Forget() noexcept { code = &leave; }

  const FastCell* code = &leave;
  FastCell leave; // the operation 0, Exit
  std::uint32_t position = 0;
  std::uint32_t runs = 0; // by the executing parser, counted only as far as it matters
  bool refused = false;   // nothing to be compiled
  FastStatement* statement = nullptr;
};

// A compiled statement.
struct FastStatement {
  FastEntry* entry = nullptr;
  FastCell* first = nullptr;
  std::uint32_t bails = 0;    // since it was compiled
  std::uint32_t compiles = 0; // of this place in the text
  // The condition of a "do" as it stands at its "loop": giving up takes the loop from the control stack, as "loop" does
  // before the condition is read again, and counts for the "loop".
  FastStatement* loop = nullptr;
};

// An intermediate value that exists while an operation runs: where it is kept, and which words of the text it is
// the value of, so that the executing parser can go on behind them.
struct FastOperand {
  std::int32_t below = -1; // the next older one
  std::uint32_t slot = 0;
  bool isNumber = false;  // a number of type N
  bool isInteger = false; // which stands for an integer
  std::uint8_t level = 0; // of the grammar
  std::uint32_t start = 0;
  std::uint32_t end = 0;
};

// Cells in one piece, with what a way back to the executing parser needs for each.
struct FastChunk {
  std::vector<FastCell> cells;
  std::vector<std::int32_t> operands; // the newest live operand before the cell's operation
  std::vector<FastStatement*> statements;
};

// A procedure as a compiled call sees it.
struct FastCallee {
  CFuncDesc* function = nullptr;
  FastEntry* body = nullptr;
  std::uint32_t result = 0; // slot in the callee's frame
  std::vector<std::uint32_t> parameters;
  const std::uint32_t* slots = nullptr; // of the parameters
  std::size_t count = 0;
};

// A call of a built-in function.
struct FastBuiltIn {
  CFuncDesc::Handler handler = nullptr;
  FUNCTION_TYPE code = FUNCTION_NONE;
  const Token* closing = nullptr; // the ")": what is current while the handler runs
};

// A text that operations refer to, or parts to be joined.
struct FastPart {
  enum Kind : std::uint8_t { Slot, Number, Integer, Constant };
  Kind kind = Slot;
  std::uint32_t slot = 0;
  CString text;
};

// A map of a constant name, a key, and where the map was found last.
struct FastMapUse {
  CString name;
  std::vector<FastPart> key; // one part
  ScriptMap* map = nullptr;
  std::uint64_t changes = 0; // of the table of maps by then
};

// The loop variable and the body of the "for" that a "next" closed last.
struct FastLoop {
  static constexpr std::uint32_t kNowhere = 0xFFFFFFFF;

  const Token* site = nullptr;       // the variable's token; null for a "do"
  std::uint32_t position = kNowhere; // of the body, or of the word "do"
  std::uint32_t slot = 0;            // of the variable
  FastEntry* target = nullptr;       // where to go on; null until a loop was met
};

class FastCode {
public:
  FastCode() = default;
  FastCode(const FastCode&) = delete;
  FastCode& operator=(const FastCode&) = delete;

  [[nodiscard]] FastEntry& EntryOf(const Token& token) {
    if (token.fast == nullptr) {
      m_entries.emplace_back(token.start);
      token.fast = &m_entries.back();
    }
    return *token.fast;
  }
  // The chunk that a cell lies in; null for a cell of another text.
  [[nodiscard]] const FastChunk* ChunkOf(const FastCell* cell) const noexcept {
    for (auto chunk = m_chunks.rbegin(); chunk != m_chunks.rend(); ++chunk)
      if (cell >= chunk->cells.data() && cell < chunk->cells.data() + chunk->cells.size())
        return &*chunk;
    return nullptr;
  }
  // Forgets what every statement was compiled to; what is running now keeps its cells.
  void Forget() noexcept {
    ++m_nGeneration;
    for (FastEntry& entry : m_entries) {
      entry.Forget();
      entry.statement = nullptr;
      entry.refused = false;
    }
  }

  // Changes whenever everything is forgotten.
  [[nodiscard]] std::uint32_t Generation() const noexcept { return m_nGeneration; }

  // What the cells refer to; addresses stay.
  std::deque<FastChunk> m_chunks;
  std::deque<FastStatement> m_statements;
  std::deque<FastOperand> m_operands;
  std::deque<FastCallee> m_callees;
  std::deque<FastBuiltIn> m_builtIns;
  std::deque<std::vector<FastPart>> m_parts;
  std::deque<FastLoop> m_loops;
  std::deque<FastMapUse> m_mapUses;
  std::deque<ValueFormat> m_formats;                           // of "format" with a constant text
  std::unordered_map<std::uint32_t, std::uint32_t> m_doOfLoop; // positions of the words
  unsigned layout = 0;                                         // of the store, when the statements were compiled
  std::uint64_t functions = 0;                                 // generation of the function tables, likewise

private:
  std::uint32_t m_nGeneration = 0;
  std::deque<FastEntry> m_entries;
};

} // namespace brindle
