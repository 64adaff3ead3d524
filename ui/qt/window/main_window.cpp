#include "ui/qt/window/main_window.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QCloseEvent>
#include <QLayout>
#include <QScreen>
#include <QScrollArea>
#include <QTimer>

#include "ui/qt/bindings/make_binding.h"
#include "ui/qt/look/colours.h"
#include "ui/qt/look/icons.h"
#include "ui/qt/speech/accessible_events.h"
#include "ui/qt/speech/accessible_objects.h"
#include "ui/qt/speech/live_region.h"
#include "ui/qt/widgets/form_area.h"
#include "ui/qt/widgets/list_view.h"
#include "ui/qt/widgets/memory_map.h"
#include "ui/qt/window/shortcuts.h"

namespace estructura {

namespace {

/// The smallest room that letters shrink for, a screen less what the desktop takes for title bar and panel.
/// In a smaller one the panel is scrolled.
constexpr int least_width = 1280;
constexpr int least_height = 640;
/// The size it opens with where there is room.
constexpr int first_width = 1480;
constexpr int first_height = 860;
/// Below this letters are no longer read with pleasure.
constexpr double smallest_letter_pt = 7.5;

QSize available_room() {
  const QScreen* const screen = QGuiApplication::primaryScreen();
  const QSize room = screen != nullptr ? screen->availableSize() : QSize(least_width, least_height);
  // The title bar is not known before the window is shown; the height of letters is.
  return {room.width(), room.height() - QFontMetrics(QApplication::font()).height() * 5 / 2};
}

bool fits(const QSize& size, const QSize& room) {
  return size.width() <= room.width() && size.height() <= room.height();
}

}  // namespace

main_window::main_window(Estructura& window, QWidget* parent) : QMainWindow(parent), window_(window) {
  setObjectName(QStringLiteral("Estructura"));
  setWindowTitle(QStringLiteral("Estructura"));
  setWindowIcon(program_icon());
  take_colours();
  // Whoever asks for a widget sooner is answered without what follows.
  install_accessible_objects();
  live_ = new live_region(this);
  // What is there at the start is no news.
  static_cast<void>(announcer_.news(window_));
  build();
  // A desktop with large letters on a small screen: somewhat smaller ones rather than a panel that is
  // scrolled.
  const QSize room = available_room();
  const QSize fit = room.expandedTo(QSize(least_width, least_height));
  for (QFont smaller = font(); !fits(least(), fit) && smaller.pointSizeF() > smallest_letter_pt;) {
    smaller.setPointSizeF(smaller.pointSizeF() - 0.5);
    tear_down();
    setFont(smaller);
    build();
  }
  resize(least().expandedTo(QSize(first_width, first_height)).boundedTo(room));
  QObject::connect(qApp, &QApplication::focusChanged, this, [this](const QWidget*, QWidget* now) {
    bring_into_sight(now);
    focus_moved(now);
  });
  add_shortcuts(*this, [this](id button) { press(button); });
}

main_window::~main_window() {
  // Widgets that go lose the focus and tell; nobody is to listen any more.
  QObject::disconnect(qApp, nullptr, this, nullptr);
  tear_down();
}

void main_window::tear_down() {
  const copy_in_progress lock(*this);
  delete takeCentralWidget();
  layout_.reset();
  news_.reset();
  by_widget_.clear();
  bindings_.clear();
}

void main_window::build() {
  const panel_metrics measures(font());
  const control_list& controls = window_.look_all();
  area_ = new QScrollArea;
  area_->setFrameShape(QFrame::NoFrame);
  area_->setFocusPolicy(Qt::NoFocus);
  area_->setWidgetResizable(true);
  auto* const panel = new form_area;
  area_->setWidget(panel);
  setCentralWidget(area_);
  const auto find = [this](id which, int index) { return widget_of(which, index); };
  names_ = std::make_unique<widget_names>(window_, find);
  make_bindings(measures, *panel);
  layout_ = std::make_unique<window_layout>(
      *panel, find, [this](id which, QWidget* companion) { binding_of(which, 0).accompany(companion); },
      measures);
  // What was measured before it stood on the panel was measured with the application's letters, which may be
  // larger; layouts remember that until the window is shown.
  for (QLayout* const layout : panel->findChildren<QLayout*>()) layout->invalidate();
  map_ = static_cast<memory_map*>(widget_of(id::mapa));
  program_ = static_cast<list_view*>(widget_of(id::MP));
  news_ = std::make_unique<change_marks>(controls, find);
  names_->attach();
  set_tab_order();
  // At the start no control has the focus; the panel takes it and shows nothing.
  panel->setFocus();
  refresh();
}

void main_window::make_bindings(const panel_metrics& measures, QWidget& panel) {
  const copy_in_progress lock(*this);
  first_.fill(-1);
  for (const control& record : window_.look_all()) {
    int& first = first_[static_cast<std::size_t>(record.which())];
    if (first < 0) first = static_cast<int>(bindings_.size());
    bindings_.push_back(make_binding(record, *this, measures, &panel));
    binding& made = *bindings_.back();
    by_widget_[made.widget()] = &made;
    if (record.is() == kind::check || record.is() == kind::option) made.widget()->setStyle(&marks_);
    // The captions come before the layout, which is made of their sizes.
    made.prepare(record);
  }
}

/// The Tab key walks the controls in the order of their table, the boxes of a port from the left, where bit 7
/// stands.
void main_window::set_tab_order() {
  for (const control& record : window_.look_all())
    if (skipped_by_tab(record.which()))
      widget_of(record.which(), record.index())->setFocusPolicy(Qt::ClickFocus);
  QWidget* before = nullptr;
  for (int i = 0; i < id_count; ++i) {
    const declaration& row = declared(static_cast<id>(i));
    const bool pins = row.frame == id::Frame5 && row.is == kind::check;
    for (int member = 0; member < row.count; ++member) {
      QWidget* const widget = widget_of(row.which, pins ? row.count - 1 - member : member);
      if ((widget->focusPolicy() & Qt::TabFocus) == 0) continue;
      if (before != nullptr) setTabOrder(before, widget);
      before = widget;
    }
  }
}

QSize main_window::least() const {
  return area_->widget()->minimumSizeHint();
}

binding& main_window::binding_of(id which, int index) const {
  const int place = first_[static_cast<std::size_t>(which)] + index;
  return *bindings_[static_cast<std::size_t>(place)];
}

QWidget* main_window::widget_of(id which, int index) const {
  return binding_of(which, index).widget();
}

void main_window::perform(binding& from, const std::function<void(Estructura&)>& action) {
  if (copying()) return;
  // The widget has changed already; whatever the record makes of it is copied back.
  from.forget();
  action(window_);
  from.forget();
  refresh();
}

void main_window::press(id which) {
  perform(binding_of(which, 0), [which](Estructura& window) { window.press(which); });
}

void main_window::refresh() {
  window_.bring_up_to_date();
  const control_list& controls = window_.look_all();
  const copy_in_progress lock(*this);
  const QWidget* const focus = focusWidget();
  late_.clear();
  for (std::size_t i = 0; i < bindings_.size(); ++i) {
    if (!bindings_[i]->is_stale(controls[i])) continue;
    // A widget that is disabled or hidden with the focus on it passes it on as it likes: the focus moves
    // first.
    const QWidget* const widget = bindings_[i]->widget();
    if (widget == focus || (focus != nullptr && widget->isAncestorOf(focus)))
      late_.push_back(i);
    else
      bindings_[i]->copy(controls[i]);
  }
  copy_focus();
  for (const std::size_t i : late_) bindings_[i]->copy(controls[i]);
  if (!late_.empty()) copy_focus();
  layout_->arrange();
  map_->set_view(window_.look_map());
  program_->set_next_row(window_.chip().cpu.pc);
  news_->update(controls, window_.chip().running);
  names_->refresh();
  if (!window_.chip().running)
    for (const std::unique_ptr<binding>& link : bindings_) say_held_back(*link->widget());
  announce();
  show_step_line();
}

// Where the window scrolls its controls, the program list may be out of sight: a step brings the line there.
void main_window::show_step_line() {
  const control& list = window_.look(id::MP);
  const bool again = std::exchange(shown_rows_, list.shown_rows()) != list.shown_rows();
  const chipstate& chip = window_.chip();
  if (!again || !isVisible() || chip.running || list.row() != chip.cpu.pc) return;
  // A button must not move from under the mouse that clicks it one time after the other.
  if (QApplication::mouseButtons() != Qt::NoButton || widget_of(id::eje1)->underMouse()) return;
  const QWidget& lines = *program_->viewport();
  const QRect line = program_->visualRect(program_->currentIndex());
  if (line.isEmpty() || lines.visibleRegion().boundingRect().contains(line)) return;
  const QRect place(lines.mapTo(area_->widget(), line.topLeft()), line.size());
  area_->ensureVisible(place.center().x(), place.center().y(), place.width() / 2 + 1, place.height());
}

// --- focus ---

void main_window::copy_focus() {
  const control_place place = window_.focused();
  QWidget* const wanted = place.which == id::none ? area_->widget() : widget_of(place.which, place.index);
  if (focusWidget() != wanted) wanted->setFocus();
}

void main_window::bring_into_sight(QWidget* focus) {
  // A button must not move from under the mouse that is about to click it.
  if (focus == nullptr || focus == area_->widget() || QApplication::mouseButtons() != Qt::NoButton) return;
  if (area_->isAncestorOf(focus)) area_->ensureWidgetVisible(focus);
}

void main_window::focus_moved(const QWidget* now) {
  if (copying() || now == nullptr) return;
  const auto found = by_widget_.find(now);
  if (found == by_widget_.end()) return;
  binding& link = *found->second;
  if (window_.focused() == control_place{link.which(), link.index()}) return;
  perform(link, [&](Estructura& window) { window.focus(link.which(), link.index()); });
}

// --- what is said by itself ---

void main_window::announce() {
  // Said while another window is in front, it would be cut short by the reader's telling of the next one.
  if (isActiveWindow()) live_->say(announcer_.news(window_));
}

// --- colours ---

void main_window::take_colours() {
  // Setting the palette comes back here.
  if (desktop_colours_ == QApplication::palette()) return;
  desktop_colours_ = QApplication::palette();
  const QPalette readable = readable_palette(*desktop_colours_);
  setPalette(readable);
  // Menus are windows of their own and would take the desktop's.
  QApplication::setPalette(readable, "QMenu");
}

void main_window::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) take_colours();
  // After the focus, which is told first.
  if (event->type() == QEvent::ActivationChange) QTimer::singleShot(0, this, [this] { announce(); });
}

// --- closing ---

void main_window::closeEvent(QCloseEvent* event) {
  event->accept();
  // Asked once: the questions of closing may run a nested loop in which the window is closed again.
  if (closing_ || window_.ended()) return;
  closing_ = true;
  window_.close_request();
}

}  // namespace estructura
