// HEX files: whatever the file holds, memory holds words of 12 bits, and what is saved then loads again.
#include "files/hex.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <unistd.h>

#include "common/fault.h"
#include "core/devices.h"
#include "tests/fuzz/target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace estructura;
  static const std::string path = (std::filesystem::temp_directory_path() /
                                   ("estructura-fuzz-hex-" + std::to_string(::getpid()) + ".hex"))
                                      .string();
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  for (const int row : {device_index("16C57"), device_index("12C508")}) {
    chipstate chip;
    select_device(chip, row);
    chip.progmem.fill(unprogrammed);
    const hex_reading met = carga(chip, path);
    fuzz::must(met.messages.size() <= 2, "a file gives two messages at the most");
    fuzz::must(!met.failed || size == 0 || met.messages.empty(), "a failed reading gives no message");
    for (const std::uint16_t word : chip.progmem)
      fuzz::must(word <= 0xFFF || word == unprogrammed, "words have 12 bits");
    fuzz::must(salva(chip, path), "the file is written");
    chipstate again;
    select_device(again, row);
    again.progmem.fill(unprogrammed);
    fuzz::must(carga(again, path).messages.empty(), "what was saved loads without a message");
    for (int a = 0; a <= chip.devmodel.progmask; ++a)
      fuzz::must(again.progmem[a] == chip.progmem[a], "what was saved loads as it was");
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  }
  std::filesystem::remove(path);
  return 0;
}
