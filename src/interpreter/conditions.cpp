// Conditions: exactly one comparison of two expressions.
#include "brindle/interpreter.h"
#include "interpreter/arithmetic.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"

#include <array>
#include <cmath>
#include <string_view>

using namespace brindle;

namespace {

struct Comparison {
  std::u16string_view text;
  LOGICAL_OPERATION code;
};

// Deliberate: ">=" and "=<" are not operators of the language.
constexpr std::array kComparisons = {
    Comparison{u"=", LOGICAL_EQUAL},        Comparison{u"==", LOGICAL_EQUAL},
    Comparison{u"<", LOGICAL_LESS},         Comparison{u">", LOGICAL_GREATER},
    Comparison{u"<>", LOGICAL_NOT_EQUAL},   Comparison{u"!=", LOGICAL_NOT_EQUAL},
    Comparison{u"<=", LOGICAL_LESS_EQUAL},  Comparison{u"=>", LOGICAL_GREATER_EQUAL},
    Comparison{u"~~", LOGICAL_ABOUT_EQUAL},
};
constexpr std::u16string_view kSecondUnits = u"=<>!~";

} // namespace

LOGICAL_OPERATION brindle::ComparisonOf(std::u16string_view text) noexcept {
  for (const Comparison& comparison : kComparisons)
    if (text == comparison.text)
      return comparison.code;
  return LOGICAL_NONE;
}

LOGICAL_OPERATION CBrindle::GetLogOperation() {
  get_token();
  if (m_pState->token.kind != TOKEN_DELIMITER)
    return LOGICAL_NONE;
  CString text = m_pState->token.Text();
  get_token();
  const CString& second = m_pState->token.Text();
  if (m_pState->token.kind == TOKEN_DELIMITER && second.GetLength() == 1 &&
      kSecondUnits.find(second.GetAt(0)) != std::u16string_view::npos)
    text += second;
  else
    putback();
  return ComparisonOf(text.View());
}

bool CBrindle::ExecLogicalStatement() {
  CBasicVariable left;
  get_exp(left);
  const LOGICAL_OPERATION operation = GetLogOperation();
  if (operation == LOGICAL_NONE)
    return Fail(kErrorNoText);
  CBasicVariable right;
  get_exp(right);
  switch (left.GetType()) {
  case BVT_NUMBER: {
    const double x = left.GetNumberValue();
    const double y = right.GetNumberValue();
    return operation == LOGICAL_ABOUT_EQUAL ? std::fabs(x - y) < kAbout : Compare(operation, x, y);
  }
  case BVT_STRING: {
    const CString x = left.GetStringValue();
    const CString y = right.GetStringValue();
    return operation == LOGICAL_ABOUT_EQUAL ? x.Find(y) >= 0 : Compare(operation, x, y);
  }
  default: return false;
  }
}
