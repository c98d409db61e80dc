// FastMachine: runs compiled statements.
// Room: interpreter. Used by: RunCompiled; the compiler, for the table of handlers.
// May touch: slots, the control stack, the reading position when it hands over.
// Must not: report an error on its own account but the missing result of a function; decide what unusual values mean.
// Invariant: on anything unusual it gives up before anything is changed, and the executing parser runs the statement
// again with the values already computed. Script calls are frames of this machine; those that the executing parser
// makes run in a machine of their own on the same list of frames.
#pragma once

#include "interpreter/fast/code.h"
#include "interpreter/fast/tape.h"

#include <memory>
#include <vector>

class CBrindle;

namespace brindle {

class VariableSlot;
struct InterpreterState;
class ExecutionBudget;

// How programs are run; all but the first are for tests.
enum class FastMode {
  Automatic, // statements are compiled when they are run for the second time
  Never,
  Eager // statements are compiled at once, and give up at every so many operations
};

// A call of a script procedure in progress. What does not change stands in the cells of the call.
struct FastFrame {
  const FastCell* pc = nullptr; // where its caller goes on, behind the cells of the call
  VariableSlot* base = nullptr; // the caller's frame of variables, as long as frames have that size
  std::uint32_t frameSize = 0;
  std::uint32_t control = 0;    // size of the control stack
  std::uint32_t generation = 0; // of the code, when the call was made
  bool stop = false;            // the caller's

  [[nodiscard]] const FastCallee& Callee() const noexcept { return *static_cast<const FastCallee*>(pc[-1].Pointer()); }
  // Arguments that the caller's statement has read.
  [[nodiscard]] std::uint32_t RecordedNames() const noexcept { return pc[-1].b; }
  // The position of the call's ")".
  [[nodiscard]] std::uint32_t Closing() const noexcept { return pc[-1].c; }
  // The caller's slot for the value.
  [[nodiscard]] std::uint32_t Destination() const noexcept { return pc[-2].b; }
  [[nodiscard]] bool IsStatement() const noexcept { return pc[-2].c != 0; }
};

// What the fast route of one interpreter holds.
struct FastState {
  static constexpr int kDeepestLevel = 50000; // frames are small, but each scope level has variables of its own

  FastMode mode = m_defaultMode;
  int deepestLevel = kDeepestLevel;                 // the last one that makes calls here
  std::uint32_t giveUpEvery = m_defaultGiveUpEvery; // operations, in eager mode
  std::uint32_t untilGiveUp = m_defaultGiveUpEvery;
  std::vector<FastFrame> frames;
  FastTape tape;
  std::unique_ptr<CBasicVariable> spareBox;         // for the next result that is an array
  CArray<CBasicVariable, CBasicVariable> arguments; // room for those of a built-in function, all not set

  // Runs of a statement before it is compiled.
  [[nodiscard]] std::uint32_t Threshold() const noexcept { return mode == FastMode::Eager ? 0 : 1; }
  [[nodiscard]] std::size_t RecordedNames() const noexcept {
    std::size_t names = 0;
    for (const FastFrame& frame : frames)
      names += frame.RecordedNames();
    return names;
  }
  // Of the interpreters made from now on.
  static void SetDefault(FastMode mode, std::uint32_t giveUpEvery) noexcept {
    m_defaultMode = mode;
    m_defaultGiveUpEvery = giveUpEvery;
  }

private:
  static inline FastMode m_defaultMode = FastMode::Automatic;
  static inline std::uint32_t m_defaultGiveUpEvery = 0;
};

class FastMachine {
public:
  explicit FastMachine(CBrindle& interpreter);
  FastMachine(const FastMachine&) = delete;
  FastMachine& operator=(const FastMachine&) = delete;
  ~FastMachine();

  // Runs from there until the procedure (or main program) in which it began has to go on in the executing parser; the
  // reading position is there then, and a statement that had been given up has been run.
  void Run(const FastEntry& entry);

  // Changes whenever some name of a function may mean something else: in that interpreter, or in all of them.
  [[nodiscard]] static std::uint64_t FunctionChanges(const InterpreterState& state) noexcept;
  // The distances of the handlers, in the order of the operations.
  [[nodiscard]] static const std::int32_t* Handlers();

private:
  static void Execute(FastMachine* machine, const FastCell* pc, const std::int32_t** handlers);
  // What happens when a procedure's statements are run by the executing parser.
  enum class Way { Compiled, Returned, Failed, Left };

  [[nodiscard]] bool IsOutermost() const noexcept;
  // Whether some call in progress was made by cells that were forgotten since.
  [[nodiscard]] bool IsForgotten() const noexcept {
    return m_fast.frames.size() > m_depth && m_fast.frames[m_depth].generation != m_code.Generation();
  }
  // Whether cells of that generation no longer mean what they did.
  [[nodiscard]] bool IsStale(std::uint32_t generation) const noexcept;
  // ---- machine_support.cpp
  [[nodiscard]] Way GiveUp(const FastCell* pc, const FastCell*& resume, bool isLoop);
  [[nodiscard]] Way Leave(std::uint32_t position, const FastCell*& resume);
  [[nodiscard]] Way StepOn(const FastCell*& resume);
  [[nodiscard]] static bool CanEnter(const FastCallee& callee, const VariableSlot* inner,
                                     const VariableSlot* arguments);
  void ReadLastWord();
  void FinishCall(bool isComplete);
  void ReleaseTemporaries() noexcept;
  [[nodiscard]] bool RunBuiltIn(const FastCell* pc, VariableSlot* base);
  [[nodiscard]] bool LinkLoop(FastLoop& loop, bool isNext);
  [[nodiscard]] static bool PartText(const FastPart& part, VariableSlot* base, CString& scratch,
                                     std::u16string_view& view);
  [[nodiscard]] static bool JoinParts(const std::vector<FastPart>& parts, VariableSlot* base, VariableSlot& target);
  [[nodiscard]] static bool CompareTexts(const std::vector<FastPart>& parts, VariableSlot* base,
                                         std::uint32_t operation, bool& result);
  [[nodiscard]] static bool TakePart(const FastCell* pc, VariableSlot* base);
  [[nodiscard]] static bool SearchText(const FastCell* pc, VariableSlot* base, double& result);
  [[nodiscard]] static bool ValueOfPart(const FastPart& part, VariableSlot* base, bool isLength, double& result);

  [[nodiscard]] bool GetFromMap(FastMapUse& use, VariableSlot* base, VariableSlot& target, bool isQuestion);
  [[nodiscard]] bool SetInMap(FastMapUse& use, VariableSlot* base, VariableSlot& value);
  [[nodiscard]] ScriptMap* MapOf(FastMapUse& use);
  [[nodiscard]] static const CString* KeyOf(const FastPart& part, VariableSlot* base, CString& scratch);

  CBrindle& m_interpreter;
  InterpreterState& m_state;
  FastState& m_fast;
  FastCode& m_code;
  ExecutionBudget& m_budget;
  std::size_t m_depth; // of the frames when this machine began
  int m_level;         // scope level then
  bool m_isDone = false;
};

} // namespace brindle
