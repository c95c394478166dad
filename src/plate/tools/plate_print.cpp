#include "plate/tools/plate_print.h"

#include <string_view>

#include "app/outlets.h"
#include "plate/model/plate_names.h"
#include "plate/tools/plate_paper.h"
#include "platform/message.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr const char16_t* kTitle = u"Print Plate 1:1";
constexpr const char16_t* kBadPlate = u"Enter valid plate dimensions before printing.";
constexpr const char16_t* kNoPrinter = u"Windows printing components are unavailable.";
constexpr const char16_t* kBadPage =
    u"The selected printer did not report a usable printable area.";
constexpr const char16_t* kTooLargeTitle = u"Plate Does Not Fit at 1:1";
constexpr const char16_t* kTooLarge =
    u"This plate is larger than the selected printer's printable area at 1:1 scale. Choose larger "
    u"paper / a different orientation or print a smaller plate. MORVA will not shrink a scale "
    u"template.";
constexpr const char16_t* kDocument = u"MORVA Plate Template - 1 to 1 Scale";
constexpr const char16_t* kNotStarted = u"The print job could not be started.";
constexpr const char16_t* kNotEnded =
    u"The print job did not come to its end. Do not use a template that it left.";
constexpr const char16_t* kNoBar =
    u"No margin beside the plate has room for the check bar and the name. Measure the printed "
    u"plate itself.";
constexpr const char16_t* kCutOff =
    u"Features that reach beyond the printable area, and are cut off on the template: ";

// That the last one was printed is no longer said, as it would be read as the word on this one.
void Refuse(const char16_t* words, const char16_t* title = kTitle) {
  if (std::u16string_view(plate.status) == kPrinted) SayOnPlate(u"");
  platform::ShowBox(title, words, platform::BoxButtons::Ok, platform::BoxIcon::Warning);
}

// What the page shows is typed as numbers, and the plate has a size.
bool HasValidSize(const PlateNumbers& numbers) {
  for (int value = 0; value <= kPlatePatternDiameter; ++value) {
    if (!PlateTextReads(value)) return false;
  }
  return numbers.length > 0 && numbers.width > 0;
}

// Null where all went well, else the words of its failure. A document whose page failed is ended
// when the printer is let go.
const char16_t* PrintSheet(const PlateSheet& sheet, PaperNotes& notes) {
  platform::Canvas* const page =
      platform::StartDocument(kDocument) ? platform::StartPage() : nullptr;
  if (!page) return kNotStarted;
  notes = PaintSheet(*page, plate, sheet);
  platform::EndPage();
  return platform::EndDocument() ? nullptr : kNotEnded;
}

// The log is not seen beside the plate: the program's status line says it as well.
void Note(std::u16string_view words) {
  AppendOutput(words);
  ShowStatus(words);
}

void TellPrinted(const PaperNotes& notes) {
  SayOnPlate(kPrinted);
  if (!notes.barIsOn) Note(kNoBar);
  if (notes.cutOff > 0) Note(kCutOff + IntegerText(notes.cutOff) + u".");
}

// With a printer at hand; the box with a refusal comes when it has been let go.
void PrintOnChosen() {
  PlateSheet sheet;
  PaperNotes notes;
  const platform::PrinterFigures page = platform::FiguresOfPrinter();
  const bool usable = IsUsablePage(page);
  const bool fits = usable && LayOnPage(NumbersOf(plate), page, sheet);
  const char16_t* const failure = fits ? PrintSheet(sheet, notes) : nullptr;
  platform::ReleasePrinter();
  if (!usable) return Refuse(kBadPage);
  if (!fits) return Refuse(kTooLarge, kTooLargeTitle);
  if (failure) return Refuse(failure);
  TellPrinted(notes);
}

}  // namespace

void PrintPlate() {
  if (plate.unnamed) SayOnPlate(kStartNamedPlate);
  if (plate.unnamed || !HasValidSize(NumbersOf(plate))) return Refuse(kBadPlate);
  switch (platform::ChoosePrinter(plate.name)) {
    case platform::PrinterChoice::Chosen:
      return PrintOnChosen();
    case platform::PrinterChoice::Missing:
      return Refuse(kNoPrinter);
    case platform::PrinterChoice::Cancelled:
      break;
  }
}

}  // namespace morva
