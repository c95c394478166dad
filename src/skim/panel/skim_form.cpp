#include "skim/panel/skim_form.h"

#include <initializer_list>
#include <vector>

#include "app/command_ids.h"
#include "platform/listing.h"
#include "skim/model/plan.h"
#include "skim/model/wizard_state.h"
#include "skim/tools/skim_changes.h"

namespace morva {

namespace {

constexpr unsigned kStockPages = PageBit(kSkimStockForm) | PageBit(kSkimPlacingForm);
constexpr unsigned kCutterPages = PageBit(kSkimCutterForm);
constexpr unsigned kDepthPages = PageBit(kSkimCountForm) | PageBit(kSkimTotalForm);
constexpr unsigned kReviewPages = PageBit(kSkimReviewForm);

struct PageWords {
  unsigned pages;
  const char16_t* title;
  const char16_t* lead;
};
constexpr PageWords kPageWords[] = {
    {kStockPages, u"1 / 4   Tool, work offset and stock",
     u"Where is the stock in your active work coordinate system? X/Y values describe its edges."},
    {kCutterPages, u"2 / 4   Cutter, stepover and cutting speeds",
     u"What cutter are you using? Stepover is a percentage of its diameter. Feed and plunge are "
     u"separate rates per minute."},
    {kDepthPages, u"3 / 4   Depth plan and safe clearance",
     u"Choose a pass count or total removal. Depth per pass is incremental; the final pass is "
     u"shortened to reach the exact total."},
    {kReviewPages, u"4 / 4   Review every pass before insertion",
     u"Every pass retracts Z before XY returns to zero. M00 stops between passes. Cycle Start "
     u"continues; the next block states the next cut and cumulative Z. Inspect tool, stock, "
     u"offset and clearances."},
};

// What the status line says of a field, by SkimField, and where it stands.
struct FieldPlace {
  unsigned pages;
  const char16_t* help;
};
constexpr FieldPlace kFields[kSkimFields] = {
    {kStockPages, u"Number of the T and H word, 0 to 999; 0 keeps the tool in the spindle"},
    {kStockPages, u"The G word of the work coordinates, 54 to 59"},
    {kStockPages, u"X of the left edge of the stock"},
    {kStockPages, u"Y of the lower edge of the stock"},
    {kStockPages, u"X of the right edge of the stock"},
    {kStockPages, u"Y of the upper edge of the stock"},
    {kCutterPages, u"Outside diameter of the cutter; a tool of the list brings its own"},
    {kCutterPages, u"From row to row, above 0 to 100 percent"},
    {kCutterPages, u"Turns of the spindle a minute, a whole number"},
    {kCutterPages, u"How fast the cutter goes along a row"},
    {kCutterPages, u"How fast the cutter goes down into the stock"},
    {kDepthPages, u"Z of the uncut surface"},
    {kDepthPages, u"What one pass takes off; the last one may take less"},
    {PageBit(kSkimTotalForm), u"What all passes take off together"},
    {PageBit(kSkimCountForm), u"A whole number from 1 to 100"},
    {kDepthPages, u"How far the safe plane lies above the uncut surface"},
    {kCutterPages, u"Where rows begin left of the stock; of a spiral its lead-in"},
    {kCutterPages, u"Where rows end right of the stock"},
};

constexpr const char16_t* kDepthRows[] = {u"Use a number of passes",
                                          u"Cut until total removal is reached"};

FormRow FieldRow(int field) {
  const SkimFieldRow& said = SkimRow(field);
  return {.id = kIdSkimField + field,
          .label = said.label,
          .help = kFields[field].help,
          .filled = true,
          .decimals = said.whole ? 0 : kSkimDecimals,
          .pages = kFields[field].pages,
          .enter = kIdSkimNext,
          .half = true};
}

FormRow PlaceRow(int id, const char16_t* label, const char16_t* help) {
  return {.id = id,
          .label = label,
          .help = help,
          .filled = true,
          .decimals = kSkimDecimals,
          .pages = PageBit(kSkimPlacingForm),
          .enter = kIdSkimPlace,
          .half = true};
}

void AddFields(std::vector<FormRow>& rows, std::initializer_list<int> fields) {
  for (const int field : fields) rows.push_back(FieldRow(field));
}

void AddStock(std::vector<FormRow>& rows) {
  rows.push_back({.kind = RowKind::Choice,
                  .id = kIdSkimTools,
                  .label = u"Tool",
                  .help = u"A tool of the library brings its number and diameter",
                  .pages = kStockPages});
  AddFields(rows, {kSkimTool, kSkimWorkOffset, kSkimXMin, kSkimYMin, kSkimXMax, kSkimYMax});
  rows.push_back({.kind = RowKind::Keys, .pages = kStockPages, .keys = {kIdSkimPosition}});
  rows.push_back(PlaceRow(kIdSkimStartX, u"Start X", u"X of the stock's lower left corner"));
  rows.push_back(PlaceRow(kIdSkimStartY, u"Start Y", u"Y of the stock's lower left corner"));
  rows.push_back(PlaceRow(kIdSkimSurfaceZ, u"Surface Z", u"Z of the uncut surface of the stock"));
  rows.push_back(PlaceRow(kIdSkimThickness, u"Stock thickness (preview)",
                          u"How thick the stock is drawn; the code does not know it"));
  rows.push_back({.kind = RowKind::Keys,
                  .pages = PageBit(kSkimPlacingForm),
                  .keys = {kIdSkimPickGeometry, kIdSkimPickPlane, kIdSkimPickDrawing}});
}

void AddCutter(std::vector<FormRow>& rows) {
  rows.push_back({.kind = RowKind::Choice,
                  .id = kIdSkimStrategies,
                  .label = u"Strategy",
                  .help = u"How the rows cover the stock",
                  .pages = kCutterPages,
                  .rows = SkimStrategyNames()});
  rows.push_back({.kind = RowKind::Keys, .pages = kCutterPages, .keys = {kIdSkimDraw}});
  AddFields(rows, {kSkimDiameter, kSkimStepover, kSkimFeed, kSkimPlunge, kSkimEntry, kSkimExit,
                   kSkimRpm});
}

void AddDepths(std::vector<FormRow>& rows) {
  rows.push_back({.kind = RowKind::Choice,
                  .id = kIdSkimDepths,
                  .label = u"Depth plan",
                  .help = u"What tells how deep all passes go together",
                  .pages = kDepthPages,
                  .rows = kDepthRows});
  AddFields(rows, {kSkimZTop, kSkimClearance, kSkimDepthPerPass, kSkimTotalDepth, kSkimPassCount});
}

// Below what scrolls: back on the left, forward on the right.
void AddFootKeys(std::vector<FormRow>& rows) {
  constexpr short kHeight = 32;
  rows.push_back({.kind = RowKind::Keys,
                  .keys = {kIdSkimCancel, kIdSkimBack},
                  .height = kHeight,
                  .half = true,
                  .fixed = true});
  const auto forward = [&rows](int key, unsigned pages) {
    rows.push_back({.kind = RowKind::Keys,
                    .pages = pages,
                    .keys = {key},
                    .height = kHeight,
                    .half = true,
                    .fixed = true});
  };
  forward(kIdSkimNext, kEveryPage & ~kReviewPages);
  forward(kIdSkimInsert, kReviewPages);
}

void AddEveryPage(std::vector<FormRow>& rows) {
  rows.push_back({.kind = RowKind::Keys, .keys = {kIdSkimShowMatrix, kIdSkimCoverage}, .above = 4});
  rows.push_back({.kind = RowKind::Keys, .keys = {kIdSkimInch, kIdSkimMm}});
  AddFootKeys(rows);
}

const std::vector<FormRow>& Rows() {
  static const std::vector<FormRow> kRows = [] {
    std::vector<FormRow> rows;
    for (const PageWords& words : kPageWords) {
      rows.push_back({.kind = RowKind::Head, .label = words.title, .pages = words.pages});
      rows.push_back({.kind = RowKind::Note, .label = words.lead, .pages = words.pages});
    }
    AddStock(rows);
    AddCutter(rows);
    AddDepths(rows);
    AddEveryPage(rows);
    return rows;
  }();
  return kRows;
}

int FormPage() {
  switch (skimWizard.page) {
    case kSkimStock:
      return skimWizard.placing ? kSkimPlacingForm : kSkimStockForm;
    case kSkimCutter:
      return kSkimCutterForm;
    case kSkimDepths:
      return platform::SelectedRow(kIdSkimDepths) == 1 ? kSkimTotalForm : kSkimCountForm;
    default:
      return kSkimReviewForm;
  }
}

constexpr FormLook kLook = [] {
  FormLook look = kSheetLook;
  look.gap = 6;
  look.choiceLabels = true;
  return look;
}();

// The matrix stands in columns.
constexpr FormLook kPaneLook = [] {
  FormLook look = kSheetLook;
  look.listFont = platform::FontRole::Code;
  return look;
}();
constexpr FormRow kPaneRows[] = {
    {.kind = RowKind::Preview,
     .id = kIdSkimCode,
     .name = u"Code review",
     .help = u"The code that goes into the program, to be read through",
     .pages = PageBit(kSkimCodePane),
     .least = 1},
    {.kind = RowKind::Log,
     .id = kIdSkimMatrix,
     .name = u"Code matrix",
     .pages = PageBit(kSkimMatrixPane),
     .least = 1},
};

}  // namespace

const Sheet kSkimSheet{.frame = {kViewSkimForm, u"MorvaSkimForm", u"Pages of the skim"},
                       .paper = {kViewSkimPaper, u"MorvaSkimPaper", u"Fields of the skim"},
                       .bar = {kViewSkimBar, u"MorvaSkimBar", u"Scroll the fields of the skim"},
                       .parent = kViewSkim};

const Form kSkimForm{.look = &kLook,
                     .sheet = &kSkimSheet,
                     .rows = Rows(),
                     .page = FormPage,
                     .changed = SkimChanged,
                     // The last page has its keys close below its words, so that the code gets the
                     // height. So a press of NEXT too many does not meet INSERT either.
                     .steadyPages = kStockPages | kCutterPages | kDepthPages};

const Form kSkimPanes{.look = &kPaneLook, .parent = kViewSkim, .rows = kPaneRows};

int FirstOfSkimPage() {
  constexpr int kFirst[kSkimPages] = {kIdSkimTools, kIdSkimStrategies, kIdSkimDepths, kIdSkimCode};
  return kFirst[skimWizard.page];
}

int SkimPageOf(int field) {
  if (kFields[field].pages & kStockPages) return kSkimStock;
  return kFields[field].pages & kCutterPages ? kSkimCutter : kSkimDepths;
}

}  // namespace morva
