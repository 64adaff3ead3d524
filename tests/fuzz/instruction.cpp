// Hand-typed instructions: any text encodes to a word of 15 bits or to nothing, and what a word disassembles
// to encodes to it again.
#include "asm/encodeins.h"
#include "files/disassembler.h"
#include "tests/fuzz/target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace estructura;
  const int word = encodeins(fuzz::as_text(data, size));
  fuzz::must(word >= no_instruction && word <= 0x7FFF, "a word is -1 or fits 15 bits");
  if (word >= 0 && word <= 0xFFF) {
    const std::string text = deshex(word);
    fuzz::must(text != "???", "what was encoded is an instruction");
    fuzz::must(encodeins(text) == word, "disassembled text encodes to the same word");
  }
  return 0;
}
