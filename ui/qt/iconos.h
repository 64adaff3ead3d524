// Pictures of the file buttons and of the program, drawn as needed: sharp at any scale, in the palette's
// colours.
//
//   button->setIcon(icono(id::cargar));      // an empty icon for a control that has no picture
#pragma once

#include <QIcon>

#include "ui/controles.h"

namespace estructura {

QIcon icono(id which);
QIcon icono_programa();

}  // namespace estructura
