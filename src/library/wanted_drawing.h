// A drawing that a builder has drawn for it: it comes up on the drawing surface under a name of its
// own, and what is drawn goes back to the builder when the user accepts it.
#pragma once

#include <span>

#include "library/sketch_object.h"

namespace morva {

// An object and whether it is hidden in the drawing.
struct WantedObject {
  SketchObject object;
  bool hidden = false;
};

struct WantedDrawing {
  const char16_t* name = u"";  // static, of its tab; a drawing of this name comes up again
  const char16_t* hint = u"";  // static, for the surface's status line
  const char16_t* full = u"";  // static, where no drawing is free
  // What a drawing begins with that was not there yet, in this unit; read at once.
  std::span<const SketchObject> start = {};
  bool metric = false;
  // The user accepts what is drawn, in the drawing's unit. Empty: the builder took it and came up
  // again. Otherwise the words say why not, and the drawing stays.
  const char16_t* (*take)(std::span<const WantedObject> objects, bool metric) = nullptr;
};

}  // namespace morva
