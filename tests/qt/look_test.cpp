// What the person sees of the last action, of the current instruction, of the map, and where things stand.
#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QListView>
#include <QSplitter>
#include <QStyleOptionButton>
#include <QTest>
#include <QTimer>

#include "core/devices.h"
#include "tests/support/qt_window.h"
#include "ui/qt/look/colours.h"
#include "ui/qt/widgets/list_view.h"
#include "ui/qt/widgets/memory_map.h"
#include "ui/qt/widgets/text_label.h"
#include "ui/qt/widgets/toggles.h"
#include "ui/qt/window/change_marks.h"
#include "ui/qt/window/main_window.h"

namespace estructura {
namespace {

constexpr int goto_self = 0xA00;

class appearance : public support::real_window<> {
 protected:
  appearance() {
    window.resize(1366, 720);
    QCoreApplication::processEvents();
  }

  std::uint32_t lines(id list, int index = 0) { return at<list_view>(list, index).changed_rows(); }
  std::uint32_t characters(id label) { return at<text_label>(label).changed_characters(); }
  void program(std::initializer_list<int> words) {
    chipstate& chip = record.poke();
    int address = 0;
    for (const int word : words) chip.progmem[address++] = static_cast<std::uint16_t>(word);
    chip.cpu.pc = 0;
    record.refresh();
    window.refresh();
  }
  void choose_device(std::string_view name) {
    record.pick(id::PIC, name);
    window.refresh();
    QCoreApplication::processEvents();
  }
  /// Every control's place in the window, by name.
  std::map<std::string, QRect> places() {
    std::map<std::string, QRect> found;
    for (const control& one : record.look_all()) {
      const QWidget& widget = at(one.which(), one.index());
      if (widget.isVisible()) found[one.name()] = {widget.mapTo(&window, QPoint()), widget.size()};
    }
    return found;
  }
};

// --- what changed ---

TEST(change_marks, the_characters_at_which_texts_differ) {
  EXPECT_EQ(difference("00011000", "00011000"), 0U);
  EXPECT_EQ(difference("00011000", "00011101"), 0b00000101U);
  EXPECT_EQ(difference("10000000", "00000000"), 0b10000000U);
  EXPECT_EQ(difference("99", "100"), 0b111U);
  EXPECT_EQ(difference("12", ""), 0U);
}

TEST_F(appearance, at_the_start_nothing_is_marked) {
  EXPECT_EQ(lines(id::RE), 0U);
  EXPECT_EQ(lines(id::MDP), 0U);
  EXPECT_EQ(characters(id::STATUS), 0U);
  EXPECT_EQ(characters(id::ciclos), 0U);
}

TEST_F(appearance, a_step_marks_the_lines_bits_and_digits_that_it_changed) {
  program({0xC55, 0x028, 0xE00});  // MOVLW 55; MOVWF 08; ANDLW 00
  click(id::eje1);
  EXPECT_EQ(lines(id::RE), 0b11U);     // PC and W
  EXPECT_EQ(lines(id::MDP), 1U << 2);  // PCL
  EXPECT_EQ(characters(id::STATUS), 0U);
  EXPECT_NE(characters(id::ciclos), 0U);
  click(id::eje1);
  EXPECT_EQ(lines(id::RE), 0b01U);
  EXPECT_EQ(lines(id::MDP), 1U << 2 | 1U << 8);
  EXPECT_EQ(characters(id::ciclos), 0b1U);
  click(id::eje1);
  EXPECT_EQ(lines(id::RE), 0b11U);
  // Z is bit 2 of STATUS, the register at 03.
  EXPECT_EQ(lines(id::MDP), 1U << 2 | 1U << 3);
  EXPECT_EQ(characters(id::STATUS), 1U << 2);
}

TEST_F(appearance, banked_memory_the_stack_and_indirect_data_are_marked) {
  program({0xC33, 0x024, 0x020, 0x910});  // MOVLW 33; MOVWF FSR; MOVWF INDF; CALL 10
  click(id::eje1);
  click(id::eje1);
  EXPECT_EQ(characters(id::PAGFSR), 0b1U);
  EXPECT_EQ(characters(id::DIRFSR), 0b11U);
  click(id::eje1);
  EXPECT_EQ(lines(id::MD, 1), 1U << 3);
  EXPECT_EQ(lines(id::MD, 0), 0U);
  EXPECT_EQ(characters(id::INDF), 0b11U);
  click(id::eje1);
  EXPECT_EQ(lines(id::MD, 1), 0U);
  EXPECT_EQ(lines(id::PIL), 0b01U);
}

TEST_F(appearance, a_value_entered_by_hand_is_marked_and_so_is_a_reset) {
  auto& list = at<QListView>(id::RE);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(1, 0)).center());
  QTest::keyClicks(&at(id::dat), "a5");
  QTest::keyClick(&at(id::dat), Qt::Key_Return);
  EXPECT_EQ(lines(id::RE), 0b10U);
  program({0, 0});
  click(id::eje1);
  click(id::MCLR);
  EXPECT_EQ(lines(id::RE), 0b01U);
  click(id::por);
  EXPECT_EQ(lines(id::RE), 0b10U);
}

TEST_F(appearance, what_changes_no_view_of_the_machine_leaves_the_marks) {
  program({0xC55});
  click(id::eje1);
  click(id::sl, 1);
  click(id::sl, 0);
  record.type(id::INS, "NOP");
  window.refresh();
  auto& list = at<QListView>(id::MP);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(1, 0)).center());
  EXPECT_EQ(lines(id::RE), 0b11U);
}

TEST_F(appearance, marks_change_neither_texts_nor_backgrounds) {
  program({0xC55, 0x028});
  click(id::eje1);
  click(id::eje1);
  ASSERT_NE(lines(id::MDP), 0U);
  EXPECT_EQ(at<QListView>(id::MDP).model()->index(8, 0).data().toString(), "55");
  EXPECT_EQ(at<QLabel>(id::ciclos).text().toStdString(), record.look(id::ciclos).text());
  EXPECT_EQ(at<QListView>(id::MD, 0).viewport()->backgroundRole(), QPalette::Base);
  EXPECT_EQ(at<QListView>(id::MD, 1).viewport()->backgroundRole(), QPalette::Window);
}

TEST_F(appearance, a_marked_line_is_painted_on_another_ground_with_a_bar_and_in_bold) {
  program({0xC55, 0x028});
  click(id::eje1);
  auto& list = at<list_view>(id::MDP);
  const QRect row = list.visualRect(list.model()->index(8, 0));
  const QImage before = list.viewport()->grab(row).toImage();
  click(id::eje1);
  ASSERT_EQ(lines(id::MDP) >> 8 & 1U, 1U);
  const QImage marked = list.viewport()->grab(row).toImage();
  list.set_changes(0);
  const QImage plain = list.viewport()->grab(row).toImage();
  // The same text either way: it is the mark that differs, at the edge and in the middle.
  const int middle = row.height() / 2;
  EXPECT_NE(marked.pixel(0, middle), plain.pixel(0, middle));
  EXPECT_NE(marked.pixel(row.width() - 4, 1), plain.pixel(row.width() - 4, 1));
  EXPECT_NE(before, marked);
}

TEST_F(appearance, another_device_is_no_change_of_the_program) {
  program({0xC55});
  click(id::eje1);
  click(id::por);
  choose_device("12C508");
  for (const id list : {id::RE, id::MDP, id::PIL}) EXPECT_EQ(lines(list), 0U);
  EXPECT_EQ(characters(id::TRISB), 0U);
}

TEST_F(appearance, during_a_run_nothing_is_marked_and_afterwards_all_that_the_run_changed) {
  program({0xC55, 0x2A8, 0xA01});  // MOVLW 55; INCF 08; GOTO 001
  click(id::eje1);
  ASSERT_NE(lines(id::RE), 0U);
  bool looked = false;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
    if (record.chip().cycles < 200000 || looked) return;
    looked = true;
    EXPECT_EQ(lines(id::RE), 0U);
    EXPECT_EQ(lines(id::MDP), 0U);
    EXPECT_EQ(characters(id::ciclos), 0U);
    // What is done meanwhile marks nothing either.
    click(id::PB, 0);
    EXPECT_EQ(lines(id::MDP), 0U);
    // Ends with 08 as it was not, and W as it was.
    while (record.chip().regs[8] == 0) QCoreApplication::processEvents();
    click(id::ejecutar);
  });
  poll.start(1);
  click(id::ejecutar);
  poll.stop();
  ASSERT_TRUE(looked);
  EXPECT_EQ(lines(id::MDP) >> 8 & 1U, record.chip().regs[8] != 0 ? 1U : 0U);
  EXPECT_EQ(lines(id::RE) & 0b10U, 0U);
  EXPECT_NE(characters(id::ciclos), 0U);
}

TEST_F(appearance, a_line_chosen_in_a_small_list_shows_only_while_the_list_has_the_focus) {
  for (const id which : {id::PIL, id::nombres, id::nomre, id::dirmd}) {
    auto& list = at<list_view>(which);
    const QRect row = list.visualRect(list.model()->index(1, 0));
    const QImage plain = list.viewport()->grab(row).toImage();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, row.center());
    EXPECT_EQ(record.look(which).row(), 1);
    EXPECT_NE(list.viewport()->grab(row).toImage(), plain);
    at(id::eje1).setFocus(Qt::TabFocusReason);
    EXPECT_EQ(record.look(which).row(), 1);
    EXPECT_EQ(list.viewport()->grab(row).toImage(), plain) << list.objectName().toStdString();
  }
}

TEST_F(appearance, a_box_that_only_shows_has_the_edge_of_what_cannot_be_used) {
  auto& sleep = at<qt_check_box>(id::estsleep);
  const QImage shown = sleep.grab().toImage();
  sleep.display_only = false;
  EXPECT_NE(sleep.grab().toImage(), shown);
  EXPECT_FALSE(at<qt_check_box>(id::VISMP).display_only);
}

TEST_F(appearance, what_a_menu_does_not_offer_now_can_be_read) {
  const QPalette palette = QApplication::palette("QMenu");
  EXPECT_GE(contrast(palette.color(QPalette::Disabled, QPalette::Text), palette.color(QPalette::Window)),
            least_contrast);
  EXPECT_GE(
      contrast(palette.color(QPalette::Disabled, QPalette::WindowText), palette.color(QPalette::Window)),
      least_contrast);
}

// --- program ---

TEST_F(appearance, the_next_instruction_has_an_arrow_wherever_the_selection_is) {
  program({0, 0, 0});
  click(id::eje1);
  auto& list = at<list_view>(id::MP);
  EXPECT_EQ(list.next_row(), 1);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(5, 0)).center());
  EXPECT_EQ(list.current_row(), 5);
  EXPECT_EQ(list.next_row(), 1);
  const auto gutter = [&](int row) {
    const QRect line = list.visualRect(list.model()->index(row, 0));
    return list.viewport()
        ->grab(QRect(line.topLeft(), QSize(2 * line.height() / 3, line.height())))
        .toImage();
  };
  EXPECT_NE(gutter(1), gutter(2));
  EXPECT_EQ(gutter(3), gutter(2));
}

TEST_F(appearance, a_breakpoint_keeps_its_star_and_has_a_disc) {
  program({0, 0, 0});
  record.type(id::direc, "002");
  click(id::break_);
  record.type(id::direc, "004");
  window.refresh();
  auto& list = at<list_view>(id::MP);
  EXPECT_TRUE(list.model()->index(2, 0).data().toString().startsWith('*'));
  const QRect line = list.visualRect(list.model()->index(2, 0));
  const QImage row = list.viewport()->grab(line).toImage();
  // The disc: as high as most of the line.
  int blue = 0;
  for (int y = 0; y < row.height(); ++y)
    for (int x = 0; x < 3 * line.height(); ++x)
      if (row.pixelColor(x, y) == QColor(0, 0, 200)) {
        ++blue;
        break;
      }
  EXPECT_GE(blue, line.height() / 2);
  // Between it and the address a column of the ground is left.
  const auto is_ground = [&](int x) {
    for (int y = 0; y < row.height(); ++y)
      if (row.pixelColor(x, y) != row.pixelColor(0, 0)) return false;
    return true;
  };
  const int middle = row.height() / 2;
  int x = 0;
  while (row.pixelColor(x, middle) != QColor(0, 0, 200)) ++x;
  const int left_edge = x;
  while (!is_ground(x)) ++x;
  EXPECT_LE(x - left_edge, line.height());
}

// --- map ---

class mapa : public testing::Test {
 protected:
  mapa() { view.scale = 2050; }

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

// Heights that give several addresses to a pixel, and several pixels to an address.
TEST_F(mapa, an_address_paints_its_own_rows_of_pixels_and_no_others) {
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

TEST_F(mapa, knows_no_colour_but_its_three_and_the_ground) {
  for (int address = 0; address < 2048; address += 3) view.rows[address] = map_colour::yellow;
  for (int address = 0; address < 2048; address += 100) view.rows[address] = map_colour::blue;
  view.marker = 777;
  for (const double ratio : {1.0, 1.25, 1.5, 2.0})
    EXPECT_EQ(colours(painted(500, ratio)),
              (std::set<QRgb>{plain(Qt::yellow), plain(Qt::blue), plain(Qt::red), plain(map_ground())}))
        << ratio;
}

TEST_F(mapa, of_several_addresses_on_one_pixel_shows_a_breakpoint_before_a_word_and_a_word_before_none) {
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

TEST_F(mapa, a_press_of_any_button_counts_and_so_does_the_second_of_a_double_click) {
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

class map_margins : public mapa {
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

TEST_F(appearance, the_margins_stand_beside_the_map_as_high_as_it) {
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

// --- places ---

TEST_F(appearance, nothing_stands_elsewhere_on_another_device) {
  QCoreApplication::processEvents();
  const auto before = places();
  for (const auto& [device, model] : catalogue) {
    choose_device(device);
    for (const auto& [name, place] : places()) {
      const auto there = before.find(name);
      // TRIS alone takes the line of TRISA.
      if (there == before.end() || name == "TRISB") continue;
      EXPECT_EQ(place, there->second) << name << " on " << device;
    }
  }
}

TEST_F(appearance, nothing_moves_when_values_grow_or_the_program_hides) {
  QCoreApplication::processEvents();
  const auto before = places();
  record.poke().cycles = 2147483647;
  record.refresh();
  record.click(id::WATCHDOG);
  record.click(id::VISMP);
  record.click(id::sl, 1);
  window.refresh();
  QCoreApplication::processEvents();
  for (const auto& [name, place] : places()) {
    const auto there = before.find(name);
    if (there == before.end()) continue;
    EXPECT_EQ(place, there->second) << name;
  }
}

TEST_F(appearance, a_larger_window_gives_its_room_to_source_and_program) {
  QCoreApplication::processEvents();
  const auto before = places();
  window.resize(1966, 920);
  QCoreApplication::processEvents();
  const auto after = places();
  for (const char* grown : {"source", "MP"}) {
    EXPECT_GT(after.at(grown).width(), before.at(grown).width()) << grown;
    EXPECT_EQ(after.at(grown).height(), before.at(grown).height() + 200) << grown;
  }
  EXPECT_EQ(after.at("mapa").height(), before.at("mapa").height() + 200);
  for (const char* kept : {"RE", "MDP", "MD(3)", "PB(0)", "FR", "eje1", "ciclos", "FREC"}) {
    EXPECT_EQ(after.at(kept).size(), before.at(kept).size()) << kept;
    EXPECT_EQ(after.at(kept).topLeft(), before.at(kept).topLeft() + QPoint(600, 0)) << kept;
  }
}

TEST_F(appearance, the_splitter_shares_out_between_source_and_program_and_hides_neither) {
  QCoreApplication::processEvents();
  auto* const panes = window.findChild<QSplitter*>();
  ASSERT_NE(panes, nullptr);
  const auto before = places();
  const int room = panes->width();
  panes->setSizes({0, room});
  EXPECT_LT(places().at("source").width(), before.at("source").width());
  EXPECT_GT(places().at("MP").width(), before.at("MP").width());
  EXPECT_GT(panes->sizes().front(), 0);
  panes->setSizes({room, 0});
  EXPECT_GT(panes->sizes().back(), 0);
  // Every button keeps room for its caption.
  for (const id which : {id::cargar, id::fin, id::break_})
    EXPECT_GE(at(which).width(), at(which).minimumSizeHint().width());
}

TEST_F(appearance, the_groups_follow_each_other_as_the_work_does) {
  QCoreApplication::processEvents();
  const auto place = places();
  const auto left_of = [&](const char* one, const char* other) {
    EXPECT_LE(place.at(one).right(), place.at(other).left()) << one << ", " << other;
  };
  const auto above = [&](const char* one, const char* other) {
    EXPECT_LE(place.at(one).bottom(), place.at(other).top()) << one << ", " << other;
  };
  left_of("source", "mapa");
  left_of("mapa", "MP");
  left_of("MP", "RE");
  EXPECT_EQ(place.at("mapa").top(), place.at("MP").top() - 2);
  above("RE", "MDP");
  above("MDP", "Frame5");
  left_of("Frame5", "Frame4");
  above("Frame5", "Frame3");
  // Titles of the three columns on one line.
  EXPECT_EQ(place.at("Label5").top(), place.at("Label10").top());
  EXPECT_EQ(place.at("Label5").top(), place.at("Label13").top());
  // And so the last buttons of source and program.
  EXPECT_EQ(place.at("cargarasm").bottom(), place.at("fin").bottom());
}

// --- boxes ---

TEST_F(appearance, a_box_that_cannot_be_used_looks_different_in_a_dark_palette_too) {
  const QPalette before = QApplication::palette();
  for (const bool dark : {false, true}) {
    if (dark) {
      QPalette palette(Qt::white, QColor(45, 47, 51), QColor(70, 70, 75), QColor(20, 20, 22),
                       QColor(35, 35, 38), Qt::white, QColor(30, 31, 34));
      QApplication::setPalette(palette);
      QCoreApplication::processEvents();
    }
    auto& box = at<QAbstractButton>(id::PB, 3);
    for (const bool checked : {false, true}) {
      box.setChecked(checked);
      box.setEnabled(true);
      const QImage usable = box.grab().toImage();
      box.setEnabled(false);
      const QImage locked = box.grab().toImage();
      // Another ground, and the edge in dots.
      QStyleOptionButton option;
      option.initFrom(&box);
      const QRect mark = box.style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, &box);
      const auto colours_of_edge = [&mark](const QImage& picture) {
        std::set<QRgb> found;
        for (int x = mark.left() + 2; x <= mark.right() - 2; ++x) found.insert(picture.pixel(x, mark.top()));
        return found.size();
      };
      const QPoint inside = mark.topLeft() + QPoint(2, 2);
      EXPECT_NE(usable.pixel(inside), locked.pixel(inside)) << "dark " << dark << " checked " << checked;
      EXPECT_EQ(colours_of_edge(usable), 1U) << "dark " << dark << " checked " << checked;
      EXPECT_GE(colours_of_edge(locked), 2U) << "dark " << dark << " checked " << checked;
    }
  }
  QApplication::setPalette(before);
}

TEST_F(appearance, a_box_with_the_focus_has_a_thicker_edge) {
  auto& box = at<QAbstractButton>(id::PB, 3);
  const auto dark_pixels = [&] {
    const QImage picture = box.grab().toImage();
    const QColor text = window.palette().color(QPalette::WindowText);
    int found = 0;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x)
        if (contrast(picture.pixelColor(x, y), text) < 2) ++found;
    return found;
  };
  const int without = dark_pixels();
  box.setFocus(Qt::TabFocusReason);
  // At least the four sides.
  EXPECT_GT(dark_pixels(), without + 40);
}

TEST_F(appearance, the_window_follows_the_desktop_from_light_to_dark) {
  const QPalette before = QApplication::palette();
  QApplication::setPalette(QPalette(Qt::white, QColor(45, 47, 51), QColor(70, 70, 75), QColor(20, 20, 22),
                                    QColor(35, 35, 38), Qt::white, QColor(30, 31, 34)));
  QCoreApplication::processEvents();
  EXPECT_EQ(window.palette().color(QPalette::Window), QColor(45, 47, 51));
  // What was worked out for the light palette would be dark upon dark.
  EXPECT_GE(contrast(window.palette().color(QPalette::Disabled, QPalette::WindowText), QColor(45, 47, 51)),
            4.5);
  EXPECT_EQ(at(id::source).palette().color(QPalette::Base), QColor(30, 31, 34));
  // A selection that is not seen has the colour of the rest of the text.
  EXPECT_EQ(at(id::FREC).palette().color(QPalette::HighlightedText), QColor(Qt::white));
  QApplication::setPalette(before);
}

}  // namespace
}  // namespace estructura
