// The approximate cut surface: what the shown path leaves of its stock, as a grid of heights.
//
// 49 by 49 samples over the stock envelope. Feeds lower them to the bottom of their cutter; rapids,
// arrivals and tools that nobody described cut nothing. Forward play stamps only what is new, so
// a tick costs a few segments; anything else that changes starts the grid anew.
#pragma once

#include <cstdint>

#include "simulator/cutter.h"
#include "simulator/motion_path.h"
#include "simulator/stock_envelope.h"

namespace morva {

inline constexpr int kSurfaceCells = 48;
inline constexpr int kSurfaceSamples = kSurfaceCells + 1;

struct CutSurface {
  StockEnvelope box;         // that it lies over
  std::int32_t stamped = 0;  // points whose segments are in it; the first one has none
  // Z in display units: a row is one Y from the least up, in it X from the least up.
  double heights[kSurfaceSamples][kSurfaceSamples] = {};
};

// Puts the whole grid at the stock's top, with no segment in it.
void ClearSurface(CutSurface& surface, const StockEnvelope& box);
// Lowers what the cutter sweeps on the straight way between two places, never below the stock's
// bottom. The cutter's end stands at Z; a way without X and Y cuts at its end.
void StampWay(CutSurface& surface, const MotionPoint& from, const MotionPoint& to,
              const Cutter& cutter);

// Whether the layer is on and there is something to lie over: a path of two points and stock with
// a thickness. Over a preview the tool must be known as well.
bool SurfaceIsShown();
// What the next frame draws: the shown path up to its head, the piece of segment that leads on from
// there included. Null while none is shown. Good until the next call.
const CutSurface* CutSurfaceNow();

}  // namespace morva
