// How fast the machine runs with nobody looking: continuous execution through the toolkit-free window, every
// step with its state rules, refresh and yield. Budget: 12.5 ns a step on `mixed`, 10 ns wished for.
#include <benchmark/benchmark.h>
#include <string>

#include "bench/programs.h"

namespace {

using namespace estructura;

constexpr int steps_per_run = 4'000'000;

// Does nothing but count the turns of the loop and press the stop button after the last.
class counting_host : public window_host {
 public:
  Estructura* window = nullptr;
  int yield() override {
    if (first_) {
      first_ = false;
      return steps_per_run - 1;
    }
    window->click(id::ejecutar);
    first_ = true;
    return 1;
  }

 private:
  bool first_ = true;
};

void run_headless(benchmark::State& state, const bench_program& program) {
  counting_host host;
  Estructura window(host);
  host.window = &window;
  window.Form_Load();
  load_program(window, program);
  for (auto _ : state) {
    window.click(id::ejecutar);
  }
  if (window.chip().running || window.chip().cycles == 0) state.SkipWithError("the program did not run");
  state.SetItemsProcessed(state.iterations() * steps_per_run);
}

}  // namespace

int main(int argc, char** argv) {
  for (const bench_program& program : bench_programs())
    benchmark::RegisterBenchmark(("BM_run_headless/" + std::string(program.name)).c_str(), run_headless,
                                 program)
        ->Unit(benchmark::kMillisecond);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
