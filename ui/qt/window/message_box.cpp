#include "ui/qt/window/message_box.h"

#include <utility>

#include <QAbstractButton>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>

#include "ui/qt/text/text_conversion.h"

namespace estructura {

namespace {

/// What the buttons say is left to the desktop's theme otherwise, which speaks the desktop's language.
void caption_buttons(QMessageBox& shown) {
  const std::pair<QMessageBox::StandardButton, const char*> captions[] = {
      {QMessageBox::Ok, "Aceptar"},
      {QMessageBox::Yes, "&Sí"},
      {QMessageBox::No, "&No"},
      {QMessageBox::Cancel, "Cancelar"},
  };
  for (const auto& [which, caption] : captions)
    if (QAbstractButton* const button = shown.button(which)) {
      button->setText(QString::fromUtf8(caption));
      button->setIcon({});
    }
}

}  // namespace

message_box::message_box(QWidget* parent, box kind, std::string_view text) : QMessageBox(parent) {
  setStyleSheet(QString::fromLatin1(fixed_button_order));
  setWindowTitle(QStringLiteral("Estructura"));
  // A file name may hold what looks like markup.
  setTextFormat(Qt::PlainText);
  setText(to_qt(text).replace(QLatin1Char('\r'), QLatin1Char('\n')));
  if (kind == box::yesno || kind == box::yesnocancel)
    ask(kind == box::yesnocancel);
  else
    tell(kind == box::ok_right);
  caption_buttons(*this);
}

void message_box::ask(bool can_cancel) {
  QMessageBox::StandardButtons answers = QMessageBox::Yes | QMessageBox::No;
  if (can_cancel) answers |= QMessageBox::Cancel;
  setStandardButtons(answers);
  setDefaultButton(QMessageBox::Yes);
  if (can_cancel) {
    setEscapeButton(QMessageBox::Cancel);
  } else {
    // Qt would take Escape and the box's close button for No, which may be the answer that loses what is
    // unsaved.
    only_answers_ = true;
    setWindowFlag(Qt::WindowCloseButtonHint, false);
  }
  // The Enter key that was held down as the question came up does not answer it.
  for (QAbstractButton* const button : buttons()) button->installEventFilter(this);
}

void message_box::tell(bool right_aligned) {
  setStandardButtons(QMessageBox::Ok);
  setDefaultButton(QMessageBox::Ok);
  if (!right_aligned) return;
  if (auto* label = findChild<QLabel*>(QStringLiteral("qt_msgbox_label")))
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void message_box::reject() {
  if (!only_answers_) QMessageBox::reject();
}

bool message_box::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QMessageBox::eventFilter(watched, event);
  const auto& key = static_cast<const QKeyEvent&>(*event);
  return key.isAutoRepeat() && (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter);
}

void message_box::keyPressEvent(QKeyEvent* event) {
  if (only_answers_ && event->matches(QKeySequence::Cancel)) return;
  QMessageBox::keyPressEvent(event);
}

void message_box::closeEvent(QCloseEvent* event) {
  if (only_answers_)
    event->ignore();
  else
    QMessageBox::closeEvent(event);
}

}  // namespace estructura
