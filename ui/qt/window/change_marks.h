// What changed in the last action: the lines of registers and memory, the bits and the counters whose text is
// another than before it. A view of the views, kept on this side: the record does not know of it, and no text
// or background depends on it.
//
//   change_marks news(window.look_all(), find);
//   news.update(window.look_all(), window.chip().running);      // after each copy to the widgets
//
// An action that changes none of them (a line chosen, a letter typed) leaves the marks where they are. While
// a program runs nothing is marked; when it stops, all that changed since it started is.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "ui/control_set.h"

class QWidget;

namespace estructura {

/// The places at which two texts of the same length differ, a bit for each character, the last one's lowest;
/// all of them where the lengths differ.
[[nodiscard]] std::uint32_t difference(const std::string& before, const std::string& after);

class change_marks {
 public:
  using widget_finder = std::function<QWidget*(id which, int index)>;

  change_marks(const control_list& controls, const widget_finder& find);

  void update(const control_list& controls, bool running);

 private:
  struct watched_view {
    std::size_t place;  ///< among the controls
    QWidget* widget;
    unsigned seen;                    ///< changes of the record when `before` was taken
    std::vector<std::string> before;  ///< its lines, or its text alone
    std::uint32_t marks = 0;          ///< by line, the first lowest; by character
  };
  static void mark(const watched_view& view, std::uint32_t marks);

  std::vector<watched_view> views_;
  bool running_ = false;
};

}  // namespace estructura
