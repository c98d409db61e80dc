// The arithmetic family of the built-in functions, and the plane offset.
#include "brindle/interpreter.h"
#include "data/angles.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"
#include "platform/number_text.h"

#include <cmath>
#include <cstdint>

using namespace brindle;

namespace {

constexpr double kRandomScale = 3.051850947599719e-5; // 1 / 32767

std::int32_t AsInteger(std::uint32_t bits) {
  return static_cast<std::int32_t>(bits);
}

std::uint32_t ReversedBytes(std::uint32_t x) {
  return (x >> 24) | ((x >> 8) & 0xFF00U) | ((x << 8) & 0xFF0000U) | (x << 24);
}

// Of equal values the later one is taken, of unordered ones the first.
double Extreme(const CBasicVariableArray& args, bool largest) {
  double best = args[0].GetNumberValue();
  for (int i = 1; i < args.GetSize(); ++i) {
    const double next = args[i].GetNumberValue();
    if (largest ? best <= next : best >= next)
      best = next;
  }
  return best;
}

} // namespace

bool CBrindle::ExecArithmetics(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type) {
  if (args.IsEmpty())
    result.SetValue(0);
  if (!CheckArguments(args, type))
    return false;
  const double x = args[0].GetNumberValue();
  switch (type) {
  case FUNCTION_SIN: result.SetValue(std::sin(x)); return true;
  case FUNCTION_COS: result.SetValue(std::cos(x)); return true;
  case FUNCTION_TAN: result.SetValue(std::tan(x)); return true;
  case FUNCTION_ASIN: result.SetValue(std::asin(x)); return true;
  case FUNCTION_ACOS: result.SetValue(std::acos(x)); return true;
  case FUNCTION_ATAN: result.SetValue(std::atan(x)); return true;
  case FUNCTION_SQR: result.SetValue(std::sqrt(x)); return true;
  case FUNCTION_LOG: result.SetValue(std::log(x)); return true;
  case FUNCTION_LOG10: result.SetValue(std::log10(x)); return true;
  case FUNCTION_LOG2: result.SetValue(std::log(x) / std::log(2.0)); return true;
  case FUNCTION_ABS: result.SetValue(std::fabs(x)); return true;
  case FUNCTION_ISNAN: result.SetValue(std::isnan(x) ? 1 : 0); return true;
  case FUNCTION_INT: result.SetValue(ToInt32(x)); return true;
  case FUNCTION_LOWORD: result.SetValue(AsInteger(ToUint32(x) & 0xFFFFU)); return true;
  case FUNCTION_HIWORD: result.SetValue(AsInteger(ToUint32(x) >> 16)); return true;
  case FUNCTION_SWAP: result.SetValue(AsInteger(ReversedBytes(ToUint32(x)))); return true;
  case FUNCTION_MAX:
  case FUNCTION_MIN: result.SetValue(Extreme(args, type == FUNCTION_MAX)); return true;
  case FUNCTION_UBOUND: result.SetValue(GetVariableSize(args[0].GetStringValue())); return true;
  case FUNCTION_RAND: result.SetValue(ToInt32(m_pState->random.Next() * x * kRandomScale)); return true;
  case FUNCTION_RAD2DMS: result.SetValue(RadiansToPacked(x)); return true;
  case FUNCTION_DMS2RAD: result.SetValue(PackedToRadians(x)); return true;
  default: return false;
  }
}

bool CBrindle::ExecPointOffset(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type) {
  constexpr double kSamePoint = 1e-12;
  if (!CheckArguments(args, type))
    return false;
  const auto number = [&args](int i) { return args[i].GetNumberValue(); };
  const double x1 = number(0);
  const double y1 = number(1);
  const double dx = number(2) - x1;
  const double dy = number(3) - y1;
  const double px = number(4);
  const double py = number(5);
  const double distance = number(6);
  const double length = std::sqrt(dy * dy + dx * dx);
  if (std::fabs(length) < kSamePoint) {
    result.AddItem(x1);
    result.AddItem(y1);
    return false;
  }
  const double k = 1.0 / length;
  result.AddItem(px - k * dy * distance);
  result.AddItem(k * dx * distance + py);
  return true;
}
