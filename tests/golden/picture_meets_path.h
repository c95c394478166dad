// Whether a builder's picture and the path of its code tell the same.
#pragma once

#include <string>
#include <vector>

#include "forms/picture.h"
#include "simulator/motion_path.h"

namespace golden {

inline constexpr double kMeets = 0.001;  // drawing units; the code has 3 decimals

// Each place where they differ, in words; none where they agree, seen from above. Every feed of
// the path lies on lines of the picture that stand for a cut (Ink::Feature and Ink::Blind; the
// middle of a cross counts). Every such line lies on feeds, unless `pictureShowsMore`. An arc of
// the path is made of chords, and only their ends are asked to lie on a line. What lies farther
// away than `meets` differs.
std::vector<std::string> Differences(const morva::Picture& picture, const morva::MotionPath& path,
                                     bool pictureShowsMore, double meets = kMeets);

}  // namespace golden
