// The controls of the CAD workspace that the sketch writes to, on the headless machine.
#pragma once

#include <string>
#include <vector>

#include "app/panels.h"
#include "cad/model/sketch.h"
#include "cad/panel/cad_room.h"
#include "documents/autosave.h"
#include "documents/insertion.h"
#include "documents/program_tabs.h"
#include "documents/tab_models.h"
#include "forms/form.h"
#include "library/shapes.h"
#include "library/units.h"
#include "support/stage.h"
#include "text/codetext.h"

namespace cad_test {

inline void OnCommand(int id, int notification) {
  morva::RouteCommand(id, notification);
  morva::FormNotified(id, notification);
}
inline bool OnKey(int id, const platform::KeyEvent& key) {
  for (int n = 0; const morva::Handlers* handlers = morva::HandlersOf(id, n); ++n) {
    if (handlers->key && handlers->key(key)) return true;
  }
  return false;
}
inline void OnListClick(int id, int row, int x, int y) {
  for (int n = 0; const morva::Handlers* handlers = morva::HandlersOf(id, n); ++n) {
    if (handlers->listClick) handlers->listClick(row, x, y);
  }
}
inline void OnDrawItem(int id, const platform::DrawState& state, platform::Canvas& canvas) {
  for (int n = 0; const morva::Handlers* handlers = morva::HandlersOf(id, n); ++n) {
    if (handlers->drawItem) handlers->drawItem(state, canvas);
  }
}
inline void OnTimer(int window, int timer) {
  if (window == platform::kMainWindow) morva::RouteTimer(timer);
}

constexpr int kFields[] = {morva::kIdCadX,
                           morva::kIdCadY,
                           morva::kIdCadSize,
                           morva::kIdCadSize2,
                           morva::kIdCadAngle,
                           morva::kIdCadAmount,
                           morva::kIdCadDepth,
                           morva::kIdCadFeed,
                           morva::kIdCadSafeZ,
                           morva::kIdCadDrawingName,
                           morva::kIdCadShapeName,
                           morva::kIdCadThicknessValue,
                           morva::kIdCadPivotX,
                           morva::kIdCadPivotY,
                           morva::kIdCadPolygonRadius,
                           morva::kIdCadPolygonX,
                           morva::kIdCadPolygonY,
                           morva::kIdCadCircularX,
                           morva::kIdCadCircularY,
                           morva::kIdCadCircularDiameter,
                           morva::kIdCadSpacingX,
                           morva::kIdCadSpacingY,
                           morva::kIdCadRevolveAngle,
                           morva::kIdCadQuantity};

inline void MakeCadControls() {
  for (const int id : kFields) support::MakeText(id, platform::ControlKind::EditLine);
  support::MakeText(morva::kIdCadStatus, platform::ControlKind::Label);
  for (const int id : {morva::kIdCadOperations, morva::kIdCadRecent}) {
    platform::ListSpec list;
    list.id = id;
    platform::MakeList(list);
    platform::SetPlace(id, {0, 0, 200, 400});
  }
  for (int id = morva::kIdDrawingFirst; id <= morva::kIdDrawingLast; ++id) {
    support::MakeButton(id, u"");
  }
  for (const int id : {morva::kIdCadInch, morva::kIdCadMm, morva::kIdCadUndo, morva::kIdDrawingAdd,
                       morva::kIdDrawingRename, morva::kIdCadSaveShape}) {
    support::MakeButton(id, u"");
  }
}

struct CadStage : public support::Stage {
  platform::Events events;

  void SetUp() override {
    morva::ClearPanels();
    morva::ResetInsertion();
    morva::ResetUnits();
    morva::ResetDocuments();
    morva::ResetCad();
    MakeCadControls();
    events.command = OnCommand;
    events.key = OnKey;
    events.listClick = OnListClick;
    events.drawItem = OnDrawItem;
    events.timer = OnTimer;
    platform::ListenTo(&events);
    morva::ResetShapeLibrary();
    morva::RegisterCad();
  }
  void TearDown() override {
    morva::FreeTabs();
    morva::ResetCad();
    morva::ResetDocuments();
    morva::ResetInsertion();
    morva::ResetUnits();
    morva::ClearPanels();
    morva::ResetAppState();
  }

  static int Add(morva::SketchType type, double x, double y, double size, double size2 = 0,
                 double angle = 0, int group = 0) {
    return morva::AppendSketchObject({type, group, x, y, size, size2, angle});
  }
  static std::vector<std::u16string> Rows(int id) {
    std::vector<std::u16string> texts;
    for (int i = 0; i < platform::RowCount(id); ++i) texts.push_back(platform::RowText(id, i));
    return texts;
  }
};

// The workspace's window stands and one clean program is open.
struct DrawingsStage : public CadStage {
  void SetUp() override {
    CadStage::SetUp();
    morva::liveModels.cadWindowExists = [] { return true; };
    platform::SetVisible(morva::kIdCadDrawingName, false);
    morva::OpenTab(u"", u"G1 X1\r\n", u"Job.NC");
    morva::SwitchTab(0);
    morva::app.editorDirty = false;
    morva::tabs[0].dirty = false;
  }
  static void Cut(const char16_t* depth, const char16_t* feed, const char16_t* safeZ) {
    platform::SetText(morva::kIdCadDepth, depth);
    platform::SetText(morva::kIdCadFeed, feed);
    platform::SetText(morva::kIdCadSafeZ, safeZ);
  }
  static std::vector<std::u16string> CutTexts() {
    return {platform::TextOf(morva::kIdCadDepth), platform::TextOf(morva::kIdCadFeed),
            platform::TextOf(morva::kIdCadSafeZ)};
  }
};

}  // namespace cad_test
