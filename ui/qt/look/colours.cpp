#include "ui/qt/look/colours.h"

#include <algorithm>
#include <cmath>

namespace estructura {

namespace {

double luminance(const QColor& colour) {
  const auto linear = [](double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

bool is_dark(const QColor& ground) {
  // As far from black as from white.
  return contrast(ground, Qt::white) > contrast(ground, Qt::black);
}

/// A little above the least, so that rounding to whole levels does not fall below it.
constexpr double enough_contrast = least_contrast + 0.1;
constexpr double step_share = 0.02;

}  // namespace

double contrast(const QColor& one, const QColor& other) {
  const double a = luminance(one);
  const double b = luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor mix(const QColor& over, const QColor& under, double share) {
  const auto mixed = [share](double a, double b) { return static_cast<float>(a * share + b * (1 - share)); };
  return QColor::fromRgbF(mixed(over.redF(), under.redF()), mixed(over.greenF(), under.greenF()),
                          mixed(over.blueF(), under.blueF()));
}

QColor readable(const QColor& text, const QColor& ground) {
  const QColor opaque = mix(text, ground, text.alphaF());
  const QColor goal = ink_on(ground);
  QColor found = opaque;
  for (double share = step_share; contrast(found, ground) < enough_contrast && share <= 1;
       share += step_share)
    found = mix(goal, opaque, share);
  return found;
}

QColor ink_on(const QColor& ground) {
  return is_dark(ground) ? Qt::white : Qt::black;
}

QColor fainter(const QColor& text, const QColor& ground) {
  constexpr double strength = 0.66;
  return readable(mix(text, ground, strength), ground);
}

QPalette readable_palette(const QPalette& desktop) {
  QPalette palette = desktop;
  const QColor window = palette.color(QPalette::Active, QPalette::Window);
  const QColor base = palette.color(QPalette::Active, QPalette::Base);
  // Of panel and lists, the one nearer to the text: what can be read on it can be read on the other.
  const bool dark = is_dark(window);
  const QColor worse = (contrast(window, Qt::white) < contrast(base, Qt::white)) == dark ? window : base;
  const QColor button = palette.color(QPalette::Active, QPalette::Button);

  const auto off = [&](QPalette::ColorRole role, const QColor& ground) {
    const QColor live = palette.color(QPalette::Active, role);
    constexpr double strength = 0.45;
    palette.setColor(QPalette::Disabled, role, readable(mix(live, ground, strength), ground));
  };
  off(QPalette::WindowText, worse);
  off(QPalette::Text, worse);
  off(QPalette::ButtonText,
      (contrast(button, Qt::white) < contrast(worse, Qt::white)) == dark ? button : worse);
  // A box that cannot be used is no sheet to write on.
  palette.setColor(QPalette::Disabled, QPalette::Base, window);

  for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    const QColor text = palette.color(group, QPalette::HighlightedText);
    // The ground gives way, not the text, which is as far off as can be.
    palette.setColor(group, QPalette::Highlight, readable(palette.color(group, QPalette::Highlight), text));
    palette.setColor(group, QPalette::PlaceholderText,
                     fainter(palette.color(QPalette::Active, QPalette::WindowText), worse));
  }
  return palette;
}

QColor change_ground(const QColor& ground, const QColor& text) {
  constexpr double strongest = 0.34;
  constexpr int steps = static_cast<int>(strongest / step_share);
  const QColor amber(255, 172, 0);
  QColor found = ground;
  for (int step = 1; step <= steps; ++step) {
    const QColor stronger = mix(amber, ground, step * step_share);
    if (contrast(text, stronger) < enough_contrast) break;
    found = stronger;
  }
  return found;
}

QColor change_bar(const QColor& ground) {
  return is_dark(ground) ? QColor(255, 190, 60) : QColor(176, 96, 0);
}

QColor breakpoint_disc(const QColor& ground) {
  return is_dark(ground) ? QColor(120, 160, 255) : QColor(0, 0, 200);
}

QColor map_ground() {
  return {8, 9, 11};
}

QColor soft_line(const QPalette& palette) {
  constexpr double share = 0.22;
  return mix(palette.color(QPalette::WindowText), palette.color(QPalette::Window), share);
}

QColor strong_line(const QPalette& palette) {
  const QColor text = palette.color(QPalette::WindowText);
  const QColor ground = palette.color(QPalette::Window);
  constexpr double seen = 3.1;
  double share = 0.5;
  while (share < 1 && contrast(mix(text, ground, share), ground) < seen) share += step_share;
  return mix(text, ground, share);
}

}  // namespace estructura
