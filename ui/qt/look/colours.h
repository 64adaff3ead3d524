// The colours of the window, all made from the palette of the desktop: which are added to it, and how well
// each can be read.
//
//   window.setPalette(readable_palette(QApplication::palette()));
//   contrast(Qt::black, Qt::white)                                -> 21
//   fainter(palette.color(QPalette::Text), palette.color(QPalette::Base))   names and addresses
//
// Text reaches `least_contrast` on what it stands on, that of disabled controls too: what is locked while a
// program runs (device, frequency, watchdog) still has to be read.
#pragma once

#include <QColor>
#include <QPalette>

namespace estructura {

/// Of text, as the guidelines for accessible pages ask.
inline constexpr double least_contrast = 4.5;

/// How well two opaque colours are told apart, 1 to 21, by their relative luminances.
[[nodiscard]] double contrast(const QColor& one, const QColor& other);

/// So much of `over` upon `under`.
[[nodiscard]] QColor mix(const QColor& over, const QColor& under, double share);

/// The colour nearest to `text`, towards black or white, that can be read on `ground`.
[[nodiscard]] QColor readable(const QColor& text, const QColor& ground);

/// Black or white, whichever is read better on it.
[[nodiscard]] QColor ink_on(const QColor& ground);

/// A fainter text that can still be read: names, addresses, notes.
[[nodiscard]] QColor fainter(const QColor& text, const QColor& ground);

/// The desktop's palette with its disabled and its selected text readable.
[[nodiscard]] QPalette readable_palette(const QPalette& desktop);

/// The soft ground of what changed, upon any ground of a list, under this text, and the bar at its left.
[[nodiscard]] QColor change_ground(const QColor& ground, const QColor& text);
[[nodiscard]] QColor change_bar(const QColor& ground);

/// The disc of a breakpoint in the program list.
[[nodiscard]] QColor breakpoint_disc(const QColor& ground);

/// The ground of the map, in any palette: its three colours are given, and the blue among them, dark as it
/// is, needs a ground that is darker still.
[[nodiscard]] QColor map_ground();

/// Thin lines behind titles, and those that can be taken hold of.
[[nodiscard]] QColor soft_line(const QPalette& palette);
[[nodiscard]] QColor strong_line(const QPalette& palette);

}  // namespace estructura
