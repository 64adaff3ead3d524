#include "ui/format.h"

namespace estructura {

std::string binstr(int value) {
  std::string digits;
  for (int bit = 128; bit > 0; bit /= 2) {
    const bool on = value >= bit;
    digits.push_back(on ? '1' : '0');
    if (on) value -= bit;
  }
  return digits;
}

std::string ponpuntos(std::int32_t value) {
  const std::string digits = std::to_string(value);
  std::string out;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    const std::size_t from_right = digits.size() - i;
    if (i > 0 && from_right % 3 == 0) out.push_back('.');
    out.push_back(digits[i]);
  }
  return out;
}

}  // namespace estructura
