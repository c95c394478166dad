#include "simulator/place_pick.h"

#include <cmath>
#include <cstdint>
#include <utility>

#include "app/command_ids.h"
#include "app/outlets.h"
#include "library/units.h"
#include "platform/window.h"
#include "simulator/preview_context.h"
#include "simulator/preview_state.h"
#include "simulator/shown_path.h"
#include "simulator/view.h"
#include "simulator/view_parts.h"
#include "simulator/view_switches.h"
#include "text/codetext.h"

namespace morva {

namespace {

using platform::KeyEvent;
using platform::PointF;
using platform::Rect;

constexpr double kSnapReach = 225;  // squared pixels, as for path points
constexpr double kAnywhere = 1e12;  // the same

bool waits = false;
PlacePick pick;
PickedPlace cross;

double PlaneZ() { return pick.planeZ ? pick.planeZ() : 0; }

Rect Client() { return platform::ClientArea(kViewToolpath); }

// Calls `take` for the corners of a stock and the middle of its top, the upper ones first.
template <typename Take>
void ForStock(const StockEnvelope& stock, const Take& take) {
  if (!stock.shown) return;
  PickedPlace place{.picked = true, .ofStock = true, .stockTop = stock.top};
  const auto at = [&](double x, double y, double z) {
    place.x = x;
    place.y = y;
    place.z = z;
    take(place);
  };
  at((stock.minX + stock.maxX) / 2, (stock.minY + stock.maxY) / 2, stock.top);
  for (int i = 0; i < 8; ++i) {
    at((i & 1) ? stock.maxX : stock.minX, (i & 2) ? stock.maxY : stock.minY,
       (i & 4) ? stock.bottom : stock.top);
  }
}

// Which of several snaps at one place of the screen is meant, the last one first. A stock's corner
// is where it is measured, while a move's end may lie at the depth of a cut or in the air; and the
// corner of the part tells more than that of the own stock, which lies on it.
enum class SnapRank { End, OwnStock, PartsStock };

// Calls `take` for every place that a pick of geometry can snap to, with its rank: what is drawn of
// it.
template <typename Take>
void ForSnaps(const Take& take) {
  ForStock(ShownPath().stock, [&](const PickedPlace& at) { take(at, SnapRank::OwnStock); });
  if (!switches.showDrawingPaths) return;
  ForStock(ContextOfPreview().stock,
           [&](const PickedPlace& at) { take(at, SnapRank::PartsStock); });
  const MotionPath& context = ShownPath().context;
  for (std::int32_t i = 0; i < context.count; ++i) {
    const MotionPoint& point = context.points[i];
    if (!IsEndpoint(context, i)) continue;
    take(PickedPlace{true, point.x, point.y, point.z}, SnapRank::End);
  }
}

double SquareBetween(PointF a, PointF b) {
  return (a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y);
}

// The nearest of the snaps that were offered; of several at one place of the screen the one of the
// highest rank, of those the highest.
struct NearestSnap {
  PickedPlace place;
  SnapRank rank = SnapRank::End;
  PointF on = {};     // the screen
  double square = 0;  // how far it is, squared pixels

  void Offer(const PickedPlace& snap, SnapRank of, PointF at, double far) {
    constexpr double kSamePlace = 0.25;  // squared pixels
    const bool same = place.picked && SquareBetween(at, on) < kSamePlace;
    const bool before = of != rank ? of > rank : snap.z > place.z;
    if (same ? !before : place.picked && far >= square) return;
    *this = {snap, of, at, far};
  }
};

// The snap at a place of the screen, as near as `reach` in squared pixels.
PickedPlace SnapAt(PointF at, double reach) {
  const Projection& p = ProjectionFor(Client());
  NearestSnap found;
  ForSnaps([&](const PickedPlace& snap, SnapRank rank) {
    const PointF on = Project(p, snap.x, snap.y, snap.z);
    const double square = SquareBetween(on, at);
    if (square < reach) found.Offer(snap, rank, on, square);
  });
  return found.place;
}

// The place of the plane below a place of the screen; not picked where the plane is seen from its
// edge.
PickedPlace PlaneAt(PointF at) {
  constexpr double kLeastTilt = 0.01;  // pixels of area for a square of one pixel in plan
  const Projection& p = ProjectionFor(Client());
  const double area = p.ux * p.vy - p.uy * p.vx;
  if (std::fabs(area) < kLeastTilt * p.scale * p.scale) return {};
  const PointF middle = Project(p, p.centreX, p.centreY, PlaneZ());
  const double u = at.x - middle.x;
  const double v = at.y - middle.y;
  return {true, p.centreX + (u * p.vy - v * p.uy) / area, p.centreY + (v * p.ux - u * p.vx) / area,
          PlaneZ()};
}

PickedPlace PlaceAt(PointF at) {
  return pick.from == PlaceSource::Geometry ? SnapAt(at, kSnapReach) : PlaneAt(at);
}

PointF MiddleOfView() {
  const Rect client = Client();
  return {(client.left + client.right) / 2.0, (client.top + client.bottom) / 2.0};
}

// Ends the pick; whoever began it is told last, as it may begin another one.
void End(const PickedPlace& place) {
  waits = false;
  cross = PickedPlace{};
  platform::SetPointerShape(kViewToolpath, platform::PointerShape::Arrow);
  platform::Repaint(kViewToolpath);
  platform::TellViewValue(kViewToolpath);
  void (*const done)(const PickedPlace&) = std::exchange(pick, PlacePick{}).done;
  if (done) done(place);
}

void SetCross(const PickedPlace& place) {
  if (place == cross) return;
  cross = place;
  platform::Repaint(kViewToolpath);
  platform::TellViewValue(kViewToolpath);
}

// The snap that lies nearest in a direction of the screen, not more to its sides than ahead.
PickedPlace SnapTowards(int dx, int dy) {
  constexpr double kAway = 1;  // pixels; what is nearer stands at the same place
  const Projection& p = ProjectionFor(Client());
  const PointF from = Project(p, cross.x, cross.y, cross.z);
  NearestSnap found;
  ForSnaps([&](const PickedPlace& snap, SnapRank rank) {
    const PointF at = Project(p, snap.x, snap.y, snap.z);
    const double ahead = (at.x - from.x) * dx + (at.y - from.y) * dy;
    const double aside = std::fabs((at.x - from.x) * dy - (at.y - from.y) * dx);
    if (ahead >= kAway && aside <= ahead) found.Offer(snap, rank, at, SquareBetween(at, from));
  });
  return found.place;
}

// Where the keys begin: in the middle of the preview's own stock.
PickedPlace FirstCross() {
  const StockEnvelope& stock = ShownPath().stock;
  const PathBounds& b = Bounds();
  if (pick.from == PlaceSource::Geometry && stock.shown) {
    return {true,     (stock.minX + stock.maxX) / 2, (stock.minY + stock.maxY) / 2, stock.top, true,
            stock.top};
  }
  if (pick.from == PlaceSource::Geometry) return SnapAt(MiddleOfView(), kAnywhere);
  return {true, stock.shown ? stock.minX : b.minX, stock.shown ? stock.minY : b.minY, PlaneZ()};
}

void MoveCross(int dx, int dy) {
  if (!cross.picked) return SetCross(FirstCross());
  if (pick.from == PlaceSource::Geometry) {
    const PickedPlace next = SnapTowards(dx, dy);
    if (next.picked) SetCross(next);
    return;
  }
  const double step = GridSpacing();
  PickedPlace next = cross;
  next.x += dx * step;
  next.y -= dy * step;  // the screen's y runs downwards
  SetCross(next);
}

}  // namespace

bool PlacePickWaits() { return waits; }

void ResetPlacePick() {
  waits = false;
  pick = PlacePick{};
  cross = PickedPlace{};
}

bool BeginPlacePick(const PlacePick& wanted) {
  if (!PreviewIsShown()) return false;
  DropPlacePick();
  LetGoOfView();
  waits = true;
  pick = wanted;
  cross = PickedPlace{};
  platform::Repaint(kViewToolpath);
  platform::TellViewValue(kViewToolpath);
  platform::SetPointerShape(kViewToolpath, platform::PointerShape::Cross);
  platform::SetFocusTo(kViewToolpath);
  ShowStatus(pick.words);
  return true;
}

bool DropPlacePick() {
  if (!waits) return false;
  End({});
  return true;
}

void DropPickCross() { cross = PickedPlace{}; }

bool PickCross(PickedPlace& out) {
  out = cross;
  return waits && cross.picked;
}

bool PlacePickPress(int x, int y) {
  if (!waits) return false;
  const PickedPlace place = PlaceAt({static_cast<double>(x), static_cast<double>(y)});
  if (place.picked) {
    End(place);
  } else {
    ShowStatus(pick.words);
  }
  return true;
}

void PlacePickHover(int x, int y) {
  const PickedPlace place = PlaceAt({static_cast<double>(x), static_cast<double>(y)});
  if (place.picked || cross.picked) SetCross(place);
}

namespace {

template <int right, int down>
bool MoveByKey() {
  MoveCross(right, down);
  return true;
}

bool TakePlace() {
  if (cross.picked) End(PickedPlace(cross));
  return true;
}

constexpr ChordPlace kPickChords{u"picking a place"};
constexpr KeyRow kKeys[] = {
    {PlainKey(kPickChords, platform::kKeyEscape), u"Give up the pick", DropPlacePick},
    {PlainKey(kPickChords, platform::kKeyEnter), u"Take the marked place", TakePlace},
    {PlainKey(kPickChords, platform::kKeyLeft), u"Move the mark left", MoveByKey<-1, 0>},
    {PlainKey(kPickChords, platform::kKeyRight), u"Move the mark right", MoveByKey<1, 0>},
    {PlainKey(kPickChords, platform::kKeyUp), u"Move the mark up", MoveByKey<0, -1>},
    {PlainKey(kPickChords, platform::kKeyDown), u"Move the mark down", MoveByKey<0, 1>},
};

}  // namespace

std::span<const KeyRow> PlacePickKeys() { return kKeys; }

bool PlacePickKey(const KeyEvent& key) {
  if (!waits || key.ctrl || key.shift || key.alt) return false;
  if (cross.picked && pick.from == PlaceSource::Plane) cross.z = PlaneZ();
  return RunKeyRow(kKeys, key);
}

std::u16string_view PlacePickHelp() {
  if (!waits) return {};
  return u"PICK  arrows move the cross  Enter takes it  Esc gives up";
}

std::u16string PickCrossWords() {
  if (!waits || !cross.picked) return {};
  char16_t place[kReadOutUnits] = {};
  AppendLabelNumber(place, kReadOutUnits, u"X ", cross.x, 4);
  AppendLabelNumber(place, kReadOutUnits, u"  Y ", cross.y, 4);
  AppendLabelNumber(place, kReadOutUnits, u"  Z ", cross.z, 4);
  AppendBounded(place, kReadOutUnits, UnitsMetric() ? u" mm" : u" in");
  return place;
}

}  // namespace morva
