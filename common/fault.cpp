#include "common/fault.h"

namespace estructura {

void throw_fault(const char* what) {
  throw machine_fault(what);
}

}  // namespace estructura
