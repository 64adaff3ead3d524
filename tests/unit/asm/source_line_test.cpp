// One line of a source cut into its parts.
#include "asm/source_line.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace estructura {
namespace {

struct cut_row {
  std::string_view line;
  std::string_view parts;  // label, mnemonic, operands and comment with their places
};

std::string shown(std::string_view line) {
  const line_parts parts = cut_line(line);
  if (!parts.statement) return std::string("-").append(parts.comment.of(line));
  std::string out;
  const auto show = [&](const char* what, line_part part) {
    if (part.empty()) return;
    out.append(out.empty() ? "" : " ").append(what).append(std::to_string(part.from)).append("=");
    out.append(part.of(line));
  };
  show("label", parts.label);
  if (parts.colon) out += " :" + std::to_string(parts.colon_at);
  show("word", parts.mnemonic);
  show("first", parts.op1);
  if (parts.comma) out += " ," + std::to_string(parts.comma_at);
  show("second", parts.op2);
  show("comment", parts.comment);
  return out;
}

TEST(cut_line, gives_the_place_of_each_part) {
  constexpr auto rows = std::to_array<cut_row>({
      {"", "-"},
      {" \t ", "-"},
      {"  ; a: b,c", "-; a: b,c"},
      {"NOP", "word0=NOP"},
      {"\tnop\t;x", "word1=nop comment5=;x"},
      {"NOP;x", "word0=NOP comment3=;x"},
      {"L: NOP", "label0=L :1 word3=NOP"},
      {" L 1 :NOP", "label1=L 1 :5 word6=NOP"},
      {"SOLA:", "label0=SOLA :4"},
      {":", " :0"},
      {"A:B: NOP", "label0=A :1 word2=B: first5=NOP"},
      {"NOP ; a: b", "word0=NOP comment4=; a: b"},
      {"ADDWF 5 , W ; suma", "word0=ADDWF first6=5 ,8 second10=W comment12=; suma"},
      {"ADDWF 5,", "word0=ADDWF first6=5 ,7"},
      {"ADDWF ,1", "word0=ADDWF ,6 second7=1"},
      {"BSF 3,2,1", "word0=BSF first4=3 ,5 second6=2,1"},
      {"MOVLW 1 0", "word0=MOVLW first6=1 0"},
      {"X EQU 10", "label0=X word2=EQU first6=10"},
      {"\tx\tequ\t10", "label1=x word3=equ first7=10"},
      {"X: EQU 10", "label0=X :1 word3=EQU first7=10"},
      {"X EQUS 10", "word0=X first2=EQUS 10"},
      {"X EQU", "label0=X word2=EQU"},
      // The words of the language are no names there.
      {"MOVLW EQU", "word0=MOVLW first6=EQU"},
      {"nop equ 1", "word0=nop first4=equ 1"},
      {"ORG EQU", "word0=ORG first4=EQU"},
      {"EQU EQU 1", "word0=EQU first4=EQU 1"},
      {"END EQU 1", "word0=END first4=EQU 1"},
      {"NOP: EQU 1", "label0=NOP :3 word5=EQU first9=1"},
      // Places count bytes.
      {"año: MOVLW ñ,é", "label0=año :4 word6=MOVLW first12=ñ ,14 second15=é"},
  });
  for (const cut_row& row : rows) EXPECT_EQ(shown(row.line), row.parts) << row.line;
}

}  // namespace
}  // namespace estructura
