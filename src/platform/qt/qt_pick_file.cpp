// The dialogs for a file to open and a name to save under.

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QTreeView>

#include "platform/pick_file.h"
#include "platform/qt/qt_internal.h"

namespace platform {

namespace {

// "Words (*.NC *.TAP)", as the toolkit takes a row.
QString FilterRow(const FileFilter& filter) {
  QString patterns = Text(filter.patterns);
  patterns.replace(u';', u' ');
  return Text(filter.words) + QStringLiteral(" (") + patterns + QStringLiteral(")");
}

// The toolkit's own dialog gives the names a column of one width and cuts what is longer. Here they
// get what they need; the other columns stand behind them, by the scroll bar where they must.
void ShowWholeNames(QFileDialog& dialog) {
  dialog.setViewMode(QFileDialog::Detail);
  auto* rows = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
  if (rows == nullptr) return;  // a dialog of the system's
  rows->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
  rows->setTextElideMode(Qt::ElideNone);
}

bool Pick(const PickFileSpec& spec, bool save, std::u16string& path) {
  QFileDialog dialog(MainWidget(), Text(spec.title));
  // The offscreen platform has nobody to answer a dialog of the system's.
  if (QGuiApplication::platformName() == QStringLiteral("offscreen")) {
    dialog.setOption(QFileDialog::DontUseNativeDialog);
  }
  // The words name the patterns already.
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  dialog.setFont(FontOf(FontRole::Body));
  dialog.resize(880, 560);  // names, sizes and dates without a scroll bar
  dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  QStringList rows;
  for (int i = 0; i < spec.filterCount; ++i) rows.append(FilterRow(spec.filters[i]));
  if (!rows.isEmpty()) dialog.setNameFilters(rows);
  const QString folder = Text(spec.folder);
  if (!folder.isEmpty() && QFileInfo(folder).isDir()) dialog.setDirectory(folder);
  if (save) dialog.setDefaultSuffix(Text(spec.defaultExtension));
  const QString name = Text(spec.initialName);
  if (!name.isEmpty()) {
    const QFileInfo info(name);
    if (info.isAbsolute()) dialog.setDirectory(info.absolutePath());
    dialog.selectFile(info.isAbsolute() ? info.fileName() : name);
  }
  ShowWholeNames(dialog);
  const Asking asking;
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return false;
  const std::u16string chosen = Text16(QDir::toNativeSeparators(dialog.selectedFiles().first()));
  if (chosen.empty() || static_cast<int>(chosen.size()) + 1 > spec.capacity) return false;
  path = chosen;
  return true;
}

}  // namespace

bool PickFileToOpen(const PickFileSpec& spec, std::u16string& path) {
  return Pick(spec, false, path);
}

bool PickFileToSave(const PickFileSpec& spec, std::u16string& path) {
  return Pick(spec, true, path);
}

}  // namespace platform
