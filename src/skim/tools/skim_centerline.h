// The drawn line that the custom strategy follows: a drawing of its own on the drawing surface.
#pragma once

namespace morva {

// Brings its drawing up. What the user accepts there becomes the plan's centerline and the wizard
// comes back; until then the plan stays.
void DrawSkimPath();

}  // namespace morva
