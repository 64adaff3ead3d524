// The two formats that only the views use; hexadecimal is common to all (common/text.h).
//
//   binstr(24)          -> "00011000"
//   ponpuntos(1234567)  -> "1.234.567"
#pragma once

#include <cstdint>
#include <string>

namespace estructura {

/// Eight binary digits, bit 7 first. Values above 255 saturate to "11111111"; negative ones give "00000000".
std::string binstr(int value);

/// Decimal with "." between groups of three, counted from the right. A minus sign counts as a digit.
std::string ponpuntos(std::int32_t value);

}  // namespace estructura
