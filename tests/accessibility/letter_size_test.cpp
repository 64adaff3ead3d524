// Large letters: whatever the desktop's size of letter, no text is cut and nothing lies over anything else.
#include <memory>
#include <string>

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QScreen>
#include <QScrollArea>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QStyleOptionFrame>

#include "tests/accessibility/open_window.h"
#include "tests/support/hang.h"
#include "ui/qt/text/text_conversion.h"

namespace estructura {
namespace {

/// What a widget is asked to show, and the room that it has for it.
struct needed_room {
  QSizeF text;
  QSize room;
};

needed_room room_of_label(const QLabel& label) {
  return {{label.fontMetrics().horizontalAdvance(label.text()) * 1.0,
           label.fontMetrics().tightBoundingRect(label.text()).height() * 1.0},
          label.contentsRect().size()};
}

needed_room room_of_button(const QAbstractButton& button, QStyle::SubElement contents) {
  QStyleOptionButton option;
  option.initFrom(&button);
  QString caption = button.text();
  caption.remove(QLatin1Char('&'));
  double width = button.fontMetrics().horizontalAdvance(caption);
  if (!button.icon().isNull()) width += button.iconSize().width();
  return {{width, button.fontMetrics().tightBoundingRect(caption).height() * 1.0},
          button.style()->subElementRect(contents, &option, &button).size()};
}

needed_room room_of_line(const QLineEdit& edit, const QString& longest) {
  QStyleOptionFrame option;
  option.initFrom(&edit);
  option.lineWidth = edit.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &edit);
  const QRect room = edit.style()->subElementRect(QStyle::SE_LineEditContents, &option, &edit);
  constexpr int margin = 2;  // QLineEdit's own, at either side
  return {{edit.fontMetrics().horizontalAdvance(longest) * 1.0,
           edit.fontMetrics().tightBoundingRect(longest).height() * 1.0},
          room.size() - QSize(2 * margin, 0)};
}

needed_room room_of_combo(const QComboBox& combo) {
  QStyleOptionComboBox option;
  option.initFrom(&combo);
  double width = 0;
  for (int i = 0; i < combo.count(); ++i)
    width = std::max(width, combo.fontMetrics().horizontalAdvance(combo.itemText(i)) * 1.0);
  return {{width, combo.fontMetrics().tightBoundingRect(combo.currentText()).height() * 1.0},
          combo.style()
              ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &combo)
              .size()};
}

/// A list of lines without columns: as wide as the longest, and as high as all where none is to be scrolled.
needed_room room_of_list(const QListView& list) {
  const int rows = list.model()->rowCount();
  double width = 0;
  for (int row = 0; row < rows; ++row) {
    QString line = list.model()->index(row, 0).data().toString();
    // Columns begin at fixed places: the second at 6 letters, the third at 11.
    if (line.contains(QLatin1Char('\t')))
      line = QString(11, QLatin1Char('0')) + line.section(QLatin1Char('\t'), 2);
    width = std::max(width, list.fontMetrics().horizontalAdvance(line) * 1.0);
  }
  const bool scrolls = list.verticalScrollBarPolicy() != Qt::ScrollBarAlwaysOff;
  const double height = rows == 0 || scrolls ? 0 : list.visualRect(list.model()->index(rows - 1, 0)).bottom();
  return {{width, height}, list.viewport()->size()};
}

std::string shortfall(const char* what, const QWidget& widget, const needed_room& found) {
  if (found.text.isEmpty()) return "";
  if (found.text.width() <= found.room.width() && found.text.height() <= found.room.height()) return "";
  return "\n" + std::string(what) + " " + widget.objectName().toStdString() + " needs " +
         std::to_string(found.text.width()) + "x" + std::to_string(found.text.height()) + ", has " +
         std::to_string(found.room.width()) + "x" + std::to_string(found.room.height());
}

/// Whether nothing that it stands in cuts it off.
bool in_sight(const QWidget& widget) {
  for (const QWidget* around = widget.parentWidget(); around != nullptr; around = around->parentWidget())
    if (!around->rect().contains(widget.mapTo(around, widget.rect().center()))) return false;
  return widget.isVisible();
}

class letter_size : public testing::TestWithParam<int> {
 protected:
  letter_size() {
    QFont font = before_;
    font.setPointSize(GetParam());
    QApplication::setFont(font);
    record_.Form_Load();
    window_ = std::make_unique<main_window>(record_);
    host_.set_window(window_.get());
    panel_ = qobject_cast<QScrollArea*>(window_->centralWidget())->widget();
    window_->show();
    window_->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window_.get(), support::hang_ms));
  }
  ~letter_size() override {
    host_.set_window(nullptr);
    window_.reset();
    QApplication::setFont(before_);
  }

  /// The longest texts that a program can bring about.
  void fill() {
    chipstate& chip = record_.poke();
    chip.cycles = 2147483647;
    chip.progmem[0] = 0x2FF;  // DECFSZ 1F,W and the like are the longest instructions
    record_.refresh();
    record_.click(id::WATCHDOG);
    record_.type(id::FREC, "20000");
    record_.choose_rows(id::MD, 0, 15, {15});
    record_.type(id::direc, "000");
    record_.type(id::INS, "DECFSZ 1F,W");
    window_->refresh();
    QCoreApplication::processEvents();
  }

  [[nodiscard]] std::string cut() {
    std::string all;
    for (const control& one : record_.look_all()) {
      const QWidget& widget = *window_->widget_of(one.which(), one.index());
      if (!widget.isVisible()) continue;
      const QRect within(widget.mapTo(panel_, QPoint()), widget.size());
      if (!panel_->rect().contains(within)) all += "\n" + one.name() + " lies outside the panel";
      switch (one.is()) {
        case kind::label:
          // Names of files are cut on purpose, with an ellipsis.
          if (one.which() != id::FILHEX && one.which() != id::FILASM)
            all += shortfall("label", widget, room_of_label(static_cast<const QLabel&>(widget)));
          break;
        case kind::button:
          all += shortfall(
              "button", widget,
              room_of_button(static_cast<const QAbstractButton&>(widget), QStyle::SE_PushButtonContents));
          break;
        case kind::check:
          all += shortfall(
              "check box", widget,
              room_of_button(static_cast<const QAbstractButton&>(widget), QStyle::SE_CheckBoxContents));
          break;
        case kind::option:
          all += shortfall(
              "option", widget,
              room_of_button(static_cast<const QAbstractButton&>(widget), QStyle::SE_RadioButtonContents));
          break;
        case kind::combo:
          all += shortfall("combo", widget, room_of_combo(static_cast<const QComboBox&>(widget)));
          break;
        case kind::list:
          all += shortfall("list", widget, room_of_list(static_cast<const QListView&>(widget)));
          break;
        case kind::text:
          if (const auto* const edit = qobject_cast<const QLineEdit*>(&widget))
            all += shortfall("box", widget, room_of_line(*edit, to_qt(one.text())));
          break;
        default: break;
      }
    }
    return all;
  }

  /// Controls that lie over each other, seen from the window.
  [[nodiscard]] std::string overlapping() {
    std::string all;
    std::vector<std::pair<const control*, QRect>> seen;
    for (const control& one : record_.look_all()) {
      const QWidget& widget = *window_->widget_of(one.which(), one.index());
      if (!widget.isVisible() || one.is() == kind::frame) continue;
      const QRect here(widget.mapTo(panel_, QPoint()), widget.size());
      for (const auto& [other, there] : seen)
        if (here.intersects(there)) all += one.name() + " and " + other->name() + "\n";
      seen.emplace_back(&one, here);
    }
    return all;
  }

  QFont before_ = QApplication::font();
  qt_host host_;
  Estructura record_{host_};
  std::unique_ptr<main_window> window_;
  QWidget* panel_ = nullptr;
};

TEST_P(letter_size, no_text_is_cut_in_the_smallest_window_on_any_device) {
  window_->resize(window_->least());
  for (const auto& [device, model] : catalogue) {
    record_.pick(id::PIC, device);
    fill();
    EXPECT_EQ(cut(), "") << device << ", letters of " << window_->font().pointSizeF() << " pt in a window of "
                         << window_->width() << " by " << window_->height();
  }
}

TEST_P(letter_size, nothing_lies_over_anything_else) {
  for (const auto& [device, model] : catalogue) {
    record_.pick(id::PIC, device);
    fill();
    EXPECT_EQ(overlapping(), "") << device;
  }
}

TEST_P(letter_size, the_window_opens_within_its_screen) {
  const QSize screen = window_->screen()->availableSize();
  EXPECT_LE(window_->width(), screen.width());
  EXPECT_LE(window_->height(), screen.height());
}

TEST_P(letter_size, the_window_opens_at_its_top_left_corner) {
  EXPECT_EQ(panel_->pos(), QPoint(0, 0));
}

TEST_P(letter_size, what_has_the_focus_is_in_sight) {
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  const QWidget* const first = QApplication::focusWidget();
  for (int walked = 0; walked < 200; ++walked) {
    const QWidget& focus = *QApplication::focusWidget();
    EXPECT_TRUE(in_sight(focus)) << focus.objectName().toStdString();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    if (QApplication::focusWidget() == first) return;
  }
  ADD_FAILURE() << "the Tab key does not come round";
}

TEST_P(letter_size, a_box_that_the_window_gives_the_focus_comes_into_sight) {
  record_.choose_rows(id::MDP, 0, 8, {8});
  window_->refresh();
  EXPECT_EQ(QApplication::focusWidget(), window_->widget_of(id::dat));
  EXPECT_TRUE(in_sight(*window_->widget_of(id::dat)));
  record_.focus(id::sl, 0);
  window_->refresh();
  EXPECT_TRUE(in_sight(*window_->widget_of(id::sl, 0)));
}

INSTANTIATE_TEST_SUITE_P(at_points, letter_size, testing::Values(8, 9, 10, 11, 13, 16, 20));

}  // namespace
}  // namespace estructura
