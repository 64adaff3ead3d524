// The file dialog of every command, Spanish whatever the desktop's language: Qt's own one, since that of the
// desktop speaks as the desktop does.
//
//   file_dialog dialog(window, true);
//   dialog.setNameFilters(...);
//   if (dialog.exec() == QDialog::Accepted) ...
#pragma once

#include <QFileDialog>
#include <QString>

namespace estructura {

/// The folder of the examples, for a program in this folder: where it is installed or where it was built.
/// Empty where there is none.
QString examples_folder(const QString& program_folder);

class file_dialog final : public QFileDialog {
 public:
  file_dialog(QWidget* parent, bool save);

 protected:
  void accept() override;

 private:
  void make_room();
};

}  // namespace estructura
