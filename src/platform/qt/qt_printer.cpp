// Printing by the toolkit: its dialog for a printer, a painter on each page.

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPrintDialog>
#include <QPrintEngine>
#include <QPrinter>
#include <QPrinterInfo>
#include <QStandardPaths>
#include <memory>

#include "platform/printer.h"
#include "platform/qt/qt_internal.h"

namespace platform {

namespace {

constexpr int kDialogWidth = 640;  // pixels; a usual name of a file is seen whole

struct Job {
  QPrinter printer{QPrinter::HighResolution};
  QPainter painter;
  Canvas canvas;
  bool failed = false;
  bool pageOpen = false;
  int pages = 0;
};
std::unique_ptr<Job> job;

// Where the system knows no printer the dialog has nothing but the file to offer.
QString FileFor(std::u16string_view name) {
  QString file = Text(name);
  for (QChar& c : file) {
    if (c == u'/' || c == u'\\' || c == u':' || !c.isPrint()) c = u'-';
  }
  QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  if (!QDir(folder).exists()) folder = QDir::homePath();
  return QDir(folder).filePath(file + QStringLiteral(".pdf"));
}

// A print server shrinks a page that it finds too large for the paper, and prints several on one
// sheet where it is set so. Nothing here is ever scaled: both are switched off. The key stands in
// no header of the toolkit; an engine that does not know it passes over it.
void ForbidScaling(QPrinter& printer) {
  if (printer.outputFormat() != QPrinter::NativeFormat) return;
  constexpr auto kServerOptions = static_cast<QPrintEngine::PrintEnginePropertyKey>(0xfe00);
  QStringList kept;  // names and values in turn
  const QStringList options = printer.printEngine()->property(kServerOptions).toStringList();
  for (qsizetype i = 0; i + 1 < options.size(); i += 2) {
    if (options[i] == QStringLiteral("number-up") || options[i] == QStringLiteral("print-scaling"))
      continue;
    kept << options[i] << options[i + 1];
  }
  kept << QStringLiteral("print-scaling") << QStringLiteral("none");
  printer.printEngine()->setProperty(kServerOptions, kept);
}

// Whether the file was written up to its last line. The toolkit says nothing of a full disk.
bool IsWholeFile(const QString& path) {
  constexpr qint64 kTail = 32;                 // bytes, with the end's mark among them
  if (!QFileInfo(path).isFile()) return true;  // a device keeps nothing that could be looked at
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return false;
  file.seek(std::max(qint64{0}, file.size() - kTail));
  return file.readAll().contains("%%EOF");
}

}  // namespace

PrinterChoice ChoosePrinter(std::u16string_view fileName) {
  if (job) return PrinterChoice::Cancelled;
  auto wanted = std::make_unique<Job>();
  QPrinter& printer = wanted->printer;
  if (!printer.isValid()) return PrinterChoice::Missing;
  printer.setDocName(Text(fileName));
  if (QPrinterInfo::availablePrinterNames().isEmpty()) printer.setOutputFileName(FileFor(fileName));
  QPrintDialog dialog(&printer, MainWidget());
  dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintShowPageSize);
  dialog.setFont(FontOf(FontRole::Body));
  dialog.setMinimumWidth(kDialogWidth);
  const Asking asking;
  if (dialog.exec() != QDialog::Accepted || job) return PrinterChoice::Cancelled;
  job = std::move(wanted);
  return PrinterChoice::Chosen;
}

PrinterFigures FiguresOfPrinter() {
  if (!job) return {};
  const QPrinter& printer = job->printer;
  const QSize page = printer.pageLayout().paintRectPixels(printer.resolution()).size();
  return {page.width(), page.height(), printer.logicalDpiX(), printer.logicalDpiY()};
}

bool StartDocument(std::u16string_view name) {
  if (!job || job->painter.isActive()) return false;
  ForbidScaling(job->printer);
  job->printer.setDocName(Text(name));
  job->failed = false;
  job->pages = 0;
  return job->painter.begin(&job->printer);
}

Canvas* StartPage() {
  if (!job || !job->painter.isActive() || job->failed || job->pageOpen) return nullptr;
  // The first page comes with the document.
  const bool started = job->pages == 0 || job->printer.newPage();
  if (!started || job->printer.printerState() == QPrinter::Error) {
    job->failed = true;
    return nullptr;
  }
  const PrinterFigures figures = FiguresOfPrinter();
  Canvas& canvas = job->canvas;
  canvas = Canvas();
  canvas.painter = &job->painter;
  canvas.area = {0, 0, figures.width, figures.height};
  canvas.width = figures.width;
  canvas.height = figures.height;
  canvas.textScale = static_cast<double>(figures.dpiY) / kTextDots;
  job->pageOpen = true;
  ++job->pages;
  return &canvas;
}

void EndPage() {
  if (job) job->pageOpen = false;
}

bool EndDocument() {
  if (!job || !job->painter.isActive()) return false;
  EndPage();
  const bool ended = job->painter.end() && job->printer.printerState() != QPrinter::Error;
  if (job->failed || !ended) return false;
  return job->printer.outputFormat() != QPrinter::PdfFormat ||
         IsWholeFile(job->printer.outputFileName());
}

void ReleasePrinter() {
  EndDocument();
  job.reset();
}

}  // namespace platform
