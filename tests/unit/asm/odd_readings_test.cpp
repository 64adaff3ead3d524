// Which operands are read as something else than they look: by table, and against what the assembler makes of
// them.
#include "asm/odd_readings.h"

#include <array>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "asm/assembler.h"
#include "asm/encodeins.h"
#include "common/text.h"
#include "tests/unit/asm/result.h"

namespace estructura {

void PrintTo(const odd_reading& r, std::ostream* out) {
  *out << '{' << r.where.from << ".." << r.where.to << " kind " << static_cast<int>(r.what) << " value "
       << hexstr(r.value, 4) << " code " << (r.code ? hexstr(*r.code, 4) : "-") << '}';
}

namespace {

using namespace support;

name_table names_of(std::string_view source) {
  name_table names;
  while (!source.empty()) {
    const std::size_t end = std::min(source.find('\n'), source.size());
    if (const auto made = definition_in(source.substr(0, end))) names.add(*made);
    source.remove_prefix(std::min(end + 1, source.size()));
  }
  return names;
}

struct reading_row {
  std::string_view others;  // the other lines of the source
  std::string_view line;
  std::string_view text;  // the operand that is odd
  odd what;
  int value = 0;
  std::optional<int> code = {};
};

void check(const std::vector<reading_row>& rows) {
  for (const reading_row& row : rows) {
    name_table names = names_of(row.others);
    if (const auto made = definition_in(row.line)) names.add(*made);
    const std::vector<odd_reading> found = odd_readings(row.line, names);
    ASSERT_EQ(found.size(), 1U) << row.line;
    EXPECT_EQ(found[0].where.of(row.line), row.text) << row.line;
    EXPECT_EQ(found[0], (odd_reading{found[0].where, row.what, row.value, row.code})) << row.line;
  }
}

TEST(odd_readings, of_EQU_are_what_is_no_number_and_what_is_a_name) {
  check({
      {"", "X EQU 0x10", "0x10", odd::leading_digits, 0},
      {"", "X EQU B+1", "B+1", odd::leading_digits, 0xB},
      {"", "X: EQU 10h ; diez", "10h", odd::leading_digits, 0x10},
      {"", "X EQU d'10'", "d'10'", odd::leading_digits, 0xD},
      {"", "X EQU 10 20", "10 20", odd::leading_digits, 0x10},
      {"", "X\tEQU\tBUCLE\t", "BUCLE", odd::leading_digits, 0xB},
      {"", "X EQU H'08'", "H'08'", odd::no_digits},
      {"", "X EQU $10", "$10", odd::no_digits},
      {"", "X EQU W", "W", odd::no_digits},
      {"", "X EQU ñ", "ñ", odd::no_digits},
      {"TABLA: NOP", "X EQU TABLA", "TABLA", odd::no_digits},
      {"Y EQU 5", "X EQU Y", "Y", odd::no_digits},
      {"C EQU 0", "X EQU C", "C", odd::name_as_number, 0xC},
      {"FACE: NOP", "X EQU face", "face", odd::name_as_number, -0x532},
      {"", "X EQU 12345h", "12345h", odd::unreadable},
  });
}

TEST(odd_readings, of_ORG_are_names_and_what_is_neither_name_nor_number) {
  check({
      {"X EQU 1", "ORG 0x100", "0x100", odd::origin, 0, 0},
      {"X EQU 1", "ORG 10H", "10H", odd::origin, 0x10, 0},
      {"X EQU 1", "ORG FF", "FF", odd::origin, 0xFF, 0},
      {"X EQU 1", "ORG B+1", "B+1", odd::origin, 0xB, 0},
      {"X EQU 40", "ORG X", "X", odd::origin, 0, 0x40},
      {"B EQU 40", "AQUI: ORG B", "B", odd::origin, 0xB, 0x40},
      {"TABLA: NOP", "ORG TABLA", "TABLA", odd::origin, 0, std::nullopt},
      // The label on the line is a name too.
      {"", "L: ORG FF", "FF", odd::origin, 0xFF, 0},
      {"", "ORG 0x100", "0x100", odd::unreadable},
      {"", "ORG TABLA", "TABLA", odd::unknown_name},
  });
}

TEST(odd_readings, of_instructions_are_destinations_and_bits_that_turn_into_others) {
  check({
      {"X EQU 8", "ADDWF X,F", "F", odd::no_destination},
      {"X EQU 8", "incf 5 , DEST ; f", "DEST", odd::no_destination},
      {"X EQU 8", "MOVF 5,0x0", "0x0", odd::no_destination},
      {"X EQU 8", "MOVF 5,W,1", "W,1", odd::no_destination},
      {"X EQU 8", "MOVF 5,*", "*", odd::no_destination},
      {"X EQU 8", "ADDWF 5, ; nada", ",", odd::missing_destination},
      {"", "L: ADDWF 5,", ",", odd::missing_destination},
      // The bits of STATUS have names as long as nothing else has: carry is 0, which is W.
      {"", "ADDWF 3,C", "C", odd::status_bit, 0},
      {"", "MOVF 03,dc", "dc", odd::status_bit, 1},
      {"", "BCF 5,12", "12", odd::other_instruction, 0x645},
      {"", "BCF 5,234", "234", odd::other_instruction, 0x4A85},
      {"X EQU 8", "BSF X,23", "23", odd::other_instruction, 0x968},
      {"X EQU 34", "BSF 8,X", "X", odd::other_instruction, 0xB88},
      {"L: NOP", "BCF L,12", "12", odd::other_instruction, 0x640},
  });
}

TEST(odd_readings, of_instructions_are_what_is_not_read_at_all) {
  check({
      {"X EQU 1", "MOVLW FF", "FF", odd::unknown_number},
      {"X EQU 1", "GOTO FUERA", "FUERA", odd::unknown_name},
      {"", "GOTO FUERA", "FUERA", odd::unknown_name},
      {"", "INCF PCL", "PCL", odd::unknown_name},
      {"X EQU 1", "INCF PCL,1", "PCL", odd::unknown_name},
      {"", "MOVLW W", "W", odd::unknown_name},
      {"", "MOVLW 0x10", "0x10", odd::unreadable},
      {"X EQU 1", "MOVLW 10H", "10H", odd::unreadable},
      {"X EQU 1", "RETLW 'A'", "'A'", odd::unknown_name},
      {"", "TRIS 6h", "6h", odd::unreadable},
      {"X EQU 1", "BSF 3,Z", "Z", odd::unknown_name},
      {"X EQU 1", "BSF 3,C", "C", odd::unknown_number},
      {"X EQU 1", "BSF STATUS,2", "STATUS", odd::unknown_name},
      {"", "ADDWF 5,0x1", "0x1", odd::unreadable},
      {"", "MOVF 5,DEST", "DEST", odd::unknown_name},
  });
}

TEST(odd_readings, are_none_where_all_is_read_as_it_looks_or_the_line_is_wrong_anyway) {
  struct row {
    std::string_view others;
    std::string_view line;
  };
  constexpr auto rows = std::to_array<row>({
      {"", ""},
      {"", "; X EQU 0x10"},
      {"", "X EQU 10 ; 0x10"},
      {"", "X EQU FF"},
      {"", "X EQU 0FFFF"},
      {"C EQU 0C", "X EQU C"},
      {"", "C EQU C"},
      {"", "ORG 7FF"},
      {"", "ORG FF"},
      {"B EQU 0B", "ORG B"},
      {"X EQU 1", "ORG 0FF"},
      {"X EQU 1", "MOVLW X"},
      {"X EQU 1", "movlw x"},
      {"año EQU 1", "MOVLW AÑO"},
      {"L: NOP", "GOTO L"},
      {"F EQU 1", "ADDWF 5,F"},
      {"", "ADDWF 5,W"},
      {"X EQU 1", "ADDWF 5 , w"},
      {"", "ADDWF 5,1"},
      {"", "ADDWF 5"},
      {"", "MOVLW FF"},
      {"", "BSF 3,C"},
      {"", "BSF 3,7"},
      {"", "BSF 3,01"},
      // Read whole, and refused.
      {"", "X EQU 12345"},
      {"", "ORG 12345"},
      {"", "MOVLW 100"},
      {"", "MOVWF 20"},
      {"", "BCF 5,8"},
      {"", "BCF 5,456"},
      {"", "ADDWF 5,2"},
      {"", "ADDWF 8,F"},
      {"", "ADDWF 5,"},
      // Wrong lines.
      {"", "FOO 0x10"},
      {"", "EQU 0x10"},
      {"", "X EQU 0x10,5"},
      {"", "X EQU"},
      {"", "ORG"},
      {"", "NOP 0x10"},
      {"", "END 0x10"},
      {"", "MOVLW 0x10,5"},
      {"", "BCF 0x10"},
      {"", "L: FOO 0x10"},
  });
  for (const row& r : rows) {
    name_table names = names_of(r.others);
    if (const auto made = definition_in(r.line)) names.add(*made);
    EXPECT_EQ(odd_readings(r.line, names), std::vector<odd_reading>{}) << r.line << " beside " << r.others;
  }
}

TEST(odd_readings, several_of_a_line_come_from_left_to_right) {
  name_table names = names_of("X EQU 1");
  const std::vector<odd_reading> wanted = {{{6, 9}, odd::unknown_name, 0, {}},
                                           {{10, 13}, odd::no_destination, 0, {}}};
  EXPECT_EQ(odd_readings("ADDWF foo,bar", names), wanted);
}

// --- Against the assembler: every operand of a list, in every place, beside several other lines.

constexpr std::array operands_tried = {
    "0",  "1",  "2",  "5",  "05",   "1F",  "12",     "0FF", "0x1", "10H", "7FF", "FF",    "B",     "C",
    "DC", "F",  "W",  "w",  "H'8'", "B+1", "X",      "Y",   "Z",   "ABC", "L",   "*",     "1,2",   "W,1",
    "34", "01", "A1", "$5", "1 2",  "ñ",   "STATUS", "PCL", "",    "234", "456", "TABLA", "12345", "X+1"};
constexpr std::array contexts = {"", "X EQU 5\n", "X EQU 0\nC EQU 7\nB EQU 0B\n",
                                 "L: NOP\nF EQU 1\nY EQU 23\n"};
constexpr std::array places = {"%",       "K EQU %", "ORG %",     "MOVLW %",    "GOTO %",   "TRIS %",
                               "MOVWF %", "ADDWF %", "INCF %,W",  "ADDWF 5,%",  "MOVF 3,%", "ADDWF X,%",
                               "BCF %,1", "BSF 3,%", "BTFSS X,%", "Q: RLF 5,%", "NOP %"};

std::string with_operand(std::string_view place, std::string_view operand) {
  std::string out;
  for (const char c : place) out += c == '%' ? std::string(operand) : std::string(1, c);
  return out;
}

/// A source with the line in it and, where other lines define names, a label that tells where it stands.
std::string source_of(std::string_view context, std::string_view line) {
  const std::string source = std::string(context).append(line).append("\n");
  return context.empty() ? source : source + "THEEND: NOP\n";
}

/// All that assembling comes to; the message where it fails.
struct result {
  bool made;
  std::string text;
};

result result_of(const std::string& source) {
  const assembly made = assemble(crlf(source), mask_2048);
  if (made.error) return {false, std::string(made.error->message)};
  std::string text = words_of(made);
  for (const assembly_symbol& symbol : made.symbols)
    text += ' ' + symbol.name + '=' + hexstr(symbol.value, 4);
  return {true, text};
}

std::string number(int value) {
  const std::string digits = symbol_text(static_cast<std::int16_t>(value));
  return digits[0] >= 'A' ? "0" + digits : digits;
}

/// The operand as somebody reads it who knows the source's names, as a number that begins with a digit;
/// empty for what is neither number nor name. The labels tried stand at 0.
std::string as_it_looks(std::string_view operand, const name_table& names) {
  const std::string text = to_upper(operand);
  if (const auto known = names.find(text)) return number(known->value.value_or(0));
  if (text.empty() || !ishex(text)) return "";
  return text[0] >= 'A' ? "0" + text : text;
}

/// What is to stand in the operand's place so that it looks as it is read; nothing where the reading is said
/// to be an error, and for ORG, which reads twice.
std::optional<std::string> as_it_is_said(const odd_reading& r) {
  switch (r.what) {
    case odd::leading_digits:
    case odd::no_digits:
    case odd::name_as_number: return number(r.value);
    case odd::no_destination: return "1";
    case odd::status_bit: return r.value == 0 ? "W" : "1";
    default: return std::nullopt;
  }
}

bool is_error(odd what) {
  return what == odd::unknown_name || what == odd::unknown_number || what == odd::unreadable;
}

template <class Look>
void try_all(Look look) {
  for (const std::string_view context : contexts)
    for (const std::string_view place : places)
      for (const std::string_view operand : operands_tried) {
        const std::string line = with_operand(place, operand);
        const std::string source = source_of(context, line);
        look(place, operand, line, source, names_of(source));
      }
}

TEST(odd_readings, leave_nothing_out_that_the_assembler_reads_as_something_else) {
  int checked = 0;
  try_all([&](std::string_view place, std::string_view operand, const std::string& line,
              const std::string& source, const name_table& names) {
    const result got = result_of(source);
    if (!got.made || operand.empty() || !odd_readings(line, names).empty()) return;
    const bool destination = place.ends_with(",%") && place[0] != 'B';
    if (destination && to_upper(operand) == "W") return;
    // The names of STATUS's bits are read as such where no other name is defined.
    if (names.empty() && place == "BSF 3,%" && bitnum(operand) != operand) return;
    std::string plain = source;
    plain.replace(source.find(line), line.size(), with_operand(place, as_it_looks(operand, names)));
    EXPECT_NE(as_it_looks(operand, names), "") << source;
    EXPECT_EQ(result_of(plain).text, got.text) << source;
    ++checked;
  });
  EXPECT_GT(checked, 300);
}

TEST(odd_readings, say_what_the_assembler_reads) {
  int checked = 0;
  try_all([&](std::string_view, std::string_view, const std::string& line, const std::string& source,
              const name_table& names) {
    const std::vector<odd_reading> found = odd_readings(line, names);
    const result got = result_of(source);
    for (const odd_reading& r : found) {
      if (is_error(r.what)) {
        EXPECT_FALSE(got.made) << source;
        continue;
      }
      if (!got.made) continue;
      const auto said = as_it_is_said(r);
      if (!said) continue;
      std::string plain = source;
      plain.replace(source.find(line) + r.where.from, r.where.to - r.where.from, *said);
      EXPECT_EQ(result_of(plain).text, got.text) << source;
      ++checked;
    }
  });
  EXPECT_GT(checked, 100);
}

TEST(odd_readings, of_ORG_say_where_code_and_labels_go) {
  int checked = 0;
  try_all([&](std::string_view place, std::string_view, const std::string& line, const std::string& source,
              const name_table& names) {
    if (place != "ORG %") return;
    for (const odd_reading& r : odd_readings(line, names)) {
      const assembly made = assemble(crlf(source), mask_2048);
      if (r.what != odd::origin || made.error) continue;
      EXPECT_EQ(made.symbols.back().value, r.value) << source;
      // The labels tried stand at 0.
      EXPECT_EQ(made.image[r.code.value_or(0)], 0) << source;
      ++checked;
    }
  });
  EXPECT_GT(checked, 20);
}

TEST(odd_readings, of_bits_say_which_word_comes_out) {
  int checked = 0;
  try_all([&](std::string_view, std::string_view, const std::string& line, const std::string& source,
              const name_table& names) {
    for (const odd_reading& r : odd_readings(line, names)) {
      if (r.what != odd::other_instruction) continue;
      const assembly made = assemble(crlf(source), mask_2048);
      // Where the register is wrong, nothing comes out.
      if (made.error) continue;
      bool there = false;
      for (int a = 0; a < program_words; ++a) there = there || made.image[a] == r.value;
      EXPECT_TRUE(there) << source;
      ++checked;
    }
  });
  EXPECT_GT(checked, 10);
}

// --- The names of a source.

TEST(definition_in, is_the_label_with_the_value_that_EQU_gives) {
  struct row {
    std::string_view line;
    std::optional<definition> made;
  };
  const std::vector<row> rows = {
      {"", {}},
      {"NOP", {}},
      {"; L:", {}},
      {"L: NOP", {{"L", {}}}},
      {" bucle : ; sola", {{"BUCLE", {}}}},
      {"año equ 1f", {{"AÑO", 0x1F}}},
      {"X: EQU 0FFFF", {{"X", -1}}},
      {"X EQU B+1", {{"X", 0xB}}},
      {"X EQU 12345", {{"X", {}}}},
      {"X EQU", {{"X", 0}}},
      {"MOVLW EQU", {}},
      {"1X: NOP", {}},
      {"W EQU 1", {}},
      {": NOP", {}},
  };
  for (const row& r : rows) EXPECT_EQ(definition_in(r.line), r.made) << r.line;
}

TEST(name_table, a_name_that_stands_twice_goes_with_the_last_of_them) {
  name_table names;
  names.add({"X", 1});
  names.add({"X", {}});
  names.remove({"X", 5});
  EXPECT_EQ(names.changes(), 2U);
  names.remove({"X", 1});
  EXPECT_EQ(names.find("X"), (definition{"X", {}}));
  EXPECT_EQ(names.find("x"), std::nullopt);
  names.remove({"X", {}});
  EXPECT_TRUE(names.empty());
  EXPECT_EQ(names.changes(), 4U);
}

}  // namespace
}  // namespace estructura
