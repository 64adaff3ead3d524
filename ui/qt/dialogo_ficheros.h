// The file dialog of every command, Spanish whatever the desktop's language: Qt's own one, since that of the
// desktop speaks as the desktop does.
//
//   dialogo_ficheros dialog(window, true);
//   dialog.setNameFilters(...);
//   if (dialog.exec() == QDialog::Accepted) ...
#pragma once

#include <QFileDialog>
#include <QString>

namespace estructura {

/// The folder of the examples, for a program in this folder: where it is installed or where it was built.
/// Empty where there is none.
QString carpeta_ejemplos(const QString& program_folder);

class dialogo_ficheros final : public QFileDialog {
 public:
  dialogo_ficheros(QWidget* parent, bool save);

 protected:
  void accept() override;

 private:
  void da_sitio();
};

}  // namespace estructura
