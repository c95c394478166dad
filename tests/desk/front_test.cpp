// Another program takes the front, changes the file and goes, on the real window.

#include <QApplication>
#include <QFileDialog>
#include <QTimer>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "desk/another_program.h"
#include "desk/at_desk.h"

namespace {

class Front : public AtDesk {
 protected:
  void SetUp() override {
    AtDesk::SetUp();
    Open(Write("part.NC", "G0 X1\r\n"));
    ASSERT_TRUE(ProgramHolds("(MORVA END 1)"));
  }
  static bool ProgramHolds(const char* words) {
    return desk::Until(
        [words]() { return desk::TextOf(morva::kIdEditor).contains(QString::fromLatin1(words)); });
  }
  void ChangeTheFileElsewhere() const {
    desk::AnotherProgram other;
    WriteAll(Path("part.NC"), "G0 X12345\r\n");
    other.End();
  }
};

TEST_F(Front, OffersAChangedFileWhenItComesBack) {
  desk::AnswerBox(QStringLiteral("Yes"));
  ChangeTheFileElsewhere();
  EXPECT_TRUE(ProgramHolds("X12345"));
}

TEST_F(Front, OffersAChangedFileBehindAnAnswerThatWasStillOwed) {
  int boxes = -1;
  QTimer eyes;
  QObject::connect(&eyes, &QTimer::timeout, [&]() {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible()) return;
    eyes.stop();
    ChangeTheFileElsewhere();
    desk::Run(300);
    boxes = desk::BoxesSeen();
    desk::AnswerBox(QStringLiteral("Yes"));
    dialog->reject();
  });
  eyes.start(15);
  desk::Click(morva::kIdOpen);
  EXPECT_EQ(boxes, 0);
  EXPECT_TRUE(ProgramHolds("X12345"));
}

}  // namespace
