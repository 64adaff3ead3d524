// Sources: any text assembles or gives an error whose place lies in it; an image disassembles to a source
// that assembles to the same image.
#include "asm/assembler.h"
#include "common/text.h"
#include "core/devices.h"
#include "files/disassembler.h"
#include "tests/fuzz/target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace estructura;
  const std::string_view text = fuzz::as_text(data, size);
  chipstate chip;
  select_device(chip, default_device);
  const int progmask = chip.devmodel.progmask;
  const assembly made = assemble(text, progmask);
  if (made.error) {
    const std::size_t characters = char_count(text) + 2;
    fuzz::must(made.error->line >= 1, "an error has a line");
    fuzz::must(made.error->start + made.error->length <= characters, "an error lies in the text");
    fuzz::must(made.listing.empty(), "an error leaves no listing");
    return 0;
  }
  fuzz::must(made.listing.ends_with("-\r\n"), "a listing ends in its rule");
  bool instructions_only = true;
  for (const std::uint16_t word : made.image) {
    if (word == unprogrammed) continue;
    // A bit operand of several digits spills beyond 12 bits; such words have no text.
    instructions_only = instructions_only && deshex(word) != "???";
  }
  if (!instructions_only) return 0;
  chip.progmem = made.image;
  const assembly again = assemble(disassemble(chip), progmask);
  fuzz::must(!again.error.has_value(), "a disassembled source assembles");
  fuzz::must(again.image == made.image, "a disassembled source assembles to the same image");
  return 0;
}
