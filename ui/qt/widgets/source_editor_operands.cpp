// The operands of the source editor that are read as something else than they look: underlined, and told of
// in a tip and in the editor's description.
#include <algorithm>

#include <QHelpEvent>
#include <QPainter>
#include <QTextBlock>
#include <QToolTip>

#include "ui/qt/widgets/source_editor.h"

namespace estructura {

QString source_editor::tip_at(int position) const {
  const QTextBlock line = document()->findBlock(position);
  const int at = position - line.position();
  for (const odd_part& part : odd_parts(line.text(), *names_))
    if (at >= part.start && at <= part.start + part.length) return part.tip;
  return {};
}

QList<QTextLayout::FormatRange> source_editor::underlined(const QTextBlock& line) {
  QList<QTextLayout::FormatRange> ranges = line.layout()->formats();
  ranges.removeIf(
      [](const QTextLayout::FormatRange& range) { return !range.format.boolProperty(odd_operand); });
  return ranges;
}

/// Drawn here, since the toolkit's own wavy line is a faint one.
void source_editor::underline_odd_operands() {
  QPainter painter(viewport());
  painter.setRenderHint(QPainter::Antialiasing);
  constexpr qreal least_width = 1.3;
  painter.setPen(QPen(colours_.underline, std::max(least_width, fontMetrics().height() / 12.0)));
  const int bottom = viewport()->height();
  for (QTextBlock line = firstVisibleBlock(); line.isValid(); line = line.next()) {
    const QPointF corner = blockBoundingGeometry(line).translated(contentOffset()).topLeft();
    if (corner.y() > bottom) break;
    for (const QTextLayout::FormatRange& range : underlined(line))
      underline(painter, corner, *line.layout(), range);
  }
}

void source_editor::underline(QPainter& painter, const QPointF& corner, const QTextLayout& layout,
                              const QTextLayout::FormatRange& range) {
  const QTextLine row = layout.lineForTextPosition(range.start);
  if (!row.isValid()) return;
  const qreal left = row.cursorToX(range.start);
  const qreal right = row.cursorToX(range.start + range.length);
  // No lower than the letters reach: what lies below is another line's, and is painted with that.
  const qreal height = std::max(2.0, row.descent() - painter.pen().widthF());
  const qreal top = row.y() + row.ascent() + row.descent() - height - painter.pen().widthF() / 2;
  QPolygonF zigzag;
  bool down = false;
  for (qreal x = left; x < right; x += height, down = !down) zigzag << QPointF(x, down ? top + height : top);
  painter.drawPolyline(zigzag.translated(corner));
}

namespace {

/// Whatever the tip quotes is no markup; as markup, a long one is broken into lines.
QString as_tool_tip(const QString& tip) {
  return QStringLiteral("<p>") + tip.toHtmlEscaped() + QStringLiteral("</p>");
}

}  // namespace

bool source_editor::show_tip(const QPoint& place) {
  const QTextBlock line = cursorForPosition(place).block();
  for (const odd_part& part : odd_parts(line.text(), *names_)) {
    QTextCursor end(line);
    QTextCursor start(line);
    start.setPosition(line.position() + part.start);
    end.setPosition(line.position() + part.start + part.length);
    const QRect shown = cursorRect(start).united(cursorRect(end));
    if (!shown.contains(place)) continue;
    QToolTip::showText(viewport()->mapToGlobal(place), as_tool_tip(part.tip), viewport(), shown);
    return true;
  }
  return false;
}

void source_editor::show_tip_at_caret() {
  const QString tip = tip_at(textCursor().position());
  if (tip.isEmpty())
    QToolTip::hideText();
  else
    QToolTip::showText(viewport()->mapToGlobal(cursorRect().bottomLeft()), as_tool_tip(tip), viewport());
}

bool source_editor::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const auto* const help = dynamic_cast<QHelpEvent*>(event);
    if (help != nullptr && show_tip(help->pos())) return true;
    QToolTip::hideText();
  }
  return QPlainTextEdit::viewportEvent(event);
}

void source_editor::describe_caret() {
  const QString tip = tip_at(textCursor().position());
  // The description itself is given from outside, and may have been given anew.
  QString description = accessibleDescription();
  if (!caret_tip_.isEmpty() && description.endsWith(caret_tip_)) description.chop(caret_tip_.size());
  caret_tip_ = tip.isEmpty() ? tip : QLatin1Char(' ') + tip;
  // Each setting is told to whoever listens, be it the same text.
  if (description + caret_tip_ != accessibleDescription()) setAccessibleDescription(description + caret_tip_);
}

void source_editor::focusInEvent(QFocusEvent* event) {
  QPlainTextEdit::focusInEvent(event);
  describe_caret();
}

}  // namespace estructura
