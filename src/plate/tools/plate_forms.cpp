#include "plate/tools/plate_forms.h"

#include "app/command_ids.h"
#include "app/limits.h"
#include "library/sketch_object.h"
#include "plate/model/plate.h"
#include "plate/tools/plate_edit.h"
#include "plate/tools/plate_state.h"

namespace morva {

namespace {

// Lower rows than in other panels: the thirteen numbers are in sight at once.
constexpr FormLook kLook = [] {
  FormLook look = kSheetLook;
  look.gap = look.tightGap = 2;
  look.fieldHeight = 24;
  look.inset = 1;  // nothing lies below the last field, which would cut its frame
  return look;
}();
// It stands on the workspace itself, where a line above a head would cross the other columns.
constexpr FormLook kEditLook = [] {
  FormLook look = kLook;
  look.headLines = false;
  return look;
}();

constexpr int kCustomPage = 1;  // the outline is a saved shape
constexpr int kDecimals = 6;    // so that a unit that goes to and fro loses nothing

constexpr FormRow Length(int value, const char16_t* label, const char16_t* start,
                         const char16_t* help) {
  return {.id = kIdPlateField + value,
          .label = label,
          .help = help,
          .start = start,
          .follows = Follows::Length,
          .decimals = kDecimals,
          .enter = kIdPlateInsert};
}
constexpr FormRow Half(FormRow row) {
  row.half = true;
  return row;
}
constexpr FormRow Times(int value, const char16_t* label, const char16_t* help) {
  FormRow row = Half(Length(value, label, u"2", help));
  row.follows = Follows::Nothing;
  return row;
}
constexpr FormRow Head(const char16_t* words) { return {.kind = RowKind::Head, .label = words}; }
constexpr FormRow Choice(int id, const char16_t* name, const char16_t* help,
                         std::span<const char16_t* const> rows) {
  return {.kind = RowKind::Choice, .id = id, .name = name, .help = help, .rows = rows};
}

// The plate stores its own numbers and choices, so that no row has a place in the record.
constexpr FormRow kRows[] = {
    Head(u"PLATE"),
    Choice(kIdPlateShape, u"Plate shape", u"The outline that is cut around the plate",
           kPlateShapeWords),
    {.kind = RowKind::Keys, .pages = PageBit(kCustomPage), .keys = {kIdPlateOutline}},
    Length(0, u"Length  X", u"8.000", u"Along X; of a round plate the diameter"),
    Length(1, u"Width  Y", u"6.000", u"Along Y; a round plate passes over it"),
    Length(2, u"Edge radius  R", u"0.250", u"Of the four corners of a rectangle; 0 leaves them"),
    Head(u"MOUNTING FEATURES"),
    Choice(kIdPlateType, u"Feature type", u"What is cut at every position of the layout",
           kPlateTypeWords),
    Choice(kIdPlateLayout, u"Layout", u"Where the features lie on the plate", kPlateLayoutWords),
    Length(3, u"Diameter / width", u"0.250", u"Of a hole the diameter, of a slot the width"),
    Length(4, u"Slot length", u"0.750", u"Of a slot from tip to tip"),
    Times(5, u"Count X", u"Columns of the grid, 1 to 20"),
    Times(6, u"Count Y", u"Rows of the grid, 1 to 20"),
    Length(7, u"Edge X", u"0.500", u"From the plate's ends to the outer columns"),
    Length(8, u"Edge Y", u"0.500", u"From the plate's sides to the outer rows"),
    Length(9, u"Pattern diameter", u"4.000", u"Of the bolt circle; 0 takes one that fits"),
    Head(u"CUTTING"),
    Length(10, u"Cut depth", u"-0.100", u"Z of outline and features, below the Safe Z"),
    Length(11, u"Feed", u"10.0", u"A minute, of plunge and cut"),
    Length(12, u"Safe Z", u"0.500", u"Height of the rapid moves between the cuts"),
    {.kind = RowKind::Keys, .keys = {kIdPlateInsert}, .fixed = true},
    {.kind = RowKind::Keys, .keys = {kIdPlatePrint}, .fixed = true},
};

constexpr unsigned PageOf(PlatePage page) { return PageBit(static_cast<int>(page)); }
constexpr unsigned kFeature = PageOf(PlatePage::Feature);
constexpr unsigned kSection = PageOf(PlatePage::Section);
constexpr unsigned kDepth = PageOf(PlatePage::Depth);
constexpr unsigned kName = PageOf(PlatePage::Name);

// In the plate's unit. The editor fills the field when it comes up.
constexpr FormRow Edit(unsigned pages, int id, const char16_t* label, const char16_t* help) {
  return {.id = id,
          .label = label,
          .help = help,
          .filled = true,
          .pages = pages,
          .enter = kIdPlateApply};
}

constexpr FormRow kEditRows[] = {
    {.kind = RowKind::Head, .label = u"PLATE FEATURES"},
    {.kind = RowKind::List, .id = kIdPlateFeatures, .name = u"PLATE FEATURES", .least = 96},
    {.kind = RowKind::Note,
     .label = u"Choose a row, or click the plate: its editor opens here.",
     .pages = PageOf(PlatePage::Nothing)},
    {.kind = RowKind::Head,
     .id = kIdPlateHead,
     .filled = true,
     .pages = kFeature | kSection | kDepth | kName},
    {.kind = RowKind::Choice,
     .id = kIdPlateKind,
     .name = u"Feature kind",
     .help = u"What is cut here in place of the form's feature",
     .choice = 0,
     .pages = kFeature,
     .rows = kFeatureKindWords},
    {.kind = RowKind::Keys, .pages = kFeature, .keys = {kIdPlateSaved}},
    Edit(kFeature, kIdPlateWidth, u"Width / diameter",
         u"Along X before the turn; of a circle the diameter"),
    Edit(kFeature, kIdPlateHeight, kSecondSizeWords,
         u"Along Y before the turn; a circle passes over it"),
    Edit(kFeature, kIdPlateAngle, u"Angle (degrees)", u"Counter-clockwise from +X"),
    Edit(kFeature, kIdPlateDepth, u"Depth", u"Of a blind feature, as a positive number"),
    Edit(kFeature, kIdPlateX, u"Center X", u"From the middle of the plate"),
    Edit(kFeature, kIdPlateY, u"Center Y", u"From the middle of the plate, up"),
    {.kind = RowKind::Keys, .pages = kFeature, .keys = {kIdPlateThrough}},
    Edit(kSection, kIdPlateSection, u"Dimension",
         u"The number of the form that this dimension shows"),
    Edit(kDepth, kIdPlateThickness, u"Thickness",
         u"Of the plate; through features are cut as deep"),
    Edit(kDepth, kIdPlateCutDepth, u"Default cut depth",
         u"Of everything without a depth of its own, positive"),
    {.kind = RowKind::Words,
     .id = kIdPlateName,
     .label = u"Plate name",
     .help = u"Under this name the plate stands among the saved shapes",
     .pages = kName,
     .enter = kIdPlateApply,
     .limit = kShapeNameUnits - 1},
    {.kind = RowKind::Keys,
     .pages = kFeature,
     .keys = {kIdPlateApply, kIdPlateLock, kIdPlateHide, kIdPlateDelete},
     .shares = {3, 1, 1, 1}},
    {.kind = RowKind::Keys,
     .pages = kSection | kDepth | kName,
     .keys = {kIdPlateApply, kIdPlateClose},
     .shares = {3, 2}},
};

}  // namespace

constexpr Sheet kPlateSheet{.frame = {kViewPlateForm, u"MorvaPlateForm", u"Plate settings"},
                            .paper = {kViewPlatePaper, u"MorvaPlatePaper", u"Numbers of the plate"},
                            .bar = {kViewPlateBar, u"MorvaPlateBar", u"Scroll the plate's numbers"},
                            .parent = kViewPlate};

const Form kPlateForm{.look = &kLook,
                      .sheet = &kPlateSheet,
                      .rows = kRows,
                      .page = [] { return plate.shape == PlateShape::Custom ? kCustomPage : 0; },
                      .metric = PlateIsMetric};

const Form kPlateEditForm{.look = &kEditLook,
                          .parent = kViewPlate,
                          .rows = kEditRows,
                          .page = [] { return static_cast<int>(plateEditor.page); },
                          .escape = kIdPlateClose};

}  // namespace morva
