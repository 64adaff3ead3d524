#include "ui/panel.h"

namespace estructura {

panel::panel(const shared_parts& shared, std::span<const handler_row> rows)
    : chip_(shared.chip),
      in_(shared.in),
      runner_(shared.runner),
      documents_(shared.documents),
      host_(shared.host),
      window_(shared.window),
      controls_(shared.controls),
      rows_(rows) {
  for (const handler_row& row : rows_) controls_.claim(row.which, *this);
}

const handler_row* panel::row_of(id which, event what) const {
  for (const handler_row& row : rows_)
    if (row.which == which && row.what == what) return &row;
  return nullptr;
}

bool panel::answers(id which, event what) const {
  return row_of(which, what) != nullptr;
}

void panel::raised(const control& source, event what) {
  if (const handler_row* const row = row_of(source.which(), what)) row->act(*this, source.index());
}

}  // namespace estructura
