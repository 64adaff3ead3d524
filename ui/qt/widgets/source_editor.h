// The editor of the source: line numbers at its left, colours, the line with the error marked, and a history
// of what was typed that outlives what the program itself changes in the text.
//
//   auto* edit = new source_editor;
//   edit->new_document("NOP\n");           // nothing to undo
//   edit->replace(3, 3, "\nSLEEP");             // undone and done again as one step
//   edit->set_error_line(2);
//
// Lines are coloured when they are first painted: the time for a text does not depend on its length. Operands
// that are read as something else than they look are underlined; the tip there, the F1 key with the caret
// there, and the editor's description tell what they are read as.
#pragma once

#include <memory>

#include <QPlainTextEdit>
#include <QTextLayout>

#include "ui/qt/look/highlighter.h"

namespace estructura {

class source_editor final : public QPlainTextEdit {
 public:
  source_editor();

  void new_document(const QString& text);
  /// Replaces what stands between two positions.
  void replace(int from, int to, const QString& text);
  /// The line marked, from 1; 0 for none.
  void set_error_line(int line);

  [[nodiscard]] int error_line() const { return error_line_; }
  [[nodiscard]] const QWidget& margin() const { return *margin_; }
  [[nodiscard]] const source_colours& colours() const { return colours_; }
  /// What is said of the operand at a position of the text, its end included; empty where nothing is.
  [[nodiscard]] QString tip_at(int position) const;
  /// The stretches of a line that are underlined, as it was last painted.
  [[nodiscard]] static QList<QTextLayout::FormatRange> underlined(const QTextBlock& line);

 protected:
  void changeEvent(QEvent* event) override;
  [[nodiscard]] QMimeData* createMimeDataFromSelection() const override;
  void focusInEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool viewportEvent(QEvent* event) override;

 private:
  class line_name;

  /// The property of a stretch of letters that is to be underlined.
  static constexpr int odd_operand = QTextFormat::UserProperty;

  void colour_visible_lines();
  void colour_line(QTextBlock& line);
  void uncolour(int position, int added);
  void note_name(QTextBlock& line);
  void underline_odd_operands();
  static void underline(QPainter& painter, const QPointF& corner, const QTextLayout& layout,
                        const QTextLayout::FormatRange& range);
  bool show_tip(const QPoint& place);
  void show_tip_at_caret();
  void describe_caret();
  void take_colours();
  void mark_error();
  void measure_margin();
  void place_margin();
  void paint_margin(const QRect& region);
  void paint_number(QPainter& painter, const QRect& row, int number) const;

  QWidget* margin_;
  source_colours colours_;
  /// What the lines define; each line that defines something holds it too, until the document lets it go.
  std::shared_ptr<name_table> names_ = std::make_shared<name_table>();
  unsigned names_seen_ = 0;  ///< the names' changes that the colours know of
  QString caret_tip_;        ///< what the description says of the caret's place
  int colouring_ = 0;        ///< what a line's user state is while its colours are right
  int error_line_ = 0;
};

}  // namespace estructura
