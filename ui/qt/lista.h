// Lists of the window on Qt's model and view: the rows of a list's record, its selection, and the person's
// clicks.
//
//   modelo_lista model;
//   model.pon({" 000\tC05\tMOVLW 05", " 001\t???"});
//   vista_lista view(traits, measures);
//   view.setModel(&model);
//
// The tab characters of a line stand for columns. The selection is the record's: what the person chooses goes
// through the door and comes back from there.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QAbstractListModel>
#include <QListView>
#include <QStyledItemDelegate>

#include "ui/qt/enlace.h"

namespace estructura {

class modelo_lista final : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

  /// What is read aloud of a line, where it is more than what is shown.
  std::function<QString(int row)> voz;

  /// The rows as they are now. Only lines whose text differs are announced.
  void pon(const std::vector<std::string>& rows);

 private:
  std::vector<std::string> rows_;
};

/// How a list looks; which list looks how is a table in lista.cpp.
struct aspecto_lista {
  int filas = 0;        ///< lines it is exactly as high as; 0: as high as there is room
  int letras = 0;       ///< characters of its longest line
  int holgura = 1;      ///< room beside them, in characters, half of it at either side
  int tenues = 0;       ///< leading columns in a fainter colour, of names and addresses
  bool varias = false;  ///< several lines may be selected
  int canal = 0;        ///< characters of room before them, for the arrow of the current instruction
};

class vista_lista final : public QListView {
 public:
  vista_lista(const aspecto_lista& traits, const medidas& measures);

  /// The person chose: the current line and the selected ones.
  std::function<void(int current, std::vector<int> selected)> elegida;
  /// A double-click on a line, or the Enter key on the current one.
  std::function<void(int row)> doble_click;

  /// Takes the record's selection; `chosen`: the record has chosen anew, be it the same line.
  void pon_seleccion(int current, const std::vector<int>& selected, bool chosen);

  /// Lines that have changed: a bit for each, the first one's lowest.
  void pon_novedades(std::uint32_t rows);
  [[nodiscard]] std::uint32_t marcadas() const { return news_; }
  /// The line of the instruction that is executed next, -1 for none.
  void pon_siguiente(int row);
  [[nodiscard]] int siguiente() const { return next_; }

  [[nodiscard]] int actual() const { return currentIndex().row(); }
  [[nodiscard]] std::vector<int> seleccionadas() const;

  [[nodiscard]] QSize sizeHint() const override { return least_; }
  [[nodiscard]] QSize minimumSizeHint() const override { return least_; }

  void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
  void keyboardSearch(const QString& search) override;

 protected:
  void dataChanged(const QModelIndex& from, const QModelIndex& to, const QList<int>& roles) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void selectionChanged(const QItemSelection& now, const QItemSelection& before) override;

 private:
  void warn();
  bool mueve_cursor(int key);
  /// In a window that scrolls, only a part of the list may be seen: the line comes there.
  void bring_into_seen_part(const QModelIndex& index);

  aspecto_lista traits_;
  QSize least_;
  bool centra_ = false;  ///< it is the record that moves the current line
  int within_ = 0;  ///< events and copies of the record in progress: whoever selects then tells it himself
  std::uint32_t news_ = 0;
  int next_ = -1;
  int cursor_ = -1;  ///< line the arrow keys stand on in a list of single selection, -1 none
};

std::unique_ptr<enlace> enlaza_lista(const control& record, puerta& door, const medidas& measures);

}  // namespace estructura
