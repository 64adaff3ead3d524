// Pictures of the file buttons, drawn as needed: sharp at any scale, in the palette's colours. And the
// program's own icon, the same that packaging/ installs.
//
//   button->setIcon(control_icon(id::cargar));      // an empty icon for a control that has no picture
#pragma once

#include <QIcon>

#include "ui/inventory.h"

namespace estructura {

QIcon control_icon(id which);
QIcon program_icon();

}  // namespace estructura
