// Every text of the window can be read on what it stands on: light, dark and harsh palettes.
#include "ui/qt/look/colours.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include <QApplication>
#include <QStyle>
#include <QStyleFactory>

namespace estructura {
namespace {

struct named_palette {
  const char* name;
  QPalette palette;
};

QPalette made_of(const QColor& window, const QColor& base, const QColor& text, const QColor& highlight,
                 const QColor& highlighted) {
  QPalette palette(text, window, window.lighter(120), window.darker(130), window.darker(110), text, base);
  palette.setColor(QPalette::Button, window);
  palette.setColor(QPalette::Highlight, highlight);
  palette.setColor(QPalette::HighlightedText, highlighted);
  QColor faint = text;
  faint.setAlpha(128);
  palette.setColor(QPalette::PlaceholderText, faint);
  return palette;
}

std::vector<named_palette> palettes() {
  const QColor white(Qt::white);
  return {
      {"Fusion", std::unique_ptr<QStyle>(QStyleFactory::create("Fusion"))->standardPalette()},
      {"light grey", made_of({239, 240, 241}, {252, 252, 252}, {35, 38, 41}, {61, 174, 233}, white)},
      {"beige", made_of({237, 232, 220}, {250, 247, 240}, {60, 50, 40}, {206, 92, 0}, white)},
      {"dark", made_of({45, 47, 51}, {30, 31, 34}, {222, 224, 228}, {53, 132, 228}, white)},
      {"darker lists", made_of({49, 54, 59}, {20, 22, 24}, {252, 252, 252}, {61, 174, 233}, {252, 252, 252})},
      {"dark, lighter lists", made_of({30, 30, 30}, {58, 58, 58}, {220, 220, 220}, {80, 120, 80}, white)},
      {"black on white", made_of(white, white, Qt::black, Qt::black, white)},
      {"white on black", made_of(Qt::black, Qt::black, white, {0, 255, 0}, Qt::black)},
  };
}

TEST(colours_to_read, contrast_is_what_the_guidelines_define) {
  EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 0.001);
  EXPECT_NEAR(contrast(Qt::white, Qt::white), 1, 0.001);
  // The darkest grey that just fails on white, and the one that just passes.
  EXPECT_NEAR(contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.005);
  EXPECT_NEAR(contrast(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.005);
  EXPECT_NEAR(contrast(Qt::blue, Qt::yellow), 8.00, 0.01);
}

TEST(colours_to_read, every_role_of_text_can_be_read_on_its_ground) {
  struct row {
    QPalette::ColorRole text;
    QPalette::ColorRole ground;
  };
  constexpr row rows[] = {
      {QPalette::WindowText, QPalette::Window},
      {QPalette::Text, QPalette::Base},
      // Lists with the colour of dialogs, and labels upon sheets.
      {QPalette::Text, QPalette::Window},
      {QPalette::WindowText, QPalette::Base},
      {QPalette::ButtonText, QPalette::Button},
      {QPalette::PlaceholderText, QPalette::Base},
      {QPalette::PlaceholderText, QPalette::Window},
      {QPalette::HighlightedText, QPalette::Highlight},
  };
  for (const named_palette& one : palettes()) {
    const QPalette palette = readable_palette(one.palette);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
      for (const row& pair : rows)
        EXPECT_GE(contrast(palette.color(group, pair.text), palette.color(group, pair.ground)), 4.5)
            << one.name << ", group " << group << ", " << pair.text << " on " << pair.ground;
  }
}

TEST(colours_to_read, what_the_desktop_chose_well_stays_as_it_is) {
  for (const named_palette& one : palettes()) {
    const QPalette palette = readable_palette(one.palette);
    for (const QPalette::ColorRole role :
         {QPalette::Window, QPalette::Base, QPalette::WindowText, QPalette::Text, QPalette::Button,
          QPalette::ButtonText, QPalette::HighlightedText})
      EXPECT_EQ(palette.color(QPalette::Active, role), one.palette.color(QPalette::Active, role))
          << one.name << " " << role;
  }
}

TEST(colours_to_read, what_cannot_be_used_looks_fainter_than_what_can) {
  for (const named_palette& one : palettes()) {
    const QPalette palette = readable_palette(one.palette);
    const QColor window = palette.color(QPalette::Window);
    EXPECT_LT(contrast(palette.color(QPalette::Disabled, QPalette::WindowText), window),
              0.8 * contrast(palette.color(QPalette::Active, QPalette::WindowText), window))
        << one.name;
  }
}

TEST(colours_to_read, names_changes_and_breakpoints_of_a_list_can_be_read) {
  for (const named_palette& one : palettes()) {
    const QPalette palette = readable_palette(one.palette);
    const QColor text = palette.color(QPalette::Text);
    for (const QPalette::ColorRole role : {QPalette::Base, QPalette::Window}) {
      const QColor ground = palette.color(role);
      const QColor faint = fainter(text, ground);
      EXPECT_GE(contrast(faint, ground), 4.5) << one.name;
      EXPECT_LT(contrast(faint, ground), contrast(text, ground)) << one.name;
      EXPECT_NE(change_ground(ground, text), ground) << one.name;
      EXPECT_GE(contrast(text, change_ground(ground, text)), 4.5) << one.name;
      // Marks that are no text: three to one.
      EXPECT_GE(contrast(change_bar(ground), ground), 3) << one.name;
      EXPECT_GE(contrast(breakpoint_disc(ground), ground), 3) << one.name;
      EXPECT_GE(contrast(ink_on(breakpoint_disc(ground)), breakpoint_disc(ground)), 4.5) << one.name;
    }
    // The edges of the boxes that can be used.
    EXPECT_GE(contrast(strong_line(palette), palette.color(QPalette::Window)), 3) << one.name;
  }
}

TEST(colours_to_read, the_three_of_the_map_are_told_from_its_ground_and_from_each_other) {
  for (const Qt::GlobalColor colour : {Qt::yellow, Qt::red})
    EXPECT_GE(contrast(colour, map_ground()), 3) << colour;
  // As dark a blue has 2.4 on black; what makes breakpoints easy to find stands beside the map.
  EXPECT_GE(contrast(Qt::blue, map_ground()), 2.2);
  EXPECT_GE(contrast(Qt::blue, Qt::yellow), 3);
}

}  // namespace
}  // namespace estructura
