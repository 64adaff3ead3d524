#include "files/hex84.h"

#include <algorithm>

#include "files/hex.h"

namespace estructura {

namespace {

struct digits {
  int r3;
  int r2;
  int r1;
};

// Bit 1 of the middle digit, destination or bit number, goes to bit 7; bit 0, the top of the file address, to
// bit 4.
constexpr int destination_and_file(int m) {
  return (m & 2) * 4 + (m & 1);
}

// Words 000 to 0FF: control words, MOVWF, CLRW, CLRF, SUBWF and DECF.
digits translate_first_page(int m, int l) {
  const int r2 = m >= 12 ? 3 : m >= 8 ? 2 : m == 4 || m == 6 || m == 7 ? 1 : 0;
  if (m == 0) return {0, r2, l != 0 ? 6 : 0};
  if (m == 1 || m == 5) return {0, r2, m};
  if (m == 4) return {0, r2, 0};
  // MOVWF and CLRF have no destination bit, and the 16C84 wants theirs set: their middle digits have bit 1
  // set.
  return {0, r2, destination_and_file(m)};
}

digits translate(int h, int m, int l) {
  switch (h) {
    case 0: return translate_first_page(m, l);
    case 1:
    case 2:
    case 3: return {0, h * 4 + m / 4, destination_and_file(m)};
    case 4:
    case 5:
    case 6:
    case 7: return {1, (h - 4) * 4 + m / 4, destination_and_file(m)};
    case 8: return {3, 4, m};
    case 9: return {2, 0, m};
    case 10:
    case 11: return {2, h - 2, m};
    case 12: return {3, 0, m};
    default: return {3, h - 5, m};
  }
}

}  // namespace

int hex84(int word) {
  const int h = (word >> 8) & 15;
  const int m = (word >> 4) & 15;
  const int l = word & 15;
  const auto [r3, r2, r1] = translate(h, m, l);
  return r3 * 4096 + r2 * 256 + r1 * 16 + l;
}

void crealinhxx(int address, const std::array<std::uint16_t, 8>& words, std::string& line) {
  auto translated = words;
  const auto end = std::find(translated.begin(), translated.end(), unprogrammed);
  std::transform(translated.begin(), end, translated.begin(),
                 [](std::uint16_t word) { return static_cast<std::uint16_t>(hex84(word)); });
  crealin(address, translated, line);
}

bool salvahxx(const chipstate& chip, const std::string& path) {
  return write_hex(chip, path, crealinhxx);
}

}  // namespace estructura
