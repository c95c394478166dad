// The machining wizard on the real window: by keyboard and pointer, at both sizes.

#include <QApplication>
#include <QPixmap>
#include <QTest>

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
  static void Size(const QSize& size) {
    QWidget* window = desk::WidgetOf(platform::kMainWindow)->window();
    window->resize(size);
    ASSERT_TRUE(desk::Until([&]() { return window->size() == size; }));
    desk::Run(50);
  }
  static QImage PictureNow() { return desk::WidgetOf(morva::kViewWizardPicture)->grab().toImage(); }
  static void TypeOver(int id, const char* text) {
    desk::Key(id, Qt::Key_A, Qt::ControlModifier);
    desk::TypeInto(id, QString::fromLatin1(text));
  }
  static bool HasKeyboard(int id) { return desk::WidgetOf(id)->hasFocus(); }
};

TEST_F(WizardAtTheDesk, ShowsEachOperationAtBothSizes) {
  for (const QSize size : {QSize(1200, 800), QSize(1560, 940)}) {
    Size(size);
    for (int kind = morva::kWizardKinds - 1; kind >= 0; --kind) {
      desk::Click(kCard + kind);
      ASSERT_TRUE(desk::Until([kind]() { return morva::ChosenWizardKind() == kind; }));
      TypeOver(kField, "3");
      EXPECT_TRUE(morva::ExampleIsShown());
      Show(QStringLiteral("wizard_%1_%2.png").arg(kind).arg(size.width()).toLatin1().constData());
    }
  }
}

}  // namespace
