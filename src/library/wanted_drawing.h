// What a builder has the user draw or point at on the drawing surface.
#pragma once

#include <span>

#include "library/sketch_object.h"

namespace morva {

// A drawing of its own for a builder. It comes up under its name, and what is drawn goes to the
// builder when the user accepts it.
struct WantedDrawing {
  const char16_t* name = u"";  // static, of its tab; a further one has a number behind it
  const char16_t* hint = u"";  // static, for the status line of the drawing surface
  const char16_t* full = u"";  // static, for the status line where no drawing is free
  // What a drawing that is empty or was not there yet begins with, and its unit; read at once.
  std::span<const SketchObject> start = {};
  bool metric = false;
  // The builder had its drawing up already since it was opened: that one comes up, as it stands.
  bool again = false;
  // Whether a drawing of such a name is the one that is wanted, by its objects in its own unit;
  // `hidden` as below. One that is not stays as it is, and a further one comes up. Null: any is.
  bool (*isIt)(std::span<const SketchObject> objects, const unsigned char* hidden,
               bool metric) = nullptr;
  // Whether a block of the program holds these lines, so that nothing is lost where no drawing is
  // free and another's lines take their place. Null: none does. Others are asked for.
  bool (*isKept)(std::span<const SketchObject> objects, const unsigned char* hidden,
                 bool metric) = nullptr;
  // The user accepts the objects, in the drawing's unit; `hidden` has a flag for each, not 0 where
  // it is hidden. Null: the builder has them, and brought its surface up again. Otherwise the words
  // say why not, and the drawing stays.
  const char16_t* (*take)(std::span<const SketchObject> objects, const unsigned char* hidden,
                          bool metric) = nullptr;
};

// One place of the drawing that is up.
struct WantedPlace {
  const char16_t* hint = u"";  // static, for the status line of the drawing surface
  // The user pressed there; it snaps as a tool's press does. In the drawing's unit.
  void (*done)(double x, double y, bool metric) = nullptr;
};

}  // namespace morva
