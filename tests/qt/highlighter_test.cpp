// How a line of a source is cut for its colours, and whether the colours can be read.
#include <gtest/gtest.h>
#include <ostream>
#include <sys/mman.h>
#include <unistd.h>

#include <QPalette>

#include "core/instructions.h"
#include "ui/qt/colores.h"
#include "ui/qt/resaltado.h"

namespace estructura {

void PrintTo(const trozo& part, std::ostream* out) {
  *out << '{' << part.start << ", " << part.length << ", " << static_cast<int>(part.is) << '}';
}

namespace {

using enum parte;

struct linea_cortada {
  const char16_t* line;
  std::vector<trozo> parts;
};

const linea_cortada lines[] = {
    {u"", {}},
    {u"   \t ", {}},
    {u"NOP", {{0, 3, mnemonico}}},
    {u"  movlw 1f", {{2, 5, mnemonico}, {8, 2, numero}}},
    {u"\tMOVLW\t0FF\t; todo", {{1, 5, mnemonico}, {7, 3, numero}, {11, 6, comentario}}},
    {u"BUCLE: GOTO BUCLE", {{0, 6, etiqueta}, {7, 4, mnemonico}}},
    {u"SOLA:", {{0, 5, etiqueta}}},
    {u"año : NOP", {{0, 5, etiqueta}, {6, 3, mnemonico}}},
    {u"ADDWF 5 , W", {{0, 5, mnemonico}, {6, 1, numero}}},
    {u"BSF 3,2", {{0, 3, mnemonico}, {4, 1, numero}, {6, 1, numero}}},
    // The first comma alone divides.
    {u"BSF 3,2,1", {{0, 3, mnemonico}, {4, 1, numero}}},
    {u"ORG 7FF", {{0, 3, directiva}, {4, 3, numero}}},
    {u"end", {{0, 3, directiva}}},
    // EQU defines the word before it, with or without colon.
    {u"X EQU 10", {{0, 1, etiqueta}, {2, 3, directiva}, {6, 2, numero}}},
    {u"X: EQU 10", {{0, 2, etiqueta}, {3, 3, directiva}, {7, 2, numero}}},
    // A word of the language is no name there.
    {u"  nop equ 1", {{2, 3, mnemonico}}},
    {u"MOVLW EQU", {{0, 5, mnemonico}}},
    {u"equ equ 1", {{0, 3, directiva}}},
    {u": NOP", {{0, 1, etiqueta}, {2, 3, mnemonico}}},
    // Units of the widget: one for a letter of two or three bytes, two for one of four.
    {u"año: MOVLW 10 ; ñ€", {{0, 4, etiqueta}, {5, 5, mnemonico}, {11, 2, numero}, {14, 4, comentario}}},
    {u"😀: MOVLW 10", {{0, 3, etiqueta}, {4, 5, mnemonico}, {10, 2, numero}}},
    // A number begins with a decimal digit and holds nothing but hexadecimal ones.
    {u"MOVLW FF", {{0, 5, mnemonico}}},
    {u"MOVLW 0x10", {{0, 5, mnemonico}}},
    {u"MOVLW 1G", {{0, 5, mnemonico}}},
    // What is no instruction is left as it is: nothing tells that it is one.
    {u"MOVLV 10", {{6, 2, numero}}},
    {u"ETIQ NOP", {}},
    {u"; MOVLW 10 : x", {{0, 14, comentario}}},
    {u"NOP;x", {{0, 3, mnemonico}, {3, 2, comentario}}},
    // A colon in the comment makes no label.
    {u"NOP ; a: b", {{0, 3, mnemonico}, {4, 6, comentario}}},
};

TEST(resaltado, cuts_a_line_as_the_assembler_does) {
  for (const linea_cortada& one : lines)
    EXPECT_EQ(analiza(one.line), one.parts) << QString::fromUtf16(one.line).toStdString();
}

TEST(resaltado, knows_every_mnemonic_of_the_table_in_either_case) {
  for (const instruction& row : instructions) {
    if (row.mnemonic.empty()) continue;
    const QString word =
        QString::fromLatin1(row.mnemonic.data(), static_cast<qsizetype>(row.mnemonic.size()));
    const std::vector<trozo> whole = {{0, static_cast<int>(word.size()), mnemonico}};
    EXPECT_EQ(analiza(word), whole) << word.toStdString();
    EXPECT_EQ(analiza(word.toLower()), whole) << word.toStdString();
  }
}

TEST(resaltado, a_line_longer_than_any_statement_has_no_parts) {
  const QString word = QStringLiteral("MOVLW 10 ");
  EXPECT_FALSE(analiza(word).empty());
  EXPECT_TRUE(analiza(word.repeated(200'000)).empty());
}

// Of such a line nothing is read behind the longest statement: here there is nothing that could be.
TEST(resaltado, a_line_longer_than_any_statement_costs_nothing) {
  constexpr std::size_t bytes = 1'000'000;
  void* const closed = ::mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(closed, MAP_FAILED);
  constexpr std::size_t longest_statement = 2001 * sizeof(char16_t);
  ASSERT_EQ(::mprotect(closed, longest_statement, PROT_READ), 0);
  const QStringView line(static_cast<const char16_t*>(closed), bytes / sizeof(char16_t));
  EXPECT_EXIT(::_exit(analiza(line).empty() ? 0 : 1), testing::ExitedWithCode(0), "");
  ::munmap(closed, bytes);
}

TEST(resaltado, a_line_is_as_long_as_it_is_before_its_comment) {
  const QString line = QStringLiteral("MOVLW 10 ;") + QString(5000, QLatin1Char('x'));
  const std::vector<trozo> wanted = {{0, 5, mnemonico}, {6, 2, numero}, {9, 5001, comentario}};
  EXPECT_EQ(analiza(line), wanted);
  const QString code = QStringLiteral("X EQU ") + QString(2000, QLatin1Char('0'));
  EXPECT_TRUE(analiza(code).empty());
  EXPECT_TRUE(odd_parts(code + QLatin1Char('x'), {}).empty());
  EXPECT_FALSE(definition_in(QStringView(code)).has_value());
}

TEST(resaltado, odd_operands_have_their_place_in_units_and_their_tip) {
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

struct paleta {
  const char* name;
  QColor text;
  QColor base;
};

const paleta palettes[] = {
    {"light", Qt::black, Qt::white},
    {"dark", QColor(0xEF, 0xF0, 0xF1), QColor(0x1B, 0x1E, 0x20)},
    {"black", Qt::white, Qt::black},
    {"sepia", QColor(0x43, 0x34, 0x22), QColor(0xFB, 0xF0, 0xD9)},
    {"solar", QColor(0xFD, 0xF6, 0xE3), QColor(0x00, 0x2B, 0x36)},
    {"grey", QColor(0xF0, 0xF0, 0xF0), QColor(0x40, 0x40, 0x40)},
};

TEST(resaltado, every_colour_can_be_read_on_every_palette) {
  for (const paleta& one : palettes) {
    QPalette palette;
    palette.setColor(QPalette::Text, one.text);
    palette.setColor(QPalette::Base, one.base);
    const colores_fuente colours(palette);
    for (std::size_t i = 0; i < partes; ++i) {
      EXPECT_GE(contraste(colours.letras[i], one.base), contraste_minimo) << one.name << ' ' << i;
      EXPECT_GE(contraste(colours.letras[i], colours.fondo_error), contraste_minimo) << one.name << ' ' << i;
    }
    EXPECT_GE(contraste(one.text, colours.fondo_error), contraste_minimo) << one.name;
    EXPECT_GE(contraste(colours.numero_error, colours.sello_error), contraste_minimo) << one.name;
    EXPECT_GE(contraste(colours.numero_margen, colours.fondo_margen), contraste_minimo) << one.name;
    EXPECT_GE(contraste(colours.numero_actual, colours.fondo_margen), contraste_minimo) << one.name;
  }
}

TEST(resaltado, the_mark_of_an_error_stands_out_without_its_hue) {
  // Three to one against the margin around it: what the guidelines ask of a sign that is no text.
  for (const paleta& one : palettes) {
    QPalette palette;
    palette.setColor(QPalette::Text, one.text);
    palette.setColor(QPalette::Base, one.base);
    const colores_fuente colours(palette);
    EXPECT_GE(contraste(colours.sello_error, colours.fondo_margen), 3) << one.name;
  }
}

TEST(resaltado, the_underline_of_an_operand_stands_out_without_its_hue) {
  for (const paleta& one : palettes) {
    QPalette palette;
    palette.setColor(QPalette::Text, one.text);
    palette.setColor(QPalette::Base, one.base);
    const colores_fuente colours(palette);
    EXPECT_GE(contraste(colours.underline, one.base), 3) << one.name;
    EXPECT_GE(contraste(colours.underline, colours.fondo_error), 3) << one.name;
  }
}

TEST(resaltado, parts_that_stand_side_by_side_differ) {
  for (const paleta& one : palettes) {
    QPalette palette;
    palette.setColor(QPalette::Text, one.text);
    palette.setColor(QPalette::Base, one.base);
    const colores_fuente colours(palette);
    for (std::size_t i = 0; i < partes; ++i)
      for (std::size_t j = 0; j < i; ++j) EXPECT_NE(colours.letras[i], colours.letras[j]) << one.name;
  }
}

}  // namespace
}  // namespace estructura
