#include "asm/odd_readings.h"

#include "asm/assembler.h"
#include "asm/encodeins.h"
#include "common/number.h"
#include "common/text.h"
#include "core/instructions.h"

namespace estructura {

namespace {

/// An operand as the assembler takes it: its place, and its text in upper case.
struct operand {
  line_part where;
  std::string text;
};

class reader {
 public:
  reader(std::string_view line, const name_table& names)
      : line_(line), parts_(cut_line(line)), names_(names), mnemonic_(upper(parts_.mnemonic)) {}

  std::vector<odd_reading> read() {
    const bool one_operand = !parts_.op1.empty() && !parts_.comma;
    const instruction* const row = find_mnemonic(mnemonic_);
    if (mnemonic_ == directive::equ) {
      if (one_operand && !parts_.label.empty()) read_equ(at(parts_.op1));
    } else if (mnemonic_ == directive::org) {
      if (one_operand) read_origin(at(parts_.op1));
    } else if (row != nullptr) {
      read_instruction(*row);
    }
    return std::move(found_);
  }

 private:
  [[nodiscard]] std::string upper(line_part part) const { return to_upper(part.of(line_)); }
  [[nodiscard]] operand at(line_part part) const { return {part, upper(part)}; }
  void note(line_part where, odd what, int value = 0, std::optional<int> code = {}) {
    found_.push_back({where, what, value, code});
  }

  // EQU reads the digits at the start, whatever follows, and looks no name up.
  void read_equ(const operand& op) {
    const auto value = valhex_checked(op.text);
    const bool whole = ishex(op.text);
    if (!value) {
      if (!whole) note(op.where, odd::unreadable);
    } else if (!whole) {
      note(op.where, ishex(op.text.substr(0, 1)) ? odd::leading_digits : odd::no_digits, *value);
    } else if (const auto known = names_.find(op.text); known && known->value != value) {
      note(op.where, odd::name_as_number, *value);
    }
  }

  // ORG is read twice: as EQU's operand for the labels behind it, and as any operand for the code.
  void read_origin(const operand& op) {
    const auto value = valhex_checked(op.text);
    if (names_.empty() || !value || is_number(op.text)) {
      if (!ishex(op.text)) note_unread(op);
      return;
    }
    const auto known = names_.find(op.text);
    const std::optional<int> code = known ? std::optional<int>(known->value) : 0;
    if (!known || code != *value) note(op.where, odd::origin, *value, code);
  }

  void read_instruction(const instruction& row) {
    if (parts_.op1.empty()) return;
    switch (row.operands) {
      case form::none: return;
      case form::port:
      case form::file:
      case form::literal8:
      case form::literal9:
        if (!parts_.comma) read_operand(at(parts_.op1));
        return;
      case form::file_dest:
        read_operand(at(parts_.op1));
        if (parts_.comma) read_destination(at(parts_.op2));
        return;
      case form::file_bit:
        if (parts_.op2.empty()) return;
        read_operand(at(parts_.op1));
        read_bit(row, at(parts_.op2));
    }
  }

  // Whether it is read whole, as number or name; noted where not.
  bool read_operand(const operand& op) {
    if (is_read(op.text)) return true;
    note_unread(op);
    return false;
  }

  [[nodiscard]] bool is_read(const std::string& text) const {
    return names_.empty() ? ishex(text) : is_number(text) || names_.find(text).has_value();
  }

  void note_unread(const operand& op) {
    if (is_number(op.text.substr(0, 1)))
      note(op.where, odd::unreadable);
    else
      note(op.where, ishex(op.text) ? odd::unknown_number : odd::unknown_name);
  }

  void read_destination(const operand& op) {
    if (op.text == "W") return;
    if (op.text.empty()) {
      // Without any name in the source it is an error.
      if (!names_.empty()) note({parts_.comma_at, parts_.comma_at + 1}, odd::missing_destination);
    } else if (!is_read(op.text)) {
      if (names_.empty())
        note_unread(op);
      else
        note(op.where, odd::no_destination);
    } else if (names_.empty() && !is_number(op.text)) {
      // The encoder knows the bits of STATUS by name.
      const int word = encodeins(mnemonic_ + " " + upper(parts_.op1) + "," + op.text);
      if (word != no_instruction) note(op.where, odd::status_bit, (word >> 5) & 1);
    }
  }

  void read_bit(const instruction& row, const operand& op) {
    if (!read_operand(op)) return;
    // The register is no part of what a wide bit does, so one whose address is not known will do as 0.
    const std::string file = value_text(upper(parts_.op1)).value_or("0");
    const auto bit = value_text(op.text);
    if (!bit) return;
    const int word = encodeins(mnemonic_ + " " + file + "," + *bit);
    // What spills beyond 12 bits has other ones below them, too.
    if (word != no_instruction && row_of(word).code != row.code) note(op.where, odd::other_instruction, word);
  }

  // The operand as the encoder gets it; nothing for a label or an unknown name.
  [[nodiscard]] std::optional<std::string> value_text(const std::string& text) const {
    if (names_.empty() || is_number(text)) return text;
    const auto known = names_.find(text);
    if (!known || !known->value) return std::nullopt;
    return symbol_text(*known->value);
  }

  std::string_view line_;
  line_parts parts_;
  const name_table& names_;
  std::string mnemonic_;
  std::vector<odd_reading> found_;
};

}  // namespace

std::optional<definition> definition_in(std::string_view line) {
  const line_parts parts = cut_line(line);
  if (parts.label.empty()) return std::nullopt;
  definition made{to_upper(parts.label.of(line)), {}};
  if (numlike(made.name)) return std::nullopt;
  if (to_upper(parts.mnemonic.of(line)) == directive::equ) made.value = valhex_checked(parts.op1.of(line));
  return made;
}

void name_table::add(const definition& made) {
  values_.emplace(made.name, made.value);
  ++changes_;
}

void name_table::remove(const definition& made) {
  const auto [first, last] = values_.equal_range(made.name);
  for (auto it = first; it != last; ++it) {
    if (it->second != made.value) continue;
    values_.erase(it);
    ++changes_;
    return;
  }
}

std::optional<definition> name_table::find(const std::string& name) const {
  const auto it = values_.find(name);
  if (it == values_.end()) return std::nullopt;
  return definition{it->first, it->second};
}

std::vector<odd_reading> odd_readings(std::string_view line, const name_table& names) {
  return reader(line, names).read();
}

}  // namespace estructura
