// A printer that records what is drawn on its pages. The user's choice comes from a queue.

#include "platform/printer.h"

#include <deque>
#include <iterator>
#include <utility>

#include "platform/headless/headless_internal.h"

namespace headless {
namespace {

struct Choice {
  platform::PrinterChoice made = platform::PrinterChoice::Cancelled;
  platform::PrinterFigures figures;
};

struct Job {
  bool held = false;
  bool open = false;
  bool failed = false;
  bool pageOpen = false;
  platform::PrinterFigures figures;
  platform::Canvas canvas;
};

std::deque<Choice> choices;
std::vector<PrintRecord> records;
Job job;

void ResetPrinter() {
  choices.clear();
  records.clear();
  job = Job();
}
ResetHook hook(1, ResetPrinter);

}  // namespace

void QueuePrinter(const platform::PrinterFigures& figures) {
  choices.push_back({platform::PrinterChoice::Chosen, figures});
}
void QueuePrinterCancel() { choices.push_back({}); }
void QueueNoPrinter() { choices.push_back({platform::PrinterChoice::Missing, {}}); }
void ClearPrinters() { choices.clear(); }
std::vector<PrintRecord> TakePrinted() { return std::exchange(records, {}); }
bool HoldsPrinter() { return job.held; }

}  // namespace headless

namespace platform {

using headless::job;

PrinterChoice ChoosePrinter(std::u16string_view) {
  if (job.held) return PrinterChoice::Cancelled;
  headless::Choice choice;
  if (!headless::choices.empty()) {
    choice = headless::choices.front();
    headless::choices.pop_front();
  }
  if (choice.made == PrinterChoice::Missing) return choice.made;
  const headless::Asking asking;
  headless::HappenWithoutKeyboard();
  if (choice.made != PrinterChoice::Chosen) return choice.made;
  job = headless::Job();
  job.held = true;
  job.figures = choice.figures;
  return choice.made;
}

PrinterFigures FiguresOfPrinter() { return job.held ? job.figures : PrinterFigures(); }

bool StartDocument(std::u16string_view name) {
  if (!job.held || job.open || headless::FaultFor("document")) return false;
  job.open = true;
  job.failed = false;
  headless::PrintRecord record;
  record.document = name;
  headless::records.push_back(std::move(record));
  return true;
}

Canvas* StartPage() {
  if (!job.open || job.failed || job.pageOpen) return nullptr;
  if (headless::FaultFor("page")) {
    job.failed = true;
    return nullptr;
  }
  job.pageOpen = true;
  job.canvas.area = {0, 0, job.figures.width, job.figures.height};
  job.canvas.calls.clear();
  return &job.canvas;
}

void EndPage() {
  if (!job.pageOpen) return;
  job.pageOpen = false;
  if (headless::records.empty()) return;  // taken while the page was open
  headless::PrintRecord& record = headless::records.back();
  ++record.pages;
  record.paint.insert(record.paint.end(), std::make_move_iterator(job.canvas.calls.begin()),
                      std::make_move_iterator(job.canvas.calls.end()));
}

bool EndDocument() {
  if (!job.open) return false;
  EndPage();
  job.open = false;
  if (!job.failed && !headless::records.empty()) headless::records.back().ended = true;
  return !job.failed;
}

void ReleasePrinter() {
  if (!job.held) return;
  EndDocument();
  job = headless::Job();
}

}  // namespace platform
