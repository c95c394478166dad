// What a builder shows of its work in the toolpath view, and what it lets the user pick there.
//
// A builder fills in these records and hands them to the hooks of app/hooks.h: showPreview,
// markPreview, leavePreview, pickPlace, dropPlacePick. Lengths and places are in the unit that the
// user works in, UnitsMetric(), whatever unit the text names. Nothing here changes a program.
#pragma once

#include <cstdint>
#include <string_view>

namespace morva {

// A box of material.
struct PreviewBox {
  bool shown = false;
  double minX = 0, maxX = 0, minY = 0, maxY = 0;
  double bottom = 0;
  double top = 0;

  bool operator==(const PreviewBox&) const = default;
};

// What a builder shows: the path of a text, the stock around it and the cutter on it. A record is
// read at once and not kept; showPreview may be called at every change, and reads the text again
// only where it is another one. While the text stays, play and head go on as they are.
struct PathPreview {
  std::u16string_view text;  // program text
  PreviewBox stock;
  // In front of the stock's size, "SKIM AREA"; static. Empty for those of the program's stock.
  const char16_t* stockWords = u"";
  std::int32_t tool = 0;  // a number of the tool library in place of the text's, 0: the text's
  double diameter = 0;    // of the cutter whose coverage is shown, 0 for none
  bool coverage = false;  // the ground that the cutter sweeps is painted
  bool levels = false;    // cut level by level: the user can have the deepest alone
  bool lags = false;      // the builder's fields do not read: an earlier text is shown
};

// A place of the preview that the builder points at, with words in one line. Words without a place
// are shown too.
struct PreviewMarker {
  bool shown = false;
  double x = 0, y = 0, z = 0;
  std::u16string_view words;  // copied
};

// What the user picked. A snap stands where the geometry stands, any other place on the plane.
struct PickedPlace {
  bool picked = false;  // false: the user or the program gave it up
  double x = 0, y = 0, z = 0;
  bool ofStock = false;  // a corner of a stock, upper or lower, or the middle of its top
  double stockTop = 0;   // Z of that stock's top: the one surface that a pick can name

  bool operator==(const PickedPlace&) const = default;
};

enum class PlaceSource : unsigned char {
  Geometry,  // ends of drawn motion and of drawings, corners of stock, the middle of its top
  Plane,     // any place on the plane at a height
};

// The next press in the toolpath view picks a place; Esc and leaving the preview give it up. The
// arrow keys and Enter do the same without a mouse. The view shows what waits. The pick goes on
// where unit, stock or plane change meanwhile; the cross of the keys begins anew then.
struct PlacePick {
  PlaceSource from = PlaceSource::Geometry;
  double (*planeZ)() = nullptr;  // for PlaceSource::Plane, asked anew at every use
  const char16_t* words = u"";   // static; for the status line when the pick begins, and again when
                                 // a press hits nothing
  // Called once for each pick that began, behind all that the view does. It may begin another one.
  void (*done)(const PickedPlace& place) = nullptr;
};

}  // namespace morva
