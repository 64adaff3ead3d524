#include "ui/qt/text/text_conversion.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <QTextDocument>

namespace estructura {
namespace {

struct text_place {
  const char* text;
  int character;
  int unit;
};

// The letter of four bytes takes two units of a widget.
constexpr text_place places[] = {
    {"", 0, 0},
    {"uno", 0, 0},
    {"uno", 3, 3},
    {"uno\r\ndos", 3, 3},
    {"uno\r\ndos", 5, 4},
    {"uno\r\ndos", 8, 7},
    {"\r\n\r\n", 2, 1},
    {"\r\n\r\n", 4, 2},
    {"añó\r\nb", 3, 3},
    {"añó\r\nb", 5, 4},
    {"a\xF0\x9D\x84\x9E"
     "b",
     1, 1},
    {"a\xF0\x9D\x84\x9E"
     "b",
     2, 3},
    {"a\xF0\x9D\x84\x9E"
     "b",
     3, 4},
    {"a\nb", 2, 2},
    {"a\rb", 2, 2},
};

TEST(text_conversion, a_character_and_its_unit_name_the_same_place) {
  for (const text_place& place : places) {
    EXPECT_EQ(unit_of_char(place.text, place.character), place.unit)
        << place.text << " at " << place.character;
    EXPECT_EQ(char_of_unit(place.text, place.unit), place.character) << place.text << " unit " << place.unit;
  }
}

TEST(text_conversion, a_character_within_a_line_end_is_the_place_before_it) {
  EXPECT_EQ(unit_of_char("uno\r\ndos", 4), 3);
}

TEST(text_conversion, a_place_past_the_end_is_the_end) {
  EXPECT_EQ(unit_of_char("a\r\nb", 99), 3);
  EXPECT_EQ(char_of_unit("a\r\nb", 99), 4);
}

TEST(text_conversion, every_line_end_of_a_widget_becomes_cr_lf) {
  EXPECT_EQ(from_qt(QStringLiteral("a\nb")), "a\r\nb");
  EXPECT_EQ(from_qt(QStringLiteral("a\r\nb\rc")), "a\r\nb\r\nc");
  EXPECT_EQ(from_qt(QStringLiteral("a\u2029b\u2028c")), "a\u2029b\u2028c");
}

TEST(text_conversion, a_text_comes_back_as_it_went) {
  for (const char* text : {"", "uno", "uno\r\ndos\r\n", "\r\n", "año 'ñ' \xF0\x9D\x84\x9E\r\n fin"})
    EXPECT_EQ(from_qt(to_qt(text)), text);
}

TEST(text_conversion, a_document_takes_nothing_for_a_line_end_that_is_none) {
  const char* const text = "a\u2028b\u2029c\uFDD0d\uFDD1e\r\nf";
  QTextDocument document;
  document.setPlainText(to_document(text));
  EXPECT_EQ(document.blockCount(), 2);
  EXPECT_EQ(document.characterCount() - 1, unit_count(text));
  EXPECT_EQ(from_document(document.toRawText()), text);
  // What the person types there with Shift and Enter is a line end.
  EXPECT_EQ(from_document(QStringLiteral("a\u2028b")), "a\r\nb");
}

struct expected_change {
  const char* before;
  const char* after;
  int caret;
  int start;
  int end;
  const char* text;
};

constexpr expected_change changes[] = {
    {"", "uno", 0, 0, 0, "uno"},
    {"uno", "", 3, 0, 3, ""},
    {"uno", "uno", 1, 1, 1, ""},
    {"abc", "aXc", 2, 1, 2, "X"},
    {"a\r\nb", "a\r\nXb", 2, 2, 2, "X"},
    // One among others of its kind: where the caret was.
    {"a    b", "a      b", 3, 3, 3, "  "},
    {"a    b", "a      b", 0, 1, 1, "  "},
    {"a    b", "a      b", 6, 5, 5, "  "},
    {"a    b", "a  b", 2, 2, 4, ""},
    // Neither a line end nor a character is cut.
    {"a\r\nb", "a\rb", 0, 1, 2, "\r"},
    {"a\rb", "a\r\nb", 0, 1, 2, "\n"},
    {"a\r\n\r\nb", "a\r\nb", 2, 2, 3, ""},
    {"\u00e1", "\u00e9", 0, 0, 1, "\u00e9"},
    {"\u00e1\u00e1", "\u00e1", 1, 1, 2, ""},
    {"a\U0001d11e", "a\U0001d122", 0, 1, 3, "\U0001d122"},
};

TEST(text_conversion, a_change_is_the_least_that_makes_one_text_the_other) {
  for (const expected_change& one : changes) {
    const text_change got = change_between(one.before, one.after, one.caret);
    EXPECT_EQ(got.start, one.start) << one.before << " -> " << one.after;
    EXPECT_EQ(got.end, one.end) << one.before << " -> " << one.after;
    EXPECT_EQ(got.text.toStdString(), one.text) << one.before << " -> " << one.after;
  }
}

TEST(text_conversion, a_change_done_in_the_widget_gives_the_other_text) {
  const std::vector<std::string> texts = {"",     "a", "aa", "\r\n", "\r\n\r\n", "a\r\na", "\u00e1a\u00e1",
                                          "\r\na"};
  for (const std::string& before : texts)
    for (const std::string& after : texts)
      for (int caret = 0; caret <= unit_count(before); ++caret) {
        const text_change got = change_between(before, after, caret);
        QString text = to_qt(before);
        text.replace(got.start, got.end - got.start, got.text);
        EXPECT_EQ(from_qt(text), after) << before << " -> " << after << " at " << caret;
      }
}

TEST(text_conversion, a_megabyte_of_lines_is_converted_there_and_back) {
  std::string lines;
  while (lines.size() < 1'000'000) lines += "NOP ; algo\r\n";
  const QString shown = to_qt(lines);
  EXPECT_EQ(unit_count(lines), shown.size());
  EXPECT_EQ(from_qt(shown), lines);
}

}  // namespace
}  // namespace estructura
