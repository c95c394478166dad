#include "builders/tools/turned_solid.h"

#include <cmath>
#include <vector>

#include "text/series_trig.h"

namespace morva {

namespace {

constexpr double kTilt = 0.3;        // height of a circle to its width
constexpr int kChords = 8;           // of a band's edge
constexpr double kLeastBend = 0.35;  // radians

// Bands of one shade, by the angles of their edges.
struct Band {
  double from;
  double to;
  Ink ink;
};
constexpr Band kBands[] = {{-kHalfPi, -0.6, Ink::ShadeMid},
                           {-0.6, 0.1, Ink::ShadeLight},
                           {0.1, 0.8, Ink::ShadeMid},
                           {0.8, kHalfPi, Ink::ShadeDark}};

void AddBand(Picture& picture, const TurnedRing& low, const TurnedRing& high, const Band& band) {
  std::vector<PicturePoint> corners;
  for (int i = 0; i <= kChords; ++i) {
    const double angle = band.from + (band.to - band.from) * i / kChords;
    corners.push_back(OnTurned(low.radius, low.height, angle));
  }
  for (int i = kChords; i >= 0; --i) {
    const double angle = band.from + (band.to - band.from) * i / kChords;
    corners.push_back(OnTurned(high.radius, high.height, angle));
  }
  AddFill(picture, corners, band.ink);
}

// Whether the body's skin bends at ring `i` so that an edge is seen there.
bool HasEdge(std::span<const TurnedRing> rings, std::size_t i) {
  if (i == 0 || i + 1 >= rings.size()) return true;
  const auto slope = [&rings](std::size_t from) {
    return std::atan2(rings[from + 1].height - rings[from].height,
                      rings[from + 1].radius - rings[from].radius);
  };
  return std::fabs(slope(i) - slope(i - 1)) > kLeastBend;
}

void AddRim(Picture& picture, const TurnedRing& ring, double sweep) {
  if (!(ring.radius > 0)) return;
  AddArc(picture, {0, ring.height, ring.radius, kTilt * ring.radius, 180, sweep}, Ink::Outline);
}

}  // namespace

PicturePoint OnTurned(double radius, double height, double angle) {
  return {radius * std::sin(angle), height - kTilt * radius * std::cos(angle)};
}

double RadiusAt(std::span<const TurnedRing> rings, double height) {
  for (std::size_t i = 1; i < rings.size(); ++i) {
    const TurnedRing& low = rings[i - 1];
    const TurnedRing& high = rings[i];
    if (height > high.height || !(high.height > low.height)) continue;
    const double part = (height - low.height) / (high.height - low.height);
    return low.radius + (high.radius - low.radius) * part;
  }
  return rings.empty() ? 0 : rings.back().radius;
}

void AddTurned(Picture& picture, std::span<const TurnedRing> rings) {
  for (std::size_t i = 1; i < rings.size(); ++i) {
    const TurnedRing& low = rings[i - 1];
    const TurnedRing& high = rings[i];
    for (const Band& band : kBands) AddBand(picture, low, high, band);
    // The step or the top above, which is seen from above.
    const bool step = i + 1 == rings.size() || rings[i + 1].radius < high.radius;
    if (step) {
      AddDisc(picture, {0, high.height, high.radius, kTilt * high.radius}, Ink::ShadeLight);
      AddRim(picture, high, 360);
    }
    if (HasEdge(rings, i - 1)) AddRim(picture, low, 180);
    AddLine(picture, {-low.radius, low.height}, {-high.radius, high.height}, Ink::Outline);
    AddLine(picture, {low.radius, low.height}, {high.radius, high.height}, Ink::Outline);
    NextLayer(picture);
  }
}

}  // namespace morva
