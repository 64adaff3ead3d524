#include "ui/qt/window/file_dialog.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QIdentityProxyModel>
#include <QLineEdit>
#include <QListView>
#include <QLocale>
#include <QSplitter>
#include <QTreeView>
#include <QUrl>

#include "common/file.h"

namespace estructura {

namespace {

/// Sizes and dates as they are written in Spanish: QFileSystemModel writes them in the desktop's language.
class spanish_file_model final : public QIdentityProxyModel {
 public:
  using QIdentityProxyModel::QIdentityProxyModel;

  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
    const auto* const files = qobject_cast<const QFileSystemModel*>(sourceModel());
    if (role != Qt::DisplayRole || files == nullptr) return QIdentityProxyModel::data(index, role);
    const QModelIndex file = mapToSource(index);
    constexpr int size_column = 1;
    constexpr int date_column = 3;
    const QLocale spanish;
    if (index.column() == size_column && !files->isDir(file))
      return spanish.formattedDataSize(files->size(file));
    if (index.column() == date_column)
      return spanish.toString(files->lastModified(file), QLocale::ShortFormat);
    return QIdentityProxyModel::data(index, role);
  }
};

}  // namespace

QString examples_folder(const QString& program_folder) {
  for (const char* const way : {"/../share/estructura/ejemplos", "/../../../../ejemplos"})
    if (const QDir folder(QDir::cleanPath(program_folder + QLatin1String(way))); folder.exists())
      return folder.path();
  return {};
}

file_dialog::file_dialog(QWidget* parent, bool save) : QFileDialog(parent) {
  setOption(DontUseNativeDialog);
  setOption(DontConfirmOverwrite);
  setOption(HideNameFilterDetails);
  setAcceptMode(save ? AcceptSave : AcceptOpen);
  // A name that does not exist is an answer too; what becomes of it is for the window to say.
  setFileMode(AnyFile);
  setViewMode(List);
  if (const QString examples = examples_folder(QCoreApplication::applicationDirPath()); !examples.isEmpty())
    setSidebarUrls(sidebarUrls() << QUrl::fromLocalFile(examples));
  setProxyModel(new spanish_file_model(this));
  // Said here, not left to the desktop's theme.
  setWindowTitle(save ? QStringLiteral("Salvar como") : QStringLiteral("Abrir"));
  setLabelText(Accept, save ? QStringLiteral("&Salvar") : QStringLiteral("&Abrir"));
  setLabelText(Reject, QStringLiteral("Cancelar"));
  make_room();
}

/// Room for the names of the places at the left, and for the four columns of the files at the right.
void file_dialog::make_room() {
  const auto* const places = findChild<QListView*>(QStringLiteral("sidebar"));
  auto* const halves = findChild<QSplitter*>(QStringLiteral("splitter"));
  if (places == nullptr || halves == nullptr) return;
  const int wide = places->sizeHintForColumn(0) + 4 * fontMetrics().averageCharWidth();
  const int tall = 28 * fontMetrics().lineSpacing();
  resize(sizeHint().expandedTo({6 * wide + wide / 2, tall}));
  halves->setSizes({wide, width() - wide});
  // In the detailed view names take what the other columns leave.
  if (const auto* const details = findChild<QTreeView*>(QStringLiteral("treeView"))) {
    details->header()->setStretchLastSection(false);
    details->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    details->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  }
}

void file_dialog::accept() {
  // Qt would look for a folder's name with the extension behind it, and leave the name of one that it enters
  // in the box, where the next Enter answers with it.
  auto* const name = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  // Closed together with the dialog, the list of completions would leave Qt with no active window, though the
  // window gets the keys: a screen reader would say no more until another window opens.
  if (name != nullptr && name->completer() != nullptr) name->completer()->popup()->hide();
  const QFileInfo typed(directory(), name != nullptr ? name->text() : QString());
  if (name == nullptr || name->text().isEmpty() || !typed.isDir()) {
    // Qt would add the extension to every name that has none, and so never open a file without one.
    const QString extension = defaultSuffix();
    const bool in_full = acceptMode() == AcceptOpen && file_exists(find_file(typed.filePath().toStdString()));
    if (in_full) setDefaultSuffix({});
    QFileDialog::accept();
    // Closed, the dialog is still to be asked what was chosen.
    if (in_full && result() != Accepted) setDefaultSuffix(extension);
    return;
  }
  setDirectory(typed.absoluteFilePath());
  name->clear();
}

}  // namespace estructura
