// The driver of the window in real widgets: acts with mouse and keys on the widgets, found by their names,
// and reads everything a person could see back from them.
//
//   scripted_desktop desk;
//   qt_driver driver(desk);     // the window, shown, just after its load event
//   driver.click(place_of("eje1"));     // press and release of the left button on the widget
//
// Not read from widgets, since no widget has them: the machine, the documents' names, and a label's tag.
#pragma once

#include "guion/scripted_desktop.h"
#include "guion/window_driver.h"
#include "ui/qt/window/main_window.h"
#include "ui/qt/window/qt_host.h"

namespace estructura::guiones {

class qt_driver final : public in_process_driver {
 public:
  explicit qt_driver(scripted_desktop& desk);

  Estructura& window() override { return window_; }

  void click(const script_place& place) override;
  void click_text(const script_place& place, int caret) override;
  void keyup_text(const script_place& place, int caret) override;
  void dblclick(const script_place& place) override;
  void click_row(const script_place& place, int row, bool control_held) override;
  void dblclick_row(const script_place& place, int row) override;
  void pick(const script_place& place, int entry) override;
  void type(const script_place& place, std::string_view text) override;
  void select(const script_place& place, int start, int length) override;
  void enter(const script_place& place) override;
  void focus(const script_place& place) override;
  void press_map(double y) override;
  void close() override;
  void set_clipboard(std::string_view text) override;

  bool usable(const script_place& place) override;
  appearance look(const script_place& place) override;
  map_view look_map() override;
  std::string focused() override;
  std::string clipboard() override;

 private:
  class host : public scripted_host<qt_host> {
   public:
    using scripted_host::scripted_host;
    void watch(const Estructura& window) { watched_ = &window; }

   protected:
    int attend() override;

   private:
    const Estructura* watched_ = nullptr;
  };

  /// The widget of a control, up to date.
  template <class Widget = QWidget>
  Widget& widget(const script_place& place);

  host host_;
  Estructura window_;
  main_window shown_;
};

}  // namespace estructura::guiones
