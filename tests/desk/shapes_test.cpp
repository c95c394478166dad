// Shapes and patterns on the real window: keys, lists, the popup of saved shapes and pictures.

#include "library/shapes.h"

#include <QAbstractButton>

#include "builders/shapes/pattern_builders.h"
#include "builders/shapes/shape_panel.h"
#include "builders/shapes/shape_text.h"
#include "desk/at_desk.h"
#include "documents/edit_link.h"
#include "forms/form.h"
#include "forms/sheet.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "shell/modes.h"

namespace {

constexpr int kField = morva::kIdShapeField;

struct ShapesAtTheDesk : AtDesk {
  static bool Holds(const char* code) {
    return desk::TextOf(morva::kIdEditor).contains(QString::fromLatin1(code));
  }
  static void Press(Qt::Key key) { desk::KeyHere(key); }
  // Types over what a field holds.
  static void Fill(int id, const QString& text) {
    desk::Key(id, Qt::Key_A, Qt::ControlModifier);
    desk::TypeInto(id, text);
  }
  // An ear of a plate: a circle in a triangle of lines.
  static void SaveEar() {
    morva::SavedShape shape;
    const std::u16string name = u"Ear with a rather long name";
    std::copy(name.begin(), name.end(), shape.name);
    shape.objects[shape.count++] = {morva::kTypeCircle, 0, 0, 0, 0.5, 0, 0};
    shape.objects[shape.count++] = {morva::kTypeSlot, 0, 0, 1, 1, 0.25, 90};
    shape.objects[shape.count++] = {morva::kTypeRectangle, 0, 0, 0, 2, 3, 0};
    ASSERT_EQ(morva::PutShape(shape), 0);
    morva::RefreshShapeLists();
  }
  // Every control of the shown form can be brought into sight, and none lies over another.
  static void ExpectAllInSight(const morva::Form& form) {
    int ids[morva::kMaxTabStops];
    const int count = morva::FormOrder(form, ids, morva::kMaxTabStops);
    for (int i = 0; i < count; ++i) {
      QWidget* widget = desk::WidgetOf(ids[i]);
      if (!widget || !widget->isVisible()) continue;
      morva::ShowFormControl(ids[i]);
      EXPECT_FALSE(widget->visibleRegion().isEmpty()) << ids[i];
      EXPECT_GE(widget->visibleRegion().boundingRect().height(), std::min(widget->height(), 24))
          << ids[i];
      if (const auto* key = qobject_cast<QAbstractButton*>(widget)) {
        // With the ring of the keyboard inside the key.
        const int words =
            platform::TextWidth(platform::FontRole::Body, key->text().toStdU16String());
        EXPECT_LE(words + 8, key->width()) << key->text().toStdString();
      }
    }
  }
  static void ShowBoth(const char* what, const morva::Form& form) {
    for (const QSize size : {QSize(1200, 800), QSize(1560, 940)}) {
      SCOPED_TRACE(testing::Message() << what << " " << size.width());
      Resize(size.width(), size.height());
      if (form.sheet) morva::ScrollSheetToTop(*form.sheet);
      Show(QStringLiteral("%1_%2.png").arg(QLatin1String(what)).arg(size.width()).toLatin1());
      ExpectAllInSight(form);
      if (form.sheet) morva::ScrollSheetToTop(*form.sheet);
    }
  }
};

TEST_F(ShapesAtTheDesk, LeavesTheCaretAtThePlaceOfTheSplitBehindAnUndo) {
  std::u16string program = u"%\r\nO1\r\nG20\r\n";
  for (int i = 0; i < 120; ++i) program += u"G01 X1.\r\n";
  platform::SetEditorText(morva::kIdEditor, program + u"M30\r\n%\r\n");
  desk::Run(300);
  const int place = platform::EditorLineStart(morva::kIdEditor, 8);
  platform::SetEditorSelection(morva::kIdEditor, {place, place});
  morva::SetMode(morva::kModeShapes);
  desk::AnswerBox(QStringLiteral("Yes"));
  desk::Click(morva::kIdShapeInsert);
  ASSERT_TRUE(desk::Until([]() { return Holds("(MORVA END 3)"); }));
  desk::Run(300);
  desk::Key(morva::kIdEditor, Qt::Key_Z, Qt::ControlModifier);
  ASSERT_TRUE(desk::Until([]() { return !Holds("(MORVA END 3)"); }));
  EXPECT_TRUE(desk::Until([place]() {
    return platform::EditorSelection(morva::kIdEditor).to == place &&
           platform::FirstVisibleLine(morva::kIdEditor) <= 8;
  }));
  EXPECT_EQ(desk::TextOf(morva::kIdFeatureHint),
            QStringLiteral("All program features appear here."));
}

TEST_F(ShapesAtTheDesk, ShowsEachShapeWithItsFieldsAndItsPictureAtBothSizes) {
  SaveEar();
  desk::Key(morva::kIdModeList, Qt::Key_Home);
  for (int i = 0; i < 12 && morva::app.mode != morva::kModeShapes; ++i) {
    desk::Key(morva::kIdModeList, Qt::Key_Down);
  }
  ASSERT_EQ(morva::app.mode, morva::kModeShapes);
  constexpr const char* kNames[] = {"square", "rectangle", "circle", "triangle",
                                    "line",   "diamond",   "slot",   "saved"};
  for (int row = 0; row < morva::kShapeKinds; ++row) {
    if (row == morva::kShapeSaved) {
      desk::AnswerMenu(QStringLiteral("Ear"));
      desk::Click(morva::kIdCustomShapes);
    } else {
      desk::Click(morva::kIdQuickShapeFirst + row);
    }
    ASSERT_TRUE(desk::Until([row]() { return morva::ChosenShape() == row; })) << row;
    ShowBoth(kNames[row], *morva::kShapeBuilder.form);
  }
}

TEST_F(ShapesAtTheDesk, IsFilledInByKeyboardInsertedAndUpdatedInPlace) {
  morva::SetMode(morva::kModeShapes);
  desk::Key(morva::kIdShapeCombo, Qt::Key_Down);
  ASSERT_TRUE(desk::Until([]() { return morva::ChosenShape() == morva::kShapeRectangle; }));
  for (int n = 0; n < morva::kShapeNumbers; ++n) {
    Press(Qt::Key_Tab);
    ASSERT_TRUE(desk::Until([n]() { return HasKeyboard(kField + n); })) << n;
    if (n == morva::kShapeSize) {
      Fill(kField + n, QStringLiteral("4.25"));
    }
  }
  Press(Qt::Key_Return);
  ASSERT_TRUE(desk::Until([]() { return Holds("G01 X4.250 Y0.000 F10.0"); }));
  desk::Click(morva::kIdFeatureEdit);
  ASSERT_TRUE(desk::Until([]() { return morva::editLink.kind == morva::kKindShape; }));
  EXPECT_EQ(desk::TextOf(morva::kIdShapeInsert), QStringLiteral("UPDATE SHAPE"));
  EXPECT_EQ(desk::TextOf(kField + morva::kShapeSize), QStringLiteral("4.250000"));
  Fill(kField + morva::kShapeSize, QStringLiteral("5"));
  desk::Click(morva::kIdShapeInsert);
  ASSERT_TRUE(desk::Until([]() { return Holds("G01 X5.000 Y0.000 F10.0"); }));
  EXPECT_FALSE(Holds("X4.250"));
  EXPECT_EQ(desk::TextOf(morva::kIdShapeInsert), QStringLiteral("INSERT SHAPE G-CODE"));
}

TEST_F(ShapesAtTheDesk, ShowsThePatternsWithTheirPicturesAtBothSizes) {
  SaveEar();
  for (const int mode : {int{morva::kModeCircular}, int{morva::kModeRectangular}}) {
    const bool circular = mode == morva::kModeCircular;
    const int list = circular ? morva::kIdCircularItem : morva::kIdRectItem;
    morva::SetMode(mode);
    ASSERT_TRUE(desk::Until([list]() { return HasKeyboard(list); }));
    for (int row = 0; row < 7; ++row) {
      platform::SelectRow(list, row);
      morva::FormNotified(list, platform::kNotifyComboSelect);
      const QByteArray what = QStringLiteral("%1_%2")
                                  .arg(QLatin1String(circular ? "circular" : "grid"))
                                  .arg(row)
                                  .toLatin1();
      ShowBoth(what, *morva::kCircularBuilder.form);
    }
  }
}

}  // namespace
