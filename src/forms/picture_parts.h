// What the files of the picture share; not for other rooms.
#pragma once

#include <vector>

#include "forms/picture.h"

namespace morva {

// A mark as it lies on a view, curves as chords.
struct Chain {
  std::vector<platform::PointF> points;
  std::vector<unsigned char> curved;  // 1: a chord leads to the point
};

inline constexpr double kScreenChord = 0.2;  // pixels between a chord and its arc, at most
inline constexpr double kPaperChord = 0.1;

// An arc of a circle or ellipse, its direction in degrees.
struct ArcPiece {
  double x = 0;
  double y = 0;
  double radiusX = 0;
  double radiusY = 0;
  double start = 0;
  double sweep = 0;
};
// False for a side that is straight.
bool PieceOfSide(const PicturePoint& from, const PicturePoint& to, ArcPiece& piece);
// Cosine and sine of an angle in degrees, exact at the quarter turns.
double CosineOf(double degrees);
inline double SineOf(double degrees) { return CosineOf(degrees - 90); }

inline bool IsClosed(const PictureMark& mark) {
  return mark.kind == MarkKind::Loop || mark.kind == MarkKind::Fill;
}
inline bool HasCorners(const PictureMark& mark) {
  return IsClosed(mark) || mark.kind == MarkKind::Path;
}
inline bool IsFilled(const PictureMark& mark) {
  return mark.kind == MarkKind::Fill || mark.kind == MarkKind::Disc;
}
// The whole circle or ellipse.
inline bool IsWhole(const PictureArc& arc) { return arc.sweep >= 360 || arc.sweep <= -360; }

// Replaces `chain` by a path, loop, fill, arc or disc. Closed ones end where they begin.
void ChainOf(const Picture& picture, const PictureMark& mark, const PictureView& view,
             Chain& chain);
// Takes in a mark's bounds. `any` tells whether `bounds` holds something.
void TakeInMark(const Picture& picture, const PictureMark& mark, PictureBounds& bounds, bool& any);
void TakeInPoint(double x, double y, PictureBounds& bounds, bool& any);

// What a line is drawn with.
struct InkStyle {
  const char16_t* name = u"";
  platform::Colour colour = 0;
  int width = 1;  // pixels on the screen
  bool dashed = false;
  bool onPaper = false;
};
const InkStyle& StyleOf(Ink ink);

// The labels' places on the view; computed only where they are not known.
const std::vector<platform::Rect>& PlacedLabels(Picture& picture, const PictureView& view);
// Where a label stands as long as nothing is in its way and nobody has moved it.
platform::Rect UsualPlate(const Picture& picture, const PictureView& view,
                          const PictureLabel& label);

// The lines of a dimension whose label stands at `plate`, and its arrow heads, tip first. A plain
// label has at most one line, from its place to the label, where it stands far from it.
inline constexpr int kLeadLines = 3;
inline constexpr int kLeadArrows = 2;
struct LeadLines {
  platform::PointF lines[kLeadLines][2];
  int lineCount = 0;
  platform::PointF arrows[kLeadArrows][3];
  int arrowCount = 0;
};
LeadLines LeadLinesOf(const Picture& picture, const PictureView& view, const PictureLabel& label,
                      const platform::Rect& plate);

}  // namespace morva
