// What is done for every builder: the panel, the command of its key, insertion or update with its
// boxes, the record of the block and its reopening in its unit, the live picture and clicks on it,
// and what follows a change of the program.
//
// A builder's file includes this header for modes, forms, pictures and the writer as well.
#pragma once

#include "app/command_ids.h"
#include "documents/builder_table.h"
#include "documents/feature_settings.h"
#include "forms/form.h"
#include "forms/picture.h"
#include "forms/sheet.h"
#include "platform/canvas.h"
#include "platform/events.h"
#include "platform/geometry.h"
#include "platform/window.h"
#include "text/code_writer.h"

namespace morva {

// The ground of the forms in the right panel. It scrolls and is shared: one of them is up at a
// time.
inline constexpr Sheet kBuilderSheet{
    .frame = {kViewBuilder, u"MorvaBuilder", u"Builder"},
    .paper = {kViewBuilderPaper, u"MorvaBuilderPaper", u"Fields"},
    .bar = {kViewBuilderBar, u"MorvaBuilderBar", u"Scroll the builder's fields"},
    .parent = platform::kMainWindow};

// The calls that the tables of other rooms keep for one builder.
struct BuilderCalls {
  bool (*store)(FeatureSettings& record) = nullptr;
  bool (*open)(const FeatureSettings& record) = nullptr;
  void (*make)() = nullptr;
  void (*place)(const platform::Rect& area) = nullptr;
  void (*hide)() = nullptr;
  void (*paint)(platform::Canvas& canvas) = nullptr;
  bool (*pointer)(const platform::PointerEvent& event) = nullptr;
};
void JoinBuilder(const Builder& builder, const BuilderCalls& calls);

// The page of its form that a builder reads and stores.
int ReadPage(const Builder& builder);
// The command of the builder's key. False: nothing changed, and the user was told why.
bool InsertFromBuilder(const Builder& builder);
// The form's numbers and choices and the builder's items as a record. False: they cannot be stored.
bool StoreBuilder(const Builder& builder, FeatureSettings& record);
// Brings the form up with what the record holds, in the record's unit. False: it is no record of
// this builder, or the user keeps what is there; the form and its unit stay.
bool OpenBuilder(const Builder& builder, const FeatureSettings& record);
void PlaceBuilder(const Builder& builder, const platform::Rect& area);
// What the fields say now, fitted into the view.
void PaintBuilder(const Builder& builder, platform::Canvas& canvas);
// Tells the builder's `pressed` which part of the picture lies under a press of the left button.
// False: the event is no such press.
bool PressBuilder(const Builder& builder, const platform::PointerEvent& event);

// Registers the builder, its form and its panel, once at start-up.
template <const Builder& builder>
void RegisterBuilder() {
  BuilderCalls calls;
  calls.store = [](FeatureSettings& record) { return StoreBuilder(builder, record); };
  calls.open = [](const FeatureSettings& record) { return OpenBuilder(builder, record); };
  calls.make = [] { MakeForm(*builder.form); };
  calls.place = [](const platform::Rect& area) { PlaceBuilder(builder, area); };
  calls.hide = [] { HideForm(*builder.form); };
  calls.paint = [](platform::Canvas& canvas) { PaintBuilder(builder, canvas); };
  calls.pointer = [](const platform::PointerEvent& event) { return PressBuilder(builder, event); };
  JoinBuilder(builder, calls);
}

}  // namespace morva
