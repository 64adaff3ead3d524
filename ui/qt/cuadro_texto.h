// Text boxes: lines of entry, the source and the listing. Text, caret and selection are the record's; what
// the person types or selects is told to it in its own counting (texto_qt.h).
#pragma once

#include <memory>

#include "ui/qt/enlace.h"

namespace estructura {

std::unique_ptr<enlace> enlaza_texto(const control& record, puerta& door, const medidas& measures);

}  // namespace estructura
