// The list of a combo, which the toolkit opens by itself, while the application comes to the front.

#include <gtest/gtest.h>

#include <QComboBox>

#include "widgets/stand.h"

namespace {

int fronts = 0;  // times that the application was told

TEST(FrontWidget, IsToldBehindTheListOfACombo) {
  stand::Open();
  fronts = 0;
  stand::events.activated = [] { ++fronts; };
  platform::ListSpec spec;
  spec.id = 410;
  spec.kind = platform::ListKind::Combo;
  ASSERT_TRUE(platform::MakeList(spec));
  platform::AddRow(410, u"a row", 0);
  platform::SetPlace(410, {10, 10, 200, 40});
  platform::SetVisible(410, true);
  ASSERT_TRUE(
      stand::Until([] { return QGuiApplication::applicationState() == Qt::ApplicationActive; }));
  auto* combo = qobject_cast<QComboBox*>(platform::WidgetOf(410));
  combo->showPopup();
  ASSERT_TRUE(stand::Until([] { return QApplication::activePopupWidget() != nullptr; }));
  fronts = 0;
  Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
  for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
  EXPECT_EQ(fronts, 0);
  combo->hidePopup();
  EXPECT_TRUE(stand::Until([] { return fronts == 1; }));
}

}  // namespace
