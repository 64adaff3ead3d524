// The window in real widgets: one for each control of `Estructura`, named after it. It shows the record and
// tells it what the person does; no rule of the simulator stands here.
//
//   qt_host host;
//   Estructura window(host);
//   window.Form_Load();
//   ventana shown(window);
//   host.pon_ventana(&shown);
//   shown.show();
//
// It must outlive every action: an action may run nested event loops (boxes, a continuous run), and the
// window is still used when they return.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include <QMainWindow>

#include "ui/announcement.h"
#include "ui/estructura.h"
#include "ui/qt/composicion.h"
#include "ui/qt/enlace.h"
#include "ui/qt/nombres_accesibles.h"
#include "ui/qt/novedades.h"
#include "ui/qt/piezas.h"

class QScrollArea;

namespace estructura {

class live_region;
class mapa_qt;
class vista_lista;

class ventana final : public QMainWindow, private puerta {
 public:
  explicit ventana(Estructura& window, QWidget* parent = nullptr);
  ~ventana() override;
  ventana(const ventana&) = delete;
  ventana& operator=(const ventana&) = delete;

  /// Brings the record up to date and copies to the widgets what changed in it.
  void actualiza();

  /// A button's function key.
  void pulsa(id which);

  /// The widget of a control; the member `index` of a group.
  [[nodiscard]] QWidget* widget_of(id which, int index = 0) const;
  [[nodiscard]] Estructura& estructura() { return window_; }
  using puerta::copiando;
  /// The size below which the window scrolls its controls, in logical pixels; the letters' size fixes it.
  [[nodiscard]] QSize least() const;

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void actua(enlace& from, const std::function<void(Estructura&)>& action) override;
  void construye();
  void derriba();
  void toma_colores();
  void foco_movido(const QWidget* now);
  void ensena(QWidget* focus);
  void show_step_line();
  void copia_foco();
  void announce();
  [[nodiscard]] enlace& enlace_de(id which, int index) const;

  Estructura& window_;
  std::vector<std::unique_ptr<enlace>> links_;  ///< in the order of Estructura::look_all()
  std::array<int, static_cast<std::size_t>(id_count)>
      first_{};  ///< place in links_ of each control's first member
  std::unordered_map<const QWidget*, enlace*> by_widget_;
  std::vector<std::size_t> late_;
  std::unique_ptr<composicion> layout_;
  std::unique_ptr<nombres_accesibles> names_;
  marcas_a_medida marks_;
  std::unique_ptr<novedades> news_;
  announcer announcer_;
  live_region* live_ = nullptr;
  std::optional<QPalette> desktop_colours_;  ///< those that the window's are made of
  QScrollArea* area_ = nullptr;
  mapa_qt* map_ = nullptr;
  vista_lista* program_ = nullptr;
  unsigned shown_rows_ = 0;  ///< of the program list, when it was last looked at
  bool closing_ = false;
};

}  // namespace estructura
