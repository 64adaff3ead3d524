// A part of the form, and the way in which something stands on it and yet among the controls of a frame.
//
// The frames of the window group controls by what they belong to, and are no rectangles: between the buttons
// of the document frame stands the program list, which belongs to the form. A frame's layout gives such a
// widget its place like any other; but the widget is the form's child, and lies over the frame:
//
//   auto* column = new form_area;
//   box->addItem(new overlay_item(*list_on_column, *frame));     // box: a layout of `frame`, which stands on
//   column
#pragma once

#include <QWidget>
#include <QWidgetItem>

namespace estructura {

/// A type of its own for the sake of its accessible object: where its children overlap, what lies above is
/// found.
class form_area final : public QWidget {
 public:
  using QWidget::QWidget;
};

/// The place of a widget in a layout of `owner`, which need not be its parent, only stand on the same one. It
/// follows when the owner, or what the owner stands in, is moved.
class overlay_item final : public QObject, public QLayoutItem {
 public:
  overlay_item(QWidget& widget, QWidget& owner, Qt::Alignment alignment = {});

  // As the widget itself would be laid out. That there is one is kept from the layout, which would make it a
  // child of its own (QLayoutItem::widget).
  [[nodiscard]] QSize sizeHint() const override { return item_.sizeHint(); }
  [[nodiscard]] QSize minimumSize() const override { return item_.minimumSize(); }
  [[nodiscard]] QSize maximumSize() const override { return item_.maximumSize(); }
  [[nodiscard]] Qt::Orientations expandingDirections() const override { return item_.expandingDirections(); }
  [[nodiscard]] bool isEmpty() const override { return item_.isEmpty(); }

  void setGeometry(const QRect& rect) override;
  [[nodiscard]] QRect geometry() const override { return place_; }
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void put();

  QWidgetItem item_;
  QWidget& widget_;
  QWidget& owner_;
  QRect place_;  ///< as the layout gave it, within the owner
  bool watching_ = false;
};

}  // namespace estructura
