// The driver of the window in real widgets: acts with mouse and keys on the widgets, found by their names,
// and reads everything a person could see back from them.
//
//   escritorio desk;
//   conductor_ventana driver(desk);     // the window, shown, just after its load event
//   driver.click(lugar_de("eje1"));     // press and release of the left button on the widget
//
// Not read from widgets, since no widget has them: the machine, the documents' names, and a label's tag.
#pragma once

#include "guion/conductor.h"
#include "guion/escritorio.h"
#include "ui/qt/anfitrion_qt.h"
#include "ui/qt/ventana.h"

namespace estructura::guiones {

class conductor_ventana final : public in_process_conductor {
 public:
  explicit conductor_ventana(escritorio& desk);

  Estructura& window() override { return window_; }

  void click(const lugar& place) override;
  void click_text(const lugar& place, int caret) override;
  void keyup_text(const lugar& place, int caret) override;
  void dblclick(const lugar& place) override;
  void click_row(const lugar& place, int row, bool control_held) override;
  void dblclick_row(const lugar& place, int row) override;
  void pick(const lugar& place, int entry) override;
  void type(const lugar& place, std::string_view text) override;
  void select(const lugar& place, int start, int length) override;
  void enter(const lugar& place) override;
  void focus(const lugar& place) override;
  void press_map(double y) override;
  void close() override;
  void set_clipboard(std::string_view text) override;

  bool usable(const lugar& place) override;
  aspecto look(const lugar& place) override;
  map_view look_map() override;
  std::string focused() override;
  std::string clipboard() override;

 private:
  class host : public anfitrion_guiado<anfitrion_qt> {
   public:
    using anfitrion_guiado::anfitrion_guiado;
    void watch(const Estructura& window) { watched_ = &window; }

   protected:
    int attend() override;

   private:
    const Estructura* watched_ = nullptr;
  };

  /// The widget of a control, up to date.
  template <class Widget = QWidget>
  Widget& widget(const lugar& place);

  host host_;
  Estructura window_;
  ventana shown_;
};

}  // namespace estructura::guiones
