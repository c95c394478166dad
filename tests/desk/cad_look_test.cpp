// The look of the drawing workspace in a small window and in a wide one: no word is cut, nothing
// lies over another, what floats stays on the canvas.

#include <QAbstractButton>
#include <QApplication>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <cstdint>
#include <string>
#include <vector>

#include "app/router.h"
#include "cad/model/cad_form.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "cad/tools/dimension_paint.h"
#include "desk/cad_desk.h"
#include "platform/canvas.h"

namespace {

using morva::sketch;
using morva::SketchObject;

constexpr int kLastId = 4000;  // no control of the main window has a greater one

struct Panel {
  int key;
  const char* name;
};
constexpr Panel kPanels[] = {
    {morva::kIdCadScale, "scale"},
    {morva::kIdCadRevolve, "revolve"},
    {morva::kIdCadPolygon, "polygon"},
    {morva::kIdCadDimension, "dimension"},
    {morva::kIdCadCircularPanel, "circular"},
    {morva::kIdCadGridPanel, "grid"},
    {morva::kIdCadCutData, "cut_data"},
    {morva::kIdCadThickness, "model"},
};

class CadLook : public CadDesk {
 protected:
  static void Put(const std::vector<SketchObject>& objects) {
    sketch.objectCount = 0;
    for (const SketchObject& object : objects) morva::AppendSketchObject(object);
    sketch.selected = -1;
    morva::RefreshSketchPanels();
  }
  static void PutEveryType() {
    Put({{morva::kTypeLine, 0, -3, 1.5, 2, 0, 20},
         {morva::kTypeRectangle, 0, -2, -1, 2, 1, 0},
         {morva::kTypeCircle, 0, 2, 1, 1, 0, 0},
         {morva::kTypeSlot, 0, 2, -1, 1.5, 0.5, 30},
         {morva::kTypeWorkPoint, 0, 0.6, 0.6, 0, 0, 0},
         {morva::kTypeWorkAxis, 0, 0, -1.5, 2, 0, 90}});
  }
  template <class Look>
  static void AtBothSizes(const Look& look) {
    for (const QSize size : {QSize(1200, 800), QSize(1560, 940)}) {
      SCOPED_TRACE(testing::Message() << size.width() << " by " << size.height());
      Resize(size.width(), size.height());
      look();
    }
  }
  static void ShowAs(const char* what, const std::string& which) {
    Show((std::string("look_") + what + "_" + which + ".png").c_str());
  }

  // Whether a label's words have room, in one line or broken into several.
  static bool Fits(const QLabel& label) {
    const QRect room(0, 0, label.width(), 1000);
    const QRect words = label.fontMetrics().boundingRect(room, Qt::TextWordWrap, label.text());
    return words.width() <= label.width() && words.height() <= label.height();
  }
  static void ExpectWordsFit() {
    for (int id = 1; id < kLastId; ++id) {
      QWidget* widget = desk::WidgetOf(id);
      if (!widget || !widget->isVisible()) continue;
      if (const auto* label = qobject_cast<QLabel*>(widget)) {
        EXPECT_TRUE(Fits(*label)) << id << " " << label->text().toStdString();
      } else if (const auto* line = qobject_cast<QLineEdit*>(widget)) {
        const int words = line->fontMetrics().horizontalAdvance(line->text());
        EXPECT_LE(words + 4, line->width()) << id << " " << line->text().toStdString();
      } else if (const auto* key = qobject_cast<QAbstractButton*>(widget)) {
        if (id >= morva::kIdDrawingFirst && id <= morva::kIdDrawingLast) continue;
        if (id < 1000) continue;  // of the shell, which checks its own
        const int words =
            platform::TextWidth(platform::FontRole::Small, key->text().toStdU16String());
        EXPECT_LE(words + 4, key->width()) << id << " " << key->text().toStdString();
      }
    }
  }
  static void ExpectNothingOverAnother() {
    std::vector<int> seen;
    for (int id = 1; id < kLastId; ++id) {
      QWidget* widget = desk::WidgetOf(id);
      if (!widget || !widget->isVisible()) continue;
      for (const int other : seen) {
        QWidget* before = desk::WidgetOf(other);
        if (before->parentWidget() != widget->parentWidget()) continue;
        EXPECT_FALSE(before->geometry().intersects(widget->geometry())) << other << " and " << id;
      }
      seen.push_back(id);
    }
  }
  static QRect OnScreen(QWidget* widget) {
    return QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size());
  }
};

TEST_F(CadLook, CutsNoWordOfAnyPanelAndLaysNothingOverAnother) {
  PutEveryType();
  sketch.hidden[1] = 1;
  sketch.locked[2] = 1;
  sketch.hidden[3] = sketch.locked[3] = 1;
  sketch.selected = 2;
  morva::RefreshSketchPanels();
  const auto look = [](const char* name) {
    AtBothSizes([name]() {
      SCOPED_TRACE(name);
      ExpectWordsFit();
      ExpectNothingOverAnother();
      ShowAs("panel", name);
      morva::ScrollSheet(morva::kCadSheet, 500);
      if (morva::SheetTop(morva::kCadSheet) > 400) ShowAs("scrolled", name);
      morva::ScrollSheet(morva::kCadSheet, -2000);
    });
  };
  look("none");
  for (const Panel& panel : kPanels) {
    desk::Click(panel.key);
    look(panel.name);
  }
  // With nothing selected the value's field holds a sentence.
  desk::Click(morva::kIdCadDimension);
  sketch.selected = -1;
  morva::RefreshSketchPanels();
  ASSERT_EQ(desk::TextOf(morva::kIdCadDimensionValue),
            QStringLiteral("Click geometry to measure and resize."));
  look("no_dimension");
}

TEST_F(CadLook, KeepsEightDrawingsApartWhileOneIsNamed) {
  for (int i = 1; i < morva::kMaxDrawings; ++i) desk::Click(morva::kIdDrawingAdd);
  AtBothSizes([]() {
    ExpectNothingOverAnother();
    desk::Click(morva::kIdDrawingRename);
    Fill(morva::kIdCadDrawingName, "A bracket with two slots and six holes around one");
    ExpectNothingOverAnother();
    EXPECT_GE(desk::WidgetOf(morva::kIdCadDrawingName)->width(), 148);
    EXPECT_TRUE(desk::WidgetOf(morva::kIdDrawingRename)->isVisible());
    Show("look_naming.png");
    desk::Click(morva::kIdDrawingRename);
    ExpectNothingOverAnother();
    Show("look_eight.png");
  });
}

TEST_F(CadLook, KeepsNumberBoxesOnTheCanvasInEveryCorner) {
  AtBothSizes([]() {
    for (const int method : {morva::kIdCadRectangle, morva::kIdCadPolygon}) {
      for (int corner = 0; corner < 4; ++corner) {
        desk::Click(method);
        ClickAt(0, 0);
        const QPoint at((corner & 1) != 0 ? Canvas()->width() - 12 : 12,
                        (corner & 2) != 0 ? Canvas()->height() - 12 : 12);
        desk::MovePointer(Canvas(), at);
        desk::Key(morva::kViewCadCanvas, Qt::Key_Tab);
        ASSERT_TRUE(desk::WidgetOf(morva::kIdCadSizeBox2)->isVisible());
        for (const int id : {morva::kIdCadSizeBox1, morva::kIdCadSizeBox2, morva::kIdCadSizeCaption,
                             morva::kIdCadCreateTyped}) {
          EXPECT_TRUE(OnScreen(Canvas()).contains(OnScreen(desk::WidgetOf(id))))
              << id << " corner " << corner;
        }
        ShowAs(method == morva::kIdCadPolygon ? "polygon_boxes" : "boxes", std::to_string(corner));
        desk::Key(morva::kIdCadSizeBox1, Qt::Key_Escape);
        ASSERT_FALSE(desk::WidgetOf(morva::kIdCadSizeBox1)->isVisible());
      }
    }
  });
}

TEST_F(CadLook, KeepsPopupsAndThePickerInsideTheScreen) {
  PutEveryType();
  sketch.selected = 0;
  morva::RefreshSketchPanels();
  const auto inspect = [](const char* what, int which) {
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, qApp, [timer, what, which]() {
      QWidget* popup = QApplication::activePopupWidget();
      if (!popup) popup = QApplication::activeModalWidget();
      if (!popup || !popup->isVisible()) return;
      timer->stop();
      timer->deleteLater();
      EXPECT_TRUE(popup->screen()->geometry().contains(popup->frameGeometry())) << which;
      ShowAs(what, std::to_string(which));
      popup->close();
    });
    timer->start(15);
  };
  AtBothSizes([&]() {
    for (const int key : {morva::kIdCadLine, morva::kIdCadRectangle, morva::kIdCadCircle,
                          morva::kIdCadSlot, morva::kIdCadDimension}) {
      inspect("flyout", key);
      desk::Key(key, Qt::Key_Down);
      EXPECT_EQ(morva::tools.constructionMethod, 0);
    }
    const QPoint corner(Canvas()->width() - 4, Canvas()->height() - 4);
    inspect("menu", morva::kViewCadCanvas);
    QContextMenuEvent ask(QContextMenuEvent::Keyboard, corner, Canvas()->mapToGlobal(corner));
    QApplication::sendEvent(Canvas(), &ask);
    inspect("picker", morva::kIdCadGenerate);
    desk::Click(morva::kIdCadGenerate);
  });
}

TEST_F(CadLook, ShowsAFullSketchWithItsLabels) {
  std::vector<SketchObject> many;
  for (int i = 0; i < morva::kMaxItems; ++i) {
    const std::int32_t type = i % 4;
    const bool two = type == morva::kTypeRectangle || type == morva::kTypeSlot;
    many.push_back({type, 0, -4.5 + i % 12 * 0.8, -2 + i / 12 * 0.5, 0.4, two ? 0.2 : 0.0, 0});
  }
  Put(many);
  AtBothSizes([]() {
    Show("look_full.png");
    desk::Click(morva::kIdCadDimension);
    desk::Click(morva::kIdCadFit);
    ASSERT_TRUE(desk::Until([]() { return morva::DimensionLabel(95, 1).right > 0; }));
    for (int i = 0; i < morva::kMaxItems; ++i) {
      for (int k = 0; k < morva::kDimensionLabels; ++k) {
        const platform::Rect label = morva::DimensionLabel(i, k);
        const QRect place(QPoint(label.left, label.top), QPoint(label.right - 1, label.bottom - 1));
        EXPECT_TRUE(label.right == 0 || Canvas()->rect().contains(place)) << i;
      }
    }
    Show("look_full_labels.png");
    desk::Key(morva::kViewCadCanvas, Qt::Key_Escape);
  });
}

}  // namespace
