#include "ui/qt/widgets/list_model.h"

#include "ui/qt/text/text_conversion.h"

namespace estructura {

int list_model::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant list_model::data(const QModelIndex& index, int role) const {
  if (role == Qt::AccessibleTextRole && index.isValid() && spoken) return spoken(index.row());
  if (role != Qt::DisplayRole || !index.isValid()) return {};
  return to_qt(rows_[static_cast<std::size_t>(index.row())]);
}

void list_model::set_rows(const std::vector<std::string>& rows) {
  if (rows.size() != rows_.size()) {
    beginResetModel();
    rows_ = rows;
    endResetModel();
    return;
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (rows_[i] == rows[i]) continue;
    rows_[i] = rows[i];
    const QModelIndex changed = index(static_cast<int>(i));
    emit dataChanged(changed, changed, {Qt::DisplayRole});
  }
}

}  // namespace estructura
