// Runs one of the benchmarks' programs for so many steps through the window without a toolkit, with nobody
// looking: for whoever counts the host's instructions.
//
//   bench_run_steps mixed 500000
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "bench/programs.h"

namespace {

using namespace estructura;

// Lets the run go on for as long as it likes, and presses the stop button at its end.
class stopping_host final : public window_host {
 public:
  // The first step of a run is always followed by a turn.
  explicit stopping_host(int steps) : left_(steps - 1) {}
  int yield() override {
    if (left_ > 0) return std::exchange(left_, 0);
    window->click(id::ejecutar);
    return 1;
  }
  Estructura* window = nullptr;

 private:
  int left_;
};

}  // namespace

int main(int argc, char** argv) {
  const std::string_view name = argc == 3 ? argv[1] : "";
  for (const bench_program& program : bench_shapes()) {
    if (program.name != name) continue;
    stopping_host host(std::atoi(argv[2]));
    Estructura window(host);
    host.window = &window;
    window.Form_Load();
    load_program(window, program);
    window.click(id::ejecutar);
    std::printf("%d cycles\n", window.chip().cycles);
    return window.chip().cycles > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
  }
  std::fputs("usage: bench_run_steps PROGRAM STEPS, with one of\n", stderr);
  for (const bench_program& program : bench_shapes())
    std::fprintf(stderr, "  %.*s\n", static_cast<int>(program.name.size()), program.name.data());
  return 2;
}
