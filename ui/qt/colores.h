// The colours of the window, all made from the palette of the desktop: which are added to it, and how well
// each can be read.
//
//   window.setPalette(paleta_legible(QApplication::palette()));
//   contraste(Qt::black, Qt::white)                                -> 21
//   tenue(palette.color(QPalette::Text), palette.color(QPalette::Base))   names and addresses
//
// Text reaches `contraste_minimo` on what it stands on, that of disabled controls too: what is locked while a
// program runs (device, frequency, watchdog) still has to be read.
#pragma once

#include <QColor>
#include <QPalette>

namespace estructura {

/// Of text, as the guidelines for accessible pages ask.
inline constexpr double contraste_minimo = 4.5;

/// How well two opaque colours are told apart, 1 to 21, by their relative luminances.
[[nodiscard]] double contraste(const QColor& one, const QColor& other);

/// So much of `over` upon `under`.
[[nodiscard]] QColor mezcla(const QColor& over, const QColor& under, double share);

/// The colour nearest to `text`, towards black or white, that can be read on `ground`.
[[nodiscard]] QColor legible(const QColor& text, const QColor& ground);

/// Black or white, whichever is read better on it.
[[nodiscard]] QColor sobre(const QColor& ground);

/// A fainter text that can still be read: names, addresses, notes.
[[nodiscard]] QColor tenue(const QColor& text, const QColor& ground);

/// The desktop's palette with its disabled and its selected text readable.
[[nodiscard]] QPalette paleta_legible(const QPalette& desktop);

/// The soft ground of what changed, upon any ground of a list, under this text, and the bar at its left.
[[nodiscard]] QColor fondo_novedad(const QColor& ground, const QColor& text);
[[nodiscard]] QColor barra_novedad(const QColor& ground);

/// The disc of a breakpoint in the program list.
[[nodiscard]] QColor disco_parada(const QColor& ground);

/// The ground of the map, in any palette: its three colours are given, and the blue among them, dark as it
/// is, needs a ground that is darker still.
[[nodiscard]] QColor fondo_mapa();

/// Thin lines behind titles, and those that can be taken hold of.
[[nodiscard]] QColor linea_suave(const QPalette& palette);
[[nodiscard]] QColor linea_fuerte(const QPalette& palette);

}  // namespace estructura
