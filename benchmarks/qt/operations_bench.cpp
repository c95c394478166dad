// What the feature list does with a block of a program of 100,000 lines, and the import of such a
// program, each beside a bound of its own.
//
// Renaming, excluding and including replace a part of the text: the bound is a bare edit with the
// same text in which the same part is replaced by the same words, and painted. The import writes
// the blocks of a source behind each other: its bound is a loop that reads the same units and
// writes as many. Times are the processor's, up to the painted editor.
#include <QApplication>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "../cpu_time.h"
#include "../programs.h"
#include "../targets.h"
#include "app/app_state.h"
#include "app/command_ids.h"
#include "bench_window.h"
#include "codetools/import_text.h"
#include "documents/feature_blocks.h"
#include "documents/feature_operations.h"
#include "platform/editor.h"
#include "platform/listing.h"
#include "platform/qt/qt_testing.h"

namespace {

constexpr int kLines = 100000;
constexpr int kBlocks = 10;
constexpr int kRounds = 9;

std::u16string Blocks() {
  std::string text;
  for (int i = 1; i <= kBlocks; ++i) {
    const std::string number = std::to_string(i);
    text += "(MORVA TEXT " + number + ")\r\n(MORVA NAME User code)\r\n";
    text += programs::Lines(kLines / kBlocks);
    text += "(MORVA END " + number + ")\r\n";
  }
  return std::u16string(text.begin(), text.end());
}

QPlainTextEdit* Edit() {
  return static_cast<QPlainTextEdit*>(platform::WidgetOf(morva::kIdEditor));
}

void Paint(QPlainTextEdit* edit) {
  QCoreApplication::sendPostedEvents();
  edit->viewport()->repaint();
}

// A replacement of a part of a text.
struct Change {
  int from = 0;
  int removed = 0;
  QString put;
};

Change ChangeBetween(const QString& before, const QString& after) {
  Change change;
  const auto least = std::min(before.size(), after.size());
  qsizetype front = 0;
  while (front < least && before[front] == after[front]) ++front;
  qsizetype back = 0;
  while (back < least - front &&
         before[before.size() - 1 - back] == after[after.size() - 1 - back]) {
    ++back;
  }
  change.from = static_cast<int>(front);
  change.removed = static_cast<int>(before.size() - front - back);
  change.put = after.mid(front, after.size() - front - back);
  return change;
}

double ReplaceBare(const QString& before, const Change& change) {
  static QPlainTextEdit* const edit = new QPlainTextEdit;  // the application ends before statics do
  edit->setLineWrapMode(QPlainTextEdit::NoWrap);
  edit->setFont(Edit()->font());
  edit->resize(Edit()->size());
  edit->show();
  edit->setPlainText(before);
  QCoreApplication::processEvents();
  const double start = CpuMilliseconds();
  QTextCursor cursor(edit->document());
  cursor.setPosition(change.from);
  cursor.setPosition(change.from + change.removed, QTextCursor::KeepAnchor);
  cursor.insertText(change.put);
  edit->setTextCursor(cursor);
  Paint(edit);
  return CpuMilliseconds() - start;
}

void Measure(const char* subject, void (*act)()) {
  for (int round = 0; round < kRounds; ++round) {
    const QString before = Edit()->toPlainText();
    platform::SelectRow(morva::kIdFeatureList, kBlocks / 2);
    const double start = CpuMilliseconds();
    act();
    Paint(Edit());
    const double spent = CpuMilliseconds() - start;
    const QString after = Edit()->toPlainText();
    if (after == before) std::abort();
    const double bare = ReplaceBare(before, ChangeBetween(before, after));
    targets::Note({subject, "ms", 0, 0, 0, "replaced in a bare edit"}, spent, bare);
    std::printf("%s: %.2f ms, bare %.2f ms\n", subject, spent, bare);
    std::fflush(stdout);
    if (!platform::UndoEditor(morva::kIdEditor)) std::abort();
    morva::RefreshFeatureList();
  }
}

void Rename() {
  if (morva::RenameFeature(u"Finish of the pocket") != morva::RenameAnswer::Done) std::abort();
}

double CopyMilliseconds(const std::u16string& text, std::size_t units) {
  const double start = CpuMilliseconds();
  std::u16string copy;
  copy.reserve(units);
  for (const char16_t c : text) copy += c;
  if (copy.size() < units) copy.append(units - copy.size(), u' ');
  asm volatile("" : : "r"(copy.data()) : "memory");
  return CpuMilliseconds() - start;
}

std::int32_t NoStoredCode(void*, std::int32_t, const morva::FeatureRecord&, std::int32_t) {
  return 0;
}

void MeasureImport(const std::u16string& text) {
  const auto source = std::make_unique<morva::ImportSource>();
  bool chosen[morva::kMaxFeatures] = {};
  std::fill_n(chosen, kBlocks, true);
  for (int round = 0; round < kRounds; ++round) {
    const double start = CpuMilliseconds();
    morva::LoadImportSource(text, *source);
    const double loaded = CpuMilliseconds();
    std::u16string out;
    const auto built = morva::BuildImportText(*source, chosen, 100, NoStoredCode, nullptr, out);
    const double end = CpuMilliseconds();
    if (source->count != kBlocks || built != morva::ImportBuild::Done) std::abort();
    targets::Note({"Import of 100,000 lines, read", "ms", 0, 0, 0, "copied by a loop"},
                  loaded - start, CopyMilliseconds(text, source->text.size()));
    targets::Note({"Import of 100,000 lines, all chosen", "ms", 0, 0, 0, "copied by a loop"},
                  end - loaded, CopyMilliseconds(source->text, out.size()));
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (!bench::MakeHome()) return 1;
  platform::BeginProcess(argc, argv);
  bench::StartWorkbench();
  const std::u16string text = Blocks();
  MeasureImport(text);
  platform::SetEditorText(morva::kIdEditor, text);
  QCoreApplication::processEvents();
  morva::RefreshFeatureList();
  if (morva::features.count != kBlocks) std::abort();
  Measure("Block of 10,000 lines renamed", Rename);
  Measure("The same excluded", morva::ToggleInclude);
  platform::SelectRow(morva::kIdFeatureList, kBlocks / 2);
  morva::ToggleInclude();
  Measure("The same included again", morva::ToggleInclude);
  platform::EndProcess();
  bench::folder.reset();
  return 0;
}
