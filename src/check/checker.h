// ScriptChecker: the walk through a script that finds what is wrong with it.
//
// It goes through the text as the executing parser does, statement by statement, and follows every branch, loop and
// jump until it knows what variables may be wherever it comes; then it goes once more and reports. Its rules stand
// in files by concern, check_*.cpp, and walk.cpp leads from statement to statement.
// Room: check. Used by: CScriptCheck.
// May touch: the reader's position, the list of problems.
// Must not: report what is not certain as an error; where it does not know it says nothing.
// Invariant: nothing is reported before what is known has stopped changing.
#pragma once

#include "check/dialect.h"
#include "check/flow_state.h"
#include "check/outline.h"
#include "check/pair_index.h"
#include "check/problem_list.h"
#include "check/script_reader.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace brindle {

// What is known of an expression's value.
struct Operand {
  ValueKinds kinds = kAnyValue;
  const Token* literal = nullptr; // of an expression that is one literal
  std::optional<double> number{}; // of one that is a number, with its sign
  const Token* name = nullptr;    // of one that is a plain variable
  const Token* call = nullptr;    // of one that is a call
  CString calledWith{};           // that call's first argument, when it is a text literal
};

class ScriptChecker {
public:
  ScriptChecker(ScriptReader& reader, ProblemList& problems, const std::vector<CString>& hostFunctions);

  void Run();

private:
  // ---- walk.cpp: from statement to statement
  static constexpr std::size_t kMain = static_cast<std::size_t>(-1);
  struct Context {
    std::size_t procedure = kMain; // index, or the main program
    std::uint32_t entry = 0;
    std::map<std::uint32_t, FlowState> states; // where ways meet
    std::set<std::uint32_t> meetings;          // beside m_returns
    std::unordered_set<std::uint32_t> walked;
  };
  void Explore(Context& context);
  void ReportOn(Context& context);
  [[nodiscard]] FlowState EntryState(const Context& context) const;
  [[nodiscard]] bool IsMeeting(std::uint32_t position) const;
  void GoTo(std::uint32_t position, const FlowState& state);
  void WalkFrom(std::uint32_t position);
  [[nodiscard]] bool Statement();
  [[nodiscard]] bool Command(const Token& word);
  void EndOfProcedure();
  void EndOfText();
  void Recover();
  [[nodiscard]] bool InProcedure() const noexcept { return m_context->procedure != kMain; }
  CheckedProcedure& Procedure() { return m_outline.procedures[m_context->procedure]; }

  // ---- check_program.cpp: what concerns the whole script
  void CheckLoading();
  void CheckDefinitions();
  void CheckLabels();
  void CheckReach();
  void CheckLiteral(const Token& literal);

  // ---- check_variables.cpp
  [[nodiscard]] ValueKinds KindsOf(const Token& name) const;
  [[nodiscard]] bool IsGlobal(const CString& name) const;
  void SetKinds(const Token& name, ValueKinds kinds, bool weak);
  static constexpr ValueKinds kMadeBeforeGlobal = kTextValue;
  static constexpr ValueKinds kMadeGlobal = kNotSet;
  [[nodiscard]] ValueKinds* GlobalMark(const Token& name);
  void CheckGlobalCase(const Token& name);
  void ReportUndefined(const Token& name);
  [[nodiscard]] bool IsRecord(const CString& name) const { return m_outline.records.contains(name); }

  // ---- check_expressions.cpp: each is false when the expression fails for certain, which was reported
  [[nodiscard]] bool Expression(Operand& out);
  [[nodiscard]] bool Level2(Operand& out);
  [[nodiscard]] bool Level3(Operand& out);
  [[nodiscard]] bool Level4(Operand& out);
  [[nodiscard]] bool Level5(Operand& out);
  [[nodiscard]] bool Level6(Operand& out);
  [[nodiscard]] bool Primitive(Operand& out);
  [[nodiscard]] bool Apply(const Token& sign, Operand& left, const Operand& right);
  [[nodiscard]] bool ReadVariable(Operand& out);
  [[nodiscard]] bool ReadDotted(Operand& out);
  [[nodiscard]] bool Index(Operand& out);
  void NoOperand(const Token& token);
  void CheckNumber(const Token& number);
  enum class Outcome { Fails, Unknown, Always, Never };
  [[nodiscard]] Outcome Condition(const char* word);
  void CheckComparison(const Token& sign, const Operand& left, const Operand& right);

  // ---- check_calls.cpp
  [[nodiscard]] bool Call(bool wantsResult, Operand& out);
  [[nodiscard]] bool Arguments(std::vector<Operand>& arguments);
  [[nodiscard]] bool CallBuiltIn(const Token& name, const CFuncDesc& function, const std::vector<Operand>& arguments,
                                 Operand& out);
  [[nodiscard]] bool CheckArgumentValues(const Token& name, FUNCTION_TYPE code, const std::vector<Operand>& arguments);
  [[nodiscard]] bool CallProcedure(const Token& name, const std::vector<Operand>& arguments, bool wantsResult);
  [[nodiscard]] bool CallMember(const Token& name);
  void ReportUnknownFunction(const Token& name);
  void CallStatement();
  void ThrowStatement();

  // ---- check_statements.cpp
  void Assignment();
  void MissingEqual(const Token& target, bool behindIndex);
  void Print();
  [[nodiscard]] bool PrintItem(bool& literal);
  void OpenFile();
  void OneExpression(ValueKinds allowed, const char* word);
  void ExpressionList(const char* word, int fewest);
  void MapStatement();
  void EventStatement();
  void WatchStatement();

  // ---- check_branches.cpp: each is false when the way does not go on behind it
  [[nodiscard]] bool If(const Token& word);
  [[nodiscard]] bool Else(const Token& word);
  [[nodiscard]] bool For(const Token& word);
  bool LoopFails();
  [[nodiscard]] bool Next(const Token& word);
  [[nodiscard]] bool Do(const Token& word);
  [[nodiscard]] bool Loop(const Token& word);
  [[nodiscard]] bool Goto();
  void End(const Token& word);
  void Return(const Token& word);

  // ---- check_declarations.cpp
  void Declarations(bool global);
  [[nodiscard]] bool Declaration(bool global);
  [[nodiscard]] bool DeclaredType(const Token& name, bool hasSize, bool global);
  void TypeBlock(const Token& word);
  [[nodiscard]] bool Field();
  [[nodiscard]] bool Size();
  void DeclareStatement(const Token& word);

  // ---- check_dialogs.cpp
  void Dialog(const Token& word);
  void PropertySheet(const Token& word);
  [[nodiscard]] bool DialogLine();
  void Alter(const Token& word);
  [[nodiscard]] int Operands(int enough); // which m_operands holds afterwards
  void CheckHandler(const Token& name);
  void LeaveBlock(COMMAND_TYPE end);
  void MissingEnd(const Token& word, const char* end);

  // ---- check_strays.cpp: what stands where no statement begins
  void StrayDelimiter(const Token& sign);
  [[nodiscard]] bool FailsFrom(std::uint32_t position);
  void NotAStatement(const Token& token);
  [[nodiscard]] bool FollowsLiteral(const Token& token) const;

  // ---- reporting
  void Report(ProblemCode code, const Token& at, std::string message, std::string hint) {
    ReportAt(code, at.start, at.end, std::move(message), std::move(hint));
  }
  void ReportAt(ProblemCode code, std::uint32_t start, std::uint32_t end, std::string message, std::string hint) {
    if (m_reporting)
      m_problems.Add(code, start, end, std::move(message), std::move(hint));
  }
  [[nodiscard]] static const Token& Blamed(const Token& token, const Token& otherwise);
  [[nodiscard]] static std::string Quoted(const Token& token);
  // As it stands in the text.
  [[nodiscard]] std::string Spelling(const Token& token) const;

  ScriptReader& m_reader;
  ProblemList& m_problems;
  Outline m_outline;
  PairIndex m_pairs;
  std::set<CString> m_hostFunctions;

  std::vector<Context> m_contexts;
  Context* m_context = nullptr;
  FlowState m_state;
  std::set<std::uint32_t> m_toWalk;
  std::unordered_set<std::uint32_t> m_returns;  // where jumps and loops come back to
  std::unordered_set<std::uint32_t> m_noLabels; // tokens that look like labels and mean something else
  std::unordered_set<std::uint32_t> m_reached;  // starts of statements, by whatever way
  bool m_reporting = false;
  bool m_again = false; // a meeting was found on a way already walked
  bool m_lastPrintLiteral = false;
  const Token* m_statement = nullptr; // the first token of the statement that was read last
  std::vector<Operand> m_operands;
  int m_depth = 0; // of nested expressions
  std::uint64_t m_steps = 0;
};

} // namespace brindle
