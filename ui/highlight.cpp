#include "ui/highlight.h"

#include <string>
#include <utility>

#include "asm/assembler.h"
#include "asm/source_line.h"
#include "common/text.h"
#include "core/instructions.h"

namespace estructura {

namespace {

class line_painter {
 public:
  explicit line_painter(std::string_view line) : line_(line), parts_(cut_line(line)) {}

  std::vector<source_piece> pieces() {
    if (parts_.colon)
      put({parts_.label.empty() ? parts_.colon_at : parts_.label.from, parts_.colon_at + 1},
          source_part::label);
    else
      put(parts_.label, source_part::label);
    const std::string word = upper(parts_.mnemonic);
    if (find_mnemonic(word) != nullptr)
      put(parts_.mnemonic, source_part::mnemonic);
    else if (is_directive(word))
      put(parts_.mnemonic, source_part::directive);
    for (const line_part operand : {parts_.op1, parts_.op2})
      if (is_number(upper(operand))) put(operand, source_part::number);
    put(parts_.comment, source_part::comment);
    return std::move(found_);
  }

 private:
  [[nodiscard]] std::string upper(line_part part) const { return to_upper(part.of(line_)); }
  void put(line_part part, source_part is) {
    if (!part.empty()) found_.push_back({part.from, part.to - part.from, is});
  }

  std::string_view line_;
  line_parts parts_;
  std::vector<source_piece> found_;
};

}  // namespace

std::vector<source_piece> highlight(std::string_view line) {
  return line_painter(line).pieces();
}

}  // namespace estructura
