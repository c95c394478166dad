// The whole program with the plate workspace up and a plate called "Base".
#pragma once

#include <cmath>
#include <string>
#include <vector>

#include "forms/picture.h"
#include "plate/canvas/plate_view.h"
#include "plate/geometry/plate_layout.h"
#include "plate/model/plate.h"
#include "plate/tools/plate_editor.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "support/workbench.h"

namespace plate_test {

class PlateUp : public support::Workbench {
 protected:
  void SetUp() override {
    Workbench::SetUp();
    headless::Advance(200);
    ASSERT_TRUE(headless::Click(morva::kIdSurfacePlate));
  }
  static void Name(const char16_t* name) {
    ASSERT_TRUE(headless::TypeInto(morva::kIdPlateName, name));
    ASSERT_TRUE(headless::Click(morva::kIdPlateApply));
  }
  static std::u16string Status() { return platform::TextOf(morva::kIdPlateStatus); }
  static std::vector<std::u16string> Rows() {
    std::vector<std::u16string> rows;
    for (int i = 0; i < platform::RowCount(morva::kIdPlateFeatures); ++i)
      rows.push_back(platform::RowText(morva::kIdPlateFeatures, i));
    return rows;
  }
  static void Open(int k) {
    headless::SelectRows(morva::kIdPlateFeatures, {k + 1});
    ASSERT_EQ(morva::CurrentFeature(), k);
  }
  static platform::PointF PlaceOfFeature(int k) {
    return morva::FeaturePlace(morva::NumbersOf(morva::plate), morva::plate.features[k], k);
  }
  // The pixel of the preview where a place of the plate lies.
  static platform::PointF PixelOf(platform::PointF place) {
    return morva::OnView(morva::PlateSight(), place.x, place.y);
  }
  static void Pointer(platform::PointerAction action, double x, double y, bool alt = false) {
    platform::PointerEvent event;
    event.action = action;
    event.button = action == platform::PointerAction::Move ? platform::PointerButton::None
                                                           : platform::PointerButton::Left;
    event.leftDown = action == platform::PointerAction::Move;
    event.alt = alt;
    event.x = static_cast<int>(std::lround(x));
    event.y = static_cast<int>(std::lround(y));
    headless::Pointer(morva::kViewPlatePicture, event);
  }
  static void ClickAt(platform::PointF pixel) {
    Pointer(platform::PointerAction::Press, pixel.x, pixel.y);
    Pointer(platform::PointerAction::Release, pixel.x, pixel.y);
  }
  static void Drag(platform::PointF from, platform::PointF to, bool alt = false) {
    Pointer(platform::PointerAction::Press, from.x, from.y);
    Pointer(platform::PointerAction::Move, (from.x + to.x) / 2, (from.y + to.y) / 2, alt);
    Pointer(platform::PointerAction::Move, to.x, to.y, alt);
    Pointer(platform::PointerAction::Release, to.x, to.y);
  }
  static bool PreviewSays(std::u16string_view words) {
    for (const headless::DrawCall& call : headless::PaintOf(morva::kViewPlatePicture)) {
      if (call.text.find(words) != std::u16string::npos) return true;
    }
    return false;
  }
};

class NamedPlateUp : public PlateUp {
 protected:
  void SetUp() override {
    PlateUp::SetUp();
    Name(u"Base");
  }
};

}  // namespace plate_test
