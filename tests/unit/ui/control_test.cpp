// The record of one control, kind by kind: which change raises which event, and what lists and selections
// keep.
#include "ui/control.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "ui/inventory.h"

namespace estructura {
namespace {

// Writes down what a control tells, in order.
class told final : public event_sink {
 public:
  void raised(control&, event what) override {
    constexpr const char* names[] = {"click",     "dblclick", "change", "gotfocus",
                                     "lostfocus", "keyup",    "enter"};
    events.emplace_back(names[static_cast<std::size_t>(what)]);
  }
  void touched(control&) override { events.emplace_back("touched"); }
  std::vector<std::string> take() { return std::exchange(events, {}); }
  std::vector<std::string> events;
};

using log = std::vector<std::string>;

constexpr declaration plain(kind is) {
  return {id::dat, "caja", 1, is, id::none, {}, ""};
}

template <class Kind>
struct fixture {
  explicit fixture(kind is) : box(plain(is), 0) { box.listen(sink); }
  Kind box;
  told sink;
};

struct text_fixture : fixture<text_box> {
  text_fixture() : fixture(kind::text) {}
};
struct list_fixture : fixture<list_box> {
  list_fixture() : fixture(kind::list) {}
};

TEST(control, raises_change_exactly_when_a_text_changes) {
  text_fixture f;
  f.box.set_text("1F");
  EXPECT_EQ(f.sink.take(), (log{"touched", "change"}));
  f.box.set_text("1F");
  EXPECT_EQ(f.sink.take(), log{});
  f.box.set_text("");
  EXPECT_EQ(f.sink.take(), (log{"touched", "change"}));
}

TEST(control, raises_change_for_the_caption_of_a_label_too) {
  fixture<label> f(kind::label);
  f.box.set_text("PCL");
  EXPECT_EQ(f.sink.take(), (log{"touched", "change"}));
}

template <class Kind>
void expect_a_silent_text(kind is) {
  fixture<Kind> f(is);
  f.box.set_text("otro");
  EXPECT_EQ(f.sink.take(), log{"touched"}) << static_cast<int>(is);
  EXPECT_EQ(f.box.text(), "otro");
  f.box.set_text("otro");
  EXPECT_EQ(f.sink.take(), log{}) << static_cast<int>(is);
}

TEST(control, raises_nothing_for_the_text_of_other_kinds) {
  expect_a_silent_text<button>(kind::button);
  expect_a_silent_text<check_box>(kind::check);
  expect_a_silent_text<check_box>(kind::option);
  expect_a_silent_text<combo_box>(kind::combo);
}

TEST(control, reads_as_nothing_what_its_kind_does_not_have) {
  const control frame(plain(kind::frame), 0);
  EXPECT_FALSE(frame.value());
  EXPECT_EQ(frame.tag(), "");
  EXPECT_EQ(frame.sel_start(), 0);
  EXPECT_EQ(frame.sel_length(), 0);
  EXPECT_EQ(frame.marked_line(), 0);
  EXPECT_EQ(frame.documents(), 0U);
  EXPECT_EQ(frame.shown_selections(), 0U);
  EXPECT_EQ(frame.rows(), std::vector<std::string>{});
  EXPECT_EQ(frame.count(), 0);
  EXPECT_EQ(frame.row(), -1);
  EXPECT_EQ(frame.selected(), std::vector<int>{});
  EXPECT_EQ(frame.row_changes(), 0U);
  EXPECT_EQ(frame.shown_rows(), 0U);
  EXPECT_FALSE(frame.face_background());
}

TEST(control, takes_name_text_tip_and_flags_from_its_row_of_the_inventory) {
  constexpr declaration row = {id::PB,          "PB",  3,     kind::check, id::none,
                               {"a", "b", "c"}, "pin", false, false,       1};
  const check_box second(row, 1);
  EXPECT_EQ(second.which(), id::PB);
  EXPECT_EQ(second.index(), 1);
  EXPECT_EQ(second.is(), kind::check);
  EXPECT_EQ(second.name(), "PB(1)");
  EXPECT_EQ(second.text(), "b");
  EXPECT_EQ(second.tip(), "pin");
  EXPECT_FALSE(second.visible());
  EXPECT_FALSE(second.enabled());
  EXPECT_EQ(check_box(row, 2).tip(), "");
  EXPECT_EQ(check_box(plain(kind::check), 0).name(), "caja");
}

TEST(combo, with_new_entries_raises_nothing_and_counts_them) {
  fixture<combo_box> f(kind::combo);
  f.box.set_rows({"a", "b"});
  EXPECT_EQ(f.sink.take(), log{"touched"});
  EXPECT_EQ(f.box.row_changes(), 1U);
  f.box.set_rows({"a", "b"});
  EXPECT_EQ(f.sink.take(), log{});
  EXPECT_EQ(f.box.row_changes(), 1U);
  EXPECT_EQ(f.box.count(), 2);
}

TEST(control, raises_click_exactly_when_the_value_of_a_box_changes) {
  fixture<check_box> f(kind::check);
  f.box.set_value(false);
  EXPECT_EQ(f.sink.take(), log{});
  f.box.set_value(true);
  EXPECT_EQ(f.sink.take(), (log{"touched", "click"}));
  f.box.set_value(true);
  EXPECT_EQ(f.sink.take(), log{});
  f.box.set_value(false);
  EXPECT_EQ(f.sink.take(), (log{"touched", "click"}));
}

TEST(control, that_only_shows_a_value_raises_nothing) {
  fixture<check_box> f(kind::check);
  f.box.show_value(true);
  EXPECT_EQ(f.sink.take(), log{"touched"});
  EXPECT_TRUE(f.box.value());
  f.box.show_value(true);
  EXPECT_EQ(f.sink.take(), log{});
}

TEST(control, has_its_new_state_when_it_tells_of_it) {
  class looking final : public event_sink {
   public:
    void raised(control& source, event) override { seen.push_back(source.text()); }
    void touched(control& source) override { seen.push_back(source.text()); }
    std::vector<std::string> seen;
  };
  text_box box(plain(kind::text), 0);
  looking sink;
  box.listen(sink);
  box.set_text("7");
  EXPECT_EQ(sink.seen, (log{"7", "7"}));
}

TEST(control, tells_of_tip_visible_and_enabled_only_when_they_change) {
  fixture<button> f(kind::button);
  const unsigned before = f.box.changes();
  f.box.set_tip("");
  f.box.set_visible(true);
  f.box.set_enabled(true);
  EXPECT_EQ(f.sink.take(), log{});
  EXPECT_EQ(f.box.changes(), before);
  f.box.set_tip("Terminar");
  f.box.set_visible(false);
  f.box.set_enabled(false);
  EXPECT_EQ(f.sink.take(), (log{"touched", "touched", "touched"}));
  EXPECT_EQ(f.box.changes(), before + 3);
  EXPECT_EQ(f.box.tip(), "Terminar");
  EXPECT_FALSE(f.box.visible());
  EXPECT_FALSE(f.box.enabled());
}

TEST(control, keeps_a_tag_without_a_word) {
  fixture<label> f(kind::label);
  f.box.set_tag("131");
  EXPECT_EQ(f.box.tag(), "131");
  EXPECT_EQ(f.sink.take(), log{});
}

TEST(control, puts_the_caret_at_the_start_of_a_text_set_and_at_the_end_of_one_typed) {
  text_fixture f;
  f.box.set_typed_text("año", -1);
  EXPECT_EQ(f.box.sel_start(), 3);
  f.box.set_typed_text("añoñ", 2);
  EXPECT_EQ(f.box.sel_start(), 2);
  f.box.set_typed_text("ñ", 2);
  EXPECT_EQ(f.box.sel_start(), 1);
  f.box.set_text("otro");
  EXPECT_EQ(f.box.sel_start(), 0);
  EXPECT_EQ(f.box.sel_length(), 0);
}

TEST(control, counts_a_selection_in_characters_and_keeps_it_within_the_text) {
  struct row {
    int start, length, kept_start, kept_length;
  };
  // "señal", a line end of two, "F": eight characters.
  for (const row& r : {row{0, 8, 0, 8}, row{2, 3, 2, 3}, row{6, 9, 6, 2}, row{20, 1, 8, 0}, row{-3, 2, 0, 2},
                       row{3, -1, 3, 0}}) {
    text_fixture f;
    f.box.set_text("señal\r\nF");
    f.box.set_selection(r.start, r.length);
    EXPECT_EQ(f.box.sel_start(), r.kept_start) << r.start << "+" << r.length;
    EXPECT_EQ(f.box.sel_length(), r.kept_length) << r.start << "+" << r.length;
  }
}

TEST(control, select_all_takes_the_whole_text_and_raises_nothing) {
  text_fixture f;
  f.box.set_text("4000");
  f.sink.take();
  f.box.select_all();
  EXPECT_EQ(f.box.sel_start(), 0);
  EXPECT_EQ(f.box.sel_length(), 4);
  EXPECT_EQ(f.sink.take(), log{"touched"});
}

using rows = std::vector<std::string>;
using lines = std::vector<int>;

TEST(control, with_new_lines_has_none_current_and_raises_nothing) {
  list_fixture f;
  f.box.set_rows({"a", "b", "c"});
  f.box.choose_row(1);
  f.sink.take();
  f.box.set_rows({"a", "b", "c"});
  EXPECT_EQ(f.box.row(), -1);
  EXPECT_EQ(f.box.selected(), lines{});
  EXPECT_EQ(f.sink.take(), log{"touched"});
  f.box.set_rows({"a", "b", "c"});
  EXPECT_EQ(f.sink.take(), log{});
}

TEST(control, counts_a_change_of_lines_apart) {
  list_fixture f;
  f.box.set_rows({"a", "b"});
  const unsigned before = f.box.row_changes();
  f.box.choose_row(1);
  f.box.set_rows({"a", "b"});
  EXPECT_EQ(f.box.row_changes(), before);
  f.box.set_rows({"a", "c"});
  EXPECT_EQ(f.box.row_changes(), before + 1);
  f.box.replace_row(0, "d");
  EXPECT_EQ(f.box.row_changes(), before + 2);
}

TEST(control, a_line_that_the_program_chooses_is_the_one_selected_and_always_clicks) {
  list_fixture f;
  f.box.set_rows({"a", "b", "c"});
  f.box.set_row_selection(2, {0, 2});
  f.sink.take();
  f.box.choose_row(1);
  EXPECT_EQ(f.box.row(), 1);
  EXPECT_EQ(f.box.selected(), lines{1});
  // Told once or more, since whoever shows the list brings even the same line back into sight; clicked once.
  for (int time = 0; time < 2; ++time) {
    log heard = f.sink.take();
    ASSERT_FALSE(heard.empty());
    EXPECT_EQ(heard.back(), "click");
    heard.pop_back();
    EXPECT_EQ(heard, log(heard.size(), "touched"));
    EXPECT_FALSE(heard.empty());
    f.box.choose_row(1);
  }
}

TEST(control, choosing_no_line_or_one_that_is_not_there_selects_none_without_a_click) {
  for (const int row : {-1, 3, 2048}) {
    list_fixture f;
    f.box.set_rows({"a", "b", "c"});
    f.box.choose_row(1);
    f.sink.take();
    f.box.choose_row(row);
    EXPECT_EQ(f.box.row(), -1) << row;
    EXPECT_EQ(f.box.selected(), lines{}) << row;
    EXPECT_EQ(f.sink.take(), log{"touched"}) << row;
  }
}

TEST(control, a_replaced_line_is_no_longer_selected_and_the_others_are) {
  list_fixture f;
  f.box.set_rows({"a", "b", "c"});
  f.box.set_row_selection(1, {0, 1});
  f.sink.take();
  f.box.replace_row(1, "*b");
  EXPECT_EQ(f.box.rows(), (rows{"a", "*b", "c"}));
  EXPECT_EQ(f.box.row(), -1);
  EXPECT_EQ(f.box.selected(), lines{0});
  EXPECT_EQ(f.sink.take(), log{"touched"});
  f.box.set_row_selection(2, {0, 2});
  f.box.replace_row(1, "b");
  EXPECT_EQ(f.box.row(), 2);
  EXPECT_EQ(f.box.selected(), (lines{0, 2}));
}

TEST(control, replaces_no_line_that_is_not_there) {
  for (const int row : {-1, 2}) {
    list_fixture f;
    f.box.set_rows({"a", "b"});
    f.sink.take();
    f.box.replace_row(row, "x");
    EXPECT_EQ(f.box.rows(), (rows{"a", "b"}));
    EXPECT_EQ(f.sink.take(), log{});
  }
}

TEST(control, keeps_the_selection_that_the_person_made_without_an_event) {
  list_fixture f;
  f.box.set_rows({"a", "b", "c"});
  f.sink.take();
  f.box.set_row_selection(2, {0, 2});
  EXPECT_EQ(f.box.row(), 2);
  EXPECT_EQ(f.box.selected(), (lines{0, 2}));
  EXPECT_EQ(f.sink.take(), log{"touched"});
  f.box.set_row_selection(2, {0, 2});
  EXPECT_EQ(f.sink.take(), log{});
}

TEST(control, has_the_window_background_until_it_is_told_otherwise) {
  list_fixture f;
  EXPECT_FALSE(f.box.face_background());
  f.box.set_face_background(true);
  EXPECT_TRUE(f.box.face_background());
  f.box.set_face_background(true);
  EXPECT_EQ(f.sink.take(), log{"touched"});
}

TEST(find_control, finds_a_control_and_the_member_of_a_group_by_name) {
  struct row {
    const char* name;
    id which;
    int index;
  };
  const std::vector<row> cases = {{"eje1", id::eje1, 0},
                                  {"break", id::break_, 0},
                                  {"PB(0)", id::PB, 0},
                                  {"PB(7)", id::PB, 7},
                                  {"MD(3)", id::MD, 3},
                                  {"sl(1)", id::sl, 1},
                                  {"PB(8)", id::none, 0},
                                  {"PB(-1)", id::none, 0},
                                  {"PB", id::none, 0},
                                  {"eje1(0)", id::none, 0},
                                  {"PB(", id::none, 0},
                                  {"PB()", id::none, 0},
                                  {"PB(1", id::none, 0},
                                  {"PB(1)x", id::none, 0},
                                  {"PB(x)", id::none, 0},
                                  {"EJE1", id::none, 0},
                                  {"", id::none, 0},
                                  {"filecontrol", id::none, 0},
                                  {"PB(99999999999)", id::none, 0}};
  for (const row& r : cases) {
    const control_place found = find_control(r.name).value_or(control_place{});
    EXPECT_EQ(found.which, r.which) << r.name;
    EXPECT_EQ(found.index, r.index) << r.name;
  }
}

}  // namespace
}  // namespace estructura
