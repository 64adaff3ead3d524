#include "guion/conductor.h"

#include "guion/maquina.h"

namespace estructura::guiones {

lugar lugar_de(std::string_view written) {
  std::int64_t number = -1;
  lugar place;
  place.name = nombre_e_indice(written, number);
  if (number >= 0) place.name += '(' + std::to_string(number) + ')';
  place.which = find_control(place.name, place.index);
  if (place.which == id::none) throw error_de_guion("no such control: " + std::string(written));
  place.is = declared(place.which).is;
  return place;
}

}  // namespace estructura::guiones
