// Edits of a plate as typed into its editors: texts in, a changed plate or a refusal out.
#pragma once

#include <string>
#include <string_view>

#include "plate/model/plate.h"

namespace morva {

inline constexpr char16_t kCheckPlateTitle[] = u"Check plate settings";
inline constexpr char16_t kCheckPlateWords[] =
    u"Enter valid positive dimensions. Blind depth must not exceed plate thickness. Custom shapes "
    u"must keep their aspect ratio. Names must be unique.";
inline constexpr char16_t kNoFeature[] = u"Select a hole feature first.";
inline constexpr char16_t kUnlockFeature[] = u"Unlock the feature before deleting it.";
inline constexpr char16_t kDeleteFeatureTitle[] = u"Delete feature";
inline constexpr char16_t kDeleteFeatureWords[] =
    u"Delete this plate feature and its machining path?";

// The rows of the editor's kind list.
enum class FeatureKindRow : int { Circle = 0, Rectangle = 1, Slot = 2, Custom = 3 };
inline constexpr const char16_t* kFeatureKindWords[] = {u"Circle", u"Rectangle", u"Slot",
                                                        u"Custom"};

// What the feature editor shows and gets back; lengths as text in the plate's unit.
struct FeatureForm {
  FeatureKindRow kind = FeatureKindRow::Circle;
  std::u16string width, height, angle, depth, x, y;
  bool through = false;
  int customShape = -1;  // chosen in the library; -1: what the feature has stays
};
// The editor's texts for feature k, 0 to 399, with 4 decimals.
FeatureForm ShowFeature(const PlateRecord& record, int k);
// Puts a shape of the library into the editor, in its own size. False: there is none, or it cuts
// nothing of a width and a height.
bool ChooseCustomShape(FeatureForm& form, int libraryIndex, const PlateRecord& record);
// Apply. False: the box says kCheckPlateWords, and nothing changed; so also for a locked one, and
// for one that the layout has not.
bool ApplyFeature(int k, const FeatureForm& form);
// One number of the form, 0 to 12, with 4 decimals. False: as above.
bool ApplySection(int section, std::u16string_view text);
// Thickness and default cut depth, the latter as a positive number. False: as above.
bool ApplyDepthSection(std::u16string_view thickness, std::u16string_view depth);
// False: it is locked, and the status line says so.
bool MayDeleteFeature(int k);
// Moves a feature that is not locked; plate units. False: locked, deleted, or too far out.
bool MoveFeature(int k, double x, double y);

// A row of the feature list.
std::u16string FeatureRowWords(const PlateRecord& record, int k);
inline constexpr char16_t kOutlineRow[] = u"Plate outline / thickness";

}  // namespace morva
