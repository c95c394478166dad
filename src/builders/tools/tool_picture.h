// The picture of a tool: the cutter in its holder seen from the front and a little above, and its
// cutting end seen from below. Heights are drawn at full length, so that they can be measured.
#pragma once

#include "forms/picture.h"
#include "library/tools.h"

namespace morva {

inline constexpr char16_t kNoToolPicture[] =
    u"Enter positive dimensions and 1\u201364 flutes. Stickout cannot exceed gauge length.";
// Whether the tool has a picture; else the words above stand in its place.
bool HasToolPicture(const ToolRecord& tool);

// The record is in inches; sizes are shown in millimetres where `metric` says so. Nothing for a
// tool without a picture.
void DrawTool(const ToolRecord& tool, bool metric, Picture& picture);
void DrawToolEnd(const ToolRecord& tool, bool metric, Picture& picture);

}  // namespace morva
