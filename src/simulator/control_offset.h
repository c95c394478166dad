// Lines and arcs beside lines and arcs, and where they meet. Plane geometry, any unit.
#pragma once

namespace morva {

struct Flat {
  double x = 0;
  double y = 0;
};

// A line, or an arc where `arc` is set.
struct FlatStretch {
  Flat from, to;
  bool arc = false;
  bool clockwise = false;
  Flat centre;
};

// The directions in which a stretch begins and ends, of length 1; zero for one without a length.
Flat StartWay(const FlatStretch& stretch);
Flat EndWay(const FlatStretch& stretch);

// The stretch at a distance beside it, to the left where it is positive. False: an arc is too small
// for that, and `out` stays.
bool OffsetBy(const FlatStretch& stretch, double left, FlatStretch& out);

// Where two stretches, run on beyond their ends, meet nearest to a place. False: nowhere.
bool MeetNear(const FlatStretch& first, const FlatStretch& second, const Flat& near, Flat& meets);

// Whether the way along the stretch from one place to another leads against its direction. Both
// places lie on it, at its offset or on lines that run on beyond its ends; those of a whole circle
// never do.
bool GoesBack(const FlatStretch& stretch, const Flat& from, const Flat& to);

// Whether a place on the stretch's line lies between its ends; a millionth beside them counts.
bool LiesOn(const FlatStretch& stretch, const Flat& place);

}  // namespace morva
