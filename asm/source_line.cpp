#include "asm/source_line.h"

#include <algorithm>

#include "common/text.h"
#include "core/instructions.h"

namespace estructura {

namespace {

class cutter {
 public:
  explicit cutter(std::string_view line) : line_(line), rest_{0, line.size()} {}

  line_parts cut() {
    rest_.to = std::min(line_.find(';'), line_.size());
    if (rest_.to < line_.size()) parts_.comment = {rest_.to, line_.size()};
    rest_ = trimmed(rest_);
    parts_.statement = !rest_.empty();
    cut_label();
    parts_.mnemonic = take(first_word(rest_));
    cut_operands();
    return parts_;
  }

 private:
  [[nodiscard]] line_part trimmed(line_part part) const {
    const std::string_view inside = trim(part.of(line_), source_blanks);
    if (inside.empty()) return {part.to, part.to};
    const auto from = static_cast<std::size_t>(inside.data() - line_.data());
    return {from, from + inside.size()};
  }
  [[nodiscard]] line_part first_word(line_part part) const {
    const std::size_t length = std::min(part.of(line_).find_first_of(source_blanks), part.to - part.from);
    return {part.from, part.from + length};
  }
  [[nodiscard]] std::string upper(line_part part) const { return to_upper(part.of(line_)); }

  // A part at the start of the rest; the rest begins behind it.
  line_part take(line_part part) {
    rest_ = trimmed({part.to, rest_.to});
    return part;
  }

  void cut_label() {
    if (const std::size_t colon = rest_.of(line_).find(':'); colon != std::string_view::npos) {
      parts_.colon = true;
      parts_.colon_at = rest_.from + colon;
      parts_.label = trimmed({rest_.from, parts_.colon_at});
      rest_ = trimmed({parts_.colon_at + 1, rest_.to});
    } else if (names_a_constant()) {
      parts_.label = take(first_word(rest_));
    }
  }

  [[nodiscard]] bool names_a_constant() const {
    const line_part name = first_word(rest_);
    if (upper(first_word(trimmed({name.to, rest_.to}))) != directive::equ) return false;
    const std::string word = upper(name);
    return find_mnemonic(word) == nullptr && !is_directive(word);
  }

  void cut_operands() {
    const std::size_t comma = rest_.of(line_).find(',');
    parts_.comma = comma != std::string_view::npos;
    if (!parts_.comma) {
      parts_.op1 = rest_;
      return;
    }
    parts_.comma_at = rest_.from + comma;
    parts_.op1 = trimmed({rest_.from, parts_.comma_at});
    parts_.op2 = trimmed({parts_.comma_at + 1, rest_.to});
  }

  std::string_view line_;
  line_part rest_;
  line_parts parts_;
};

}  // namespace

line_parts cut_line(std::string_view line) {
  return cutter(line).cut();
}

}  // namespace estructura
