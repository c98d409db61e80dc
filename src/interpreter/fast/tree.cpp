#include "interpreter/fast/tree.h"

namespace brindle {

namespace {

// Deeper expressions are left to the executing parser, which watches the stack.
constexpr int kDeepest = 60;

} // namespace

const Token& FastParser::Peek() {
  return m_text.TokenAt(SkipBlanks(m_text.Text(), m_position), m_words);
}

const Token& FastParser::Take() {
  const Token& token = Peek();
  m_position = token.end;
  return token;
}

FastNode* FastParser::New(FastNode::Kind kind, const Token& token) {
  m_nodes.emplace_back();
  FastNode& node = m_nodes.back();
  node.kind = kind;
  node.token = &token;
  node.start = token.start;
  node.end = token.end;
  return &node;
}

FastNode* FastParser::Join(char16_t operation, FastNode* left, FastNode* right) {
  if (left == nullptr || right == nullptr)
    return nullptr;
  FastNode* node = New(FastNode::Arithmetic, *left->token);
  node->operation = operation;
  node->start = left->start;
  node->end = right->end;
  node->left = left;
  node->right = right;
  return node;
}

// The evaluator knows an operator by the first unit of a token, whatever its kind: a text literal that begins with
// "+" counts. Such a program is not compiled.
bool FastParser::AtOperator(const char16_t* operators, char16_t& operation) {
  const Token& token = Peek();
  if (token.text.IsEmpty())
    return false;
  const char16_t unit = token.text.GetAt(0);
  if (std::u16string_view(operators).find(unit) == std::u16string_view::npos)
    return false;
  if (token.kind != TOKEN_DELIMITER) {
    m_refused = true;
    return false;
  }
  operation = unit;
  return true;
}

FastNode* FastParser::Expression() {
  FastNode* node = Sum();
  return m_refused ? nullptr : node;
}

FastNode* FastParser::Sum() {
  if (++m_depth > kDeepest)
    m_refused = true;
  if (m_refused)
    return nullptr;
  FastNode* left = Product();
  for (char16_t operation = 0; left != nullptr && AtOperator(u"+-", operation);) {
    Take();
    left = Join(operation, left, Product());
  }
  --m_depth;
  return left;
}

FastNode* FastParser::Product() {
  FastNode* left = Power();
  for (char16_t operation = 0; left != nullptr && AtOperator(u"*/%", operation);) {
    Take();
    left = Join(operation, left, Power());
  }
  return left;
}

FastNode* FastParser::Power() {
  FastNode* base = Signed();
  char16_t operation = 0;
  if (base == nullptr || !AtOperator(u"^", operation))
    return base;
  if (++m_depth > kDeepest)
    return nullptr;
  Take();
  FastNode* power = Join(operation, base, Power());
  --m_depth;
  return power;
}

FastNode* FastParser::Signed() {
  const Token& sign = Peek();
  if (!IsDelimiter(sign, u'+') && !IsDelimiter(sign, u'-'))
    return Grouped();
  Take();
  FastNode* operand = Grouped();
  if (operand == nullptr)
    return nullptr;
  // A "+" does nothing, but these words are one operand of this level all the same.
  FastNode* node = New(FastNode::Minus, sign);
  node->operation = sign.text.GetAt(0);
  node->left = operand;
  node->end = operand->end;
  return node;
}

FastNode* FastParser::Grouped() {
  const Token& open = Peek();
  if (!IsDelimiter(open, u'('))
    return Single();
  Take();
  FastNode* inner = Sum();
  if (inner == nullptr || !IsDelimiter(Peek(), u')'))
    return nullptr;
  FastNode* node = New(FastNode::Group, open);
  node->left = inner;
  node->end = Take().end;
  return node;
}

FastNode* FastParser::Single() {
  const Token& token = Take();
  switch (token.kind) {
  case TOKEN_NUMBER: return New(FastNode::Number, token);
  case TOKEN_STRING: return New(FastNode::Text, token);
  case TOKEN_VARIABLE: return Place(token);
  case TOKEN_FUNCTION: {
    FastNode* call = New(FastNode::Call, token);
    return Arguments(*call) ? call : nullptr;
  }
  default: return nullptr;
  }
}

FastNode* FastParser::Place(const Token& name) {
  if (m_text.At(name.end) != u'[')
    return New(FastNode::Variable, name);
  Take();
  FastNode* index = Sum();
  if (index == nullptr || !IsDelimiter(Peek(), u']'))
    return nullptr;
  FastNode* node = New(FastNode::Element, name);
  node->left = index;
  node->end = Take().end;
  return node;
}

bool FastParser::Arguments(FastNode& call) {
  if (!IsDelimiter(Take(), u'('))
    return false;
  if (!IsDelimiter(Peek(), u')')) {
    for (;;) {
      FastNode* argument = Sum();
      if (argument == nullptr)
        return false;
      call.arguments.push_back(argument);
      if (!IsDelimiter(Peek(), u','))
        break;
      Take();
    }
  }
  if (!IsDelimiter(Peek(), u')'))
    return false;
  call.closing = &Take();
  call.end = call.closing->end;
  return true;
}

} // namespace brindle
