#include "golden/picture_meets_path.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

namespace golden {

using morva::Ink;
using morva::MarkKind;
using morva::MotionPath;
using morva::MotionPoint;
using morva::Picture;
using morva::PictureArc;
using morva::PictureMark;

namespace {

constexpr double kPi = std::numbers::pi;
constexpr int kSamples = 16;                 // of a straight piece, its ends besides
constexpr double kArcSample = kPi / 180;     // radians between samples of an arc
constexpr double kEllipseChord = kPi / 720;  // radians of the parameter
constexpr std::size_t kMostTold = 8;

struct Spot {
  double x = 0;
  double y = 0;
};

double Distance(Spot a, Spot b) { return std::hypot(a.x - b.x, a.y - b.y); }

Spot Between(Spot a, Spot b, double t) { return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t}; }

double FromSegment(Spot p, Spot a, Spot b) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double square = dx * dx + dy * dy;
  if (square == 0) return Distance(p, a);
  const double t = ((p.x - a.x) * dx + (p.y - a.y) * dy) / square;
  return Distance(p, Between(a, b, std::clamp(t, 0.0, 1.0)));
}

// A straight piece of the picture, or a piece of a circle.
struct Piece {
  Spot from;
  Spot to;
  bool round = false;
  Spot centre;
  double radius = 0;
  double start = 0;  // radians
  double sweep = 0;
};

Spot OnCircle(const Piece& piece, double angle) {
  return {piece.centre.x + piece.radius * std::cos(angle),
          piece.centre.y + piece.radius * std::sin(angle)};
}

double FromPiece(Spot p, const Piece& piece) {
  if (!piece.round) return FromSegment(p, piece.from, piece.to);
  double turn = std::atan2(p.y - piece.centre.y, p.x - piece.centre.x) - piece.start;
  if (piece.sweep < 0) turn = -turn;
  turn -= std::floor(turn / (2 * kPi)) * 2 * kPi;
  if (turn <= std::fabs(piece.sweep)) {
    return std::fabs(Distance(p, piece.centre) - piece.radius);
  }
  return std::min(Distance(p, piece.from), Distance(p, piece.to));
}

Piece Round(Spot centre, double radius, double start, double sweep) {
  Piece piece;
  piece.round = true;
  piece.centre = centre;
  piece.radius = radius;
  piece.start = start;
  piece.sweep = sweep;
  piece.from = OnCircle(piece, start);
  piece.to = OnCircle(piece, start + sweep);
  return piece;
}

void AddArcPieces(const PictureArc& arc, std::vector<Piece>& pieces) {
  const double start = arc.start * kPi / 180;
  const double sweep = std::clamp(arc.sweep, -360.0, 360.0) * kPi / 180;
  const double radiusX = std::fabs(arc.radiusX);
  const double radiusY = std::fabs(arc.radiusY);
  if (radiusX == radiusY) {
    pieces.push_back(Round({arc.x, arc.y}, radiusX, start, sweep));
    return;
  }
  const auto place = [&](double t) {
    return Spot{arc.x + radiusX * std::cos(t), arc.y + radiusY * std::sin(t)};
  };
  const int chords = std::max(1, static_cast<int>(std::ceil(std::fabs(sweep) / kEllipseChord)));
  for (int i = 0; i < chords; ++i) {
    Piece chord;
    chord.from = place(start + sweep * i / chords);
    chord.to = place(start + sweep * (i + 1) / chords);
    pieces.push_back(chord);
  }
}

void AddSide(const morva::PicturePoint& from, const morva::PicturePoint& to,
             std::vector<Piece>& pieces) {
  Piece piece;
  piece.from = {from.x, from.y};
  piece.to = {to.x, to.y};
  const double b = from.bulge;
  const double chord = Distance(piece.from, piece.to);
  if (b == 0 || chord == 0) {
    pieces.push_back(piece);
    return;
  }
  // The centre lies on the middle line of the chord, to its left for a flat bulge above 0.
  const double aside = (1 - b * b) / (4 * b);
  const Spot centre{(from.x + to.x) / 2 - (to.y - from.y) * aside,
                    (from.y + to.y) / 2 + (to.x - from.x) * aside};
  const double start = std::atan2(from.y - centre.y, from.x - centre.x);
  pieces.push_back(Round(centre, Distance(centre, piece.from), start, 4 * std::atan(b)));
}

bool StandsForACut(const PictureMark& mark) {
  return mark.ink == Ink::Feature || mark.ink == Ink::Blind;
}

// The lines that stand for cuts; `crosses` gets the middles of crosses.
std::vector<Piece> CutLines(const Picture& picture, std::vector<Piece>& crosses) {
  std::vector<Piece> pieces;
  for (const PictureMark& mark : picture.marks) {
    if (!StandsForACut(mark)) continue;
    const auto first = static_cast<std::size_t>(mark.first);
    const auto end = static_cast<std::size_t>(mark.first + mark.count);
    if (mark.kind == MarkKind::Arc) {
      for (std::size_t i = first; i < end; ++i) AddArcPieces(picture.arcs[i], pieces);
    } else if (mark.kind == MarkKind::Path || mark.kind == MarkKind::Loop) {
      for (std::size_t i = first; i + 1 < end; ++i) {
        AddSide(picture.points[i], picture.points[i + 1], pieces);
      }
      if (mark.kind == MarkKind::Loop && end > first) {
        AddSide(picture.points[end - 1], picture.points[first], pieces);
      }
    } else if (mark.kind == MarkKind::Cross) {
      Piece middle;
      middle.from = middle.to = {picture.points[first].x, picture.points[first].y};
      crosses.push_back(middle);
    }
  }
  return pieces;
}

// A feed of the path. A line of code that makes several is an arc.
struct Feed {
  Spot from;
  Spot to;
  bool chord = false;
  int line = 0;
};

std::vector<Feed> FeedsOf(const MotionPath& path) {
  std::vector<Feed> feeds;
  for (std::int32_t i = 1; i < path.count; ++i) {
    const MotionPoint& a = path.points[i - 1];
    const MotionPoint& b = path.points[i];
    if (b.rapid || b.jump) continue;
    Feed feed{{a.x, a.y}, {b.x, b.y}, false, b.sourceLine};
    if (!feeds.empty() && feeds.back().line == feed.line) {
      feed.chord = feeds.back().chord = true;
    }
    feeds.push_back(feed);
  }
  return feeds;
}

std::string Place(Spot p) {
  char text[64];
  std::snprintf(text, sizeof text, "%.4f,%.4f", p.x, p.y);
  return text;
}

// Whether one of `things` is near enough. Picture and path mostly go the same way round, so the
// search begins where the last one ended.
template <typename Thing, typename Near>
bool AnyNear(const std::vector<Thing>& things, std::size_t& last, Near isNear) {
  for (std::size_t n = 0; n < things.size(); ++n) {
    const std::size_t i = (last + n) % things.size();
    if (!isNear(things[i])) continue;
    last = i;
    return true;
  }
  return false;
}

void CompareFeeds(const std::vector<Feed>& feeds, const std::vector<Piece>& pieces, double meets,
                  std::vector<std::string>& told) {
  std::size_t last = 0;
  const auto lies = [&](Spot p) {
    return AnyNear(pieces, last, [&](const Piece& piece) { return FromPiece(p, piece) <= meets; });
  };
  for (const Feed& feed : feeds) {
    if (told.size() >= kMostTold) return;
    const int steps = feed.chord ? 1 : kSamples;
    for (int i = 0; i <= steps; ++i) {
      const Spot p = Between(feed.from, feed.to, static_cast<double>(i) / steps);
      if (lies(p)) continue;
      told.push_back("line " + std::to_string(feed.line) + " cuts at " + Place(p) +
                     ", where nothing is drawn");
      break;
    }
  }
}

// How far the middle of a chord may lie from the arc that it stands for.
double Sagitta(const Feed& feed, const Piece& piece) {
  if (!feed.chord || !piece.round || piece.radius == 0) return 0;
  const double length = Distance(feed.from, feed.to);
  return length * length / (8 * piece.radius);
}

void ComparePieces(const std::vector<Piece>& pieces, const std::vector<Feed>& feeds, double meets,
                   std::vector<std::string>& told) {
  std::size_t last = 0;
  for (const Piece& piece : pieces) {
    if (told.size() >= kMostTold) return;
    const int steps =
        piece.round ? 1 + static_cast<int>(std::fabs(piece.sweep) / kArcSample) : kSamples;
    for (int i = 0; i <= steps; ++i) {
      const double t = static_cast<double>(i) / steps;
      const Spot p = piece.round ? OnCircle(piece, piece.start + piece.sweep * t)
                                 : Between(piece.from, piece.to, t);
      if (AnyNear(feeds, last, [&](const Feed& feed) {
            return FromSegment(p, feed.from, feed.to) <= meets + Sagitta(feed, piece);
          })) {
        continue;
      }
      told.push_back("drawn at " + Place(p) + ", where nothing is cut");
      break;
    }
  }
}

}  // namespace

std::vector<std::string> Differences(const Picture& picture, const MotionPath& path,
                                     bool pictureShowsMore, double meets) {
  std::vector<Piece> crosses;
  std::vector<Piece> pieces = CutLines(picture, crosses);
  const std::vector<Feed> feeds = FeedsOf(path);
  std::vector<std::string> told;
  if (!pictureShowsMore) ComparePieces(pieces, feeds, meets, told);
  pieces.insert(pieces.end(), crosses.begin(), crosses.end());
  CompareFeeds(feeds, pieces, meets, told);
  return told;
}

}  // namespace golden
