#include "text/series_trig.h"

#include <cmath>

namespace morva {

namespace {
// Beyond this an angle in doubles says nothing about a direction, and the reduction by whole
// turns would not end.
constexpr double kLargest = 2e7;
// A million degrees, more than any field takes. What a foreign file holds beyond loses its turns
// at once: millions of single ones for every object would hold the screen for seconds.
constexpr double kManyTurns = 17453.292519943295;
}  // namespace

double SeriesSine(double radians) {
  double a = radians;
  if (!(a > -kLargest && a < kLargest)) return 0.0;
  if (a > kManyTurns || a < -kManyTurns) a = std::fmod(a, kTwoPi);
  while (a > kPi) a -= kTwoPi;
  while (a < -kPi) a += kTwoPi;
  if (a > kHalfPi) {
    a = kPi - a;
  } else if (a < -kHalfPi) {
    a = -kPi - a;
  }
  const double s = a * a;
  const double s2 = s * s;
  return a * (1.0 - s / 6.0 + s2 / 120.0 - s2 * s / 5040.0 + s2 * s2 / 362880.0 -
              s2 * s2 * s / 39916800.0);
}

double SeriesCosine(double radians) { return SeriesSine(radians + kHalfPi); }

bool QuarterCosine(double degrees, double& cosine) {
  const double turned = std::fmod(std::fabs(degrees), 360);
  if (std::fmod(turned, 90) != 0) return false;
  cosine = turned == 0 ? 1 : turned == 180 ? -1 : 0;
  return true;
}

}  // namespace morva
