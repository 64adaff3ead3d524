// The statements of a guion: each reads its words, judges them, and hands on what a person would do.
#include <array>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <ostream>

#include "common/text.h"
#include "guion/guion.h"
#include "guion/looks.h"
#include "guion/machine_fields.h"

namespace estructura::guiones {

struct guion::verb {
  std::string_view name;
  void (guion::*perform)(script_line&);
  bool only_looks = false;
};

// clang-format off
const guion::verb guion::verbs[] = {
    {"click", &guion::click},
    {"keyup", &guion::keyup},
    {"dblclick", &guion::dblclick},
    {"row", &guion::row},
    {"rows", &guion::rows},
    {"pick", &guion::pick},
    {"type", &guion::type},
    {"select", &guion::select},
    {"enter", &guion::enter},
    {"focus", &guion::focus},
    {"press", &guion::press},
    {"close", &guion::close},
    {"clipboard", &guion::clipboard},
    {"answer", &guion::queue_answers},
    {"choose", &guion::choose},
    {"write", &guion::write},
    {"program", &guion::program},
    {"poke", &guion::poke},
    {"refresh", &guion::refresh},
    {"show", &guion::show, true},
    {"expect", &guion::expect, true},
};
// clang-format on

namespace {

std::string_view kind_name(kind is) {
  switch (is) {
    case kind::button: return "button";
    case kind::check: return "check box";
    case kind::option: return "option";
    case kind::text: return "text box";
    case kind::label: return "label";
    case kind::list: return "list";
    case kind::combo: return "combo";
    case kind::picture: return "picture";
    case kind::frame: break;
  }
  return "frame";
}

[[noreturn]] void wrong_kind(const script_place& place) {
  throw script_error("not for a " + std::string(kind_name(place.is)) + ": " + place.name);
}

/// A number that may have decimals.
double decimal(const script_word& word) {
  if (const auto whole = read_number(word.text)) return static_cast<double>(*whole);
  double number = 0;
  const char* const end = word.text.data() + word.text.size();
  const auto parsed = std::from_chars(word.text.data(), end, number);
  if (parsed.ec != std::errc{} || parsed.ptr != end || !std::isfinite(number))
    throw script_error("no number: " + std::string(word.written));
  return number;
}

/// Text as a person has it in a box of several lines, whatever line ends the script wrote.
std::string with_cr_lf(std::string_view text) {
  std::string lines;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool pair = text.substr(i).starts_with("\r\n");
    if (text[i] == '\r' || text[i] == '\n')
      lines += "\r\n";
    else
      lines += text[i];
    if (pair) ++i;
  }
  return lines;
}

/// Where the caret stands when it is wanted at a position: no further than the text, and never within a line
/// end.
int caret_place(std::string_view text, std::int64_t position) {
  const auto end = static_cast<std::int64_t>(char_count(text));
  const auto place = static_cast<std::size_t>(std::min(end, position));
  const std::size_t byte = byte_of_char(text, place);
  const bool within = byte > 0 && byte < text.size() && text[byte - 1] == '\r' && text[byte] == '\n';
  return static_cast<int>(place) - (within ? 1 : 0);
}

}  // namespace

void guion::dispatch(script_line& words) {
  const std::string name = words.next().text;
  for (const verb& statement : verbs) {
    if (statement.name != name) continue;
    if (!statement.only_looks && driver_.ended())
      throw script_error("the program has ended; only looking is allowed: " + name);
    return (this->*statement.perform)(words);
  }
  throw script_error("no such statement: " + name);
}

script_place guion::next_place(script_line& words) {
  return place_of(words.next().text);
}

script_place guion::next_place(script_line& words, kind wanted) {
  script_place place = next_place(words);
  if (place.is != wanted) wrong_kind(place);
  return place;
}

bool guion::can_click_row(const script_place& place, std::int64_t row) {
  if (!driver_.usable(place)) return false;
  if (row < 0 || row >= static_cast<std::int64_t>(driver_.look(place).rows.size()))
    throw script_error("no such line in " + place.name + ": " + std::to_string(row));
  return true;
}

// --- What a person does
// ---------------------------------------------------------------------------------------

void guion::click(script_line& words) {
  const script_place place = next_place(words);
  if (place.which == id::lst) {
    const int caret =
        caret_place(driver_.look(place).text, words.next_number(0, std::numeric_limits<int>::max()));
    words.expect_end();
    if (driver_.usable(place)) driver_.click_text(place, caret);
    return;
  }
  if (place.is != kind::button && place.is != kind::check && place.is != kind::option) wrong_kind(place);
  words.expect_end();
  if (driver_.usable(place)) driver_.click(place);
}

void guion::keyup(script_line& words) {
  const script_place place = next_place(words);
  if (place.which != id::lst) throw script_error("nothing listens to keys let go in " + place.name);
  const int caret =
      caret_place(driver_.look(place).text, words.next_number(0, std::numeric_limits<int>::max()));
  words.expect_end();
  if (driver_.usable(place)) driver_.keyup_text(place, caret);
}

void guion::dblclick(script_line& words) {
  const script_place place = next_place(words);
  if (place.is == kind::list) {
    const std::int64_t row = words.next_number(0, std::numeric_limits<int>::max());
    words.expect_end();
    if (can_click_row(place, row)) driver_.dblclick_row(place, static_cast<int>(row));
    return;
  }
  if (place.is != kind::label) wrong_kind(place);
  words.expect_end();
  if (driver_.usable(place)) driver_.dblclick(place);
}

void guion::row(script_line& words) {
  const script_place place = next_place(words, kind::list);
  const std::int64_t row = words.next_number(0, std::numeric_limits<int>::max());
  words.expect_end();
  if (can_click_row(place, row)) driver_.click_row(place, static_cast<int>(row), false);
}

void guion::rows(script_line& words) {
  const script_place place = next_place(words, kind::list);
  bool control_held = false;
  do {
    const std::int64_t row = words.next_number(0, std::numeric_limits<int>::max());
    if (can_click_row(place, row)) driver_.click_row(place, static_cast<int>(row), control_held);
    control_held = true;
  } while (!words.at_end());
}

void guion::pick(script_line& words) {
  const script_place place = next_place(words, kind::combo);
  const std::string entry = words.next().text;
  words.expect_end();
  if (!driver_.usable(place)) return;
  const std::vector<std::string> entries = driver_.look(place).rows;
  const auto found = std::ranges::find(entries, entry);
  if (found == entries.end()) throw script_error("no such entry in " + place.name + ": " + entry);
  driver_.pick(place, static_cast<int>(found - entries.begin()));
}

void guion::type(script_line& words) {
  const script_place place = next_place(words, kind::text);
  const std::string text = words.next().text;
  words.expect_end();
  if (driver_.usable(place)) driver_.type(place, with_cr_lf(text));
}

void guion::select(script_line& words) {
  const script_place place = next_place(words, kind::text);
  const std::string text = driver_.look(place).text;
  const std::int64_t from = words.next_number(0, std::numeric_limits<int>::max());
  const std::int64_t length = words.next_number(0, std::numeric_limits<int>::max());
  words.expect_end();
  const int start = caret_place(text, from);
  if (driver_.usable(place)) driver_.select(place, start, caret_place(text, from + length) - start);
}

void guion::enter(script_line& words) {
  const script_place place = next_place(words, kind::text);
  words.expect_end();
  if (driver_.usable(place)) driver_.enter(place);
}

void guion::focus(script_line& words) {
  const script_place place = next_place(words);
  words.expect_end();
  const bool takes_focus = place.is != kind::label && place.is != kind::frame && place.is != kind::picture;
  if (takes_focus && driver_.usable(place)) driver_.focus(place);
}

void guion::press(script_line& words) {
  const script_place place = next_place(words, kind::picture);
  const double y = decimal(words.next());
  words.expect_end();
  if (driver_.usable(place)) driver_.press_map(y);
}

void guion::close(script_line& words) {
  words.expect_end();
  driver_.close();
}

void guion::clipboard(script_line& words) {
  const std::string text = words.next().text;
  words.expect_end();
  driver_.set_clipboard(with_cr_lf(text));
}

void guion::queue_answers(script_line& words) {
  do {
    const std::string given = words.next().text;
    if (given == "yes")
      desk_.answers.push_back(answer::yes);
    else if (given == "no")
      desk_.answers.push_back(answer::no);
    else if (given == "cancel")
      desk_.answers.push_back(answer::cancel);
    else
      throw script_error("yes, no or cancel is wanted: " + given);
  } while (!words.at_end());
}

void guion::choose(script_line& words) {
  const std::string path = words.next().text;
  words.expect_end();
  desk_.paths.push_back(path);
}

// --- What the script prepares
// ---------------------------------------------------------------------------------

void guion::write(script_line& words) {
  namespace fs = std::filesystem;
  const fs::path path = fs::path(words.next().text).lexically_normal();
  const std::string content = words.next().text;
  words.expect_end();
  if (path.empty() || path.is_absolute() || *path.begin() == "..")
    throw script_error("files are made in the scratch folder only: " + path.string());
  std::error_code error;
  if (path.has_parent_path()) fs::create_directories(path.parent_path(), error);
  std::ofstream file(path, std::ios::binary);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  file.close();
  if (!file) throw script_error("the file cannot be made: " + path.string());
}

void guion::program(script_line& words) {
  std::int64_t address = words.next_number(0, program_words - 1);
  driver_.change_machine([&](chipstate& chip) {
    do {
      const std::int64_t word = words.next_number(0, unprogrammed);
      if (address >= program_words) throw script_error("the program memory ends at address 2047");
      chip.progmem[static_cast<int>(address++)] = static_cast<std::uint16_t>(word);
    } while (!words.at_end());
  });
}

void guion::poke(script_line& words) {
  constexpr std::string_view machine = "chip.";
  const std::string name = words.next().text;
  const std::string value = words.next().text;
  words.expect_end();
  if (!name.starts_with(machine)) throw script_error("only a field of the machine can be poked: " + name);
  const std::string_view field = std::string_view(name).substr(machine.size());
  driver_.change_machine([&](chipstate& chip) { set_machine_field(chip, field, value); });
}

void guion::refresh(script_line& words) {
  words.expect_end();
  driver_.refresh();
}

// --- What can be looked at
// ------------------------------------------------------------------------------------

void guion::show(script_line& words) {
  do {
    const script_word what = words.next();
    const std::string value = printed(look_at(driver_, desk_, what.written));
    shown_ << what.written << " = " << value << '\n';
  } while (!words.at_end());
}

void guion::expect(script_line& words) {
  const script_word what = words.next();
  const script_value wanted = read_value(words.rest());
  const script_value got = look_at(driver_, desk_, what.written);
  if (got != wanted)
    throw script_error(std::string(what.written) + ": wanted " + printed(wanted) + ", got " + printed(got));
}

}  // namespace estructura::guiones
