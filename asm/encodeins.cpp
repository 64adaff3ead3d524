#include "asm/encodeins.h"

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>

#include "common/number.h"
#include "common/text.h"
#include "core/instructions.h"

namespace estructura {

namespace {

struct name_row {
  std::string_view name;
  std::string_view digit;
};

// Accepted whatever device is selected.
constexpr std::array register_names = {
    name_row{"INDF", "0"}, name_row{"TMR0", "1"},   name_row{"PCL", "2"}, name_row{"STATUS", "3"},
    name_row{"FSR", "4"},  name_row{"PA", "5"},     name_row{"PB", "6"},  name_row{"PC", "7"},
    name_row{"GPIO", "6"}, name_row{"OSCCAL", "5"},
};
constexpr std::array status_bit_names = {
    name_row{"C", "0"},   name_row{"DC", "1"},  name_row{"Z", "2"},
    name_row{"PD", "3"},  name_row{"TO", "4"},  name_row{"PS0", "5"},
    name_row{"PS1", "6"}, name_row{"PS2", "7"}, name_row{"GPWUF", "7"},
};

std::string name_or_text(std::span<const name_row> names, std::string_view text) {
  const std::string upper = to_upper(text);
  for (const name_row& row : names)
    if (row.name == upper) return std::string(row.digit);
  return std::string(text);
}

// What stands behind the mnemonic. Without a comma the whole of it is `text` and both parts are empty; with
// one, `text` is empty and the parts are what stands on either side of the first comma.
struct operands {
  std::string text;
  std::string first;
  std::string second;
};

// A value of more than 16 bits is no value, as no instruction could hold it.
std::optional<int> value_between(std::string_view text, int lowest, int highest) {
  const auto value = valhex_checked(text);
  if (!value || *value < lowest || *value > highest) return std::nullopt;
  return *value;
}

std::optional<operands> split(std::string text) {
  operands parts;
  const std::size_t comma = text.find(',');
  if (comma == std::string::npos) {
    parts.text = std::move(text);
    return parts;
  }
  parts.first = regnum(std::string_view(text).substr(0, comma));
  parts.second = text.substr(comma + 1);
  const auto address = valhex_checked(parts.first);
  if (!address) return std::nullopt;
  if (*address == 3) parts.second = bitnum(parts.second);
  // Blanks around the comma fail here.
  if (!ishex(parts.second, "W") || !ishex(parts.first)) return std::nullopt;
  return parts;
}

// The number of an instruction with a single operand, which must be there.
std::optional<int> only_number(std::string_view text, int lowest, int highest) {
  if (text.empty() || !ishex(text)) return std::nullopt;
  return value_between(text, lowest, highest);
}

std::optional<int> file_and_destination(operands parts) {
  if (parts.first.empty() && !parts.text.empty()) {
    // No destination means the file. Names are not looked up on this path and the text is not checked, so
    // that INCF PCL is INCF 0.
    parts.first = parts.text;
    parts.second = "1";
  }
  const auto file = value_between(parts.first, 0, 0x1F);
  if (parts.second == "W") parts.second = "0";
  if (!file || (parts.second != "0" && parts.second != "1")) return std::nullopt;
  return (parts.second == "1" ? 0x20 : 0) + *file;
}

std::optional<int> file_and_bit(const operands& parts) {
  if (parts.first.empty() || parts.second.empty()) return std::nullopt;
  const auto file = value_between(parts.first, 0, 0x1F);
  // Any run of consecutive bit digits passes, and its whole value counts: BCF 5,12 is a BTFSC word.
  if (!file || std::string_view("01234567").find(parts.second) == std::string_view::npos) return std::nullopt;
  const auto bit = valhex_checked(parts.second);
  if (!bit) return std::nullopt;
  return *bit * 0x20 + *file;
}

// The operand's part of the word; nothing when the operands do not suit the instruction.
std::optional<int> operand_bits(const instruction& row, const operands& parts) {
  switch (row.operands) {
    case form::none: return 0;
    case form::port: {
      // The port is the whole word, base included.
      const auto port = only_number(parts.text, 5, 7);
      return port ? std::optional(*port - row.base()) : std::nullopt;
    }
    case form::file: return only_number(regnum(parts.text), 0, 0x1F);
    case form::file_dest: return file_and_destination(parts);
    case form::file_bit: return file_and_bit(parts);
    case form::literal8: return only_number(parts.text, 0, 0xFF);
    case form::literal9: return only_number(parts.text, 0, 0x1FF);
  }
  return std::nullopt;
}

}  // namespace

std::string regnum(std::string_view text) {
  return name_or_text(register_names, text);
}
std::string bitnum(std::string_view text) {
  return name_or_text(status_bit_names, text);
}

int encodeins(std::string_view text) {
  const std::string_view trimmed = trim(text);
  const std::size_t blank = trimmed.find(' ');
  std::string mnemonic;
  std::optional<operands> parts = operands{};
  if (blank == std::string_view::npos) {
    mnemonic = to_upper(trimmed);
  } else {
    // The blank is looked for in the trimmed text and applied to the text as typed. So an instruction with
    // operands behind a leading blank is none: the entry box has always behaved so.
    mnemonic = to_upper(text.substr(0, blank));
    parts = split(to_upper(trim(text.substr(blank + 1))));
  }
  const instruction* row = find_mnemonic(mnemonic);
  if (row == nullptr || !parts) return no_instruction;
  const auto bits = operand_bits(*row, *parts);
  if (!bits) return no_instruction;
  const int word = row->base() + *bits;
  return word <= std::numeric_limits<std::int16_t>::max() ? word : no_instruction;
}

}  // namespace estructura
