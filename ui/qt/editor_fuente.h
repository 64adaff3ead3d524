// The editor of the source: line numbers at its left, colours, the line with the error marked, and a history
// of what was typed that outlives what the program itself changes in the text.
//
//   auto* edit = new editor_fuente;
//   edit->nuevo_documento("NOP\n");           // nothing to undo
//   edit->edita(3, 3, "\nSLEEP");             // undone and done again as one step
//   edit->pon_linea_con_error(2);
//
// Lines are coloured when they are first painted: the time for a text does not depend on its length.
#pragma once

#include <QPlainTextEdit>

#include "ui/qt/resaltado.h"

namespace estructura {

class editor_fuente final : public QPlainTextEdit {
 public:
  editor_fuente();

  void nuevo_documento(const QString& text);
  /// Replaces what stands between two positions.
  void edita(int from, int to, const QString& text);
  /// The line marked, from 1; 0 for none.
  void pon_linea_con_error(int line);

  [[nodiscard]] int linea_con_error() const { return error_line_; }
  [[nodiscard]] const QWidget& margen() const;
  [[nodiscard]] const colores_fuente& colores() const { return colours_; }

 protected:
  void changeEvent(QEvent* event) override;
  [[nodiscard]] QMimeData* createMimeDataFromSelection() const override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  class margen_numeros;

  void colorea_lo_visible();
  void colorea(QTextBlock& line);
  void descolorea(int position, int added);
  void toma_colores();
  void marca_error();
  void mide_margen();
  void coloca_margen();
  void pinta_margen(const QRect& region);

  margen_numeros* margin_;
  colores_fuente colours_;
  int colouring_ = 0;  ///< what a line's user state is while its colours are right
  int error_line_ = 0;
};

}  // namespace estructura
