#include "guion/window_driver.h"

#include "guion/machine_fields.h"

namespace estructura::guiones {

script_place place_of(std::string_view written) {
  std::int64_t number = -1;
  script_place place;
  place.name = name_and_index(written, number);
  if (number >= 0) place.name += '(' + std::to_string(number) + ')';
  const auto found = find_control(place.name);
  if (!found) throw script_error("no such control: " + std::string(written));
  place.which = found->which;
  place.index = found->index;
  place.is = declared(place.which).is;
  return place;
}

}  // namespace estructura::guiones
