// The map of program memory: a row for each address, its left half yellow where a word is programmed and blue
// where there is a breakpoint, the marker of the last step in red on the right half; and the margins beside
// it.
//
//   map.set_view(window.look_map());
//   map.scale(), map.row(0x1FF), map.marker()
//   new map_margin(map, map_margin::marks::breakpoints);
//
// An address paints its own rows of pixels and no others, one at the least. Where several share one, a
// breakpoint is seen before a word, and a word before none. So thin a row is easily overlooked: what points
// at it stands beside the map, a disc at each breakpoint and an arrow head at the marker.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include <QFrame>

#include "ui/estructura.h"

namespace estructura {

class memory_map final : public QFrame {
 public:
  memory_map();

  /// Mouse-down at this height of the scale.
  std::function<void(double y)> pressed;

  void set_view(const map_view& view);
  /// A widget that shows what the map shows, and is painted anew with it.
  void add_margin(QWidget* margin) { margins_.push_back(margin); }

  // What was last given, for whoever looks from outside.
  [[nodiscard]] int scale() const { return view_.scale; }
  [[nodiscard]] map_colour row(int address) const { return view_.rows[address]; }
  [[nodiscard]] int marker() const { return view_.marker; }
  /// Height within the widget of a row of the scale, and back.
  [[nodiscard]] double y_of_row(double row) const;
  [[nodiscard]] double row_at(double height) const;

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  struct pixel_rows {
    int from;
    int to;  ///< not included
  };
  /// Rows of pixels of an address, of `pixels` that there are.
  [[nodiscard]] pixel_rows rows_of(int address, int pixels) const;
  void paint(QPainter& painter, const QRect& area) const;

  map_view view_;
  std::vector<QWidget*> margins_;
};

/// The strip at one side of the map, as high as it, that shows where its breakpoints or its marker are.
class map_margin final : public QWidget {
 public:
  enum class marks : std::uint8_t { breakpoints, marker };

  map_margin(memory_map& map, marks shown);

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  /// A press beside a row means the row.
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void paint_breakpoints(QPainter& painter) const;
  void paint_marker(QPainter& painter) const;
  /// Height of the middle of an address, where a mark of this size is not cut.
  [[nodiscard]] double centre(int address, double half) const;

  memory_map& map_;
  marks shown_;
};

}  // namespace estructura
