#include "asm/assembler.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "asm/encodeins.h"
#include "asm/source_line.h"
#include "common/number.h"
#include "common/text.h"
#include "core/instructions.h"

namespace estructura {

namespace {

constexpr std::string_view line_end = "\r\n";
constexpr std::string_view nothing_behind_comma = "*";

constexpr std::string_view wrong_instruction = "Instrucción incorrecta.";
constexpr std::string_view wrong_label = "Nombre de etiqueta erróneo.";
constexpr std::string_view repeated_label = "Etiqueta repetida.";
constexpr std::string_view wrong_operand = "Operando incorrecto.";
constexpr std::string_view out_of_memory = "Alcanzado el final de la memoria.";
constexpr std::string_view wrong_address = "Error en dirección.";

// A tab in a source counts as a blank.
std::string_view trim_source(std::string_view text) {
  return trim(text, source_blanks);
}

struct statement {
  std::size_t line = 0;  // from 1
  std::string label;
  std::string mnemonic;
  std::string op1;
  std::string op2;
  std::string code;     // three hexadecimal digits, once encoded
  std::string address;  // likewise; of a label alone on its line too
};

struct source_line {
  std::size_t start_byte = 0;
  std::string_view text;  // as typed, without line end
};

statement statement_of(std::size_t number, std::string_view line, const line_parts& parts) {
  const auto upper = [line](line_part part) { return to_upper(part.of(line)); };
  statement out;
  out.line = number;
  out.label = upper(parts.label);
  out.mnemonic = upper(parts.mnemonic);
  out.op1 = upper(parts.op1);
  if (parts.comma) out.op2 = parts.op2.empty() ? std::string(nothing_behind_comma) : upper(parts.op2);
  return out;
}

bool begins_with_digit(std::string_view text) {
  return !text.empty() && text[0] >= '0' && text[0] <= '9';
}

class assembler {
 public:
  assembler(std::string_view source, int progmask) : source_(source), progmask_(progmask) {}

  assembly run() {
    if (split_lines() && define_symbols() && resolve_operands() && encode()) write_listing();
    return std::move(out_);
  }

 private:
  bool fail(const statement& where, std::string_view message, bool while_encoding = false) {
    const source_line& line = lines_[where.line - 1];
    out_.error = assembly_error{message, where.line, char_count(source_.substr(0, line.start_byte)),
                                char_count(line.text), while_encoding};
    return false;
  }

  bool split_lines() {
    for (std::size_t at = 0; at < source_.size();) {
      const std::size_t end = std::min(source_.find(line_end, at), source_.size());
      lines_.push_back({at, source_.substr(at, end - at)});
      at = end + line_end.size();
      const std::string_view line = lines_.back().text;
      const line_parts parts = cut_line(line);
      if (!parts.statement) continue;
      statements_.push_back(statement_of(lines_.size(), line, parts));
      statement& s = statements_.back();
      if (!checkline(s.label, s.mnemonic, s.op1, s.op2)) return fail(s, wrong_instruction);
    }
    return true;
  }

  bool define_symbols() {
    int counter = 0;
    for (const statement& s : statements_) {
      if (!s.label.empty()) {
        if (numlike(s.label)) return fail(s, wrong_label);
        if (symbols_.contains(s.label)) return fail(s, repeated_label);
        int value = counter;
        if (s.mnemonic == directive::equ) {
          const auto literal = valhex_checked(s.op1);
          if (!literal) return fail(s, wrong_operand);
          value = *literal;
        } else if (!s.mnemonic.empty()) {
          ++counter;
        }
        // Symbols hold 16 bits; an address past them belongs to no device and is refused when it is used.
        const auto stored = static_cast<std::int16_t>(value);
        symbols_.emplace(s.label, stored);
        out_.symbols.push_back({s.label, stored});
      } else if (s.mnemonic != directive::end) {
        ++counter;
      }
      if (s.mnemonic == directive::org) {
        const auto address = valhex_checked(s.op1);
        if (!address) return fail(s, wrong_operand);
        counter = *address;
      }
    }
    return true;
  }

  bool resolve_operands() {
    for (statement& s : statements_) {
      for (std::string* operand : {&s.op1, &s.op2}) {
        if (operand->empty()) continue;
        if (!symbols_.empty()) *operand = symvalue(*operand);
        if (!ishex(*operand, operand == &s.op2 ? "W" : "")) return fail(s, wrong_operand);
      }
    }
    return true;
  }

  // A number stays, a symbol becomes its value, anything else becomes empty.
  [[nodiscard]] std::string symvalue(const std::string& text) const {
    if (is_number(text)) return text;
    const auto found = symbols_.find(text);
    return found == symbols_.end() ? std::string() : symbol_text(found->second);
  }

  bool encode() {
    out_.image.fill(unprogrammed);
    int counter = 0;
    for (statement& s : statements_) {
      if (s.mnemonic == directive::end) break;
      if (s.mnemonic == directive::org) {
        counter = valhex(s.op1);  // a number was looked at before, a symbol has 16 bits
        continue;
      }
      if (s.mnemonic == directive::equ) continue;
      if (s.mnemonic.empty()) {
        s.address = hexstr(counter, 3);
        continue;
      }
      std::string text = s.mnemonic;
      if (!s.op1.empty()) text += " " + s.op1;
      if (!s.op2.empty()) text += "," + s.op2;
      if (counter > progmask_) return fail(s, out_of_memory, true);
      const int word = encodeins(text);
      if (word == no_instruction || counter < 0) return fail(s, wrong_address, true);
      out_.image[counter] = static_cast<std::uint16_t>(word);
      s.code = hexstr(word, 3);
      s.address = hexstr(counter, 3);
      ++counter;
    }
    return true;
  }

  void write_listing() {
    const std::string rule = std::string(66, '-').append(line_end);
    std::string& text = out_.listing;
    text.reserve(source_.size() * 2 + 1024);
    text.append(rule).append("\tCÓDIGO\r\n").append(rule);
    auto next = statements_.cbegin();
    for (std::size_t number = 1; number <= lines_.size(); ++number) {
      const std::string_view line = lines_[number - 1].text;
      if (next != statements_.cend() && next->line == number)
        list_statement(*next++, line);
      else
        // The blanks at the end of such a line stay.
        text.append("\t")
            .append(line.substr(std::min(line.find_first_not_of(source_blanks), line.size())))
            .append(line_end);
    }
    text.append(rule).append("\tSIMBOLOS\r\n").append(rule);
    for (const assembly_symbol& symbol : out_.symbols)
      text.append("\t").append(symbol.name).append("\t= ").append(hexstr(symbol.value, 3)).append(line_end);
    text.append(rule);
  }

  void list_statement(const statement& s, std::string_view line) {
    std::string& text = out_.listing;
    if (!s.address.empty()) text.append(s.address).append("  ").append(s.code);
    text.append("\t");
    std::string_view rest = trim_source(line);
    if (const std::size_t colon = rest.find(':'); colon != std::string_view::npos) {
      text.append(rest.substr(0, colon + 1));
      rest = trim_source(rest.substr(colon + 1));
    }
    text.append("\t");
    const std::size_t comment = rest.find(';');
    text.append(tabmnem(trim_source(rest.substr(0, comment))));
    if (comment != std::string_view::npos) text.append("\t").append(rest.substr(comment));
    text.append(line_end);
  }

  std::string_view source_;
  int progmask_;
  assembly out_;
  std::vector<source_line> lines_;
  std::vector<statement> statements_;
  std::unordered_map<std::string, std::int16_t> symbols_;
};

}  // namespace

std::string tabmnem(std::string_view text) {
  const std::size_t blank = text.find_first_of(source_blanks);
  if (blank == std::string_view::npos) return std::string(text) + "\t";
  return std::string(text.substr(0, blank)) + "\t" + std::string(trim_source(text.substr(blank)));
}

bool numlike(std::string_view text) {
  return begins_with_digit(text) || text == "," || text == "W";
}

bool is_number(std::string_view text) {
  return begins_with_digit(text) && ishex(text);
}

std::string symbol_text(std::int16_t value) {
  std::string text = hexstr(value, 4);
  text.erase(0, std::min(text.find_first_not_of('0'), text.size() - 1));
  return text;
}

bool checkline(std::string_view label, std::string_view mnemonic, std::string_view op1, std::string& op2) {
  if (mnemonic == directive::equ) return !label.empty() && !op1.empty() && op2.empty();
  if (mnemonic == directive::org) return !op1.empty() && op2.empty();
  if (mnemonic == directive::end) return label.empty() && op1.empty() && op2.empty();
  const instruction* row = find_mnemonic(mnemonic);
  if (row == nullptr) return !label.empty();
  switch (row->operands) {
    case form::none: return op1.empty() && op2.empty();
    case form::file_dest:
      if (op2 == "W") op2 = "0";
      return !op1.empty();
    case form::file_bit: return !op1.empty() && !op2.empty();
    case form::port:
    case form::file:
    case form::literal8:
    case form::literal9: return !op1.empty() && op2.empty();
  }
  return false;
}

assembly assemble(std::string_view source, int progmask) {
  if (source.ends_with(line_end)) return assembler(source, progmask).run();
  const std::string completed = std::string(source).append(line_end);
  return assembler(completed, progmask).run();
}

}  // namespace estructura
