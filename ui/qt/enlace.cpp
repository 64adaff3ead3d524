#include "ui/qt/enlace.h"

#include <type_traits>

#include <QAction>

#include "ui/qt/cuadro_texto.h"
#include "ui/qt/iconos.h"
#include "ui/qt/lista.h"
#include "ui/qt/mapa.h"
#include "ui/qt/piezas.h"
#include "ui/qt/texto_qt.h"

namespace estructura {

namespace {

template <class Button>
class enlace_boton final : public enlace {
 public:
  enlace_boton(const control& record, puerta& door) : enlace(record, door), button_(new Button) {
    QObject::connect(button_, &QAbstractButton::clicked, button_,
                     [this] { actua([this](Estructura& window) { window.click(which(), index()); }); });
    button_->setIcon(icono(record.which()));
    // As by its function key; and one pulse after the other.
    if constexpr (std::is_same_v<Button, pulsador>)
      button_->repeats = record.which() == id::eje1 || record.which() == id::TOCKI;
    if constexpr (std::is_same_v<Button, casilla>) button_->solo_muestra = record.which() == id::estsleep;
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
  enlace_rotulo(const control& record, puerta& door) : enlace(record, door), label_(new rotulo) {
    label_->setTextFormat(Qt::PlainText);
    if (record.which() != id::ciclos) return;
    label_->doble_click = [this] {
      actua([this](Estructura& window) { window.dblclick(which(), index()); });
    };
    // The same without a mouse: a label takes no focus.
    auto* reset = new QAction(QStringLiteral("Poner a cero"), label_);
    reset->setShortcut(Qt::CTRL | Qt::Key_0);
    QObject::connect(reset, &QAction::triggered, label_, [this] { label_->doble_click(); });
    label_->addAction(reset);
  }
  [[nodiscard]] QWidget* widget() const override { return label_; }

 protected:
  void muestra(const control& from) override {
    if (from.text() == shown_) return;
    shown_ = from.text();
    label_->setText(a_qt(shown_));
  }

 private:
  rotulo* label_;
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
  enlace_marco(const control& record, puerta& door) : enlace(record, door), box_(new marco) {}
  [[nodiscard]] QWidget* widget() const override { return box_; }

 protected:
  void muestra(const control& from) override { box_->pon_titulo(a_qt(from.text())); }

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
    case kind::check: return std::make_unique<enlace_boton<casilla>>(record, door);
    case kind::option: return std::make_unique<enlace_boton<opcion>>(record, door);
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
  // Hidden controls keep their place, so that nothing jumps when the device changes.
  QSizePolicy policy = widget.sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  widget.setSizePolicy(policy);
  return link;
}

}  // namespace estructura
