// The map of the program and the strips beside it, pixel by pixel.
#include "ui/qt/widgets/memory_map.h"

#include <cmath>
#include <gtest/gtest.h>
#include <set>
#include <vector>

#include <QTest>

#include "tests/support/shown_window.h"
#include "ui/qt/look/colours.h"

namespace estructura {
namespace {

class map_in_window : public support::shown_window {};

class painted_map : public testing::Test {
 protected:
  painted_map() { view.scale = 2050; }

  /// The map as painted, in the screen's own pixels, without its frame.
  QImage painted(int height, double ratio) {
    ++view.changes;
    map.set_view(view);
    map.resize(40, height + 2 * map.frameWidth());
    QImage picture(map.size() * ratio, QImage::Format_RGB32);
    picture.setDevicePixelRatio(ratio);
    map.render(&picture);
    const QRect area = map.contentsRect();
    QRect inside(area.topLeft() * ratio, area.size() * ratio);
    // The frame ends within a pixel where one unit is not a whole number of them.
    if (ratio != std::floor(ratio)) inside.adjust(1, 1, -1, -1);
    return picture.copy(inside);
  }
  /// Rows of pixels of a half that show a colour from end to end.
  static std::vector<int> rows(const QImage& picture, const QColor& colour, bool right) {
    std::vector<int> found;
    const int half = picture.width() / 2;
    for (int y = 0; y < picture.height(); ++y) {
      int x = right ? half : 0;
      const int end = right ? picture.width() : half;
      while (x < end && picture.pixelColor(x, y) == colour) ++x;
      if (x == end) found.push_back(y);
    }
    return found;
  }
  static std::set<QRgb> colours(const QImage& picture) {
    std::set<QRgb> found;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) found.insert(picture.pixel(x, y) & RGB_MASK);
    return found;
  }
  static QRgb plain(const QColor& colour) { return colour.rgb() & RGB_MASK; }

  map_view view;
  memory_map map;
};

class map_margins : public painted_map {
 protected:
  map_margins() {
    map.setParent(&panel);
    QPalette light;
    light.setColor(QPalette::Window, Qt::white);
    panel.setPalette(light);
  }
  ~map_margins() override { map.setParent(nullptr); }
  /// Heights of the strip's own pixels that are not its ground.
  std::vector<int> marked(map_margin& strip) {
    painted(410, 1);
    strip.setParent(&panel);
    strip.resize(12, map.height());
    QImage picture(strip.size(), QImage::Format_RGB32);
    picture.fill(Qt::white);
    strip.render(&picture, {}, {}, QWidget::DrawChildren);
    strip.setParent(nullptr);
    std::vector<int> found;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x)
        if (picture.pixelColor(x, y) != QColor(Qt::white)) {
          found.push_back(y);
          break;
        }
    return found;
  }
  QWidget panel;
};

// Heights that give several addresses to a pixel, and several pixels to an address.
TEST_F(painted_map, an_address_paints_its_own_rows_of_pixels_and_no_others) {
  struct row {
    int scale;
    int height;
    double ratio;
    int address;
    std::vector<int> expected;
  };
  for (const row& r :
       {row{2050, 410, 1, 1000, {200}}, row{2050, 410, 1, 2047, {409}}, row{2050, 410, 1, 0, {0}},
        row{2050, 410, 2, 1000, {400}}, row{513, 1026, 1, 100, {200, 201}},
        row{513, 513, 2, 511, {1022, 1023}}, row{513, 513, 1, 7, {7}}}) {
    view = {};
    view.scale = r.scale;
    view.rows[r.address] = map_colour::yellow;
    EXPECT_EQ(rows(painted(r.height, r.ratio), Qt::yellow, false), r.expected) << r.address;
    view.rows[r.address] = map_colour::blue;
    EXPECT_EQ(rows(painted(r.height, r.ratio), Qt::blue, false), r.expected) << r.address;
    view.rows[r.address] = map_colour::none;
    view.marker = r.address;
    const QImage picture = painted(r.height, r.ratio);
    EXPECT_EQ(rows(picture, Qt::red, true), r.expected) << r.address;
    EXPECT_EQ(rows(picture, map_ground(), false).size(), static_cast<std::size_t>(picture.height()));
  }
}

TEST_F(painted_map, knows_no_colour_but_its_three_and_the_ground) {
  for (int address = 0; address < 2048; address += 3) view.rows[address] = map_colour::yellow;
  for (int address = 0; address < 2048; address += 100) view.rows[address] = map_colour::blue;
  view.marker = 777;
  for (const double ratio : {1.0, 1.25, 1.5, 2.0})
    EXPECT_EQ(colours(painted(500, ratio)),
              (std::set<QRgb>{plain(Qt::yellow), plain(Qt::blue), plain(Qt::red), plain(map_ground())}))
        << ratio;
}

TEST_F(painted_map,
       of_several_addresses_on_one_pixel_shows_a_breakpoint_before_a_word_and_a_word_before_none) {
  // Five addresses to a pixel.
  view.rows[1001] = map_colour::yellow;
  EXPECT_EQ(rows(painted(410, 1), Qt::yellow, false), std::vector<int>{200});
  view.rows[1000] = map_colour::blue;
  EXPECT_EQ(rows(painted(410, 1), Qt::blue, false), std::vector<int>{200});
  view.rows[1000] = map_colour::yellow;
  view.rows[1004] = map_colour::blue;
  EXPECT_EQ(rows(painted(410, 1), Qt::blue, false), std::vector<int>{200});
  // The next pixel is another's.
  view.rows[1005] = map_colour::yellow;
  EXPECT_EQ(rows(painted(410, 1), Qt::yellow, false), std::vector<int>{201});
}

TEST_F(painted_map, a_press_of_any_button_counts_and_so_does_the_second_of_a_double_click) {
  std::vector<double> pressed;
  map.pressed = [&](double y) { pressed.push_back(y); };
  painted(410, 1);
  const QPoint place(5, static_cast<int>(map.y_of_row(1000)));
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton, Qt::BackButton})
    QTest::mouseClick(&map, button, {}, place);
  EXPECT_EQ(pressed.size(), 4U);
  QTest::mouseDClick(&map, Qt::LeftButton, {}, place);
  EXPECT_GT(pressed.size(), 4U);
  for (const double y : pressed) EXPECT_NEAR(y, 1000, 5);
}

TEST_F(map_margins, shows_a_disc_at_each_breakpoint_and_none_for_words) {
  map_margin strip(map, map_margin::marks::breakpoints);
  view.rows.fill(map_colour::yellow);
  view.marker = 300;
  EXPECT_EQ(marked(strip), std::vector<int>{});
  for (const int address : {0, 1000, 2047}) {
    view.rows.fill(map_colour::yellow);
    view.rows[address] = map_colour::blue;
    const std::vector<int> disc = marked(strip);
    ASSERT_GE(disc.size(), 8U) << address;
    // Whole, also where its row is at the end.
    EXPECT_NEAR(static_cast<double>(disc.size()), 12, 2) << address;
    const double middle = (disc.front() + disc.back()) / 2.0;
    EXPECT_NEAR(middle, std::clamp(map.y_of_row(address), 6.0, strip.height() - 6.0), 1.5) << address;
  }
}

TEST_F(map_margins, shows_an_arrow_at_the_marker_and_nothing_without_one) {
  map_margin strip(map, map_margin::marks::marker);
  view.rows.fill(map_colour::blue);
  EXPECT_EQ(marked(strip), std::vector<int>{});
  for (const int address : {0, 1000, 2047}) {
    view.marker = address;
    const std::vector<int> arrow = marked(strip);
    ASSERT_GE(arrow.size(), 8U) << address;
    EXPECT_LE(arrow.front(), map.y_of_row(address) + 1) << address;
    EXPECT_GE(arrow.back(), map.y_of_row(address) - 1) << address;
  }
}

TEST_F(map_margins, is_the_map_for_the_mouse) {
  map_margin strip(map, map_margin::marks::breakpoints);
  marked(strip);
  double pressed = -1;
  map.pressed = [&](double y) { pressed = y; };
  QTest::mouseClick(&strip, Qt::LeftButton, {}, QPoint(3, static_cast<int>(map.y_of_row(1500))));
  EXPECT_NEAR(pressed, 1500, 5);
}

TEST_F(map_in_window, the_margins_stand_beside_the_map_as_high_as_it) {
  const QWidget& map = at(id::mapa);
  const auto strips = window.findChildren<QWidget*>();
  int left = 0;
  int right = 0;
  for (const QWidget* const one : strips) {
    const auto* const strip = dynamic_cast<const map_margin*>(one);
    if (strip == nullptr) continue;
    EXPECT_EQ(strip->geometry().top(), map.geometry().top());
    EXPECT_EQ(strip->height(), map.height());
    EXPECT_FALSE(strip->geometry().intersects(map.geometry()));
    (strip->x() < map.x() ? left : right) += 1;
  }
  EXPECT_EQ(left, 1);
  EXPECT_EQ(right, 1);
}

}  // namespace
}  // namespace estructura
