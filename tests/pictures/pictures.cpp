// The pictures of the pages for users: the workbench at work in each of its rooms, 1200 by 800.
//
// Does with pointer and keys what the pages tell, on a real window, and ends with 1 and a word on
// what failed when a step does not come about. Needs a display with a window manager.

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <cstdio>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "builders/wizard/wizard_text.h"
#include "cad/geometry/canvas_view.h"
#include "cad/model/sketch.h"
#include "desk/control_desk.h"
#include "desk/desk.h"
#include "dnc/setup_panel.h"
#include "library/macros.h"
#include "library/tools.h"
#include "pictures/small_picture.h"
#include "plate/model/plate.h"
#include "platform/listing.h"
#include "platform/thread.h"
#include "platform/window.h"
#include "shell/modes.h"
#include "simulator/motion_path.h"
#include "simulator/shown_path.h"
#include "skim/model/wizard_state.h"

namespace {

using namespace morva;

constexpr QSize kSize(1200, 800);
constexpr int kCalm = 1200;  // ms, longer than the pause before an autosave
constexpr int kLook = 150;   // ms from look to look

QString folder;   // of the pictures
QString home;     // of the programs that are tried
QString samples;  // copied from here

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "No pictures: %s\n", what);
  desk::Picture(folder + QStringLiteral("/stopped-here.png"));
  platform::EndWorkers();
  std::_Exit(1);
}

void Wait(const std::function<bool()>& state, const char* what, int milliseconds = 20000) {
  if (!desk::Until(state, milliseconds)) Fail(what);
}

QImage Look() {
  const QWidget* window = desk::WidgetOf(platform::kMainWindow);
  const QRect place(window->mapToGlobal(QPoint(0, 0)), window->size());
  return window->screen()
      ->grabWindow(0, place.x(), place.y(), place.width(), place.height())
      .toImage();
}

// A dialog that closes may leave no window active; a user would click on the title.
void Activate() {
  QWidget* window = desk::WidgetOf(platform::kMainWindow);
  if (window->isActiveWindow()) return;
  window->activateWindow();
  window->raise();
  Wait([window]() { return window->isActiveWindow(); }, "the window does not become active");
}

// Once nothing moves any more: the autosave is done, and two looks see the same.
void Shoot(const char* name) {
  Activate();
  QCursor::setPos(QPoint(0, 0));
  desk::Run(kCalm);
  QImage picture = Look();
  Wait(
      [&picture]() {
        desk::Run(kLook);
        const QImage before = std::exchange(picture, Look());
        return picture == before;
      },
      "the window does not come to rest");
  if (picture.size() != kSize) Fail("the window has another size");
  if (!pictures::Save(picture, folder + QLatin1Char('/') + QLatin1String(name))) {
    Fail("a picture cannot be written");
  }
  std::printf("%s\n", name);
  std::fflush(stdout);
}

QPlainTextEdit* Editor() { return qobject_cast<QPlainTextEdit*>(desk::WidgetOf(kIdEditor)); }

bool EditorHolds(const char* words) {
  return desk::TextOf(kIdEditor).contains(QLatin1String(words));
}

// A program of the home folder, in a tab of its own, with its markers.
void Open(const QString& file) {
  const int before = app.tabCount;
  desk::AnswerFile(file);
  desk::Click(kIdOpen);
  Wait([before]() { return app.tabCount == before + 1 && EditorHolds("(MORVA TEXT "); },
       "a program was not opened");
}

QString CopyOfSample(const char* name) {
  const QString from = samples + QLatin1Char('/') + QLatin1String(name);
  const QString to = home + QLatin1Char('/') + QLatin1String(name);
  if (!QFile::copy(from, to)) Fail("a sample is missing");
  QFile::setPermissions(to, QFile::ReadOwner | QFile::WriteOwner);
  return to;
}

QString Write(const char* name, const QByteArray& bytes) {
  QFile file(home + QLatin1Char('/') + QLatin1String(name));
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
    Fail("the home folder cannot be written");
  }
  return file.fileName();
}

void Type(int id, const char* text) {
  desk::Key(id, Qt::Key_A, Qt::ControlModifier);
  desk::TypeInto(id, QString::fromLatin1(text));
}

void GoTo(int mode) {
  SetMode(mode);
  Wait([mode]() { return app.surface == kSurfaceCode && app.mode == mode; },
       "a workspace did not come up");
}

// One program from its opening to its play.

void CheckAndSee() {
  Open(CopyOfSample("bearing_flange.NC"));
  Shoot("open.png");
  desk::Key(kIdEditor, Qt::Key_F5);
  Wait([]() { return desk::TextOf(kIdOutputLog).contains(QStringLiteral("Validation complete")); },
       "the preflight did not report");
  Shoot("preflight.png");
  desk::Click(kIdPath);
  Wait([]() { return path.count > 100; }, "no path was drawn");
  Shoot("path.png");
  // Held, and stepped to a place of the path, so that the picture is the same each time.
  desk::Click(kIdPlayToggle);
  Wait([]() { return playback.playHead > 0; }, "playback does not move");
  desk::Click(kIdPlayToggle);
  desk::Click(kIdPlayStart);
  for (int i = 0; i < 2; ++i) desk::Click(kIdPlayNext);
  Shoot("play.png");
  GoTo(kModeSimulator);
  desk::Click(kIdViewExtents);
  Shoot("simulator.png");
  desk::Click(kIdViewExtents);
  GoTo(kModeHome);
}

void ReadInWords() {
  desk::Click(kIdCommandWords);
  Wait([]() { return desk::WidgetOf(kIdWordsEditor)->isVisible(); }, "no words came up");
  Shoot("words.png");
  desk::Click(kIdCommandWords);
  Wait([]() { return desk::WidgetOf(kIdEditor)->isVisible(); }, "the code did not come back");
  GoTo(kModeCodeIndex);
  Type(kIdIndexSearch, "drill");
  Shoot("code_index.png");
  desk::Click(kIdShowFeatures);
  GoTo(kModeHome);
  desk::Click(kIdFind);
  Type(kIdFindText, "F900.");
  Shoot("find.png");
  GoTo(kModeHome);
}

void Compare() {
  QFile file(home + QStringLiteral("/bearing_flange.NC"));
  if (!file.open(QIODevice::ReadOnly)) Fail("the sample is gone");
  QByteArray other = file.readAll();
  other.replace("S3500 M03", "S3200 M03");
  other.replace("Z-2.5 I-20. J0.\r\n", "").replace("Z-2.5 I-20. J0.\n", "");
  const int first = app.activeTab;
  Open(Write("bearing_flange_b.NC", other));
  const auto mark = [first, second = int{app.activeTab}]() {
    for (const int tab : {first, second}) {
      QTest::mouseClick(desk::WidgetOf(kIdTabFirst + tab), Qt::LeftButton, Qt::ControlModifier);
    }
  };
  mark();
  desk::Click(kIdCompareSecond);
  Wait([]() { return desk::WidgetOf(kIdReviewLeftPane)->isVisible(); }, "no review came up");
  desk::Click(kIdReviewNext);
  Shoot("compare.png");
  desk::Click(kIdCompareSecond);
  Wait([]() { return desk::WidgetOf(kIdEditor)->isVisible(); }, "the review did not end");
  mark();
}

// What writes code from fields.

void DescribeATool() {
  GoTo(kModeTools);
  desk::Click(kIdToolAdd);
  // Number, name, then behind the type, which is an end mill's: diameter, flutes and lengths.
  Type(kIdToolField, "1");
  Type(kIdToolField + 1, "END MILL 0.5");
  const char* const sizes[] = {"0.5", "4", "4", "1.5"};
  for (int i = 0; i < static_cast<int>(std::size(sizes)); ++i) {
    Type(kIdToolField + 3 + i, sizes[i]);
  }
  desk::Click(kIdToolSave);
  Wait([]() { return toolLibrary.count == 1; }, "the tool was not saved");
  Shoot("tools.png");
  desk::Click(kIdToolClose);
}

void Build() {
  DescribeATool();
  GoTo(kModeWizard);
  desk::Click(kIdWizardKindFirst + kWizardDrill);
  // The example beside the form plays on and on; it is held where its path is whole.
  desk::Click(kIdPlayToggle);
  desk::Click(kIdPlayEnd);
  Shoot("wizard.png");
  desk::Click(kIdWizardKindFirst);
  desk::Click(kIdWizardInsert);
  Wait([]() { return SkimIsUp(); }, "no skim came up");
  desk::Click(kIdSkimNext);
  desk::Click(kIdSkimCoverage);
  Shoot("skim.png");
  desk::Click(kIdSkimCoverage);
  desk::Click(kIdBack);
  GoTo(kModeShapes);
  Shoot("shapes.png");
  GoTo(kModeMacros);
  Shoot("macros.png");
  GoTo(kModeHome);
}

// The drawing workspace.

QWidget* Canvas() { return desk::WidgetOf(kViewCadCanvas); }

QPoint At(double x, double y) {
  const platform::Point place = ToCanvas(x, y);
  return {place.x, place.y};
}

void PointAt(double x, double y) { desk::MovePointer(Canvas(), At(x, y)); }

void ClickAt(double x, double y) {
  PointAt(x, y);
  QTest::mouseClick(Canvas(), Qt::LeftButton, Qt::NoModifier, At(x, y));
}

void GoToDrawing() {
  Activate();
  desk::Click(kIdSurfaceCad);
  Wait([]() { return app.surface == kSurfaceCad && Canvas()->hasFocus(); },
       "the drawing workspace did not come up");
}

// With the sizes typed beside the cursor, and its place in the fields at the right.
void DrawTyped(int key, std::initializer_list<const char*> sizes, const char* x, const char* y) {
  const int before = sketch.objectCount;
  desk::Click(key);
  ClickAt(0.6, 0.3);
  PointAt(1.5, 1.0);
  for (const char* size : sizes) {
    desk::KeyHere(Qt::Key_Tab);
    desk::Run(50);
    desk::TypeHere(QString::fromLatin1(size));
  }
  desk::KeyHere(Qt::Key_Return);
  Wait([before]() { return sketch.objectCount == before + 1; }, "nothing was drawn");
  Type(kIdCadX, x);
  Type(kIdCadY, y);
  desk::Key(kIdCadY, Qt::Key_Return);
  desk::Click(kIdCadSelect);
}

void DrawAFlange() {
  GoToDrawing();
  DrawTyped(kIdCadRectangle, {"6", "4"}, "0", "0");
  DrawTyped(kIdCadCircle, {"0.25"}, "1.75", "0");
  desk::Click(kIdCadCircularPanel);
  Type(kIdCadQuantity, "6");
  Type(kIdCadCircularX, "1");
  Type(kIdCadCircularDiameter, "1.5");
  Shoot("pattern.png");
  desk::Key(kIdCadCircularDiameter, Qt::Key_Return);
  Wait([]() { return sketch.objectCount == 7; }, "no pattern was drawn");
  desk::Click(kIdCadDimension);
  Shoot("draw.png");
  desk::Click(kIdSurfaceCode);
}

void InsertThroughThePicker() {
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&watch]() {
    const QWidget* insert = desk::WidgetOf(kIdDestinationInsert);
    if (!insert || !insert->isVisible()) return;
    watch.stop();
    desk::Click(kIdDestinationInsert);
  });
  watch.start(10);
  desk::Click(kIdCadGenerate);
  Wait([]() { return EditorHolds("(CUSTOM SHAPE EDITOR)"); }, "no code was made");
}

// The part of the page that follows one from drawing to chips.
void FromDrawingToChips() {
  Open(Write("step_block.NC",
             "%\r\nO1000 (STEP BLOCK)\r\n(STOCK 4 X 3 IN THE VISE, X0 Y0 CENTER, Z0 TOP)\r\n"
             "G20\r\nG00 G17 G40 G49 G80 G90 G94\r\nT1 M06 (END MILL 0.5)\r\nG54\r\nS3000 M03\r\n"
             "G43 H01 Z1.\r\nM08\r\nM09\r\nM05\r\nG28 G91 Z0.\r\nG90\r\nM30\r\n%\r\n"));
  Editor()->moveCursor(QTextCursor::Start);
  if (!Editor()->find(QStringLiteral("M08"))) Fail("the head is not there");
  Editor()->moveCursor(QTextCursor::EndOfLine);
  GoToDrawing();
  DrawTyped(kIdCadRectangle, {"4", "3"}, "0", "0");
  DrawTyped(kIdCadCircle, {"0.5"}, "0", "0");
  desk::Click(kIdCadCutData);
  Type(kIdCadDepth, "-0.1");
  Type(kIdCadFeed, "12");
  Type(kIdCadSafeZ, "0.5");
  Shoot("chips_drawing.png");
  InsertThroughThePicker();
  Activate();
  desk::Click(kIdSurfaceCode);
  desk::Key(kIdEditor, Qt::Key_F5);
  desk::Click(kIdPath);
  Wait([]() { return path.count > 20; }, "the part has no path");
  desk::Click(kIdViewExtents);
  Shoot("chips_path.png");
  desk::Click(kIdViewExtents);
}

void DescribeAPlate() {
  Activate();
  desk::Click(kIdSurfacePlate);
  Wait([]() { return desk::WidgetOf(kIdPlateName)->hasFocus(); }, "no plate came up");
  desk::TypeHere(QStringLiteral("Fixture"));
  desk::KeyHere(Qt::Key_Return);
  Wait([]() { return !plate.unnamed; }, "the plate has no name");
  Shoot("plate.png");
  desk::Click(kIdSurfaceCode);
}

// The line to the machine.

void Connect() {
  desk::ControlAtTheFarEnd control;
  if (!control.StartListed()) Fail("the simulated control did not start");
  desk::Click(kIdSetup);
  Wait([]() { return IsSetupPanelOpen(); }, "no setup panel came up");
  int row = 0;
  while (row < platform::RowCount(kIdDncPorts) &&
         platform::RowText(kIdDncPorts, row).find(u"Simulated") == std::u16string::npos) {
    ++row;
  }
  if (row == platform::RowCount(kIdDncPorts)) Fail("the simulated control is not listed");
  platform::SelectRow(kIdDncPorts, row);
  desk::Click(kIdDncCheck);
  desk::Click(kIdDncSave);
  Shoot("setup.png");
  desk::Click(kIdDncClose);
  GoTo(kModeHome);
  desk::AnswerBox(QStringLiteral("Yes"));
  desk::Click(kIdSend);
  Wait([]() { return desk::TextOf(kIdOutputLog).contains(QStringLiteral("Send complete.")); },
       "the program was not sent", 60000);
  Shoot("send.png");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fprintf(stderr, "pictures SAMPLES HOME PICTURES\n");
    return 2;
  }
  samples = QString::fromLocal8Bit(argv[1]);
  home = QString::fromLocal8Bit(argv[2]);
  folder = QString::fromLocal8Bit(argv[3]);
  if (!QDir().mkpath(home) || !QDir().mkpath(folder)) Fail("a folder cannot be made");
  desk::Start(home);
  QApplication::setCursorFlashTime(0);
  desk::WidgetOf(platform::kMainWindow)->resize(kSize);
  Wait([]() { return desk::WidgetOf(platform::kMainWindow)->size() == kSize; },
       "the window does not take its size");
  CheckAndSee();
  ReadInWords();
  Build();
  Compare();
  DrawAFlange();
  FromDrawingToChips();
  DescribeAPlate();
  Connect();
  platform::EndWorkers();
  std::fflush(stdout);
  std::_Exit(0);  // the programs that were tried need no answers about their changes
}
