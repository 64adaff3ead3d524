// Which operands of a source line are read as something else than they look, or not at all.
//
//   name_table names;                                  // what the whole source defines
//   if (const auto made = definition_in("X EQU 5")) names.add(*made);
//   odd_readings("Y EQU 0x10", names)    -> bytes 6 to 10: leading_digits, value 0
//   odd_readings("ADDWF X,F", names)     -> bytes 8 to 9: no_destination
//
// An operand looks like a number when it begins with a digit or, where no name of that text is defined, holds
// hexadecimal digits alone; like a name when one is defined; like W where a destination stands. What is read
// so is not odd, even when it does not fit its instruction: the assembler says that itself.
//
// A line is looked at by itself, with the names of the source beside it; where they stand does not matter.
// Left out: what the value of a label brings about, since that depends on every line before it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "asm/source_line.h"

namespace estructura {

/// A name that a line defines, in upper case.
struct definition {
  std::string name;
  std::optional<std::int16_t> value;  ///< EQU's; a label has none that its line knows
  bool operator==(const definition&) const = default;
};

/// What a line defines; nothing when it has no label, or one that no name may be.
[[nodiscard]] std::optional<definition> definition_in(std::string_view line);

/// The names of a source that is being written, so that one may stand twice.
class name_table {
 public:
  void add(const definition& made);
  /// Takes away one that was added.
  void remove(const definition& made);

  [[nodiscard]] bool empty() const { return values_.empty(); }
  /// The definition of a name in upper case, any if there are several.
  [[nodiscard]] std::optional<definition> find(const std::string& name) const;
  /// Counts what was added and taken away.
  [[nodiscard]] unsigned changes() const { return changes_; }

 private:
  std::unordered_multimap<std::string, std::optional<std::int16_t>> values_;
  unsigned changes_ = 0;
};

enum class odd : std::uint8_t {
  leading_digits,       ///< EQU reads its first digits alone: `value`
  no_digits,            ///< EQU finds none: 0
  name_as_number,       ///< EQU looks no name up: `value` are the name's letters read as digits
  origin,               ///< ORG puts the code at `code`, the labels behind it count from `value`
  no_destination,       ///< neither number nor name: the result goes to the register, as without operand
  missing_destination,  ///< nothing behind the comma: the same
  status_bit,           ///< a bit name of STATUS where a destination stands: 0 or 1 is `value`
  other_instruction,    ///< a bit of several digits changes the instruction: `value` is the word
  unknown_number,       ///< begins with a letter and is looked up as a name, which nobody defines: an error
  unknown_name,         ///< nobody defines it: an error
  unreadable            ///< begins as a number and is none: an error
};

struct odd_reading {
  line_part where;
  odd what;
  int value = 0;
  std::optional<int> code;  ///< nothing where only the assembler knows, the name being a label
  bool operator==(const odd_reading&) const = default;
};

/// The odd operands of one line, from left to right.
[[nodiscard]] std::vector<odd_reading> odd_readings(std::string_view line, const name_table& names);

}  // namespace estructura
