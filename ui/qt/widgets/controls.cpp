#include "ui/qt/widgets/controls.h"

#include <algorithm>

#include <QFontInfo>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QToolTip>
#include <QWheelEvent>

#include "ui/qt/look/colours.h"

namespace estructura {

namespace {

void paint_separator(QPainter& painter, const QPalette& palette, int left, int right, int y) {
  painter.fillRect(left, y, right - left, 1, soft_line(palette));
}

void paint_focus(QPainter& painter, const QWidget& widget, const QRect& room) {
  QStyleOptionFocusRect focus;
  focus.initFrom(&widget);
  focus.rect = room.isEmpty() ? widget.rect() : room;
  focus.state |= QStyle::State_KeyboardFocusChange;
  focus.backgroundColor = widget.palette().color(QPalette::Window);
  widget.style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, &widget);
}

}  // namespace

// --- check boxes and option buttons ---

namespace {

/// The colours of a mark: whether it can be used, and what it says while it is pointed at or held down.
void prepare_mark(QPainter& painter, const QStyleOption& option) {
  const QPalette& palette = option.palette;
  const bool usable = (option.state & QStyle::State_Enabled) != 0;
  painter.setRenderHint(QPainter::Antialiasing);
  if (!usable) {
    painter.setPen(QPen(palette.color(QPalette::Disabled, QPalette::WindowText), 1, Qt::DotLine));
    painter.setBrush(Qt::NoBrush);
    return;
  }
  const bool focused = (option.state & QStyle::State_HasFocus) != 0;
  const bool pointed_at = (option.state & QStyle::State_MouseOver) != 0;
  const bool down = (option.state & QStyle::State_Sunken) != 0;
  const QColor edge = focused      ? palette.color(QPalette::WindowText)
                      : pointed_at ? palette.color(QPalette::Highlight)
                                   : strong_line(palette);
  painter.setPen(QPen(edge, focused ? 2 : 1));
  painter.setBrush(palette.color(down ? QPalette::Window : QPalette::Base));
}

QColor mark_colour(const QStyleOption& option) {
  const bool usable = (option.state & QStyle::State_Enabled) != 0;
  return option.palette.color(usable ? QPalette::Active : QPalette::Disabled, QPalette::Text);
}

/// Half a pixel in, so that a thin line falls upon whole pixels; a thick one reaches beyond the mark.
QRectF edge_of(const QRect& mark) {
  return QRectF(mark).adjusted(0.5, 0.5, -0.5, -0.5);
}

}  // namespace

void check_box::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  const QRect mark = style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, this);
  painter.save();
  QStyleOptionButton shown = option;
  if (display_only) shown.state &= ~QStyle::State_Enabled;
  prepare_mark(painter, shown);
  painter.drawRect(edge_of(mark));
  if (isChecked()) {
    // A tick.
    const QRectF room = QRectF(mark);
    const auto at = [&room](double x, double y) {
      return QPointF(room.left() + x * room.width(), room.top() + y * room.height());
    };
    painter.setPen(QPen(mark_colour(option), room.width() / 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF({at(0.25, 0.52), at(0.43, 0.72), at(0.76, 0.27)}));
  }
  painter.restore();
  QStyleOptionButton caption = option;
  caption.rect = style()->subElementRect(QStyle::SE_CheckBoxContents, &option, this);
  painter.drawControl(QStyle::CE_CheckBoxLabel, caption);
  if (hasFocus())
    paint_focus(painter, *this, style()->subElementRect(QStyle::SE_CheckBoxFocusRect, &option, this));
}

void option_button::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  const QRect mark = style()->subElementRect(QStyle::SE_RadioButtonIndicator, &option, this);
  painter.save();
  prepare_mark(painter, option);
  painter.drawEllipse(edge_of(mark));
  if (isChecked()) {
    const double inside = mark.width() / 4.0;
    painter.setPen(Qt::NoPen);
    painter.setBrush(mark_colour(option));
    painter.drawEllipse(QRectF(mark).adjusted(inside, inside, -inside, -inside));
  }
  painter.restore();
  QStyleOptionButton caption = option;
  caption.rect = style()->subElementRect(QStyle::SE_RadioButtonContents, &option, this);
  painter.drawControl(QStyle::CE_RadioButtonLabel, caption);
  if (hasFocus())
    paint_focus(painter, *this, style()->subElementRect(QStyle::SE_RadioButtonFocusRect, &option, this));
}

int indicator_style::pixelMetric(PixelMetric metric, const QStyleOption* option,
                                 const QWidget* widget) const {
  const int styled = QProxyStyle::pixelMetric(metric, option, widget);
  switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
      if (widget == nullptr) return styled;
      return std::max(styled, QFontInfo(widget->font()).pixelSize());
    default: return styled;
  }
}

// --- buttons ---

push_button::push_button() {
  // The Enter key presses it too, as in a dialog.
  setAutoDefault(true);
}

QSize push_button::sizeHint() const {
  const QSize styled = QPushButton::sizeHint();
  return {minimumWidth() > 0 ? minimumWidth() : styled.width(), styled.height()};
}

void push_button::keyPressEvent(QKeyEvent* event) {
  // Qt presses once more for each repeat: the key that has started a run would stop it, and the one that
  // opened a box answer it.
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && event->isAutoRepeat() && !repeats) return;
  QPushButton::keyPressEvent(event);
}

void combo_box::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

void combo_box::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End: return showPopup();
    default: break;
  }
  // Letters and digits would look for an entry.
  if (event->text().isEmpty() || !event->text().front().isLetterOrNumber()) QComboBox::keyPressEvent(event);
}

// --- labels ---

void text_label::elide() {
  elides_ = true;
  setSizePolicy(QSizePolicy::Maximum, sizePolicy().verticalPolicy());
}

QSize text_label::minimumSizeHint() const {
  const QSize whole = QLabel::minimumSizeHint();
  if (!elides_) return whole;
  constexpr int least = 8;
  return {std::min(whole.width(), least * fontMetrics().averageCharWidth()), whole.height()};
}

void text_label::set_changes(std::uint32_t characters) {
  if (changes_ == characters) return;
  changes_ = characters;
  update();
}

bool text_label::event(QEvent* event) {
  // A tip that is a file name with "<" in it would be taken for marked-up text.
  if (event->type() != QEvent::ToolTip || !Qt::mightBeRichText(toolTip())) return QLabel::event(event);
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                     QStringLiteral("<qt>") + toolTip().toHtmlEscaped() + QStringLiteral("</qt>"), this);
  return true;
}

void text_label::paintEvent(QPaintEvent* event) {
  const QRect room = contentsRect();
  if (changes_ != 0) return paint_changes();
  if (!elides_ || fontMetrics().horizontalAdvance(text()) <= room.width()) {
    QLabel::paintEvent(event);
    return;
  }
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                   fontMetrics().elidedText(text(), Qt::ElideMiddle, room.width()));
}

void text_label::paint_changes() {
  QPainter painter(this);
  drawFrame(&painter);
  // A label with a frame keeps half an "x" between the two, unless told otherwise.
  const int inset = indent() >= 0 || frameWidth() == 0
                        ? std::max(indent(), 0)
                        : fontMetrics().horizontalAdvance(QLatin1Char('x')) / 2;
  const QRect room = contentsRect().adjusted(inset, 0, -inset, 0);
  const QColor ground = palette().color(backgroundRole());
  const QString shown = text();
  const auto length = static_cast<int>(shown.size());
  const double letter = fontMetrics().horizontalAdvance(QString(100, QLatin1Char('0'))) / 100.0;
  const double left = (alignment() & Qt::AlignRight) != 0 ? room.right() + 1 - length * letter : room.left();
  QFont strong = font();
  strong.setBold(true);
  const auto changed = [&](int at) { return at < length && (changes_ >> (length - 1 - at) & 1U) != 0; };
  for (int at = 0; at < length; ++at) {
    if (!changed(at)) continue;
    int end = at;
    while (changed(end)) ++end;
    const QRectF cell(left + at * letter, room.top() + 1, (end - at) * letter, room.height() - 2);
    painter.fillRect(cell, change_ground(ground, palette().color(foregroundRole())));
    painter.fillRect(QRectF(cell.left(), cell.bottom() - 2, cell.width(), 2), change_bar(ground));
    at = end;
  }
  painter.setPen(palette().color(foregroundRole()));
  for (int at = 0; at < length; ++at) {
    painter.setFont(changed(at) ? strong : font());
    painter.drawText(QRectF(left + at * letter, room.top(), letter, room.height()),
                     Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip, shown.mid(at, 1));
  }
}

void text_label::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && double_clicked) double_clicked();
}

// --- groups ---

int group_box::title_height(const QWidget& where) {
  const int height = where.fontMetrics().height();
  return height + height / 4;
}

void group_box::set_caption(const QString& title) {
  if (title == this->title()) return;
  setTitle(title);
  set_margins();
}

void group_box::set_margins() {
  // QGroupBox gives itself the style's margins at each of these occasions.
  setContentsMargins(0, title().isEmpty() ? 0 : title_height(*this), 0, 0);
}

void group_box::changeEvent(QEvent* event) {
  QGroupBox::changeEvent(event);
  set_margins();
}

void group_box::resizeEvent(QResizeEvent* event) {
  QGroupBox::resizeEvent(event);
  set_margins();
}

void group_box::paintEvent(QPaintEvent*) {
  if (title().isEmpty()) return;
  QPainter painter(this);
  QFont bold = font();
  bold.setBold(true);
  painter.setFont(bold);
  painter.setPen(palette().color(QPalette::WindowText));
  const QRect line(0, 0, width(), title_height(*this));
  QRect written;
  painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, title(), &written);
  paint_separator(painter, palette(), written.right() + fontMetrics().averageCharWidth(), width(),
                  line.center().y());
}

separator_line::separator_line() {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void separator_line::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paint_separator(painter, palette(), 0, width(), rect().center().y());
}

// --- splitter ---

namespace {

class pane_handle final : public QSplitterHandle {
 public:
  pane_handle(Qt::Orientation orientation, QSplitter* parent) : QSplitterHandle(orientation, parent) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    // Two short lines: something to hold on to.
    QPainter painter(this);
    const QPoint middle = rect().center();
    const int length = 2 * width();
    const QColor colour = underMouse() ? palette().color(QPalette::Highlight) : strong_line(palette());
    for (const int x : {middle.x() - 1, middle.x() + 1})
      painter.fillRect(x, middle.y() - length / 2, 1, length, colour);
  }
  void enterEvent(QEnterEvent*) override { update(); }
  void leaveEvent(QEvent*) override { update(); }
};

}  // namespace

pane_splitter::pane_splitter() {
  setChildrenCollapsible(false);
}

QSplitterHandle* pane_splitter::createHandle() {
  return new pane_handle(orientation(), this);
}

}  // namespace estructura
