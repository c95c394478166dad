// Rectangles, points and colours as the platform layer passes them.
//
// Pixels count from the top left corner of the window or view they belong to, x to the
// right and y down. A rectangle holds its left and top edge and not its right and bottom one.
#pragma once

#include <cstdint>

namespace platform {

struct Rect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
};

inline int RectWidth(const Rect& r) { return r.right - r.left; }
inline int RectHeight(const Rect& r) { return r.bottom - r.top; }
inline bool RectHolds(const Rect& r, int x, int y) {
  return x >= r.left && x < r.right && y >= r.top && y < r.bottom;
}
inline bool SameRect(const Rect& a, const Rect& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

struct Point {
  int x = 0;
  int y = 0;
};

// A point of a drawing, in pixels with fractions.
struct PointF {
  double x = 0;
  double y = 0;
};

// 0x00RRGGBB.
using Colour = std::uint32_t;

inline constexpr Colour Rgb(unsigned red, unsigned green, unsigned blue) {
  return (red << 16) | (green << 8) | blue;
}
inline constexpr unsigned RedOf(Colour c) { return (c >> 16) & 255u; }
inline constexpr unsigned GreenOf(Colour c) { return (c >> 8) & 255u; }
inline constexpr unsigned BlueOf(Colour c) { return c & 255u; }

// The five fonts of the program. Faces and pixel heights belong to the platform: body 16,
// emphasis 16 semi-bold, small 13, title 30 bold, code sized so that a line is 20 high.
enum class FontRole { Body, Emphasis, Small, Title, Code };

}  // namespace platform
