// Where the controls stand.
#include <gtest/gtest.h>
#include <string_view>

#include <QApplication>
#include <QListView>

#include "core/devices.h"
#include "tests/support/handled_window.h"
#include "tests/support/shown_window.h"

namespace estructura {
namespace {

class layout_of_window : public support::shown_window {};

class layout_of_controls : public support::handled_window {};

TEST_F(layout_of_window, nothing_stands_elsewhere_on_another_device) {
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

TEST_F(layout_of_window, nothing_moves_when_values_grow_or_the_program_hides) {
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

TEST_F(layout_of_window, a_larger_window_gives_its_room_to_source_and_program) {
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

TEST_F(layout_of_window, the_groups_follow_each_other_as_the_work_does) {
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

TEST_F(layout_of_controls, fits_a_screen_of_1366_by_768_on_every_device) {
  for (const auto& [device, model] : catalogue) {
    record.pick(id::PIC, device);
    window.refresh();
    EXPECT_LE(window.least().width(), 1366) << device;
    EXPECT_LE(window.least().height(), 720) << device;
  }
}

TEST_F(layout_of_controls, nothing_moves_when_the_device_changes) {
  const QPoint before = at(id::MD, 0).mapTo(&window, QPoint());
  const QSize size = window.least();
  record.pick(id::PIC, "12C508");
  window.refresh();
  QCoreApplication::processEvents();
  EXPECT_EQ(at(id::MD, 0).mapTo(&window, QPoint()), before);
  EXPECT_EQ(window.least(), size);
}

TEST_F(layout_of_controls, tris_takes_the_line_of_trisa_where_there_is_no_trisa) {
  const QPoint trisa = at(id::TRISA).pos();
  EXPECT_NE(at(id::TRISB).pos(), trisa);
  record.pick(id::PIC, "12C508");
  window.refresh();
  QCoreApplication::processEvents();
  EXPECT_EQ(at(id::TRISB).pos(), trisa);
  record.pick(id::PIC, "16C54");
  window.refresh();
  QCoreApplication::processEvents();
  EXPECT_NE(at(id::TRISB).pos(), trisa);
}

TEST_F(layout_of_controls, binary_views_stand_beside_the_lines_they_show) {
  const auto middle_of_row = [&](id list, int index, int row) {
    auto& view = at<QListView>(list, index);
    return view.viewport()->mapTo(&window, view.visualRect(view.model()->index(row, 0)).center()).y();
  };
  const auto middle = [&](id which) { return at(which).mapTo(&window, at(which).rect().center()).y(); };
  QCoreApplication::processEvents();
  EXPECT_EQ(middle(id::STATUS), middle_of_row(id::MDP, 0, 3));
  EXPECT_EQ(middle(id::BPA), middle_of_row(id::MDP, 0, 5));
  EXPECT_EQ(middle(id::BPC), middle_of_row(id::MDP, 0, 7));
  EXPECT_EQ(middle(id::OPT), middle_of_row(id::RE, 0, 2));
  EXPECT_EQ(middle(id::TRISC), middle_of_row(id::RE, 0, 5));
  EXPECT_EQ(at(id::lstatus).mapTo(&window, QPoint()).x(), at(id::STATUS).mapTo(&window, QPoint()).x());
}

TEST_F(layout_of_controls, values_stand_digit_under_digit) {
  for (const id which :
       {id::MP, id::MDP, id::MD, id::RE, id::PIL, id::STATUS, id::OPT, id::source, id::lst}) {
    const QFontMetrics letters(at(which).font());
    for (const char letter : std::string_view("1FWi .-?"))
      EXPECT_EQ(letters.horizontalAdvance(QLatin1Char(letter)), letters.horizontalAdvance(QLatin1Char('0')))
          << declared(which).name << ", " << letter;
  }
}

}  // namespace
}  // namespace estructura
