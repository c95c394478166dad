// `get WHAT`: everything of the application that can be looked at.

#include <algorithm>
#include <cstdio>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "dnc/serial_profile.h"
#include "documents/feature_blocks.h"
#include "documents/program_tabs.h"
#include "driver/drive_internal.h"
#include "driver/json_text.h"
#include "library/macros.h"
#include "library/shapes.h"
#include "library/tools.h"
#include "plate/geometry/plate_layout.h"
#include "plate/model/plate.h"
#include "platform/file.h"
#include "platform/headless/headless.h"
#include "simulator/control_findings.h"
#include "simulator/cut_surface.h"
#include "simulator/machine_path.h"
#include "simulator/motion_path.h"
#include "simulator/shown_path.h"
#include "simulator/surface_paint.h"
#include "simulator/tool_model.h"
#include "simulator/view.h"

namespace drive {
namespace {

std::string GoodNumber(std::string_view key, double value) {
  std::string json;
  AppendNumber(json, value);
  return Good(key, json);
}

std::string ControlText(int id) { return GoodText(platform::TextOf(id)); }

std::string GetTitle(const Words&) { return GoodText(platform::WindowTitle()); }
std::string GetStatus(const Words&) { return ControlText(morva::kIdStatusLine); }
std::string GetHint(const Words&) { return ControlText(morva::kIdFeatureHint); }
// The help for the control under the pointer lies over the log.
std::string GetOutput(const Words&) {
  if (!platform::IsVisible(morva::kIdOutputHelp)) return ControlText(morva::kIdOutputLog);
  return GoodText(platform::TextOf(morva::kIdOutputHelp) + u"\r\n");
}
std::string GetInfoPanel(const Words&) { return ControlText(morva::kIdInfoPanel); }
std::string GetText(const Words&) { return ControlText(morva::kIdEditor); }
std::string GetDncLog(const Words&) { return GoodText(DncLog()); }
std::string GetSurface(const Words&) { return GoodNumber("surface", morva::app.surface); }
std::string GetMode(const Words&) { return GoodNumber("mode", morva::app.mode); }
std::string GetUnits(const Words&) { return GoodNumber("units", morva::app.unitsMetric); }
std::string GetDncState(const Words&) { return GoodNumber("dncstate", morva::dncState); }
std::string GetLayout(const Words&) {
  const platform::Rect client = platform::ClientArea(platform::kMainWindow);
  return Json('{')
      .Flag("ok", true)
      .Number("width", client.right)
      .Number("height", client.bottom)
      .Number("leftPanelWidth", morva::app.leftPanelWidth)
      .Number("topBarHeight", morva::app.topBarHeight)
      .Done();
}

std::string GetDialog(const Words&) {
  std::string title;
  AppendQuoted(title, headless::DialogTitle());
  const std::string id = std::to_string(headless::OpenDialog());
  return "{\"ok\":true,\"id\":" + id + ",\"title\":" + title + "}";
}

std::string GetClipboard(const Words&) { return GoodText(headless::ClipboardText()); }
std::string StillToCome(const Words&) { return Bad(u"this room is still to come"); }

std::string GetWords(const Words& words) {
  if (!platform::Exists(morva::kIdWordsEditor)) return StillToCome(words);
  return ControlText(morva::kIdWordsEditor);
}

std::string GetCaret(const Words&) {
  const int id = morva::app.commandWordsActive ? morva::kIdWordsEditor : morva::kIdEditor;
  const platform::EditorRange range = platform::EditorSelection(id);
  return Json('{')
      .Flag("ok", true)
      .Number("from", range.from)
      .Number("to", range.to)
      .Number("line", platform::EditorLineOf(id, range.to))
      .Done();
}

std::string GetTabs(const Words&) {
  Json list('[');
  for (int i = 0; i < morva::app.tabCount; ++i) {
    const morva::ProgramTab& tab = morva::tabs[i];
    list.Item(Json('{')
                  .Text("title", tab.title)
                  .Text("path", tab.path)
                  .Flag("dirty", tab.dirty)
                  .Flag("active", i == morva::app.activeTab)
                  .Flag("compareSelected", tab.compareSelected)
                  .Done());
  }
  return Good("tabs", list.Done());
}

std::string GetFeatures(const Words&) {
  Json list('[');
  for (int i = 0; i < morva::features.count; ++i) {
    const morva::FeatureRecord& row = morva::features.rows[i];
    list.Item(Json('{')
                  .Number("id", row.id)
                  .Number("start", row.start)
                  .Number("end", row.end)
                  .Number("kind", row.settings.kind)
                  .Text("name", row.name)
                  .Flag("needsMarkers", row.needsMarkers)
                  .Text("row", platform::RowText(morva::kIdFeatureList, i))
                  .Done());
  }
  return Good("features", list.Done());
}

std::string PathJson(const morva::MotionPath& path) {
  Json list('[');
  for (int i = 0; i < path.count; ++i) {
    const morva::MotionPoint& p = path.points[i];
    list.Item(Json('[')
                  .Item(p.x)
                  .Item(p.y)
                  .Item(p.z)
                  .Item(p.rapid)
                  .Item(static_cast<double>(p.sourceLine))
                  .Item(p.jump)
                  .Item(static_cast<double>(p.tool))
                  .Done());
  }
  return list.Done();
}

std::string GetPath(const Words&) {
  if (morva::ShownOwner() != morva::PathOwner::Machine) {
    return Good("path", PathJson(morva::ShownPath().path));
  }
  return Json('{')
      .Flag("ok", true)
      .Text("reader", u"machine")
      .Raw("path", PathJson(morva::machinePath))
      .Raw("programmed", PathJson(morva::machineProgrammed))
      .Done();
}

std::string GetCheck(const Words&) {
  const morva::Findings& findings = morva::machineTrack.findings;
  std::vector<std::int32_t> order(static_cast<std::size_t>(findings.count));
  morva::WorstFirst(findings, order);
  Json list('[');
  for (const std::int32_t index : order) {
    const morva::FoundLine& found = findings.found[index];
    list.Item(Json('{')
                  .Number("line", found.line)
                  .Text("name", morva::NameOf(found.kind))
                  .Number("strength", static_cast<int>(morva::StrengthOf(found.kind)))
                  .Text("words", morva::WordsOf(found))
                  .Done());
  }
  return Json('{').Flag("ok", true).Raw("check", list.Done()).Number("more", findings.more).Done();
}

std::string GetTime(const Words&) {
  const morva::ControlTrack& track = morva::machineTrack;
  Json list('[');
  for (int i = 0; i < track.operationCount; ++i) {
    const morva::Operation& operation = track.operations[i];
    list.Item(Json('{')
                  .Number("line", operation.line)
                  .Number("tool", operation.tool)
                  .Number("began", operation.began)
                  .Number("seconds", operation.seconds)
                  .Done());
  }
  return Json('{')
      .Flag("ok", true)
      .Number("seconds", track.totalSeconds)
      .Raw("operations", list.Done())
      .Done();
}
std::string GetGhost(const Words&) { return Good("ghost", PathJson(morva::ghostPath)); }

std::string GetPlay(const Words&) {
  const morva::Playback& play = morva::ShownPath().play;
  return Json('{')
      .Flag("ok", true)
      .Flag("playing", play.playing)
      .Flag("headInUse", play.headInUse)
      .Number("playHead", play.playHead)
      .Number("segmentFraction", play.segmentFraction)
      .Number("speedIndex", play.speedIndex)
      .Done();
}

std::string GetView(const Words&) {
  const morva::ViewState& shown = morva::ShownPath().view;
  return Json('{')
      .Flag("ok", true)
      .Number("zoom", shown.zoom)
      .Number("yaw", shown.yawDegrees)
      .Number("elevation", shown.elevationDegrees)
      .Number("roll", shown.rollDegrees)
      .Number("panX", shown.panX)
      .Number("panY", shown.panY)
      .Flag("topView", shown.topView)
      .Number("gridSpacing", morva::GridSpacing())
      .Done();
}

int ClassNumber(morva::ToolShape shape) {
  switch (shape) {
    case morva::ToolShape::Drill:
      return 2;
    case morva::ToolShape::Ball:
      return 4;
    case morva::ToolShape::Chamfer:
      return 5;
    default:
      return 0;
  }
}

std::string GetToolModel(const Words&) {
  const morva::ToolModel model = morva::ToolModelNow();
  Json json('{');
  json.Flag("shown", model.shown);
  if (model.shown) {
    json.Number("tool", model.cutter.tool)
        .Number("class", ClassNumber(model.cutter.shape))
        .Number("diameter", model.cutter.diameter)
        .Number("fluteLength", model.cutter.fluteLength)
        .Number("overallLength", model.cutter.overallLength)
        .Raw("tip", Json('[').Item(model.x).Item(model.y).Item(model.z).Done());
  }
  return Good("toolmodel", json.Done());
}

std::string GetCutSurface(const Words&) {
  const morva::CutSurface* const surface = morva::CutSurfaceNow();
  if (!surface) return Good("cutsurface", Json('{').Flag("shown", false).Done());
  Json rows('[');
  for (const auto& heights : surface->heights) {
    Json row('[');
    for (const double height : heights) row.Item(height);
    rows.Item(row.Done());
  }
  const morva::StockEnvelope& box = surface->box;
  Json corners('[');
  for (const double side : {box.minX, box.minY, box.maxX, box.maxY, box.bottom, box.top}) {
    corners.Item(side);
  }
  return Good("cutsurface", Json('{')
                                .Flag("shown", true)
                                .Raw("box", corners.Done())
                                .Number("stamped", surface->stamped)
                                .Raw("heights", rows.Done())
                                .Text("caption", std::u16string(morva::SurfaceCaption()))
                                .Done());
}

const char16_t* ButtonsWord(platform::BoxButtons buttons) {
  constexpr const char16_t* kWords[] = {u"ok", u"yesno", u"yesnocancel", u"yesnoothercancel",
                                        u"noyes"};
  return kWords[static_cast<int>(buttons)];
}

const char16_t* IconWord(platform::BoxIcon icon) {
  constexpr const char16_t* kWords[] = {u"none", u"information", u"warning", u"error", u"question"};
  return kWords[static_cast<int>(icon)];
}

const char16_t* AnswerWord(platform::BoxAnswer answer) {
  constexpr const char16_t* kWords[] = {u"ok", u"yes", u"no", u"cancel", u"other"};
  return kWords[static_cast<int>(answer)];
}

std::string GetBoxes(const Words&) {
  Json list('[');
  for (const headless::BoxRecord& box : headless::TakeBoxes()) {
    list.Item(Json('{')
                  .Text("title", box.title)
                  .Text("text", box.text)
                  .Text("buttons", ButtonsWord(box.buttons))
                  .Text("icon", IconWord(box.icon))
                  .Text("answer", AnswerWord(box.answer))
                  .Done());
  }
  return Good("boxes", list.Done());
}

std::string GetMenus(const Words&) {
  Json list('[');
  for (const headless::MenuRecord& menu : headless::TakeMenus()) {
    Json items('[');
    for (const headless::MenuItemRecord& item : menu.items) {
      items.Item(Json('{')
                     .Number("id", item.id)
                     .Text("text", item.text)
                     .Flag("checked", item.checked)
                     .Flag("enabled", item.enabled)
                     .Done());
    }
    list.Item(Json('{').Raw("items", items.Done()).Number("picked", menu.picked).Done());
  }
  return Good("menus", list.Done());
}

std::string GetFiles(const Words&) {
  Json list('[');
  for (const headless::FilePickRecord& pick : headless::TakeFilePicks()) {
    Json filters('[');
    for (const auto& [words, patterns] : pick.filters) {
      filters.Item(Json('[').ItemText(words).ItemText(patterns).Done());
    }
    list.Item(Json('{')
                  .Flag("save", pick.save)
                  .Text("title", pick.title)
                  .Text("initialName", pick.initialName)
                  .Text("defaultExtension", pick.defaultExtension)
                  .Raw("filters", filters.Done())
                  .Text("picked", pick.picked)
                  .Done());
  }
  return Good("files", list.Done());
}

std::string GetSent(const Words&) {
  return Json('{').Flag("ok", true).Text("sent", FromBytes(headless::TakeSent())).Done();
}

Json& AddControl(Json& json, const headless::ControlInfo& info) {
  return json.Number("id", info.id)
      .Text("kind", info.kind)
      .Text("text", info.text)
      .Text("name", info.name)
      .Flag("visible", info.visible)
      .Flag("enabled", info.enabled)
      .Flag("checked", info.checked);
}

// The control that the second word means, described; false: `error` says why.
bool Described(const Words& words, headless::ControlInfo& info, std::u16string& error) {
  int id = 0;
  error = u"expected a control";
  if (words.size() != 2 || !ReadControl(words[1], id, error)) return false;
  error = u"no such control";
  return headless::Describe(id, info);
}

std::string GetControl(const Words& words) {
  headless::ControlInfo info;
  std::u16string error;
  if (!Described(words, info, error)) return Bad(error);
  Json json('{');
  json.Flag("ok", true);
  return AddControl(json, info).Done();
}

std::string GetTip(const Words& words) {
  headless::ControlInfo info;
  std::u16string error;
  if (!Described(words, info, error)) return Bad(error);
  return GoodText(headless::ToolTipOf(info.id));
}

std::string GetList(const Words& words) {
  headless::ControlInfo info;
  std::u16string error;
  if (!Described(words, info, error)) return Bad(error);
  if (info.kind != u"list" && info.kind != u"multilist" && info.kind != u"combo") {
    return Bad(u"this is no list");
  }
  Json rows('[');
  for (int i = 0; i < platform::RowCount(info.id); ++i) {
    rows.Item(Json('{')
                  .Text("text", platform::RowText(info.id, i))
                  .Number("data", static_cast<double>(platform::RowData(info.id, i)))
                  .Flag("selected", platform::IsRowSelected(info.id, i))
                  .Done());
  }
  return Good("rows", rows.Done());
}

std::string GetControls(const Words&) {
  Json list('[');
  for (int id : headless::AllIds()) {
    headless::ControlInfo info;
    if (!headless::Describe(id, info) || !info.visible) continue;
    const platform::Rect& r = info.place;
    const std::string place = Json('[')
                                  .Item(static_cast<double>(r.left))
                                  .Item(static_cast<double>(r.top))
                                  .Item(static_cast<double>(r.right))
                                  .Item(static_cast<double>(r.bottom))
                                  .Done();
    list.Item(Json('{')
                  .Number("id", id)
                  .Text("kind", info.kind)
                  .Text("name", info.name)
                  .Text("text", info.text)
                  .Raw("rectangle", place)
                  .Done());
  }
  return Good("controls", list.Done());
}

std::u16string ColourWord(platform::Colour colour) {
  char text[16];
  std::snprintf(text, sizeof text, "#%06X", static_cast<unsigned>(colour & 0xFFFFFF));
  return platform::FromUtf8(text);
}

std::string GetTokens(const Words& words) {
  std::int64_t line = 0;
  if (words.size() != 2 || !ReadInteger(words[1], 0, 100000000, line)) {
    return Bad(u"expected: get tokens LINE, counted from 0");
  }
  const int id = morva::app.commandWordsActive ? morva::kIdWordsEditor : morva::kIdEditor;
  const int count = platform::LineRuns(id, static_cast<int>(line), nullptr, 0);
  std::vector<platform::ColourRun> runs(static_cast<std::size_t>(count));
  platform::LineRuns(id, static_cast<int>(line), runs.data(), count);
  Json list('[');
  for (const platform::ColourRun& run : runs) {
    list.Item(Json('[')
                  .Item(static_cast<double>(run.from))
                  .Item(static_cast<double>(run.length))
                  .ItemText(ColourWord(run.colour))
                  .Item(run.bold)
                  .Done());
  }
  return Good("tokens", list.Done());
}

std::string GetMarks(const Words&) {
  Json list('[');
  for (const platform::LineMark& mark : headless::EditorMarks(morva::kIdEditor)) {
    list.Item(Json('[')
                  .Item(static_cast<double>(mark.line))
                  .Item(static_cast<double>(mark.from))
                  .Item(static_cast<double>(mark.length))
                  .Done());
  }
  return Good("marks", list.Done());
}

std::string GetTools(const Words&) {
  Json tools('[');
  for (int i = 0; i < morva::toolLibrary.count; ++i) {
    const morva::ToolRecord& tool = morva::toolLibrary.tools[i];
    tools.Item(Json('{')
                   .Number("number", tool.number)
                   .Text("name", tool.name)
                   .Text("type", tool.type)
                   .Number("diameter", tool.diameter)
                   .Number("flutes", tool.flutes)
                   .Number("gaugeLength", tool.gaugeLength)
                   .Number("stickout", tool.stickout)
                   .Number("hOffset", tool.hOffset)
                   .Number("dOffset", tool.dOffset)
                   .Number("maxRPM", tool.maxRpm)
                   .Number("feed", tool.feed)
                   .Number("plunge", tool.plunge)
                   .Number("coolant", tool.coolant)
                   .Text("notes", tool.notes)
                   .Done());
  }
  return Good("tools", tools.Done());
}

std::string GetMacros(const Words&) {
  Json macros('[');
  for (int i = 0; i < morva::macroLibrary.count; ++i) {
    const morva::MacroRecord& macro = morva::macroLibrary.macros[i];
    macros.Item(Json('{').Text("name", macro.name).Text("code", macro.code).Done());
  }
  return Good("macros", macros.Done());
}

std::string GetShapes(const Words&) {
  Json shapes('[');
  for (int i = 0; i < morva::shapeLibrary.count; ++i) {
    const morva::SavedShape& shape = morva::shapeLibrary.shapes[i];
    Json objects('[');
    for (int k = 0; k < shape.count; ++k) objects.Item(ObjectJson(shape.objects[k]).Done());
    shapes.Item(Json('{').Text("name", shape.name).Raw("objects", objects.Done()).Done());
  }
  return Good("shapes", shapes.Done());
}

std::string GetSketch(const Words&) {
  Json objects('[');
  for (int i = 0; i < morva::sketch.objectCount; ++i) {
    objects.Item(ObjectJson(morva::sketch.objects[i])
                     .Flag("hidden", morva::sketch.hidden[i] != 0)
                     .Flag("locked", morva::sketch.locked[i] != 0)
                     .Done());
  }
  return Json('{')
      .Flag("ok", true)
      .Flag("metric", morva::sketch.metric)
      .Number("selected", morva::sketch.selected)
      .Raw("objects", objects.Done())
      .Number("undoDepth", morva::sketch.undoDepth)
      .Number("thickness", morva::sketch.thickness)
      .Number("dragTool", morva::tools.dragTool)
      .Number("geometryTool", morva::tools.geometryTool)
      .Number("constructionMethod", morva::tools.constructionMethod)
      .Number("panelMode", morva::tools.panelMode)
      .Text("status", morva::SketchStatus())
      .Done();
}

Json PointJson(double x, double y) {
  Json point('[');
  point.Item(x).Item(y);
  return point;
}

std::string PlateFeatureJson(const morva::PlateFeature& feature, int k) {
  Json shape('[');
  for (int i = 0; i < feature.shape.count; ++i) {
    shape.Item(ObjectJson(feature.shape.objects[i]).Done());
  }
  return Json('{')
      .Number("index", k)
      .Flag("placed", feature.placed)
      .Number("x", feature.x)
      .Number("y", feature.y)
      .Flag("hidden", feature.hidden)
      .Flag("locked", feature.locked)
      .Flag("deleted", feature.deleted)
      .Number("depth", feature.depth)
      .Flag("through", feature.through)
      .Raw("shape", shape.Done())
      .Done();
}

std::string GetPlate(const Words&) {
  const morva::PlateRecord& plate = morva::plate;
  const morva::PlateNumbers numbers = morva::NumbersOf(plate);
  Json values('[');
  for (int i = 0; i < morva::kPlateFormValues; ++i) values.ItemText(plate.values[i].text);
  Json positions('[');
  for (int k = 0; k < morva::FeatureCount(numbers); ++k) {
    const platform::PointF at = morva::FeaturePlace(numbers, plate.features[k], k);
    positions.Item(PointJson(at.x, at.y).Done());
  }
  Json features('[');
  for (int k = 0; k < morva::kMaxPlateFeatures; ++k) {
    if (!IsPlainFeature(plate.features[k])) {
      features.Item(PlateFeatureJson(plate.features[k], k));
    }
  }
  const morva::ProgramTab* tab = morva::ActiveTab();
  const morva::PlateStore* store = tab ? tab->plateStore : nullptr;
  return Good("plate", Json('{')
                           .Raw("values", values.Done())
                           .Number("plateShape", static_cast<int>(plate.shape))
                           .Number("featureType", static_cast<int>(plate.type))
                           .Number("layout", static_cast<int>(plate.layout))
                           .Flag("metric", plate.metric)
                           .Number("thickness", numbers.thickness)
                           .Text("name", plate.name)
                           .Flag("unnamed", plate.unnamed)
                           .Number("customOutlineIndex", plate.customOutlineIndex)
                           .Number("savedShapeIndex", plate.savedShapeIndex)
                           .Number("drawing", store ? store->active : 0)
                           .Number("drawings", store ? store->count : 1)
                           .Raw("positions", positions.Done())
                           .Raw("features", features.Done())
                           .Text("status", plate.status)
                           .Done());
}

std::string DrawCallJson(const headless::DrawCall& call) {
  Json json('[');
  json.ItemText(platform::FromUtf8(call.name));
  for (double number : call.numbers) json.Item(number);
  for (platform::Colour colour : call.colours) json.ItemText(ColourWord(colour));
  if (!call.text.empty()) json.ItemText(call.text);
  return json.Done();
}

std::string GetPrinted(const Words&) {
  Json jobs('[');
  for (const headless::PrintRecord& record : headless::TakePrinted()) {
    Json paint('[');
    for (const headless::DrawCall& call : record.paint) paint.Item(DrawCallJson(call));
    jobs.Item(Json('{')
                  .Text("document", record.document)
                  .Number("pages", record.pages)
                  .Flag("ended", record.ended)
                  .Raw("paint", paint.Done())
                  .Done());
  }
  return Good("printed", jobs.Done());
}

std::string GetPaint(const Words& words) {
  if (words.size() != 2) return Bad(u"expected: get paint VIEW");
  int id = words[1].text.empty() ? 0 : platform::ViewByClass(words[1].text);
  std::u16string error;
  if (id == 0 && !ReadControl(words[1], id, error)) return Bad(u"no such view or control");
  Json list('[');
  for (const headless::DrawCall& call : headless::PaintOf(id)) list.Item(DrawCallJson(call));
  return Good("paint", list.Done());
}

struct Look {
  const char16_t* name;
  std::string (*answer)(const Words& words);
};
constexpr Look kLooks[] = {
    {u"title", GetTitle},         {u"status", GetStatus},
    {u"hint", GetHint},           {u"output", GetOutput},
    {u"dnclog", GetDncLog},       {u"infopanel", GetInfoPanel},
    {u"text", GetText},           {u"words", GetWords},
    {u"caret", GetCaret},         {u"tabs", GetTabs},
    {u"features", GetFeatures},   {u"path", GetPath},
    {u"ghost", GetGhost},         {u"play", GetPlay},
    {u"view", GetView},           {u"sketch", GetSketch},
    {u"plate", GetPlate},         {u"skim", GetSkim},
    {u"tools", GetTools},         {u"macros", GetMacros},
    {u"shapes", GetShapes},       {u"surface", GetSurface},
    {u"mode", GetMode},           {u"units", GetUnits},
    {u"dncstate", GetDncState},   {u"boxes", GetBoxes},
    {u"menus", GetMenus},         {u"files", GetFiles},
    {u"sent", GetSent},           {u"control", GetControl},
    {u"list", GetList},           {u"controls", GetControls},
    {u"tokens", GetTokens},       {u"paint", GetPaint},
    {u"clipboard", GetClipboard}, {u"layout", GetLayout},
    {u"dialog", GetDialog},       {u"tip", GetTip},
    {u"toolmodel", GetToolModel}, {u"cutsurface", GetCutSurface},
    {u"printed", GetPrinted},     {u"marks", GetMarks},
    {u"check", GetCheck},         {u"time", GetTime},
};

}  // namespace

Json ObjectJson(const morva::SketchObject& object) {
  return Json('{')
      .Number("type", object.type)
      .Number("group", object.group)
      .Number("x", object.x)
      .Number("y", object.y)
      .Number("size", object.size)
      .Number("size2", object.size2)
      .Number("angle", object.angle);
}

std::string AnswerGet(const Words& words) {
  if (words.empty()) return Bad(u"expected: get WHAT");
  for (const Look& look : kLooks) {
    if (words[0].text == look.name) return look.answer(words);
  }
  return Bad(u"unknown value");
}

}  // namespace drive
