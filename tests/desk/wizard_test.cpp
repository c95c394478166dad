// The machining wizard on the real window: by keyboard and pointer, at both sizes.

#include <QPixmap>
#include <vector>

#include "builders/wizard/wizard_panel.h"
#include "builders/wizard/wizard_text.h"
#include "desk/at_desk.h"
#include "library/tools.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "simulator/shown_path.h"

namespace {

constexpr int kCard = morva::kIdWizardKindFirst;
constexpr int kField = morva::kIdWizardField;

class WizardAtTheDesk : public AtDesk {
 protected:
  void SetUp() override {
    AtDesk::SetUp();
    morva::ToolRecord tool;
    tool.number = 3;
    constexpr std::u16string_view kType = u"End Mill";
    std::copy(kType.begin(), kType.end(), tool.type);
    tool.diameter = 0.5;
    ASSERT_GE(morva::AppendTool(tool), 0);
    desk::Key(morva::kIdModeList, Qt::Key_Home);
    for (int i = 0; i < 12 && morva::app.mode != morva::kModeWizard; ++i) {
      desk::Key(morva::kIdModeList, Qt::Key_Down);
    }
    ASSERT_EQ(morva::app.mode, morva::kModeWizard);
  }
  static QImage PictureNow() { return desk::WidgetOf(morva::kViewWizardPicture)->grab().toImage(); }
  static void TypeOver(int id, const char* text) {
    desk::Key(id, Qt::Key_A, Qt::ControlModifier);
    desk::TypeInto(id, QString::fromLatin1(text));
  }
  static QRect Place(int id) {
    const QWidget* widget = desk::WidgetOf(id);
    return QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size());
  }
};

TEST_F(WizardAtTheDesk, ShowsEachOperationAtBothSizes) {
  for (const QSize size : {QSize(1200, 800), QSize(1560, 940)}) {
    Resize(size.width(), size.height());
    for (int kind = morva::kWizardKinds - 1; kind >= 0; --kind) {
      desk::Click(kCard + kind);
      ASSERT_TRUE(desk::Until([kind]() { return morva::ChosenWizardKind() == kind; }));
      TypeOver(kField, "3");
      EXPECT_TRUE(morva::ExampleIsShown());
      Show(QStringLiteral("wizard_%1_%2.png").arg(kind).arg(size.width()).toLatin1().constData());
    }
  }
}

// From the list of operations through the ten fields to the unit keys and the key that inserts.
// Each gets into sight, also where the form scrolls, with picture and example beside it.
TEST_F(WizardAtTheDesk, IsWalkedByKeyboardAtBothSizes) {
  for (const QSize size : {QSize(1200, 800), QSize(1560, 940)}) {
    SCOPED_TRACE(size.width());
    Resize(size.width(), size.height());
    desk::Click(kCard + morva::kWizardDrill);
    QWidget* const combo = desk::WidgetOf(morva::kIdWizardCombo);
    combo->setFocus();
    std::vector<int> order = {morva::kIdWizardTools};
    for (int i = 0; i < morva::kWizardNumbers; ++i) order.push_back(kField + i);
    order.insert(order.end(), {morva::kIdBuilderInch, morva::kIdBuilderMm,
                               morva::kViewWizardPicture, morva::kIdWizardInsert});
    const QRect frame = Place(morva::kViewBuilder);
    for (const int id : order) {
      desk::KeyHere(Qt::Key_Tab);
      ASSERT_TRUE(desk::Until([id]() { return HasKeyboard(id); })) << id;
      const bool fixed = id == morva::kViewWizardPicture || id == morva::kIdWizardInsert;
      if (fixed) {
        EXPECT_GT(Place(id).top(), frame.bottom()) << id;
      } else {
        EXPECT_TRUE(frame.contains(Place(id))) << id;
      }
      for (const int other : {int{morva::kViewWizardPicture}, int{morva::kIdWizardInsert},
                              int{morva::kViewToolpath}}) {
        EXPECT_TRUE(desk::WidgetOf(other)->isVisible()) << other;
      }
    }
    Show(size.width() == 1200 ? "wizard_walked_1200.png" : "wizard_walked_1560.png");
  }
}

TEST_F(WizardAtTheDesk, DrawsWhatIsTypedAndPlaysItsExampleMeanwhile) {
  Resize(1200, 800);
  desk::Key(morva::kIdWizardCombo, Qt::Key_Down);
  desk::Key(morva::kIdWizardCombo, Qt::Key_Down);
  ASSERT_TRUE(desk::Until([]() { return morva::ChosenWizardKind() == morva::kWizardDrill; }));
  const std::int32_t head = morva::ShownPath().play.playHead;
  const QImage before = PictureNow();
  TypeOver(kField + morva::kWizardNinth, "7");
  ASSERT_TRUE(desk::Until([&]() { return PictureNow() != before; }));
  const QImage seven = PictureNow();
  TypeOver(kField + morva::kWizardTool, "3");
  ASSERT_TRUE(desk::Until([&]() { return PictureNow() != seven; }));
  // Another unit shows the same part with other numbers, and the example begins anew.
  const QImage inches = PictureNow();
  ASSERT_TRUE(desk::Until([head]() { return morva::ShownPath().play.playHead > head; }));
  desk::Key(morva::kIdBuilderMm, Qt::Key_Space);
  ASSERT_TRUE(desk::Until([&]() { return PictureNow() != inches; }));
  EXPECT_EQ(desk::TextOf(kField + morva::kWizardTenth), QStringLiteral("25.400"));
  EXPECT_TRUE(morva::ExampleIsShown());
  Show("wizard_typed_1200.png");
  // Enter in a field inserts, and the keyboard stays there.
  desk::Key(kField + morva::kWizardNinth, Qt::Key_Return);
  EXPECT_TRUE(desk::Until([]() {
    return desk::TextOf(morva::kIdEditor).contains(QStringLiteral("(WIZARD: DRILL G81)"));
  }));
  EXPECT_TRUE(HasKeyboard(kField + morva::kWizardNinth));
  // A refusal comes back with the keyboard in the field that it is about.
  TypeOver(kField + morva::kWizardDepth, "0,5");
  desk::AnswerBox(QStringLiteral("OK"));
  desk::KeyHere(Qt::Key_Return);
  ASSERT_TRUE(desk::Until([]() { return desk::BoxesSeen() == 1; }));
  EXPECT_TRUE(desk::LastBoxText().contains(QStringLiteral("Depth Z holds no usable number.")));
  EXPECT_TRUE(desk::Until([]() { return HasKeyboard(kField + morva::kWizardDepth); }));
  desk::Click(morva::kIdBack);
  EXPECT_FALSE(morva::ExampleIsShown());
  EXPECT_FALSE(desk::WidgetOf(morva::kViewWizardPicture)->isVisible());
}

}  // namespace
