#include "common/fallo.h"

namespace estructura {

void throw_fallo(const char* what) {
  throw fallo(what);
}

}  // namespace estructura
