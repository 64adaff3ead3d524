// The window in real widgets: one for each control of `Estructura`, named after it. It shows the record and
// tells it what the person does; no rule of the simulator stands here.
//
//   qt_host host;
//   Estructura window(host);
//   window.Form_Load();
//   main_window shown(window);
//   host.set_window(&shown);
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
#include "ui/qt/bindings/binding.h"
#include "ui/qt/speech/accessible_events.h"
#include "ui/qt/speech/widget_names.h"
#include "ui/qt/widgets/toggles.h"
#include "ui/qt/window/change_marks.h"
#include "ui/qt/window/layout.h"

class QScrollArea;

namespace estructura {

class live_region;
class memory_map;
class list_view;

class main_window final : public QMainWindow, public run_display, private action_sink {
 public:
  explicit main_window(Estructura& window, QWidget* parent = nullptr);
  ~main_window() override;
  main_window(const main_window&) = delete;
  main_window& operator=(const main_window&) = delete;

  /// Brings the record up to date and copies to the widgets what changed in it.
  void refresh();

  /// A button's function key.
  void press(id which);

  /// The widget of a control; the member `index` of a group.
  [[nodiscard]] QWidget* widget_of(id which, int index = 0) const;
  [[nodiscard]] Estructura& estructura() { return window_; }
  [[nodiscard]] bool shows_a_run() const override { return copying() && window_.chip().running; }
  /// The size below which the window scrolls its controls, in logical pixels; the letters' size fixes it.
  [[nodiscard]] QSize least() const;

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void perform(binding& from, const std::function<void(Estructura&)>& action) override;
  void build();
  void make_bindings(const panel_metrics& measures, QWidget& panel);
  void set_tab_order();
  void tear_down();
  void take_colours();
  void focus_moved(const QWidget* now);
  void bring_into_sight(QWidget* focus);
  void show_step_line();
  void copy_focus();
  void announce();
  [[nodiscard]] binding& binding_of(id which, int index) const;

  Estructura& window_;
  std::vector<std::unique_ptr<binding>> bindings_;  ///< in the order of Estructura::look_all()
  std::array<int, static_cast<std::size_t>(id_count)>
      first_{};  ///< place in bindings_ of each control's first member
  std::unordered_map<const QWidget*, binding*> by_widget_;
  std::vector<std::size_t> late_;
  std::unique_ptr<window_layout> layout_;
  std::unique_ptr<widget_names> names_;
  indicator_style marks_;
  std::unique_ptr<change_marks> news_;
  announcer announcer_;
  live_region* live_ = nullptr;
  std::optional<QPalette> desktop_colours_;  ///< those that the window's are made of
  QScrollArea* area_ = nullptr;
  memory_map* map_ = nullptr;
  list_view* program_ = nullptr;
  unsigned shown_rows_ = 0;  ///< of the program list, when it was last looked at
  bool closing_ = false;
};

}  // namespace estructura
