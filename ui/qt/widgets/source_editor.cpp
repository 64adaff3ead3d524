#include "ui/qt/widgets/source_editor.h"

#include <algorithm>
#include <optional>
#include <utility>

#include <QAbstractTextDocumentLayout>
#include <QEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <QTextLayout>
#include <QToolTip>

#include "ui/qt/text/text_conversion.h"

namespace estructura {

namespace {

/// A line that has never been coloured; Qt gives new lines this state.
constexpr int uncoloured = -1;
/// Where it is worth the memory to keep a line's letters in place.
constexpr int long_line = 2000;
/// The property of a stretch of letters that is to be underlined.
constexpr int odd_operand = QTextFormat::UserProperty;
/// Digits that the numbers have room for from the start.
constexpr int least_digits = 3;

}  // namespace

/// The line numbers. They take no focus and no clicks, and what is true of them is true of the editor.
class source_editor::line_number_margin final : public QWidget {
 public:
  explicit line_number_margin(source_editor* editor) : QWidget(editor), editor_(editor) {
    setAccessibleName(QStringLiteral("Números de línea"));
  }

 protected:
  void paintEvent(QPaintEvent* event) override { editor_->paint_margin(event->rect()); }

 private:
  source_editor* editor_;
};

/// What a line defines, for as long as the line is there.
class source_editor::line_name final : public QTextBlockUserData {
 public:
  line_name(std::shared_ptr<name_table> names, definition made)
      : names_(std::move(names)), made_(std::move(made)) {
    names_->add(made_);
  }
  ~line_name() override { names_->remove(made_); }
  line_name(const line_name&) = delete;
  line_name& operator=(const line_name&) = delete;
  line_name(line_name&&) = delete;
  line_name& operator=(line_name&&) = delete;

  [[nodiscard]] const definition& made() const { return made_; }

 private:
  std::shared_ptr<name_table> names_;
  definition made_;
};

source_editor::source_editor() : margin_(new line_number_margin(this)), colours_(palette()) {
  QObject::connect(document(), &QTextDocument::contentsChange, this,
                   [this](int position, int, int added) { uncolour(position, added); });
  QObject::connect(this, &QPlainTextEdit::blockCountChanged, this, [this] { measure_margin(); });
  QObject::connect(this, &QPlainTextEdit::cursorPositionChanged, this, [this] {
    margin_->update();
    describe_caret();
  });
  QObject::connect(this, &QPlainTextEdit::textChanged, this, [this] { describe_caret(); });
  QObject::connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect& region, int scrolled) {
    if (scrolled != 0)
      margin_->scroll(0, scrolled);
    else
      margin_->update(0, region.y(), margin_->width(), region.height());
  });
  measure_margin();
}

const QWidget& source_editor::margin() const {
  return *margin_;
}

// --- text ---

void source_editor::new_document(const QString& text) {
  setPlainText(text);
}

void source_editor::replace(int from, int to, const QString& text) {
  QTextCursor cursor(document());
  cursor.setPosition(from);
  cursor.setPosition(to, QTextCursor::KeepAnchor);
  // A step of its own: what is typed right before and right after is joined to it otherwise. Qt joins steps
  // only in a document that differs from its file, and this flag of it serves nothing else here.
  document()->setModified(false);
  cursor.insertText(text);
  document()->setModified(false);
}

QMimeData* source_editor::createMimeDataFromSelection() const {
  auto* const copied = new QMimeData;
  copied->setText(without_stand_ins(textCursor().selection().toPlainText()));
  return copied;
}

void source_editor::keyPressEvent(QKeyEvent* event) {
  // Ctrl+Shift+Z is known everywhere, this one on some desktops alone.
  if (event->keyCombination() == (Qt::CTRL | Qt::Key_Y))
    redo();
  else if (event->keyCombination() == QKeyCombination(Qt::Key_F1))
    show_tip_at_caret();
  else
    QPlainTextEdit::keyPressEvent(event);
}

// --- colours ---

void source_editor::take_colours() {
  colours_ = source_colours(palette());
  ++colouring_;
  mark_error();
  margin_->update();
}

void source_editor::changeEvent(QEvent* event) {
  QPlainTextEdit::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) take_colours();
  if (event->type() == QEvent::FontChange) measure_margin();
}

void source_editor::uncolour(int position, int added) {
  const int end = position + added;
  for (QTextBlock line = document()->findBlock(position); line.isValid() && line.position() <= end;
       line = line.next()) {
    line.setUserState(uncoloured);
    note_name(line);
  }
  if (names_->changes() == names_seen_) return;
  // Whether an operand is a name is for the whole text to say.
  names_seen_ = names_->changes();
  ++colouring_;
  viewport()->update();
}

void source_editor::note_name(QTextBlock& line) {
  std::optional<definition> made = definition_in(line.text());
  const auto* const held = dynamic_cast<const line_name*>(line.userData());
  if (held != nullptr ? made == held->made() : !made) return;
  line.setUserData(nullptr);
  if (made) line.setUserData(new line_name(names_, std::move(*made)));
}

void source_editor::colour_line(QTextBlock& line) {
  QTextLayout& layout = *line.layout();
  // What an input method is composing has formats of its own; the line is told of again when it is done.
  if (!layout.preeditAreaText().isEmpty()) return;
  line.setUserState(colouring_);
  // Qt forgets how a line looks once it is painted, and works it out again for each place of the caret: with
  // a long line that is what all the time goes into.
  layout.setCacheEnabled(line.length() > long_line);
  QList<QTextLayout::FormatRange> formats;
  for (const coloured_part& part : coloured_parts(line.text())) {
    QTextCharFormat format;
    format.setForeground(colours_.of(part.is));
    formats.push_back({part.start, part.length, format});
  }
  for (const odd_part& part : odd_parts(line.text(), *names_)) {
    QTextCharFormat format;
    format.setProperty(odd_operand, true);
    formats.push_back({part.start, part.length, format});
  }
  if (formats == layout.formats()) return;
  layout.setFormats(formats);
  document()->markContentsDirty(line.position(), line.length());
}

void source_editor::colour_visible_lines() {
  // Colours move nothing: the painting that is about to begin is enough.
  const QSignalBlocker quiet(document()->documentLayout());
  const int bottom = viewport()->height();
  for (QTextBlock line = firstVisibleBlock(); line.isValid(); line = line.next()) {
    if (blockBoundingGeometry(line).translated(contentOffset()).top() > bottom) break;
    if (line.userState() != colouring_) colour_line(line);
  }
}

void source_editor::paintEvent(QPaintEvent* event) {
  colour_visible_lines();
  QPlainTextEdit::paintEvent(event);
  underline_odd_operands();
}

// --- operands that are read as something else ---

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

// --- the line with the error ---

void source_editor::set_error_line(int line) {
  if (error_line_ == line) return;
  error_line_ = line;
  mark_error();
  margin_->update();
  // The box that tells of the error may be up before the line is selected.
  const QTextBlock marked = document()->findBlockByNumber(line - 1);
  if (line > 0 && !viewport()->rect().contains(cursorRect(QTextCursor(marked)).center()))
    verticalScrollBar()->setValue(std::max(0, line - 4));
}

void source_editor::mark_error() {
  QList<QTextEdit::ExtraSelection> marks;
  if (const QTextBlock line = document()->findBlockByNumber(error_line_ - 1); line.isValid()) {
    QTextEdit::ExtraSelection mark;
    mark.format.setBackground(colours_.error_ground);
    mark.format.setProperty(QTextFormat::FullWidthSelection, true);
    mark.cursor = QTextCursor(line);
    marks.push_back(mark);
  }
  setExtraSelections(marks);
}

// --- line numbers ---

void source_editor::measure_margin() {
  int digits = 1;
  for (int lines = blockCount(); lines >= 10; lines /= 10) ++digits;
  // Before them the sign of an error, a blank at either side.
  const int characters = std::max(digits, least_digits) + 2;
  const int width = fontMetrics().horizontalAdvance(QString(characters, QLatin1Char('0')));
  setViewportMargins(width, 0, 0, 0);
  place_margin();
}

void source_editor::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  place_margin();
}

void source_editor::place_margin() {
  const QRect text = viewport()->geometry();
  margin_->setGeometry(contentsRect().left(), text.top(), viewportMargins().left(), text.height());
}

void source_editor::paint_margin(const QRect& region) {
  QPainter painter(margin_);
  painter.fillRect(region, colours_.margin_ground);
  painter.setFont(font());
  const int letter = fontMetrics().horizontalAdvance(QLatin1Char('0'));
  const int current = textCursor().blockNumber();
  for (QTextBlock line = firstVisibleBlock(); line.isValid(); line = line.next()) {
    const QRectF place = blockBoundingGeometry(line).translated(contentOffset());
    if (place.top() > region.bottom()) break;
    // The last line's place takes in the margin below the text.
    const double below = line.next().isValid() ? 0 : document()->documentMargin();
    const QRect row(0, static_cast<int>(place.top()), margin_->width(),
                    static_cast<int>(place.height() - below));
    const QRect inside = row.adjusted(letter / 2, 0, -letter / 2, 0);
    const int number = line.blockNumber();
    const bool wrong = number + 1 == error_line_;
    if (wrong) painter.fillRect(row, colours_.error_number_ground);
    const QColor quiet = number == current ? colours_.current_number : colours_.margin_number;
    painter.setPen(wrong ? colours_.error_number : quiet);
    if (wrong) painter.drawText(inside, Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("!"));
    painter.drawText(inside, Qt::AlignRight | Qt::AlignVCenter, QString::number(number + 1));
  }
}

}  // namespace estructura
