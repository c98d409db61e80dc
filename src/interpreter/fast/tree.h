// The tree of one statement's expressions, and the parser that makes it.
// Room: interpreter. Used by: the compiler of the fast route only.
// May touch: the token cache of a program text, the store's names.
// Must not: evaluate anything, or report errors: what is not well-formed is left to the executing parser.
// Invariant: it reads as the evaluator does, word for word; a node knows which words it stands for.
#pragma once

#include "interpreter/program_text.h"

#include <deque>
#include <vector>

namespace brindle {

struct FastNode {
  enum Kind { Number, Text, Variable, Element, Arithmetic, Minus, Group, Call };
  Kind kind = Number;
  std::uint32_t start = 0;
  std::uint32_t end = 0;
  const Token* token = nullptr; // of the number, text, name or function
  char16_t operation = 0;       // of Arithmetic
  FastNode* left = nullptr;     // the operand of Minus and Group, the index of an Element
  FastNode* right = nullptr;
  std::vector<FastNode*> arguments; // of a Call
  const Token* closing = nullptr;   // its ")"

  // The grammar's level at which the evaluator meets these words: 2 for a sum ... 7 for a single operand.
  [[nodiscard]] int Level() const noexcept {
    switch (kind) {
    case Arithmetic: return operation == u'+' || operation == u'-' ? 2 : operation == u'^' ? 4 : 3;
    case Minus: return 5;
    case Group: return 6;
    default: return 7;
    }
  }
};

class FastParser {
public:
  FastParser(ProgramText& text, const WordTable& words) : m_text(text), m_words(words) {}

  void Start(std::uint32_t position) {
    m_position = position;
    m_nodes.clear();
    m_depth = 0;
    m_refused = false;
  }
  // The position behind the last word taken.
  [[nodiscard]] std::uint32_t Position() const noexcept { return m_position; }
  void MoveTo(std::uint32_t position) noexcept { m_position = position; }
  // Whether something was read that the evaluator reads in a way of its own.
  [[nodiscard]] bool IsRefused() const noexcept { return m_refused; }
  [[nodiscard]] const Token& Peek();
  const Token& Take();
  [[nodiscard]] static bool IsDelimiter(const Token& token, char16_t unit) noexcept {
    return token.kind == TOKEN_DELIMITER && token.text.GetLength() == 1 && token.text.GetAt(0) == unit;
  }
  // Null for anything that the evaluator would report, or read in a way of its own.
  [[nodiscard]] FastNode* Expression();
  // The arguments behind the current function token; false likewise.
  [[nodiscard]] bool Arguments(FastNode& call);
  // A variable, or an element with its index; the name has been taken.
  [[nodiscard]] FastNode* Place(const Token& name);
  [[nodiscard]] FastNode* New(FastNode::Kind kind, const Token& token);

private:
  [[nodiscard]] FastNode* Sum();
  [[nodiscard]] FastNode* Product();
  [[nodiscard]] FastNode* Power();
  [[nodiscard]] FastNode* Signed();
  [[nodiscard]] FastNode* Grouped();
  [[nodiscard]] FastNode* Single();
  [[nodiscard]] bool AtOperator(const char16_t* operators, char16_t& operation);
  [[nodiscard]] FastNode* Join(char16_t operation, FastNode* left, FastNode* right);

  ProgramText& m_text;
  const WordTable& m_words;
  std::uint32_t m_position = 0;
  std::deque<FastNode> m_nodes;
  int m_depth = 0;
  bool m_refused = false;
};

} // namespace brindle
