// Sine and cosine by one short series, the same on every system and for every generator.
//
// Good to about 6e-8; quarter turns give exact zeros, a cosine of 0 is not exactly 1. The
// geometry that leaves the program in code rests on these digits, so nothing is cleaned up. Who
// needs the exact cosine of quarter turns asks QuarterCosine first.
#pragma once

namespace morva {

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kHalfPi = 1.5707963267948966;
inline constexpr double kTwoPi = 6.283185307179586;
inline constexpr double kRadiansPerDegree = 0.017453292519943295;

double SeriesSine(double radians);
double SeriesCosine(double radians);
// Whether the angle, finite and of any sign, is a whole number of quarter turns; `cosine` is then
// exactly 1, 0 or -1, and else stays.
bool QuarterCosine(double degrees, double& cosine);

}  // namespace morva
