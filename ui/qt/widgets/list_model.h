// The lines of a list for Qt's views.
//
//   list_model model;
//   model.set_rows({" 000\tC05\tMOVLW 05", " 001\t???"});
//   view.setModel(&model);
//
// The tab characters of a line stand for columns.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QAbstractListModel>

namespace estructura {

class list_model final : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

  /// What is read aloud of a line, where it is more than what is shown.
  std::function<QString(int row)> spoken;

  /// The rows as they are now. Only lines whose text differs are announced.
  void set_rows(const std::vector<std::string>& rows);

 private:
  std::vector<std::string> rows_;
};

}  // namespace estructura
