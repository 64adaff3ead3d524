#include "ui/qt/widgets/source_editor.h"

#include <algorithm>
#include <optional>
#include <utility>

#include <QAbstractTextDocumentLayout>
#include <QEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <QTextLayout>

#include "ui/qt/text/text_conversion.h"
#include "ui/qt/widgets/line_numbers.h"

namespace estructura {

namespace {

/// A line that has never been coloured; Qt gives new lines this state.
constexpr int uncoloured = -1;
/// Where it is worth the memory to keep a line's letters in place.
constexpr int long_line = 2000;

}  // namespace

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

source_editor::source_editor()
    : margin_(new line_numbers(*this, [this](const QRect& region) { paint_margin(region); })),
      colours_(palette()) {
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

}  // namespace estructura
