// What the operators compute.
#include "brindle/interpreter.h"
#include "interpreter/arithmetic.h"
#include "interpreter/error_numbers.h"
#include "interpreter/limits.h"
#include "interpreter/state.h"

using namespace brindle;

ARITHMETIC_OPERATION CBrindle::GetArithOperation(char16_t operation) noexcept {
  switch (operation) {
  case u'+': return ARITHMETIC_ADD;
  case u'-': return ARITHMETIC_SUBTRACT;
  case u'*': return ARITHMETIC_MULTIPLY;
  case u'/': return ARITHMETIC_DIVIDE;
  case u'^': return ARITHMETIC_POWER;
  case u'%': return ARITHMETIC_REMAINDER;
  default: return ARITHMETIC_NONE;
  }
}

void CBrindle::ComputeOperation(char16_t operation, CBasicVariable& left, CBasicVariable& right) {
  // The kind of the left operand decides.
  switch (left.GetType()) {
  case BVT_NUMBER: {
    double number = left.GetNumberValue();
    double other = right.GetNumberValue();
    ComputeArithmetic(operation, &number, &other);
    left.SetValue(number);
    break;
  }
  case BVT_STRING: {
    CString text = left.GetStringValue();
    // Give up the operand's hold on the text, so that a long one grows in place.
    left.SetValue(CString());
    ComputeString(operation, text, right.GetStringValue());
    left.SetValue(text);
    break;
  }
  default: ReportError(kErrorUnexpectedOperator); break;
  }
}

void CBrindle::ComputeArithmetic(char16_t operation, double* left, double* right) {
  switch (GetArithOperation(operation)) {
  case ARITHMETIC_ADD: *left = *left + *right; break;
  case ARITHMETIC_SUBTRACT: *left = *left - *right; break;
  case ARITHMETIC_MULTIPLY: *left = *left * *right; break;
  case ARITHMETIC_DIVIDE: *left = *left / *right; break;
  case ARITHMETIC_POWER: *left = PowerOf(*left, *right); break;
  // Deliberate: the quotient is not truncated, so this is 0 or a rounding residue.
  case ARITHMETIC_REMAINDER: *left = *left - (*left / *right) * *right; break;
  // Deliberate: the number is that of a misplaced "return".
  default: ReportError(kErrorReturnLocation); break;
  }
}

void CBrindle::ComputeString(char16_t operation, CString& left, const CString& right) {
  if (GetArithOperation(operation) != ARITHMETIC_ADD) {
    ReportError(kErrorReturnLocation); // Deliberate: as for numbers
    return;
  }
  if (static_cast<std::int64_t>(left.GetLength()) + right.GetLength() > kLongestText) {
    ReportError(kErrorUnrecoverable);
    return;
  }
  left += right;
}

void CBrindle::unary(char16_t operation, CBasicVariable& value) {
  if (operation == u'-')
    value.SetValue(-value.GetNumberValue());
}
