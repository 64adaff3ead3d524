// The widgets that most controls of the window are made of, and what stands around them.
//
//   auto* button = new pulsador;                     // as narrow as it is told to be
//   auto* label = new rotulo;
//   label->pon_novedades(0b00001000);                // the fourth character from the right has changed
#pragma once

#include <cstdint>
#include <functional>

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QProxyStyle>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>

namespace estructura {

/// A check box or option button that leaves its value to the record: a click only tells.
template <class Button>
class boton_obediente : public Button {
 public:
  using Button::Button;

 protected:
  void nextCheckState() override {}
};

/// Check boxes and option buttons with marks of our own: in dark palettes some styles draw boxes without an
/// edge, and those that cannot be used like the others. What can be used is a sheet with a firm edge, what
/// cannot has a dotted one.
class casilla final : public boton_obediente<QCheckBox> {
 public:
  bool solo_muestra = false;  ///< a click leaves it as it is: its edge is dotted too

 protected:
  void paintEvent(QPaintEvent* event) override;
};

class opcion final : public boton_obediente<QRadioButton> {
 protected:
  void paintEvent(QPaintEvent* event) override;
};

/// Gives those marks the size of the letters beside them; styles know one size only.
class marcas_a_medida final : public QProxyStyle {
 public:
  [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                const QWidget* widget) const override;
};

/// A push button as wide as it was told to be at least: styles would make a short caption's button wide.
class pulsador final : public QPushButton {
 public:
  bool repeats = false;  ///< the Enter key, held down, goes on pressing it

  pulsador();
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

/// The wheel or a key over the closed list would change the device, and forget what is unsaved, of someone
/// who only wants to scroll or to go on: keys open the list.
class combo_quieto final : public QComboBox {
 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
};

class rotulo final : public QLabel {
 public:
  std::function<void()> doble_click;

  /// Where it may be narrower than its text (names of files), the text ends in an ellipsis.
  void recorta();
  /// What changed of the text: a bit for each character, the last one's lowest.
  void pon_novedades(std::uint32_t characters);
  [[nodiscard]] std::uint32_t marcados() const { return novedades_; }

  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  void pinta_novedades();

  bool recorta_ = false;
  std::uint32_t novedades_ = 0;
};

/// A group of controls: its title and a thin line, and nothing around it. Without a title it draws nothing.
class marco final : public QGroupBox {
 public:
  /// Height of the title's line, of any group of the window.
  static int alto_titulo(const QWidget& where);

  void pon_titulo(const QString& title);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void pon_margen();
};

/// The thin line behind the title of a group that is no frame.
class raya final : public QWidget {
 public:
  raya();

 protected:
  void paintEvent(QPaintEvent* event) override;
};

/// Two panes and the handle between them, which shows quietly where it can be taken.
class repartidor final : public QSplitter {
 public:
  repartidor();

 protected:
  QSplitterHandle* createHandle() override;
};

}  // namespace estructura
