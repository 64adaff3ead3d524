// An instruction together with what its word says of operand and destination: what a step that is made for it
// alone need not ask.
//
//   variant_of(decoded(0x1E8))       // ADDWF 08: {op::addwf, operand_kind::common, true}
//   variant::at(v.index()) == v
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/chipstate.h"
#include "core/decoded_word.h"
#include "core/instructions.h"

namespace estructura {

/// What the word says of the operand.
enum class operand_kind : std::uint8_t {
  none,      ///< no file register
  indirect,  ///< what FSR points to
  timer,     ///< TMR0
  core,      ///< PCL, STATUS or FSR
  port,      ///< 5..7
  common,    ///< a general register outside the banks
  banked     ///< one of the bank that FSR points into
};

/// Data addresses, the last one included.
struct file_range {
  std::uint8_t first;
  std::uint8_t last;
};

/// The addresses of each kind, in its order; without an operand the bits are anything.
inline constexpr std::array<file_range, 7> file_ranges = {{
    {0, 31},
    {reg_indf, reg_indf},
    {reg_tmr0, reg_tmr0},
    {reg_pcl, reg_fsr},
    {reg_5, reg_7},
    {8, 15},
    {16, 31},
}};

constexpr file_range files_of(operand_kind kind) {
  return file_ranges[static_cast<std::size_t>(kind)];
}

constexpr operand_kind kind_of(std::uint8_t file) {
  std::size_t kind = file_ranges.size() - 1;
  while (file < file_ranges[kind].first) --kind;
  return static_cast<operand_kind>(kind);
}

namespace detail {

inline constexpr std::size_t op_count = static_cast<std::size_t>(op::stop) + 1;

constexpr std::array<form, op_count> make_op_forms() {
  std::array<form, op_count> forms{};
  for (const instruction& row : instructions) forms[static_cast<std::size_t>(row.code)] = row.operands;
  return forms;
}
inline constexpr std::array<form, op_count> op_forms = make_op_forms();

}  // namespace detail

struct variant {
  op code = op::stop;
  operand_kind operand = operand_kind::none;
  bool to_file = false;  ///< of an instruction that has the choice

  static constexpr std::size_t operand_kinds = file_ranges.size();
  static constexpr std::size_t count = detail::op_count * operand_kinds * 2;

  [[nodiscard]] constexpr std::size_t index() const {
    return (static_cast<std::size_t>(code) * operand_kinds + static_cast<std::size_t>(operand)) * 2 +
           (to_file ? 1 : 0);
  }
  /// There are more indices than variants; one that stands for none, as a NOP's with an operand, has
  /// another's.
  static constexpr variant at(std::size_t index) {
    const auto code = static_cast<op>(index / (2 * operand_kinds));
    variant result{code, operand_kind::none, false};
    if (result.has_file()) {
      result.operand = static_cast<operand_kind>(index / 2 % operand_kinds);
      if (result.operand == operand_kind::none) result.operand = operand_kind::common;
    }
    if (result.has_destination()) result.to_file = index % 2 != 0;
    return result;
  }

  [[nodiscard]] constexpr bool has_destination() const { return operands() == form::file_dest; }
  [[nodiscard]] constexpr bool has_file() const {
    return has_destination() || operands() == form::file || operands() == form::file_bit;
  }
  bool operator==(const variant&) const = default;

 private:
  [[nodiscard]] constexpr form operands() const { return detail::op_forms[static_cast<std::size_t>(code)]; }
};

constexpr variant variant_of(const decoded_word& o) {
  variant result{o.code, operand_kind::none, false};
  if (result.has_file()) result.operand = kind_of(o.file);
  if (result.has_destination()) result.to_file = o.destination() != 0;
  return result;
}

}  // namespace estructura
