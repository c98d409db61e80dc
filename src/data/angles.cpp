#include "data/angles.h"

#include <cmath>

namespace brindle {

namespace {

constexpr double kDegreesPerRadian = 57.29577951308232;
constexpr double kRadiansPerDegree = 0.017453292519943295;
constexpr double kSecondsRoundUp = 0.0059995; // packed seconds from here on count as a full minute
constexpr double kFractionBias = 5e-14;       // packed values are often stored slightly low
constexpr double kMinuteBias = 5e-12;         // the same bias after the scaling to minutes

double IntoCircle(double degrees) noexcept {
  const double rest = std::fmod(degrees, 360.0);
  return rest < 0 ? rest + 360.0 : rest;
}

double PackDegrees(double degrees) noexcept {
  double whole = 0;
  const double fraction = std::modf(IntoCircle(degrees), &whole);
  double minutes = 0;
  const double rest = std::modf(fraction * 60.0, &minutes);
  double seconds = rest * 0.006;
  if (seconds >= kSecondsRoundUp) {
    minutes += 1;
    seconds = 0;
  }
  if (minutes > 59) {
    minutes -= 60;
    whole += 1;
  }
  const double packed = minutes * 0.01 + seconds + whole;
  return packed == 360.0 ? 0.0 : packed;
}

} // namespace

double RadiansToPacked(double radians) noexcept {
  const double degrees = radians * kDegreesPerRadian;
  return degrees < 0 ? -PackDegrees(-degrees) : PackDegrees(degrees);
}

double PackedToRadians(double packed) noexcept {
  const double sign = packed < 0 ? -1.0 : 1.0;
  const double circle = IntoCircle(packed / sign);
  if (circle == 0)
    return 0;
  double whole = 0;
  double fraction = std::modf(circle, &whole);
  fraction += fraction < 0 ? -kFractionBias : kFractionBias;
  double minutes = 0;
  double rest = std::modf(fraction * 100.0, &minutes);
  rest += minutes < 0 ? kMinuteBias : -kMinuteBias;
  const double degrees = rest * 0.027777777777777776 + minutes * 0.016666666666666666 + whole;
  return degrees * sign * kRadiansPerDegree;
}

} // namespace brindle
