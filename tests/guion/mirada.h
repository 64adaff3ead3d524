// What `show` and `expect` can look at, by its name.
//
//   mira(driver, desk, "ciclos.caption")     -> "0"
//   mira(driver, desk, "chip.regs(3)")       -> 24
//   mira(driver, desk, "boxes")              -> the boxes since the last look, which this was
#pragma once

#include <string_view>

#include "guion/conductor.h"
#include "guion/escritorio.h"
#include "guion/palabras.h"

namespace estructura::guiones {

/// The value of a name; throws when there is nothing of that name.
valor mira(conductor& driver, escritorio& desk, std::string_view what);

}  // namespace estructura::guiones
