// Message boxes over the main window, or over the dialog that runs.

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include "platform/message.h"
#include "platform/qt/qt_internal.h"

namespace platform {

namespace {

QMessageBox::Icon IconOf(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::Information:
      return QMessageBox::Information;
    case BoxIcon::Warning:
      return QMessageBox::Warning;
    case BoxIcon::Error:
      return QMessageBox::Critical;
    case BoxIcon::Question:
      return QMessageBox::Question;
    case BoxIcon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

constexpr QMessageBox::StandardButton kOther = QMessageBox::Retry;

void Caption(const QMessageBox& box, QMessageBox::StandardButton button, const char16_t* words) {
  QAbstractButton* key = box.button(button);
  if (key != nullptr && words != nullptr) key->setText(Text(words));
}

}  // namespace

BoxAnswer ShowBox(std::u16string_view title, std::u16string_view text, BoxButtons buttons,
                  BoxIcon icon, const BoxCaptions& captions) {
  QWidget* dialog = QApplication::activeModalWidget();
  QMessageBox box(dialog != nullptr ? dialog : MainWidget());
  box.setWindowTitle(Text(title));
  box.setTextFormat(Qt::PlainText);
  box.setText(Text(text));
  box.setIcon(IconOf(icon));
  box.setFont(FontOf(FontRole::Body));
  box.setAccessibleName(Text(title));
  switch (buttons) {
    case BoxButtons::Ok:
      box.setStandardButtons(QMessageBox::Ok);
      box.setEscapeButton(QMessageBox::Ok);
      break;
    case BoxButtons::YesNo:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
      box.setEscapeButton(QMessageBox::No);
      box.setDefaultButton(QMessageBox::Yes);
      break;
    case BoxButtons::NoYes:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
      box.setEscapeButton(QMessageBox::No);
      box.setDefaultButton(QMessageBox::No);
      break;
    case BoxButtons::YesNoCancel:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
      box.setEscapeButton(QMessageBox::Cancel);
      box.setDefaultButton(QMessageBox::Yes);
      break;
    case BoxButtons::YesNoOtherCancel:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | kOther | QMessageBox::Cancel);
      box.setEscapeButton(QMessageBox::Cancel);
      box.setDefaultButton(QMessageBox::Cancel);
      break;
  }
  Caption(box, QMessageBox::Yes, captions.yes);
  Caption(box, QMessageBox::No, captions.no);
  Caption(box, kOther, captions.other);
  Caption(box, QMessageBox::Cancel, captions.cancel);
  const Asking asking;
  switch (box.exec()) {
    case QMessageBox::Yes:
      return BoxAnswer::Yes;
    case QMessageBox::No:
      return BoxAnswer::No;
    case QMessageBox::Cancel:
      return BoxAnswer::Cancel;
    case kOther:
      return BoxAnswer::Other;
    default:
      break;
  }
  if (buttons == BoxButtons::YesNo || buttons == BoxButtons::NoYes) return BoxAnswer::No;
  return buttons == BoxButtons::Ok ? BoxAnswer::Ok : BoxAnswer::Cancel;
}

}  // namespace platform
