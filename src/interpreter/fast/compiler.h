// FastCompiler: turns statements into cells for the machine.
// Room: interpreter. Used by: CompiledEntry, when a statement is about to be run for the second time; the machine, to
// find where a loop goes on.
// May touch: the program's token and skip caches, the store's name numbers, the code it fills.
// Must not: change a variable, report an error, or compile what the executing parser would not read to its end.
// Invariant: an operation that can give up is emitted while everything computed before it in its statement is on the
// stack of live operands, and nothing has been changed yet.
#pragma once

#include "brindle/interpreter.h"
#include "interpreter/fast/code.h"
#include "interpreter/fast/tree.h"

namespace brindle {

class FastCompiler {
public:
  explicit FastCompiler(CBrindle& interpreter);

  // Compiles the statement that begins at the token, and those behind it that were run before.
  void Compile(const Token& first);
  // The statement that is run when reading goes on at that position.
  [[nodiscard]] FastEntry* EntryFrom(std::uint32_t position);
  // The slot of a local variable in its frame; false for a global and for a name of another frame.
  [[nodiscard]] bool LocalSlot(const Token& name, std::uint32_t& slot);
  // The distance of an operation's handler, as the machine has them.
  static std::int32_t HandlerOf(FastOperation operation);

private:
  // Where an operand of a numeric operation is.
  struct Operand {
    enum Class { S, N, K };
    Class kind = K;
    std::uint32_t slot = 0;
    double number = 0;
    bool isInteger = false;
    bool isLive = false; // on the stack of live operands
  };
  enum class ValueKind { Unknown, Number, Text, Other };
  // How a variable among the parts of a text is read: where it stands, the same but tested in its turn, or into a
  // temporary.
  enum class PartUse { InPlace, Tested, Kept };
  // ---- statements (compile_statements.cpp)
  [[nodiscard]] bool Statement(const Token& first);
  [[nodiscard]] bool Assignment(const Token& name);
  [[nodiscard]] bool AssignElement(FastNode& place, FastNode& value);
  [[nodiscard]] bool If();
  [[nodiscard]] bool Else();
  [[nodiscard]] bool For();
  [[nodiscard]] bool Do(const Token& word);
  [[nodiscard]] bool Goto();
  [[nodiscard]] bool Reads(const FastNode& node, std::uint32_t slot);
  [[nodiscard]] bool CallStatement();
  [[nodiscard]] bool ReadCondition(FastNode*& left, LOGICAL_OPERATION& operation, FastNode*& right);
  [[nodiscard]] bool Loop(const Token& word);
  // Jumps to the entry when the condition is false or, for numbers, when it is true.
  [[nodiscard]] bool EmitCondition(FastNode& left, LOGICAL_OPERATION operation, FastNode& right, FastEntry& entry,
                                   bool whenTrue = false);
  [[nodiscard]] FastEntry* EntryBehindSkip(COMMAND_TYPE open, COMMAND_TYPE close, COMMAND_TYPE middle);
  const Token& Significant(std::uint32_t position);
  void BeginStatement(FastEntry& entry, const Token& first);
  void DropStatement(std::size_t firstCell);

  // ---- expressions (compile_expressions.cpp)
  [[nodiscard]] bool NumberOperand(FastNode& node, bool isLeft, Operand& out);
  [[nodiscard]] bool Arithmetic(FastNode& node, const std::uint32_t* variable, Operand& out);
  [[nodiscard]] bool InNumberTemporary(FastNode& node, bool isLeft, Operand& operand);
  [[nodiscard]] bool ValueTo(FastNode& node, std::uint32_t slot);
  [[nodiscard]] bool ValueInTemporary(FastNode& node, Operand& out);
  [[nodiscard]] bool ItemTo(FastNode& node, const std::uint32_t* slot, Operand& out);
  [[nodiscard]] bool IndexOperand(FastNode& index, const FastNode* later, Operand& out);
  [[nodiscard]] bool TextParts(FastNode& node, std::vector<FastPart>& parts, PartUse use);
  [[nodiscard]] bool TextPart(FastNode& node, std::vector<FastPart>& parts, PartUse use);
  [[nodiscard]] PartUse PartUseFor(const FastNode& node);
  [[nodiscard]] bool JoinTo(FastNode& node, std::uint32_t slot);
  [[nodiscard]] ValueKind KindOf(const FastNode& node);
  [[nodiscard]] bool HasEffects(const FastNode& node);
  [[nodiscard]] static bool HasItems(const FastNode& node);
  [[nodiscard]] bool MayDiverge(const Operand& operand, const FastNode& later);
  [[nodiscard]] bool TestsFirst(const FastNode& node, std::uint32_t slot);

  // ---- calls (compile_calls.cpp)
  [[nodiscard]] bool Call(FastNode& node, Operand& out, bool isStatement);
  [[nodiscard]] bool Intrinsic(FastNode& node, FUNCTION_TYPE code, Operand& out, bool& isKnown);
  [[nodiscard]] bool TextIntrinsic(FastNode& node, FUNCTION_TYPE code, Operand& out, bool& isKnown);
  [[nodiscard]] std::optional<ValueFormat> FormatOf(const FastNode& node);
  [[nodiscard]] bool FormatNumber(FastNode& node, Operand& out);
  [[nodiscard]] bool MapFunction(FastNode& node, FUNCTION_TYPE code, Operand& out, bool isStatement);
  [[nodiscard]] bool ArgumentsInTemporaries(FastNode& node, std::uint32_t& first);
  [[nodiscard]] FastCallee* CalleeOf(CFuncDesc& function, std::size_t arguments);
  [[nodiscard]] CFuncDesc* FunctionOf(const FastNode& node) const;
  [[nodiscard]] bool IsIntrinsic(const FastNode& node);

  // ---- cells, live operands, names (compiler.cpp)
  std::size_t Emit(FastOperation operation, std::uint32_t a = 0, std::uint32_t b = 0, std::uint32_t c = 0);
  void EmitData(const void* pointer, double number = 0);
  void EmitData(const void* pointer, std::uint32_t b, std::uint32_t c);
  void EmitJump(FastEntry& entry);
  [[nodiscard]] bool NewNumber(Operand& out);
  [[nodiscard]] bool NewValue(Operand& out);
  // The slot that NewValue takes next.
  [[nodiscard]] std::uint32_t NextValue() const noexcept;
  void Push(Operand& operand, const FastNode& node);
  void PopTo(std::size_t count);
  void Relabel(const FastNode& node);
  // An operand that is read where it stands stays untested until its operation: what is computed in between is of no
  // use to the executing parser, which would meet the operand first.
  void Defer(const Operand& operand) {
    if (operand.kind == Operand::S && !operand.isLive)
      m_deferred.push_back(CountLive());
  }
  [[nodiscard]] std::size_t CountDeferred() const noexcept { return m_deferred.size(); }
  [[nodiscard]] std::size_t CountLive() const noexcept { return m_live.size(); }
  [[nodiscard]] bool ResolveName(const Token& name, std::uint32_t& slot, VariableSlot*& global);

  CBrindle& m_interpreter;
  InterpreterState& m_state;
  ProgramText& m_text;
  FastCode& m_code;
  FastParser m_parser;
  FastChunk* m_chunk = nullptr;
  FastStatement* m_statement = nullptr;
  std::vector<std::int32_t> m_live;    // in the code's list of operands
  std::vector<std::size_t> m_deferred; // how many operands were live before each of those not tested yet
  std::size_t m_firstCell = 0;         // of the statement
  std::uint32_t m_skippedTo = 0;       // the word that the last forward skip stopped on
  std::uint32_t m_numbers = 0;
  std::uint32_t m_values = 0;
  std::uint32_t m_recordedNames = 0; // arguments that a call in progress has read
  std::uint32_t m_next = 0;          // position behind the statement
  bool m_fallsThrough = true;
  bool m_isCounting;
};

} // namespace brindle
