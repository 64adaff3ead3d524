// The left and the middle column of the window: the source with its listing, and program memory with its map.
// A splitter shares out between them all the room that there is.
//
//   lay_out_documents(parts, panel);      // and Frame7 is put where both columns are to stand
#pragma once

#include "ui/qt/window/layout_parts.h"

namespace estructura {

class form_area;

void lay_out_documents(const layout_parts& parts, form_area& panel);

}  // namespace estructura
