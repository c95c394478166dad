// Placing the stock: by numbers, on picked geometry, anywhere on the plane of its surface.
#pragma once

namespace morva {

inline constexpr char16_t kCorrectFirst[] = u"Correct skim inputs before placing the area.";

// A field of the placement changed: the stock moves along, or the status line says why not.
void TakeTypedPlace();
// The next press in the view places the stock's lower left corner on geometry, with its surface,
// or anywhere on the plane of the surface.
void PickSkimGeometry();
void PickSkimPlane();
// The next press in the drawing that is up places it there; the surface's Z stays.
void PickSkimInDrawing();

}  // namespace morva
