// VariableStore: the variables of one interpreter, by name and scope level.
// Room: data. Used by: the members of CBrindle that find, create and remove variables.
// May touch: slots.
// Must not: report errors; the callers decide.
// Invariant: a name, lower-cased, has one number; a local is frame[level][number], a global hangs on the
// number's entry under its spelling. A slot's place is good until the next variable is created.
//
// Scripts see one flat table whose keys are a global's spelling, or a local's lower-cased name followed by
// "__#" and its level. So the identifier x__#1 names the main program's x, wherever it is used: such names
// lead to that frame.
#pragma once

#include "brindle/collections.h"
#include "data/variable_slot.h"
#include "platform/memory_account.h"

#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace brindle {

// A name as the program spells it, with its number.
struct NameRef {
  CString spelling;
  int number = -1;
};

class VariableStore {
public:
  // The number of a name, made when it is new / only if it is known.
  [[nodiscard]] int NumberOf(const CString& lowered);
  [[nodiscard]] NameRef Ref(const CString& spelling);
  [[nodiscard]] std::optional<NameRef> KnownRef(const CString& spelling) const;

  // Under its spelling first (a global hides a local), then as a local of that level. Null when neither is.
  [[nodiscard]] VariableSlot* Find(const NameRef& name, int level);
  // The slot of a variable that Find does not find, still undefined: a global's, or that level's local.
  [[nodiscard]] VariableSlot& Make(const NameRef& name, int level, bool global);
  // The key under which Find finds a name; it is a local's when `name` is not found.
  [[nodiscard]] CString KeyOf(const NameRef& name, int level);
  [[nodiscard]] static CString ScopedKey(const CString& spelling, int level);
  // Removes the local; false when there is none.
  bool Undefine(const NameRef& name, int level);

  [[nodiscard]] int Count() const;
  // Removes every variable whose key ends with that level's suffix; how many they were.
  int RemoveLevel(int level);
  // To be said when an object is stored: until then nobody needs to look for objects when a procedure returns.
  void NoteObjects() noexcept { m_mayHoldObjects = true; }
  // A place in the store that stays the same while variables come and go.
  struct Place {
    bool global = false;
    std::size_t outer = 0; // frame, or number of a global's name
    std::size_t inner = 0; // number in the frame, or index among the globals of that name
  };
  // Moves `place` on to the next variable at that level or deeper that holds an object, which may be the one where it
  // stands; false when there is none. Needs no memory: objects are let go when a run has ended for want of it.
  [[nodiscard]] bool FindObject(int level, Place& place) const noexcept;
  void NoteNoObjects() noexcept { m_mayHoldObjects = false; } // by a search of all procedures that found none
  // Null once the variable is gone.
  [[nodiscard]] VariableSlot* At(const Place& place) noexcept;
  void Clear() noexcept;

  // What compiled statements use. A frame starts with slots that are nobody's variables, for intermediate values.
  // The first of them always hold numbers.
  static constexpr int kNumberTemporaries = 16;
  static constexpr int kTemporaries = 40;
  // The level's frame with room for every name known by now; good until a variable of a new name is made.
  [[nodiscard]] VariableSlot* FrameAt(int level) {
    const auto at = static_cast<std::size_t>(level);
    return at < m_frames.size() && m_frames[at].count >= m_nFrameSize ? m_frames[at].slots.get() : MakeFrame(level);
  }
  // The same for the level above one whose frame was asked for.
  [[nodiscard]] VariableSlot* FrameAbove(int level) {
    const Frame& frame = m_frames[static_cast<std::size_t>(level) + 1];
    return frame.count >= m_nFrameSize ? frame.slots.get() : MakeFrame(level + 1);
  }
  // A frame stays where it is as long as this does not change.
  [[nodiscard]] std::size_t FrameSize() const noexcept { return m_nFrameSize; }
  // The slot of a local within its frame. From now on a global of that name makes compiled statements stale.
  [[nodiscard]] int LocalPlace(int number) noexcept;
  // The global of that spelling, defined or not, null when there is none. Its address stays good.
  [[nodiscard]] VariableSlot* FindGlobal(const NameRef& name) noexcept;
  // Whether the name leads to some level's frame.
  [[nodiscard]] bool IsAlias(int number) const noexcept {
    return m_names[static_cast<std::size_t>(number)].aliasNumber >= 0;
  }
  // Changes whenever statements that were compiled for a name no longer mean what they did.
  [[nodiscard]] unsigned Layout() const noexcept { return m_nLayout; }
  [[nodiscard]] bool MayHoldObjects() const noexcept { return m_mayHoldObjects; }

private:
  struct Global {
    CString spelling;
    VariableSlot slot;
  };
  struct Name {
    CString lowered;
    std::vector<std::unique_ptr<Global>> globals; // their addresses stay
    bool usedAsLocal = false;                     // by a compiled statement
    int aliasNumber = -1;                         // of a name of the form NAME__#LEVEL
    int aliasLevel = 0;
  };
  struct Frame {
    std::unique_ptr<VariableSlot[]> slots;
    std::size_t count = 0;

    Frame() = default;
    Frame(Frame&& other) noexcept : slots(std::move(other.slots)), count(std::exchange(other.count, 0)) {}
    ~Frame() { MemoryAccount::Remove(count * sizeof(VariableSlot)); }
  };

  [[nodiscard]] VariableSlot* FindLocal(int number, int level) noexcept;
  [[nodiscard]] VariableSlot& LocalSlot(int number, int level);
  VariableSlot* MakeFrame(int level);

  std::vector<Name> m_names;
  std::unordered_map<CString, int> m_numbers;
  std::vector<Frame> m_frames; // by level, and a level more; a variable stands behind the temporaries
  std::size_t m_nFrameSize = kTemporaries;
  unsigned m_nLayout = 0;
  bool m_mayHoldObjects = false;
};

} // namespace brindle
