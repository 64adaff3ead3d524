#include "ui/qt/enlace.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QWheelEvent>

#include "ui/qt/cuadro_texto.h"
#include "ui/qt/iconos.h"
#include "ui/qt/lista.h"
#include "ui/qt/mapa.h"
#include "ui/qt/nombres_accesibles.h"
#include "ui/qt/texto_qt.h"

namespace estructura {

namespace {

/// A check box or option button that leaves its value to the record: a click only tells.
template <class Button>
class boton_obediente : public Button {
 public:
  using Button::Button;

 protected:
  void nextCheckState() override {}
};

/// A push button as wide as it was told to be at least: styles would make a short caption's button wide.
class pulsador : public QPushButton {
 public:
  pulsador() {
    // The Enter key presses it too, as in a dialog.
    setAutoDefault(true);
  }
  [[nodiscard]] QSize sizeHint() const override {
    const QSize styled = QPushButton::sizeHint();
    return {minimumWidth() > 0 ? minimumWidth() : styled.width(), styled.height()};
  }
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
};

class combo_quieto : public QComboBox {
 protected:
  /// The wheel over the closed list would change the device of someone who only wants to scroll.
  void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

class rotulo_doble : public QLabel {
 public:
  std::function<void()> doble_click;

 protected:
  /// A text that does not fit ends in an ellipsis where the label may be narrower than it (names of files).
  void paintEvent(QPaintEvent* event) override {
    const QRect room = contentsRect();
    if (sizePolicy().horizontalPolicy() != QSizePolicy::Ignored ||
        fontMetrics().horizontalAdvance(text()) <= room.width()) {
      QLabel::paintEvent(event);
      return;
    }
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideMiddle, room.width()));
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton && doble_click) doble_click();
  }
};

/// A frame; without a title it draws nothing, it only groups.
class marco : public QGroupBox {
 public:
  explicit marco(bool bare) : bare_(bare) {}

 protected:
  void paintEvent(QPaintEvent* event) override {
    if (!bare_) QGroupBox::paintEvent(event);
  }

 private:
  bool bare_;
};

template <class Button>
class enlace_boton final : public enlace {
 public:
  enlace_boton(const control& record, puerta& door) : enlace(record, door), button_(new Button) {
    QObject::connect(button_, &QAbstractButton::clicked, button_,
                     [this] { actua([this](Estructura& window) { window.click(which(), index()); }); });
    button_->setIcon(icono(record.which()));
    // Options of a pair do not exclude each other here: the record says which one is chosen.
    button_->setAutoExclusive(false);
  }
  [[nodiscard]] QWidget* widget() const override { return button_; }

 protected:
  void muestra(const control& from) override {
    if (const QString text = a_qt(from.text()); button_->text() != text) button_->setText(text);
    if (button_->isChecked() != from.value()) button_->setChecked(from.value());
  }

 private:
  Button* button_;
};

class enlace_rotulo final : public enlace {
 public:
  enlace_rotulo(const control& record, puerta& door) : enlace(record, door), label_(new rotulo_doble) {
    label_->setTextFormat(Qt::PlainText);
    if (record.which() == id::ciclos)
      label_->doble_click = [this] {
        actua([this](Estructura& window) { window.dblclick(which(), index()); });
      };
  }
  [[nodiscard]] QWidget* widget() const override { return label_; }

 protected:
  void muestra(const control& from) override {
    if (from.text() == shown_) return;
    shown_ = from.text();
    label_->setText(a_qt(shown_));
  }

 private:
  rotulo_doble* label_;
  std::string shown_;
};

class enlace_combo final : public enlace {
 public:
  enlace_combo(const control& record, puerta& door) : enlace(record, door), combo_(new combo_quieto) {
    QObject::connect(combo_, &QComboBox::textActivated, combo_, [this](const QString& entry) {
      actua([&](Estructura& window) { window.pick(which(), entry.toStdString()); });
    });
  }
  [[nodiscard]] QWidget* widget() const override { return combo_; }

 protected:
  void muestra(const control& from) override {
    if (combo_->count() != from.count() || rows_seen_ != from.row_changes()) {
      rows_seen_ = from.row_changes();
      combo_->clear();
      for (const std::string& entry : from.rows()) combo_->addItem(a_qt(entry));
    }
    const int at = combo_->findText(a_qt(from.text()), Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (combo_->currentIndex() != at) combo_->setCurrentIndex(at);
  }

 private:
  combo_quieto* combo_;
  unsigned rows_seen_ = 0;
};

class enlace_marco final : public enlace {
 public:
  enlace_marco(const control& record, puerta& door)
      : enlace(record, door), box_(new marco(record.which() == id::clip)) {}
  [[nodiscard]] QWidget* widget() const override { return box_; }

 protected:
  void muestra(const control& from) override {
    if (const QString title = a_qt(from.text()); box_->title() != title) box_->setTitle(title);
  }

 private:
  marco* box_;
};

class enlace_mapa final : public enlace {
 public:
  enlace_mapa(const control& record, puerta& door) : enlace(record, door), map_(new mapa_qt) {
    map_->pulsado = [this](double y) { actua([y](Estructura& window) { window.press_map(y); }); };
  }
  [[nodiscard]] QWidget* widget() const override { return map_; }

 protected:
  /// What it shows is no property of the record: the window gives it the map (ventana::actualiza).
  void muestra(const control&) override {}

 private:
  mapa_qt* map_;
};

std::unique_ptr<enlace> por_clase(const control& record, puerta& door, const medidas& measures) {
  switch (record.is()) {
    case kind::button: return std::make_unique<enlace_boton<pulsador>>(record, door);
    case kind::check: return std::make_unique<enlace_boton<boton_obediente<QCheckBox>>>(record, door);
    case kind::option: return std::make_unique<enlace_boton<boton_obediente<QRadioButton>>>(record, door);
    case kind::label: return std::make_unique<enlace_rotulo>(record, door);
    case kind::combo: return std::make_unique<enlace_combo>(record, door);
    case kind::frame: return std::make_unique<enlace_marco>(record, door);
    case kind::picture: return std::make_unique<enlace_mapa>(record, door);
    case kind::list: return enlaza_lista(record, door, measures);
    case kind::text: break;
  }
  return enlaza_texto(record, door, measures);
}

}  // namespace

void enlace::copia(const control& from) {
  QWidget& target = *widget();
  visto_ = true;
  cambios_ = from.changes();
  muestra(from);
  if (const QString tip = a_qt(from.tip()); target.toolTip() != tip) target.setToolTip(tip);
  // Until told, a widget has no flag of its own and would be shown with its window.
  if (target.isHidden() == from.visible() || !target.testAttribute(Qt::WA_WState_ExplicitShowHide)) {
    target.setVisible(from.visible());
    for (QWidget* companion : companions_) companion->setVisible(from.visible());
  }
  // Its own flag: a frame's would be mixed in by isEnabled().
  if (target.testAttribute(Qt::WA_ForceDisabled) == from.enabled()) target.setEnabled(from.enabled());
}

std::unique_ptr<enlace> enlaza(const control& record, puerta& door, const medidas& measures, QWidget* panel) {
  std::unique_ptr<enlace> link = por_clase(record, door, measures);
  QWidget& widget = *link->widget();
  widget.setParent(panel);
  widget.setObjectName(a_qt(record.name()));
  widget.setAccessibleName(nombre_accesible(record));
  // Hidden controls keep their place, so that nothing jumps when the device changes.
  QSizePolicy policy = widget.sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  widget.setSizePolicy(policy);
  return link;
}

}  // namespace estructura
