#include "ui/qt/colores.h"

#include <algorithm>
#include <cmath>

namespace estructura {

namespace {

double luminancia(const QColor& colour) {
  const auto linear = [](double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

bool oscuro(const QColor& ground) {
  // As far from black as from white.
  return contraste(ground, Qt::white) > contraste(ground, Qt::black);
}

/// A little above the least, so that rounding to whole levels does not fall below it.
constexpr double con_holgura = contraste_minimo + 0.1;
constexpr double paso = 0.02;

}  // namespace

double contraste(const QColor& one, const QColor& other) {
  const double a = luminancia(one);
  const double b = luminancia(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor mezcla(const QColor& over, const QColor& under, double share) {
  const auto mixed = [share](double a, double b) { return static_cast<float>(a * share + b * (1 - share)); };
  return QColor::fromRgbF(mixed(over.redF(), under.redF()), mixed(over.greenF(), under.greenF()),
                          mixed(over.blueF(), under.blueF()));
}

QColor legible(const QColor& text, const QColor& ground) {
  const QColor opaque = mezcla(text, ground, text.alphaF());
  const QColor goal = sobre(ground);
  QColor found = opaque;
  for (double share = paso; contraste(found, ground) < con_holgura && share <= 1; share += paso)
    found = mezcla(goal, opaque, share);
  return found;
}

QColor sobre(const QColor& ground) {
  return oscuro(ground) ? Qt::white : Qt::black;
}

QColor tenue(const QColor& text, const QColor& ground) {
  constexpr double strength = 0.66;
  return legible(mezcla(text, ground, strength), ground);
}

QPalette paleta_legible(const QPalette& desktop) {
  QPalette palette = desktop;
  const QColor window = palette.color(QPalette::Active, QPalette::Window);
  const QColor base = palette.color(QPalette::Active, QPalette::Base);
  // Of panel and lists, the one nearer to the text: what can be read on it can be read on the other.
  const bool dark = oscuro(window);
  const QColor worse = (contraste(window, Qt::white) < contraste(base, Qt::white)) == dark ? window : base;
  const QColor button = palette.color(QPalette::Active, QPalette::Button);

  const auto off = [&](QPalette::ColorRole role, const QColor& ground) {
    const QColor live = palette.color(QPalette::Active, role);
    constexpr double strength = 0.45;
    palette.setColor(QPalette::Disabled, role, legible(mezcla(live, ground, strength), ground));
  };
  off(QPalette::WindowText, worse);
  off(QPalette::Text, worse);
  off(QPalette::ButtonText,
      (contraste(button, Qt::white) < contraste(worse, Qt::white)) == dark ? button : worse);
  // A box that cannot be used is no sheet to write on.
  palette.setColor(QPalette::Disabled, QPalette::Base, window);

  for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    const QColor text = palette.color(group, QPalette::HighlightedText);
    // The ground gives way, not the text, which is as far off as can be.
    palette.setColor(group, QPalette::Highlight, legible(palette.color(group, QPalette::Highlight), text));
    palette.setColor(group, QPalette::PlaceholderText,
                     tenue(palette.color(QPalette::Active, QPalette::WindowText), worse));
  }
  return palette;
}

QColor fondo_novedad(const QColor& ground, const QColor& text) {
  constexpr double strongest = 0.34;
  constexpr int steps = static_cast<int>(strongest / paso);
  const QColor amber(255, 172, 0);
  QColor found = ground;
  for (int step = 1; step <= steps; ++step) {
    const QColor stronger = mezcla(amber, ground, step * paso);
    if (contraste(text, stronger) < con_holgura) break;
    found = stronger;
  }
  return found;
}

QColor barra_novedad(const QColor& ground) {
  return oscuro(ground) ? QColor(255, 190, 60) : QColor(176, 96, 0);
}

QColor disco_parada(const QColor& ground) {
  return oscuro(ground) ? QColor(120, 160, 255) : QColor(0, 0, 200);
}

QColor fondo_mapa() {
  return {8, 9, 11};
}

QColor linea_suave(const QPalette& palette) {
  constexpr double share = 0.22;
  return mezcla(palette.color(QPalette::WindowText), palette.color(QPalette::Window), share);
}

QColor linea_fuerte(const QPalette& palette) {
  const QColor text = palette.color(QPalette::WindowText);
  const QColor ground = palette.color(QPalette::Window);
  constexpr double seen = 3.1;
  double share = 0.5;
  while (share < 1 && contraste(mezcla(text, ground, share), ground) < seen) share += paso;
  return mezcla(text, ground, share);
}

}  // namespace estructura
