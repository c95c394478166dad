// The least of its kind: a window of the same size with a menu, an editor and a drawn view.
#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QPainter>
#include <QPlainTextEdit>
#include <QSplitter>

#include "first_paint.h"

namespace {

class View : public QWidget {
 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(2, 23, 38));
    painter.drawLine(0, 0, width(), height());
  }
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const FirstPaint first;
  QMainWindow window;
  QMenu* menu = window.menuBar()->addMenu(QStringLiteral("File"));
  menu->addAction(QStringLiteral("Open"));
  menu->addAction(QStringLiteral("Save"));
  auto* splitter = new QSplitter;
  splitter->addWidget(new QPlainTextEdit(QStringLiteral("G90 G17\nM30\n")));
  splitter->addWidget(new View);
  window.setCentralWidget(splitter);
  window.resize(1560, 940);
  window.show();
  return QApplication::exec();
}
