// Where the window says by itself what changed. Nobody sees it: it takes no room and paints nothing.
//
//   live_region region(&window);
//   region.say("PC 000, W 05.");
//
// For screen readers it is a notification within a status bar. They speak a notification as soon as it is
// shown, wherever the focus is; within a status bar they do so without the word "notificación" before it, and
// the command that reads the status bar repeats it.
#pragma once

#include <string>

#include <QWidget>

namespace estructura {

/// Told apart from any other widget by their types (ui/qt/speech/accessible_objects.cpp).
class live_notice final : public QWidget {
 public:
  using QWidget::QWidget;
};

class live_region final : public QWidget {
 public:
  explicit live_region(QWidget* parent);

  void say(const std::string& sentence);

 private:
  live_notice* notice_;
};

}  // namespace estructura
