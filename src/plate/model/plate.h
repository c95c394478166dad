// The live plate: its numbers as they are typed, three choices, a name, and up to 400 features with
// what was set for them one by one.
//
// Everybody reads the record; only the functions here, of plate.cpp, write it.
//
// There is one live plate. Programs hold copies as records of kind 5 (plate_record.h). Numbers of
// the form are in the plate's own unit; whatever belongs to one feature is in inches, so that it
// stays where it is when the unit, the layout or the counts change.
#pragma once

#include <cstdint>
#include <string_view>

#include "app/limits.h"
#include "documents/feature_settings.h"
#include "library/shapes.h"
#include "text/strict_number.h"

namespace morva {

// The numbers of the form, by their place in a record's values.
enum PlateValue : int {
  kPlateLength = 0,  // along X; of a round plate the diameter
  kPlateWidth = 1,   // along Y
  kPlateEdgeRadius = 2,
  kPlateSize = 3,  // diameter of holes, width of slots
  kPlateSlotLength = 4,
  kPlateCountX = 5,  // whole, 1 to 20; other numbers count as the nearest of these
  kPlateCountY = 6,
  kPlateEdgeX = 7,  // from the plate's sides to the outer features
  kPlateEdgeY = 8,
  kPlatePatternDiameter = 9,
  kPlateCutDepth = kPlateDepth,  // Z of the cut, so below 0
  kPlateFeed = 11,               // length units a minute
  kPlateSafeZ = 12,
  kPlateStock = kPlateThickness,  // the plate's thickness
};
inline constexpr int kPlateValues = 14;
inline constexpr int kPlateFormValues = 13;  // without the thickness

// The numbers of the next three stand in records; their words in lists, in this order.
enum class PlateShape : std::int32_t { Rectangle = 0, Round = 1, Obround = 2, Custom = 3 };
enum class PlateFeatureType : std::int32_t { Holes = 0, SlotsX = 1, SlotsY = 2, Mixed = 3 };
enum class PlateLayout : std::int32_t { Corners = 0, Grid = 1, Circular = 2 };
inline constexpr const char16_t* kPlateShapeWords[] = {u"Rectangle", u"Round Plate",
                                                       u"Obround Plate", u"Saved custom shape…"};
inline constexpr const char16_t* kPlateTypeWords[] = {u"Round Holes", u"Slots - X", u"Slots - Y",
                                                      u"Mixed Hole / Slot"};
inline constexpr const char16_t* kPlateLayoutWords[] = {u"4 Corners", u"Grid", u"Circular"};

// What the user presses on in the picture, and what an editor is for: a number of PlateValue below
// 13, depth and thickness, or feature `k`, counted from 0.
inline constexpr int kPlateSections = 14;
inline constexpr int kDepthSection = 13;
inline constexpr int kFirstFeatureTarget = 100;
inline constexpr int FeatureTarget(int k) { return kFirstFeatureTarget + k; }
inline constexpr bool IsFeatureTarget(int target) {
  return target >= kFirstFeatureTarget && target < kFirstFeatureTarget + kMaxPlateFeatures;
}

// One number of the form. While its text does not read by the strict rule, the number is the one
// from before the edit: of "25o" the first key strokes must not stay as 25.
struct PlateText {
  char16_t text[kFieldUnits] = {};
  double value = 0;
  double finished = 0;  // as the last finished edit left it
};

// What was set for one feature. Zero is a feature as the form has it.
struct PlateFeature {
  double x = 0;  // centre, inches, in force while `placed`
  double y = 0;
  double depth = 0;  // of a blind feature, inches; 0: the plate's cut depth
  bool placed = false;
  bool hidden = false;   // neither drawn nor printed; cut all the same
  bool locked = false;   // its editor and its deletion refuse
  bool deleted = false;  // neither cut nor drawn nor listed; the others keep their numbers
  bool through = false;  // cut down to the plate's thickness, whatever `depth` says
  SavedShape shape;      // inches about its centre; no objects: what the feature type says
};

// How far a label stands from its usual place, as fractions of the picture's width and height.
struct PlateLabel {
  double x = 0;
  double y = 0;
  bool set = false;
  bool expendable = false;  // moved when no record had room: one is made without it at need
};
// Kept for what other programs store there; the third and fourth are 0 or above.
inline constexpr int kSectionNumbers = 5;
struct PlateSectionLabel {
  std::int32_t numbers[kSectionNumbers] = {};
  bool set = false;
};

struct PlateRecord {
  PlateText values[kPlateValues];
  PlateShape shape = PlateShape::Rectangle;
  PlateFeatureType type = PlateFeatureType::Holes;
  PlateLayout layout = PlateLayout::Corners;
  bool metric = false;  // the plate's own unit
  bool unnamed = true;  // nothing is saved or inserted meanwhile
  char16_t name[kShapeNameUnits] = {};
  SavedShape outline;                        // of a custom shape, as it was when it was chosen
  std::int32_t customOutlineIndex = -1;      // that shape in the library
  std::int32_t savedShapeIndex = -1;         // this plate in the library
  char16_t savedName[kShapeNameUnits] = {};  // the name that it has there
  PlateFeature features[kMaxPlateFeatures];
  PlateLabel dimensionLabels[kMaxPlateLabels];
  PlateSectionLabel sectionLabels[kMaxPlateSectionLabels];
  bool pending = false;       // something changed since the plate was saved or loaded
  bool saved = false;         // the plate stands in the library as it is named
  std::uint32_t changes = 0;  // grows with each change of what is drawn or listed
  char16_t status[kStatusUnits] = {};
};
extern PlateRecord plate;

// Called behind every change of the live plate, its status line included; null: nobody. It may be
// called several times for one step of the user.
void SetPlateListener(void (*changed)());
void SayOnPlate(std::u16string_view words);

// A new plate: start texts in inches, or the same lengths in millimetres, no name, no features set,
// nothing pending.
void StartPlate(bool metric);
// What a PlateValue starts with, in inches, or the same length in millimetres.
double StartNumber(int value, bool metric);
// The plate of another record takes the place of the live one; the status line stays.
void TakePlate(const PlateRecord& other);
// A new plate in this one's unit: what the reset key does. Saved shapes stay in the library.
void ClearPlate();

// The text of a number as it is typed, cut to the field. By the strict rule the number follows, and
// goes back to that of the last finished edit where the text does not read.
void SetPlateText(int value, std::u16string_view text);
// The keyboard has left a field, or code was made: what reads is what the user meant.
void FinishPlateTexts();
// Number and text, 0 to 6 decimals.
void SetPlateNumber(int value, double number, int decimals);
// The text reads as a number by the strict rule.
bool PlateTextReads(int value);
void SetPlateShape(PlateShape shape);  // Custom without an outline changes nothing
void SetPlateType(PlateFeatureType type);
void SetPlateLayout(PlateLayout layout);
// The shape of the library with this index becomes the outline. False: there is none.
bool SetPlateOutline(int libraryIndex);
// A copy of the shape becomes the outline, which stands in the library under `index`, -1: nowhere.
void TakePlateOutline(const SavedShape& shape, int libraryIndex);
// Converts the form's lengths and the thickness, with 6 decimals; counts and features stay.
void SetPlateUnit(bool metric);
// The plate has this name from now on, and is no longer unnamed.
void SetPlateName(std::u16string_view name);
// A record told how it stands; the name may be empty.
void TakePlateName(std::u16string_view name, bool unnamed, int savedShapeIndex);
// It is saved, or loaded: nothing is pending.
void SettlePlate(bool saved);
// What was handed to the library was not written.
void LeavePlatePending();
// It stands in the library at this index under its name; -1: it does not.
void SetPlateShapeIndex(int savedShapeIndex);
// The same under the name that it had before it was renamed.
void SetPlateShapeIndex(int savedShapeIndex, std::u16string_view savedName);

// Indexes of features are 0 to 399; another one changes nothing.
void PutFeature(int k, const PlateFeature& feature);
enum class FeatureFlag { Hidden, Locked, Deleted, Through };
bool HasFeatureFlag(const PlateFeature& feature, FeatureFlag flag);
void SetFeatureFlag(int k, FeatureFlag flag, bool on);
// The centre in inches.
void PlaceFeature(int k, double x, double y);
void SetFeatureDepth(int k, double depth);
// The label stays in memory where a record has no room for it; another number changes nothing.
void SetLabelExpendable(int label);
// Every label belongs to what is stored from now on.
void KeepAllLabels();
// False: there is no such label, and nothing changed.
bool SetDimensionLabel(int label, double x, double y);
bool SetSectionLabel(int section, const std::int32_t (&numbers)[kSectionNumbers]);
// A feature as the form has it.
bool IsPlainFeature(const PlateFeature& feature);

// Lengths of one feature are inches; this is what an inch is in the plate's unit.
double UnitsPerInch(const PlateRecord& record);
double InchesPerUnit(const PlateRecord& record);

void ResetPlate();

}  // namespace morva
