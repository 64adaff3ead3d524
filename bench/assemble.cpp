// How long the way from text to words and back takes with no window: assembling, disassembling, loading a
// HEX file. Budget: 5 ms for 2048 instructions with a label and a comment each; a second for a source of
// 1 MB or one with 20,000 symbols.
#include <benchmark/benchmark.h>
#include <filesystem>
#include <string>
#include <system_error>

#include "asm/assembler.h"
#include "bench/sources.h"
#include "common/text.h"
#include "core/devices.h"
#include "files/disassembler.h"
#include "files/hex.h"

namespace {

using namespace estructura;

constexpr int last_word = program_words - 1;

std::string source_of_1MB() {
  constexpr std::size_t size = 1'000'000;
  std::string source = labelled_source();
  for (int i = 0; source.size() < size; ++i) {
    const std::string number = std::to_string(i);
    source +=
        "S" + number + " EQU " + hexstr(i, 4) + " ; constante " + number + "\r\n; nota " + number + "\r\n";
  }
  return source;
}

std::string source_of_20000_symbols() {
  constexpr int symbols = 20'000;
  std::string source;
  for (int i = 0; i < symbols; ++i) source += "S" + std::to_string(i) + " EQU " + hexstr(i % 256, 2) + "\r\n";
  for (int a = 0; a < program_words; ++a) source += " MOVLW S" + std::to_string(a * 9 % symbols) + "\r\n";
  return source;
}

void time_assembling(benchmark::State& state, const std::string& source) {
  for (auto _ : state) {
    const assembly made = assemble(source, last_word);
    if (made.error || made.image[last_word] == unprogrammed) {
      state.SkipWithError("the source does not fill the memory");
      break;
    }
    benchmark::DoNotOptimize(made.listing.data());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(source.size()));
}

void BM_assemble_2048(benchmark::State& state) {
  time_assembling(state, labelled_source());
}
BENCHMARK(BM_assemble_2048)->Unit(benchmark::kMillisecond);

void BM_assemble_1MB(benchmark::State& state) {
  time_assembling(state, source_of_1MB());
}
BENCHMARK(BM_assemble_1MB)->Unit(benchmark::kMillisecond);

void BM_assemble_20000_symbols(benchmark::State& state) {
  time_assembling(state, source_of_20000_symbols());
}
BENCHMARK(BM_assemble_20000_symbols)->Unit(benchmark::kMillisecond);

// The last line is the wrong one, so that its place has the whole text before it.
void BM_report_error_1MB(benchmark::State& state) {
  const std::string source = source_of_1MB() + "FOO\r\n";
  for (auto _ : state) {
    const assembly made = assemble(source, last_word);
    if (!made.error || made.error->length != 3) {
      state.SkipWithError("another error, or none");
      break;
    }
  }
}
BENCHMARK(BM_report_error_1MB)->Unit(benchmark::kMillisecond);

// A memory with every kind of instruction in it.
chipstate full_memory() {
  chipstate chip;
  select_device(chip, default_device);
  for (int a = 0; a < program_words; ++a) chip.progmem[a] = static_cast<std::uint16_t>(0x060 + a * 2 % 0xF00);
  return chip;
}

void BM_disassemble_2048(benchmark::State& state) {
  const chipstate chip = full_memory();
  for (auto _ : state) {
    const std::string source = disassemble(chip);
    benchmark::DoNotOptimize(source.data());
  }
}
BENCHMARK(BM_disassemble_2048)->Unit(benchmark::kMillisecond);

void BM_load_hex_2048(benchmark::State& state) {
  const std::string path = (std::filesystem::temp_directory_path() / "estructura-bench.hex").string();
  const chipstate written = full_memory();
  if (!salva(written, path)) state.SkipWithError("the file cannot be written");
  for (auto _ : state) {
    chipstate chip = full_memory();
    chip.progmem.fill(unprogrammed);
    const hex_reading met = carga(chip, path);
    if (met.failed || !met.messages.empty() || !(chip == written)) {
      state.SkipWithError("the file does not give the memory back");
      break;
    }
  }
  std::error_code error;
  std::filesystem::remove(path, error);
}
BENCHMARK(BM_load_hex_2048)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
