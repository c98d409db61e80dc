#include "data/angles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace brindle {
namespace {

double Radians(double degrees, double minutes = 0, double seconds = 0) {
  return (degrees + minutes / 60 + seconds / 3600) * std::numbers::pi / 180;
}

TEST(Angles, radians_become_packed_degrees_minutes_and_seconds) {
  struct Row {
    double radians;
    double packed;
  };
  const Row rows[] = {{0, 0},
                      {Radians(12, 30), 12.30},
                      {Radians(12, 34, 56), 12.3456},
                      {Radians(0, 0, 1), 0.0001},
                      {Radians(0, 59, 59), 0.5959},
                      {Radians(90), 90},
                      {Radians(359, 59, 59), 359.5959},
                      {-Radians(12, 30), -12.30},
                      {-Radians(90), -90},
                      {Radians(370), 10},
                      {Radians(720, 30), 0.30},
                      {-Radians(370, 15), -10.15}};
  for (const Row& row : rows)
    EXPECT_NEAR(RadiansToPacked(row.radians), row.packed, 1e-9) << row.radians;
}

TEST(Angles, seconds_that_round_to_60_roll_over) {
  EXPECT_NEAR(RadiansToPacked(Radians(10, 20, 59.9996)), 10.21, 1e-12);
  EXPECT_NEAR(RadiansToPacked(Radians(10, 59, 59.9996)), 11.0, 1e-12);
  EXPECT_NEAR(RadiansToPacked(-Radians(10, 59, 59.9996)), -11.0, 1e-12);
  // 59.9949 stays: the term is 0.00599949.
  EXPECT_NEAR(RadiansToPacked(Radians(10, 20, 59.9949)), 10.20599949, 1e-9);
}

TEST(Angles, full_circle_is_0) {
  EXPECT_EQ(RadiansToPacked(Radians(359, 59, 59.9999)), 0.0);
  EXPECT_NEAR(RadiansToPacked(2 * std::numbers::pi), 0.0, 1e-9);
  EXPECT_EQ(PackedToRadians(360), 0.0);
  EXPECT_EQ(PackedToRadians(-720), 0.0);
  EXPECT_EQ(PackedToRadians(0), 0.0);
}

TEST(Angles, packed_degrees_become_radians) {
  struct Row {
    double packed;
    double radians;
  };
  const Row rows[] = {{12.30, Radians(12, 30)},   {12.3456, Radians(12, 34, 56)},
                      {0.0001, Radians(0, 0, 1)}, {0.5959, Radians(0, 59, 59)},
                      {90, Radians(90)},          {359.5959, Radians(359, 59, 59)},
                      {-12.30, -Radians(12, 30)}, {-90, -Radians(90)},
                      {370.15, Radians(10, 15)},  {-370.15, -Radians(10, 15)}};
  for (const Row& row : rows)
    EXPECT_NEAR(PackedToRadians(row.packed), row.radians, 1e-11) << row.packed;
}

TEST(Angles, whole_minutes_survive_being_stored_slightly_low) {
  for (int degrees = 0; degrees < 360; ++degrees)
    for (int minutes = 0; minutes < 60; ++minutes) {
      const double packed = degrees + minutes / 100.0;
      ASSERT_NEAR(PackedToRadians(packed), Radians(degrees, minutes), 1e-10) << packed;
      ASSERT_NEAR(PackedToRadians(-packed), -Radians(degrees, minutes), 1e-10) << packed;
    }
}

TEST(Angles, there_and_back_is_the_same_angle) {
  std::mt19937 generator(7);
  std::uniform_real_distribution<double> angle(-2 * std::numbers::pi, 2 * std::numbers::pi);
  for (int i = 0; i < 20000; ++i) {
    const double radians = angle(generator);
    // The roll-over rounds up to half a hundredth of a second.
    ASSERT_NEAR(PackedToRadians(RadiansToPacked(radians)), radians, 3e-8) << radians;
  }
}

TEST(Angles, what_is_no_number_stays_none) {
  EXPECT_TRUE(std::isnan(RadiansToPacked(std::nan(""))));
  EXPECT_TRUE(std::isnan(PackedToRadians(std::nan(""))));
  EXPECT_TRUE(std::isnan(RadiansToPacked(HUGE_VAL)));
}

} // namespace
} // namespace brindle
