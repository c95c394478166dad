// The paper template by the toolkit's own printer into a PDF file: sizes and places are measured in
// the file's drawing operators, against lengths that are written down here in inches.

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QApplication>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <csignal>
#include <optional>

#include "plate/model/plate.h"
#include "plate/tools/plate_print.h"
#include "platform/printer.h"
#include "widgets/pdf_page.h"
#include "widgets/stand.h"

namespace {

using namespace morva;

constexpr double kPointsPerInch = 72;
constexpr double kMm = 25.4;

struct Paper {
  int dots = 300;
  QPageSize::PageSizeId size = QPageSize::A4;
  QPageLayout::Orientation way = QPageLayout::Portrait;
};

struct Place {
  double x = 0;
  double y = 0;
};

// Half of the outline's bounds, and their middle; points.
struct Bounds {
  double left = 1e9, right = -1e9, bottom = 1e9, top = -1e9;
  double Width() const { return right - left; }
  double Height() const { return top - bottom; }
  Place Middle() const { return {(left + right) / 2, (bottom + top) / 2}; }
};

Bounds BoundsOf(const pdf::Path& path) {
  Bounds b;
  for (const pdf::Point& p : path.points) {
    b.left = std::min(b.left, p.x);
    b.right = std::max(b.right, p.x);
    b.bottom = std::min(b.bottom, p.y);
    b.top = std::max(b.top, p.y);
  }
  return b;
}

bool IsLine(const pdf::Path& path) { return path.points.size() == 2; }

// The bounds of the largest path that is more than a line.
Bounds Outline(const pdf::Page& page) {
  Bounds largest{0, 0, 0, 0};
  for (const pdf::Path& path : page.strokes) {
    const Bounds bounds = BoundsOf(path);
    if (!IsLine(path) && bounds.Width() > largest.Width()) largest = bounds;
  }
  return largest;
}

// Middles of crosses of this length, from the outline's middle; inches.
std::vector<Place> Crosses(const pdf::Page& page, double inches, double pixel) {
  std::vector<Place> found;
  const Place middle = Outline(page).Middle();
  for (std::size_t i = 0; i + 1 < page.strokes.size(); ++i) {
    if (!IsLine(page.strokes[i]) || !IsLine(page.strokes[i + 1])) continue;
    const Bounds flat = BoundsOf(page.strokes[i]);
    const Bounds upright = BoundsOf(page.strokes[i + 1]);
    const double length = inches * kPointsPerInch;
    if (std::fabs(flat.Width() - length) > pixel || flat.Height() > pixel / 100) continue;
    if (std::fabs(upright.Height() - length) > pixel || upright.Width() > pixel / 100) continue;
    found.push_back({(flat.Middle().x - middle.x) / kPointsPerInch,
                     (flat.Middle().y - middle.y) / kPointsPerInch});
  }
  return found;
}

class PlatePaper : public testing::Test {
 protected:
  void SetUp() override {
    stand::Open();
    ASSERT_TRUE(folder_.isValid());
    ResetPlate();
  }
  void TearDown() override { ResetPlate(); }

  QString File() const { return folder_.filePath(QStringLiteral("plate.pdf")); }

  // Numbers in inches, typed in the unit.
  static void Make(bool metric, double length, double width, double radius) {
    StartPlate(metric);
    SetPlateName(u"Fixture plate");
    const double unit = metric ? kMm : 1;
    SetPlateNumber(kPlateLength, length * unit, 6);
    SetPlateNumber(kPlateWidth, width * unit, 6);
    SetPlateNumber(kPlateEdgeRadius, radius * unit, 6);
    SetPlateNumber(kPlateSize, 0.25 * unit, 6);
    SetPlateNumber(kPlateEdgeX, 0.513 * unit, 6);
    SetPlateNumber(kPlateEdgeY, 0.487 * unit, 6);
  }

  // Takes the printer of the next dialog as wanted, and closes a box that comes behind it.
  void Answer(const Paper& paper, const QString& file) {
    auto* timer = new QTimer(this->timers_);
    QObject::connect(timer, &QTimer::timeout, timer, [this, timer, paper, file] {
      QWidget* modal = QApplication::activeModalWidget();
      if (auto* dialog = qobject_cast<QPrintDialog*>(modal)) {
        EXPECT_FALSE(dialog->testOption(QAbstractPrintDialog::PrintPageRange));
        QPrinter& printer = *dialog->printer();
        printer.setOutputFileName(file);
        printer.setResolution(paper.dots);
        printer.setPageSize(QPageSize(paper.size));
        printer.setPageOrientation(paper.way);
        dialog->done(QDialog::Accepted);
      } else if (auto* box = qobject_cast<QMessageBox*>(modal)) {
        words_ = box->text();
        box->accept();
        timer->stop();
      }
    });
    timer->start(1);
  }
  void Print(const Paper& paper, const QString& file) {
    QObject timers;
    timers_ = &timers;
    words_.clear();
    Answer(paper, file);
    PrintPlate();
    EXPECT_EQ(platform::FiguresOfPrinter().width, 0) << "the printer is still held";
  }
  pdf::Page Printed(const Paper& paper) {
    pdf::Page page;
    QFile::remove(File());
    Print(paper, File());
    EXPECT_EQ(words_, QString());
    EXPECT_TRUE(pdf::ReadFirstPage(File(), page));
    EXPECT_EQ(pdf::PageCount(File()), 1);
    return page;
  }

  QTemporaryDir folder_;
  QObject* timers_ = nullptr;
  QString words_;  // of the last box
};

const std::vector<Paper>& Papers() {
  static const std::vector<Paper> papers = [] {
    std::vector<Paper> all;
    for (const int dots : {300, 600}) {
      for (const auto size : {QPageSize::A4, QPageSize::Letter}) {
        for (const auto way : {QPageLayout::Portrait, QPageLayout::Landscape}) {
          all.push_back({dots, size, way});
        }
      }
    }
    return all;
  }();
  return papers;
}

std::string Told(const Paper& paper, bool metric) {
  return std::to_string(paper.dots) + (paper.size == QPageSize::A4 ? " A4" : " Letter") +
         (paper.way == QPageLayout::Portrait ? " portrait" : " landscape") +
         (metric ? " mm" : " inch");
}

TEST_F(PlatePaper, HasEveryCentreWithinAPixelOfThePlateOnAnyPaper) {
  for (const Paper& paper : Papers()) {
    for (const bool metric : {false, true}) {
      SCOPED_TRACE(Told(paper, metric));
      const double pixel = kPointsPerInch / paper.dots;
      Make(metric, 6.7, 5.3, 0.25);
      PlateFeature moved;
      moved.placed = true;
      moved.x = 1.2345;
      moved.y = -0.9876;
      PutFeature(2, moved);
      SetFeatureFlag(3, FeatureFlag::Hidden, true);
      const pdf::Page page = Printed(paper);
      const Bounds outline = Outline(page);
      EXPECT_NEAR(outline.Width(), 6.7 * kPointsPerInch, pixel);
      EXPECT_NEAR(outline.Height(), 5.3 * kPointsPerInch, pixel);
      const bool across = page.width > page.height;
      EXPECT_EQ(across, paper.way == QPageLayout::Landscape);
      EXPECT_NEAR(outline.Middle().x, page.width / 2, 1);  // a point, as the page is rounded to
      EXPECT_NEAR(outline.Middle().y, page.height / 2, 1);
      const std::vector<Place> crosses = Crosses(page, 0.08, pixel);
      const Place wanted[] = {
          {-(3.35 - 0.513), -(2.65 - 0.487)}, {3.35 - 0.513, -(2.65 - 0.487)}, {1.2345, -0.9876}};
      ASSERT_EQ(crosses.size(), 3u);
      for (std::size_t i = 0; i < crosses.size(); ++i) {
        EXPECT_NEAR(crosses[i].x * paper.dots, wanted[i].x * paper.dots, 1) << i;
        EXPECT_NEAR(crosses[i].y * paper.dots, wanted[i].y * paper.dots, 1) << i;
      }
    }
  }
}

TEST_F(PlatePaper, HasHolesOfTheirDiameterAboutTheirCrosses) {
  for (const Paper& paper : Papers()) {
    SCOPED_TRACE(Told(paper, true));
    const double pixel = kPointsPerInch / paper.dots;
    Make(true, 6, 4, 0);
    const pdf::Page page = Printed(paper);
    const Place middle = Outline(page).Middle();
    int holes = 0;
    for (const pdf::Path& path : page.strokes) {
      if (!path.curved) continue;
      ++holes;
      const Bounds bounds = BoundsOf(path);
      EXPECT_NEAR(bounds.Width(), 0.25 * kPointsPerInch, pixel);
      EXPECT_NEAR(bounds.Height(), 0.25 * kPointsPerInch, pixel);
      EXPECT_NEAR(std::fabs(bounds.Middle().x - middle.x), (3 - 0.513) * kPointsPerInch, pixel);
      EXPECT_NEAR(std::fabs(bounds.Middle().y - middle.y), (2 - 0.487) * kPointsPerInch, pixel);
    }
    EXPECT_EQ(holes, 4);
  }
}

TEST_F(PlatePaper, HasOutlinesOfTheirSizeInEveryShape) {
  for (const Paper& paper : Papers()) {
    for (const PlateShape shape : {PlateShape::Round, PlateShape::Obround, PlateShape::Custom}) {
      SCOPED_TRACE(Told(paper, false) + " shape " + std::to_string(static_cast<int>(shape)));
      const double pixel = kPointsPerInch / paper.dots;
      Make(false, 6.123, 4.321, 0);
      SavedShape outline;
      outline.count = 1;
      outline.objects[0] = {1, 0, 7, 8, 2, 1, 0};  // a rectangle of 2 by 1
      TakePlateOutline(outline, -1);
      SetPlateShape(shape);
      const Bounds bounds = Outline(Printed(paper));
      const double height = shape == PlateShape::Round ? 6.123 : 4.321;
      EXPECT_NEAR(bounds.Width(), 6.123 * kPointsPerInch, pixel);
      EXPECT_NEAR(bounds.Height(), height * kPointsPerInch, pixel);
    }
  }
}

TEST_F(PlatePaper, HasTheCheckBarWithWordsAndTheRightPen) {
  for (const Paper& paper : Papers()) {
    SCOPED_TRACE(Told(paper, false));
    Make(false, 6, 4, 0);
    const pdf::Page page = Printed(paper);
    int bars = 0;
    for (const pdf::Path& path : page.strokes) {
      const Bounds bounds = BoundsOf(path);
      const double length = std::max(bounds.Width(), bounds.Height());
      bars += IsLine(path) && std::fabs(length - 100 / kMm * kPointsPerInch) < 0.01 ? 1 : 0;
      EXPECT_NEAR(path.pen, 2 * kPointsPerInch / paper.dots, 1e-6);
    }
    EXPECT_EQ(bars, 1);
    EXPECT_GT(page.texts, 0);
  }
}

// As large as what the printer prints on, which the page tells in whole pixels; then one more.
TEST_F(PlatePaper, IsRefusedOnePixelBeyondThePrintableArea) {
  for (const Paper& paper : Papers()) {
    SCOPED_TRACE(Told(paper, false));
    QPrinter same(QPrinter::HighResolution);
    same.setOutputFileName(File());
    same.setResolution(paper.dots);
    same.setPageSize(QPageSize(paper.size));
    same.setPageOrientation(paper.way);
    const double width = same.pageLayout().paintRectPixels(paper.dots).width();
    const double height = same.pageLayout().paintRectPixels(paper.dots).height();
    Make(false, width / paper.dots, height / paper.dots, 0);
    const double pixel = kPointsPerInch / paper.dots;
    const Bounds bounds = Outline(Printed(paper));
    EXPECT_NEAR(bounds.Width(), width * pixel, pixel / 10);
    EXPECT_NEAR(bounds.Height(), height * pixel, pixel / 10);
    QFile::remove(File());
    Make(false, (width + 1) / paper.dots, height / paper.dots, 0);
    Print(paper, File());
    EXPECT_TRUE(words_.contains(QStringLiteral("will not shrink a scale template")));
    EXPECT_FALSE(QFile::exists(File()));
  }
}

TEST_F(PlatePaper, SaysThatAFileCannotBeWritten) {
  Make(false, 6, 4, 0);
  Print(Paper(), folder_.filePath(QStringLiteral("nowhere/plate.pdf")));
  EXPECT_EQ(words_, QStringLiteral("The print job could not be started."));
  Printed(Paper());
}

// The system takes no more than some bytes of a file, as a disk that is full.
struct SmallFiles {
  rlimit before = {};
  SmallFiles() {
    std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &before);
    rlimit small = before;
    small.rlim_cur = 1000;
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~SmallFiles() {
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, SIG_DFL);
  }
};

TEST_F(PlatePaper, SaysThatAFileWasNotWrittenToItsEnd) {
  Make(false, 6, 4, 0);
  {
    const SmallFiles full;
    Print(Paper(), File());
  }
  EXPECT_EQ(words_, QStringLiteral("The print job did not come to its end. Do not use a template "
                                   "that it left."));
  EXPECT_TRUE(std::u16string_view(plate.status).empty());
  Printed(Paper());
}

}  // namespace
