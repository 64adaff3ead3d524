// The panels' tables of handlers: which control answers which event, that none was forgotten, and that no two
// panels act on one control.
#include "ui/panel.h"

#include <gtest/gtest.h>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

#include "tests/support/test_window.h"

namespace estructura {
namespace {

constexpr event every_event[] = {event::click,     event::dblclick, event::change, event::gotfocus,
                                 event::lostfocus, event::keyup,    event::enter};

std::string_view name_of(event what) {
  constexpr std::string_view names[] = {"click",     "dblclick", "change", "gotfocus",
                                        "lostfocus", "keyup",    "enter"};
  return names[static_cast<std::size_t>(what)];
}

// clang-format off
const std::map<std::string_view, std::set<event>> answered = {
    // Source and listing.
    {"sl", {event::click}},
    {"tab", {event::click}},
    {"Copiar", {event::click}},
    {"Cortar", {event::click}},
    {"Pegar", {event::click}},
    {"source", {event::change}},
    {"lst", {event::click, event::keyup}},
    {"Ensamblar", {event::click}},
    // The documents, and the end.
    {"cargarasm", {event::click}},
    {"salvarasm", {event::click}},
    {"borrarasm", {event::click}},
    {"desensamblar", {event::click}},
    {"cargar", {event::click}},
    {"salvar", {event::click}},
    {"borrar", {event::click}},
    {"salvar16c84", {event::click}},
    {"fin", {event::click}},
    // Program memory.
    {"MP", {event::click, event::dblclick}},
    {"VISMP", {event::click}},
    {"direc", {event::change, event::gotfocus}},
    {"INS", {event::change, event::gotfocus, event::enter}},
    {"Entrarins", {event::click}},
    {"borrarins", {event::click}},
    {"break", {event::click}},
    // Registers and data memory.
    {"MDP", {event::click, event::lostfocus}},
    {"MD", {event::click, event::lostfocus}},
    {"RE", {event::click, event::lostfocus}},
    {"dirdat", {event::change}},
    {"dat", {event::change, event::gotfocus, event::enter}},
    {"entrardat", {event::click}},
    // Pins.
    {"PA", {event::click}},
    {"PB", {event::click}},
    {"PC", {event::click}},
    // Clocks.
    {"FREC", {event::gotfocus}},
    {"fext", {event::click}},
    {"WATCHDOG", {event::click}},
    {"WDT", {event::click}},
    {"FR", {event::change, event::gotfocus}},
    {"TOCKI", {event::click}},
    // The chip.
    {"eje1", {event::click}},
    {"ejecutar", {event::click}},
    {"por", {event::click}},
    {"MCLR", {event::click}},
    {"CMCLR", {event::click}},
    {"ciclos", {event::dblclick}},
    {"PIC", {event::click}},
};
// clang-format on

// There is nothing to do in these: they only show.
const std::set<std::string_view> silent = {"estsleep", "nomre", "nombres", "dirmd", "PIL"};

std::vector<id> every_control() {
  std::vector<id> all;
  for (int i = 0; i < id_count; ++i) all.push_back(static_cast<id>(i));
  return all;
}

TEST(handlers, serve_exactly_the_events_that_they_are_there_for) {
  support::fake_desktop desktop;
  const Estructura view(desktop);
  for (const id which : every_control()) {
    const std::string_view name = declared(which).name;
    const auto found = answered.find(name);
    const std::set<event> wanted = found == answered.end() ? std::set<event>{} : found->second;
    for (const event what : every_event)
      EXPECT_EQ(view.answers(which, what), wanted.contains(what)) << name << ", " << name_of(what);
  }
  for (const auto& [name, events] : answered)
    EXPECT_FALSE(events.empty()) << name << " stands in the table without an event";
}

// Whoever adds a control that a person can act on gives it a handler, or says above that it only shows.
TEST(handlers, leave_no_control_without_an_answer_to_what_a_person_does_with_its_kind) {
  const std::map<kind, std::set<event>> acted_on = {
      {kind::button, {event::click}},
      {kind::check, {event::click}},
      {kind::option, {event::click}},
      {kind::list, {event::click}},
      {kind::combo, {event::click}},
      // Some take what is typed, some only the Enter key, some only the whole text at the focus.
      {kind::text, {event::change, event::enter, event::gotfocus, event::click}}};
  support::fake_desktop desktop;
  const Estructura view(desktop);
  for (const id which : every_control()) {
    const declaration& row = declared(which);
    const auto found = acted_on.find(row.is);
    if (found == acted_on.end()) continue;
    bool some = false;
    for (const event what : found->second) some = some || view.answers(which, what);
    EXPECT_EQ(some, !silent.contains(row.name)) << row.name;
  }
}

class nobody final : public run_listener {};

class silent_window final : public panel_window {
 public:
  void move_focus(control_place) override {}
  void bring_up_to_date() override {}
  answer ask(box, const std::string&) override { return answer::ok; }
  std::string choose_file(bool, std::string_view, std::string_view, std::string_view) override { return {}; }
  void end() override {}
};

class test_panel final : public panel {
 public:
  explicit test_panel(const shared_parts& shared, std::span<const handler_row> rows = {})
      : panel(shared, rows) {}
  using panel::own;
  using panel::own_group;
};

struct parts {
  control_set controls;
  chipstate chip;
  inputs in;
  nobody listener;
  run_control runner{chip, in, listener};
  open_documents documents;
  window_host host;
  silent_window window;
  shared_parts shared{controls, chip, in, runner, documents, host, window};
};

TEST(panel, has_its_controls_for_itself) {
  parts p;
  test_panel first(p.shared);
  test_panel second(p.shared);
  EXPECT_EQ(&first.own<text_box>(id::INS), &p.controls.at(id::INS));
  EXPECT_EQ(p.controls.owner(id::INS), &first);
  EXPECT_NO_THROW((void)first.own<text_box>(id::INS));
  EXPECT_THROW((void)second.own<text_box>(id::INS), std::logic_error);
  EXPECT_EQ(p.controls.owner(id::codop), nullptr);
}

TEST(panel, has_each_control_as_what_it_is) {
  parts p;
  test_panel one(p.shared);
  EXPECT_THROW((void)one.own<list_box>(id::INS), std::bad_cast);
  EXPECT_THROW((void)one.own_group<label>(id::PB), std::bad_cast);
  const group<check_box> boxes = one.own_group<check_box>(id::PB);
  ASSERT_EQ(boxes.count(), 8);
  for (int bit = 0; bit < 8; ++bit) EXPECT_EQ(&boxes[bit], &p.controls.at(id::PB, bit));
}

TEST(panel, serves_no_control_of_another_one) {
  static constexpr handler_row rows[] = {{id::eje1, event::click, [](panel&, int) {}}};
  parts p;
  const test_panel first(p.shared, rows);
  EXPECT_EQ(p.controls.owner(id::eje1), &first);
  EXPECT_THROW(test_panel(p.shared, rows), std::logic_error);
}

TEST(panel, runs_the_handler_of_the_event_with_the_member_of_the_group) {
  static int seen = -1;
  static constexpr handler_row rows[] = {{id::PB, event::click, [](panel&, int bit) { seen = bit; }}};
  parts p;
  test_panel pins(p.shared, rows);
  pins.raised(p.controls.at(id::PB, 5), event::change);
  EXPECT_EQ(seen, -1);
  pins.raised(p.controls.at(id::PB, 5), event::click);
  EXPECT_EQ(seen, 5);
}

}  // namespace
}  // namespace estructura
