// How a line of a source is cut for its colours, and whether the colours can be read.
#include "ui/qt/look/highlighter.h"

#include <gtest/gtest.h>
#include <ostream>
#include <sys/mman.h>
#include <unistd.h>

#include <QPalette>

#include "core/instructions.h"
#include "ui/qt/look/colours.h"

namespace estructura {

void PrintTo(const coloured_part& part, std::ostream* out) {
  *out << '{' << part.start << ", " << part.length << ", " << static_cast<int>(part.is) << '}';
}

namespace {

using enum source_part;

struct cut_line {
  const char16_t* line;
  std::vector<coloured_part> parts;
};

// Units of the widget, where a letter of two or three bytes is one and one of four is two; the rest of the
// rule is tested in bytes (tests/unit/ui/highlight_test.cpp).
const cut_line lines[] = {
    {u"año : NOP", {{0, 5, label}, {6, 3, mnemonic}}},
    {u"año: MOVLW 10 ; ñ€", {{0, 4, label}, {5, 5, mnemonic}, {11, 2, number}, {14, 4, comment}}},
    {u"😀: MOVLW 10", {{0, 3, label}, {4, 5, mnemonic}, {10, 2, number}}},
    {u"NOP ; a: b", {{0, 3, mnemonic}, {4, 6, comment}}},
};

TEST(highlighting, counts_the_parts_of_a_line_in_units) {
  for (const cut_line& one : lines)
    EXPECT_EQ(coloured_parts(one.line), one.parts) << QString::fromUtf16(one.line).toStdString();
}

TEST(highlighting, knows_every_mnemonic_of_the_table_in_either_case) {
  for (const instruction& row : instructions) {
    if (row.mnemonic.empty()) continue;
    const QString word =
        QString::fromLatin1(row.mnemonic.data(), static_cast<qsizetype>(row.mnemonic.size()));
    const std::vector<coloured_part> whole = {{0, static_cast<int>(word.size()), mnemonic}};
    EXPECT_EQ(coloured_parts(word), whole) << word.toStdString();
    EXPECT_EQ(coloured_parts(word.toLower()), whole) << word.toStdString();
  }
}

TEST(highlighting, a_line_longer_than_any_statement_has_no_parts) {
  const QString word = QStringLiteral("MOVLW 10 ");
  EXPECT_FALSE(coloured_parts(word).empty());
  EXPECT_TRUE(coloured_parts(word.repeated(200'000)).empty());
}

// Of such a line nothing is read behind the longest statement: here there is nothing that could be.
TEST(highlighting, a_line_longer_than_any_statement_costs_nothing) {
  constexpr std::size_t bytes = 1'000'000;
  void* const closed = ::mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(closed, MAP_FAILED);
  constexpr std::size_t longest_statement = 2001 * sizeof(char16_t);
  ASSERT_EQ(::mprotect(closed, longest_statement, PROT_READ), 0);
  const QStringView line(static_cast<const char16_t*>(closed), bytes / sizeof(char16_t));
  EXPECT_EXIT(::_exit(coloured_parts(line).empty() ? 0 : 1), testing::ExitedWithCode(0), "");
  ::munmap(closed, bytes);
}

TEST(highlighting, a_line_is_as_long_as_it_is_before_its_comment) {
  const QString line = QStringLiteral("MOVLW 10 ;") + QString(5000, QLatin1Char('x'));
  const std::vector<coloured_part> wanted = {{0, 5, mnemonic}, {6, 2, number}, {9, 5001, comment}};
  EXPECT_EQ(coloured_parts(line), wanted);
  const QString code = QStringLiteral("X EQU ") + QString(2000, QLatin1Char('0'));
  EXPECT_TRUE(coloured_parts(code).empty());
  EXPECT_TRUE(odd_parts(code + QLatin1Char('x'), {}).empty());
  EXPECT_FALSE(definition_in(QStringView(code)).has_value());
}

TEST(highlighting, odd_operands_have_their_place_in_units_and_their_tip) {
  name_table names;
  names.add({"AÑO", 1});
  const QString to_the_file =
      QStringLiteral("No es W, 0, 1 ni un nombre definido: no se lee, y el resultado va al registro.");
  const QString from_the_start =
      QStringLiteral("EQU lee solo las cifras hexadecimales del principio: se lee como 0B.");
  EXPECT_EQ(odd_parts(u"X EQU B+1", names), (std::vector<odd_part>{{6, 3, from_the_start}}));
  EXPECT_EQ(odd_parts(u"ADDWF año, ñé€😀 ; x", names), (std::vector<odd_part>{{11, 5, to_the_file}}));
  EXPECT_EQ(odd_parts(u"ADDWF año,W", names), std::vector<odd_part>{});
  EXPECT_EQ(definition_in(QStringView(u"ñ: NOP")), (definition{"Ñ", {}}));
}

struct named_palette {
  const char* name;
  QColor text;
  QColor base;
};

const named_palette palettes[] = {
    {"light", Qt::black, Qt::white},
    {"dark", QColor(0xEF, 0xF0, 0xF1), QColor(0x1B, 0x1E, 0x20)},
    {"black", Qt::white, Qt::black},
    {"sepia", QColor(0x43, 0x34, 0x22), QColor(0xFB, 0xF0, 0xD9)},
    {"solar", QColor(0xFD, 0xF6, 0xE3), QColor(0x00, 0x2B, 0x36)},
    {"grey", QColor(0xF0, 0xF0, 0xF0), QColor(0x40, 0x40, 0x40)},
};

TEST(highlighting, every_colour_can_be_read_on_every_palette) {
  for (const named_palette& one : palettes) {
    QPalette palette;
    palette.setColor(QPalette::Text, one.text);
    palette.setColor(QPalette::Base, one.base);
    const source_colours colours(palette);
    for (std::size_t i = 0; i < source_parts; ++i) {
      EXPECT_GE(contrast(colours.of_part[i], one.base), least_contrast) << one.name << ' ' << i;
      EXPECT_GE(contrast(colours.of_part[i], colours.error_ground), least_contrast) << one.name << ' ' << i;
    }
    EXPECT_GE(contrast(one.text, colours.error_ground), least_contrast) << one.name;
    EXPECT_GE(contrast(colours.error_number, colours.error_number_ground), least_contrast) << one.name;
    EXPECT_GE(contrast(colours.margin_number, colours.margin_ground), least_contrast) << one.name;
    EXPECT_GE(contrast(colours.current_number, colours.margin_ground), least_contrast) << one.name;
  }
}

TEST(highlighting, the_mark_of_an_error_stands_out_without_its_hue) {
  // Three to one against the margin around it: what the guidelines ask of a sign that is no text.
  for (const named_palette& one : palettes) {
    QPalette palette;
    palette.setColor(QPalette::Text, one.text);
    palette.setColor(QPalette::Base, one.base);
    const source_colours colours(palette);
    EXPECT_GE(contrast(colours.error_number_ground, colours.margin_ground), 3) << one.name;
  }
}

TEST(highlighting, the_underline_of_an_operand_stands_out_without_its_hue) {
  for (const named_palette& one : palettes) {
    QPalette palette;
    palette.setColor(QPalette::Text, one.text);
    palette.setColor(QPalette::Base, one.base);
    const source_colours colours(palette);
    EXPECT_GE(contrast(colours.underline, one.base), 3) << one.name;
    EXPECT_GE(contrast(colours.underline, colours.error_ground), 3) << one.name;
  }
}

TEST(highlighting, parts_that_stand_side_by_side_differ) {
  for (const named_palette& one : palettes) {
    QPalette palette;
    palette.setColor(QPalette::Text, one.text);
    palette.setColor(QPalette::Base, one.base);
    const source_colours colours(palette);
    for (std::size_t i = 0; i < source_parts; ++i)
      for (std::size_t j = 0; j < i; ++j) EXPECT_NE(colours.of_part[i], colours.of_part[j]) << one.name;
  }
}

}  // namespace
}  // namespace estructura
