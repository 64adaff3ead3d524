// Keeps from screen readers the events of what the program does to controls that the person is not at. A
// reader takes each of them to pieces with a dozen questions to the program, and Qt 6.4 sends them for lists
// without the focus as if they had just got it: a step chooses a line of the program list and fills in its
// address, and the reader would say that the focus went there.
//
//   class main_window : public QMainWindow, private run_display { ... };
//   install_accessible_events();          // once there is an application
//   say_held_back(widget);                // for each widget, when a run has stopped
//
// A run changes pins at every frame. What readers remember of a widget, its state, they are told when the run
// is over.
#pragma once

class QAccessibleEvent;
class QWidget;

namespace estructura {

/// What a window is that shows a run.
class run_display {
 public:
  run_display(const run_display&) = delete;
  run_display& operator=(const run_display&) = delete;

  /// Whether a frame of a run is being shown: then it is the run that changes the widgets.
  [[nodiscard]] virtual bool shows_a_run() const = 0;

 protected:
  run_display() = default;
  ~run_display() = default;
};

void install_accessible_events();

/// Whether readers are told of an event.
[[nodiscard]] bool is_told(const QAccessibleEvent& event);

/// Tells the state of a widget whose changes were held back during a run.
void say_held_back(QWidget& widget);

}  // namespace estructura
