// What a screen reader says for a control that shows no text of its own to be named by.
//
//   nombre_accesible(window.look(id::dat))      -> "Dato"
//   nombre_accesible(window.look(id::PB, 3))    -> "PB 3"
//   nombre_accesible(window.look(id::eje1))     -> "": its caption says it
#pragma once

#include <QString>

#include "ui/control.h"

namespace estructura {

QString nombre_accesible(const control& record);

}  // namespace estructura
