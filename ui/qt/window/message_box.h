// A box or question of the program, Spanish whatever the desktop's language, that is not answered by
// accident.
//
//   message_box shown(window, box::yesno, "¿Salvar?");
//   switch (shown.exec()) { case QMessageBox::Yes: ... }
#pragma once

#include <string_view>

#include <QMessageBox>

#include "ui/window_host.h"

namespace estructura {

/// Desktops differ in the order of Sí, No and Cancelar; here it is always this one. For boxes and dialogs
/// alone: a style sheet of the whole program would make every widget of the window dearer to paint.
inline constexpr const char* fixed_button_order = "QDialogButtonBox { button-layout: 0 }";

class message_box final : public QMessageBox {
 public:
  message_box(QWidget* parent, box kind, std::string_view text);

  void reject() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void ask(bool can_cancel);
  void tell(bool right_aligned);

  bool only_answers_ = false;
};

}  // namespace estructura
