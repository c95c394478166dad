// The macro library on the real window: keys, double click and pictures.

#include "library/macros.h"

#include <QTest>

#include "desk/at_desk.h"
#include "platform/listing.h"
#include "platform/window.h"

namespace {

using MacrosAtTheDesk = AtDesk;

void Press(Qt::Key key) { desk::KeyHere(key); }
bool Holds(const char* code) {
  return desk::TextOf(morva::kIdEditor).contains(QString::fromLatin1(code));
}

TEST_F(MacrosAtTheDesk, AreFilledInByKeyboardAndComeBackByADoubleClick) {
  desk::Key(morva::kIdModeList, Qt::Key_Home);
  for (int i = 0; i < 12 && morva::app.mode != morva::kModeMacros; ++i) {
    desk::Key(morva::kIdModeList, Qt::Key_Down);
  }
  ASSERT_EQ(morva::app.mode, morva::kModeMacros);
  Resize(1200, 800);
  Show("macros_1200_first.png");
  desk::Key(morva::kIdMacroCombo, Qt::Key_Down);
  desk::Key(morva::kIdMacroCombo, Qt::Key_Down);
  // Tab walks from the kind through its six fields to the key.
  for (int n = 0; n < 6; ++n) {
    Press(Qt::Key_Tab);
    ASSERT_TRUE(desk::Until([n]() { return HasKeyboard(morva::kIdMacroField + n); })) << n;
  }
  desk::TypeHere(QStringLiteral("FINISHER"));
  Show("macros_1200.png");
  Press(Qt::Key_Return);
  EXPECT_TRUE(desk::Until([]() { return Holds("(TOOL: FINISHER)"); }));
  desk::TypeInto(morva::kIdMacroName, QStringLiteral("finishing"));
  desk::Click(morva::kIdMacroSave);
  ASSERT_TRUE(desk::Until([]() { return morva::macroLibrary.count == 1; }));
  EXPECT_TRUE(desk::Until([]() {
    return desk::TextOf(morva::kIdOutputLog).contains(QStringLiteral("saved to Custom Macros."));
  }));
  Resize(1560, 940);
  Show("macros_1560.png");
  desk::Click(morva::kIdNew);
  ASSERT_TRUE(desk::Until([]() { return !Holds("(TOOL: FINISHER)"); }));
  QWidget* list = desk::WidgetOf(morva::kIdMacroList);
  const platform::Rect row = platform::RowPlace(morva::kIdMacroList, 0);
  QWidget* rows = list->findChild<QWidget*>(QStringLiteral("qt_scrollarea_viewport"));
  ASSERT_NE(rows, nullptr);
  const QPoint at(row.left + 8, (row.top + row.bottom) / 2);
  QTest::mouseClick(rows, Qt::LeftButton, Qt::NoModifier, at);
  QTest::mouseDClick(rows, Qt::LeftButton, Qt::NoModifier, at);
  EXPECT_TRUE(desk::Until([]() { return Holds("(TOOL: FINISHER)"); }));
}

}  // namespace
