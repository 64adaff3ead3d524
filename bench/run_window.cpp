// How fast the machine runs with the real window open and every view live, how soon a click is served
// meanwhile, and what one single step costs with everything repainted.
//
// Budgets: BM_run_window 25 ns a step with 50 to 60 frames a second; a click during a run 10 ms at the 99th
// percentile; BM_step_click 5 ms.
#include <algorithm>
#include <atomic>
#include <benchmark/benchmark.h>
#include <chrono>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>

#include "bench/programs.h"
#include "bench/sources.h"
#include "ui/qt/window/application.h"
#include "ui/qt/window/main_window.h"
#include "ui/qt/window/qt_host.h"

namespace {

using namespace estructura;
using clock_type = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr auto run_time = 1s;

// Counts what it lets pass, and stops the run when its time is over.
class counting_host : public qt_host {
 public:
  int yield() override {
    const int turns = qt_host::yield();
    if (clock_type::now() >= end) {
      window->click(id::ejecutar);
      return 1;
    }
    steps += turns;
    return turns;
  }

  Estructura* window = nullptr;
  clock_type::time_point end;
  std::int64_t steps = 0;
};

// Counts the times that the window is painted.
class frame_counter : public QObject {
 public:
  explicit frame_counter(QWidget& window) { window.installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::UpdateRequest) ++frames;
    return false;
  }
  int frames = 0;
};

struct open_window {
  counting_host host;
  Estructura window{host};
  std::unique_ptr<main_window> shown;

  explicit open_window(const bench_program& program) {
    host.window = &window;
    window.Form_Load();
    load_program(window, program);
    shown = std::make_unique<main_window>(window);
    host.set_window(shown.get());
    shown->resize(shown->least());
    shown->show();
    QApplication::processEvents();
  }

  void run_for(clock_type::duration time) {
    host.end = clock_type::now() + time;
    window.click(id::ejecutar);
  }
};

void run_window(benchmark::State& state, const bench_program& program) {
  open_window open(program);
  frame_counter counter(*open.shown);
  const auto start = clock_type::now();
  for (auto _ : state) open.run_for(run_time);
  const std::chrono::duration<double> elapsed = clock_type::now() - start;
  if (!open.window.look(id::VISMP).value()) state.SkipWithError("the program list is hidden");
  state.SetItemsProcessed(open.host.steps);
  state.counters["frames_per_second"] = counter.frames / elapsed.count();
}

// Clicks posted from outside at odd moments of a run; the time until each one's handler.
void click_latency(benchmark::State& state, const bench_program& program) {
  open_window open(program);
  std::vector<double> waits_ms;
  for (auto _ : state) {
    std::atomic<bool> over = false;
    std::thread person([&] {
      std::mt19937 random(1);
      std::uniform_int_distribution<int> pause_us(1000, 12000);
      while (!over) {
        std::this_thread::sleep_for(std::chrono::microseconds(pause_us(random)));
        const auto posted = clock_type::now();
        QMetaObject::invokeMethod(
            open.shown.get(),
            [&, posted] {
              open.window.click(id::PA, 0);
              waits_ms.push_back(
                  std::chrono::duration<double, std::milli>(clock_type::now() - posted).count());
            },
            Qt::QueuedConnection);
      }
    });
    open.run_for(3s);
    over = true;
    person.join();
    QApplication::processEvents();
  }
  if (waits_ms.size() < 100) return state.SkipWithError("too few clicks were served");
  std::sort(waits_ms.begin(), waits_ms.end());
  state.counters["clicks"] = static_cast<double>(waits_ms.size());
  state.counters["p50_ms"] = waits_ms[waits_ms.size() / 2];
  state.counters["p99_ms"] = waits_ms[waits_ms.size() * 99 / 100];
  state.counters["max_ms"] = waits_ms.back();
}

// A click as the person's, until all that it changed is painted.
void click_and_paint(QAbstractButton& button) {
  button.click();
  // Layouts and repaints that were asked for follow each other.
  QApplication::sendPostedEvents();
  QApplication::processEvents();
}

void step_click(benchmark::State& state, const bench_program& program) {
  open_window open(program);
  frame_counter counter(*open.shown);
  auto* button = open.shown->findChild<QAbstractButton*>("eje1");
  for (auto _ : state) click_and_paint(*button);
  if (counter.frames < state.iterations()) state.SkipWithError("not every step was painted");
}

// The click that assembles, until program list, map and listing are painted.
void press_assemble(benchmark::State& state) {
  open_window open(bench_programs().front());
  open.window.type(id::source, labelled_source());
  open.window.click(id::sl, 1);
  open.shown->refresh();
  auto* button = open.shown->findChild<QAbstractButton*>("Ensamblar");
  for (auto _ : state) {
    click_and_paint(*button);
  }
  const control& list = open.window.look(id::MP);
  if (list.rows().back().find("GOTO") == std::string::npos)
    state.SkipWithError("the source was not assembled");
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  set_up_application(app);
  for (const bench_program& program : bench_programs())
    benchmark::RegisterBenchmark(("BM_run_window/" + std::string(program.name)).c_str(), run_window, program)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1)
        ->UseRealTime();
  const bench_program& mixed = bench_programs().front();
  benchmark::RegisterBenchmark("BM_click_latency", click_latency, mixed)
      ->Unit(benchmark::kMillisecond)
      ->Iterations(1)
      ->UseRealTime();
  benchmark::RegisterBenchmark("BM_step_click", step_click, mixed)->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("BM_click_ensamblar", press_assemble)->Unit(benchmark::kMillisecond);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
