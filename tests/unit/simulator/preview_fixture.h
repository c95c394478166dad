// A program in the editor and a builder that shows its own work over it.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/path_preview.h"
#include "documents/edit_link.h"
#include "documents/feature_blocks.h"
#include "documents/program_tabs.h"
#include "library/tools.h"
#include "platform/editor.h"
#include "simulator/place_pick.h"
#include "simulator/playback.h"
#include "simulator/preview.h"
#include "simulator/preview_state.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"
#include "unit/simulator/view_fixture.h"

namespace morva {

class PreviewTest : public ViewTest {
 protected:
  PreviewTest() {
    Clear();
    support::MakeButton(kIdPlay, u"PLAY");
    ResetToolLibrary();
  }
  ~PreviewTest() override {
    Clear();
    ResetToolLibrary();
    switches = ViewSwitches{};
  }
  static void Clear() {
    FreeDisabledCode(tabs[0].disabledCode);
    tabs[0] = ProgramTab{};
    ResetFeatures();
    editLink = EditLink{};
  }

  static void OpenProgram(std::u16string_view text) {
    app.activeTab = 0;
    app.tabCount = 1;
    platform::SetEditorText(kIdEditor, text);
    RebuildToolpath();
  }

  // Two levels of two rows over a stock of four by one, cut by a cutter of one.
  static constexpr char16_t kTwoLevels[] =
      u"G20 G90\r\nG0 Z0.5\r\nG0 X-1 Y0\r\nG1 Z-0.1\r\nG1 X5\r\nG1 Y0.6\r\nG1 X-1\r\nG0 Z0.5\r\n"
      u"G0 X-1 Y0\r\nG1 Z-0.2\r\nG1 X5\r\nG1 Y0.6\r\nG1 X-1\r\nG0 Z0.5\r\n";
  static PathPreview Facing(std::u16string_view text = kTwoLevels) {
    PathPreview preview;
    preview.text = text;
    preview.stock = {true, 0, 4, 0, 1, -0.5, 0};
    preview.stockWords = u"SKIM AREA";
    preview.diameter = 1;
    preview.levels = true;
    return preview;
  }
  static const OwnedPath& Builder() { return OwnedBy(PathOwner::Builder); }

  static void AddTool(std::int32_t number, double diameter) {
    ToolRecord tool;
    tool.number = number;
    constexpr std::u16string_view kType = u"End Mill";
    std::copy(kType.begin(), kType.end(), tool.type);
    tool.diameter = diameter;
    tool.stickout = 1;
    tool.gaugeLength = 2;
    AppendTool(tool);
  }

  // A block of a sketch with a rectangle about (5, 3), two by one, cut by `body`.
  static std::u16string SketchBlock(std::int32_t id, std::u16string_view body,
                                    bool metric = false) {
    FeatureSettings settings;
    settings.version = kSettingsVersion;
    settings.kind = kKindSketch;
    settings.metric = metric;
    settings.itemCount = 1;
    settings.values[kSketchThickness] = 0.75;
    settings.items[0].type = 1;
    settings.items[0].p0 = 5;
    settings.items[0].p1 = 3;
    settings.items[0].p2 = 2;
    settings.items[0].p3 = 1;
    settings.codeHash = CodeHash(body);
    return SettingsBlockText(id, u"", settings, body);
  }

  static void ExpectInView(double x, double y, double z) {
    const platform::Rect client = platform::ClientArea(kViewToolpath);
    const platform::PointF at = At(x, y, z);
    EXPECT_TRUE(at.x > 0 && at.x < platform::RectWidth(client)) << at.x;
    EXPECT_TRUE(at.y > 0 && at.y < platform::RectHeight(client)) << at.y;
  }

  // Feeds of the context as "x,y-x,y" in their order.
  static std::vector<std::string> Context() {
    std::vector<std::string> feeds;
    const MotionPath& context = Builder().context;
    const auto words = [](const MotionPoint& p) {
      char text[60];
      std::snprintf(text, sizeof text, "%g,%g", p.x, p.y);
      return std::string(text);
    };
    for (std::int32_t i = 1; i < context.count; ++i) {
      if (context.points[i].rapid || context.points[i].jump) continue;
      feeds.push_back(words(context.points[i - 1]) + "-" + words(context.points[i]));
    }
    return feeds;
  }
};

}  // namespace morva
