// Pictures of the file buttons, drawn as needed: sharp at any scale, in the palette's colours. And the
// program's own icon, the same that paquete/ installs.
//
//   button->setIcon(icono(id::cargar));      // an empty icon for a control that has no picture
#pragma once

#include <QIcon>

#include "ui/inventory.h"

namespace estructura {

QIcon icono(id which);
QIcon icono_programa();

}  // namespace estructura
