// What loading a HEX file costs that is as long as one may be, whatever it is full of.
//
// Budgets, in what the same machine does in the same run: twice the length takes 2.5 times the time, and none
// takes 300 times what it takes to read the file's bytes.
#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

#include "bench/processor_time.h"
#include "common/file.h"
#include "core/devices.h"
#include "files/hex.h"

namespace {

using namespace estructura;

/// A file that is gone with its measurement.
class long_file {
 public:
  long_file(const char* name, std::string_view start, std::string_view piece, std::size_t length)
      : path_((std::filesystem::temp_directory_path() / name).string()) {
    std::string text(start);
    while (text.size() + piece.size() < length) text += piece;
    std::ofstream(path_, std::ios::binary) << text;
  }
  ~long_file() {
    std::error_code error;
    std::filesystem::remove(path_, error);
  }
  long_file(const long_file&) = delete;
  long_file& operator=(const long_file&) = delete;
  long_file(long_file&&) = delete;
  long_file& operator=(long_file&&) = delete;

  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  std::string path_;
};

void load(const long_file& file) {
  chipstate chip;
  select_device(chip, default_device);
  benchmark::DoNotOptimize(carga(chip, file.path()));
}

void load_long(benchmark::State& state, std::string_view start, std::string_view piece) {
  const long_file half("estructura-bench-half.hex", start, piece, longest_hex_file / 2);
  const long_file whole("estructura-bench.hex", start, piece, longest_hex_file);
  for (auto _ : state) load(whole);
  std::string bytes;
  if (!read_file(whole.path(), bytes, longest_hex_file)) state.SkipWithError("the file cannot be read");
  const double seconds = seconds_of([&] { load(whole); });
  state.counters["growth"] = seconds / seconds_of([&] { load(half); });
  state.counters["times_reading"] =
      seconds / seconds_of([&] { (void)read_file(whole.path(), bytes, longest_hex_file); });
}

BENCHMARK_CAPTURE(load_long, records, "", ":020000000A0CE8\r\n")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(load_long, empty_records, "", ":0000000000\n")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(load_long, one_line, ":10000000", "0")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(load_long, one_line_of_letters, ":", "ñ")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(load_long, one_line_that_is_no_utf8, ":", "\x80")->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
