// What `show` and `expect` can look at, by its name.
//
//   look_at(driver, desk, "ciclos.caption")     -> "0"
//   look_at(driver, desk, "chip.regs(3)")       -> 24
//   look_at(driver, desk, "boxes")              -> the boxes since the last look, which this was
#pragma once

#include <string_view>

#include "guion/scripted_desktop.h"
#include "guion/window_driver.h"
#include "guion/words.h"

namespace estructura::guiones {

/// The value of a name; throws when there is nothing of that name.
script_value look_at(window_driver& driver, scripted_desktop& desk, std::string_view what);

}  // namespace estructura::guiones
