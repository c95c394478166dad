// The workbench at its start on the real window, in a fresh home folder. For desk tests.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "desk/desk.h"
#include "platform/window.h"

class AtDesk : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(home_.isValid());
    desk::Start(home_.path());
    // The fresh program gets its first markers a moment after the start.
    ASSERT_TRUE(desk::Until(
        []() { return desk::TextOf(morva::kIdEditor).contains(QStringLiteral("(MORVA END 1)")); }));
  }

  // A file of the home folder; its path.
  QString Write(const char* name, const QByteArray& bytes) const {
    const QString path = home_.filePath(QString::fromLatin1(name));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    return path;
  }
  QString Path(const char* name) const { return home_.filePath(QString::fromLatin1(name)); }
  static QByteArray ReadAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  static void WriteAll(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  // By the OPEN key, in a tab of its own.
  static void Open(const QString& path) {
    const int before = morva::app.tabCount;
    desk::AnswerFile(path);
    desk::Click(morva::kIdOpen);
    ASSERT_TRUE(desk::Until([before]() { return morva::app.tabCount == before + 1; }));
  }
  static bool HasKeyboard(int id) { return desk::WidgetOf(id)->hasFocus(); }
  // The main window, once all in it has its place.
  static void Resize(int width, int height) {
    QWidget* window = desk::WidgetOf(platform::kMainWindow);
    window->resize(width, height);
    ASSERT_TRUE(
        desk::Until([=]() { return window->width() == width && window->height() == height; }));
    desk::Run(50);
  }
  // A picture into the folder that MORVA_PICTURES names, if it names one.
  static void Show(const char* step) {
    const QByteArray folder = qgetenv("MORVA_PICTURES");
    if (folder.isEmpty()) return;
    desk::Run(150);
    desk::Picture(QDir(QString::fromLocal8Bit(folder)).filePath(QString::fromLatin1(step)));
  }

  QTemporaryDir home_;
};
