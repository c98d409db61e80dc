// ProgramGenerator: random programs of the language, valid ones and slightly broken ones.
// Room: tests. Used by: the differential fuzzer.
// May touch: memory only.
// Must not: know how programs are run.
// Invariant: a seed always gives the same program. Loops and recursion are counted by the program itself, so that
// an unbroken program ends; a broken one may not.
#pragma once

#include "random.h"

#include <cstdint>
#include <string>
#include <vector>

class ProgramGenerator {
public:
  explicit ProgramGenerator(std::uint64_t seed) : m_random(seed) {}
  [[nodiscard]] std::string Generate();

private:
  // ---- program_generator.cpp
  void Statements(int count);
  void Statement();
  void Line(const std::string& text);
  void Block(int statements);
  void Assignment();
  void If();
  void For();
  void Do();
  void GotoLoop();
  void Jump();
  void CallStatement();
  void Print();
  void Rare();
  void Procedure(int number);
  [[nodiscard]] std::string Guard();
  [[nodiscard]] std::string Separator();

  // ---- expressions (random_expressions.cpp)
  [[nodiscard]] std::string Name();
  [[nodiscard]] std::string ArrayName();
  [[nodiscard]] std::string NumberText();
  [[nodiscard]] std::string Literal();
  [[nodiscard]] std::string Numeric(int depth);
  [[nodiscard]] std::string Text(int depth);
  [[nodiscard]] std::string Any(int depth);
  [[nodiscard]] std::string Index(int depth);
  [[nodiscard]] std::string Element(int depth);
  [[nodiscard]] std::string Condition();
  [[nodiscard]] std::string ScriptCall(int depth);
  [[nodiscard]] std::string BuiltInCall(int depth, bool text);
  [[nodiscard]] std::string Arguments(int depth, int count);

  Random m_random;
  std::string m_text;
  std::vector<std::string> m_labels;
  int m_nesting = 0;
  int m_loops = 0;
  int m_procedures = 0;
  int m_wildness = 0; // percent of operands that are of any kind
  bool m_inProcedure = false;
};

// Leaves out, doubles, swaps or replaces a few words of a program, or cuts it off.
[[nodiscard]] std::string BreakProgram(const std::string& program, std::uint64_t seed);
