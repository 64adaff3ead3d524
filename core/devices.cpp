#include "core/devices.h"

namespace estructura {

void select_device(chipstate& chip, int index) {
  if (index < 0 || index >= device_count) throw_fault("device out of bounds");
  chip.devmodel = catalogue[static_cast<std::size_t>(index)].model;
}

}  // namespace estructura
