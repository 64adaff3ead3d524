// Check boxes and option buttons. Their value is the record's: a click only tells.
#pragma once

#include <QCheckBox>
#include <QProxyStyle>
#include <QRadioButton>

namespace estructura {

/// A check box or option button that leaves its value to the record: a click only tells.
template <class Button>
class controlled_toggle : public Button {
 public:
  using Button::Button;

 protected:
  void nextCheckState() override {}
};

/// Check boxes and option buttons with marks of our own: in dark palettes some styles draw boxes without an
/// edge, and those that cannot be used like the others. What can be used is a sheet with a firm edge, what
/// cannot has a dotted one.
class qt_check_box final : public controlled_toggle<QCheckBox> {
 public:
  bool display_only = false;  ///< a click leaves it as it is: its edge is dotted too

 protected:
  void paintEvent(QPaintEvent* event) override;
};

class option_button final : public controlled_toggle<QRadioButton> {
 protected:
  void paintEvent(QPaintEvent* event) override;
};

/// Gives those marks the size of the letters beside them; styles know one size only.
class indicator_style final : public QProxyStyle {
 public:
  [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                const QWidget* widget) const override;
};

}  // namespace estructura
