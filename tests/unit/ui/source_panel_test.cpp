// The source's text box as its record: which line bears the mark of an error, and which texts are another
// document.
#include <gtest/gtest.h>

#include "tests/support/test_window.h"

namespace estructura {
namespace {

using support::test_window;

struct wrong_source {
  const char* source;
  int line;
};

// One of each message of the assembler.
constexpr wrong_source wrong_sources[] = {
    {"NOP\r\nMOVWF 5,W\r\n", 2},    {"NOP\r\n\r\n1A: NOP\r\n", 3},         {"A: NOP\r\nA: NOP\r\n", 2},
    {"NOP\r\nMOVWF STATUS\r\n", 2}, {"; x\r\nX EQU 1\r\nMOVLW FF\r\n", 3}, {"ORG 7FF\r\nNOP\r\nNOP", 3},
};

TEST(source, the_line_of_an_assembly_error_bears_a_mark) {
  for (const wrong_source& wrong : wrong_sources) {
    test_window w;
    w.view.type(id::source, wrong.source);
    EXPECT_EQ(w.at("source").marked_line(), 0) << wrong.source;
    w.view.click(id::Ensamblar);
    EXPECT_EQ(w.desktop.boxes.size(), 1U) << wrong.source;
    EXPECT_EQ(w.at("source").marked_line(), wrong.line) << wrong.source;
  }
}

TEST(source, the_mark_is_there_while_the_error_is_told) {
  test_window w;
  int seen = 0;
  w.desktop.at_box = [&] { seen = w.at("source").marked_line(); };
  w.view.type(id::source, "NOP\r\nNOPE\r\n");
  w.view.click(id::Ensamblar);
  EXPECT_EQ(seen, 2);
}

TEST(source, any_change_of_the_text_takes_the_mark_away) {
  const auto marked = [](test_window& w) {
    w.view.type(id::source, "NOP\r\nNOPE\r\n");
    w.view.click(id::Ensamblar);
    return w.at("source").marked_line() == 2;
  };
  test_window typed;
  ASSERT_TRUE(marked(typed));
  typed.view.type(id::source, "NOP\r\nNOP\r\n");
  EXPECT_EQ(typed.at("source").marked_line(), 0);
  test_window tabbed;
  ASSERT_TRUE(marked(tabbed));
  tabbed.view.click(id::tab);
  EXPECT_EQ(tabbed.at("source").marked_line(), 0);
  test_window cleared;
  ASSERT_TRUE(marked(cleared));
  cleared.desktop.answers = {answer::no};
  cleared.view.click(id::borrarasm);
  EXPECT_EQ(cleared.at("source").marked_line(), 0);
}

TEST(source, moving_in_the_text_leaves_the_mark) {
  test_window w;
  w.view.type(id::source, "NOP\r\nNOPE\r\n");
  w.view.click(id::Ensamblar);
  w.view.select(id::source, 0, 2);
  w.view.click(id::Copiar);
  EXPECT_EQ(w.at("source").marked_line(), 2);
}

// The same text can be right for another device.
TEST(source, an_assembly_without_error_takes_the_mark_away) {
  test_window w("16C54");
  w.view.type(id::source, "ORG 200\r\nNOP\r\n");
  w.view.click(id::Ensamblar);
  ASSERT_EQ(w.at("source").marked_line(), 2);
  w.view.pick(id::PIC, "16C57");
  w.view.click(id::Ensamblar);
  EXPECT_EQ(w.at("source").marked_line(), 0);
}

TEST(source, loading_and_clearing_begin_a_document_and_editing_does_not) {
  test_window w;
  const auto documents = [&] { return w.at("source").documents(); };
  const unsigned at_start = documents();
  w.view.type(id::source, "NOP");
  w.view.click(id::tab);
  w.view.click(id::Ensamblar);
  w.desktop.answers = {answer::no, answer::no, answer::no};
  w.view.click(id::desensamblar);
  EXPECT_EQ(documents(), at_start);
  w.view.click(id::cargarasm);
  EXPECT_GT(documents(), at_start);
  const unsigned loaded = documents();
  // The text is empty already, and still another document begins.
  w.view.click(id::borrarasm);
  EXPECT_GT(documents(), loaded);
}

}  // namespace
}  // namespace estructura
